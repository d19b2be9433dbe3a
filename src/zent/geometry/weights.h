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
/// Point index and the offset to add at weight 1.
using DeltaList = std::vector<std::pair<unsigned int, vec3>>;
/// Point index, influence index, weight.
using SkinWeights = std::vector<std::tuple<unsigned int, unsigned int, float>>;
/// A number that no one reads, the curve parameter, and the frame, column 0 the tangent.
using WireBindings = std::vector<std::tuple<float, float, mat3>>;

} // namespace zent
