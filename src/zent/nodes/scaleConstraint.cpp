#include "zent/nodes/scaleConstraint.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <glm/matrix.hpp>

namespace zent {
namespace {

vec3 compensatedScale(vec3 scale, const mat4& parentInverse, bool compensate, vec3 offset) {
    if (compensate) {
        scale *= get_scale_and_shear(glm::inverse(parentInverse)).first;
    }
    return scale * offset;
}

} // namespace

vec3 IMPL__scaleConstraint(mat4 parentInverse, mat4 targetParent, vec3 targetScale) {
    return get_scale_and_shear(parentInverse * targetParent).first * targetScale;
}

vec3 scaleConstraint(mat4 parentInverse, bool compensate, vec3 offset, mat4 targetParent, vec3 targetScale) {
    return compensatedScale(IMPL__scaleConstraint(parentInverse, targetParent, targetScale), parentInverse, compensate,
                            offset);
}

vec3 scaleConstraint(mat4 parentInverse, bool compensate, vec3 offset, TargetList<float> weights, vec3 rest,
                     TargetList<mat4> targetParents, TargetList<vec3> targetScales) {
    if (isAtRest(weights)) {
        return rest;
    }
    requireLists("scaleConstraint", weights.size(),
                 {{"targetParents", targetParents.size()}, {"targetScales", targetScales.size()}});
    const std::optional<vec3> mean = weightedMean(weights, [&](std::size_t i) {
        return IMPL__scaleConstraint(parentInverse, targetParents[i], targetScales[i]);
    });
    // Weak weights alone give a scale of one, not the rest value, and the offset still acts: deliberately unlike a
    // point constraint.
    return compensatedScale(mean.value_or(vec3(1.0f)), parentInverse, compensate, offset);
}

} // namespace zent
