#pragma once

#include "zent/math/types.h"

namespace zent {

/// The distance from a to b.
float distanceBetweenTwoPoints(vec3 a, vec3 b);

/// The distance from a to b.
float distanceDimShape(vec3 a, vec3 b);

/// The distance between the translations (row 3) of two matrices.
float distanceBetweenTwoMatrices(mat4 a, mat4 b);

} // namespace zent
