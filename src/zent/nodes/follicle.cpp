#include "zent/nodes/follicle.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>

// Frames are told in glm's columns: column i is where the frame's axis i points. glm::normalize has no guard: a zero
// vector becomes NaN.
namespace zent {
namespace {

/// A mesh position less the translation, which cancels in differences.
vec3 toWorldDirection(const Mesh& mesh, vec3 point) {
    return mesh.matrixLinear * point;
}

void requireFaceVertices(const Mesh& mesh, const std::array<unsigned, 4>& faceVertices) {
    for (std::size_t corner = 0; corner < 4; ++corner) {
        requireIndex("faceVertices", corner, faceVertices[corner], mesh.points.size(), "the mesh");
    }
}

CornerWeights weightsInTriangle(vec2 uv, const std::array<unsigned, 3>& corners, const std::array<vec2, 4>& faceUVs) {
    const std::array<float, 3> weights =
        follicle__IMPL__barycentric(uv, {faceUVs[corners[0]], faceUVs[corners[1]], faceUVs[corners[2]]});
    return {{{corners[0], weights[0]}, {corners[1], weights[1]}, {corners[2], weights[2]}}};
}

/// Twice the area of a polygon along its normal, by Newell's sum over its edges.
vec3 newellSum(const Mesh& mesh, const unsigned* vertices, std::size_t count) {
    vec3 sum(0.0f);
    for (std::size_t i = 0; i < count; ++i) {
        const vec3 p = toWorld(mesh, mesh.points[vertices[i]]);
        const vec3 q = toWorld(mesh, mesh.points[vertices[i + 1 == count ? 0 : i + 1]]);
        sum.x += (p.y - q.y) * (p.z + q.z);
        sum.y += (p.z - q.z) * (p.x + q.x);
        sum.z += (p.x - q.x) * (p.y + q.y);
    }
    return sum;
}

struct RingFaces {
    svec<vec3, 9> normals;
    svec<float, 8> areas;
};

RingFaces ringFaces(const Mesh& mesh, const svec<unsigned, 9>& ringCounts, const svec<unsigned, 36>& ringConnection) {
    std::size_t total = 0;
    for (const unsigned count : ringCounts) {
        total += count;
    }
    requireAtLeast("ringConnection", ringConnection.size(), total, "the sum of ringCounts");
    RingFaces faces;
    faces.normals.reserve(ringCounts.size());
    faces.areas.reserve(ringCounts.size());
    std::size_t first = 0;
    for (const unsigned count : ringCounts) {
        for (std::size_t i = first; i < first + count; ++i) {
            requireIndex("ringConnection", i, ringConnection[i], mesh.points.size(), "the mesh");
        }
        const vec3 sum = newellSum(mesh, ringConnection.data() + first, count);
        const float length = guardedLength(sum);
        faces.areas.push_back(0.5f * length);
        faces.normals.push_back(sum / length);
        first += count;
    }
    return faces;
}

/// The normal of one corner, whose entries in cornerFaces are those from `first` to before `last`.
vec3 cornerNormal(const Mesh& mesh, unsigned vertex, const RingFaces& ring, std::size_t first, std::size_t last,
                  const svec<unsigned, 16>& cornerFaces, const svec<unsigned, 64>& cornerNeighbours) {
    requireAtLeast("cornerFaces", cornerFaces.size(), last, "the sum of cornerFaceCounts");
    requireAtLeast("cornerNeighbours", cornerNeighbours.size(), 2 * last, "two for each corner face");
    const vec3 corner = toWorldDirection(mesh, mesh.points[vertex]);
    const auto edge = [&](std::size_t position) {
        requireIndex("cornerNeighbours", position, cornerNeighbours[position], mesh.points.size(), "the mesh");
        return toWorldDirection(mesh, mesh.points[cornerNeighbours[position]]) - corner;
    };
    vec3 sum(0.0f);
    for (std::size_t k = first; k < last; ++k) {
        const unsigned face = cornerFaces[k];
        requireIndex("cornerFaces", k, face, ring.areas.size(), "the ring");
        const vec3 e1 = edge(2 * k);
        const vec3 e2 = edge(2 * k + 1);
        const float angle = std::acos(glm::dot(e1, e2) / guardedSqrt(glm::dot(e1, e1) * glm::dot(e2, e2)));
        sum += angle * ring.areas[face] * ring.normals[face];
    }
    return glm::normalize(sum);
}

/// The direction of growing U on a triangle, from its corners' V alone.
vec3 triangleTangent(const Mesh& mesh, const CornerWeights& weights, const std::array<unsigned, 4>& faceVertices,
                     const std::array<vec2, 4>& faceUVs) {
    std::array<vec3, 3> p{};
    std::array<float, 3> v{};
    for (std::size_t i = 0; i < 3; ++i) {
        p[i] = toWorldDirection(mesh, mesh.points[faceVertices[weights[i].first]]);
        v[i] = faceUVs[weights[i].first].y;
    }
    return glm::normalize((v[2] - v[0]) * (p[1] - p[0]) - (v[1] - v[0]) * (p[2] - p[0]));
}

/// The angles of the frame with X along cross(side, n) and Z along n; neither is normalised again.
vec3 frameAngles(vec3 side, vec3 n) {
    const vec3 x = glm::cross(side, n);
    const vec3 y = glm::cross(n, x);
    return smallerEuler(get_both_euler(mat3(x, y, n), kRotateXYZ));
}

} // namespace

std::array<float, 3> follicle__IMPL__barycentric(vec2 point, std::array<vec2, 3> triangle) {
    const vec2 e0 = triangle[1] - triangle[0];
    const vec2 e1 = triangle[2] - triangle[0];
    const vec2 e2 = point - triangle[0];
    const float d00 = glm::dot(e0, e0);
    const float d01 = glm::dot(e0, e1);
    const float d11 = glm::dot(e1, e1);
    const float d20 = glm::dot(e2, e0);
    const float d21 = glm::dot(e2, e1);
    const float inverse = 1.0f / (d00 * d11 - d01 * d01);
    const float b = (d11 * d20 - d01 * d21) * inverse;
    const float c = (d00 * d21 - d01 * d20) * inverse;
    return {1.0f - b - c, b, c};
}

float follicle__IMPL__offset(const CornerWeights& weights) {
    const auto outside = [](float weight) { return std::max(std::max(weight, 1.0f) - 1.0f, -std::min(weight, 0.0f)); };
    return std::max(std::max(outside(weights[0].second), outside(weights[1].second)), outside(weights[2].second));
}

CornerWeights follicle__IMPL__select(const Mesh& mesh, vec2 uv, std::array<unsigned, 4> faceVertices,
                                     std::array<vec2, 4> faceUVs) {
    requireFaceVertices(mesh, faceVertices);
    const auto diagonal = [&](unsigned from, unsigned to) {
        return guardedLength(toWorldDirection(mesh, mesh.points[faceVertices[from]]) -
                             toWorldDirection(mesh, mesh.points[faceVertices[to]]));
    };
    const bool along02 = diagonal(1, 3) >= diagonal(0, 2);
    const std::array<unsigned, 3> first = along02 ? std::array{1u, 2u, 0u} : std::array{0u, 1u, 3u};
    const std::array<unsigned, 3> second = along02 ? std::array{0u, 2u, 3u} : std::array{3u, 1u, 2u};
    const CornerWeights weights = weightsInTriangle(uv, first, faceUVs);
    return follicle__IMPL__offset(weights) < kThreshold ? weights : weightsInTriangle(uv, second, faceUVs);
}

vec3 follicleTranslateMesh(const Mesh& mesh, float u, float v, std::array<unsigned, 4> faceVertices,
                           std::array<vec2, 4> faceUVs) {
    vec3 position(0.0f);
    for (const auto& [corner, weight] : follicle__IMPL__select(mesh, vec2(u, v), faceVertices, faceUVs)) {
        position += weight * toWorld(mesh, mesh.points[faceVertices[corner]]);
    }
    return position;
}

std::pair<vec3, vec3> follicleGetNormalAndTangent(const Mesh& mesh, float u, float v,
                                                  std::array<unsigned, 4> faceVertices, std::array<vec2, 4> faceUVs,
                                                  std::array<unsigned, 4> cornerFaceCounts,
                                                  svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                                                  svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection) {
    const RingFaces ring = ringFaces(mesh, ringCounts, ringConnection);
    const CornerWeights weights = follicle__IMPL__select(mesh, vec2(u, v), faceVertices, faceUVs);

    std::array<vec3, 4> normals{};
    std::size_t first = 0;
    for (unsigned corner = 0; corner < 4; ++corner) {
        const std::size_t last = first + cornerFaceCounts[corner];
        const bool named =
            std::any_of(weights.begin(), weights.end(), [&](const auto& entry) { return entry.first == corner; });
        if (named) {
            normals[corner] =
                cornerNormal(mesh, faceVertices[corner], ring, first, last, cornerFaces, cornerNeighbours);
        }
        first = last;
    }
    vec3 normal(0.0f);
    for (const auto& [corner, weight] : weights) {
        normal += weight * normals[corner];
    }
    return {glm::normalize(normal), triangleTangent(mesh, weights, faceVertices, faceUVs)};
}

vec3 follicleRotateMesh(const Mesh& mesh, float u, float v, std::array<unsigned, 4> faceVertices,
                        std::array<vec2, 4> faceUVs, std::array<unsigned, 4> cornerFaceCounts,
                        svec<unsigned, 16> cornerFaces, svec<unsigned, 64> cornerNeighbours,
                        svec<unsigned, 9> ringCounts, svec<unsigned, 36> ringConnection) {
    const auto [n, t] =
        follicleGetNormalAndTangent(mesh, u, v, faceVertices, faceUVs, cornerFaceCounts, std::move(cornerFaces),
                                    std::move(cornerNeighbours), std::move(ringCounts), std::move(ringConnection));
    // On a mesh X points against the tangent; on a surface, below, along it.
    return frameAngles(glm::normalize(glm::cross(t, n)), n);
}

vec3 follicleTranslateSurface(const Surface& surface, float u, float v) {
    requireEvaluable(surface, "surface");
    return toWorld(surface, surface.localPoint(alongU(surface).atFraction(u), alongV(surface).atFraction(v)));
}

vec3 follicleRotateSurface(const Surface& surface, float u, float v) {
    requireEvaluable(surface, "surface");
    const vec2 at(alongU(surface).atFraction(u), alongV(surface).atFraction(v));
    const vec3 su = surface.dPdU(at.x, at.y);
    const vec3 sv = surface.dPdV(at.x, at.y);
    const vec3 t = glm::normalize(su);
    const vec3 n = glm::normalize(glm::cross(su, sv));
    return frameAngles(glm::normalize(glm::cross(n, t)), n);
}

} // namespace zent
