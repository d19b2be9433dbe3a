#pragma once

#include "zent/geometry/Curve.h"

namespace zent {

/// The world position on a curve at a parameter, or with `fractionMode` at a fraction of its arc length (within a
/// tolerance of 1e-5). Throws std::runtime_error for a curve that cannot be evaluated.
vec3 motionPath(const Curve& curve, float value, bool fractionMode);

} // namespace zent
