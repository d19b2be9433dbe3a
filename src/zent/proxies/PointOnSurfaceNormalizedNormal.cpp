#include "zent/proxies/PointOnSurfaceNormalizedNormal.h"

#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnSurfaceNormalizedNormal::mayaResult(const std::vector<Port>& ports) const {
    return results(output("normalizedNormal", result<vec3>(ports, 0)));
}

json ProxyPointOnSurfaceNormalizedNormal::zentResult(const Arguments& args) const {
    return results(output(call<pointOnSurfaceNormalizedNormal>(args)));
}

} // namespace zent
