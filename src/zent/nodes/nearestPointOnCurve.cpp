#include "zent/nodes/nearestPointOnCurve.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"
#include "zent/nodes/closestSearch.h"

#include <algorithm>
#include <limits>
#include <string>

namespace zent {
namespace {

constexpr int kMaxNewtonSteps = 20;
constexpr unsigned kMaxSpansOfLiteralScan = 3;

using NearestOnCurve = NearestSample<float>;

bool isSampledAtKnots(const Curve& curve) {
    return spanCount(curve) > kMaxSpansOfLiteralScan;
}

/// Calls `visit(u, point)` for each start of the search.
template <class Visit>
void visitSamples(const Curve& curve, Visit visit) {
    if (isSampledAtKnots(curve)) {
        requireKnotPerPoint(curve, "curve");
        for (unsigned knot = curve.degree - 1; knot <= curve.degree - 1 + spanCount(curve); ++knot) {
            visit(curve.knots[knot], worldPoint(curve, curve.knots[knot]));
        }
    } else {
        // These are not scaled to the domain, deliberately: of a wider one they see only the beginning.
        for (const float u : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
            visit(u, worldPoint(curve, u));
        }
    }
}

/// The best sample inside the domain, so that halving a step from there ends.
float startParameter(const Curve& curve, const NearestOnCurve& best) {
    return isSampledAtKnots(curve) ? clampParameter(best.at, curve.degree, curve.knots)
                                   : std::max(std::min(best.at, curve.domainEnd()), curve.domainStart());
}

/// u - step with the step halved until it stays in the domain; u itself where halving does not change the step any
/// more.
float stepInsideDomain(const Curve& curve, float u, float step) {
    float next = u - step;
    while (next < curve.domainStart() || next > curve.domainEnd()) {
        const float half = step * 0.5f;
        if (half == step) {
            return u;
        }
        step = half;
        next = u - step;
    }
    return next;
}

float wrapOrClamp(const Curve& curve, float u) {
    if (curve.form == kFormPeriodic) {
        return wrapByEnd(u, curve.domainEnd());
    }
    // The lower bound is 0 and not the domain's start, deliberately: it acts on a domain that starts below 0.
    if (u < 0.0f) {
        return 0.0f;
    }
    const float margin = static_cast<float>(uniqueCount(curve)) * std::numeric_limits<float>::epsilon();
    return std::min(u, curve.domainEnd() - margin);
}

/// Newton's iteration on the squared distance from a start in the domain.
float newton(const Curve& curve, float u, vec3 point) {
    for (int i = 0; i < kMaxNewtonSteps; ++i) {
        const CurveJet jet = curve.jet(u);
        const vec3 r = jet.s - point;
        const float denominator = glm::dot(r, jet.suu) + glm::dot(jet.su, jet.su);
        if (std::abs(denominator) < kSearchTolerance) {
            return u;
        }
        const float next = wrapOrClamp(curve, stepInsideDomain(curve, u, glm::dot(r, jet.su) / denominator));
        if (std::abs(next - u) < kSearchTolerance) {
            return u; // the parameter from before this step, deliberately
        }
        u = next;
    }
    return u;
}

} // namespace

vec3 worldPoint(const Curve& curve, float u) {
    return toWorld(curve, curve.localPoint(u));
}

float getClosetPointOnCurve1D(const Curve& curve, vec3 point) {
    requireEvaluable(curve, "curve");
    requireKnotPerPoint(curve, "curve");
    const auto squaredDistance = [&](vec3 candidate) { return glm::dot(candidate - point, candidate - point); };
    NearestOnCurve nearest{curve.domainStart()};
    for (unsigned i = 1; i < uniqueCount(curve); ++i) {
        const vec3 a = toWorld(curve, curve.cv[i - 1]);
        const vec3 b = toWorld(curve, curve.cv[i]);
        const vec3 d = b - a;
        const float t = glm::dot(d, point - a) / glm::dot(d, d);
        if (t > 1.0f) {
            nearest.offer(curve.knots[i], squaredDistance(b));
        } else if (t >= 0.0f) {
            const float u = curve.knots[i - 1] + t * (curve.knots[i] - curve.knots[i - 1]);
            nearest.offer(u, squaredDistance(worldPoint(curve, u)));
        } else { // before the segment, or NaN: a segment of no length
            nearest.offer(curve.knots[i - 1], squaredDistance(a));
        }
    }
    return nearest.at;
}

CurveSamples closestSamples(const Curve& curve) {
    CurveSamples samples;
    closestSamples(curve, samples);
    return samples;
}

void closestSamples(const Curve& curve, CurveSamples& samples) {
    requireEvaluable(curve, "curve");
    samples.clear();
    visitSamples(curve, [&](float u, vec3 sample) { samples.emplace_back(u, sample); });
}

float getClosetPointOnCurve(const Curve& curve, const CurveSamples& samples, vec3 point) {
    if (curve.degree == 1) {
        return getClosetPointOnCurve1D(curve, point);
    }
    requireEvaluable(curve, "curve");
    NearestOnCurve best{curve.domainStart()};
    for (const auto& [u, sample] : samples) {
        best.offer(u, guardedLength(sample - point));
    }
    return newton(curve, startParameter(curve, best), point);
}

float getClosetPointOnCurve(const Curve& curve, vec3 point) {
    if (curve.degree == 1) {
        return getClosetPointOnCurve1D(curve, point);
    }
    requireEvaluable(curve, "curve");
    NearestOnCurve best{curve.domainStart()};
    visitSamples(curve, [&](float u, vec3 sample) { best.offer(u, guardedLength(sample - point)); });
    return newton(curve, startParameter(curve, best), point);
}

std::pair<vec3, float> nearestPointOnCurve(const Curve& curve, vec3 point) {
    const float u = getClosetPointOnCurve(curve, point);
    if (!(u > -1.0f && u < static_cast<float>(curve.cv.size()))) {
        fail("nearestPointOnCurve ends at parameter " + shown(u) + ", curve has " + std::to_string(curve.cv.size()) +
             " control points");
    }
    // The parameter truncated to an index, deliberately: the position is that of a control point.
    return {toWorld(curve, curve.cv[static_cast<std::size_t>(u)]), u};
}

} // namespace zent
