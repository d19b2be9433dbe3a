#include "zent/nodes/combinationShape.h"

#include "zent/math/require.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace zent {

float combinationShape(svec<float, 4> weights, int method) {
    const auto product = [&] { return std::accumulate(weights.begin(), weights.end(), 1.0f, std::multiplies<>()); };
    switch (method) {
    case 0:
        return product();
    case 1:
        requireAtLeast("weights", weights.size(), 1, "the lowest method");
        return *std::min_element(weights.begin(), weights.end());
    case 2:
        return product() * static_cast<float>(weights.size()) / std::accumulate(weights.begin(), weights.end(), 0.0f);
    default:
        return 0.0f;
    }
}

} // namespace zent
