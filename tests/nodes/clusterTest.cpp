#include "zent/nodes/cluster.h"

#include "nodes/shapesForDeformers.h"

namespace zent::test {
namespace {

const vec3 kX(1.0f, 0.0f, 0.0f);
const float kHalfPi = static_cast<float>(kPi / 2.0);

/// A handle's channels, all at rest; the matrices move by (0, 0, 100), so that a point that goes through them shows it.
struct Handle {
    int angleMode = 0;
    vec3 translate{0.0f};
    vec3 rotate{0.0f};
    int rotateOrder = 0;
    vec3 scale{1.0f};
    vec3 rotatePivot{0.0f};
    vec3 scalePivot{0.0f};
    vec3 rotatePivotTranslate{0.0f};
    vec3 scalePivotTranslate{0.0f};

    template <class T>
    T on(T geometry, boost::optional<std::vector<unsigned>> indices, WeightMap weights) const {
        return _cluster<T>(geometry, std::move(indices), translation(vec3(0, 0, 100)), mat4(1.0f), angleMode,
                           std::move(weights), translate, rotate, rotateOrder, scale, rotatePivot, scalePivot,
                           rotatePivotTranslate, scalePivotTranslate);
    }
    vec3 on(vec3 point, float weight) const {
        const vec3 moved = on(latticeOf(1, 1, 1, {point}), boost::none, {{0u, weight}}).points[0];
        const auto alone =
            pointCluster(translation(vec3(0, 0, 100)), mat4(1.0f), angleMode, translate, rotate, rotateOrder, scale,
                         rotatePivot, scalePivot, rotatePivotTranslate, scalePivotTranslate);
        alone(point, 0.5f); // leaves nothing behind for the next point
        EXPECT_EQ(alone(point, weight), moved);
        return moved;
    }
};

TEST(Cluster, FullWeightTakesTheMatricesAlone) {
    // The second matrix acts first: turned to (0, 1, 0), then lifted.
    Lattice lattice = latticeOf(1, 1, 1, {kX});
    clusterLattice(lattice, {0u}, translation(vec3(0, 3, 0)), quarterTurn(), 0, {}, vec3(9.0f), vec3(1.0f), 0,
                   vec3(4.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f));
    expectNear(lattice.points[0], vec3(0, 4, 0));
}

TEST(Cluster, FractionalWeights) {
    Handle moved;
    moved.translate = vec3(2, 0, 0);
    moved.rotatePivotTranslate = vec3(0, 2, 0);
    moved.scalePivotTranslate = vec3(0, 0, 2);
    expectNear(moved.on(kX, 0.5f), vec3(2, 1, 1));
    expectNear(moved.on(kX, 1.5f), vec3(4, 3, 3)); // any weight but 1
    expectNear(moved.on(kX, -1.0f), vec3(-1, -2, -2));
    expectNear(moved.on(kX, 0.000009f), kX); // not touched, by neither channels nor matrices
    expectNear(moved.on(kX, 0.999995f), vec3(1, 0, 100));

    Handle scaled;
    scaled.scale = vec3(3.0f);
    scaled.scalePivot = kX;
    expectNear(scaled.on(kX, 0.5f), kX);
    expectNear(scaled.on(2.0f * kX, 0.5f), 3.0f * kX);

    // A quarter turn, three quarters of a third of a turn, about the pivot.
    Handle turned;
    turned.rotate = vec3(0, 0, kHalfPi * 4.0f / 3.0f);
    turned.rotatePivot = turned.scalePivot = kX;
    expectNear(turned.on(2.0f * kX, 0.75f), vec3(1, 1, 0));
    turned.rotate = vec3(0, 0, 1e-3f); // nearly nothing: a blend without a division by the vanishing sine
    expectNear(turned.on(2.0f * kX, 0.5f), vec3(2, 0.0005f, 0), 1e-6f);
}

// Three quarters of a third of a turn are a quarter turn. In mode 2 the half-angle 60 sweeps (60 - 180) * 3/4 = -90
// degrees: sin 150 / sin 60 of the identity less 1 / sin 60 of (w 0.5, z 0.866) is (w 0, z -1), a half turn.
TEST(Cluster, AngleModes) {
    const vec3 quarterTurned(0, 1, 0);
    const std::pair<int, vec3> cases[] = {
        {0, quarterTurned}, {3, quarterTurned}, {1, quarterTurned}, {2, -kX}, {4, kX}, {-1, kX}};
    for (const auto& [mode, expected] : cases) {
        SCOPED_TRACE(mode);
        Handle handle;
        handle.angleMode = mode;
        handle.rotate = vec3(0, 0, kHalfPi * 4.0f / 3.0f);
        expectNear(handle.on(kX, 0.75f), expected, 1e-4f);
    }
}

// The order takes part in reading angles off the quaternion only, and xyz builds another rotation from them. (90, 0,
// 90) is a third of a turn about (1, 1, 1); its zyx angles are (0, 90, 90), which xyz makes one about (-1, 1, 1).
TEST(Cluster, RotateOrder) {
    Handle handle;
    handle.rotate = vec3(kHalfPi, 0, kHalfPi);
    const float k = std::sqrt(1.0f / 3.0f);
    const float third = 1.0f / 3.0f;
    expectNear(handle.on(kX, 0.75f), vec3(third, third + k, third - k), 1e-4f);
    handle.rotateOrder = 5;
    expectNear(handle.on(kX, 0.75f), vec3(third, k - third, -k - third), 1e-4f);
}

TEST(Cluster, MembersAndCompounding) {
    Handle scaled;
    scaled.scale = vec3(3.0f);
    // 0 and 3 by the list, 1 by the list and a weight, 2 by its weight alone; the scale compounds: 2, then 1.5.
    const Lattice lattice = scaled.on(latticeOf(5, 1, 1, {kX, kX, kX, kX, kX}), std::vector<unsigned>{3u, 1u, 0u, 1u},
                                      {{1u, 0.5f}, {2u, 0.5f}});
    const vec3 full(1, 0, 100);
    expectNear(lattice.points, {full, 2.0f * kX, 1.5f * kX, full, kX});
}

TEST(Cluster, PeriodicCurves) {
    const Handle handle;
    const vec3 full(1, 0, 100);
    const Curve input = curveOf(2, kFormPeriodic, {kX, kX, kX, kX, kX});
    // All points are those outside the overlap, which follows them.
    expectNear(handle.on(input, boost::none, {{1u, 0.0f}}).cv, {full, kX, full, full, kX});
    // A list may name the overlap: point 3 has moved once with point 0.
    expectNear(handle.on(input, std::vector<unsigned>{0u, 3u}, {}).cv, {full, kX, kX, vec3(1, 0, 200), kX});
    Curve all = input;
    clusterFullCurve(all, translation(vec3(0, 0, 100)), mat4(1.0f), 0, {{1u, 0.0f}}, vec3(0.0f), vec3(0.0f), 0,
                     vec3(1.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f));
    expectNear(all.cv, {full, kX, full, full, kX});
}

TEST(Cluster, MembersThatAreNoPoints) {
    const Handle handle;
    Lattice lattice = latticeOf(2, 1, 1, {kX, kX});
    const auto run = [&](std::vector<unsigned> indices, WeightMap weights) {
        clusterLattice(lattice, std::move(indices), translation(vec3(0, 0, 100)), mat4(1.0f), 0, std::move(weights),
                       vec3(0.0f), vec3(0.0f), 0, vec3(1.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f), vec3(0.0f));
    };
    expectError([&] { run({0u, 2u}, {}); }, {"indices[1] is 2", "2"});
    expectError([&] { run({0u}, {{0u, 1.0f}, {7u, 1.0f}}); }, {"weights[1] is 7", "2"});
    expectNear(lattice.points, {kX, kX});     // thrown before a point is moved
    EXPECT_NO_THROW(run({2u}, {{2u, 0.0f}})); // a member of weight 0 is never looked at
}

} // namespace
} // namespace zent::test
