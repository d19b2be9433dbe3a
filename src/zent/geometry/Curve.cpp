#include "zent/geometry/Curve.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/recurrence.h"
#include "zent/geometry/transform.h"
#include "zent/math/lanes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zent {
namespace {

struct GaussNode {
    float x;
    float w;
};

/// The 8-point Gauss-Legendre rule on -1 to 1, in the order of summation.
constexpr std::array<GaussNode, 8> kGaussLegendre{{{0.96028984f, 0.101228535f},
                                                   {0.7966665f, 0.22238104f},
                                                   {0.5255324f, 0.31370664f},
                                                   {0.18343464f, 0.36268377f},
                                                   {-0.96028984f, 0.101228535f},
                                                   {-0.7966665f, 0.22238104f},
                                                   {-0.5255324f, 0.31370664f},
                                                   {-0.18343464f, 0.36268377f}}};

/// The basis and its derivatives up to order N at a parameter, with the curve's control points there.
template <int P, int N>
struct Evaluation {
    BasisDerivatives weights;
    const vec3* cv;

    Evaluation(const Curve& curve, float u) {
        const ParameterDirection direction = along(curve);
        const float clamped = direction.clamp(u);
        const unsigned span = direction.span(clamped);
        weights = derivativesOfDegree<P, N>(span, clamped, curve.knots);
        cv = &curve.cv[direction.first(span)];
    }

    vec3 localPoint() const {
        vec3 sum(0.0f);
        for (int j = 0; j <= P; ++j) {
            sum += weights[0][j] * cv[j];
        }
        return sum;
    }

    vec3 point(const Curve& curve) const { return curve.matrixLinear * localPoint() + curve.translation; }

    /// The sums of weight and control point of orders 1 to N, each point in world space before it is weighted.
    std::array<vec3, N + 1> derivatives(const Curve& curve) const {
        std::array<vec3, N + 1> sums;
        sums.fill(vec3(0.0f));
        for (int j = 0; j <= P; ++j) {
            const vec3 point_world = curve.matrixLinear * cv[j] + curve.translation;
            for (int k = 1; k <= N; ++k) {
                sums[k] += weights[k][j] * point_world;
            }
        }
        return sums;
    }
};

/// The same, the commonest degree: the numbers of a point side by side.
template <int N>
struct Evaluation<3, N> {
    std::array<Lanes, N + 1> weights;
    Lanes cv[4];

    Evaluation(const Curve& curve, float u) {
        const ParameterDirection direction = along(curve);
        const float clamped = direction.clamp(u);
        const unsigned span = direction.span(clamped);
        weights = cubicRows<N>(span, clamped, curve.knots);
        const float* const first = &curve.cv[direction.first(span)].x;
        for (std::size_t j = 0; j < 3; ++j) { // with a number of the next one
            cv[j] = loadLanes(first + 3 * j);
        }
        cv[3] = shiftedDown(loadLanes(first + 8));
    }

    Lanes sum(int order, const Lanes (&points)[4]) const {
        Lanes sum = {};
        for (std::size_t j = 0; j < 4; ++j) {
            sum += weights[order][j] * points[j];
        }
        return sum;
    }

    vec3 localPoint() const { return toPoint(sum(0, cv)); }

    vec3 point(const Curve& curve) const {
        return toPoint(AffineLanes(curve.matrixLinear, curve.translation)(sum(0, cv)));
    }

    std::array<vec3, N + 1> derivatives(const Curve& curve) const {
        const AffineLanes toWorld(curve.matrixLinear, curve.translation);
        const Lanes points_world[4] = {toWorld(cv[0]), toWorld(cv[1]), toWorld(cv[2]), toWorld(cv[3])};
        std::array<vec3, N + 1> derivatives{};
        for (int k = 1; k <= N; ++k) {
            derivatives[k] = toPoint(sum(k, points_world));
        }
        return derivatives;
    }
};

float panelLength(const Curve& curve, float from, float to) {
    const float half = (to - from) * 0.5f;
    const float mid = (to + from) * 0.5f;
    float panel = 0.0f;
    for (const GaussNode& node : kGaussLegendre) {
        panel += half * node.w * guardedLength(curve.dPdU(mid + half * node.x));
    }
    return panel;
}

} // namespace

Curve::Curve(unsigned degree_, unsigned form_, std::vector<vec3> cv_, std::vector<float> knots_, mat4 matrix)
    : degree(degree_), form(form_), cv(std::move(cv_)), knots(std::move(knots_)) {
    setTransformAndInverse(*this, matrix);
}

Curve::Curve(vec3 point, mat4 matrix) : Curve(1, kFormOpen, {point, point}, {0.0f, 1.0f}, matrix) {}

vec3 Curve::localPoint(float u) const {
    return withDegree(degree, [&](auto p) { return Evaluation<p, 0>(*this, u).localPoint(); });
}

vec3 Curve::dPdU(float u) const {
    return withDegree(degree, [&](auto p) { return Evaluation<p, 1>(*this, u).derivatives(*this)[1]; });
}

vec3 Curve::d2PdU2(float u) const {
    return jet(u).suu;
}

CurveTangent Curve::tangent(float u) const {
    return withDegree(degree, [&](auto p) {
        const Evaluation<p, 1> at(*this, u);
        return CurveTangent{at.point(*this), at.derivatives(*this)[1]};
    });
}

CurveJet Curve::jet(float u) const {
    return withDegree(degree, [&](auto p) {
        constexpr int kOrder = p < 2 ? 1 : 2;
        const Evaluation<p, kOrder> at(*this, u);
        const auto derivatives = at.derivatives(*this);
        return CurveJet{at.point(*this), derivatives[1], p < 2 ? vec3(0.0f) : derivatives[kOrder]};
    });
}

float Curve::arcLength(float from, float to) const {
    const float h = (domainEnd() - domainStart()) / static_cast<float>(spanCount(*this));
    float total = 0.0f;
    float t = from;
    float next = from;
    do {
        next = t + h;
        if (!(next > t)) { // no way forward, by bad knots or rounding: the rest is one panel, as for an infinite step
            next = std::numeric_limits<float>::infinity();
        }
        total = panelLength(*this, std::max(t, from), std::min(to, next)) + total;
        t = next;
    } while (next < to);
    return total;
}

} // namespace zent
