#include "zent/nodes/blendTwoAttr.h"

#include "zent/math/require.h"

namespace zent {

float blendTwoAttr(static_vector<float, 2> input, float t) {
    requireAtLeast("input", input.size(), 1, "blendTwoAttr");
    if (input.size() == 1) {
        return input[0];
    }
    return input[0] + (input[1] - input[0]) * t;
}

} // namespace zent
