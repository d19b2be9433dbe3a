#include "zent/nodes/remapValue.h"

#include "zent/math/require.h"

#include <algorithm>
#include <utility>

namespace zent {

float remap(float x, svec<float, 4> positions, svec<float, 4> values, svec<int, 4> /*interpolation*/) {
    requireAtLeast("positions", positions.size(), 1, "remap");
    requireAtLeast("values", values.size(), positions.size(), "remap");
    if (!(x > positions.front())) {
        return values.front();
    }
    if (x >= positions.back()) {
        return values.back();
    }
    // Between the first and the last position the halving ends inside the list, be it sorted or not.
    const auto after = std::upper_bound(positions.begin(), positions.end(), x);
    const auto hi = static_cast<std::size_t>(after - positions.begin());
    requireAtLeast("positions", positions.size(), hi + 1, "remap"); // a last position of NaN
    const std::size_t lo = hi - 1;
    return (values[hi] - values[lo]) * (x - positions[lo]) / (positions[hi] - positions[lo]) + values[lo];
}

float remapValue(float inputValue, float inputMin, float inputMax, float outputMin, float outputMax,
                 svec<float, 4> positions, svec<float, 4> values, svec<int, 4> interpolation) {
    const float x = std::max(std::min(inputValue, inputMax), inputMin);
    const float t = (x - inputMin) / (inputMax - inputMin);
    const float r = remap(t, std::move(positions), std::move(values), std::move(interpolation));
    return outputMin + (outputMax - outputMin) * r;
}

} // namespace zent
