#include "scene/components.h"

#include "scene/values.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace scene {

namespace {

constexpr long long kMostComponents = 1LL << 24; // of one text: whoever asks for them gets a list

struct Word {
    std::string_view name;
    std::size_t directions;
    MFn::Type type;
};
constexpr Word kWords[] = {
    {"vtx", 1, MFn::kMeshVertComponent}, {"e", 1, MFn::kMeshEdgeComponent},   {"f", 1, MFn::kMeshPolygonComponent},
    {"cv", 1, MFn::kCurveCVComponent},   {"cv", 2, MFn::kSurfaceCVComponent}, {"pt", 3, MFn::kLatticeComponent},
};

/// Takes a number off the start of a text; false where there is none.
bool take(std::string_view& text, int& number) {
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return true;
}

bool take(std::string_view& text, std::string_view word) {
    if (text.substr(0, word.size()) != word) {
        return false;
    }
    text.remove_prefix(word.size());
    return true;
}

/// "[3]", "[0:7]" or, where `isAll` is set, "[*]".
bool takeRange(std::string_view& text, Component::Range& range, bool& isAll) {
    if (take(text, "[*]")) {
        isAll = true;
        return true;
    }
    if (!take(text, "[") || !take(text, range.first)) {
        return false;
    }
    range.last = range.first;
    return (!take(text, ":") || take(text, range.last)) && take(text, "]") && range.first <= range.last;
}

} // namespace

Component readComponent(const Slot& slot, const std::string& text) {
    std::string_view rest = text;
    rest.remove_prefix(std::min(rest.find('['), rest.size()));
    const std::string_view name = std::string_view(text).substr(0, text.size() - rest.size());
    Component component;
    std::size_t all = 0;
    long long count = 1;
    for (component.directions = 0; component.directions < component.ranges.size() && !rest.empty();
         ++component.directions) {
        Component::Range& range = component.ranges[component.directions];
        bool isAll = false;
        if (!takeRange(rest, range, isAll)) {
            break;
        }
        all += isAll ? 1 : 0;
        count *= range.last - range.first + 1LL;
        if (count > kMostComponents) {
            failAt(slot, fmt::format("\"{}\" stands for more than {} components", text, kMostComponents));
        }
    }
    component.isComplete = all > 0;
    for (const Word& word : kWords) {
        if (word.name == name && word.directions == component.directions) {
            component.type = word.type;
        }
    }
    if (component.type == MFn::kInvalid || !rest.empty() || (all > 0 && all != component.directions)) {
        failAt(slot,
               fmt::format("\"{}\" names no components; \"vtx[0:7]\", \"cv[0:3][2]\" or \"pt[*][*][*]\" do", text));
    }
    return component;
}

} // namespace scene
