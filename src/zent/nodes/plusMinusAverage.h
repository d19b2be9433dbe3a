#pragma once

#include "zent/math/types.h"

namespace zent {

/// op 0 gives the first element, 1 the sum of all, 2 the first less the sum of the others, 3 the average, any other 0.
/// An empty list has the sum 0 and the average NaN; without a first element op 0 and op 2 throw.
float plusMinusAverage1D(svec<float, 8> in, int op);

/// The same by component.
vec2 plusMinusAverage2D(svec<vec2, 8> in, int op);

/// The same by component.
vec3 plusMinusAverage3D(svec<vec3, 8> in, int op);

} // namespace zent
