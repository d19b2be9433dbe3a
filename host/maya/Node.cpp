#include "Node.h"

namespace scene {

std::string Node::path() const {
    return isDag() ? (parent == nullptr ? "" : parent->path()) + "|" + name : name;
}

void Node::indexAttribute(Slot& slot) const {
    index_.emplace(slot.name, &slot);
    if (slot.otherNames != nullptr) {
        for (const std::string* other : {&slot.otherNames->shortName, &slot.otherNames->alias}) {
            if (!other->empty()) {
                index_.emplace(*other, &slot);
            }
        }
    }
    if (slot.kind == Slot::Kind::compound) {
        for (Slot* child : slot.children) {
            indexAttribute(*child);
        }
    }
}

Slot* Node::attribute(std::string_view attributeName) const {
    if (index_.empty()) {
        for (Slot* slot : attributes) {
            indexAttribute(*slot);
        }
    }
    const auto found = index_.find(attributeName);
    return found == index_.end() ? nullptr : found->second;
}

} // namespace scene
