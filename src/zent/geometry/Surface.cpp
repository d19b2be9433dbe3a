#include "zent/geometry/Surface.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/transform.h"

#include <utility>

namespace zent {
namespace {

/// A parameter of one direction: clamped, with its span.
struct Station {
    float u;
    unsigned span;

    Station(float parameter, unsigned degree, const std::vector<float>& knots)
        : u(clampParameter(parameter, degree, knots)), span(findSpan(u, degree, knots)) {}

    BasisRow basis(unsigned degree, const std::vector<float>& knots) const {
        return basisFunctions(degree, span, u, knots);
    }
    BasisRow firstDerivative(unsigned degree, const std::vector<float>& knots) const {
        return computeDerivatives(1, degree, span, u, knots)[1];
    }
};

/// The running sum of weightU * weightV * place(control point) over the control points of a pair of spans.
template <class Place>
vec3 weightedSum(const Surface& surface, unsigned spanU, unsigned spanV, const BasisRow& weightsU,
                 const BasisRow& weightsV, Place place) {
    const std::size_t stride = surface.cvCountV();
    const vec3* first = &surface.cv[(spanU + 1 - surface.degreeU) * stride + (spanV + 1 - surface.degreeV)];
    vec3 sum(0.0f);
    for (unsigned i = 0; i <= surface.degreeU; ++i) {
        const vec3* row = first + i * stride;
        for (unsigned j = 0; j <= surface.degreeV; ++j) {
            sum += (weightsU[i] * weightsV[j]) * place(row[j]);
        }
    }
    return sum;
}

} // namespace

Surface::Surface(unsigned degreeU_, unsigned degreeV_, unsigned formU_, unsigned formV_, std::vector<float> knotsU_,
                 std::vector<float> knotsV_, std::vector<vec3> cv_, mat4 matrix)
    : degreeU(degreeU_), degreeV(degreeV_), formU(formU_), formV(formV_), cv(std::move(cv_)),
      knotsU(std::move(knotsU_)), knotsV(std::move(knotsV_)) {
    setMatrix(matrix);
}

Surface::Surface(vec3 point, mat4 matrix) : Surface(1, 1, kFormOpen, kFormOpen, {1.0f}, {1.0f}, {point}, matrix) {}

void Surface::setMatrix(const mat4& matrix) {
    closestSamples.clear();
    setTransformAndInverse(*this, matrix);
}

vec3 Surface::localPoint(float u, float v) const {
    const Station atU(u, degreeU, knotsU);
    const Station atV(v, degreeV, knotsV);
    return weightedSum(*this, atU.span, atV.span, atU.basis(degreeU, knotsU), atV.basis(degreeV, knotsV),
                       [](vec3 point) { return point; });
}

vec3 Surface::dPdU(float u, float v) const {
    const Station atU(u, degreeU, knotsU);
    const Station atV(v, degreeV, knotsV);
    return weightedSum(*this, atU.span, atV.span, atU.firstDerivative(degreeU, knotsU), atV.basis(degreeV, knotsV),
                       [this](vec3 point) { return matrixLinear * point + translation; });
}

vec3 Surface::dPdV(float u, float v) const {
    const Station atU(u, degreeU, knotsU);
    const Station atV(v, degreeV, knotsV);
    return weightedSum(*this, atU.span, atV.span, atU.basis(degreeU, knotsU), atV.firstDerivative(degreeV, knotsV),
                       [this](vec3 point) { return matrixLinear * point + translation; });
}

} // namespace zent
