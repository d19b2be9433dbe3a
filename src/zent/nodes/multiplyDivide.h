#pragma once

#include "zent/math/types.h"

namespace zent {

/// op 0 gives a, 1 a b, 2 a / b, 3 a to the power of b, any other 0. A divisor of 0 gives infinity or NaN.
float multiplyDivide1D(float a, float b, int op);

/// The same component by component.
vec3 multiplyDivide3D(vec3 a, vec3 b, int op);

} // namespace zent
