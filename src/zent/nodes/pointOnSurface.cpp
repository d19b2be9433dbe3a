#include "zent/nodes/pointOnSurface.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/shapes.h"

#include <glm/geometric.hpp>

namespace zent {
namespace {

/// The surface is fit for evaluation; the parameters are turned from fractions if they are such.
vec2 surfaceParameters(const Surface& surface, float u, float v, bool percentage) {
    requireEvaluable(surface, "pointOnSurface: surface");
    if (!percentage) {
        return {u, v};
    }
    // Deliberately the ends alone, whatever the domains' starts.
    return {u * alongU(surface).end(), v * alongV(surface).end()};
}

} // namespace

vec3 pointOnSurfacePosition(const Surface& surface, float u, float v, bool percentage) {
    const vec2 uv = surfaceParameters(surface, u, v, percentage);
    return toWorld(surface, surface.localPoint(uv.x, uv.y));
}

vec3 pointOnSurfaceNormal(const Surface& surface, float u, float v, bool percentage) {
    const vec2 uv = surfaceParameters(surface, u, v, percentage);
    return glm::normalize(glm::cross(surface.dPdU(uv.x, uv.y), surface.dPdV(uv.x, uv.y)));
}

vec3 pointOnSurfaceNormalizedNormal(const Surface& surface, float u, float v, bool percentage) {
    return glm::normalize(pointOnSurfaceNormal(surface, u, v, percentage)); // a second time, deliberately
}

vec3 pointOnSurfaceTangentU(const Surface& surface, float u, float v, bool percentage) {
    const vec2 uv = surfaceParameters(surface, u, v, percentage);
    return surface.dPdU(uv.x, uv.y);
}

vec3 pointOnSurfaceTangentV(const Surface& surface, float u, float v, bool percentage) {
    const vec2 uv = surfaceParameters(surface, u, v, percentage);
    return surface.dPdV(uv.x, uv.y);
}

} // namespace zent
