#include "zent/proxies/PointOnSurfacePosition.h"

#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnSurfacePosition::mayaResult(const std::vector<Port>& ports) const {
    return results(output("position", result<vec3>(ports, 0)));
}

json ProxyPointOnSurfacePosition::zentResult(const Arguments& args) const {
    return results(output(call<pointOnSurfacePosition>(args)));
}

} // namespace zent
