#include "Node.h"

namespace scene {

namespace {

constexpr std::size_t kFewAttributes = 8;

/// Visits the names of attributes and of what lies below compounds; the first of a name is the one that has it.
template <class Visit>
void eachName(const std::vector<Slot*>& slots, Visit&& visit) {
    for (Slot* slot : slots) {
        visit(slot->name, *slot);
        if (slot->otherNames != nullptr) {
            for (const std::string* other : {&slot->otherNames->shortName, &slot->otherNames->alias}) {
                if (!other->empty()) {
                    visit(*other, *slot);
                }
            }
        }
        if (slot->kind == Slot::Kind::compound) {
            eachName(slot->children, visit);
        }
    }
}

} // namespace

std::string Node::path() const {
    return isDag() ? (parent == nullptr ? "" : parent->path()) + "|" + name : name;
}

Slot* Node::attribute(std::string_view attributeName) const {
    if (attributes.size() <= kFewAttributes) {
        Slot* found = nullptr;
        eachName(attributes, [&](std::string_view known, Slot& slot) {
            found = found == nullptr && known == attributeName ? &slot : found;
        });
        return found;
    }
    if (index_ == nullptr) {
        index_ = std::make_unique<Index>();
        eachName(attributes, [this](std::string_view known, Slot& slot) { index_->emplace(known, &slot); });
    }
    const auto found = index_->find(attributeName);
    return found == index_->end() ? nullptr : found->second;
}

} // namespace scene
