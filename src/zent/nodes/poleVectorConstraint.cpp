#include "zent/nodes/poleVectorConstraint.h"

namespace zent {

vec3 poleVectorConstraint(mat4 parentInverse, vec3 root, mat4 rootParent, mat4 targetParent, vec3 targetA,
                          vec3 targetB) {
    const vec4 target_world = targetParent * vec4(targetA + targetB, 1.0f);
    const vec4 root_world = rootParent * vec4(root, 1.0f);
    return vec3(parentInverse * (target_world - root_world)); // w is 0: the parent's translation does not act
}

} // namespace zent
