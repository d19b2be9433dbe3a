#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace scene {

/// The members of a JSON object in the order of the file. A name that the file gives twice is here twice.
template <class Key, class T, class...>
struct MemberList : std::vector<std::pair<Key, T>> {
    using key_type = Key;
    using mapped_type = T;
    using key_compare = std::equal_to<Key>;

    T& operator[](Key key) { return this->emplace_back(std::move(key), T()).second; }
};

/// A scene file's values: the children of a compound keep their order, and mistakes are not overwritten.
using Json = nlohmann::basic_json<MemberList>;

inline const Json::object_t& members(const Json& value) {
    return value.get_ref<const Json::object_t&>();
}

} // namespace scene
