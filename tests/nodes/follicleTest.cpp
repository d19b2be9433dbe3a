#include "zent/nodes/follicle.h"

#include "nodes/testSurfaces.h"
#include "zent/math/rotation.h"
#include "zent/nodes/pointOnPoly.h"

namespace zent::test {
namespace {

using Faces = std::vector<std::vector<unsigned>>;

/// A quad with its neighbourhood, as a follicle is handed it: the lists of corners 0 to 3 of a mesh of these faces.
struct Quad {
    Quad(std::vector<vec3> points, const Faces& faces, const mat4& matrix) : mesh(std::move(points), matrix) {
        for (const std::vector<unsigned>& face : faces) {
            ringCounts.push_back(static_cast<unsigned>(face.size()));
            ringConnection.insert(ringConnection.end(), face.begin(), face.end());
        }
        for (unsigned corner = 0; corner < 4; ++corner) {
            for (unsigned f = 0; f < faces.size(); ++f) {
                const std::size_t size = faces[f].size();
                for (std::size_t i = 0; i < size; ++i) {
                    if (faces[f][i] == corner) {
                        ++counts[corner];
                        cornerFaces.push_back(f);
                        neighbours.push_back(faces[f][(i + size - 1) % size]);
                        neighbours.push_back(faces[f][(i + 1) % size]);
                    }
                }
            }
        }
    }

    template <class Function, class... First>
    auto call(Function function, First... first) const {
        return function(first..., vertices, uvs, counts, cornerFaces, neighbours, ringCounts, ringConnection);
    }
    std::pair<vec3, vec3> normalAndTangent(float u, float v) const {
        return call([&](auto... lists) { return follicleGetNormalAndTangent(mesh, u, v, lists...); });
    }
    vec3 rotate(float u, float v) const {
        return call([&](auto... lists) { return follicleRotateMesh(mesh, u, v, lists...); });
    }

    Mesh mesh;
    std::array<unsigned, 4> vertices{0, 1, 2, 3};
    std::array<vec2, 4> uvs{vec2(0.0f), vec2(1.0f, 0.0f), vec2(1.0f), vec2(0.0f, 1.0f)};
    std::array<unsigned, 4> counts{};
    svec<unsigned, 16> cornerFaces;
    svec<unsigned, 64> neighbours;
    svec<unsigned, 9> ringCounts;
    svec<unsigned, 36> ringConnection;
};

Quad flatQuad(const mat4& matrix = mat4(1.0f), vec3 corner2 = vec3(1, 1, 0)) {
    return Quad({{0, 0, 0}, {1, 0, 0}, corner2, {0, 1, 0}}, {{0, 1, 2, 3}}, matrix);
}

/// The top of a box of 3 by 2 by 1 with its four sides.
Quad boxTop() {
    return Quad({{0, 0, 0}, {3, 0, 0}, {3, 2, 0}, {0, 2, 0}, {0, 0, -1}, {3, 0, -1}, {3, 2, -1}, {0, 2, -1}},
                {{0, 1, 2, 3}, {1, 0, 4, 5}, {2, 1, 5, 6}, {3, 2, 6, 7}, {0, 3, 7, 4}}, mat4(1.0f));
}

TEST(Follicle, PicksTheTriangleOfTheShorterDiagonal) {
    const auto check = [](const char* what, const Quad& quad, vec2 uv, std::array<unsigned, 3> corners, vec3 weights) {
        const CornerWeights picked = follicle__IMPL__select(quad.mesh, uv, quad.vertices, quad.uvs);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(picked[i].first, corners[i]) << what;
            EXPECT_NEAR(picked[i].second, weights[static_cast<int>(i)], 1e-6f) << what;
        }
    };
    check("a tie splits along 0-2", flatQuad(), {0.75f, 0.25f}, {1, 2, 0}, {0.5f, 0.25f, 0.25f});
    check("its second triangle", flatQuad(), {0.25f, 0.5f}, {0, 2, 3}, {0.5f, 0.25f, 0.25f});
    check("the diagonal is in the first", flatQuad(), {0.5f, 0.5f}, {1, 2, 0}, {0.0f, 0.5f, 0.5f});
    const Quad kite = flatQuad(mat4(1.0f), vec3(2, 2, 0));
    check("1-3 is shorter", kite, {0.25f, 0.25f}, {0, 1, 3}, {0.5f, 0.25f, 0.25f});
    check("its second triangle", kite, {0.75f, 0.5f}, {3, 1, 2}, {0.25f, 0.5f, 0.25f});
    check("outside of both", kite, {-0.5f, 0.5f}, {3, 1, 2}, {1.5f, 0.5f, -1.0f});
    const mat4 shear(vec4(1, 0, 0, 0), vec4(0.5f, 1, 0, 0), vec4(0, 0, 1, 0), vec4(7, 7, 7, 1));
    check("1-3 is shorter in the world", flatQuad(shear), {0.25f, 0.25f}, {0, 1, 3}, {0.5f, 0.25f, 0.25f});

