#include "zent/nodes/follicle.h"

#include "nodes/testSurfaces.h"
#include "zent/nodes/pointOnPoly.h"

#include <cmath>
#include <stdexcept>

namespace zent::test {
namespace {

using Corners = std::array<unsigned, 4>;
using UVs = std::array<vec2, 4>;

const UVs kUnitUVs = {vec2(0.0f), vec2(1.0f, 0.0f), vec2(1.0f), vec2(0.0f, 1.0f)};

/// A quad with its neighbourhood, as a follicle is handed it.
struct Neighbourhood {
    Mesh mesh;
    Corners faceVertices{};
    UVs faceUVs = kUnitUVs;
    Corners counts{};
    svec<unsigned, 16> cornerFaces;
    svec<unsigned, 64> neighbours;
    svec<unsigned, 9> ringCounts;
    svec<unsigned, 36> ringConnection;

    std::pair<vec3, vec3> frame(float u, float v) const {
        return follicleGetNormalAndTangent(mesh, u, v, faceVertices, faceUVs, counts, cornerFaces, neighbours,
                                           ringCounts, ringConnection);
    }
    vec3 rotate(float u, float v) const {
        return follicleRotateMesh(mesh, u, v, faceVertices, faceUVs, counts, cornerFaces, neighbours, ringCounts,
                                  ringConnection);
    }
    vec3 rotateOnPoly(mat4 matrix, vec2 uv, int order) const {
        return pointOnPolyRotate(matrix, mesh, uv, order, faceVertices, faceUVs, counts, cornerFaces, neighbours,
                                 ringCounts, ringConnection);
    }
};

/// The lists of a quad from all faces of a mesh; the faces that touch a corner make the ring.
Neighbourhood neighbourhood(std::vector<vec3> points, const std::vector<std::vector<unsigned>>& faces, Corners quad,
                            const mat4& matrix = mat4(1.0f)) {
    Neighbourhood result;
    result.mesh = Mesh(std::move(points), matrix);
    result.faceVertices = quad;
    for (const std::vector<unsigned>& face : faces) {
        result.ringCounts.push_back(static_cast<unsigned>(face.size()));
        result.ringConnection.insert(result.ringConnection.end(), face.begin(), face.end());
    }
    for (unsigned corner = 0; corner < 4; ++corner) {
        for (unsigned f = 0; f < faces.size(); ++f) {
            const std::vector<unsigned>& face = faces[f];
            for (std::size_t i = 0; i < face.size(); ++i) {
                if (face[i] == quad[corner]) {
                    ++result.counts[corner];
                    result.cornerFaces.push_back(f);
                    result.neighbours.push_back(face[(i + face.size() - 1) % face.size()]);
                    result.neighbours.push_back(face[(i + 1) % face.size()]);
                }
            }
        }
    }
    return result;
}

Neighbourhood flatQuad(const mat4& matrix = mat4(1.0f)) {
    return neighbourhood({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 2, 3}}, {0, 1, 2, 3}, matrix);
}

/// The top of a box of 3 by 2 by 1 with its four sides, under a matrix.
Neighbourhood boxTop(const mat4& matrix = mat4(1.0f)) {
    return neighbourhood({{0, 0, 0}, {3, 0, 0}, {3, 2, 0}, {0, 2, 0}, {0, 0, -1}, {3, 0, -1}, {3, 2, -1}, {0, 2, -1}},
                         {{0, 1, 2, 3}, {1, 0, 4, 5}, {2, 1, 5, 6}, {3, 2, 6, 7}, {0, 3, 7, 4}}, {0, 1, 2, 3}, matrix);
}

TEST(Follicle, PicksTheTriangleOfTheShorterDiagonal) {
    struct Case {
        const char* what;
        vec3 corner2;
        vec2 uv;
        std::array<unsigned, 3> corners;
        std::array<float, 3> weights;
    };
    // Corners (0,0), (1,0), corner2, (0,1). Moving corner 2 outwards makes 0-2 the longer diagonal.
    const Case cases[] = {
        {"a tie splits along 0-2", {1, 1, 0}, {0.75f, 0.25f}, {1, 2, 0}, {0.5f, 0.25f, 0.25f}},
        {"its second triangle", {1, 1, 0}, {0.25f, 0.5f}, {0, 2, 3}, {0.5f, 0.25f, 0.25f}},
        {"the diagonal is the first triangle's", {1, 1, 0}, {0.5f, 0.5f}, {1, 2, 0}, {0.0f, 0.5f, 0.5f}},
        {"1-3 is shorter", {2, 2, 0}, {0.25f, 0.25f}, {0, 1, 3}, {0.5f, 0.25f, 0.25f}},
        {"its second triangle", {2, 2, 0}, {0.75f, 0.5f}, {3, 1, 2}, {0.25f, 0.5f, 0.25f}},
        {"outside, the second extrapolates", {2, 2, 0}, {-0.5f, 0.5f}, {3, 1, 2}, {1.5f, 0.5f, -1.0f}},
    };
    for (const Case& c : cases) {
        const Mesh mesh({{0, 0, 0}, {1, 0, 0}, c.corner2, {0, 1, 0}}, mat4(1.0f));
        const CornerWeights weights = follicle__IMPL__select(mesh, c.uv, {0, 1, 2, 3}, kUnitUVs);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(weights[i].first, c.corners[i]) << c.what;
            EXPECT_NEAR(weights[i].second, c.weights[i], 1e-6f) << c.what;
        }
    }
    // The diagonals are compared in world space: this scale makes 0-2, equal in the object, the longer one.
    const Mesh sheared({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
                       mat4(vec4(1, 0, 0, 0), vec4(0.5f, 1, 0, 0), vec4(0, 0, 1, 0), vec4(7, 7, 7, 1)));
    EXPECT_EQ(follicle__IMPL__select(sheared, {0.25f, 0.25f}, {0, 1, 2, 3}, kUnitUVs)[0].first, 0u);

    EXPECT_EQ(follicle__IMPL__offset({{{0, 0.25f}, {1, 0.5f}, {2, 0.25f}}}), 0.0f);
    EXPECT_EQ(follicle__IMPL__offset({{{0, 1.5f}, {1, -0.75f}, {2, 0.25f}}}), 0.75f);
    EXPECT_EQ(follicle__IMPL__offset({{{0, 1.5f}, {1, -0.25f}, {2, -0.25f}}}), 0.5f);
}

TEST(Follicle, StandsWhereItsUVsPoint) {
    const mat4 matrix = composeMatrix(vec3(1.0f, 2.0f, 3.0f), vec3(0.0f, 0.0f, 1.5707963f), 0, vec3(2.0f, 4.0f, 1.0f));
    const Neighbourhood quad = flatQuad(matrix); // (x, y) goes to (1 - 4y, 2 + 2x)
    EXPECT_TRUE(near(follicleTranslateMesh(quad.mesh, 0.5f, 0.25f, quad.faceVertices, quad.faceUVs),
                     vec3(0.0f, 3.0f, 3.0f), 1e-5f));
    const mat4 parent = composeMatrix(vec3(10.0f, 0.0f, 0.0f), vec3(1.5707963f, 0.0f, 0.0f), 0, vec3(1.0f));
    EXPECT_TRUE(near(pointOnPolyTranslate(parent, quad.mesh, {0.5f, 0.25f}, quad.faceVertices, quad.faceUVs),
                     vec3(10.0f, -3.0f, 3.0f), 1e-5f));
}

TEST(Follicle, WeighsFacesByAngleAndArea) {
    // A corner of the box: three right angles, areas 6 (top), 3 and 2 (sides).
    const auto [corner, tangent] = boxTop().frame(1.0f, 1.0f);
    EXPECT_TRUE(near(corner, glm::normalize(vec3(2.0f, 3.0f, 6.0f)), 1e-6f));
    EXPECT_TRUE(near(tangent, vec3(1.0f, 0.0f, 0.0f), 1e-6f));
    // In the middle of the first triangle's edge 2-0, two corners' normals blend: x and y cancel.
    EXPECT_TRUE(near(boxTop().frame(0.5f, 0.5f).first, vec3(0.0f, 0.0f, 1.0f), 1e-6f));
    // At corner 2, the flat quad (90 degrees, area 1) meets a triangle in the plane x = 1 (135 degrees, area 2).
    const Neighbourhood wedge = neighbourhood({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, -1, 2}, {1, 1, -2}},
                                              {{0, 1, 2, 3}, {2, 4, 5}}, {0, 1, 2, 3});
    EXPECT_TRUE(near(wedge.frame(1.0f, 1.0f).first, glm::normalize(vec3(3.0f * 2.0f, 0.0f, 2.0f * 1.0f)), 1e-6f));
}

