#include "zent/proxies/FollicleTranslateSurface.h"

#include "zent/nodes/follicle.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyFollicleTranslateSurface::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outTranslate", result<vec3>(ports, 0)));
}

json ProxyFollicleTranslateSurface::zentResult(const Arguments& args) const {
    return results(output(call<follicleTranslateSurface>(args)));
}

} // namespace zent
