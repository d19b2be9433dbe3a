#include "Node.h"

namespace scene {

namespace {

constexpr int kFewNames = 16;
constexpr std::string_view kMessage = "message";

/// Takes the attributes and what lies below compounds off `left`; false where they are more.
bool areFew(const std::vector<Slot*>& slots, int& left) {
    for (const Slot* slot : slots) {
        if (--left < 0 || (slot->kind == Slot::Kind::compound && !areFew(slot->children, left))) {
            return false;
        }
    }
    return true;
}

/// Visits the names of attributes, and then those of what lies below compounds; the first of a name is the one that has
/// it.
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
    }
    for (const Slot* slot : slots) {
        if (slot->kind == Slot::Kind::compound) {
            eachName(slot->children, visit);
        }
    }
}

} // namespace

Node::Node() {
    message.type = MFn::kMessageAttribute;
    message.kind = Slot::Kind::message;
    message.node = this;
    message.name = kMessage;
}

std::string Node::path() const {
    return isDag() ? (parent == nullptr ? "" : parent->path()) + "|" + name : name;
}

Slot* Node::attribute(std::string_view attributeName) const {
    Slot* found = listedAttribute(attributeName);
    return found == nullptr && attributeName == kMessage ? &message : found;
}

Slot* Node::listedAttribute(std::string_view attributeName) const {
    int left = kFewNames;
    if (index_ == nullptr && areFew(attributes, left)) {
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
