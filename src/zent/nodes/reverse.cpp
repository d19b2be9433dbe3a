#include "zent/nodes/reverse.h"

namespace zent {

float reverse(float x) {
    return 1.0f - x;
}

} // namespace zent
