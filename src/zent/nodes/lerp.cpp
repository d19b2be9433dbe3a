#include "zent/nodes/lerp.h"

namespace zent {

vec3 lerp(vec3 a, vec3 b, float t) {
    return a + t * (b - a);
}

} // namespace zent
