#include "zent/math/require.h"

#include <array>
#include <charconv>
#include <stdexcept>

namespace zent {

std::string shown(float number) {
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), end};
}

void fail(const std::string& text) {
    throw std::runtime_error(text);
}

void requireAtLeast(const char* name, std::size_t size, std::size_t needed, const char* what) {
    if (size < needed) {
        fail(std::string(name) + " has " + std::to_string(size) + " entries, " + what + " needs " +
             std::to_string(needed));
    }
}

void requireLists(const char* what, std::size_t needed,
                  std::initializer_list<std::pair<const char*, std::size_t>> lists) {
    for (const auto& [name, size] : lists) {
        requireAtLeast(name, size, needed, what);
    }
}

void failIndex(const char* list, std::size_t position, std::size_t index, std::size_t bound, const char* what) {
    fail(std::string(list) + "[" + std::to_string(position) + "] is " + std::to_string(index) + ", " + what + " has " +
         std::to_string(bound));
}

} // namespace zent
