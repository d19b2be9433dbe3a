#include "zent/nodes/addDoubleLinear.h"

namespace zent {

float addDoubleLinear(float a, float b) {
    return a + b;
}

} // namespace zent
