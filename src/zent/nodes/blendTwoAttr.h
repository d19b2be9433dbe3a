#pragma once

#include "zent/math/types.h"

namespace zent {

/// From input[0] at t 0 to input[1] at t 1. A single input is the result, whatever t is. Throws on an empty list.
float blendTwoAttr(static_vector<float, 2> input, float t);

} // namespace zent
