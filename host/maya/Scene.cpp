#include "Scene.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace scene {

namespace {

constexpr std::size_t kMostCopies = std::size_t{1} << 20;
constexpr std::ptrdiff_t kMaxLevels = 1000; // a path is told by recursion
constexpr std::size_t kMaxName = 255;       // each element of a multi has its name

[[noreturn]] void fail(const std::string& text) {
    throw std::runtime_error(text);
}

bool isName(std::string_view name) {
    return !name.empty() && name.find_first_of("|.[] \t\n") == std::string_view::npos;
}

/// A bare name, or a full path of names.
bool isPath(std::string_view path) {
    if (path.empty() || path.front() != '|') {
        return isName(path);
    }
    while (!path.empty() && path.front() == '|') {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('|'), path.size());
        if (!isName(path.substr(0, end))) {
            return false;
        }
        path.remove_prefix(end);
    }
    return true;
}

bool isNumeric(MFn::Type type) {
    return type >= MFn::kData2Double && type <= MFn::kData3Float;
}

int numberCount(MFn::Type type) {
    return type == MFn::kData2Double || type == MFn::kData2Float ? 2 : 3;
}

/// The data of an attribute that was never set; geometry has none.
std::shared_ptr<const Object> defaultData(MFn::Type type) {
    std::shared_ptr<Object> data;
    if (type == MFn::kMatrixData) {
        data = std::make_shared<MatrixData>();
    } else if (type == MFn::kStringData) {
        data = std::make_shared<StringData>();
    } else if (isNumeric(type)) {
        data = std::make_shared<NumericData>();
    } else {
        return nullptr;
    }
    data->type = type;
    return data;
}

/// Whether one plug's value can stand for another's.
bool areAlike(const Slot& a, const Slot& b) {
    if (a.kind != b.kind) {
        return false;
    }
    if (a.kind == Slot::Kind::compound) {
        return std::equal(a.children.begin(), a.children.end(), b.children.begin(), b.children.end(),
                          [](const Slot* x, const Slot* y) { return areAlike(*x, *y); });
    }
    if (isNumeric(a.dataType) && isNumeric(b.dataType)) {
        return numberCount(a.dataType) == numberCount(b.dataType);
    }
    return a.dataType == b.dataType;
}

/// Puts an element at its place among the others, which is most often the end.
void insertElement(Slot& multi, Slot& element) {
    std::vector<Slot*>& elements = multi.children;
    auto place = elements.end();
    if (!elements.empty() && elements.back()->logicalIndex >= element.logicalIndex) {
        place = std::lower_bound(elements.begin(), elements.end(), element.logicalIndex,
                                 [](const Slot* other, unsigned int i) { return other->logicalIndex < i; });
    }
    elements.insert(place, &element);
}

} // namespace

Scene& Scene::current() {
    static auto& scene = *new Scene; // it goes with the process: taking a large scene down piece by piece takes time
    return scene;
}

Node& Scene::nodeBelow(Node* above, std::string_view name) {
    if (const auto found = nodesByPlace_.find({above, name}); found != nodesByPlace_.end()) {
        return *found->second;
    }
    Node& node = nodes_.add();
    node.name = name;
    node.type = above == nullptr ? MFn::kDependencyNode : MFn::kDagNode;
    node.isImplied = true;
    if (above != nullptr && above != &root_) {
        node.parent = above;
        above->children.push_back(&node);
    }
    nodesByPlace_.emplace(Place(above, node.name), &node);
    names_.add(node);
    return node;
}

Node& Scene::nodeAt(std::string_view path) {
    if (path.front() != '|') {
        return nodeBelow(nullptr, path);
    }
    Node* node = &root_;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('|'), path.size());
        node = &nodeBelow(node, path.substr(0, end));
        path.remove_prefix(end);
    }
    return *node;
}

Node& Scene::addNode(const std::string& path) {
    if (!isPath(path)) {
        fail("\"" + path + "\" is neither a node's name nor a full path");
    }
    if (std::count(path.begin(), path.end(), '|') > kMaxLevels) {
        fail("a node lies more than " + std::to_string(kMaxLevels) + " levels deep: " + path.substr(0, 80) + "...");
    }
    Node& node = nodeAt(path);
    if (!node.isImplied) {
        fail("there are two nodes " + path);
    }
    node.isImplied = false;
    return node;
}

Node* Scene::findNode(std::string_view name) const {
    Node* node = nullptr;
    const Node* above = &root_;
    for (std::string_view rest = name; !rest.empty() && rest.front() == '|'; above = node) {
        rest.remove_prefix(1);
        const std::size_t end = std::min(rest.find('|'), rest.size());
        const auto found = nodesByPlace_.find({above, rest.substr(0, end)});
        node = found == nodesByPlace_.end() ? nullptr : found->second;
        if (node == nullptr) {
            break;
        }
        rest.remove_prefix(end);
    }
    return node != nullptr ? node : names_.find(name);
}

Slot& Scene::newSlot(Node& node, Slot* parent, std::string name) {
    if (name.size() > kMaxName) {
        fail(node.path() + ": an attribute's name has " + std::to_string(name.size()) + " characters, more than " +
             std::to_string(kMaxName) + ": " + name.substr(0, 80) + "...");
    }
    Slot& slot = slots_.add();
    slot.type = MFn::kNumericAttribute;
    slot.node = &node;
    slot.parent = parent;
    slot.name = std::move(name);
    return slot;
}

