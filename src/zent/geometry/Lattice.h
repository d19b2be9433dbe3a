#pragma once

#include "zent/math/types.h"

#include <vector>

namespace zent {

/// The points of a lattice with its transform; unlike the other records it keeps no inverse.
class Lattice {
public:
    unsigned s = 0;           ///< lattice points along S
    unsigned t = 0;           ///< lattice points along T
    unsigned u = 0;           ///< lattice points along U
    std::vector<vec3> points; ///< s * t * u of them, S fastest: index is si + s * (ti + t * ui)
    mat3 matrixLinear{1.0f};
    vec3 translation{0.0f};
};

} // namespace zent
