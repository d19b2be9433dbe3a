#pragma once

#include "zent/math/types.h"

namespace zent {

/// `ifTrue` where `first` and `second` stand in the relation `op`: 0 equal, 1 not equal (both by a tolerance of 1e-5),
/// 2 greater, 3 greater or equal, 4 less, 5 less or equal. `ifFalse` otherwise, and for any other op.
float condition1D(float first, float second, float ifTrue, float ifFalse, int op);

/// The same test of two scalars, a whole vector chosen.
vec3 condition3D(float first, float second, vec3 ifTrue, vec3 ifFalse, int op);

} // namespace zent
