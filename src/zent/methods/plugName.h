#pragma once

#include <maya/MPlug.h>

#include <string>

namespace zent {

/// The last attribute of a plug's name, without an index: "outputX" of "node.output.outputX", "matrix" of
/// "skin.matrix[2]".
std::string lastAttribute(const std::string& name);

/// The attributes of a plug by their long names, with all indices: "worldMatrix[0]", "target[1].targetParentMatrix".
std::string longPlugName(const MPlug& plug);

/// What is wrong with the form of a plug's name; empty for nothing.
std::string plugNameProblem(const std::string& name);

/// What is wrong with a plug's name in the open scene: there is no such plug, or a part of the name leads nowhere, so
/// that the plug above it is read; empty for nothing.
std::string plugLookUpProblem(const std::string& name);

} // namespace zent