Slot& Scene::addAttribute(Node& node, std::string name) {
    Slot& slot = newSlot(node, nullptr, std::move(name));
    node.attributes.push_back(&slot);
    return slot;
}

Slot& Scene::addChild(Slot& compound, std::string name) {
    Slot& slot = newSlot(*compound.node, &compound, std::move(name));
    slot.logicalIndex = static_cast<unsigned int>(compound.children.size());
    compound.children.push_back(&slot);
    return slot;
}

Slot& Scene::newElement(Slot& multi, unsigned int index) {
    Slot& slot = newSlot(*multi.node, &multi, multi.name);
    slot.isElement = true;
    slot.logicalIndex = index;
    return slot;
}

Slot& Scene::addElement(Slot& multi, unsigned int index) {
    if ((multi.children.empty() || multi.children.back()->logicalIndex >= index) && existingElement(multi, index)) {
        fail(fullName(multi) + ": there are two elements " + std::to_string(index));
    }
    Slot& added = newElement(multi, index);
    insertElement(multi, added);
    return added;
}

Slot& Scene::addPrototype(Slot& multi) {
    multi.prototype = &newElement(multi, 0);
    return *multi.prototype;
}

void Scene::copyShape(const Slot& from, Slot& to) {
    ++copies_;
    to.type = from.type;
    to.kind = from.kind;
    to.unit = from.unit;
    to.dataType = from.dataType;
    to.data = defaultData(from.dataType);
    if (from.kind == Slot::Kind::multi) {
        to.prototype = from.children.empty() ? from.prototype : from.children.front();
    } else {
        for (const Slot* child : from.children) {
            copyShape(*child, addChild(to, child->name));
        }
    }
}

void Scene::requireRoom(const Slot& slot) const {
    if (copies_ > kMostCopies) {
        fail(fullName(slot) + ": there are more than " + std::to_string(kMostCopies) +
             " plugs of elements that the scene does not list");
    }
}

Slot& Scene::element(Slot& multi, unsigned int index) {
    if (Slot* existing = existingElement(multi, index)) {
        return *existing;
    }
    const auto known = unlisted_.find({&multi, index});
    if (known != unlisted_.end()) {
        return *known->second;
    }
    requireRoom(multi);
    const Slot* model = multi.children.empty() ? multi.prototype : multi.children.front();
    Slot& added = newElement(multi, index);
    unlisted_.emplace(std::pair(&multi, index), &added);
    if (model != nullptr) {
        copyShape(*model, added);
    }
    return added;
}

const Slot& Scene::blank(const Slot& like) {
    Slot*& blank = blanks_[&like];
    if (blank == nullptr) {
        requireRoom(like);
        blank = &newSlot(*like.node, nullptr, like.name);
        copyShape(like, *blank);
    }
    return *blank;
}

/// Gives the multis above a plug the elements that it lies in.
void Scene::list(Slot& slot) {
    for (Slot* level = &slot; level != nullptr; level = level->parent) {
        if (level->isElement && existingElement(*level->parent, level->logicalIndex) == nullptr) {
            insertElement(*level->parent, *level);
            unlisted_.erase({level->parent, level->logicalIndex});
        }
    }
}

void Scene::connect(Slot& source, Slot& destination) {
    if (destination.source != nullptr) {
        fail("plug " + fullName(destination) + " has two sources: " + fullName(*destination.source) + " and " +
             fullName(source));
    }
    if (!areAlike(source, destination)) {
        fail("plug " + fullName(source) + " cannot feed " + fullName(destination) + ": they are of different kinds");
    }
    list(source);
    list(destination);
    destination.source = &source;
    destinations_.push_back(&destination);
    destinationsOf_[&source].push_back(&destination);
}

const std::vector<Slot*>& Scene::destinations(const Slot& source) const {
    static const std::vector<Slot*> kNone;
    const auto found = destinationsOf_.find(&source);
    return found == destinationsOf_.end() ? kNone : found->second;
}

void Scene::setTime(const MTime& time) {
    time_ = time;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        Slot* clock = nodes_[i].typeName == "time" ? nodes_[i].attribute("outTime") : nullptr;
        if (clock != nullptr && clock->kind == Slot::Kind::time) {
            clock->number = time.as(static_cast<MTime::Unit>(clock->unit));
        }
    }
}

const Slot* Scene::cycle() const {
    // Each plug leads to one other at most: a walk either ends, or meets a plug that an earlier walk has passed, or
    // meets its own trail.
    std::unordered_map<const Slot*, std::size_t> walkOf;
    for (std::size_t walk = 0; walk < destinations_.size(); ++walk) {
        for (const Slot* slot = destinations_[walk]; slot != nullptr; slot = nextSource(*slot)) {
            const auto [passed, isNew] = walkOf.emplace(slot, walk);
            if (!isNew) {
                if (passed->second == walk) {
                    return slot;
                }
                break;
            }
        }
    }
    return nullptr;
}

void Scene::clear() {
    names_.clear();
    nodesByPlace_.clear();
    destinations_.clear();
    destinationsOf_.clear();
    unlisted_.clear();
    blanks_.clear();
    selection_.clear();
    time_ = MTime();
    copies_ = 0;
    slots_.clear();
    nodes_.clear();
}

std::string fullName(const Slot& slot) {
    return slot.node->path() + "." + plugName(slot, {false, true, true});
}

} // namespace scene
