#include "zent/nodes/multDoubleLinear.h"

namespace zent {

float multDoubleLinear(float a, float b) {
    return a * b;
}

} // namespace zent
