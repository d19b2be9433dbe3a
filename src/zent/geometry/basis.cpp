#include "zent/geometry/basis.h"

#include "zent/geometry/recurrence.h"

namespace zent {

BasisRow basisFunctions(unsigned degree, unsigned span, float u, const std::vector<float>& knots) {
    return withDegree(degree, [&](auto p) { return derivativesOfDegree<p, 0>(span, u, knots)[0]; });
}

BasisDerivatives computeDerivatives(unsigned n, unsigned degree, unsigned span, float u,
                                    const std::vector<float>& knots) {
    return withDegree(degree, [&](auto p) {
        return n < 2 ? derivativesOfDegree<p, 1>(span, u, knots) : derivativesOfDegree<p, 2>(span, u, knots);
    });
}

} // namespace zent
