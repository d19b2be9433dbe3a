#pragma once

#include "zent/math/types.h"

namespace zent {

/// The piecewise linear curve through (positions[i], values[i]) at x, constant beyond both ends.
///
/// Positions are used in the order given, so a ramp should come sorted. The interpolation types have no effect. At or
/// below the first position, and for NaN, the result is the first value; at or beyond the last position it is the value
/// list's own last entry. Throws std::runtime_error for an empty ramp and for fewer values than positions.
float remap(float x, svec<float, 4> positions, svec<float, 4> values, svec<int, 4> interpolation);

/// The input, limited to inputMin..inputMax (inputMin wins where they cross), taken to 0..1 and through `remap`, and
/// then to outputMin..outputMax. An empty input range divides by zero, and the NaN or infinity goes into `remap`.
float remapValue(float inputValue, float inputMin, float inputMax, float outputMin, float outputMax,
                 svec<float, 4> positions, svec<float, 4> values, svec<int, 4> interpolation);

} // namespace zent
