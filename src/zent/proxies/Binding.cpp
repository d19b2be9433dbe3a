#include "zent/proxies/Binding.h"

#include <fmt/format.h>

#include <stdexcept>

namespace zent {

const Port& resultPort(const std::vector<Port>& ports, std::size_t index) {
    if (index >= ports.size()) {
        throw std::runtime_error(fmt::format("\"results\" have no entry with \"attribute\" {}", index));
    }
    return ports[index];
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
