#include "zent/nodes/pointOnPoly.h"

#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

#include <utility>

// Frames are told in glm's columns: column i is where the frame's axis i points.
namespace zent {

vec3 pointOnPolyTranslate(mat4 matrix, const Mesh& mesh, vec2 uv, std::array<unsigned, 4> faceVertices,
                          std::array<vec2, 4> faceUVs) {
    return transformPoint(matrix, follicleTranslateMesh(mesh, uv.x, uv.y, faceVertices, faceUVs));
}

vec3 pointOnPolyRotate(mat4 matrix, const Mesh& mesh, vec2 uv, int rotateOrder, std::array<unsigned, 4> faceVertices,
                       std::array<vec2, 4> faceUVs, std::array<unsigned, 4> cornerFaceCounts,
                       svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                       svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection) {
    const auto [n, t] =
        follicleGetNormalAndTangent(mesh, uv.x, uv.y, faceVertices, faceUVs, cornerFaceCounts, std::move(cornerFaces),
                                    std::move(cornerNeighbours), std::move(ringCounts), std::move(ringConnection));
    const vec3 x = glm::cross(glm::normalize(glm::cross(n, t)), n);
    const vec3 z = glm::cross(x, n);
    const mat3 linear(matrix);
    return smallerEuler(
        get_both_euler(mat3(linear * x, linear * n, linear * z), static_cast<RotateOrder>(rotateOrder)));
}

} // namespace zent
