#include "zent/nodes/orientConstraint.h"

#include "nodes/rigTest.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/parentConstraint.h"
#include "zent/nodes/worldMatrix.h"

namespace zent::test {
namespace {

// By matrices in row order: the constrained joint stands in the world as the offset inside the target does.
TEST(RotationConstraints, FollowOneTarget) {
    Random random(1);
    const auto inJoint = [](const mat4& parent, vec3 rotate, int order, vec3 orient) {
        return worldMatrix(parent, joint(kZero, rotate, kOne, order, orient, kOne, false));
    };
    for (int round = 0; round < 500; ++round) {
        const mat4 parent = random.placement(1.4f), parentInverse = glm::inverse(parent),
                   target = random.placement(1.4f);
        const int order = random.order(), targetOrder = random.order();
        const vec3 orient = random.angles(), targetOrient = random.angles(), rotate = random.angles(),
                   offset = random.angles();
        const TargetList<float> weight{random.uniform(0.01f, 3)};
        const mat4 expected =
            worldMatrix(inJoint(target, rotate, targetOrder, targetOrient), eulerMatrix(offset, order));
        const vec3 oriented = orientConstraint(parentInverse, order, orient, offset, round % 3, weight, kZero, {target},
                                               {rotate}, {targetOrder}, {targetOrient});
        const vec3 followed = parentConstraintRotate(parentInverse, order, orient, round % 4, weight, kZero, {target},
                                                     {rotate}, {offset}, {targetOrder}, {targetOrient});
        ASSERT_TRUE(near(inJoint(parent, oriented, order, orient), expected)) << round;
        ASSERT_TRUE(near(inJoint(parent, followed, order, orient), expected)) << round;
    }
}

// Targets turned about z, degrees. The orient constraint has an offset of 7 degrees.
TEST(RotationConstraints, BlendTheirTargets) {
    const std::tuple<int, TargetList<float>, TargetList<float>, float, float> rows[] = {
        {1, {}, {}, 45, 45}, // at rest, without the offset
        {1, {0.5f, -0.5f}, {10, 20}, 45, 45},
        {0, {1, 1}, {0, 60}, 37, 30},
        {1, {3, 3}, {0, 60}, 37, 30},
        {1, {1, 1}, {0, 190}, -78, -85},                         // the second is negated: it lies the other way round
        {1, {1, 1}, {170, -150}, 17, 10},                        // by the sign of w alone, not of the dot product
        {2, {1, 1}, {170, -150}, -163, -170},                    // each step takes the shorter way
        {2, {1, 1, 1}, {0, 30, 90}, 7 + 110.0f / 3, 110.0f / 3}, // a third of the way to 30, then a third to 90
        {2, {0, 1}, {20, 50}, 57, 50},
        {2, {0, 1, 1}, {0, 30, 90}, 59.5f, 52.5f}, // the first stands in the result without any weight
        {2, {1, -0.5f}, {20, 50}, 27, 20},
        {3, {1, 1}, {20, 50}, 7, 0}, // no such blend
        // One target alone is followed whatever the blend; which whole turn the angle is told in is the reference's.
        {3, {1}, {370}, 7, 10},
        {1, {1, 1}, {370, 370}, 17, 10},
        {1, {1, 0}, {370, -350}, 17, 370}, // one is weak: close to the first one's rotate, not to its own
        {1, {1e4f, 0.05f}, {370, 370}, 17, 10},
        {2, {1e4f, 0.05f}, {370, 370}, 17, 370}, // weak once the weights are normalised
    };
    const vec3 rest = kZ * 45.0f * kDegree;
    for (const auto& [interpType, weights, angles, expectedOriented, expectedFollowed] : rows) {
        const std::size_t count = weights.size();
        TargetList<vec3> rotates;
        for (const float angle : angles) {
            rotates.push_back(kZ * angle * kDegree);
        }
        const TargetList<mat4> parents(count, kIdentity);
        const TargetList<vec3> zeros(count, kZero);
        const TargetList<int> orders(count, 0);
        const vec3 oriented = orientConstraint(kIdentity, 0, kZero, kZ * 7.0f * kDegree, interpType, weights, rest,
                                               parents, rotates, orders, zeros);
        const vec3 followed = parentConstraintRotate(kIdentity, 0, kZero, interpType, weights, rest, parents, rotates,
                                                     zeros, orders, zeros);
        EXPECT_TRUE(near(oriented, kZ * expectedOriented * kDegree, 1e-3f));
        EXPECT_TRUE(near(followed, kZ * expectedFollowed * kDegree, 1e-3f));
    }
    const TargetList<mat4> parents{kIdentity};
    EXPECT_EQ(errorOf([&] { orientConstraint(kIdentity, 0, rest, rest, 1, {1}, rest, parents, {rest}, {}, {rest}); }),
              "targetRotateOrders has 0 entries, orientConstraint needs 1");
    EXPECT_EQ(
        errorOf([&] { parentConstraintRotate(kIdentity, 0, rest, 1, {1}, rest, parents, {rest}, {}, {0}, {rest}); }),
        "targetOffsetRotates has 0 entries, parentConstraintRotate needs 1");
}

// A point goes through the target's channels one after the other.
TEST(ParentConstraintTranslate, FollowsAPointOfTheTarget) {
    Random random(2);
    for (int round = 0; round < 500; ++round) {
        const mat4 parentInverse = random.placement(1.5f), targetParent = random.placement(0.7f);
        const vec3 a = random.vector(), b = random.vector(), offset = random.vector(), rotate = random.angles(),
                   orient = random.angles(), pivot = random.vector(), pivotTranslate = random.vector(),
                   scale = random.vector(0.5f, 2), inverseScale = random.vector(0.5f, 2);
        const int order = random.order();
        const bool compensate = random.coin();
        const vec3 parentScale = compensate ? inverseScale : kOne;

        vec3 p = eulerToQuat(rotate, static_cast<RotateOrder>(order)) * (offset * scale);
        p = (eulerToQuat(orient, kRotateXYZ) * p) / parentScale + a + b;
        p /= parentScale; // once more, for the whole point
        p = transformPoint(parentInverse, transformPoint(targetParent, p)) - pivot - pivotTranslate;
        ASSERT_TRUE(near(parentConstraintTranslate(parentInverse, pivot, pivotTranslate, targetParent, a, offset, b,
                                                   rotate, order, scale, inverseScale, compensate, orient),
                         p));
    }
}

} // namespace
} // namespace zent::test
