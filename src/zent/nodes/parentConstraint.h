#pragma once

#include "zent/nodes/constraint.h"

namespace zent {

/// One target's rotation, its offset inside it, in the constrained node's space before its joint orient. The offset is
/// read in the constrained node's `rotateOrder`, the target's rotate in the target's. Radians; joint orients are in
/// order xyz.
quat parentConstraint__IMPL__rotate(mat4 parentInverse, int rotateOrder, vec3 jointOrient, mat4 targetParent,
                                    vec3 targetRotate, vec3 targetOffsetRotate, int targetRotateOrder,
                                    vec3 targetJointOrient);

/// The rotate (radians, in `rotateOrder`) of a node that follows its targets like a child.
/// No target, or weights that sum below 1e-5, give `rest`. One target alone is followed whatever its weight and
/// `interpType`; several blend as in an orient constraint. Of the two Euler solutions, the one closest to zero, or to
/// the first target's rotate where some target is weak, wrapped by whole turns. Throws std::runtime_error where a
/// target list is shorter than `weights`.
vec3 parentConstraintRotate(mat4 parentInverse, int rotateOrder, vec3 jointOrient, int interpType,
                            TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                            TargetList<vec3> targetRotates, TargetList<vec3> targetOffsetRotates,
                            TargetList<int> targetRotateOrders, TargetList<vec3> targetJointOrients);

/// The translate of a node that follows one target like a child: the point `targetOffset` of the target's own frame in
/// the constrained node's parent space, less the pivots. The target's frame is that of a joint at `targetA` +
/// `targetB`; `targetCompensate` switches `targetInverseScale` on.
vec3 parentConstraintTranslate(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, mat4 targetParent, vec3 targetA,
                               vec3 targetOffset, vec3 targetB, vec3 targetRotate, int targetRotateOrder,
                               vec3 targetScale, vec3 targetInverseScale, bool targetCompensate,
                               vec3 targetJointOrient);

/// The weighted mean of the targets. No target, or weights that sum below 1e-5, give `rest`; targets of a weight below
/// 1e-5 are skipped, and where that leaves none, the result is zero. Throws std::runtime_error where a target list is
/// shorter than `weights`.
vec3 parentConstraintTranslate(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, TargetList<float> weights,
                               vec3 rest, TargetList<mat4> targetParents, TargetList<vec3> targetsA,
                               TargetList<vec3> targetOffsets, TargetList<vec3> targetsB,
                               TargetList<vec3> targetRotates, TargetList<int> targetRotateOrders,
                               TargetList<vec3> targetScales, TargetList<vec3> targetInverseScales,
                               TargetList<bool> targetCompensates, TargetList<vec3> targetJointOrients);

} // namespace zent
