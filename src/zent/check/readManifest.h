#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <istream>
#include <string>

namespace zent {

using json = nlohmann::json;

/// A manifest of right syntax, of which one record at a time is in memory besides the text.
class Manifest {
public:
    /// Throws the JSON library's parse error.
    explicit Manifest(std::istream& file);

    std::size_t size() const { return isList_ ? records_ : whole_.size(); }
    /// Hands each record to a function, until it returns false. A manifest that is no list is one as the JSON library
    /// walks it: an object by its values, anything else by itself. Only once.
    void forEach(const std::function<bool(json&&)>& take);

private:
    std::string text_;
    bool isList_ = false;
    std::size_t records_ = 0;
    json whole_; ///< where it is no list
};

} // namespace zent
