#pragma once

#include "zent/proxies/Access.h"
#include "zent/values/Port.h"

#include <string>
#include <utility>
#include <vector>

/// What an adapter uses beyond Access.h that writes JSON of its own.
namespace zent {

/// A value of Maya's side: port `index` of a record's results, which must be there.
const Port& resultPort(const std::vector<Port>& ports, std::size_t index);

template <class T>
T result(const std::vector<Port>& ports, unsigned int index) {
    return Access<T>::result(ports, index);
}

// ---- writing
// ---------------------------------------------------------------------------------------------------------

/// One output object, {"type", "value"}, or one with a "name", which Maya's side and the inputs of closures have.
json typedValue(std::string type, json&& value);
json typedValue(std::string name, std::string type, json&& value);

template <class T>
json output(const T& value) {
    return typedValue(PortType<T>::name(), toJson(value));
}
template <class T>
json output(std::string name, const T& value) {
    return typedValue(std::move(name), PortType<T>::name(), toJson(value));
}

/// An argument under its attribute's name, for a closure.
template <class T>
json input(std::string name, const Arguments& args, unsigned int index) {
    return output(std::move(name), read<T>(args, index));
}

/// The array of one side's outputs, or of a closure's inputs.
template <class... Objects>
json results(Objects&&... objects) {
    json::array_t array;
    array.reserve(sizeof...(objects));
    (array.push_back(std::forward<Objects>(objects)), ...);
    return json(std::move(array));
}

/// A closure of its own: the node's name and its inputs.
json nodeReport(std::string node, json&& inputs);

} // namespace zent
