#include "zent/nodes/deformBend.h"

#include "zent/geometry/shapes.h"
#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <cmath>

namespace zent {
namespace {

/// Each bound limits only the side of its own sign, so that a positive low bound moves the point at y = 0 too.
float boundedHeight(float lowBound, float highBound, float y) {
    return y > 0.0f ? std::min(y, highBound) : std::max(y, lowBound);
}

/// A point of handle space, bent about the arc at the bounded height.
vec3 bendPoint(float curvature, vec3 point_handle, float height) {
    const float radius = 1.0f / curvature;
    const float angle = height * curvature;
    const float s = std::sin(angle);
    const float c = std::cos(angle);
    const vec2 onArc(radius - radius * c, radius * s);
    const vec2 inward = glm::normalize(vec2(radius - onArc.x, -radius * s));
    const float overshoot = point_handle.y - height;
    return vec3(onArc.x + inward.x * point_handle.x - inward.y * overshoot,
                onArc.y + inward.y * point_handle.x + inward.x * overshoot, glm::dot(inward, inward) * point_handle.z);
}

template <class Selected>
Mesh& bendSelected(Mesh& geometry, const PointBend& bend, const Selected& selected) {
    for (unsigned i = 0; i < geometry.points.size(); ++i) {
        if (selected(i)) {
            geometry.points[i] = bend(geometry.points[i]);
        }
    }
    return geometry;
}

PointBend bendOf(const Mesh& geometry, float envelope, const mat4& handle, float curvature, float lowBound,
                 float highBound) {
    return {matrixOf(geometry), inverseMatrixOf(geometry), envelope, handle, curvature, lowBound, highBound};
}

} // namespace

PointBend::PointBend(mat4 const& objectToWorld, mat4 const& worldToObject, float envelope, mat4 const& handle,
                     float curvature, float lowBound, float highBound)
    // Both tests are signed, and the envelope has no other part than this one: deliberate.
    : bends_(envelope >= kThreshold && curvature >= kThreshold), curvature_(curvature), lowBound_(lowBound),
      highBound_(highBound) {
    if (bends_) {
        toHandle_ = glm::inverse(handle) * objectToWorld;
        fromHandle_ = worldToObject * handle;
    }
}

vec3 PointBend::operator()(vec3 point) const {
    if (!bends_) {
        return point;
    }
    const vec3 point_handle = transformPoint(toHandle_, point);
    const float height = boundedHeight(lowBound_, highBound_, point_handle.y);
    if (std::abs(height) < kThreshold) {
        return point; // as it is, without the way through the matrices
    }
    return transformPoint(fromHandle_, bendPoint(curvature_, point_handle, height));
}

Mesh& deformBendMesh(Mesh& geometry, float envelope, mat4 handle, float curvature, float lowBound, float highBound) {
    return bendSelected(geometry, bendOf(geometry, envelope, handle, curvature, lowBound, highBound),
                        [](unsigned) { return true; });
}

Mesh& deformBendPartialMesh(Mesh& geometry, float envelope, std::vector<unsigned int> indices, mat4 handle,
                            float curvature, float lowBound, float highBound) {
    const std::vector<char> selected = selectionMask(indices, geometry.points.size());
    return bendSelected(geometry, bendOf(geometry, envelope, handle, curvature, lowBound, highBound),
                        [&](unsigned i) { return selected[i] != 0; });
}

} // namespace zent
