#pragma once

#include "zent/math/types.h"

namespace zent {

/// `value` held at the bounds that are enabled. The maximum wins where the two cross.
float limit(float value, bool minEnable, float min, bool maxEnable, float max);

/// `limit` per component.
vec3 limit3(vec3 value, bool minEnableX, float minX, bool maxEnableX, float maxX, bool minEnableY, float minY,
            bool maxEnableY, float maxY, bool minEnableZ, float minZ, bool maxEnableZ, float maxZ);

} // namespace zent
