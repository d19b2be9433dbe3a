#include "zent/nodes/pointConstraint.h"

#include "nodes/rigTest.h"
#include "zent/nodes/parentConstraint.h"
#include "zent/nodes/poleVectorConstraint.h"
#include "zent/nodes/scaleConstraint.h"

namespace zent::test {
namespace {

// Which targets count, what stands where none do, and what the offset does, in the three constraints that blend
// vectors.
TEST(VectorConstraints, WeighTheirTargets) {
    const vec3 rest(9.0f), offset(0, 0, 5), factor(1, 1, 3);
    const TargetList<mat4> parents(2, kIdentity);
    const TargetList<vec3> points{kX, {0, 2, 0}}, scales{{2, 1, 1}, {1, 4, 1}}, zeros(2, kZero), ones(2, kOne);
    const std::tuple<TargetList<float>, vec3, vec3, vec3> rows[] = {
        {{}, rest, rest, rest},
        {{0, 0}, rest, rest, rest},
        {{0.6f, -0.7f}, rest, rest, rest},
        {{0.6f, -0.5f}, {1, 0, 5}, {2, 1, 3}, kX}, // live by the sum, the negative one is skipped
        {{6e-6f, 6e-6f}, kZero, factor, kZero},    // live by the sum, both are skipped
        {{1e-5f, 0}, {1, 0, 5}, {2, 1, 3}, kX},
        {{2, 0}, {1, 0, 5}, {2, 1, 3}, kX},
        {{1, 3}, {0.25f, 1.5f, 5}, {1.25f, 3.25f, 3}, {0.25f, 1.5f, 0}},
    };
    for (const auto& [w, point, scale, follow] : rows) {
        EXPECT_TRUE(near(pointConstraint(kIdentity, kZero, kZero, offset, w, rest, parents, points, zeros), point));
        EXPECT_TRUE(near(scaleConstraint(kIdentity, false, factor, w, rest, parents, scales), scale));
        EXPECT_TRUE(near(parentConstraintTranslate(kIdentity, kZero, kZero, w, rest, parents, points, zeros, zeros,
                                                   zeros, {0, 0}, ones, ones, {false, false}, zeros),
                         follow));
    }
    EXPECT_EQ(errorOf([&] {
                  pointConstraint(kIdentity, kZero, kZero, kZero, {1, 1}, rest, parents, points, {kZero});
              }),
              "targetsB has 1 entries, pointConstraint needs 2");
    EXPECT_EQ(errorOf([&] {
                  scaleConstraint(kIdentity, false, kOne, {1, 1}, rest, {kIdentity}, scales);
              }),
              "targetParents has 1 entries, scaleConstraint needs 2");
    EXPECT_EQ(errorOf([&] {
                  parentConstraintTranslate(kIdentity, kZero, kZero, {1, 1}, rest, parents, points, points, {}, points,
                                            {0, 0}, points, points, {true, true}, points);
              }),
              "targetsB has 0 entries, parentConstraintTranslate needs 2");
}

// Products that do not commute: a quarter turn about z and a scale.
TEST(VectorConstraints, TakeTheTargetIntoTheParent) {
    const mat4 quarter = turned(kZ, 90), parentInverse = scaled({2, 3, 5});
    // (2, 2, 3) turned is (-2, 2, 3), scaled (-4, 6, 15), less both pivots (1, 1, 2).
    EXPECT_TRUE(near(pointConstraint(parentInverse, kOne, kZ, {10, 0, 0}, quarter, {1, 2, 3}, kX), {5, 5, 13}));
    // The turn's rows scaled are (0, 3, 0), (-2, 0, 0) and (0, 0, 5).
    const vec3 target(1, 10, 1), factor(1, 1, 2);
    EXPECT_TRUE(near(scaleConstraint(parentInverse, false, factor, quarter, target), {3, 20, 10}));
    EXPECT_TRUE(near(scaleConstraint(parentInverse, true, factor, quarter, target), {1.5f, 20.0f / 3, 2}));
    EXPECT_TRUE(near(scaleConstraint(parentInverse, true, kOne, {6e-6f, 6e-6f}, kZero, {quarter, quarter}, {kX, kX}),
                     {0.5f, 1.0f / 3, 0.2f})); // no target counts, the compensation does
    // From the root (0, 1, 0) to the target (3, 5, 0), turned; where the parent stands is nothing to a direction.
    EXPECT_TRUE(near(poleVectorConstraint(moved({7, 7, 7}) * quarter, kX, quarter, moved({0, 5, 0}), kX, {2, 0, 0}),
                     {-4, 3, 0}));
}

} // namespace
} // namespace zent::test
