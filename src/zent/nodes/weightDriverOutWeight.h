#pragma once

#include "zent/math/types.h"

namespace zent {

/// The falloff by the angle between the x axis of `second` (negated by `invert`) and the way from `second` to `first`:
/// 1 at no angle, 0 from `limit` (degrees) on. Coinciding translations or a zero axis give NaN.
float weightDriverOutWeight(mat4 first, mat4 second, float limit, bool invert);

} // namespace zent
