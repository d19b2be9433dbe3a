#pragma once

#include "zent/geometry/Curve.h"

namespace zent {

/// The point of a curve at a parameter, world space. With `percentage` the parameter is a fraction of the domain's end:
/// the start is not added, so a curve whose domain does not start at 0 is read elsewhere than at that fraction. Throws
/// std::runtime_error for a curve that cannot be evaluated.
vec3 pointOnCurveInfo(const Curve& curve, float parameter, bool percentage);

} // namespace zent
