#include "Slot.h"

#include "Scene.h"

#include <algorithm>

namespace scene {

namespace {

/// The plug below `root` at the place that `slot` has below `top`; null if there is none.
const Slot* counterpart(const Slot& slot, const Slot& top, const Slot& root) {
    if (&slot == &top) {
        return &root;
    }
    const Slot* parent = counterpart(*slot.parent, top, root);
    if (parent == nullptr || parent->kind != slot.parent->kind) {
        return nullptr;
    }
    if (slot.isElement) {
        return existingElement(*parent, slot.logicalIndex);
    }
    return slot.logicalIndex < parent->children.size() ? parent->children[slot.logicalIndex] : nullptr;
}

/// The plug itself, or the nearest one above it, that a connection feeds; null for none.
const Slot* fedLevel(const Slot& slot) {
    const Slot* level = &slot;
    while (level != nullptr && level->source == nullptr) {
        level = level->parent;
    }
    return level;
}

const std::string& nameIn(const Slot& slot, NameStyle style) {
    if (slot.otherNames != nullptr) {
        if (style.alias && !slot.otherNames->alias.empty()) {
            return slot.otherNames->alias;
        }
        if (!style.longNames && !slot.otherNames->shortName.empty()) {
            return slot.otherNames->shortName;
        }
    }
    return slot.name;
}

} // namespace

Slot* existingElement(const Slot& multi, unsigned int index) {
    const auto found = std::lower_bound(multi.children.begin(), multi.children.end(), index,
                                        [](const Slot* element, unsigned int i) { return element->logicalIndex < i; });
    return found != multi.children.end() && (*found)->logicalIndex == index ? *found : nullptr;
}

const Slot* nextSource(const Slot& slot) {
    const Slot* top = fedLevel(slot);
    return top == nullptr ? nullptr : counterpart(slot, *top, *top->source);
}

const Slot& evaluated(const Slot& slot) {
    const Slot* current = &slot;
    while (const Slot* top = fedLevel(*current)) {
        const Slot* next = counterpart(*current, *top, *top->source);
        if (next == nullptr) {
            return Scene::current().blank(*current);
        }
        current = next;
    }
    return *current;
}

std::string plugName(const Slot& slot, NameStyle style) {
    std::vector<const Slot*> levels; // from the plug up: attributes, and elements before their multi
    std::size_t needed = 0;          // how many of them the path needs: to its outermost element on
    for (const Slot* level = &slot; level != nullptr; level = level->parent) {
        levels.push_back(level);
        const bool isIndexed = levels.size() > 1 && levels[levels.size() - 2]->isElement;
        if (!level->isElement && (isIndexed || needed == 0)) {
            needed = levels.size();
        }
    }
    if (!style.fullPath) {
        levels.resize(needed);
    }
    std::string path;
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        if ((*level)->isElement) {
            path += "[" + std::to_string((*level)->logicalIndex) + "]";
        } else {
            path += (path.empty() ? "" : ".") + nameIn(**level, style);
        }
    }
    return path;
}

} // namespace scene
