#pragma once

#include "zent/math/types.h"

#include <vector>

namespace zent {

/// The points of a polygon mesh with the object-to-world transform of its shape. No topology: to a deformer a mesh is a
/// flat array of points.
class Mesh {
public:
    std::vector<vec3> points; ///< object space, Maya's vertex order
    mat3 matrixLinear{1.0f};
    mat3 inverseLinear{1.0f};
    vec3 translation{0.0f};
    vec3 inverseTranslation{0.0f};

    Mesh() = default;
    /// `count` points at the origin, the identity transform. Throws std::length_error beyond the vector's limit.
    explicit Mesh(unsigned long count);
    Mesh(std::vector<vec3>&& points, const mat4& matrix);
};

} // namespace zent
