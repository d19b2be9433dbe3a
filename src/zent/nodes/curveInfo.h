#pragma once

#include "zent/geometry/Curve.h"

namespace zent {

/// The `arcLength` of a curve over its whole domain, world space. A curve of degree 1 is measured exactly, from its
/// control points alone; others by `Curve::arcLength`. Throws std::runtime_error for a curve that cannot be evaluated.
float curveInfo(const Curve& curve);

} // namespace zent
