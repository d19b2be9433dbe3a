#pragma once

#include "zent/geometry/Curve.h"

#include <utility>
#include <vector>

namespace zent {

/// A curve's point at a parameter in world space.
vec3 worldPoint(const Curve& curve, float u);

/// The parameter of the point of a degree 1 curve that is closest to a world-space point; exact, segment by segment. A
/// curve without segments gives its first knot. Throws std::runtime_error for a curve that cannot be evaluated.
float getClosetPointOnCurve1D(const Curve& curve, vec3 point);

/// The parameter of the point of a curve that is closest to a world-space point, by a coarse scan and Newton's
/// iteration on the squared distance (The NURBS Book, 6.1). Throws std::runtime_error for a curve that cannot be
/// evaluated.
float getClosetPointOnCurve(const Curve& curve, vec3 point);

/// The starts of that search, parameters with the points there in world space. For many searches on one curve: they are
/// the same for any point.
using CurveSamples = std::vector<std::pair<float, vec3>>;
CurveSamples closestSamples(const Curve& curve);
/// The same into a list that is there.
void closestSamples(const Curve& curve, CurveSamples& samples);
float getClosetPointOnCurve(const Curve& curve, const CurveSamples& samples, vec3 point);

/// The closest parameter, and the world position of the control point whose index is its integral part. Throws
/// std::runtime_error where there is no such control point.
std::pair<vec3, float> nearestPointOnCurve(const Curve& curve, vec3 point);

} // namespace zent
