#include "zent/proxies/TangentConstraint.h"

#include "zent/nodes/tangentConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyTangentConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(eulerResult("constraintRotate", result<vec3>(ports, 0)));
}

json ProxyTangentConstraint::zentResult(const Arguments& args) const {
    return results(eulerResult(call<tangentConstraint>(args)));
}

} // namespace zent
