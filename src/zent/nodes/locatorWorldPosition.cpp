#include "zent/nodes/locatorWorldPosition.h"

#include "zent/math/rotation.h"

namespace zent {

vec3 locatorWorldPosition(vec3 position, mat4 world) {
    return transformPoint(world, position);
}

} // namespace zent
