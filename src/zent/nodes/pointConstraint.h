#pragma once

#include "zent/nodes/constraint.h"

namespace zent {

/// One target's position in the constrained node's parent space, less the constrained node's pivots.
/// `targetA` and `targetB` are two offsets in the target's parent space, of which only the sum matters.
vec3 IMPL__pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, mat4 targetParent, vec3 targetA,
                           vec3 targetB);

/// The translate of a node held at one target: `IMPL__pointConstraint` plus `offset`.
vec3 pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, vec3 offset, mat4 targetParent, vec3 targetA,
                     vec3 targetB);

/// The translate of a node held at the weighted mean of its targets, in its parent space.
/// No target, or weights that sum below 1e-5, give `rest` without the offset. Targets of a weight below 1e-5 are
/// skipped; where that leaves none, the result is zero. Throws std::runtime_error where a target list is shorter than
/// `weights`.
vec3 pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, vec3 offset, TargetList<float> weights,
                     vec3 rest, TargetList<mat4> targetParents, TargetList<vec3> targetsA, TargetList<vec3> targetsB);

} // namespace zent
