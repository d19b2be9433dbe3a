#pragma once

#include "zent/math/types.h"

#include <map>
#include <tuple>
#include <utility>
#include <vector>

/// What a deformer keeps for each point, in the forms in which the resource file carries it.
namespace zent {

/// Weights by logical index, sparse.
using WeightMap = std::map<unsigned int, float>;
/// Target index and item index of a blend shape's item.
using ItemIndex = std::pair<unsigned int, unsigned int>;
/// Point index and the offset to add at weight 1, in any order; a point may stand twice.
using DeltaList = std::vector<std::pair<unsigned int, vec3>>;
/// Point index, influence index, weight; sparse, in any order.
using SkinWeights = std::vector<std::tuple<unsigned int, unsigned int, float>>;
/// A number that no one reads, the curve parameter, and the frame, column 0 the tangent.
using WireBindings = std::vector<std::tuple<float, float, mat3>>;
/// The bind position (world space), the point indices of a driver triangle, and the barycentric weights in it.
using WrapBindings = std::vector<std::tuple<vec3, glm::vec<3, unsigned int>, vec3>>;

} // namespace zent
