#pragma once

#include "zent/nodes/constraint.h"

namespace zent {

/// Where an aim or tangent constraint takes its up direction from. Any other value gives the zero vector.
enum WorldUpType : int {
    kUpScene = 0,          ///< world y
    kUpObject = 1,         ///< from the constrained node to the up object
    kUpObjectRotation = 2, ///< the up vector turned with the up object
    kUpVector = 3          ///< the up vector
};

/// The up direction in world space. `position` is the constrained node's, in world space. An object up at the node
/// itself gives NaN.
vec3 aim__IMPL__worldUpDir(int worldUpType, mat4 const& worldUpMatrix, vec3 worldUpVector, vec3 position);

/// A world-space vector in the parent's space, by the inverse transpose of `parentInverse`'s linear part: the rotation
/// of `parentInverse` where it is one.
vec3 aim__IMPL__toParentSpace(mat4 const& parentInverse, vec3 vector_world);

/// The rotation that turns `aimVector` to `direction`, and then `upVector` as close to `worldUp` as it comes about that
/// direction. `direction`, of any length, is in the constrained node's parent space, `worldUp` in world space. Parallel
/// aim and up vectors leave the second turn out; an up direction along the aim gives NaN.
quat IMPL__aimConstraint(mat4 parentInverse, vec3 direction, vec3 aimVector, vec3 upVector, vec3 worldUp);

/// The rotation that aims a node at one target, in its parent space. `targetA` and `targetB` are two offsets in the
/// target's parent space, of which only the sum matters. The fifth parameter is not read. A target at the node itself
/// gives NaN.
quat IMPL__aimConstraint(mat4 parentInverse, vec3 translate, vec3 pivot, vec3 pivotTranslate, int, mat4 targetParent,
                         vec3 targetA, vec3 targetB, int worldUpType, mat4 worldUpMatrix, vec3 worldUpVector,
                         vec3 aimVector, vec3 upVector);

/// The rotate (radians, in `rotateOrder`) of a node that aims at its targets; `offset` acts inside, in order xyz.
/// No target, or weights that sum below 1e-5, give `rest`; targets of a weight below 1e-5 are skipped. Throws
/// std::runtime_error where a target list is shorter than `weights`.
vec3 aimConstraint(mat4 parentInverse, vec3 translate, vec3 pivot, vec3 pivotTranslate, int rotateOrder,
                   vec3 jointOrient, vec3 offset, TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                   TargetList<vec3> targetsA, TargetList<vec3> targetsB, int worldUpType, mat4 worldUpMatrix,
                   vec3 worldUpVector, vec3 aimVector, vec3 upVector);

} // namespace zent
