#include "zent/nodes/clamp.h"

#include <algorithm>

namespace zent {

float clamp(float input, float lo, float hi) {
    return std::min(std::max(input, lo), hi);
}

} // namespace zent
