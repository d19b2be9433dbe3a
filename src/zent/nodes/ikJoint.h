#pragma once

#include "zent/math/rotation.h"

/// What the IK solvers share: a joint's matrix and the rotates that come out of a solve. Products are told in Maya's
/// row order.
namespace zent {

/// A joint's scale with the parent's scale divided out where `compensate` is true.
vec3 ik__IMPL__scale(vec3 scale, vec3 inverseScale, bool compensate);

/// A joint's local matrix at zero rotate: scale, joint orient (radians, xyz), inverse scale of the parent, translate.
mat4 ik__IMPL__matrix(vec3 translate, vec3 jointOrient, vec3 scale, vec3 inverseScale, bool compensate);

/// A joint's local matrix with its rotate (radians) between scale and joint orient.
mat4 ik__IMPL__matrix(vec3 translate, vec3 jointOrient, vec3 scale, vec3 inverseScale, bool compensate, vec3 rotate,
                      RotateOrder order);

/// A joint's world matrix at zero rotate without its own scale: the frame in which one bone is solved.
mat4 ik__IMPL__frame(mat4 const& parent, vec3 translate, vec3 jointOrient, vec3 inverseScale, bool compensate);

} // namespace zent
