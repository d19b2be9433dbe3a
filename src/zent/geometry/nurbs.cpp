#include "zent/geometry/nurbs.h"

#include "zent/math/require.h"

#include <algorithm>
#include <string>

namespace zent {
namespace {

/// How far below its end a domain is evaluated, as a part of the last knot: 2^-22.
constexpr float kEndMargin = 2.3841858e-7f;

/// A table of A2.3 for degree P: basis functions of each degree on and above the diagonal, knot differences below it.
template <int P>
using BasisTable = std::array<std::array<float, P + 1>, P + 1>;

/// The knots on both sides of u: left[j] = u - knots[span + 1 - j], right[j] = knots[span + j] - u, j from 1 to degree.
struct KnotDistances {
    BasisRow left{};
    BasisRow right{};

    KnotDistances(int degree, unsigned span, float u, const std::vector<float>& knots) {
        for (int j = 1; j <= degree; ++j) {
            left[j] = u - knots[span + 1 - j];
            right[j] = knots[span + j] - u;
        }
    }
};

template <int P>
BasisTable<P> basisTable(unsigned span, float u, const std::vector<float>& knots) {
    const KnotDistances distances(P, span, u, knots);
    BasisTable<P> ndu{};
    ndu[0][0] = 1.0f;
    for (int j = 1; j <= P; ++j) {
        float saved = 0.0f;
        for (int r = 0; r < j; ++r) {
            ndu[j][r] = distances.right[r + 1] + distances.left[j - r];
            const float temp = ndu[r][j - 1] / ndu[j][r];
            ndu[r][j] = saved + distances.right[r + 1] * temp;
            saved = distances.left[j - r] * temp;
        }
        ndu[j][j] = saved;
    }
    return ndu;
}

/// A2.3 for a degree and an order that the compiler knows, so that nothing is left of its loops.
template <int P, int N>
BasisDerivatives derivativesOfDegree(unsigned span, float u, const std::vector<float>& knots) {
    const BasisTable<P> ndu = basisTable<P>(span, u, knots);
    BasisDerivatives rows{};
    for (int j = 0; j <= P; ++j) {
        rows[0][j] = ndu[j][P];
    }
    for (int r = 0; r <= P; ++r) {
        std::array<std::array<float, 3>, 2> a{};
        a[0][0] = 1.0f;
        for (int k = 1; k <= N; ++k) {
            const auto& previous = a[(k - 1) % 2];
            auto& next = a[k % 2];
            const int rk = r - k;
            const int pk = P - k;
            float d = 0.0f;
            if (r >= k) {
                next[0] = previous[0] / ndu[pk + 1][rk];
                d = next[0] * ndu[rk][pk];
            }
            const int first = rk >= -1 ? 1 : -rk;
            const int last = r - 1 <= pk ? k - 1 : P - r;
            for (int j = first; j <= last; ++j) {
                next[j] = (previous[j] - previous[j - 1]) / ndu[pk + 1][rk + j];
                d += next[j] * ndu[rk + j][pk];
            }
            if (r <= pk) {
                next[k] = -previous[k - 1] / ndu[pk + 1][r];
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

template <int P>
BasisDerivatives derivativesOfDegree(unsigned n, unsigned span, float u, const std::vector<float>& knots) {
    return n < 2 ? derivativesOfDegree<P, 1>(span, u, knots) : derivativesOfDegree<P, 2>(span, u, knots);
}

// The texts of the checks are only made where one fails: evaluation is behind a check at each door.

void requireDirection(const char* name, const char* direction, unsigned degree, const std::vector<float>& knots) {
    if (degree < 1 || degree > kMaxDegree) {
        fail(std::string(name) + direction + " has degree " + std::to_string(degree) + ", evaluation needs 1 to " +
             std::to_string(kMaxDegree));
    }
    if (knots.size() < std::size_t{2} * degree) {
        requireAtLeast((std::string(name) + direction + " knots").c_str(), knots.size(), std::size_t{2} * degree,
                       ("degree " + std::to_string(degree)).c_str());
    }
}

} // namespace

float clampParameter(float u, unsigned degree, const std::vector<float>& knots) {
    if (u < knots[degree - 1]) {
        return knots[degree - 1];
    }
    // The margin scales the last knot, not the domain; a periodic shape clamps like an open one. NaN passes through.
    return std::min(u, knots[knots.size() - degree] - kEndMargin * knots.back());
}

unsigned findSpan(float u, unsigned degree, const std::vector<float>& knots) {
    const auto first = static_cast<std::ptrdiff_t>(degree) - 1;
    const auto end = static_cast<std::ptrdiff_t>(knots.size()) - static_cast<std::ptrdiff_t>(degree);
    if (u >= knots[static_cast<std::size_t>(end)]) {
        return static_cast<unsigned>(end - 1);
    }
    const auto above = std::upper_bound(knots.begin() + first, knots.begin() + end + 1, u);
    // A parameter outside the domain, NaN or unsorted knots end on a neighbouring span that exists.
    return static_cast<unsigned>(std::clamp(above - knots.begin() - 1, first, end - 1));
}

BasisRow basisFunctions(unsigned degree, unsigned span, float u, const std::vector<float>& knots) {
    const int p = static_cast<int>(degree);
    const KnotDistances distances(p, span, u, knots);
    BasisRow basis{1.0f};
    for (int j = 1; j <= p; ++j) {
        float saved = 0.0f;
        for (int r = 0; r < j; ++r) {
            const float temp = basis[r] / (distances.right[r + 1] + distances.left[j - r]);
            basis[r] = saved + distances.right[r + 1] * temp;
            saved = distances.left[j - r] * temp;
        }
        basis[j] = saved;
    }
    return basis;
}

BasisDerivatives computeDerivatives(unsigned n, unsigned degree, unsigned span, float u,
                                    const std::vector<float>& knots) {
    switch (degree) {
    case 1:
        return derivativesOfDegree<1>(n, span, u, knots);
    case 2:
        return derivativesOfDegree<2>(n, span, u, knots);
    case 3:
        return derivativesOfDegree<3>(n, span, u, knots);
    case 4:
        return derivativesOfDegree<4>(n, span, u, knots);
    default:
        return derivativesOfDegree<5>(n, span, u, knots);
    }
}

unsigned uniqueCount(const Curve& curve) {
    const auto count = static_cast<unsigned>(curve.cv.size());
    const unsigned overlap = curve.form == kFormPeriodic ? curve.degree : 0;
    return count < overlap ? 0 : count - overlap;
}

unsigned spanCount(const Curve& curve) {
    const unsigned count = uniqueCount(curve);
    return count < curve.degree ? 0 : count - curve.degree;
}

void requireEvaluable(const Curve& curve, const char* name) {
    requireDirection(name, "", curve.degree, curve.knots);
    const std::size_t needed = curve.knots.size() - curve.degree + 1;
    if (curve.cv.size() < needed) {
        requireAtLeast((std::string(name) + " control points").c_str(), curve.cv.size(), needed,
                       (std::to_string(curve.knots.size()) + " knots").c_str());
    }
}

void requireEvaluable(const Surface& surface, const char* name) {
    requireDirection(name, " in U", surface.degreeU, surface.knotsU);
    requireDirection(name, " in V", surface.degreeV, surface.knotsV);
    const std::size_t countU = surface.knotsU.size() - surface.degreeU + 1;
    const std::size_t countV = surface.knotsV.size() - surface.degreeV + 1;
    if (surface.cv.size() < countU * countV) {
        requireAtLeast((std::string(name) + " control points").c_str(), surface.cv.size(), countU * countV,
                       (std::to_string(countU) + " by " + std::to_string(countV) + " of the knots").c_str());
    }
}

void requireKnotPerPoint(const Curve& curve, const char* name) {
    const std::size_t count = uniqueCount(curve);
    if (curve.knots.size() < count) {
        requireAtLeast((std::string(name) + " knots").c_str(), curve.knots.size(), count,
                       (std::to_string(count) + " control points").c_str());
    }
}

} // namespace zent
