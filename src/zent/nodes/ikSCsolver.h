#pragma once

#include "zent/math/types.h"

#include <array>

namespace zent {

/// The rotate (radians, in the joint's rotate order) that points a single joint's bone at an IK handle and turns it
/// about the bone with the handle's own rotation, in place of a pole vector.
///
/// `handleTranslate` and `handleRotate` (radians) are in the space of `handleParent`, `endTranslate` is the end
/// effector's place in the joint, and the lists of one hold the joint's channels (see `joint`).
vec3 ikSCsolver(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 handleRotate, int handleRotateOrder,
                mat4 rootParent, std::array<vec3, 1> jointOrients, std::array<vec3, 1> translates,
                std::array<int, 1> rotateOrders, std::array<vec3, 1> scales, std::array<vec3, 1> inverseScales,
                std::array<bool, 1> compensates);

} // namespace zent
