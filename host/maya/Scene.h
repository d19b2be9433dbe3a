#pragma once

#include "Arena.h"
#include "NameIndex.h"
#include "Node.h"

#include <maya/MTime.h>
#include <maya/MTypes.h>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
    /// The plugs that one feeds itself, in the order of their connections.
    const std::vector<Slot*>& destinations(const Slot& source) const;
    /// A plug that feeds itself over connections, null for none.
    const Slot* cycle() const;

    /// The one node of a name or a partial path; null for none, and for more than one.
    Node* findNode(std::string_view name) const;
    std::string shortestName(const Node& node) const { return names_.shortestName(node); }
    /// The element of a multi, made with default values if the scene has none; the multi lists it once it is connected.
    Slot& element(Slot& multi, unsigned int index);
    /// A plug of the same kind as another, with default values.
    const Slot& blank(const Slot& like);

    const std::vector<const Node*>& selection() const { return selection_; }
    void select(std::vector<const Node*> nodes) { selection_ = std::move(nodes); }
    MTime time() const { return time_; }
    /// The current time, which is also the "outTime" of nodes of type "time".
    void setTime(const MTime& time);

    void clear();
    std::size_t nodeCount() const { return nodes_.size(); }
    /// In the order in which the scene file first names them.
    const Node& node(std::size_t i) const { return nodes_[i]; }
    std::size_t plugCount() const { return slots_.size(); }

private:
    /// The place of a node: the level above it and its name, which lies in the node.
    using Place = std::pair<const Node*, std::string_view>;
    struct PlaceHash {
        std::size_t operator()(const Place& place) const {
            return std::hash<const Node*>()(place.first) * 31 + std::hash<std::string_view>()(place.second);
        }
    };

    Node& nodeAt(std::string_view path);
    Node& nodeBelow(Node* above, std::string_view name);
    Slot& newSlot(Node& node, Slot* parent, std::string name);
    Slot& newElement(Slot& multi, unsigned int index);
    void copyShape(const Slot& from, Slot& to);
    void requireRoom(const Slot& slot) const;
    void list(Slot& slot);

    Arena<Node> nodes_;
    Arena<Slot> slots_;
    std::size_t copies_ = 0; ///< of plugs, for elements that the scene file does not list
    std::vector<const Slot*> destinations_;
    std::unordered_map<const Slot*, std::vector<Slot*>> destinationsOf_;
    std::map<std::pair<const Slot*, unsigned int>, Slot*> unlisted_; ///< elements that were only read
    std::unordered_map<const Slot*, Slot*> blanks_;
    std::vector<const Node*> selection_;
    MTime time_;
    Node root_; ///< stands above the DAG's first level, for look-ups alone
    std::unordered_map<Place, Node*, PlaceHash> nodesByPlace_;
    NameIndex names_;
};

/// "node.attribute[3].child", for messages.
OPENMAYA_EXPORT std::string fullName(const Slot& slot);

} // namespace scene
