#pragma once

#include "zent/geometry/Surface.h"

#include <cstddef>
#include <vector>

namespace zent {

/// One parameter direction of a surface, so that what holds in U and in V alike is written once. Refers to the surface.
struct SurfaceDirection {
    unsigned degree;
    unsigned form;
    const std::vector<float>& knots;
    std::size_t count;  ///< control points along this direction
    std::size_t stride; ///< distance between two of them in the surface's list

    float start() const { return knots[degree - 1]; }
    float end() const { return knots[knots.size() - degree]; }
};

inline SurfaceDirection alongU(const Surface& surface) {
    return {surface.degreeU, surface.formU, surface.knotsU, surface.cvCountU(), surface.cvCountV()};
}

inline SurfaceDirection alongV(const Surface& surface) {
    return {surface.degreeV, surface.formV, surface.knotsV, surface.cvCountV(), 1};
}

} // namespace zent
