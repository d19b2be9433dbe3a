#pragma once

#include "zent/math/types.h"

namespace zent {

/// `color1` at blender 1, `color2` at blender 0. The blender is not clamped.
vec3 blendColors(vec3 color1, vec3 color2, float blender);

} // namespace zent
