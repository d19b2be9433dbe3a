#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

/// Basis functions on Maya's knot vectors, which hold one knot fewer at each end than a textbook's.
/// The NURBS Book, algorithms A2.2 and A2.3, for degrees 1 to 5. None of these functions allocates.
namespace zent {

inline constexpr unsigned kMaxDegree = 5;

/// One value for each of the degree + 1 basis functions that are not zero on a span.
using BasisRow = std::array<float, kMaxDegree + 1>;
/// Row k holds the k-th derivatives.
using BasisDerivatives = std::array<BasisRow, 3>;

/// How far below its end a domain is evaluated, as a part of the last knot: 2^-22.
inline constexpr float kEndMargin = 2.3841858e-7f;

/// The parameter that evaluation uses: at most a little less than the domain's end (2^-22 of the last knot), at least
/// its start. NaN stays NaN.
inline float clampParameter(float u, unsigned degree, const std::vector<float>& knots) {
    if (u < knots[degree - 1]) {
        return knots[degree - 1];
    }
    // The margin scales the last knot, not the domain; a periodic shape clamps like an open one. NaN passes through.
    return std::min(u, knots[knots.size() - degree] - kEndMargin * knots.back());
}

/// The span s with knots[s] <= u < knots[s + 1], the last one from the domain's end on. Control point s - degree + 1 +
/// j takes basis function j. The result is a span that exists for any u, NaN included, and any order of the knots.
inline unsigned findSpan(float u, unsigned degree, const std::vector<float>& knots) {
    const auto first = static_cast<std::ptrdiff_t>(degree) - 1;
    const auto end = static_cast<std::ptrdiff_t>(knots.size()) - static_cast<std::ptrdiff_t>(degree);
    if (u >= knots[static_cast<std::size_t>(end)]) {
        return static_cast<unsigned>(end - 1);
    }
    const auto above = std::upper_bound(knots.begin() + first, knots.begin() + end + 1, u);
    // A parameter outside the domain, NaN or unsorted knots end on a neighbouring span that exists.
    return static_cast<unsigned>(std::clamp(above - knots.begin() - 1, first, end - 1));
}

/// The basis functions at u on a span (A2.2).
BasisRow basisFunctions(unsigned degree, unsigned span, float u, const std::vector<float>& knots);

/// The basis functions and their first n derivatives at u on a span (A2.3), n at most 2.
BasisDerivatives computeDerivatives(unsigned n, unsigned degree, unsigned span, float u,
                                    const std::vector<float>& knots);

} // namespace zent
