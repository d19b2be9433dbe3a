#include "zent/geometry/Surface.h"

#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/transform.h"

#include <utility>

namespace zent {
namespace {

/// The sum of weightU * weightV * place(control point) at a pair of parameters, each clamped, with the basis functions'
/// derivatives of orders NU and NV as weights.
template <unsigned NU, unsigned NV, class Place>
vec3 weightedSum(const Surface& surface, float atU, float atV, Place place) {
    const ParameterDirection directionU = alongU(surface);
    const ParameterDirection directionV = alongV(surface);
    const auto weightsAt = [](const ParameterDirection& direction, unsigned span, float u, auto order) {
        if constexpr (order == 0) {
            return direction.basis(span, u);
        } else {
            return direction.derivatives(order, span, u)[order];
        }
    };
    const float u = directionU.clamp(atU);
    const float v = directionV.clamp(atV);
    const unsigned spanU = directionU.span(u);
    const unsigned spanV = directionV.span(v);
    const BasisRow weightsU = weightsAt(directionU, spanU, u, std::integral_constant<unsigned, NU>());
    const BasisRow weightsV = weightsAt(directionV, spanV, v, std::integral_constant<unsigned, NV>());
    const vec3* row = &surface.cv[directionU.first(spanU) * directionU.stride + directionV.first(spanV)];
    vec3 sum(0.0f);
    for (unsigned i = 0; i <= surface.degreeU; ++i, row += directionU.stride) {
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
    return weightedSum<0, 0>(*this, u, v, [](vec3 point) { return point; });
}

vec3 Surface::dPdU(float u, float v) const {
    return weightedSum<1, 0>(*this, u, v, [this](vec3 point) { return matrixLinear * point + translation; });
}

vec3 Surface::dPdV(float u, float v) const {
    return weightedSum<0, 1>(*this, u, v, [this](vec3 point) { return matrixLinear * point + translation; });
}

} // namespace zent
