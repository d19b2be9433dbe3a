#include "zent/nodes/aimConstraint.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <glm/geometric.hpp>
#include <glm/matrix.hpp>

namespace zent {
namespace {

/// A vector of length 1, or of NaN where it is shorter than the threshold.
vec3 directionOrNaN(vec3 vector) {
    const float length = guardedLength(vector);
    return length >= kThreshold ? vector * (1.0f / length) : vec3(std::numeric_limits<float>::quiet_NaN());
}

/// The part of a vector perpendicular to a direction, of length 1.
vec3 perpendicular(vec3 vector, vec3 direction) {
    return glm::normalize(glm::cross(glm::cross(direction, vector), direction));
}

} // namespace

vec3 aim__IMPL__worldUpDir(int worldUpType, mat4 const& worldUpMatrix, vec3 worldUpVector, vec3 position) {
    switch (worldUpType) {
    case kUpScene:
        return {0.0f, 1.0f, 0.0f};
    case kUpObject:
        return directionOrNaN(vec3(worldUpMatrix[3]) - position);
    case kUpObjectRotation:
        return glm::normalize(transformVector(worldUpMatrix, worldUpVector));
    case kUpVector:
        return glm::normalize(worldUpVector);
    default:
        return vec3(0.0f);
    }
}

vec3 aim__IMPL__toParentSpace(mat4 const& parentInverse, vec3 vector_world) {
    return vector_world * glm::inverse(mat3(parentInverse));
}

quat IMPL__aimConstraint(mat4 parentInverse, vec3 direction, vec3 aimVector, vec3 upVector, vec3 worldUp) {
    const vec3 aim = glm::normalize(aimVector);
    const vec3 up = glm::normalize(upVector);
    const quat swing = rotationBetween(aim, direction);
    if (std::abs(std::abs(glm::dot(aim, up)) - 1.0f) < kThreshold) {
        return swing;
    }
    const vec3 worldUp_parent = aim__IMPL__toParentSpace(parentInverse, worldUp);
    const quat twist = rotationBetween(perpendicular(swing * up, direction), perpendicular(worldUp_parent, direction));
    return twist * swing;
}

quat IMPL__aimConstraint(mat4 parentInverse, vec3 translate, vec3 pivot, vec3 pivotTranslate, int /*rotateOrder*/,
                         mat4 targetParent, vec3 targetA, vec3 targetB, int worldUpType, mat4 worldUpMatrix,
                         vec3 worldUpVector, vec3 aimVector, vec3 upVector) {
    const vec3 target_world = transformPoint(targetParent, targetA + targetB);
    const vec3 node_parent = translate + pivot + pivotTranslate;
    const vec3 direction_parent = directionOrNaN(transformPoint(parentInverse, target_world) - node_parent);
    const vec3 node_world = transformPoint(glm::inverse(parentInverse), node_parent);
    const vec3 worldUp = aim__IMPL__worldUpDir(worldUpType, worldUpMatrix, worldUpVector, node_world);
    return IMPL__aimConstraint(parentInverse, direction_parent, aimVector, upVector, worldUp);
}

vec3 aimConstraint(mat4 parentInverse, vec3 translate, vec3 pivot, vec3 pivotTranslate, int rotateOrder,
                   vec3 jointOrient, vec3 offset, TargetList<float> weights, vec3 rest, TargetList<mat4> targetParents,
                   TargetList<vec3> targetsA, TargetList<vec3> targetsB, int worldUpType, mat4 worldUpMatrix,
                   vec3 worldUpVector, vec3 aimVector, vec3 upVector) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists(
        "aimConstraint", weights.size(),
        {{"targetParents", targetParents.size()}, {"targetsA", targetsA.size()}, {"targetsB", targetsB.size()}});
    quat blend(0.0f, 0.0f, 0.0f, 0.0f);
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (isWeak(weights[i])) {
            continue;
        }
        // No sign test: q and -q pull against each other here, deliberately unlike an orient constraint.
        blend += weights[i] * IMPL__aimConstraint(parentInverse, translate, pivot, pivotTranslate, rotateOrder,
                                                  targetParents[i], targetsA[i], targetsB[i], worldUpType,
                                                  worldUpMatrix, worldUpVector, aimVector, upVector);
    }
    const quat aimed = normalizeOrIdentity(glm::inverse(eulerToQuat(jointOrient, kRotateXYZ)) * blend);
    // The offset of an aim constraint is in order xyz whatever the rotate order: deliberately unlike an orient
    // constraint.
    return eulerAngles(aimed * eulerToQuat(offset, kRotateXYZ), static_cast<RotateOrder>(rotateOrder));
}

} // namespace zent
