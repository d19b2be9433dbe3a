#include "zent/proxies/PointOnSurfaceTangentU.h"

#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnSurfaceTangentU::mayaResult(const std::vector<Port>& ports) const {
    return results(output("tangentU", result<vec3>(ports, 0)));
}

json ProxyPointOnSurfaceTangentU::zentResult(const Arguments& args) const {
    return results(output(call<pointOnSurfaceTangentU>(args)));
}

} // namespace zent
