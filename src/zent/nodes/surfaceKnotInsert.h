#pragma once

#include "zent/geometry/Surface.h"

namespace zent {

/// The same surface with `knot` inserted once into its U knots: Boehm's insertion (The NURBS Book, algorithm A5.3 for
/// one knot) on every column of control points. Neither the knot's multiplicity nor the form is looked at: a periodic
/// surface is refined like an open one, and a knot beyond the domain's end extrapolates. One below its start throws
/// std::runtime_error.
Surface surfaceKnotInsertOnU(const Surface& surface, float knot);
/// The same in V, on every row.
Surface surfaceKnotInsertOnV(const Surface& surface, float knot);

} // namespace zent
