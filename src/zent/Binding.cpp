#include "zent/Binding.h"

#include <fmt/format.h>

#include <stdexcept>

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

const Port& resultPort(const std::vector<Port>& ports, std::size_t index) {
    if (index >= ports.size()) {
        throw std::runtime_error(fmt::format("\"results\" have no entry with \"attribute\" {}", index));
    }
    return ports[index];
}

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

// Keys are put in in their sorted order, each at the end of the map.
json typedValue(std::string type, json&& value) {
    json::object_t object;
    object.emplace_hint(object.end(), "type", std::move(type));
    object.emplace_hint(object.end(), "value", std::move(value));
    return json(std::move(object));
}

json typedValue(std::string name, std::string type, json&& value) {
    json::object_t object;
    object.emplace_hint(object.end(), "name", std::move(name));
    object.emplace_hint(object.end(), "type", std::move(type));
    object.emplace_hint(object.end(), "value", std::move(value));
    return json(std::move(object));
}

json nodeReport(std::string node, json&& inputs) {
    json::object_t object;
    object.emplace_hint(object.end(), "inputs", std::move(inputs));
    object.emplace_hint(object.end(), "node", std::move(node));
    return json(std::move(object));
}

} // namespace zent
