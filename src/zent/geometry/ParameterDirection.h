#pragma once

#include "zent/geometry/basis.h"
#include "zent/geometry/Surface.h"

#include <cstddef>
#include <vector>

namespace zent {

/// One parameter direction of a curve or surface, so that what holds along all of them is written once. Refers to the
/// shape.
struct ParameterDirection {
    unsigned degree;
    unsigned form;
    const std::vector<float>& knots;
    std::size_t count;  ///< control points along this direction
    std::size_t stride; ///< distance between two of them in the shape's list

    float start() const { return knots[degree - 1]; }
    float end() const { return knots[knots.size() - degree]; }
    float atFraction(float fraction) const { return start() + fraction * (end() - start()); }
    float clamp(float u) const { return clampParameter(u, degree, knots); }
    unsigned span(float u) const { return findSpan(u, degree, knots); }
    /// The first of the control points that a span depends on, as an index along this direction.
    std::size_t first(unsigned span) const { return span + 1 - degree; }
    BasisRow basis(unsigned span, float u) const { return basisFunctions(degree, span, u, knots); }
    BasisDerivatives derivatives(unsigned n, unsigned span, float u) const {
        return computeDerivatives(n, degree, span, u, knots);
    }
};

inline ParameterDirection along(const Curve& curve) {
    return {curve.degree, curve.form, curve.knots, curve.cv.size(), 1};
}

inline ParameterDirection alongU(const Surface& surface) {
    return {surface.degreeU, surface.formU, surface.knotsU, surface.cvCountU(), surface.cvCountV()};
}

inline ParameterDirection alongV(const Surface& surface) {
    return {surface.degreeV, surface.formV, surface.knotsV, surface.cvCountV(), 1};
}

} // namespace zent
