#include "zent/nodes/angleBetween.h"

#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

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
    const quat turn = turnBetween(a, b);
    // Divided by the length, not multiplied by its inverse: w of parallel vectors is then 1, and they have no axis.
    const float length = std::sqrt(glm::dot(turn, turn));
    const float w = turn.w / length;
    const float s = 1.0f - w * w;
    return s > 0.0f ? vec3(turn.x, turn.y, turn.z) / length / std::sqrt(s) : noAxis;
}

} // namespace zent
