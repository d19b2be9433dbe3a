#pragma once

#include <map>

namespace zent {

/// The weighted sum of `input`, both by logical index. An input without a weight counts whole, a weight without an
/// input not at all. An empty `input` gives 0.
float blendWeighted(std::map<unsigned int, float> input, std::map<unsigned int, float> weight);

/// The same with its lists by reference.
float IMPL_blendWeighted(const std::map<unsigned int, float>& input, const std::map<unsigned int, float>& weight);

} // namespace zent
