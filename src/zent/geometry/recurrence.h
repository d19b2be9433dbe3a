#pragma once

#include "zent/geometry/basis.h"
#include "zent/math/lanes.h"

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

/// The basis functions of degree 3 and their derivatives up to order N, a row side by side: A2.3 to the bit, with the
/// divisions of a step in one. A sum of one number is one with -0, which changes none; a sum that begins with 0 never
/// is -0.
template <int N>
std::array<Lanes, N + 1> cubicRows(unsigned span, float u, const std::vector<float>& knots) {
    std::array<Lanes, N + 1> rows;
    const float* const knot = &knots[span];
    const Lanes left = u - loadLanes(knot - 2);           // the third to the first
    const Lanes right = shiftedDown(loadLanes(knot) - u); // the first to the third
    const Lanes leftOfTwo = shiftedDown(left);            // the second and the first
    const Lanes widthsOfTwo = right + leftOfTwo;          // of the functions of degree 2, and beyond the second
    const Lanes widthsOfThree = right + left;             // of degree 3, and one that nothing depends on
    const float quotient = 1.0f / (right[0] + left[2]);
    const Lanes linear = {0.0f + right[0] * quotient, left[2] * quotient, 0.0f, 0.0f};

    const Lanes quotientsOfTwo = linear / widthsOfTwo;
    const Lanes rising = right * quotientsOfTwo;
    const Lanes quadratic = shiftedUp(leftOfTwo * quotientsOfTwo) + Lanes{rising[0], rising[1], -0.0f, -0.0f};

    const Lanes quotientsOfThree = quadratic / widthsOfThree;
    rows[0] = shiftedUp(left * quotientsOfThree) + withLast(right * quotientsOfThree, -0.0f);

    if constexpr (N > 0) {
        const Lanes inverse = 1.0f / widthsOfThree;
        const Lanes slopes = inverse * quadratic;
        rows[1] = 3.0f * (shiftedUp(slopes) - withLast(slopes, 0.0f));
        if constexpr (N > 1) {
            const Lanes both = -1.0f * shiftedDown(inverse) - inverse;
            const Lanes first = Lanes{inverse[0], both[0], inverse[1], 0.0f} / widthsOfTwo[0] * linear[0];
            const Lanes second = Lanes{inverse[1], both[1], inverse[2], 0.0f} / widthsOfTwo[1] * linear[1];
            rows[2] = 6.0f * (withLast(first + Lanes{0.0f, 0.0f, -0.0f, -0.0f}, -0.0f) + shiftedUp(second));
        }
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
