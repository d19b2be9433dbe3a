#include "zent/values/jsonAccess.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace zent {

namespace {

const json kNull;

template <class T>
T truncated(const json& value) {
    if (!value.is_number_float()) {
        return value.get<T>();
    }
    const double number = std::trunc(value.get<double>());
    const bool fits = number >= static_cast<double>(std::numeric_limits<T>::min()) &&
                      number <= static_cast<double>(std::numeric_limits<T>::max());
    if (!fits) {
        throw std::runtime_error(fmt::format("number {} is beyond {} 32-bit integer", value.get<double>(),
                                             std::is_unsigned_v<T> ? "an unsigned" : "a"));
    }
    return static_cast<T>(number);
}

} // namespace

const json& member(const json& value, const char* key) {
    if (value.is_null()) {
        return kNull;
    }
    if (!value.is_object()) {
        return value[key]; // throws
    }
    const auto found = value.find(key);
    return found == value.end() ? kNull : *found;
}

const json& item(const json& value, std::size_t index) {
    if (value.is_null()) {
        return kNull;
    }
    if (!value.is_array()) {
        return value[index]; // throws
    }
    return index < value.size() ? value[index] : kNull;
}

unsigned int toUnsigned(const json& value) {
    return truncated<unsigned int>(value);
}

int toInt(const json& value) {
    return truncated<int>(value);
}

vec3 toVec3(const json& value) {
    return {item(value, 0).get<float>(), item(value, 1).get<float>(), item(value, 2).get<float>()};
}

} // namespace zent
