#include "zent/geometry/Curve.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/transform.h"

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

/// The sum of weight and control point over a span, each point in world space before it is weighted.
vec3 sumWorld(const Curve& curve, unsigned span, const BasisRow& weights) {
    const vec3* cv = &curve.cv[span + 1 - curve.degree];
    vec3 sum(0.0f);
    for (unsigned j = 0; j <= curve.degree; ++j) {
        sum += weights[j] * (curve.matrixLinear * cv[j] + curve.translation);
    }
    return sum;
}

vec3 worldDerivative(const Curve& curve, unsigned n, float u) {
    const float clamped = clampParameter(u, curve.degree, curve.knots);
    const unsigned span = findSpan(clamped, curve.degree, curve.knots);
    return sumWorld(curve, span, computeDerivatives(n, curve.degree, span, clamped, curve.knots)[n]);
}

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
    const float clamped = clampParameter(u, degree, knots);
    const unsigned span = findSpan(clamped, degree, knots);
    const BasisRow weights = basisFunctions(degree, span, clamped, knots);
    const vec3* points = &cv[span + 1 - degree];
    vec3 sum(0.0f);
    for (unsigned j = 0; j <= degree; ++j) {
        sum += weights[j] * points[j];
    }
    return sum;
}

vec3 Curve::dPdU(float u) const {
    return worldDerivative(*this, 1, u);
}

vec3 Curve::d2PdU2(float u) const {
    return degree < 2 ? vec3(0.0f) : worldDerivative(*this, 2, u);
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
