#include "zent/proxies/AngleBetweenAxis.h"

#include "zent/nodes/angleBetween.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyAngleBetweenAxis::mayaResult(const std::vector<Port>& ports) const {
    return results(output("axis", result<vec3>(ports, 0)));
}

json ProxyAngleBetweenAxis::zentResult(const Arguments& args) const {
    return results(output(call<angleBetween__COMPUTE__axis>(args)));
}

} // namespace zent
