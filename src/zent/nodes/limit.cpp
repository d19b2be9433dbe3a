#include "zent/nodes/limit.h"

#include <algorithm>

namespace zent {

float limit(float value, bool minEnable, float min, bool maxEnable, float max) {
    if (minEnable) {
        value = std::max(value, min);
    }
    if (maxEnable) {
        value = std::min(value, max);
    }
    return value;
}

vec3 limit3(vec3 value, bool minEnableX, float minX, bool maxEnableX, float maxX, bool minEnableY, float minY,
            bool maxEnableY, float maxY, bool minEnableZ, float minZ, bool maxEnableZ, float maxZ) {
    return {limit(value.x, minEnableX, minX, maxEnableX, maxX), limit(value.y, minEnableY, minY, maxEnableY, maxY),
            limit(value.z, minEnableZ, minZ, maxEnableZ, maxZ)};
}

} // namespace zent
