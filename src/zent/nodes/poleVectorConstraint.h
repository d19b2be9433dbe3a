#pragma once

#include "zent/math/types.h"

namespace zent {

/// The pole vector of an IK handle held at a target: from the chain's root to the target, as a direction in the
/// handle's parent space. `root` stands in the space of `rootParent`; `targetA` and `targetB` are two offsets in that
/// of `targetParent`, of which only the sum matters.
vec3 poleVectorConstraint(mat4 parentInverse, vec3 root, mat4 rootParent, mat4 targetParent, vec3 targetA,
                          vec3 targetB);

} // namespace zent
