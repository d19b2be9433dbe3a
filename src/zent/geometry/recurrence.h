#pragma once

#include "zent/geometry/basis.h"

#include <utility>

/// The one recurrence behind all basis functions, for a degree and an order that the compiler knows, so that nothing is
/// left of its loops.
namespace zent {

/// A table of A2.3 for degree P: basis functions of each degree on and above the diagonal, knot differences below it.
/// Of one parameter, or of several side by side on the same span.
template <int P, class Real = float>
using BasisTable = std::array<std::array<Real, P + 1>, P + 1>;

/// The knots on both sides of u: left[j] = u - knots[span + 1 - j], right[j] = knots[span + j] - u, j from 1 to P.
template <int P, class Real>
struct KnotDistances {
    std::array<Real, P + 1> left{};
    std::array<Real, P + 1> right{};

    KnotDistances(unsigned span, const Real& u, const std::vector<float>& knots) {
        for (int j = 1; j <= P; ++j) {
            left[j] = u - knots[span + 1 - j];
            right[j] = knots[span + j] - u;
        }
    }
};

template <int P, class Real>
BasisTable<P, Real> basisTable(unsigned span, const Real& u, const std::vector<float>& knots) {
    const KnotDistances<P, Real> distances(span, u, knots);
    BasisTable<P, Real> ndu{};
    ndu[0][0] = Real{} + 1.0f;
    for (int j = 1; j <= P; ++j) {
        Real saved{};
        for (int r = 0; r < j; ++r) {
            ndu[j][r] = distances.right[r + 1] + distances.left[j - r];
            const Real temp = ndu[r][j - 1] / ndu[j][r];
            ndu[r][j] = saved + distances.right[r + 1] * temp;
            saved = distances.left[j - r] * temp;
        }
        ndu[j][j] = saved;
    }
    return ndu;
}

/// A2.3; for order 0 the basis functions alone, which are those of A2.2.
template <int P, int N>
BasisDerivatives derivativesOfDegree(unsigned span, float u, const std::vector<float>& knots) {
    const BasisTable<P> ndu = basisTable<P>(span, u, knots);
    BasisDerivatives rows{};
    for (int j = 0; j <= P; ++j) {
        rows[0][j] = ndu[j][P];
    }
    // The first derivatives divide 1 by each of these twice, up to the sign.
    std::array<float, P> inverse{};
    for (int r = 0; r < (N > 0 ? P : 0); ++r) {
        inverse[r] = 1.0f / ndu[P][r];
    }
    for (int r = 0; r <= (N > 0 ? P : -1); ++r) {
        std::array<std::array<float, 3>, 2> a{};
        a[0][0] = 1.0f;
        for (int k = 1; k <= N; ++k) {
            const auto& previous = a[(k - 1) % 2];
            auto& next = a[k % 2];
            const int rk = r - k;
            const int pk = P - k;
            float d = 0.0f;
            if (r >= k) {
                next[0] = k == 1 ? inverse[rk] : previous[0] / ndu[pk + 1][rk];
                d = next[0] * ndu[rk][pk];
            }
            const int first = rk >= -1 ? 1 : -rk;
            const int last = r - 1 <= pk ? k - 1 : P - r;
            for (int j = first; j <= last; ++j) {
                next[j] = (previous[j] - previous[j - 1]) / ndu[pk + 1][rk + j];
                d += next[j] * ndu[rk + j][pk];
            }
            if (r <= pk) {
                next[k] = k == 1 ? -inverse[r] : -previous[k - 1] / ndu[pk + 1][r];
                d += next[k] * ndu[r][pk];
            }
            rows[k][r] = d;
        }
    }
    int factor = P;
    for (int k = 1; k <= N; ++k) {
        for (int j = 0; j <= P; ++j) {
            rows[k][j] *= static_cast<float>(factor);
        }
        factor *= P - k;
    }
    return rows;
}

/// Calls `function` with the degree, 1 to 5, as a constant.
template <class Function>
decltype(auto) withDegree(unsigned degree, Function&& function) {
    switch (degree) {
    case 1:
        return function(std::integral_constant<int, 1>());
    case 2:
        return function(std::integral_constant<int, 2>());
    case 3:
        return function(std::integral_constant<int, 3>());
    case 4:
        return function(std::integral_constant<int, 4>());
    default:
        return function(std::integral_constant<int, 5>());
    }
}

} // namespace zent
