#pragma once

#include "zent/geometry/shapes.h"
#include "zent/math/types.h"

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

#include <string>
#include <string_view>
#include <vector>

namespace zent {

MString toMaya(std::string_view text);

/// The namespace that plug look-ups are prefixed with, from the command's flag; empty for none.
extern std::string namescope;

/// A name with `namescope` put before each level of its DAG path.
std::string inNamespace(std::string name);

/// What `selectPlug` finds, a null plug for nothing, without a word.
MPlug findPlug(std::string name);

/// The plug of a name such as "node.attribute[3].child", with `namescope` put before each level of its DAG path. A
/// child that the plug does not have yields the plug itself. Throws std::runtime_error "Cannot find plug \"NAME\"", and
/// shows the same as a Maya error.
MPlug selectPlug(std::string name);

/// The plug of a name, or its source where the plug's own data is null and a connection feeds it. Throws
/// std::runtime_error "plug NAME is null" where both are missing.
MPlug mayaShapePlug(const std::string& name);

/// The path to the DAG node that feeds the named plug. Throws std::runtime_error "plug NAME has no source".
MDagPath sourceDagPath(const std::string& name);

/// A plug's number: angles in radians, times in their own unit.
float float_value(const MPlug& plug);

/// A plug's vector or matrix; compound plugs by their children, others by their numeric data.
vec2 vec2_value(const MPlug& plug);
vec3 vec3_value(const MPlug& plug);
vec4 vec4_value(const MPlug& plug);
mat4 mat4_value(const MPlug& plug);

/// The geometry that a plug holds, in object space, with its object-to-world matrix. T is Mesh, Curve, Surface or
/// Lattice.
template <class T>
T shape_value(const MPlug& plug);
template <>
Mesh shape_value<Mesh>(const MPlug& plug);
template <>
Curve shape_value<Curve>(const MPlug& plug);
template <>
Surface shape_value<Surface>(const MPlug& plug);
template <>
Lattice shape_value<Lattice>(const MPlug& plug);

namespace maya {
std::vector<float> std(const MDoubleArray& values);
std::vector<float> std(const MFloatArray& values);
std::vector<int> std(const MIntArray& values);
/// x, y and z of each point, narrowed; w is dropped, not divided by.
std::vector<vec3> pointsToStd(const MFloatPointArray& points);
std::vector<vec3> pointsToStd(const MPointArray& points);
} // namespace maya

} // namespace zent
