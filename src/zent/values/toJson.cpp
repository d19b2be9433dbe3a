#include "zent/values/toJson.h"

namespace zent {

namespace {

template <class... Numbers>
json numbers(Numbers... values) {
    json::array_t array;
    array.reserve(sizeof...(values));
    (array.emplace_back(static_cast<double>(values)), ...);
    return json(std::move(array));
}

} // namespace

json toJson(vec2 value) {
    return numbers(value.x, value.y);
}

json toJson(vec3 value) {
    return numbers(value.x, value.y, value.z);
}

json toJson(vec4 value) {
    return numbers(value.x, value.y, value.z, value.w);
}

json toJson(quat value) {
    return numbers(value.x, value.y, value.z, value.w);
}

json toJson(const mat4& value) {
    json::array_t array;
    array.reserve(16);
    for (int i = 0; i < 16; ++i) {
        array.emplace_back(static_cast<double>(value[i / 4][i % 4]));
    }
    return json(std::move(array));
}

json toJson(Euler value) {
    return toJson(value.angles);
}

} // namespace zent
