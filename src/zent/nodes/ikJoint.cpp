#include "zent/nodes/ikJoint.h"

#include "zent/nodes/joint.h"

namespace zent {

vec3 ik__IMPL__scale(vec3 scale, vec3 inverseScale, bool compensate) {
    return compensate ? scale / inverseScale : scale;
}

mat4 ik__IMPL__matrix(vec3 translate, vec3 jointOrient, vec3 scale, vec3 inverseScale, bool compensate) {
    return ik__IMPL__matrix(translate, jointOrient, scale, inverseScale, compensate, vec3(0.0f), kRotateXYZ);
}

mat4 ik__IMPL__matrix(vec3 translate, vec3 jointOrient, vec3 scale, vec3 inverseScale, bool compensate, vec3 rotate,
                      RotateOrder order) {
    return joint(translate, rotate, scale, order, jointOrient, inverseScale, compensate);
}

mat4 ik__IMPL__frame(mat4 const& parent, vec3 translate, vec3 jointOrient, vec3 inverseScale, bool compensate) {
    return parent * ik__IMPL__matrix(translate, jointOrient, vec3(1.0f), inverseScale, compensate);
}

} // namespace zent
