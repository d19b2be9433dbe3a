#include "NameIndex.h"

#include "Node.h"

namespace scene {

namespace {

/// A path's levels from the last one up: "|left|arm" gives "arm", "left" and, for the root, "".
struct PathWalk {
    explicit PathWalk(std::string_view path) : rest(path), isDone(path.empty()) {}

    std::string_view next() {
        const std::size_t bar = rest.rfind('|');
        std::string_view level = bar == std::string_view::npos ? rest : rest.substr(bar + 1);
        isDone = bar == std::string_view::npos;
        rest = isDone ? std::string_view() : rest.substr(0, bar);
        if (level.size() > 1 && level.front() == ':') {
            level.remove_prefix(1); // the root namespace
        }
        return level;
    }

    std::string_view rest;
    bool isDone;
};

/// Whether what is left of a path names the levels above a node.
bool liesBelow(const Node& node, PathWalk walk) {
    const Node* level = &node;
    while (!walk.isDone) {
        const std::string_view name = walk.next();
        if (!level->isDag()) {
            return false;
        }
        const Node* parent = level->parent;
        if (parent == nullptr) {
            return name.empty() && walk.isDone; // the root, which a full path begins with
        }
        if (parent->name != name) {
            return false;
        }
        level = parent;
    }
    return true;
}

} // namespace

void NameIndex::File::add(Node& node) {
    if (first == nullptr) {
        first = &node;
    } else {
        others.push_back(&node);
    }
    byParent.reset();
}

void NameIndex::add(Node& node) {
    files_[node.name].add(node);
}

NameIndex::Files NameIndex::filesOfLevelAbove(const File& file, unsigned int level) {
    Files files;
    const auto sort = [&](Node* node) {
        const Node* above = node;
        for (unsigned int i = 0; i < level && above != nullptr; ++i) {
            above = above->parent;
        }
        if (above != nullptr && above->isDag()) {
            files[above->parent == nullptr ? std::string_view() : std::string_view(above->parent->name)].add(*node);
        }
    };
    sort(file.first);
    for (Node* node : file.others) {
        sort(node);
    }
    return files;
}

Node* NameIndex::find(std::string_view name) const {
    PathWalk walk(name);
    Files* files = &files_;
    for (unsigned int level = 0; !walk.isDone; ++level) {
        const auto found = files->find(walk.next());
        if (found == files->end()) {
            return nullptr;
        }
        File& file = found->second;
        if (file.others.empty()) {
            Node* node = file.first;
            const Node* above = node;
            for (unsigned int i = 0; i < level && above != nullptr; ++i) {
                above = above->parent;
            }
            // Above the root there is nothing more to name.
            return (above == nullptr ? walk.isDone : liesBelow(*above, walk)) ? node : nullptr;
        }
        if (walk.isDone) {
            return nullptr; // more than one
        }
        if (file.byParent == nullptr) {
            file.byParent = std::make_unique<Files>(filesOfLevelAbove(file, level));
        }
        files = file.byParent.get();
    }
    return nullptr;
}

std::string NameIndex::shortestName(const Node& node) const {
    std::vector<std::string_view> levels;
    Files* files = &files_;
    for (const Node* level = &node;; level = level->parent) {
        levels.emplace_back(level == nullptr ? std::string_view() : std::string_view(level->name));
        const auto found = files->find(levels.back());
        if (level == nullptr || found == files->end() || found->second.others.empty()) {
            break;
        }
        File& file = found->second;
        if (file.byParent == nullptr) {
            file.byParent =
                std::make_unique<Files>(filesOfLevelAbove(file, static_cast<unsigned int>(levels.size()) - 1));
        }
        files = file.byParent.get();
    }
    std::string name(levels.back());
    for (auto level = levels.rbegin() + 1; level != levels.rend(); ++level) {
        name.append("|").append(*level);
    }
    return name;
}

} // namespace scene
