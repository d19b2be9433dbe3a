#include "zent/nodes/multiplyDivide.h"

namespace zent {

float multiplyDivide1D(float a, float b, int op) {
    switch (op) {
    case 0:
        return a;
    case 1:
        return a * b;
    case 2:
        return a / b;
    case 3:
        return std::pow(a, b);
    default:
        return 0.0f;
    }
}

vec3 multiplyDivide3D(vec3 a, vec3 b, int op) {
    return {multiplyDivide1D(a.x, b.x, op), multiplyDivide1D(a.y, b.y, op), multiplyDivide1D(a.z, b.z, op)};
}

} // namespace zent
