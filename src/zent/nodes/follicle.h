#pragma once

#include "zent/geometry/Mesh.h"
#include "zent/geometry/Surface.h"
#include "zent/math/types.h"

#include <array>
#include <utility>

namespace zent {

// A mesh record has no topology, so the mesh functions take the neighbourhood of the quad under the follicle:
//   faceVertices, faceUVs    the quad's corners in face order, as vertex indices and UVs
//   cornerFaceCounts         for each corner, how many faces of the ring touch it
//   cornerFaces              those faces as indices into the ring, corner after corner
//   cornerNeighbours         for each entry of cornerFaces, the two vertices next to the corner in that face
//   ringCounts               for each face of the ring, its number of vertices
//   ringConnection           their vertex indices, face after face
// Lists may be longer than needed. An index or a count that leads outside its list throws std::runtime_error.

/// Three of a quad's corners (0 to 3), each with its barycentric weight.
using CornerWeights = std::array<std::pair<unsigned, float>, 3>;

/// The barycentric weights of a point in a triangle, in the order of its corners. NaN for a degenerate triangle.
std::array<float, 3> follicle__IMPL__barycentric(vec2 point, std::array<vec2, 3> triangle);

/// How far the weights leave the range 0 to 1: the largest of the three distances.
float follicle__IMPL__offset(const CornerWeights& weights);

/// The triangle of a quad that holds `uv`, with its weights there. The quad is split along the shorter diagonal in
/// world space (0-2 on a tie); a point outside both triangles extrapolates from the second.
CornerWeights follicle__IMPL__select(const Mesh& mesh, vec2 uv, std::array<unsigned, 4> faceVertices,
                                     std::array<vec2, 4> faceUVs);

/// The world-space point of a mesh at (u, v) on one of its quads.
vec3 follicleTranslateMesh(const Mesh& mesh, float u, float v, std::array<unsigned, 4> faceVertices,
                           std::array<vec2, 4> faceUVs);

/// The world-space normal and tangent at (u, v). The normal blends vertex normals that weigh each face by its area and
/// its angle at the vertex; the tangent is the direction of growing U on the triangle, from the V components alone. NaN
/// where a face, an edge, or the triangle's extent in V vanishes.
std::pair<vec3, vec3> follicleGetNormalAndTangent(const Mesh& mesh, float u, float v,
                                                  std::array<unsigned, 4> faceVertices, std::array<vec2, 4> faceUVs,
                                                  std::array<unsigned, 4> cornerFaceCounts,
                                                  svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                                                  svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection);

/// The Euler angles (xyz, radians) of the frame at (u, v): Z along the normal, X against the tangent.
vec3 follicleRotateMesh(const Mesh& mesh, float u, float v, std::array<unsigned, 4> faceVertices,
                        std::array<vec2, 4> faceUVs, std::array<unsigned, 4> cornerFaceCounts,
                        svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                        svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection);

/// The world-space point of a surface; u and v are fractions of its domain.
vec3 follicleTranslateSurface(const Surface& surface, float u, float v);

/// The Euler angles (xyz, radians) of a surface's frame: Z along the normal, X along the derivative in U. u and v are
/// fractions of the domain. NaN where a derivative or the normal vanishes.
vec3 follicleRotateSurface(const Surface& surface, float u, float v);

} // namespace zent
