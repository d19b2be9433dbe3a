#include "zent/nodes/angleBetween.h"

#include <glm/geometric.hpp>
#include <glm/gtc/quaternion.hpp>

#include <algorithm>

namespace zent {

float angleBetween__COMPUTE__angle(vec3 a, vec3 b) {
    const float length_a = glm::length(a);
    const float length_b = glm::length(b);
    if (length_a < kThreshold || length_b < kThreshold) {
        return 0.0f;
    }
    const float cosine = glm::dot(a, b) / (length_a * length_b);
    return std::acos(std::max(std::min(cosine, 1.0f), -1.0f));
}

vec3 angleBetween__COMPUTE__axis(vec3 a, vec3 b) {
    const vec3 noAxis(0.0f, 0.0f, 1.0f);
    if (glm::length(a) < kThreshold || glm::length(b) < kThreshold) {
        return noAxis;
    }
    const quat turn(a, b);
    const float s = 1.0f - turn.w * turn.w;
    return s > 0.0f ? vec3(turn.x, turn.y, turn.z) / std::sqrt(s) : noAxis;
}

} // namespace zent
