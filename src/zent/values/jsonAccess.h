#pragma once

#include "zent/math/types.h"

#include <nlohmann/json.hpp>

#include <string>

/// Reading of JSON values that come from outside: what the JSON library leaves unchecked ends in its own errors here,
/// and nothing is copied.
namespace zent {

using json = nlohmann::json;

/// The value at a key; null where the key is missing. Throws the library's type error 305 on a value that has no keys.
const json& member(const json& value, const char* key);

/// The value at an index; null beyond the end. Throws the library's type error 305 on a value that has no items.
const json& item(const json& value, std::size_t index);

/// A number as an unsigned or a signed 32-bit integer, a fraction truncated. Throws the library's type error 302 on any
/// other type, and std::runtime_error on a fraction that no such integer can hold.
unsigned int toUnsigned(const json& value);
int toInt(const json& value);

/// The first three items as floats.
vec3 toVec3(const json& value);

} // namespace zent
