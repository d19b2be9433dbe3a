#include "zent/nodes/aimConstraint.h"

#include "nodes/rigTest.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/nearestPointOnCurve.h"
#include "zent/nodes/tangentConstraint.h"
#include "zent/nodes/worldMatrix.h"

namespace zent::test {
namespace {

// By matrices in row order: in the world the aim axis points at the target, the up axis to the side of the up
// direction.
TEST(AimConstraint, PointsAndTurnsInTheWorld) {
    Random random(8);
    for (int round = 0; round < 400; ++round) {
        const mat4 parent = random.placement(1.3f), targetParent = random.placement(0.8f),
                   upMatrix = random.placement(1.7f);
        const vec3 translate = random.vector(), pivot = random.vector(), pivotTranslate = random.vector(),
                   orient = random.angles(), a = random.vector(), b = random.vector(), aim = random.vector(),
                   up = random.vector(), upVector = random.vector();
        const int order = random.order(), upType = round % 4;
        const auto solve = [&](vec3 offset) {
            return aimConstraint(glm::inverse(parent), translate, pivot, pivotTranslate, order, orient, offset, {0.4f},
                                 kZero, {targetParent}, {a}, {b}, upType, upMatrix, upVector, aim, up);
        };
        const mat4 world = worldMatrix(parent, joint(kZero, solve(kZero), kOne, order, orient, kOne, false));
        const vec3 position = transformPoint(parent, translate + pivot + pivotTranslate);
        const vec3 direction = glm::normalize(transformPoint(targetParent, a + b) - position);
        const vec3 ups[] = {kY, vec3(upMatrix[3]) - position, transformVector(upMatrix, upVector), upVector};
        ASSERT_TRUE(near(glm::normalize(transformVector(world, aim)), direction, 1e-3f));
        ASSERT_TRUE(near(sideOf(transformVector(world, up), direction), sideOf(ups[upType], direction), 5e-3f));
        // The offset acts inside, in order xyz whatever the rotate order.
        const vec3 offset = random.angles();
        ASSERT_TRUE(near(eulerMatrix(solve(offset), order),
                         worldMatrix(eulerMatrix(solve(kZero), order), eulerMatrix(offset, 0))));
    }
}

// Targets around the node in the plane of x and y, aimed at by x, with z up: turns about z, degrees.
TEST(AimConstraint, WeighsItsTargets) {
    const std::tuple<TargetList<float>, TargetList<float>, float> rows[] = {
        {{}, {}, 1},
        {{0.5f, -0.5f}, {20, 40}, 1},
        {{0.6f, -0.5f}, {20, 40}, 20},
        {{1, 1}, {20, 40}, 30},
        {{1, 1}, {170, -170}, 0}, // the quaternions as they stand, not the shorter way
    };
    const auto aimed = [](TargetList<float> weights, TargetList<vec3> targets, int upType, mat4 upMatrix, vec3 up) {
        return aimConstraint(kIdentity, kZero, kZero, kZero, 0, kZero, kZero, weights, kZ * kDegree,
                             TargetList<mat4>(weights.size(), kIdentity), targets,
                             TargetList<vec3>(weights.size(), kZero), upType, upMatrix, up, kX, up);
    };
    for (const auto& [weights, angles, expected] : rows) {
        TargetList<vec3> targets;
        for (const float angle : angles) {
            targets.push_back(turned(kZ, angle) * vec4(3, 0, 0, 1));
        }
        EXPECT_TRUE(near(aimed(weights, targets, 3, kIdentity, kZ), kZ * expected * kDegree));
    }
    EXPECT_EQ(errorOf([&] { aimed({1}, {}, 3, kIdentity, kZ); }), "targetsA has 0 entries, aimConstraint needs 1");

    // Nothing tells a direction: a target at the node, an up direction along the aim, an up object at the node, no up
    // type.
    EXPECT_TRUE(hasNaN(aimed({1}, {vec3(0, 0, 5e-6f)}, 3, kIdentity, kY)));
    EXPECT_TRUE(hasNaN(aimed({1}, {kY}, 0, kIdentity, kY)));
    EXPECT_TRUE(hasNaN(aimed({1}, {kX}, 1, kIdentity, kY)));
    EXPECT_TRUE(hasNaN(aimed({1}, {kX}, 4, kIdentity, kY)));
    EXPECT_FALSE(hasNaN(aimed({1}, {kX}, 1, moved(kZ), kY)));
}

TEST(AimKernel, SwingsAndTwists) {
    // (0, 1, 1) through the inverse of diag(1, 2, 4) is (0, 1/2, 1/4); diag(1, 2, 4) itself would give (0, 2, 4).
    const quat twisted = IMPL__aimConstraint(scaled({1, 2, 4}), {5, 0, 0}, kX, {0, 3, 0}, {0, 1, 1});
    EXPECT_TRUE(near(eulerAngles(twisted, kRotateXYZ), {std::atan2(0.25f, 0.5f), 0, 0}));
    // An up vector along the aim vector leaves the swing alone; it goes about an axis of its own between opposite
    // vectors.
    const vec3 rows[][3] = {
        {kX, -kX, kY}, {kZ, -kZ, kY}, {kY, -kY, kZ}, {{2, 0, 1}, {-2, 0, -1}, kY}, {kX, kY * 7.0f, kZ}};
    for (const auto& [aim, direction, axis] : rows) {
        const quat swung = IMPL__aimConstraint(kIdentity, direction, aim, aim * -2.0f, {0.3f, 0.4f, 0.5f});
        EXPECT_TRUE(near(swung * glm::normalize(aim), glm::normalize(direction)));
        EXPECT_TRUE(near(swung * axis, axis));
    }
}

TEST(TangentConstraint, FollowsTheTangentAtTheClosestPoint) {
    Random random(4);
    const Curve curve = clamped(3, {{-6, 0, 0}, {-4, 1, 0}, {-2, 0, 1}, {0, -1, 1}, {2, 0, 0}, {4, 1, -1}, {6, 0, 0}},
                                0, 4, random.placement(1.2f));
    for (int round = 0; round < 100; ++round) {
        // The parent is not rigid: the tangent goes through the inverse transpose, as the up direction does.
        const mat4 parentInverse = random.placement() * scaled({1, 1.5f, 0.7f});
        const mat3 toParent = glm::transpose(glm::inverse(mat3(parentInverse)));
        const vec3 up = random.vector(), place = worldPoint(curve, random.uniform(0.2f, 3.8f));
        const int order = random.order();
        const mat4 turn = eulerMatrix(tangentConstraint(parentInverse, order, transformPoint(parentInverse, place),
                                                        curve, {0, 2, 0}, kZ, 3, kIdentity, up),
                                      order);
        const vec3 tangent = glm::normalize(toParent * curve.dPdU(getClosetPointOnCurve(curve, place)));
        ASSERT_TRUE(near(vec3(turn[1]), tangent, 1e-3f));
        ASSERT_TRUE(near(sideOf(vec3(turn[2]), tangent), sideOf(toParent * up, tangent), 5e-3f));
    }
}

} // namespace
} // namespace zent::test
