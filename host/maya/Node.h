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
    std::string name; ///< with its namespaces, without its path
    Node* parent = nullptr;
    std::vector<Node*> children;
    std::vector<Slot*> attributes;
    bool isImplied = false; ///< made for its children's sake, and not added itself so far

    bool isDag() const { return type == MFn::kDagNode; }
    /// "|group|arm" in the DAG, the name elsewhere.
    std::string path() const;
    /// The attribute of a long or short name or an alias, at the top or below compounds; null for none.
    Slot* attribute(std::string_view attributeName) const;

private:
    using Index = std::unordered_map<std::string_view, Slot*>;
    mutable std::unique_ptr<Index> index_; // made at the first look-up, for more than a few
};

} // namespace scene
