#pragma once

#include "zent/methods/NodeTable.h"
#include "zent/methods/SceneNode.h"
#include "zent/proxies/MethodInfo.h"
#include "zent/values/json.h"
#include "zent/values/ResourceWriter.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zent {

/// The quad of a mesh follicle, and the faces around it.
struct FaceUnderFollicle {
    std::vector<int> vertices;
    std::vector<vec2> uvs;
    std::vector<int> counts, faces, neighbours, sizes, ring;
};

/// What several records ask for, found once.
struct Findings {
    std::optional<MObject> timeNode;                           ///< a null object where there is none
    std::optional<std::pair<MObject, FaceUnderFollicle>> face; ///< of the last follicle
};

/// What a guard or a reader looks at: a node, the row that may make a record of it, and where the record goes.
struct Context {
    const SceneNode& node;
    const NodeRow& row;
    const MethodInfo& method;
    unsigned int geometry; ///< the index of a deformer's geometry
    const PlugNames& names;
    ResourceWriter& resource;
    Findings& findings;

    MPlug plug(const std::string& path) const { return findPlug(node, path, geometry); }
    /// Throws LeftOut for a plug that is not there.
    MPlug requiredPlug(const std::string& path) const;
};

/// The nodes that a walk leads to: the joints of an IK chain from the root on ("chain"), its first one ("root"), those
/// after it ("rest"), "effector", a deformer's "handle", the shape that drives a nonLinear ("bend", "sine"). Throws
/// LeftOut where the walk ends too early.
std::vector<SceneNode> walk(const SceneNode& node, const std::string& name);

/// Why a guard does not hold; nothing where it does. A plug that the node does not have holds.
std::optional<std::string> violation(const Context& context, const Guard& guard);

/// An entry of a record that holds no plug of the table: a value as JSON text, or a plug's name.
struct MadeEntry {
    std::vector<unsigned int> indices;
    std::string value; ///< JSON, such as "3", "[0.5, 1]" or "{\"id\": 2}"
    std::string name;  ///< of a plug, in the place of a value
};

/// The entries of a reader. Throws LeftOut where it cannot make them.
std::vector<MadeEntry> makeEntries(const Context& context, const Source& reader);

/// Whether all points of a deformer's geometry are members, and which ones are.
struct Members {
    bool areAll = true;
    std::vector<unsigned int> points; ///< ascending, if not all
};
Members membersOf(const Context& context);

/// The points of a shape in its own space, and its matrix.
struct PlacedPoints {
    std::vector<vec3> points;
    mat4 matrix{1.0f};
};
PlacedPoints pointsAt(const MPlug& plug, const std::string& kind);
/// "Mesh", "Curve", "Surface", "Lattice" or empty, by the data of a plug or of its source.
std::string shapeKind(const MPlug& plug);
/// A plug with data of its own, or its source.
MPlug shapePlug(const MPlug& plug);

/// Throws LeftOut where there is none.
const FaceUnderFollicle& faceUnderFollicle(const Context& context);

} // namespace zent
