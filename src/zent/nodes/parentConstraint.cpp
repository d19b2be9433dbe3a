#include "zent/nodes/parentConstraint.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/orientConstraint.h"

namespace zent {
quat parentConstraint__IMPL__rotate(mat4 parentInverse, int rotateOrder, vec3 jointOrient, mat4 targetParent,
                                    vec3 targetRotate, vec3 targetOffsetRotate, int targetRotateOrder,
                                    vec3 targetJointOrient) {
    const quat target = IMPL__orientConstraint(parentInverse, jointOrient, targetParent, targetRotate,
                                               targetRotateOrder, targetJointOrient);
    return target * eulerToQuat(targetOffsetRotate, static_cast<RotateOrder>(rotateOrder));
}

vec3 parentConstraintRotate(mat4 parentInverse, int rotateOrder, vec3 jointOrient, int interpType,
                            TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                            TargetList<vec3> targetRotates, TargetList<vec3> targetOffsetRotates,
                            TargetList<int> targetRotateOrders, TargetList<vec3> targetJointOrients) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists("parentConstraintRotate", weights.size(),
                 {{"targetParents", targetParents.size()},
                  {"targetRotates", targetRotates.size()},
                  {"targetOffsetRotates", targetOffsetRotates.size()},
                  {"targetRotateOrders", targetRotateOrders.size()},
                  {"targetJointOrients", targetJointOrients.size()}});
    vec3 reference(0.0f);
    const auto rotation = [&](std::size_t i, float weight) {
        if (isWeak(weight)) {
            // The reference is always the first target's rotate, whichever target is the weak one: deliberate.
            reference = targetRotates[0];
        }
        return parentConstraint__IMPL__rotate(parentInverse, rotateOrder, jointOrient, targetParents[i],
                                              targetRotates[i], targetOffsetRotates[i], targetRotateOrders[i],
                                              targetJointOrients[i]);
    };
    const quat blend = weights.size() == 1 ? normalizeOrIdentity(rotation(0, weights[0]))
                                           : blendRotations(interpType, weights, rotation);
    return eulerAngles(blend, static_cast<RotateOrder>(rotateOrder), reference);
}

vec3 parentConstraintTranslate(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, mat4 targetParent, vec3 targetA,
                               vec3 targetOffset, vec3 targetB, vec3 targetRotate, int targetRotateOrder,
                               vec3 targetScale, vec3 targetInverseScale, bool targetCompensate,
                               vec3 targetJointOrient) {
    const mat4 target = joint(targetA + targetB, targetRotate, targetScale, targetRotateOrder, targetJointOrient,
                              targetInverseScale, targetCompensate);
    if (targetCompensate) {
        // The inverse scale acts a second time, after the joint's own: deliberate.
        targetParent = scaledRows(targetParent, 1.0f / targetInverseScale);
    }
    const vec4 point_parent = parentInverse * (targetParent * (target * vec4(targetOffset, 1.0f)));
    return vec3(point_parent) - (pivot + pivotTranslate);
}

vec3 parentConstraintTranslate(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, TargetList<float> weights,
                               vec3 rest, TargetList<mat4> targetParents, TargetList<vec3> targetsA,
                               TargetList<vec3> targetOffsets, TargetList<vec3> targetsB,
                               TargetList<vec3> targetRotates, TargetList<int> targetRotateOrders,
                               TargetList<vec3> targetScales, TargetList<vec3> targetInverseScales,
                               TargetList<bool> targetCompensates, TargetList<vec3> targetJointOrients) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists("parentConstraintTranslate", weights.size(),
                 {{"targetParents", targetParents.size()},
                  {"targetsA", targetsA.size()},
                  {"targetOffsets", targetOffsets.size()},
                  {"targetsB", targetsB.size()},
                  {"targetRotates", targetRotates.size()},
                  {"targetRotateOrders", targetRotateOrders.size()},
                  {"targetScales", targetScales.size()},
                  {"targetInverseScales", targetInverseScales.size()},
                  {"targetCompensates", targetCompensates.size()},
                  {"targetJointOrients", targetJointOrients.size()}});
    return weightedMean(weights,
                        [&](std::size_t i) {
                            return parentConstraintTranslate(
                                parentInverse, pivot, pivotTranslate, targetParents[i], targetsA[i], targetOffsets[i],
                                targetsB[i], targetRotates[i], targetRotateOrders[i], targetScales[i],
                                targetInverseScales[i], targetCompensates[i], targetJointOrients[i]);
                        })
        .value_or(vec3(0.0f));
}

} // namespace zent
