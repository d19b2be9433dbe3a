#pragma once

#include "zent/geometry/Curve.h"
#include "zent/geometry/Mesh.h"

#include <vector>

namespace zent {

// The curves that run along a list of mesh vertices hold world-space control points and the identity matrix. An empty
// list, or a vertex that the mesh does not have, throws std::runtime_error.

/// The polyline through the vertices, knots 0, 1, 2 and so on. Periodic where the first and the last vertex are the
/// same; the duplicate stays a control point.
Curve polyEdgeToCurveLinear(const Mesh& mesh, std::vector<unsigned> vertices);

/// The closed curve through the vertices at the parameters 0, 1, 2 and so on, degree 1 to 5. The list's last entry is
/// the duplicate of its first; at least two must be left without it. An even degree through an even count has no
/// solution: the control points are then NaN, or as large as the rounding of the system leaves them.
Curve polyEdgeToCurvePeriodic(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree);

/// `curveFromEditPoints` through the vertices.
Curve polyEdgeToCurveOpen(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree);

/// The polyline for degree 1, otherwise the closed curve where the first and the last vertex are the same, and the open
/// one (degree 3) where they are not.
Curve polyEdgeToCurve(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree);

/// `polyEdgeToCurve` of degree 1.
Curve curveFromMeshEdge(const Mesh& mesh, std::vector<unsigned> vertices);

/// The open curve of degree 3 through at least two points at the parameters 0, 1, 2 and so on, with a second derivative
/// of zero at both ends. Throws std::runtime_error for any other degree.
Curve curveFromEditPoints(unsigned degree, std::vector<vec3> points);

} // namespace zent
