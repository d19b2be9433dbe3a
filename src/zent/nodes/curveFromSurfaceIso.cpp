#include "zent/nodes/curveFromSurfaceIso.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"
#include "zent/nodes/surfaceKnotInsert.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zent {
namespace {

ParameterDirection fixedDirection(const Surface& surface, int direction) {
    return direction != 0 ? alongU(surface) : alongV(surface);
}

ParameterDirection runningDirection(const Surface& surface, int direction) {
    return direction != 0 ? alongV(surface) : alongU(surface);
}

Curve curveAlong(const ParameterDirection& running, unsigned degree, std::vector<vec3> points) {
    return Curve(degree, running.form, std::move(points), running.knots, mat4(1.0f));
}

bool meets(float knot, float value) {
    return std::abs(value - knot) < kThreshold;
}

struct RefinedSurface {
    Surface surface;
    std::size_t row; ///< in the fixed direction: the control points of the curve
};

RefinedSurface refineToRow(const Surface& surface, int direction, float value) {
    const ParameterDirection fixed = fixedDirection(surface, direction);
    if (meets(fixed.start(), value)) {
        return {surface, 0};
    }
    if (meets(fixed.end(), value)) {
        // The overlap of a periodic direction is counted in U's degree, in V as well.
        const std::size_t overlap = fixed.degree + (fixed.form == kFormPeriodic ? surface.degreeU : 0);
        requireAtLeast("knots in V", fixed.knots.size(), overlap, "the row at the domain's end");
        return {surface, fixed.knots.size() - overlap};
    }
    if (value < fixed.start()) {
        fail("isoparm value is " + shown(value) + ", the domain starts at " + shown(fixed.start()));
    }
    RefinedSurface refined{surface, findSpan(value, fixed.degree, fixed.knots) + std::size_t{1}};
    const auto multiplicity =
        std::count_if(fixed.knots.begin(), fixed.knots.end(), [&](float knot) { return meets(knot, value); });
    for (auto count = multiplicity; count <= static_cast<std::ptrdiff_t>(fixed.degree); ++count) {
        refined.surface = direction != 0 ? surfaceKnotInsertOnU(refined.surface, value)
                                         : surfaceKnotInsertOnV(refined.surface, value);
    }
    return refined;
}

Curve isoByRefinement(const Surface& surface, int direction, float value) {
    requireEvaluable(surface, "surface");
    const RefinedSurface refined = refineToRow(surface, direction, value);
    const ParameterDirection fixed = fixedDirection(refined.surface, direction);
    const ParameterDirection running = runningDirection(refined.surface, direction);
    std::vector<vec3> points(running.count);
    for (std::size_t j = 0; j < running.count; ++j) {
        points[j] = toWorld(refined.surface, refined.surface.cv[refined.row * fixed.stride + j * running.stride]);
    }
    return curveAlong(running, running.degree, std::move(points));
}

} // namespace

Curve IMPL__curveFromSurfaceIsoV(const Surface& surface, float value) {
    return isoByRefinement(surface, 1, value);
}

Curve IMPL__curveFromSurfaceIsoU(const Surface& surface, float value) {
    return isoByRefinement(surface, 0, value);
}

Curve curveFromSurfaceIsoInterp(const Surface& surface, int direction, float value) {
    requireEvaluable(surface, "surface");
    const ParameterDirection fixed = fixedDirection(surface, direction);
    const ParameterDirection running = runningDirection(surface, direction);
    const std::vector<float>& knots = fixed.knots;
    const float c = std::min(value, knots.back() - kThreshold);
    // The upper bound over all knots. It has no lower limit but the first segment, so that a value below extrapolates;
    // a last knot too large for 1e-5 to move it, and NaN, take the last segment.
    const auto above = std::upper_bound(knots.begin(), knots.end(), c) - knots.begin();
    const std::size_t k = std::clamp<std::size_t>(static_cast<std::size_t>(above), 1, knots.size() - 1);
    requireAtLeast("control points across the curve", fixed.count, k + 1, "the segment of the value");
    const float t = (c - knots[k - 1]) / (knots[k] - knots[k - 1]);
    std::vector<vec3> points(running.count);
    for (std::size_t j = 0; j < running.count; ++j) {
        const vec3* below = &surface.cv[(k - 1) * fixed.stride + j * running.stride];
        points[j] = (1.0f - t) * toWorld(surface, below[0]) + t * toWorld(surface, below[fixed.stride]);
    }
    return curveAlong(running, running.degree, std::move(points));
}

Curve curveFromSurfaceIsoConnect(const Surface& surface, int direction, float value) {
    requireEvaluable(surface, "surface");
    const ParameterDirection running = runningDirection(surface, direction);
    std::vector<vec3> points(running.count);
    for (std::size_t i = 0; i < running.count; ++i) {
        const float knot = running.knots[i];
        points[i] =
            toWorld(surface, direction != 0 ? surface.localPoint(value, knot) : surface.localPoint(knot, value));
    }
    return curveAlong(running, 1, std::move(points));
}

Curve curveFromSurfaceIso(const Surface& surface, int direction, float value, float minValue, float maxValue,
                          bool relative) {
    requireEvaluable(surface, "surface");
    const ParameterDirection fixed = fixedDirection(surface, direction);
    if (!(maxValue < minValue)) {
        value = value < minValue ? minValue : std::min(value, maxValue);
    }
    if (relative) {
        value = fixed.atFraction(value);
    }
    if (fixed.degree == 1) {
        return curveFromSurfaceIsoInterp(surface, direction, value);
    }
    if (runningDirection(surface, direction).degree == 1) {
        return curveFromSurfaceIsoConnect(surface, direction, value);
    }
    return direction != 0 ? IMPL__curveFromSurfaceIsoV(surface, value) : IMPL__curveFromSurfaceIsoU(surface, value);
}

} // namespace zent
