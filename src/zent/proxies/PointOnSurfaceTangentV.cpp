#include "zent/proxies/PointOnSurfaceTangentV.h"

#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnSurfaceTangentV::mayaResult(const std::vector<Port>& ports) const {
    return results(output("tangentV", result<vec3>(ports, 0)));
}

json ProxyPointOnSurfaceTangentV::zentResult(const Arguments& args) const {
    return results(output(call<pointOnSurfaceTangentV>(args)));
}

} // namespace zent
