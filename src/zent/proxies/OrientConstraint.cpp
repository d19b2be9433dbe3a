#include "zent/proxies/OrientConstraint.h"

#include "zent/nodes/orientConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyOrientConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(eulerResult("constraintRotate", result<vec3>(ports, 0)));
}

json ProxyOrientConstraint::zentResult(const Arguments& args) const {
    return results(eulerResult(call<orientConstraint>(args)));
}

json ProxyOrientConstraint::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport(
        "orientConstraint",
        results(input<mat4>("constraintParentInverseMatrix", args, 0), input<int>("constraintRotateOrder", args, 1),
                input<Euler>("constraintJointOrient", args, 2), input<Euler>("offset", args, 3),
                input<int>("interpType", args, 4), input<svec<float, 4>>("target[{}].targetWeight", args, 5),
                input<Euler>("restRotate", args, 6), input<svec<mat4, 4>>("target[{}].targetParentMatrix", args, 7),
                input<svec<Euler, 4>>("target[{}].targetRotate", args, 8),
                input<svec<int, 4>>("target[{}].targetRotateOrder", args, 9),
                input<svec<Euler, 4>>("target[{}].targetJointOrient", args, 10)));
}

} // namespace zent
