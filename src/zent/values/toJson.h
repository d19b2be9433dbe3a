#pragma once

#include "zent/math/types.h"
#include "zent/values/geometryJson.h"

#include <nlohmann/json.hpp>

#include <type_traits>
#include <utility>

/// How a value of each type stands in a result: the manifest's literals, with floats as the doubles they are.
namespace zent {

using json = nlohmann::json;

/// Euler angles that travel as they stand, with the type "Euler".
struct Euler {
    vec3 angles{0.0f};
};

inline json toJson(float value) {
    return json(static_cast<double>(value));
}
inline json toJson(int value) {
    return json(value);
}
inline json toJson(bool value) {
    return json(value);
}
inline json toJson(const Curve& value) {
    return json(value);
}
inline json toJson(const Surface& value) {
    return json(value);
}
json toJson(vec2 value);
json toJson(vec3 value);
json toJson(vec4 value);
json toJson(quat value);
json toJson(const mat4& value);
json toJson(Euler value);

template <class List>
using ItemOf = std::decay_t<decltype(*std::declval<const List&>().begin())>;

/// A list is written as the array of its items, and named after them.
template <class List, class = ItemOf<List>>
json toJson(const List& list) {
    json::array_t array;
    array.reserve(list.size());
    for (const auto& value : list) {
        array.push_back(toJson(static_cast<const ItemOf<List>&>(value)));
    }
    return json(std::move(array));
}

} // namespace zent
