#pragma once

#include "zent/geometry/basis.h"
#include "zent/geometry/Curve.h"
#include "zent/geometry/Surface.h"

/// What an evaluation asks of a curve or surface, and the counts that its form decides.
namespace zent {

/// Control points of a curve without the overlap of a periodic one (0 where there are fewer than the overlap).
unsigned uniqueCount(const Curve& curve);
/// uniqueCount less the degree; 0 where a periodic curve has fewer than twice the degree.
unsigned spanCount(const Curve& curve);

/// A curve or surface that can be evaluated: degrees 1 to 5, at least 2 * degree knots, and the control points that
/// these knots speak for, knots less degree plus 1 (more are not looked at). With it no evaluation, at any parameter,
/// reads outside the lists. Otherwise throws std::runtime_error with a text that names the argument and what is wrong.
/// Surface(point, matrix) does not pass: it holds a point to move, not a surface.
void requireEvaluable(const Curve& curve, const char* name);
void requireEvaluable(const Surface& surface, const char* name);

/// At least as many knots as control points without a periodic overlap, for a walk over these that reads a knot for
/// each.
void requireKnotPerPoint(const Curve& curve, const char* name);

} // namespace zent
