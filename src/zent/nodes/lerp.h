#pragma once

#include "zent/math/types.h"

namespace zent {

/// a at t 0, b at t 1. t is not clamped.
vec3 lerp(vec3 a, vec3 b, float t);

} // namespace zent
