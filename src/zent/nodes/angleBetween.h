#pragma once

#include "zent/math/types.h"

namespace zent {

/// The angle from a to b, radians, 0 to pi. A vector shorter than 1e-5 gives 0.
float angleBetween__COMPUTE__angle(vec3 a, vec3 b);

/// The unit axis of the rotation from a to b. Opposite vectors turn about an axis across a; equal ones, and a vector
/// shorter than 1e-5, give (0, 0, 1).
vec3 angleBetween__COMPUTE__axis(vec3 a, vec3 b);

} // namespace zent
