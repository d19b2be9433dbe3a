#include "zent/nodes/weightDriverOutWeight.h"

#include <glm/geometric.hpp>

#include <algorithm>

namespace zent {

float weightDriverOutWeight(mat4 first, mat4 second, float limit, bool invert) {
    constexpr float kMinusDegrees = -57.29578f;
    const vec3 toFirst = vec3(first[3]) - vec3(second[3]);
    const vec3 axis = mat3(second) * vec3(invert ? -1.0f : 1.0f, 0.0f, 0.0f);
    const float cosine = glm::dot(toFirst, axis) / std::sqrt(glm::dot(toFirst, toFirst) * glm::dot(axis, axis));
    const float angle = std::acos(cosine); // a cosine that rounding took beyond 1 gives NaN, on purpose
    return std::max(std::min(1.0f + angle * kMinusDegrees / limit, 1.0f), 0.0f);
}

} // namespace zent
