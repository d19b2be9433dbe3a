#include "zent/values/nearestName.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace zent {

namespace {

constexpr std::size_t kMostLetters = 256; // no name is longer, and the time grows with the square

char lower(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

/// The number of restricted edits (Damerau 1964) between two names.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + changed});
            if (i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1])) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

} // namespace

std::string nearestName(std::string_view name, const std::vector<std::string>& names) {
    const std::string* nearest = nullptr;
    std::size_t least = 0;
    for (const std::string& candidate : names) {
        if (name.size() > kMostLetters || candidate.size() > kMostLetters) {
            continue;
        }
        const std::size_t edits = distance(name, candidate);
        if (3 * edits <= candidate.size() && (nearest == nullptr || edits < least)) {
            nearest = &candidate;
            least = edits;
        }
    }
    return nearest == nullptr ? "" : *nearest;
}

std::string nearestNameHint(std::string_view name, const std::vector<std::string>& names) {
    const std::string nearest = nearestName(name, names);
    return nearest.empty() ? "" : ", did you mean \"" + nearest + "\"?";
}

} // namespace zent
