#pragma once

#include <array>
#include <vector>

/// Basis functions on Maya's knot vectors, which hold one knot fewer at each end than a textbook's.
/// The NURBS Book, algorithms A2.2 and A2.3, for degrees 1 to 5. None of these functions allocates.
namespace zent {

inline constexpr unsigned kMaxDegree = 5;

/// One value for each of the degree + 1 basis functions that are not zero on a span.
using BasisRow = std::array<float, kMaxDegree + 1>;
/// Row k holds the k-th derivatives.
using BasisDerivatives = std::array<BasisRow, 3>;

/// The parameter that evaluation uses: at most a little less than the domain's end (2^-22 of the last knot), at least
/// its start. NaN stays NaN.
float clampParameter(float u, unsigned degree, const std::vector<float>& knots);

/// The span s with knots[s] <= u < knots[s + 1], the last one from the domain's end on. Control point s - degree + 1 +
/// j takes basis function j. The result is a span that exists for any u, NaN included, and any order of the knots.
unsigned findSpan(float u, unsigned degree, const std::vector<float>& knots);

/// The basis functions at u on a span (A2.2).
BasisRow basisFunctions(unsigned degree, unsigned span, float u, const std::vector<float>& knots);

/// The basis functions and their first n derivatives at u on a span (A2.3), n at most 2.
BasisDerivatives computeDerivatives(unsigned n, unsigned degree, unsigned span, float u,
                                    const std::vector<float>& knots);

} // namespace zent
