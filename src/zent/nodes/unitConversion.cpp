#include "zent/nodes/unitConversion.h"

namespace zent {

float unitConversion1D(float v, float factor) {
    return v * factor;
}

vec2 unitConversion2D(vec2 v, float factor) {
    return v * factor;
}

vec3 unitConversion3D(vec3 v, float factor) {
    return v * factor;
}

} // namespace zent
