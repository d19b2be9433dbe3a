#pragma once

#include "zent/math/types.h"

namespace zent {

/// `value` mapped from the old range to `min` and `max`, held at the ends. An old range of less than 1e-5 in magnitude
/// gives 0; a reversed one has no inside: values below `oldMin` give `min`, all others `max`.
float setRange1D(float value, float oldMin, float oldMax, float min, float max);

/// The same component by component.
vec3 setRange3D(vec3 value, vec3 oldMin, vec3 oldMax, vec3 min, vec3 max);

} // namespace zent
