#pragma once

#include <nlohmann/json.hpp>

namespace zent {

using json = nlohmann::json;

/// What stands at a place in a text.
enum class Read {
    whole, ///< a value
    cut,   ///< perhaps the start of one: the text ends before that is clear
    other  ///< something that these functions do not read: it may be wrong, or rare
};

/// JSON as programs write it, read several times as fast as by the library: text of ASCII without \u, numbers of no
/// great length, lists in lists to a fair depth. What they read, the library reads to the same value; of what they do
/// not read, it has to decide. A value that is whole ends where `at` is then; else `at` stays.
Read passPlain(const char*& at, const char* end);
Read readPlain(const char*& at, const char* end, json& value);

/// Passes over a value of right syntax, of whatever kind. `cut` where it does not end before `end`.
Read passAny(const char*& at, const char* end);

const char* passSpace(const char* at, const char* end);

} // namespace zent
