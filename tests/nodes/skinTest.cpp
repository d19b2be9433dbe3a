#include "zent/nodes/skin.h"

#include "nodes/shapesForDeformers.h"

namespace zent::test {
namespace {

const vec3 kX(1.0f, 0.0f, 0.0f);

TEST(Skin, OrderOfTheMatrices) {
    // The origin: to (1, 0, 0) in the world, turned to (0, 1, 0), scaled and lifted to (0, 2, 5), and back into the
    // shape.
    const mat4 geom = translation(kX);
    const mat4 matrix = translation(vec3(0, 0, 5)) * scaling(vec3(2.0f));
    const Mesh result = skinMesh(1.0f, meshOf({vec3(0.0f)}), geom, {matrix}, {quarterTurn()}, {{0u, 0u, 1.0f}});
    expectNear(result.points[0], vec3(-1, 2, 5));
}

// Whole matrices are multiplied: the bind matrix gives the point w = 2, which doubles the influence's translation.
// Nothing divides by w in the end.
TEST(Skin, ProductsAreFourByFour) {
    mat4 bind(1.0f);
    bind[0][3] = 1.0f;
    const Mesh result =
        skinMesh(1.0f, meshOf({kX}), mat4(1.0f), {translation(vec3(0, 3, 0))}, {bind}, {{0u, 0u, 1.0f}});
    expectNear(result.points[0], vec3(1, 6, 0));
}

TEST(Skin, WeightsAreUsedAsTheyAre) {
    const std::vector<mat4> matrix{translation(vec3(0, 2, 0)), mat4(1.0f)};
    const std::vector<mat4> bind(2, mat4(1.0f));
    const std::vector<vec3> points{kX, kX, kX, kX};
    // Point 0 is named by two influences, apart in the list; 1 twice by one; 2 by half a weight; 3 not at all.
    const SkinWeights weights{{0u, 1u, 0.5f}, {1u, 0u, 1.0f}, {1u, 0u, 1.0f}, {2u, 1u, 0.5f}, {0u, 0u, 0.5f}};
    for (const float envelope : {1.0f, 0.5f, 0.00001f, 2.0f}) { // the envelope only gates
        expectNear(skinMesh(envelope, meshOf(points), mat4(1.0f), matrix, bind, weights).points,
                   {vec3(1, 1, 0), vec3(2, 4, 0), vec3(0.5f, 0, 0), vec3(0.0f)});
    }
    for (const float envelope : {0.0f, -1.0f, 0.000009f}) { // nothing else is looked at
        EXPECT_EQ(skinMesh(envelope, meshOf(points), mat4(1.0f), {}, {}, weights).points, points);
    }
}

TEST(Skin, ListsInAnyOrder) {
    const std::vector<mat4> matrix{translation(vec3(0, 1, 0)), translation(vec3(0, 0, 1)), quarterTurn()};
    const std::vector<mat4> bind(3, mat4(1.0f));
    // Influence i moves (1, 0, 0) to (1, 1, 0), (1, 0, 1) and (0, 1, 0).
    SkinWeights byPoint{{0u, 0u, 1.0f}, {0u, 1u, 2.0f}, {1u, 1u, 1.0f}, {2u, 0u, 3.0f}, {2u, 1u, 4.0f}, {2u, 2u, 5.0f}};
    SkinWeights byInfluence{byPoint[0], byPoint[3], byPoint[1], byPoint[2], byPoint[4], byPoint[5]};
    SkinWeights backwards(byPoint.rbegin(), byPoint.rend());
    for (const SkinWeights& weights : {byPoint, byInfluence, backwards}) {
        expectNear(skinMesh(1.0f, meshOf({kX, kX, kX}), mat4(1.0f), matrix, bind, weights).points,
                   {vec3(3, 1, 2), vec3(1, 0, 1), vec3(7, 8, 4)});
    }
}

TEST(Skin, MatrixOfTheResult) {
    const mat4 matrix = translation(vec3(7.0f));
    const std::vector<vec3> points{kX, kX};
    const auto skinned = [&](auto shape) {
        return skin(1.0f, shape, mat4(1.0f), {mat4(1.0f)}, {mat4(1.0f)}, {{1u, 0u, 1.0f}});
    };
    EXPECT_EQ(skinned(meshOf(points, matrix)).translation, vec3(0.0f)); // a mesh loses its matrix
    EXPECT_EQ(skinned(curveOf(1, kFormOpen, points, matrix)).translation, vec3(7.0f));
    EXPECT_EQ(skinned(surfaceOf(1, 1, 1, 2, points, matrix)).translation, vec3(7.0f));
    Lattice lattice = latticeOf(2, 1, 1, points);
    lattice.translation = vec3(7.0f);
    const Lattice result = skinned(lattice);
    EXPECT_EQ(result.translation, vec3(7.0f));
    EXPECT_EQ(result.s, 2u);
    EXPECT_EQ(result.points, (std::vector<vec3>{vec3(0.0f), kX}));
}

TEST(Skin, PeriodicOverlaps) {
    const std::vector<mat4> matrix{translation(vec3(0, 1, 0))};
    const Curve curve = skinCurve(1.0f, curveOf(2, kFormPeriodic, {kX, kX, kX, kX, kX}), mat4(1.0f), matrix,
                                  {mat4(1.0f)}, {{1u, 0u, 1.0f}, {2u, 0u, 1.0f}});
    const vec3 moved(1, 1, 0);
    expectNear(curve.cv, {vec3(0.0f), moved, moved, vec3(0.0f), moved});
    // Point 2 repeats point 0, and is added to where the list names it after that.
    Surface input = surfaceOf(1, kFormPeriodic, 1, 3, {kX, kX, kX});
    input.closestSamples.emplace_back(vec2(0.0f), kX);
    const Surface surface =
        skinSurface(1.0f, input, mat4(1.0f), matrix, {mat4(1.0f)}, {{0u, 0u, 1.0f}, {2u, 0u, 1.0f}});
    expectNear(surface.cv, {moved, vec3(0.0f), 2.0f * moved});
    EXPECT_TRUE(surface.closestSamples.empty());
}

// Bit for bit, so that a check by points reports what the whole shape has.
TEST(Skin, PointByPointIsTheSame) {
    const mat4 geom = translation(vec3(0.3f, -7, 2)) * scaling(vec3(1.7f));
    const std::vector<mat4> matrix{translation(vec3(0.1f, 2, 5)) * quarterTurn(), scaling(vec3(0.9f)), geom};
    const std::vector<mat4> bind{scaling(vec3(1.1f)), quarterTurn(), translation(vec3(1 / 3.0f))};
    const vec3 point(0.7f, -1.3f, 11.0f);
    const PointWeight influences[] = {{2u, 0.3f}, {0u, 0.61f}, {1u, 0.09f}};
    const std::vector<mat4> palette = skinPalette(geom, matrix, bind);
    SkinWeights weights;
    for (const auto& [influence, weight] : influences) {
        weights.emplace_back(0u, influence, weight);
        const auto count = static_cast<std::ptrdiff_t>(weights.size());
        EXPECT_EQ(skinPoint(point, palette, influences, influences + count),
                  skinMesh(1.0f, meshOf({point}), geom, matrix, bind, weights).points[0]);
    }
}

// Points that follow each other with as many influences are summed side by side, where the processor can.
TEST(Skin, RowsOfPointsAreTheSame) {
    constexpr unsigned kPoints = 23;
    std::vector<vec3> points;
    std::vector<mat4> matrix;
    for (unsigned i = 0; i < kPoints; ++i) {
        const auto t = static_cast<float>(i);
        points.emplace_back(std::sin(t), 3.0f * std::cos(t), 0.1f * t);
        matrix.push_back(translation(vec3(t, 1 / 3.0f, -t)) * quarterTurn() * scaling(vec3(0.7f + 0.1f * t)));
    }
    const std::vector<mat4> bind(kPoints, scaling(vec3(1.1f)));
    const std::vector<mat4> palette = skinPalette(mat4(1.0f), matrix, bind);
    // The point that has more than the others, or another influence; from one point to the next the same influences, or
    // each its own.
    for (unsigned odd = 0; odd <= kPoints; ++odd) {
        for (unsigned influences = 1; influences <= 6; ++influences) {
            for (const auto& [more, step] : {std::pair(0u, 0u), std::pair(1u, 0u), std::pair(1u, 5u)}) {
                SkinWeights weights;
                std::vector<vec3> wanted;
                for (unsigned i = 0; i < kPoints; ++i) {
                    std::vector<PointWeight> own;
                    for (unsigned k = 0; k < influences + (i == odd ? more : 0); ++k) {
                        own.emplace_back((step * i + (i == odd ? k + 1 : k)) % kPoints,
                                         0.1f * static_cast<float>(k + 1) + 0.01f * points[i].x);
                        weights.emplace_back(i, own.back().first, own.back().second);
                    }
                    wanted.push_back(skinPoint(points[i], palette, own.data(), own.data() + own.size()));
                }
                EXPECT_EQ(skinMesh(1.0f, meshOf(points), mat4(1.0f), matrix, bind, weights).points, wanted) << odd;
                std::get<1>(weights.back()) = kPoints;
                expectError([&] { skinMesh(1.0f, meshOf(points), mat4(1.0f), matrix, bind, weights); },
                            {"influences[", "] is 23", "matrix has 23"});
                std::get<0>(weights[0]) = kPoints;
                expectError([&] { skinMesh(1.0f, meshOf(points), mat4(1.0f), matrix, bind, weights); },
                            {"weights[0] is 23"});
            }
        }
    }
}

TEST(Skin, BadLists) {
    const auto run = [](std::size_t matrices, std::size_t binds, SkinWeights weights) {
        skinMesh(1.0f, meshOf({kX, kX}), mat4(1.0f), std::vector<mat4>(matrices, mat4(1.0f)),
                 std::vector<mat4>(binds, mat4(1.0f)), weights);
    };
    EXPECT_NO_THROW(run(1, 2, {{0u, 0u, 1.0f}}));
    expectError([&] { run(1, 1, {{0u, 0u, 1.0f}, {2u, 0u, 1.0f}}); }, {"weights[1] is 2", "2"});
    expectError([&] { run(2, 2, {{0u, 1u, 1.0f}, {0u, 2u, 1.0f}}); }, {"influences[1] is 2", "matrix has 2"});
    expectError([&] { run(1, 2, {{0u, 1u, 1.0f}}); }, {"influences[0] is 1", "matrix has 1"});
    expectError([&] { run(2, 1, {{0u, 0u, 1.0f}}); }, {"bindPreMatrix has 1", "2"});
}

} // namespace
} // namespace zent::test
