#pragma once

#include "zent/geometry/Curve.h"
#include "zent/geometry/Surface.h"
#include "zent/math/types.h"
#include "zent/values/json.h"

#include <string>

/// The comparison of the two sides' results. Every test is strict, so that NaN on either side is a mismatch, and an
/// epsilon of 0 matches nothing.
namespace zent {

struct Euler;
struct Vertex;

/// Whether two results are the same: a is Maya's, b the node function's. Throws std::runtime_error "cannot compare
/// TYPE" on an unknown type, and the JSON library's errors on values of the wrong form.
bool compare(const json& a, const json& b, float epsilon);

/// One output object of each side.
bool equal(const json& a, const json& b, float epsilon);

/// One value of a known type. A list of the node function's side may be longer than Maya's.
bool equal(const json& a, const json& b, const std::string& type, float epsilon);

/// Each component: |a - b| < epsilon.
bool check(float a, float b, float epsilon);
bool check(vec2 a, vec2 b, float epsilon);
bool check(vec3 a, vec3 b, float epsilon);
bool check(vec4 a, vec4 b, float epsilon);
bool check(const mat4& a, const mat4& b, float epsilon);

/// Two Euler triples in degrees that may be different solutions of one rotation; epsilon is in radians.
bool checkEuler(vec3 a, vec3 b, float epsilon);
bool check(const Euler& a, const Euler& b, float epsilon);
bool check(const Vertex& a, const Vertex& b, float epsilon);

/// Records by their degrees, forms and counts, then their control points in world space, then their knots.
bool check(const Curve& a, const Curve& b, float epsilon);
bool check(const Surface& a, const Surface& b, float epsilon);

} // namespace zent
