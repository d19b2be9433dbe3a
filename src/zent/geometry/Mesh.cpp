#include "zent/geometry/Mesh.h"

#include "zent/geometry/transform.h"

#include <utility>

namespace zent {

Mesh::Mesh(unsigned long count) : points(count, vec3(0.0f)) {}

Mesh::Mesh(std::vector<vec3>&& points_, const mat4& matrix) : points(std::move(points_)) {
    setTransformAndInverse(*this, matrix);
}

} // namespace zent
