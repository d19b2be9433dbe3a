#pragma once

#include "zent/geometry/Surface.h"

namespace zent {

/// The coarse grid from which the closest-point search starts: (u, v) with the world-space point there, about four
/// samples for each control point and direction, U in the outer loop. The grid takes each domain to start at 0 and
/// holds neither 0 nor the end. It is empty where the domain, or the count of samples, is not above 0.
SurfaceSamples compute_cls_helper(const Surface& surface);
/// The same into a list that is there. `samples` may be those of the surface.
void compute_cls_helper(const Surface& surface, SurfaceSamples& samples);

/// Parameters of the surface point nearest to a world-space point: Newton's iteration with a line search, at most 19
/// steps, from the nearest of `samples` (from the domain's start if there are none). The result lags one step behind
/// the last one. NaN in the point or in the control points gives NaN.
vec2 getClosetPointOnSurface(const Surface& surface, vec3 point, const SurfaceSamples& samples);

/// The same, with samples that are computed at the first call and kept in the record.
vec2 closestPointOnSurface(Surface& surface, vec3 point);

} // namespace zent