TEST(Follicle, DropsNoListEntryOfTheCornersBetween) {
    // (0.25, 0.75) lies in triangle 0-2-3: corner 1 is not named, yet its three faces are skipped.
    const Neighbourhood box = boxTop();
    const vec3 expected = 0.25f * glm::normalize(vec3(-2.0f, -3.0f, 6.0f)) +
                          0.25f * glm::normalize(vec3(2.0f, 3.0f, 6.0f)) +
                          0.5f * glm::normalize(vec3(-2.0f, 3.0f, 6.0f));
    EXPECT_TRUE(near(box.frame(0.25f, 0.75f).first, glm::normalize(expected), 1e-6f));
}

TEST(Follicle, GivesNaNWhereNothingIsDefined) {
    Neighbourhood quad = flatQuad();
    quad.counts[2] = 0; // takes part with a weight of 0
    EXPECT_TRUE(std::isnan(quad.rotate(1.0f, 0.0f).x));
    quad = flatQuad();
    quad.faceUVs = {vec2(0.0f), vec2(1.0f), vec2(1.0f, 0.0f), vec2(2.0f, 0.0f)};
    EXPECT_TRUE(std::isnan(quad.frame(0.5f, -1.0f).second.x)) << "corners 0, 2 and 3 share one V";
    EXPECT_TRUE(std::isnan(
        follicleRotateSurface(
            surfaceOf(1, 1, 1, 1, 2, 2, [](unsigned i, unsigned) { return vec3(static_cast<float>(i)); }), 0.5f, 0.5f)
            .x));
}

