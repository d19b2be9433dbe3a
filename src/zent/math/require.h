#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>

/// The checks at the door of a node function: each throws std::runtime_error with a text that names what is wrong,
/// before anything is read beyond the end of a list.
namespace zent {

/// A per-item list must hold at least `needed` entries; longer ones are fine.
/// Text: "NAME has SIZE entries, WHAT needs NEEDED".
void requireAtLeast(const char* name, std::size_t size, std::size_t needed, const char* what);

/// The same for several lists that are read at one index: (name, size) of each.
void requireLists(const char* what, std::size_t needed,
                  std::initializer_list<std::pair<const char*, std::size_t>> lists);

/// An index must lie below `bound`. Text: "LIST[POSITION] is INDEX, WHAT has BOUND".
inline void requireIndex(const char* list, std::size_t position, std::size_t index, std::size_t bound,
                         const char* what);

/// A number for a text, in the fewest digits that read back as it.
std::string shown(float number);

[[noreturn]] void fail(const std::string& text);
[[noreturn]] void failIndex(const char* list, std::size_t position, std::size_t index, std::size_t bound,
                            const char* what);

// Here, so that a loop which checks each index keeps its values in registers: the failing call never comes back.
inline void requireIndex(const char* list, std::size_t position, std::size_t index, std::size_t bound,
                         const char* what) {
    if (index >= bound) {
        failIndex(list, position, index, bound, what);
    }
}

} // namespace zent
