#pragma once

#include "zent/math/types.h"

namespace zent {

/// The local matrix of a transform node from its channels: scale and shear about the scale pivot, rotation (radians)
/// about the rotate pivot, translation. There is no rotate axis. A rotate order outside 0 to 5 gives the zero matrix.
mat4 transform(vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 shear, vec3 rotatePivot, vec3 scalePivot,
               vec3 rotatePivotTranslate, vec3 scalePivotTranslate);

} // namespace zent
