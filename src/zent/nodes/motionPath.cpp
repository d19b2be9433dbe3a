#include "zent/nodes/motionPath.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/nodes/closestSearch.h"
#include "zent/nodes/nearestPointOnCurve.h"

namespace zent {
namespace {

constexpr float kAlmostOne = 0.99999f;

/// Bisection on arc length from the domain's start. It also ends where the midpoint equals an end: of a long curve the
/// next float of a length is further away than the tolerance.
float parameterAtLength(const Curve& curve, float target, float total) {
    float a = curve.domainStart();
    float b = curve.domainEnd();
    float lengthA = 0.0f;
    float lengthB = total;
    for (;;) {
        const float mid = (a + b) * 0.5f;
        if (!(mid > a && mid < b)) {
            return mid;
        }
        const float lengthMid = lengthA + curve.arcLength(a, mid);
        if (lengthMid <= target) {
            a = mid;
            lengthA = lengthMid;
        } else {
            b = mid;
            lengthB = lengthMid;
        }
        if (lengthB - lengthA <= kSearchTolerance) {
            return mid;
        }
    }
}

float parameterAtFraction(const Curve& curve, float fraction) {
    const float start = curve.domainStart();
    const float end = curve.domainEnd();
    if (fraction > kAlmostOne || fraction < kSearchTolerance) {
        return along(curve).atFraction(fraction);
    }
    const float total = curve.arcLength(start, end);
    // Without length it is parameter 0, deliberately not the domain's start.
    return total <= kSearchTolerance ? 0.0f : parameterAtLength(curve, total * fraction, total);
}

} // namespace

vec3 motionPath(const Curve& curve, float value, bool fractionMode) {
    requireEvaluable(curve, "curve");
    return worldPoint(curve, fractionMode ? parameterAtFraction(curve, value) : value);
}

} // namespace zent
