#pragma once

#include "zent/geometry/Surface.h"

namespace zent {

/// What a surface is at (u, v), world space: its point, its partial derivatives (not normalised), and the unit vector
/// of their cross product. A normal that vanishes, as at a pole, is NaN.
///
/// With `percentage` each parameter is a fraction of its domain's end; the start is not added. All of them throw
/// std::runtime_error for a surface that cannot be evaluated.
vec3 pointOnSurfacePosition(const Surface& surface, float u, float v, bool percentage);
vec3 pointOnSurfaceNormal(const Surface& surface, float u, float v, bool percentage);
vec3 pointOnSurfaceNormalizedNormal(const Surface& surface, float u, float v, bool percentage);
vec3 pointOnSurfaceTangentU(const Surface& surface, float u, float v, bool percentage);
vec3 pointOnSurfaceTangentV(const Surface& surface, float u, float v, bool percentage);

} // namespace zent