    EXPECT_EQ(follicle__IMPL__offset({{{0, 0.25f}, {1, 0.5f}, {2, 0.25f}}}), 0.0f);
    EXPECT_EQ(follicle__IMPL__offset({{{0, 1.5f}, {1, -0.75f}, {2, 0.25f}}}), 0.75f);
    EXPECT_EQ(follicle__IMPL__offset({{{0, -0.25f}, {1, 1.5f}, {2, -0.25f}}}), 0.5f);
}

TEST(Follicle, StandsWhereItsUVsPoint) {
    const Quad quad = flatQuad(kShear); // (x, y, 0) goes to (5 + 2x, x/2 + y - 7, 11 - y)
    const vec3 position = follicleTranslateMesh(quad.mesh, 0.5f, 0.25f, quad.vertices, quad.uvs);
    EXPECT_TRUE(near(position, vec3(6.0f, -6.5f, 10.75f), 1e-5f));
    const vec3 moved = pointOnPolyTranslate(kShear, quad.mesh, {0.5f, 0.25f}, quad.vertices, quad.uvs);
    EXPECT_TRUE(near(moved, vec3(17.0f, 3.0f - 6.5f + 10.75f / 4.0f - 7.0f, 6.5f + 32.25f + 11.0f), 1e-5f));

    Surface late = surfaceOf(1, 1, 1, 1, 2, 2, gridPoint);
    late.knotsU = {2.0f, 6.0f};
    EXPECT_TRUE(near(follicleTranslateSurface(late, 0.25f, 0.5f), vec3(0.25f, 0.5f, 0.0f), 1e-6f));
}

TEST(Follicle, WeighsFacesByAngleAndArea) {
    // A corner of the box: three right angles, areas 6 (top), 3 and 2 (sides).
    const auto [corner, tangent] = boxTop().normalAndTangent(1.0f, 1.0f);
    EXPECT_TRUE(near(corner, glm::normalize(vec3(2, 3, 6)), 1e-6f));
    EXPECT_TRUE(near(tangent, vec3(1, 0, 0), 1e-6f));
    // In triangle 0-2-3 corner 1 is not named, yet its three faces are skipped.
    const vec3 blend = 0.25f * glm::normalize(vec3(-2, -3, 6)) + 0.25f * glm::normalize(vec3(2, 3, 6)) +
                       0.5f * glm::normalize(vec3(-2, 3, 6));
    EXPECT_TRUE(near(boxTop().normalAndTangent(0.25f, 0.75f).first, glm::normalize(blend), 1e-6f));
    // At corner 2 the flat quad (90 degrees, area 1) meets a triangle in the plane x = 1 (135 degrees, area 2).
    const Quad wedge({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, -1, 2}, {1, 1, -2}}, {{0, 1, 2, 3}, {2, 4, 5}},
                     mat4(1.0f));
    EXPECT_TRUE(near(wedge.normalAndTangent(1.0f, 1.0f).first, glm::normalize(vec3(3 * 2, 0, 2 * 1)), 1e-6f));

