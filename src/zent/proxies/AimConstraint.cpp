#include "zent/proxies/AimConstraint.h"

#include "zent/nodes/aimConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyAimConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(eulerResult("constraintRotate", result<vec3>(ports, 0)));
}

json ProxyAimConstraint::zentResult(const Arguments& args) const {
    return results(eulerResult(call<aimConstraint>(args)));
}

} // namespace zent
