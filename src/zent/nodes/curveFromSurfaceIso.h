#pragma once

#include "zent/geometry/Curve.h"
#include "zent/geometry/Surface.h"

namespace zent {

// The curves of this file hold world-space control points and the identity matrix. A `direction` of 0 takes `value` as
// a V parameter and runs along U; any other takes it as a U parameter and runs along V.

/// The curve along V at U = `value`: the surface is refined until one row of control points lies on it. At an inner
/// knot the row is counted from the knot's last repetition. A value beyond the domain's end extrapolates, one below its
/// start by more than 1e-5 throws std::runtime_error.
Curve IMPL__curveFromSurfaceIsoV(const Surface& surface, float value);
/// The curve along U at V = `value`, in the same way.
Curve IMPL__curveFromSurfaceIsoU(const Surface& surface, float value);

/// The shortcut for a `value` in a direction of degree 1: a blend of two neighbouring rows. Extrapolates below the
/// first knot; ends just inside the last segment.
Curve curveFromSurfaceIsoInterp(const Surface& surface, int direction, float value);

/// The shortcut for a curve that runs in a direction of degree 1: the surface point at each knot.
Curve curveFromSurfaceIsoConnect(const Surface& surface, int direction, float value);

/// An isoparametric curve of a surface. `value` is clamped to minValue and maxValue (not at all if maxValue is the
/// smaller) and then, if `relative`, taken as a fraction of the domain.
Curve curveFromSurfaceIso(const Surface& surface, int direction, float value, float minValue, float maxValue,
                          bool relative);

} // namespace zent
