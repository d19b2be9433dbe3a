#include "zent/nodes/blendColors.h"

namespace zent {

vec3 blendColors(vec3 color1, vec3 color2, float blender) {
    return blender * color1 + (1.0f - blender) * color2;
}

} // namespace zent
