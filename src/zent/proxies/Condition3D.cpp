#include "zent/proxies/Condition3D.h"

#include "zent/nodes/condition.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCondition3D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outColor", result<vec3>(ports, 0)));
}

json ProxyCondition3D::zentResult(const Arguments& args) const {
    return results(output(call<condition3D>(args)));
}

} // namespace zent
