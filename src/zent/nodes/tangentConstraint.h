#pragma once

#include "zent/geometry/Curve.h"

namespace zent {

/// The rotate (radians, in `rotateOrder`) of a node whose `aimVector` follows a curve's tangent at the closest point to
/// it. `position` is in the node's parent space; the up direction is told as for `aim__IMPL__worldUpDir`. Throws
/// std::runtime_error for a curve that cannot be evaluated.
vec3 tangentConstraint(mat4 parentInverse, int rotateOrder, vec3 position, Curve const& curve, vec3 aimVector,
                       vec3 upVector, int worldUpType, mat4 worldUpMatrix, vec3 worldUpVector);

} // namespace zent
