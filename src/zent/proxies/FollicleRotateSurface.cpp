#include "zent/proxies/FollicleRotateSurface.h"

#include "zent/nodes/follicle.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyFollicleRotateSurface::mayaResult(const std::vector<Port>& ports) const {
    return results(eulerResult("outRotate", result<vec3>(ports, 0)));
}

json ProxyFollicleRotateSurface::zentResult(const Arguments& args) const {
    return results(eulerResult(call<follicleRotateSurface>(args)));
}

} // namespace zent