    Quad quad = flatQuad();
    quad.counts[2] = 0; // its weight is 0, and NaN comes through
    EXPECT_TRUE(std::isnan(quad.rotate(1.0f, 0.0f).x));
    quad.uvs = {vec2(0.0f), vec2(1.0f), vec2(1.0f, 0.0f), vec2(2.0f, 0.0f)}; // corners 0, 2 and 3 share one V
    EXPECT_TRUE(std::isnan(quad.normalAndTangent(0.5f, -1.0f).second.x));
}

/// The frame of angles in a rotate order, by its X axis and its Z axis.
void expectFrame(vec3 angles, int order, vec3 x, vec3 z) {
    const mat4 frame = eulerRotateMatrix(angles, static_cast<RotateOrder>(order));
    EXPECT_TRUE(near(vec3(frame[0]), x, 2e-6f));
    EXPECT_TRUE(near(vec3(frame[2]), z, 2e-6f));
}

TEST(Follicle, TurnsWithItsShape) {
    for (const vec3 angles : {vec3(0.0f), vec3(0.3f, -0.8f, 1.2f), vec3(-2.5f, 0.4f, 2.9f), vec3(1.0f, 1.5f, -0.6f)}) {
        const mat4 turn = composeMatrix(vec3(1.0f, 2.0f, 3.0f), angles, 3, vec3(2.0f));
        const mat3 axes = mat3(turn) / 2.0f;
        // U grows along x, and the normal is z. A mesh's frame has X against U, a surface's along it.
        expectFrame(flatQuad(turn).rotate(0.3f, 0.6f), 0, -axes[0], axes[2]);
        const Surface square = surfaceOf(1, 1, 1, 1, 2, 2, gridPoint, turn);
        expectFrame(follicleRotateSurface(square, 0.3f, 0.6f), 0, axes[0], axes[2]);
        // Point on poly has Y along the normal and X along U; the matrix does not commute with the turn.
        const mat4 parent = eulerRotateMatrix(vec3(0.7f, 0.2f, -0.4f), kRotateZXY);
        const Quad quad = flatQuad(turn);
        for (const int order : {0, 2, 5}) {
            const vec3 onPoly = quad.call([&](auto... lists) {
                return pointOnPolyRotate(parent, quad.mesh, {0.3f, 0.6f}, order, lists...);
            });
            expectFrame(onPoly, order, mat3(parent) * axes[0], mat3(parent) * -axes[1]);
        }
    }
}

TEST(Follicle, RejectsIndicesBeyondTheirLists) {
    const auto check = [](const char* text, auto spoil) {
        Quad box = boxTop();
        spoil(box);
        EXPECT_EQ(errorOf([&] { box.rotate(0.25f, 0.75f); }), text); // in triangle 0-2-3
    };
    check("faceVertices[2] is 8, the mesh has 8", [](Quad& q) { q.vertices[2] = 8; });
    check("ringConnection[1] is 9, the mesh has 8", [](Quad& q) { q.ringConnection[1] = 9; });
    check("ringConnection has 20 entries, the sum of ringCounts needs 21", [](Quad& q) { ++q.ringCounts[4]; });
    check("cornerFaces[0] is 5, the ring has 5", [](Quad& q) { q.cornerFaces[0] = 5; });
    check("cornerNeighbours[1] is 10, the mesh has 8", [](Quad& q) { q.neighbours[1] = 10; });
    check("cornerNeighbours has 17 entries, two for each corner face needs 18",
          [](Quad& q) { q.neighbours.resize(17); });
    check("cornerFaces has 12 entries, the sum of cornerFaceCounts needs 4294967301",
          [](Quad& q) { q.counts[1] = 4294967295u; });
    check("none", [](Quad& q) { q.cornerFaces[4] = 99; }); // of corner 1, which no one reads
}

} // namespace
} // namespace zent::test
