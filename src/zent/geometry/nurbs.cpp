#include "zent/geometry/nurbs.h"

#include "zent/math/require.h"

#include <algorithm>
#include <string>

namespace zent {
namespace {

using DegreeTable = std::array<BasisRow, kMaxDegree + 1>;

/// How far below its end a domain is evaluated, as a part of the last knot: 2^-22.
constexpr float kEndMargin = 2.3841858e-7f;

/// The knots on both sides of u: left[j] = u - knots[span + 1 - j], right[j] = knots[span + j] - u, j from 1 to degree.
struct KnotDistances {
    BasisRow left{};
    BasisRow right{};

    KnotDistances(unsigned degree, unsigned span, float u, const std::vector<float>& knots) {
        for (unsigned j = 1; j <= degree; ++j) {
            left[j] = u - knots[span + 1 - j];
            right[j] = knots[span + j] - u;
        }
    }
};

/// The triangular table of A2.3: basis functions of each degree on and above the diagonal, knot differences below it.
DegreeTable basisTable(unsigned degree, const KnotDistances& distances) {
    DegreeTable table{};
    table[0][0] = 1.0f;
    for (unsigned j = 1; j <= degree; ++j) {
        float saved = 0.0f;
        for (unsigned r = 0; r < j; ++r) {
            table[j][r] = distances.right[r + 1] + distances.left[j - r];
            const float temp = table[r][j - 1] / table[j][r];
            table[r][j] = saved + distances.right[r + 1] * temp;
            saved = distances.left[j - r] * temp;
        }
        table[j][j] = saved;
    }
    return table;
}

void requireDirection(const std::string& name, unsigned degree, const std::vector<float>& knots) {
    if (degree < 1 || degree > kMaxDegree) {
        fail(name + " has degree " + std::to_string(degree) + ", evaluation needs 1 to " + std::to_string(kMaxDegree));
    }
    requireAtLeast((name + " knots").c_str(), knots.size(), std::size_t{2} * degree,
                   ("degree " + std::to_string(degree)).c_str());
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
    const KnotDistances distances(degree, span, u, knots);
    BasisRow basis{1.0f};
    for (unsigned j = 1; j <= degree; ++j) {
        float saved = 0.0f;
        for (unsigned r = 0; r < j; ++r) {
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
    const DegreeTable ndu = basisTable(degree, KnotDistances(degree, span, u, knots));
    const int p = static_cast<int>(degree);
    BasisDerivatives rows{};
    for (int j = 0; j <= p; ++j) {
        rows[0][j] = ndu[j][p];
    }
    for (int r = 0; r <= p; ++r) {
        std::array<BasisRow, 2> a{};
        a[0][0] = 1.0f;
        for (int k = 1; k <= static_cast<int>(n); ++k) {
            const BasisRow& previous = a[(k - 1) % 2];
            BasisRow& next = a[k % 2];
            const int rk = r - k;
            const int pk = p - k;
            float d = 0.0f;
            if (r >= k) {
                next[0] = previous[0] / ndu[pk + 1][rk];
                d = next[0] * ndu[rk][pk];
            }
            const int first = rk >= -1 ? 1 : -rk;
            const int last = r - 1 <= pk ? k - 1 : p - r;
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
    int factor = p;
    for (int k = 1; k <= static_cast<int>(n); ++k) {
        for (int j = 0; j <= p; ++j) {
            rows[k][j] *= static_cast<float>(factor);
        }
        factor *= p - k;
    }
    return rows;
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
    requireDirection(name, curve.degree, curve.knots);
    requireAtLeast((std::string(name) + " control points").c_str(), curve.cv.size(),
                   curve.knots.size() - curve.degree + 1, (std::to_string(curve.knots.size()) + " knots").c_str());
}

void requireKnotPerPoint(const Curve& curve, const char* name) {
    requireAtLeast((std::string(name) + " knots").c_str(), curve.knots.size(), curve.cv.size(),
                   (std::to_string(curve.cv.size()) + " control points").c_str());
}

void requireEvaluable(const Surface& surface, const char* name) {
    requireDirection(std::string(name) + " in U", surface.degreeU, surface.knotsU);
    requireDirection(std::string(name) + " in V", surface.degreeV, surface.knotsV);
    const std::size_t countU = surface.knotsU.size() - surface.degreeU + 1;
    const std::size_t countV = surface.knotsV.size() - surface.degreeV + 1;
    requireAtLeast((std::string(name) + " control points").c_str(), surface.cv.size(), countU * countV,
                   (std::to_string(countU) + " by " + std::to_string(countV) + " of the knots").c_str());
}

} // namespace zent
