#include "zent/nodes/ikSCsolver.h"

#include "zent/math/rotation.h"
#include "zent/nodes/ikJoint.h"

#include <glm/geometric.hpp>
#include <glm/matrix.hpp>

namespace zent {
namespace {

/// The twist part of the turn from `from` to `to` about a unit axis.
quat twistAbout(vec3 axis, quat from, quat to) {
    const quat turn = to * glm::conjugate(from);
    const float w = glm::dot(to, from);
    const float v = glm::dot(vec3(turn.x, turn.y, turn.z), axis);
    float angle = 0.0f;
    if (w * w + v * v > 0.0f) {
        angle = static_cast<float>(kPi - 2.0 * static_cast<double>(std::atan2(w, v)));
    }
    return glm::angleAxis(angle, axis);
}

} // namespace

vec3 ikSCsolver(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 handleRotate, int handleRotateOrder,
                mat4 rootParent, std::array<vec3, 1> jointOrients, std::array<vec3, 1> translates,
                std::array<int, 1> rotateOrders, std::array<vec3, 1> scales, std::array<vec3, 1> inverseScales,
                std::array<bool, 1> compensates) {
    const mat4 handle_world =
        handleParent * eulerRotateMatrix(handleRotate, static_cast<RotateOrder>(handleRotateOrder));
    const mat4 frameInverse =
        glm::inverse(ik__IMPL__frame(rootParent, translates[0], jointOrients[0], inverseScales[0], compensates[0]));
    const vec3 bone = endTranslate * scales[0];
    const vec3 handle_joint = transformPoint(frameInverse, transformPoint(handleParent, handleTranslate));

    const quat aim = rotationBetween(glm::normalize(bone), glm::normalize(handle_joint));
    // The twist axis is the unscaled bone, deliberately, although the scaled one was aimed.
    const vec3 axis = glm::normalize(aim * endTranslate);
    const quat twist = twistAbout(axis, aim, get_orient(frameInverse * handle_world));
    return eulerAngles(twist * aim, static_cast<RotateOrder>(rotateOrders[0]));
}

} // namespace zent
