#include "zent/nodes/orientConstraint.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyOrientConstraint : public Plain<orientConstraint, Rotation> {
public:
    ProxyOrientConstraint() : Plain("orientConstraint", "constraintRotate") {}
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyOrientConstraint>();

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
