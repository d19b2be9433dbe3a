#include "zent/nodes/blendWeighted.h"

namespace zent {

float blendWeighted(std::map<unsigned int, float> input, std::map<unsigned int, float> weight) {
    float sum = 0.0f;
    for (const auto& [index, value] : input) {
        const auto found = weight.find(index);
        sum += (found == weight.end() ? 1.0f : found->second) * value;
    }
    return sum;
}

} // namespace zent
