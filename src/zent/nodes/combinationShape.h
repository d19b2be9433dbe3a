#pragma once

#include "zent/math/types.h"

namespace zent {

/// Several shape weights as one, by method: 0 their product (1 for none), 1 the lowest, 2 their product times their
/// number over their sum (NaN where both vanish, as for none), anything else 0. Throws std::runtime_error for the
/// lowest of no weights.
float combinationShape(svec<float, 4> weights, int method);

} // namespace zent
