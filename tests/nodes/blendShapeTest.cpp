#include "zent/nodes/blendShape.h"

#include "nodes/shapesForDeformers.h"

namespace zent::test {
namespace {

const vec3 kX(1.0f, 0.0f, 0.0f);

// One point at the origin; the in-between item moves it along x, the full one along y, so that the point reads as the
// two weights that were applied.
TEST(BlendShape, AppliedWeights) {
    const DeltaList alongX{{0u, kX}};
    const DeltaList alongY{{0u, vec3(0.0f, 1.0f, 0.0f)}};
    struct Case {
        std::vector<unsigned> items;
        float weight;
        float envelope;
        vec2 expected;
    };
    const Case cases[] = {
        {{6000}, 0.5f, 0.5f, {0.0f, 0.25f}},
        {{6000}, -0.5f, 1.0f, {0.0f, -0.5f}},
        {{5500}, 0.25f, 1.0f, {0.5f, 0.0f}},
        {{5500, 6000}, 0.75f, 0.5f, {0.5f, 0.5f}}, // the envelope has no part between two items
        {{5500, 6000}, 1.5f, 1.0f, {-1.0f, 2.0f}}, // beyond the last item: extrapolates
        {{5500, 6000}, 0.2f, 0.5f, {0.2f, 0.0f}},  // up to the first item: as if it were alone
        {{4999, 6000}, 0.5f, 1.0f, {0.0f, 0.5f}},  // an index below 5000 stands beyond all others
        {{6000}, 0.5f, 0.0f, {0.0f, 0.0f}},
        {{6000}, 0.5f, -1.0f, {0.0f, 0.0f}},
        {{}, 0.5f, 1.0f, {0.0f, 0.0f}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.weight << " at envelope " << c.envelope);
        TargetDeltas deltas;
        for (const unsigned item : c.items) {
            deltas.emplace(ItemIndex{3u, item}, item == 6000 ? alongY : alongX);
        }
        deltas.emplace(ItemIndex{4u, 6000u}, alongX); // a target without a weight
        const Mesh result = blendShapeMesh(c.envelope, meshOf({vec3(0.0f)}), {{3u, c.weight}}, {}, deltas, {});
        expectNear(result.points[0], vec3(c.expected, 0.0f));
    }
}

// The weight map scales whole shapes and leaves deltas alone; differences are taken from the unchanged base.
TEST(BlendShape, WholeShapesAndFactors) {
    const Mesh base = meshOf({vec3(0.0f), kX, vec3(5.0f)});
    const Mesh target = meshOf({kX, 3.0f * kX}); // shorter: the third point stays
    const DeltaList deltas{{0u, kX}, {0u, kX}};  // a point that stands twice moves twice
    const Mesh result =
        blendShapeMesh(1.0f, base, {{0u, 1.0f}, {1u, 0.5f}, {2u, 1.0f}}, {{{0u, 6000u}, target}, {{1u, 6000u}, target}},
                       {{{2u, 6000u}, deltas}}, {{1u, {{1u, 0.5f}, {9u, 7.0f}}}, {2u, {{0u, 0.0f}}}});
    expectNear(result.points, {kX * (1.0f + 0.5f + 2.0f), kX * (1.0f + 2.0f + 0.25f * 2.0f), vec3(5.0f)});
}

// Targets of several lengths over a mesh of many points, with a factor and a delta list between them.
TEST(BlendShape, ManyPoints) {
    constexpr unsigned kCount = 25;
    const auto line = [](unsigned count, float slope) {
        std::vector<vec3> points;
        for (unsigned i = 0; i < count; ++i) {
            points.emplace_back(slope * static_cast<float>(i), 1.0f, -slope);
        }
        return meshOf(std::move(points));
    };
    const Mesh base = line(kCount, 1.0f);
    const Mesh full = line(kCount, 2.0f);
    const Mesh partial = line(13, 3.0f);
    const DeltaList deltas{{24u, kX}};
    const Mesh result =
        blendShapeMesh(1.0f, base, {{0u, 0.5f}, {1u, 1.0f}, {2u, 1.0f}, {3u, -1.0f}, {4u, 2.0f}},
                       {{{0u, 6000u}, full}, {{1u, 6000u}, partial}, {{3u, 6000u}, full}, {{4u, 6000u}, full}},
                       {{{2u, 6000u}, deltas}}, {{3u, {{1u, 0.0f}}}});
    for (unsigned i = 0; i < kCount; ++i) {
        SCOPED_TRACE(i);
        const float moves = 0.5f + (i < 13 ? 2.0f : 0.0f) - (i == 1 ? 0.0f : 1.0f) + 2.0f; // of (i, 0, -1)
        const float along = static_cast<float>(i);
        expectNear(result.points[i], vec3(along + moves * along + (i == 24 ? 1.0f : 0.0f), 1.0f, -1.0f - moves));
    }
}

template <class T>
std::pair<float, float> negativeWeights(const T& base, const T& target) {
    const DeltaList deltas{{0u, kX}};
    const auto moved = [&](const T& result) { return pointsOf(result)[0].x; };
    return {moved(blendShape<T>(1.0f, base, {{0u, -0.5f}}, {{{0u, 6000u}, target}}, {}, {})),
            moved(blendShape<T>(1.0f, base, {{0u, -0.5f}}, {}, {{{0u, 6000u}, deltas}}, {}))};
}

TEST(BlendShape, NegativeWeightsByShapeAndKind) {
    using Pair = std::pair<float, float>;
    const std::vector<vec3> rest(4, vec3(0.0f));
    const std::vector<vec3> moved(4, kX);
    EXPECT_EQ(negativeWeights(meshOf(rest), meshOf(moved)), Pair(-0.5f, -0.5f));
    EXPECT_EQ(negativeWeights(curveOf(1, kFormOpen, rest), curveOf(1, kFormOpen, moved)), Pair(-0.5f, 0.0f));
    EXPECT_EQ(negativeWeights(surfaceOf(1, 1, 2, 2, rest), surfaceOf(1, 1, 2, 2, moved)), Pair(0.0f, 0.0f));
}

TEST(BlendShape, PeriodicOverlaps) {
    const std::vector<vec3> rest(7, vec3(0.0f));
    // A curve's overlap follows; what the target says of it is not looked at.
    std::vector<vec3> target(7, kX);
    target[4] = target[5] = target[6] = vec3(9.0f);
    const DeltaList deltas{{1u, kX}};
    const Curve base = curveOf(3, kFormPeriodic, rest);
    const Curve periodic = curveOf(3, kFormPeriodic, target);
    const Curve open = curveOf(3, kFormOpen, target);
    const WeightMap both{{0u, 1.0f}, {1u, 1.0f}};
    expectNear(blendShapeCurve(1.0f, base, both, {{{0u, 6000u}, periodic}}, {{{1u, 6000u}, deltas}}, {}).cv,
               {kX, 2.0f * kX, kX, kX, kX, 2.0f * kX, kX});
    // Each counts by its own form: seven points of an open target stand against four of a periodic base.
    expectNear(blendShapeCurve(1.0f, base, both, {{{0u, 6000u}, open}}, {}, {}).cv, std::vector<vec3>(7, kX));

    // A surface's overlap is visited like any other point, and so moves once more on top of what it repeats.
    Surface torus = surfaceOf(kFormPeriodic, kFormPeriodic, 3, 3, std::vector<vec3>(9, vec3(0.0f)));
    torus.closestSamples.emplace_back(vec2(0.0f), vec3(0.0f));
    const Surface full = surfaceOf(1, 1, 3, 3, std::vector<vec3>(9, kX));
    const Surface surface = blendShapeSurface(1.0f, torus, {{0u, 1.0f}}, {{{0u, 6000u}, full}}, {}, {});
    EXPECT_TRUE(surface.closestSamples.empty());
    std::vector<float> x;
    for (const vec3& point : surface.cv) {
        x.push_back(point.x);
    }
    // Point 8 hangs on 6, which row 2 writes after its own move; 6 hangs on 0.
    EXPECT_EQ(x, (std::vector<float>{1, 1, 2, 1, 1, 2, 2, 2, 3}));
}

// An accumulator of the caller's own, whose knots speak for more rows than it has, or for none.
TEST(BlendShape, ResultOfOtherPoints) {
    const Surface base = surfaceOf(kFormPeriodic, kFormPeriodic, 3, 3, std::vector<vec3>(9, kX));
    Surface result = surfaceOf(kFormPeriodic, kFormPeriodic, 300, 3, std::vector<vec3>(9, kX));
    expectError([&] { IMPL_blend_target(result, 1.0f, base, base, {}); }, {"result control points has 9", "300 by 3"});
    result = surfaceOf(kFormPeriodic, kFormPeriodic, 3, 3, std::vector<vec3>(9, kX));
    result.degreeV = 4;
    expectError([&] { IMPL_blend_target(result, 1.0f, base, base, {}); }, {"result has 0 entries", "9"});
}

TEST(BlendShape, DeltaOfNoPoint) {
    const DeltaList deltas{{0u, kX}, {3u, kX}};
    const auto blend = [&](float envelope, float weight) {
        return blendShapeMesh(envelope, meshOf({kX, kX, kX}), {{0u, weight}}, {}, {{{0u, 6000u}, deltas}}, {});
    };
    expectError([&] { blend(1.0f, 1.0f); }, {"deltas[1] is 3", "3"});
    EXPECT_NO_THROW(blend(1.0f, 0.0f)); // not applied, not read
    EXPECT_NO_THROW(blend(0.0f, 1.0f));
}

} // namespace
} // namespace zent::test
