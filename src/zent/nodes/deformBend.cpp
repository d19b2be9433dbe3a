// Products in this file are told in the column-vector order of glm: the rightmost factor acts on a point first.
#include "zent/nodes/deformBend.h"

#include "zent/geometry/shapes.h"
#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <cmath>

namespace zent {
namespace {

struct BendArc {
    float curvature;
    float lowBound;
    float highBound;
};

/// Each bound limits only the side of its own sign, so that a positive low bound moves the point at y = 0 too.
float boundedHeight(const BendArc& arc, float y) {
    return y > 0.0f ? std::min(y, arc.highBound) : std::max(y, arc.lowBound);
}

/// A point of handle space, bent about the arc at the bounded height.
vec3 bendPoint(const BendArc& arc, vec3 point_handle, float height) {
    const float radius = 1.0f / arc.curvature;
    const float angle = height * arc.curvature;
    const float s = std::sin(angle);
    const float c = std::cos(angle);
    const vec2 onArc(radius - radius * c, radius * s);
    const vec2 inward = glm::normalize(vec2(radius - onArc.x, -radius * s));
    const float overshoot = point_handle.y - height;
    return vec3(onArc.x + inward.x * point_handle.x - inward.y * overshoot,
                onArc.y + inward.y * point_handle.x + inward.x * overshoot, glm::dot(inward, inward) * point_handle.z);
}

template <class Selected>
Mesh& bendSelected(Mesh& geometry, float envelope, const mat4& handle, const BendArc& arc, const Selected& selected) {
    // Both tests are signed, and the envelope has no other part than this one: deliberate.
    if (!(envelope >= kThreshold) || !(arc.curvature >= kThreshold)) {
        return geometry;
    }
    const mat4 toHandle = glm::inverse(handle) * matrixOf(geometry);
    const mat4 fromHandle = inverseMatrixOf(geometry) * handle;
    for (unsigned i = 0; i < geometry.points.size(); ++i) {
        if (!selected(i)) {
            continue;
        }
        const vec3 point_handle = transformPoint(toHandle, geometry.points[i]);
        const float height = boundedHeight(arc, point_handle.y);
        if (std::abs(height) < kThreshold) {
            continue; // stays as it is, without the way through the matrices
        }
        geometry.points[i] = transformPoint(fromHandle, bendPoint(arc, point_handle, height));
    }
    return geometry;
}

} // namespace

Mesh& deformBendMesh(Mesh& geometry, float envelope, mat4 handle, float curvature, float lowBound, float highBound) {
    return bendSelected(geometry, envelope, handle, {curvature, lowBound, highBound}, [](unsigned) { return true; });
}

Mesh& deformBendPartialMesh(Mesh& geometry, float envelope, std::vector<unsigned int> indices, mat4 handle,
                            float curvature, float lowBound, float highBound) {
    const std::vector<char> selected = selectionMask(indices, geometry.points.size());
    return bendSelected(geometry, envelope, handle, {curvature, lowBound, highBound},
                        [&](unsigned i) { return selected[i] != 0; });
}

} // namespace zent
