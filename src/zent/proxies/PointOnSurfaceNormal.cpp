#include "zent/proxies/PointOnSurfaceNormal.h"

#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnSurfaceNormal::mayaResult(const std::vector<Port>& ports) const {
    return results(output("normal", result<vec3>(ports, 0)));
}

json ProxyPointOnSurfaceNormal::zentResult(const Arguments& args) const {
    return results(output(call<pointOnSurfaceNormal>(args)));
}

} // namespace zent
