#pragma once

#include "Arena.h"
#include "NameIndex.h"
#include "Node.h"

#include <maya/MTypes.h>

#include <string>
#include <string_view>
#include <vector>

namespace scene {

/// The open scene: nodes, their plugs, and the connections between plugs. Whatever it hands out lives until `clear`.
class OPENMAYA_EXPORT Scene {
public:
    static Scene& current();

    /// A node outside the DAG for a bare name, or one in the DAG for a full path such as "|group|arm", whose upper
    /// levels are made where they are missing. Throws std::runtime_error for what is no name, and for a node that was
    /// added.
    Node& addNode(const std::string& path);
    /// An attribute of a node, at the end.
    Slot& addAttribute(Node& node, std::string name);
    /// A child of a compound, at the end.
    Slot& addChild(Slot& compound, std::string name);
    /// An element of a multi; elements may come in any order. Throws std::runtime_error for an index it has.
    Slot& addElement(Slot& multi, unsigned int index);
    /// What the elements of a multi look like that it does not have.
    Slot& addPrototype(Slot& multi);
    /// Sends one plug's value into another. Throws std::runtime_error where the two are of different kinds, or the
    /// destination has a source.
    void connect(Slot& source, Slot& destination);
    /// A plug that feeds itself over connections, null for none.
    const Slot* cycle() const;

    /// The one node of a name or a partial path; null for none, and for more than one.
    Node* findNode(std::string_view name) const;
    /// The element of a multi, made with default values if the scene has none.
    Slot& element(Slot& multi, unsigned int index);

    void clear();
    std::size_t nodeCount() const { return nodes_.size(); }
    std::size_t plugCount() const { return slots_.size(); }

private:
    Node& nodeAt(const std::string& path);
    Slot& newSlot(Node& node, Slot* parent, std::string name);
    Slot& newElement(Slot& multi, unsigned int index);
    void copyShape(const Slot& from, Slot& to);

    Arena<Node> nodes_;
    Arena<Slot> slots_;
    std::size_t copies_ = 0; ///< of plugs, for elements that the scene file does not list
    std::vector<const Slot*> destinations_;
    std::unordered_map<std::string, Node*> nodesByPath_;
    NameIndex names_;
};

/// "node.attribute[3].child", for messages.
OPENMAYA_EXPORT std::string fullName(const Slot& slot);

} // namespace scene
