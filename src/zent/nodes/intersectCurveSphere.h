#pragma once

#include "zent/nodes/nearestPointOnCurve.h"

namespace zent {

/// Where a line meets a sphere, in lengths of its direction from its origin; NaN without a hit.
struct RaySphereHit {
    bool hit;
    float first;
    float second;
};

/// The line through `origin` along `direction` with a sphere.
RaySphereHit intersectLine(vec3 origin, vec3 direction, vec3 center, float radius);

/// The line through two points with a sphere: the roots are fractions of the segment, 0 at `from`, 1 at `to`.
RaySphereHit intersectRay(vec3 from, vec3 to, vec3 center, float radius);

/// The parameter of the last crossing of a degree 1 curve with a sphere (world space), the domain's end where there is
/// none. Throws std::runtime_error for a curve that cannot be evaluated.
float intersectCurveSphere1D(const Curve& curve, vec3 center, float radius);

/// The parameter at which a curve leaves a sphere (world space), by bisection from the point closest to the centre,
/// taken as inside, to the end, taken as outside. Throws std::runtime_error for a curve that cannot be evaluated.
float intersectCurveSphere(const Curve& curve, vec3 center, float radius);
/// The same with the starts of the closest-point search from `closestSamples`.
float intersectCurveSphere(const Curve& curve, const CurveSamples& samples, vec3 center, float radius);

} // namespace zent
