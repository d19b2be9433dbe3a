#pragma once

#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

#include <utility>
#include <vector>

namespace zent {

/// Maya's skinCluster, classic linear: each point becomes the weighted sum of itself as every influence carries it. T
/// is Mesh, Curve, Surface or Lattice; points go in and come out in object space.
///
/// `geomMatrix` is the shape's object-to-world matrix; `matrix` and `bindPreMatrix` hold, by influence index, its world
/// matrix and its inverse bind matrix. Weights are used as they are: a point that no weight names ends at the origin.
/// An envelope below 1e-5 gives a copy of the input. Throws std::runtime_error where a weight names a point or an
/// influence that doesn't exist, or where an influence lacks its bind matrix.
template <class T>
T skin(float envelope, T const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
       std::vector<mat4> bindPreMatrix, SkinWeights const& weights);
extern template Mesh skin(float, Mesh const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);
extern template Curve skin(float, Curve const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);
extern template Surface skin(float, Surface const&, mat4 const&, std::vector<mat4>, std::vector<mat4>,
                             SkinWeights const&);
extern template Lattice skin(float, Lattice const&, mat4 const&, std::vector<mat4>, std::vector<mat4>,
                             SkinWeights const&);

/// The same with its lists by reference, for a caller that skins point by point.
template <class T>
T IMPL_skin(float envelope, T const& input, mat4 const& geomMatrix, std::vector<mat4> const& matrix,
            std::vector<mat4> const& bindPreMatrix, SkinWeights const& weights);

/// The same for a caller that skins a record point by point, without an envelope: the matrices of all influences that
/// have both of theirs, made once, and a point by its influences' indices and weights, in their order.
std::vector<mat4> skinPalette(mat4 const& geomMatrix, std::vector<mat4> const& matrix,
                              std::vector<mat4> const& bindPreMatrix);
void skinPalette(mat4 const& geomMatrix, std::vector<mat4> const& matrix, std::vector<mat4> const& bindPreMatrix,
                 std::vector<mat4>& palette);
using PointWeight = std::pair<unsigned int, float>;
vec3 skinPoint(vec3 point, std::vector<mat4> const& palette, const PointWeight* first, const PointWeight* last);
/// The same for all points of a record at once. Throws std::runtime_error where a weight names a point or an influence
/// that doesn't exist.
std::vector<vec3> skinPoints(const vec3* points, std::size_t count, std::vector<mat4> const& palette,
                             SkinWeights const& weights);

Mesh skinMesh(float envelope, Mesh const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
              std::vector<mat4> bindPreMatrix, SkinWeights const& weights);
Curve skinCurve(float envelope, Curve const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                std::vector<mat4> bindPreMatrix, SkinWeights const& weights);
Surface skinSurface(float envelope, Surface const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                    std::vector<mat4> bindPreMatrix, SkinWeights const& weights);
Lattice skinLattice(float envelope, Lattice const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                    std::vector<mat4> bindPreMatrix, SkinWeights const& weights);

} // namespace zent
