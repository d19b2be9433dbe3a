#include "zent/nodes/pointConstraint.h"

#include "zent/math/require.h"

// Points are row vectors in Maya's reading: "targetParent, then parentInverse" is glm's parentInverse * targetParent.
namespace zent {

vec3 IMPL__pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, mat4 targetParent, vec3 targetA,
                           vec3 targetB) {
    const vec4 point_parent = parentInverse * (targetParent * vec4(targetA + targetB, 1.0f));
    return vec3(point_parent) - (pivot + pivotTranslate);
}

vec3 pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, vec3 offset, mat4 targetParent, vec3 targetA,
                     vec3 targetB) {
    return IMPL__pointConstraint(parentInverse, pivot, pivotTranslate, targetParent, targetA, targetB) + offset;
}

vec3 pointConstraint(mat4 parentInverse, vec3 pivot, vec3 pivotTranslate, vec3 offset, TargetList<float> weights,
                     vec3 rest, TargetList<mat4> targetParents, TargetList<vec3> targetsA, TargetList<vec3> targetsB) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists(
        "pointConstraint", weights.size(),
        {{"targetParents", targetParents.size()}, {"targetsA", targetsA.size()}, {"targetsB", targetsB.size()}});
    const std::optional<vec3> mean = weightedMean(weights, [&](std::size_t i) {
        return IMPL__pointConstraint(parentInverse, pivot, pivotTranslate, targetParents[i], targetsA[i], targetsB[i]);
    });
    // Weak weights alone give zero: neither the rest value nor the offset, deliberately.
    return mean ? *mean + offset : vec3(0.0f);
}

} // namespace zent
