#pragma once

#include "zent/math/types.h"

namespace zent {

/// The local matrix of a joint: scale, rotation, joint orient, the parent's inverse scale if `compensate`, translation.
/// Angles are radians; the joint orient is always xyz. An inverse scale of 0 gives infinities, a rotate order outside
/// 0 to 5 the zero matrix.
mat4 joint(vec3 translate, vec3 rotate, vec3 scale, int rotateOrder, vec3 jointOrient, vec3 inverseScale,
           bool compensate);

} // namespace zent
