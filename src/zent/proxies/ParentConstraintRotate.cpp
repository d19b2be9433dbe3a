#include "zent/nodes/parentConstraint.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyParentConstraintRotate : public Plain<parentConstraintRotate, Rotation> {
public:
    ProxyParentConstraintRotate() : Plain("parentConstraintRotate", "constraintRotate") {}
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyParentConstraintRotate>();

json ProxyParentConstraintRotate::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport(
        "parentConstraint",
        results(input<mat4>("constraintParentInverseMatrix", args, 0), input<int>("constraintRotateOrder", args, 1),
                input<Euler>("constraintJointOrient", args, 2), input<int>("interpType", args, 3),
                input<svec<float, 4>>("target[{}].targetWeight", args, 4), input<Euler>("restRotate", args, 5),
                input<svec<mat4, 4>>("target[{}].targetParentMatrix", args, 6),
                input<svec<Euler, 4>>("target[{}].targetRotate", args, 7),
                input<svec<Euler, 4>>("target[{}].targetOffsetRotate", args, 8),
                input<svec<int, 4>>("target[{}].targetRotateOrder", args, 9),
                input<svec<Euler, 4>>("target[{}].targetJointOrient", args, 10)));
}

} // namespace zent
