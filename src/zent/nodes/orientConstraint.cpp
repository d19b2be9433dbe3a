#include "zent/nodes/orientConstraint.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"

namespace zent {

quat IMPL__orientConstraint(mat4 parentInverse, vec3 jointOrient, mat4 targetParent, vec3 targetRotate,
                            int targetRotateOrder, vec3 targetJointOrient) {
    const quat target_joint = eulerToQuat(targetRotate, static_cast<RotateOrder>(targetRotateOrder));
    const quat target_targetParent = eulerToQuat(targetJointOrient, kRotateXYZ) * target_joint;
    const quat target_parent = get_orient(parentInverse * targetParent) * target_targetParent;
    return glm::inverse(eulerToQuat(jointOrient, kRotateXYZ)) * target_parent;
}

vec3 orientConstraint(mat4 parentInverse, int rotateOrder, vec3 jointOrient, vec3 offset, int interpType,
                      TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                      TargetList<vec3> targetRotates, TargetList<int> targetRotateOrders,
                      TargetList<vec3> targetJointOrients) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists("orientConstraint", weights.size(),
                 {{"targetParents", targetParents.size()},
                  {"targetRotates", targetRotates.size()},
                  {"targetRotateOrders", targetRotateOrders.size()},
                  {"targetJointOrients", targetJointOrients.size()}});
    const quat blend = blendRotations(interpType, weights, [&](std::size_t i, float) {
        return IMPL__orientConstraint(parentInverse, jointOrient, targetParents[i], targetRotates[i],
                                      targetRotateOrders[i], targetJointOrients[i]);
    });
    const auto order = static_cast<RotateOrder>(rotateOrder);
    return eulerAngles(blend * eulerToQuat(offset, order), order);
}

} // namespace zent
