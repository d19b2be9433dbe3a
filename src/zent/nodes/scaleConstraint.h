#pragma once

#include "zent/nodes/constraint.h"

namespace zent {

/// One target's scale in the constrained node's parent space.
vec3 IMPL__scaleConstraint(mat4 parentInverse, mat4 targetParent, vec3 targetScale);

/// The scale of a node held at one target. `compensate` takes the parent's own scale out of the result; `offset` is a
/// factor.
vec3 scaleConstraint(mat4 parentInverse, bool compensate, vec3 offset, mat4 targetParent, vec3 targetScale);

/// The scale of a node held at the weighted mean of its targets.
/// No target, or weights that sum below 1e-5, give `rest` without the offset. Targets of a weight below 1e-5 are
/// skipped; where that leaves none, their mean is (1, 1, 1). Throws std::runtime_error where a target list is shorter
/// than `weights`.
vec3 scaleConstraint(mat4 parentInverse, bool compensate, vec3 offset, TargetList<float> weights, vec3 rest,
                     TargetList<mat4> targetParents, TargetList<vec3> targetScales);

} // namespace zent
