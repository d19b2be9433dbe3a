#include "zent/geometry/Surface.h"

#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/recurrence.h"
#include "zent/geometry/transform.h"
#include "zent/math/lanes.h"

#include <utility>

namespace zent {
namespace {

/// The sum of weightU * weightV * place(control point) at a pair of parameters, each clamped, with the basis functions'
/// derivatives of orders NU and NV as weights.
template <int NU, int NV, class Place>
vec3 weightedSum(const Surface& surface, float atU, float atV, Place place) {
    const ParameterDirection directionU = alongU(surface);
    const ParameterDirection directionV = alongV(surface);
    const float u = directionU.clamp(atU);
    const float v = directionV.clamp(atV);
    const unsigned spanU = directionU.span(u);
    const unsigned spanV = directionV.span(v);
    const vec3* row = &surface.cv[directionU.first(spanU) * directionU.stride + directionV.first(spanV)];
    const BasisRow weightsU = withDegree(
        directionU.degree, [&](auto p) { return derivativesOfDegree<p, NU>(spanU, u, directionU.knots)[NU]; });
    return withDegree(directionV.degree, [&](auto p) {
        const BasisRow weightsV = derivativesOfDegree<p, NV>(spanV, v, directionV.knots)[NV];
        Lanes sum = {};
        for (unsigned i = 0; i <= directionU.degree; ++i, row += directionU.stride) {
            for (int j = 0; j <= p; ++j) {
                sum += (weightsU[i] * weightsV[j]) * place(row[j]);
            }
        }
        return vec3(sum[0], sum[1], sum[2]);
    });
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
    return weightedSum<0, 0>(*this, u, v, [](const vec3& point) { return pointLanes(point); });
}

vec3 Surface::dPdU(float u, float v) const {
    return weightedSum<1, 0>(*this, u, v, AffineLanes(matrixLinear, translation));
}

vec3 Surface::dPdV(float u, float v) const {
    return weightedSum<0, 1>(*this, u, v, AffineLanes(matrixLinear, translation));
}

} // namespace zent
