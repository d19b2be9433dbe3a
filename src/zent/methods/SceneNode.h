#pragma once

#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace zent {

/// A node, or a method of it, that makes no record; the text says why.
class LeftOut : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A node of the open scene.
class SceneNode {
public:
    explicit SceneNode(const MObject& object);

    const MObject& object() const { return object_; }
    const std::string& type() const { return type_; }
    /// The shortest path that tells the node from others; the name of a node outside the DAG.
    std::string name() const;
    /// The plug of an attribute; a null plug for none.
    MPlug plug(const std::string& attribute) const;
    /// The node that feeds a plug, past unit conversions. Throws LeftOut where there is none.
    SceneNode sourceOf(const std::string& attribute) const;

private:
    MObject object_;
    std::string type_;
};

/// A plug, and the indices that its entry tells.
struct FoundPlug {
    std::vector<unsigned int> indices;
    MPlug plug;
};

/// The plugs of a path as the table of nodes writes it, such as "target[*].targetWeight"; `geometry` stands for "g".
/// Throws LeftOut for an attribute that the node does not have.
std::vector<FoundPlug> findPlugs(const SceneNode& node, const std::string& path, unsigned int geometry);
/// The one plug of a path; a null plug where there is none.
MPlug findPlug(const SceneNode& node, const std::string& path, unsigned int geometry);

/// The logical indices in use of a multi, in order.
std::vector<unsigned int> indicesOf(const MPlug& multi);

/// Each number of a plug: of its children, or of itself. Angles are radians.
std::vector<double> numbersOf(const MPlug& plug);
/// The first of them, or another number where the plug is null.
double numberOf(const MPlug& plug, double otherwise);

/// Whether a plug, the one above it, or one of its children is connected in that direction.
bool isFed(const MPlug& plug);
bool feeds(const MPlug& plug);

/// Writes the names of plugs for a manifest.
class PlugNames {
public:
    /// With a namespace, names are those that a check in that namespace reads.
    explicit PlugNames(std::string nameSpace) : namespace_(std::move(nameSpace)) {}

    bool holds(const std::string& nodeName) const { return namespace_.empty() || isInside(nodeName); }
    /// The name of a node without the namespace. Throws LeftOut for a node outside it.
    std::string nodeName(const SceneNode& node) const;
    /// The name that leads to the plug in the look-up of a check. Throws LeftOut where there is none.
    std::string plugName(const MPlug& plug) const;

private:
    bool isInside(const std::string& nodeName) const;

    std::string namespace_;
};

} // namespace zent
