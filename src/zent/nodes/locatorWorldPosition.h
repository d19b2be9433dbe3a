#pragma once

#include "zent/math/types.h"

namespace zent {

/// A point of a locator's local space in world space.
vec3 locatorWorldPosition(vec3 position, mat4 world);

} // namespace zent
