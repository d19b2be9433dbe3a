#pragma once

#include "zent/nodes/follicle.h"

namespace zent {

/// The point of a mesh at `uv` on one of its quads, through `matrix` (the parent's inverse, as a rule). The lists of
/// both functions are those of a follicle on a mesh.
vec3 pointOnPolyTranslate(mat4 matrix, const Mesh& mesh, vec2 uv, std::array<unsigned, 4> faceVertices,
                          std::array<vec2, 4> faceUVs);

/// The Euler angles (radians, in `rotateOrder`) of the frame at `uv`, Y along the normal and X along the tangent, its
/// axes through the linear part of `matrix`. A rotate order outside 0 to 5 gives zero.
vec3 pointOnPolyRotate(mat4 matrix, const Mesh& mesh, vec2 uv, int rotateOrder, std::array<unsigned, 4> faceVertices,
                       std::array<vec2, 4> faceUVs, std::array<unsigned, 4> cornerFaceCounts,
                       svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                       svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection);

} // namespace zent
