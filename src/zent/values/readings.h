#pragma once

#include "zent/math/types.h"

/// Vectors that a result reads in a way of its own.
namespace zent {

/// Euler angles that travel as they stand, with the type "Euler".
struct Euler {
    vec3 angles{0.0f};
};
/// Euler angles in radians that are shown in degrees.
struct Rotation {
    vec3 radians{0.0f};
};
/// A point of a deformer's shape.
struct Vertex {
    vec3 point{0.0f};
};

} // namespace zent
