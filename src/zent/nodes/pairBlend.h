#pragma once

#include "zent/math/types.h"

namespace zent {

/// The rotations a and b (Euler xyz, radians) blended by `weight`. mode 0 blends the angles, 1 the quaternions,
/// linearly and without normalising; any other gives a.
vec3 pairBlendRotate(vec3 a, vec3 b, float weight, int mode);

/// a and b blended by `weight`, each component by its own mode: 0 blends, 2 takes b, any other takes a.
vec3 pairBlendTranslate(vec3 a, vec3 b, float weight, int modeX, int modeY, int modeZ);

} // namespace zent
