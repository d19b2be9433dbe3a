#pragma once

#include "zent/geometry/Curve.h"

#include <map>

namespace zent {

/// The curve with the control points of a map replaced: control point index to new position, object space. On a
/// periodic curve a write below the degree is repeated in the overlap; a write into the overlap is not repeated below.
/// Throws std::runtime_error for an index that the curve does not have.
Curve curve_from_cv(const Curve& curve, const std::map<unsigned int, vec3>& cv);

/// The same into a curve that is there, whose room it uses again.
void IMPL_curve_from_cv(const Curve& curve, const std::map<unsigned int, vec3>& cv, Curve& result);

} // namespace zent
