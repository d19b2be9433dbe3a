#include "scene/plugPath.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>

namespace scene {

namespace {

Slot* childOf(const Slot& slot, std::string_view name) {
    // A node knows its plugs by name; only a name that several compounds have must be looked for.
    if (Slot* known = slot.node->attribute(name); known != nullptr && known->parent == &slot && known->name == name) {
        return known;
    }
    const bool isCompound = slot.kind == Slot::Kind::compound;
    const auto found = std::find_if(slot.children.begin(), slot.children.end(),
                                    [name](const Slot* child) { return child->name == name; });
    return isCompound && found != slot.children.end() ? *found : nullptr;
}

/// Applies the indices of "[3][1]" one after the other.
Slot* elementOf(Scene& scene, Slot* slot, std::string_view indices) {
    while (slot != nullptr && !indices.empty()) {
        unsigned int index = 0;
        const auto [stop, error] = std::from_chars(indices.data() + 1, indices.data() + indices.size(), index);
        const auto length = static_cast<std::size_t>(stop - indices.data());
        if (indices.front() != '[' || error != std::errc() || length >= indices.size() || *stop != ']' ||
            slot->kind != Slot::Kind::multi) {
            return nullptr;
        }
        slot = &scene.element(*slot, index);
        indices.remove_prefix(length + 1);
    }
    return slot;
}

} // namespace

Slot& plugAt(Scene& scene, const std::string& name) {
    std::string_view rest = name;
    std::size_t end = std::min(rest.find('.'), rest.size());
    const Node* node = scene.findNode(rest.substr(0, end));
    if (node == nullptr) {
        throw std::runtime_error("there is no one node \"" + std::string(rest.substr(0, end)) + "\"");
    }
    Slot* slot = nullptr;
    for (bool isFirst = true; end < rest.size() && (isFirst || slot != nullptr); isFirst = false) {
        rest.remove_prefix(end + 1);
        end = std::min(rest.find('.'), rest.size());
        const std::string_view part = rest.substr(0, end);
        const std::size_t bracket = std::min(part.find('['), part.size());
        const std::string_view attribute = part.substr(0, bracket);
        slot = elementOf(scene, isFirst ? node->attribute(attribute) : childOf(*slot, attribute), part.substr(bracket));
    }
    if (slot == nullptr) {
        throw std::runtime_error("there is no plug \"" + name + "\"");
    }
    return *slot;
}

} // namespace scene
