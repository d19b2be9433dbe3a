#include "zent/nodes/setRange.h"

namespace zent {

float setRange1D(float value, float oldMin, float oldMax, float min, float max) {
    const float range = oldMax - oldMin;
    if (std::abs(range) < kThreshold) {
        return 0.0f; // Deliberately neither min nor max.
    }
    if (value < oldMin) {
        return min;
    }
    if (value > oldMax) {
        return max;
    }
    return (max - min) * (value - oldMin) / range + min;
}

vec3 setRange3D(vec3 value, vec3 oldMin, vec3 oldMax, vec3 min, vec3 max) {
    vec3 result(0.0f);
    for (int i = 0; i < 3; ++i) {
        result[i] = setRange1D(value[i], oldMin[i], oldMax[i], min[i], max[i]);
    }
    return result;
}

} // namespace zent
