#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scene {

struct Node;

/// Finds nodes by their names, in a time that does not grow with the number of nodes.
///
/// A name may be the last part of a node's path, from any level on: "arm", "left|arm" or, from the root, "|left|arm".
/// Nodes are filed by their own names; a file of several nodes is split by the names of their parents, level by level,
/// when a path first asks for it.
class NameIndex {
public:
    void add(Node& node);
    /// The one node of a name; null for none, and for more than one.
    Node* find(std::string_view name) const;
    /// The shortest name that finds a node of this index: the end of its path, or the whole.
    std::string shortestName(const Node& node) const;
    void clear() { files_.clear(); }

private:
    struct File;
    using Files = std::unordered_map<std::string_view, File>;
    struct File {
        Node* first = nullptr;
        std::vector<Node*> others;
        std::unique_ptr<Files> byParent; ///< the files of the level above, once a path has asked for them

        void add(Node& node);
    };

    static Files filesOfLevelAbove(const File& file, unsigned int level);

    mutable Files files_;
};

} // namespace scene
