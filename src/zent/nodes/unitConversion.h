#pragma once

#include "zent/math/types.h"

namespace zent {

/// v times `factor`.
float unitConversion1D(float v, float factor);

/// v times `factor`.
vec2 unitConversion2D(vec2 v, float factor);

/// v times `factor`.
vec3 unitConversion3D(vec3 v, float factor);

} // namespace zent
