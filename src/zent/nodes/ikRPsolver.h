#pragma once

#include "zent/math/types.h"

namespace zent {

/// One value for each joint of a rotate-plane chain, the root first.
template <class T>
using ChainList = static_vector<T, 2>;

/// The rotates (radians, each in its joint's rotate order) that bring the end of a chain of one or two joints to an IK
/// handle, its bend turned towards a pole vector and by a twist (radians).
///
/// `handleTranslate` and `poleVector` are in the space of `handleParent`, `endTranslate` is the end effector's place in
/// the last joint, and the lists hold the joints' channels (see `joint`). The chain's end reaches the handle, or its
/// line, where each joint's present rotate is zero or shares its axis with the turn that the solve makes; elsewhere it
/// need not. Throws std::runtime_error for an empty chain and for lists of unequal length.
ChainList<vec3> ikRPsolver(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector, float twist,
                           mat4 rootParent, ChainList<vec3> jointOrients, ChainList<vec3> rotates,
                           ChainList<vec3> translates, ChainList<int> rotateOrders, ChainList<vec3> scales,
                           ChainList<vec3> inverseScales, ChainList<bool> compensates);

/// A chain of one joint, solved in the joint's frame at zero rotate; `rotate` is not read. A negative twist acts.
vec3 ikRPsolver1Bone(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector, float twist,
                     mat4 rootParent, vec3 jointOrient, vec3 rotate, vec3 translate, int rotateOrder, vec3 scale,
                     vec3 inverseScale, bool compensate);

/// A chain of two joints, solved in world space from their present rotates: the law of cosines bends the middle joint,
/// the root aims the end at the handle. A straight chain gives NaN. A negative twist is ignored.
ChainList<vec3> ikRPsolver2Bones(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector,
                                 float twist, mat4 rootParent, ChainList<vec3> jointOrients, ChainList<vec3> rotates,
                                 ChainList<vec3> translates, ChainList<int> rotateOrders, ChainList<vec3> scales,
                                 ChainList<vec3> inverseScales, ChainList<bool> compensates);

} // namespace zent
