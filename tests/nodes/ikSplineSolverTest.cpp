#include "zent/nodes/ikSplineSolver.h"

#include "nodes/rigTest.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/nearestPointOnCurve.h"
#include "zent/nodes/worldMatrix.h"

namespace zent::test {
namespace {

/// Joints along x on a straight curve.
struct Spline {
    Curve curve = clamped(3, {kZero, {10, 0, 0}, {20, 0, 0}, {30, 0, 0}});
    bool rootTwist = false, twistControl = false;
    int upType = 0;
    mat4 upMatrixStart{1.0f}, upMatrixEnd{1.0f}, rootParent{1.0f};
    float twist = 0;
    std::vector<vec3> bones, orients, scales, inverseScales; ///< the last bone is the end's translate
    std::vector<int> orders;
    std::vector<bool> compensates;

    explicit Spline(std::vector<vec3> bones_)
        : bones(std::move(bones_)), orients(bones.size(), kZero), scales(bones.size(), kOne), inverseScales(scales),
          orders(bones.size(), 0), compensates(bones.size(), false) {}

    SplineChain solve() const { // y is up at the start, z at the end
        return ikSplineSolver(curve, rootTwist, twistControl, 0, 0, upType, kY, kZ, upMatrixStart, upMatrixEnd, 99,
                              bones.back(), twist, rootParent, orients,
                              std::vector<vec3>(bones.begin(), bones.end() - 1), orders, scales, inverseScales,
                              compensates);
    }
    /// The world positions of the joints and of the chain's end, through the joints' own matrices.
    std::vector<vec3> places() const {
        const SplineChain chain = solve();
        std::vector<vec3> result;
        mat4 world = rootParent;
        vec3 translate = chain.rootTranslate;
        for (std::size_t i = 0; i < bones.size(); ++i) {
            world = worldMatrix(world, joint(translate, chain.rotates[i], scales[i], orders[i], orients[i],
                                             inverseScales[i], compensates[i]));
            result.emplace_back(world[3]);
            translate = bones[i];
        }
        result.push_back(transformPoint(world, bones.back()));
        return result;
    }
};

TEST(SplineIk, StandsOnTheCurveABoneLengthApartAndPastItsEndOnTheTangent) {
    Random random(7);
    for (int round = 0; round < 60; ++round) {
        Spline spline(std::vector<vec3>(8));
        spline.curve = clamped(3, {kZero, {2, 2, 0}, {4, -1, 2}, {6, 1, 1}, {8, 0, 0}, {10, 2, 1}, {12, 0, 0}}, 0, 4,
                               random.placement(1.2f));
        spline.rootParent = random.placement(random.uniform(0.5f, 2));
        spline.rootTwist = random.coin();
        spline.twist = random.uniform(-3, 3);
        float worldScale = glm::length(vec3(spline.rootParent[0]));
        for (std::size_t i = 0; i < 8; ++i) {
            spline.orients[i] = random.angles();
            spline.orders[i] = random.order();
            spline.scales[i] = vec3(i == 0 ? 1 : random.uniform(0.8f, 1.2f));
            spline.inverseScales[i] = vec3(random.uniform(0.8f, 1.2f));
            spline.compensates[i] = random.coin();
            worldScale *= spline.scales[i].x / (spline.compensates[i] ? spline.inverseScales[i].x : 1);
            spline.bones[i] = glm::normalize(random.vector()) * 2.3f / worldScale;
        }
        const std::vector<vec3> places = spline.places();
        const vec3 end = worldPoint(spline.curve, 4), tangent = glm::normalize(spline.curve.dPdU(4));
        ASSERT_TRUE(near(places[0], worldPoint(spline.curve, 0)));
        ASSERT_TRUE(near(glm::normalize(places[8] - places[7]), tangent, 1e-2f)); // longer than the curve
        for (std::size_t i = 0; i < 8; ++i) {
            ASSERT_NEAR(glm::distance(places[i], places[i + 1]), 2.3f, 5e-3f);
            float apart = glm::distance(places[i], end + std::max(0.0f, glm::dot(places[i] - end, tangent)) * tangent);
            for (int step = 0; step < 4000; ++step) {
                apart = std::min(apart,
                                 glm::distance(places[i], worldPoint(spline.curve, static_cast<float>(step) * 1e-3f)));
            }
            ASSERT_LT(apart, 2e-2f) << round << " " << i;
        }
    }
}

// Along a straight curve, all that turns the joints is the twist and the up direction: degrees about x, y up at first.
TEST(SplineIk, SpreadsTheTwistAndTheUpDirection) {
    const mat4 quarter = turned(kX, 90), object = moved({3, 2, 2});
    const std::tuple<bool, bool, int, float, float, mat4, mat4, vec3> rows[] = {
        {false, false, 6, 60, 2, object, object, {0, 30, 30}}, // from the second joint on
        {true, false, 6, -60, 2, object, object, {-20, -20, -20}},
        {true, false, 6, 60, 5e-6f, object, object, {20, 0, 20}}, // a short bone takes no twist
        {false, true, 6, 0, 2, quarter, quarter, {0, 45, 45}},    // from y to z, the matrices unread
        {false, true, 6, 60, 2, quarter, quarter, {0, 45, 45}},   // whatever the twist
        {false, true, 6, 0, 0, quarter, quarter, {0, 45, 45}},    // also after a short bone
        {false, true, 4, 0, 2, quarter, quarter, {90, 45, 45}},   // turned with their objects, from z to -y
        {false, true, 1, 0, 2, object, quarter, {45, 0, 0}},      // all joints towards the start object
        {false, true, 0, 0, 2, quarter, quarter, kZero},
        {false, true, 3, 0, 2, quarter, quarter, kZero},
        {false, true, 7, 0, 2, quarter, quarter, kZero},
    };
    for (const auto& [rootTwist, twistControl, upType, twist, middleBone, start, end, expected] : rows) {
        Spline spline({{2, 0, 0}, {middleBone, 0, 0}, {2, 0, 0}});
        spline.rootTwist = rootTwist;
        spline.twistControl = twistControl;
        spline.upType = upType;
        spline.twist = twist * kDegree;
        spline.upMatrixStart = start;
        spline.upMatrixEnd = end;
        const SplineChain chain = spline.solve();
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(near(chain.rotates[i], kX * expected[i] * kDegree, 1e-3f)) << upType << " " << i;
        }
    }
}

TEST(SplineIk, KeepsToItsOddities) {
    // Past the end a sphere crosses the line only behind the joint, at 8: the chain goes on all the same.
    Spline beyond({{10, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    beyond.curve = clamped(1, {kZero, {10, 0, 0}});
    EXPECT_TRUE(near(beyond.places()[3], {15, 0, 0}));
    // Bones opposite to the curve and across it; a single joint, which has no interval to blend over.
    EXPECT_TRUE(near(Spline({{-4, 0, 0}, {0, 0, 5}}).places()[2], {9, 0, 0}, 1e-3f));
    Spline single({{4, 0, 0}});
    single.twistControl = true;
    single.upType = 6;
    EXPECT_TRUE(near(single.places()[1], {4, 0, 0}));
    // The root stands at parameter 0, here the middle of the domain.
    Spline middle({kX});
    middle.curve = clamped(1, {kZero, {10, 0, 0}}, -1, 1);
    EXPECT_TRUE(near(middle.solve().rootTranslate, {5, 0, 0}));
    // The root's frame comes out scaled by 4, so that the second joint stands at x = 4, at the corner, with a bone
    // of 4.
    Spline twice({kX, kX});
    twice.curve = clamped(1, {kZero, {4, 0, 0}, {4, 10, 0}});
    twice.scales[0] = vec3(2.0f);
    EXPECT_TRUE(near(twice.solve().rotates[1], kZ * 90.0f * kDegree));

    const std::pair<vec3, vec3> axes[] = {{kX, kY},     {-kX, -kY},  {kY, kZero},  {-kY, kZ},     {kZ, -kZ},
                                          {-kZ, kZero}, {kZero, kX}, {kZero, -kX}, {kZero, kZero}};
    for (int i = 0; i < 9; ++i) {
        EXPECT_TRUE(ik__IMPL__forwardAxis(i) == axes[i].first && ik__IMPL__upAxis(i) == axes[i].second) << i;
    }
}

TEST(SplineIk, RefusesListsShorterThanTheChain) {
    Spline spline({kX, kX, kX});
    spline.scales.pop_back();
    EXPECT_EQ(errorOf([&] { spline.solve(); }), "scales has 2 entries, ikSplineSolver needs 3");
    spline.orients.assign(7, kZero);
    EXPECT_EQ(errorOf([&] { spline.solve(); }), "translates has 2 entries, ikSplineSolver needs 6");
    spline.orients.clear();
    EXPECT_EQ(errorOf([&] { spline.solve(); }), "jointOrients has 0 entries, ikSplineSolver needs 1");
    spline.curve = Curve();
    EXPECT_EQ(errorOf([&] { spline.solve(); }).substr(0, 5), "curve");
}

} // namespace
} // namespace zent::test
