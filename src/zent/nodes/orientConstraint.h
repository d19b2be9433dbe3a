#pragma once

#include "zent/nodes/constraint.h"

namespace zent {

/// One target's rotation in the constrained node's space before its joint orient. Angles are radians; joint orients are
/// in order xyz.
quat IMPL__orientConstraint(mat4 parentInverse, vec3 jointOrient, mat4 targetParent, vec3 targetRotate,
                            int targetRotateOrder, vec3 targetJointOrient);

/// The rotate (radians, in `rotateOrder`) of a node that follows the rotation of its targets. `offset` acts inside the
/// blend, in the constrained node's own rotate order.
/// No target, or weights that sum below 1e-5, give `rest` without the offset; targets of a weight below 1e-5 are
/// skipped, but never the first one where `interpType` is kInterpShortest. Throws std::runtime_error where a target
/// list is shorter than `weights`.
vec3 orientConstraint(mat4 parentInverse, int rotateOrder, vec3 jointOrient, vec3 offset, int interpType,
                      TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                      TargetList<vec3> targetRotates, TargetList<int> targetRotateOrders,
                      TargetList<vec3> targetJointOrients);

} // namespace zent
