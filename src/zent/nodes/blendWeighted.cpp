#include "zent/nodes/blendWeighted.h"

namespace zent {

float IMPL_blendWeighted(const std::map<unsigned int, float>& input, const std::map<unsigned int, float>& weight) {
    float sum = 0.0f;
    for (const auto& [index, value] : input) {
        const auto found = weight.find(index);
        sum += (found == weight.end() ? 1.0f : found->second) * value;
    }
    return sum;
}

float blendWeighted(std::map<unsigned int, float> input, std::map<unsigned int, float> weight) {
    return IMPL_blendWeighted(input, weight);
}

} // namespace zent
