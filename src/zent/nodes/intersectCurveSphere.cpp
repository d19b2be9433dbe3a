#include "zent/nodes/intersectCurveSphere.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"
#include "zent/nodes/closestSearch.h"

#include <algorithm>
#include <limits>

namespace zent {
namespace {

/// How far beyond a segment's ends a crossing still counts, as a fraction of it.
constexpr float kOverhang = 0.001f;

/// No crossing yet. Positive, so that a crossing at parameter 0 reads as none: deliberate.
constexpr float kNoCrossing = std::numeric_limits<float>::min();

float bisectTowardsEnd(const Curve& curve, float low, vec3 center, float radius) {
    float high = curve.domainEnd();
    while (high - low > kSearchTolerance) {
        const float mid = (high + low) * 0.5f;
        if (!(mid > low && mid < high)) { // large parameters: the next float is further away than the tolerance
            break;
        }
        const vec3 fromCenter = worldPoint(curve, mid) - center;
        if (glm::dot(fromCenter, fromCenter) - radius * radius > 0.0f) {
            high = mid;
        } else {
            low = mid;
        }
    }
    return (high + low) * 0.5f;
}

} // namespace

RaySphereHit intersectLine(vec3 origin, vec3 direction, vec3 center, float radius) {
    const float a = glm::dot(direction, direction);
    const float b = 2.0f * glm::dot(origin - center, direction);
    const float discriminant = b * b + a * 4.0f * (radius * radius - glm::dot(center - origin, center - origin));
    if (discriminant < 0.0f) {
        return {false, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::quiet_NaN()};
    }
    const float root = guardedSqrt(discriminant);
    const float inverse = 1.0f / (a + a);
    return {true, -(root + b) * inverse, (root - b) * inverse};
}

RaySphereHit intersectRay(vec3 from, vec3 to, vec3 center, float radius) {
    return intersectLine(from, to - from, center, radius);
}

float intersectCurveSphere1D(const Curve& curve, vec3 center, float radius) {
    requireEvaluable(curve, "curve");
    requireKnotPerPoint(curve, "curve");
    float last = kNoCrossing;
    for (unsigned i = 1; i < uniqueCount(curve); ++i) {
        const RaySphereHit hit =
            intersectRay(toWorld(curve, curve.cv[i - 1]), toWorld(curve, curve.cv[i]), center, radius);
        for (const float t : {hit.first, hit.second}) {
            if (t >= -kOverhang && t <= 1.0f + kOverhang) {
                last = std::max(last, curve.knots[i - 1] + t * (curve.knots[i] - curve.knots[i - 1]));
            }
        }
    }
    return last == kNoCrossing ? curve.domainEnd() : last;
}

float intersectCurveSphere(const Curve& curve, vec3 center, float radius) {
    return curve.degree == 1 ? intersectCurveSphere1D(curve, center, radius)
                             : bisectTowardsEnd(curve, getClosetPointOnCurve(curve, center), center, radius);
}

float intersectCurveSphere(const Curve& curve, const CurveSamples& samples, vec3 center, float radius) {
    return curve.degree == 1 ? intersectCurveSphere1D(curve, center, radius)
                             : bisectTowardsEnd(curve, getClosetPointOnCurve(curve, samples, center), center, radius);
}

} // namespace zent
