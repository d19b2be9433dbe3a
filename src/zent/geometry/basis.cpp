#include "zent/geometry/basis.h"

#include "zent/geometry/recurrence.h"

#include <algorithm>
#include <cstddef>

namespace zent {
namespace {

/// How far below its end a domain is evaluated, as a part of the last knot: 2^-22.
constexpr float kEndMargin = 2.3841858e-7f;

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
    return withDegree(degree, [&](auto p) { return derivativesOfDegree<p, 0>(span, u, knots)[0]; });
}

BasisDerivatives computeDerivatives(unsigned n, unsigned degree, unsigned span, float u,
                                    const std::vector<float>& knots) {
    return withDegree(degree, [&](auto p) {
        return n < 2 ? derivativesOfDegree<p, 1>(span, u, knots) : derivativesOfDegree<p, 2>(span, u, knots);
    });
}

} // namespace zent
