#pragma once

#include <maya/MPlug.h>

#include <optional>
#include <string>
#include <vector>

/// How values travel between plugs of the open scene.
namespace zent::rig {

/// A plug that another one's value comes from, one step up.
struct Step {
    MPlug plug;
    float factor = 1.0f;     ///< of a unit conversion
    bool pointsOnly = false; ///< a shape keeps its own matrix
};

/// The next plug on the way from a plug to what makes its value: the plug that is connected to it, or that is connected
/// to the compound or the multi above it, at the same place in it; the input of a unit conversion; what a shape or a
/// groupParts hands on. Nothing where the way ends.
std::optional<Step> stepUp(const MPlug& plug);

/// The one that a plug of the DAG has its matrix from: the parent's "worldMatrix[0]" for "parentMatrix[0]", and for the
/// "worldMatrix[0]" of a shape without a matrix of its own. Nothing for other plugs, and at the world.
std::optional<MPlug> matrixAbove(const MPlug& plug);

/// "worldMatrix[0]" of a DAG node's parent; nothing below the world.
std::optional<MPlug> worldMatrixAbove(const MObject& node);

/// The children of a compound of two to four numbers; none for any other plug.
std::vector<MPlug> numbersIn(const MPlug& plug);

/// The numbers that a plug holds, as records read them. Throws std::runtime_error or the API's errors for a plug that
/// holds none.
std::vector<float> valuesOf(const MPlug& plug, std::size_t count);

} // namespace zent::rig
