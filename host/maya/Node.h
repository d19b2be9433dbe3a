#pragma once

#include "Slot.h"

#include <maya/MTypes.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scene {

/// A node of the scene; one in the DAG has a parent, or stands at the root.
struct OPENMAYA_EXPORT Node : Object {
    std::string name;     ///< with its namespaces, without its path
    std::string typeName; ///< "joint", "skinCluster"; empty where the scene file tells none
    Node* parent = nullptr;
    std::vector<Node*> children;
    std::vector<Slot*> attributes;
    mutable Slot message;   ///< the node itself in connections; every node has it
    bool isImplied = false; ///< made for its children's sake, and not added itself so far

    Node();

    bool isDag() const { return type == MFn::kDagNode; }
    /// "|group|arm" in the DAG, the name elsewhere.
    std::string path() const;
    /// The attribute of a long or short name or an alias: one of the node's own, or else one below its compounds, or
    /// else its message; null for none.
    Slot* attribute(std::string_view attributeName) const;

private:
    Slot* listedAttribute(std::string_view attributeName) const;

    using Index = std::unordered_map<std::string_view, Slot*>;
    mutable std::unique_ptr<Index> index_; // made at the first look-up, for more than a few
};

} // namespace scene