/// The frame of angles in a rotate order, axes as columns.
mat3 frameOf(vec3 angles, int order = 0) {
    return mat3(eulerRotateMatrix(angles, static_cast<RotateOrder>(order)));
}

void expectFrame(const mat3& frame, vec3 x, vec3 y, vec3 z) {
    EXPECT_TRUE(near(frame[0], x, 2e-6f));
    EXPECT_TRUE(near(frame[1], y, 2e-6f));
    EXPECT_TRUE(near(frame[2], z, 2e-6f));
}

TEST(Follicle, TurnsWithItsShape) {
    for (const vec3 angles : {vec3(0.0f), vec3(0.3f, -0.8f, 1.2f), vec3(-2.5f, 0.4f, 2.9f), vec3(1.0f, 1.5f, -0.6f)}) {
        const mat4 turn = composeMatrix(vec3(1.0f, 2.0f, 3.0f), angles, 3, vec3(2.0f));
        const mat3 axes = mat3(turn) / 2.0f;
        // U grows along x, and the normal is z. A mesh's frame has X against U, a surface's along it.
        expectFrame(frameOf(flatQuad(turn).rotate(0.3f, 0.6f)), -axes[0], -axes[1], axes[2]);
        Surface square = unitSquare();
        square.setMatrix(turn);
        expectFrame(frameOf(follicleRotateSurface(square, 0.3f, 0.6f)), axes[0], axes[1], axes[2]);
        // Point on poly: Y is the normal, X along U; then through the matrix, which does not commute with the turn.
        const mat4 parent = eulerRotateMatrix(vec3(0.7f, 0.2f, -0.4f), kRotateZXY);
        const mat3 onParent = mat3(parent) * axes;
        for (const int order : {0, 2, 5}) {
            expectFrame(frameOf(flatQuad(turn).rotateOnPoly(parent, {0.3f, 0.6f}, order), order), onParent[0],
                        onParent[2], -onParent[1]);
        }
    }
    EXPECT_EQ(flatQuad().rotateOnPoly(mat4(1.0f), vec2(0.5f), 6), vec3(0.0f));
}

TEST(Follicle, StandsUprightOnACurvedSurface) {
    const Surface surface = genericSurface(3, 2, kFormOpen, kFormOpen, 6, 5);
    for (const vec2 fraction : {vec2(0.1f, 0.2f), vec2(0.45f, 0.8f), vec2(0.95f, 0.5f)}) {
        const float u = fraction.x * 3.0f; // the domains are 0 to 3
        const float v = fraction.y * 3.0f;
        const float h = 1e-2f;
        const vec3 su = glm::normalize(worldPoint(surface, u + h, v) - worldPoint(surface, u - h, v));
        const vec3 sv = worldPoint(surface, u, v + h) - worldPoint(surface, u, v - h);
        const mat3 frame = frameOf(follicleRotateSurface(surface, fraction.x, fraction.y));
        EXPECT_TRUE(near(frame[0], su, 2e-3f));
        EXPECT_TRUE(near(frame[2], glm::normalize(glm::cross(su, sv)), 2e-3f));
        EXPECT_TRUE(near(follicleTranslateSurface(surface, fraction.x, fraction.y), worldPoint(surface, u, v), 1e-5f));
    }
    Surface late = unitSquare();
    late.knotsU = {2.0f, 6.0f};
    EXPECT_TRUE(near(follicleTranslateSurface(late, 0.25f, 0.5f), vec3(0.25f, 0.5f, 0.0f), 1e-6f));
}

TEST(Follicle, RejectsIndicesBeyondTheirLists) {
    struct Case {
        const char* text;
        void (*spoil)(Neighbourhood&);
    };
    const Case cases[] = {
        {"faceVertices[2] is 8, the mesh has 8", [](Neighbourhood& n) { n.faceVertices[2] = 8; }},
        {"ringConnection[1] is 9, the mesh has 8", [](Neighbourhood& n) { n.ringConnection[1] = 9; }},
        {"ringConnection has 20 entries, the sum of ringCounts needs 21", [](Neighbourhood& n) { ++n.ringCounts[4]; }},
        {"cornerFaces[0] is 5, the ring has 5", [](Neighbourhood& n) { n.cornerFaces[0] = 5; }},
        {"cornerNeighbours[1] is 10, the mesh has 8", [](Neighbourhood& n) { n.neighbours[1] = 10; }},
        {"cornerFaces has 12 entries, the sum of cornerFaceCounts needs 4294967301",
         [](Neighbourhood& n) {
             n.counts[1] = 4294967295u;
             n.counts[2] = 3;
         }},
        {"cornerNeighbours has 17 entries, two for each corner face needs 18",
         [](Neighbourhood& n) { n.neighbours.resize(17); }},
    };
    for (const Case& c : cases) {
        Neighbourhood box = boxTop();
        c.spoil(box);
        try {
            box.frame(0.25f, 0.75f); // triangle 0-2-3
            FAIL() << c.text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), c.text);
        }
    }
}

} // namespace
} // namespace zent::test
