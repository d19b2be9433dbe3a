#include "zent/nodes/ikRPsolver.h"

#include "nodes/rigTest.h"
#include "zent/nodes/ikSCsolver.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/worldMatrix.h"

namespace zent::test {
namespace {

/// Two bones of length 1 at a right angle in the plane of x and y, the end on the handle at (1, 1, 0).
struct Chain {
    vec3 handle{1, 1, 0}, end = kY, pole{0.0f};
    float twist = 0;
    mat4 handleParent{1.0f}, rootParent{1.0f};
    ChainList<vec3> orients{kZero, kZero}, rotates{kZero, kZero}, translates{kZero, kX};
    ChainList<int> orders{0, 0};
    ChainList<vec3> scales{kOne, kOne}, inverseScales{kOne, kOne};
    ChainList<bool> compensates{true, true};

    Chain() = default;
    explicit Chain(Random& random)
        : end(random.vector(0.5f, 2) * vec3(-1, 1, 1)), pole(random.vector()), twist(random.uniform(0, 3)),
          handleParent(random.placement()), rootParent(random.placement(random.uniform(0.5f, 2))) {
        for (std::size_t i = 0; i < 2; ++i) {
            orients[i] = random.angles();
            translates[i] = random.vector(0.5f, 2);
            orders[i] = random.order();
            scales[i] = random.vector(0.6f, 1.6f);
        }
        inverseScales = {vec3(random.uniform(0.6f, 1.6f)), scales[0]};
    }
    void cutToOneBone() {
        const auto cut = [](auto&... lists) { (lists.pop_back(), ...); };
        cut(orients, rotates, translates, orders, scales, inverseScales, compensates);
        rotates[0] = vec3(kNaN); // not read
    }
    void placeHandle(vec3 handle_world) { handle = transformPoint(glm::inverse(handleParent), handle_world); }
    ChainList<vec3> solve() const {
        return ikRPsolver(handleParent, handle, end, pole, twist, rootParent, orients, rotates, translates, orders,
                          scales, inverseScales, compensates);
    }
    /// A joint's world matrix with other rotates.
    mat4 world(std::size_t i, const ChainList<vec3>& turned) const {
        return worldMatrix(
            i == 0 ? rootParent : world(i - 1, turned),
            joint(translates[i], turned[i], scales[i], orders[i], orients[i], inverseScales[i], compensates[i]));
    }
    vec3 place(std::size_t i, const ChainList<vec3>& turned) const { return vec3(world(i, turned)[3]); }
    vec3 endPlace(const ChainList<vec3>& turned) const { return transformPoint(world(turned.size() - 1, turned), end); }
};

TEST(RotatePlane, EndsOnTheHandleOrItsLine) {
    Random random(5);
    for (int round = 0; round < 400; ++round) {
        Chain chain(random);
        const vec3 root = chain.place(0, chain.rotates), middle = chain.place(1, chain.rotates);
        const float upper = glm::distance(root, middle), lower = glm::distance(middle, chain.endPlace(chain.rotates));
        const float far = upper + lower, close = std::abs(upper - lower);
        const float distance = round % 3 == 0 ? far * 1.5f : glm::mix(close, far, random.uniform(0.05f, 0.95f));
        const vec3 line = glm::normalize(random.vector()) * distance;
        chain.placeHandle(root + line);
        const ChainList<vec3> solved = chain.solve();
        ASSERT_TRUE(near(chain.endPlace(solved), root + line * std::min(1.0f, far / distance), 1e-2f)) << round;
        if (distance < far) { // the elbow stands on the side of the pole, turned by the twist
            const vec3 pole = turned(line, chain.twist / kDegree) * chain.handleParent * vec4(chain.pole, 0);
            ASSERT_TRUE(near(sideOf(chain.place(1, solved) - root, line), sideOf(pole, line), 2e-2f)) << round;
        }
        chain.cutToOneBone();
        chain.placeHandle(root + line);
        ASSERT_TRUE(near(glm::normalize(chain.endPlace(chain.solve()) - root), glm::normalize(line), 1e-3f)) << round;
    }
}

// Where the elbow goes while the end stays on the handle: nothing but the pole and the twist turns the chain.
TEST(RotatePlane, TurnsTwoBonesToThePoleAndByTheTwist) {
    const float half = std::sqrt(0.5f);
    const std::tuple<const char*, vec3, float, vec3> rows[] = {
        {"no pole", kZero, 0, kX},
        {"a pole too short", {0, 0, 0.003f}, 0, kX},
        {"a pole on the elbow's side", {1, -1, 0}, 0, kX},
        {"a pole on z", {5, 5, 1}, 0, {0.5f, 0.5f, half}},
        {"a pole opposite", {-1, 1, 0}, 0, kY},
        {"a pole on the line", {2, 2, 0}, 0, kY},
        {"a pole on the elbow's side whose part off the line is short", {0.006f, 0.002f, 0}, 0, kY},
        {"a twist", kZero, 90, {0.5f, 0.5f, -half}},
        {"a negative twist is ignored", kZero, -90, kX},
    };
    Chain chain;
    for (const auto& [what, pole, twist, elbow] : rows) {
        chain.pole = pole;
        chain.twist = twist * kDegree;
        EXPECT_TRUE(near(chain.place(1, chain.solve()), elbow)) << what;
        EXPECT_TRUE(near(chain.endPlace(chain.solve()), {1, 1, 0})) << what;
    }
    // Stretched straight, the elbow is the side that it bent to before, (1, -1, 0): the root turns it to the pole.
    chain.handle = {3, 3, 0};
    chain.pole = kZ;
    EXPECT_TRUE(near(sideOf(transformVector(chain.world(0, chain.solve()), {1, -1, 0}), chain.handle), kZ));
    chain.end = kX; // straight at present: no plane to bend in
    EXPECT_TRUE(hasNaN(chain.solve()[0]));
}

// The turn stands left of the present rotate, in the frame that this rotate has turned already.
TEST(RotatePlane, TurnsTheJointsAsRotatedAtPresent) {
    Chain hinge; // all turns about z: the end reaches the handle
    hinge.rotates = {kZ * 0.7f, kZ * -0.4f};
    hinge.handle = {-0.5f, 1.2f, 0};
    EXPECT_TRUE(near(hinge.endPlace(hinge.solve()), hinge.handle));
    Chain chain; // at present a quarter turn about x; 60 degrees about the world's z is about y in that frame
    chain.rotates[0] = kX * 90.0f * kDegree;
    chain.end = -kZ;
    chain.handle = turned(kZ, 105) * vec4(std::sqrt(2.0f), 0, 0, 1);
    EXPECT_TRUE(near(chain.solve()[0], vec3(90, 60, 0) * kDegree)); // to reach the handle, y would come before x
    EXPECT_TRUE(near(chain.solve()[1], kZero));
}

TEST(RotatePlane, TurnsOneBoneToThePoleAndByTheTwist) {
    const auto solve = [](vec3 bone, vec3 pole, float twist) {
        const mat4 space = moved(kOne) * turned(kOne, 70); // of the root and the handle
        return ikRPsolver1Bone(space, bone * 2.0f, bone, pole, twist * kDegree, space, kZero, kZero, kZero, 0, kOne,
                               kOne, false);
    };
    const std::tuple<vec3, float, float> rows[] = {
        {kZero, 0, 0},     {kZero, -30, -30},   {kZero, 5e-4f, 5e-4f}, // unlike in two bones, any twist acts
        {{0, 0, 3}, 0, 0}, {{0, 3, 0}, 0, -90}, {{9, 0, -3}, 0, 180},  {{0, -3, 0}, 0, 90}, {{0, 3, 0}, 30, -60}};
    for (const auto& [pole, twist, x] : rows) {
        EXPECT_NEAR(std::remainder(solve(kX, pole, twist).x / kDegree - x, 360.0f), 0, 1e-4f) << x;
    }
    // The axis of the bone's smallest component goes to the pole's normal.
    const std::pair<vec3, vec3> references[] = {
        {{1, 2, 0.5f}, kZ}, {{-3, 0.5f, 0.5f}, kY}, {{1, 2, 3}, kX}, {kOne, kX}};
    for (const auto& [bone, axis] : references) {
        const vec3 pole(0.3f, -2, 1);
        EXPECT_TRUE(near(eulerToQuat(solve(bone, pole, 0), kRotateXYZ) * sideOf(axis, bone),
                         glm::normalize(glm::cross(pole, bone))));
    }
}

TEST(RotatePlane, RefusesListsOfUnequalLength) {
    Chain chain;
    chain.scales.pop_back();
    EXPECT_EQ(errorOf([&] { chain.solve(); }), "scales has 1 entries, jointOrients has 2");
    chain.orients.pop_back();
    EXPECT_EQ(errorOf([&] { chain.solve(); }), "rotates has 2 entries, jointOrients has 1");
    chain.orients.pop_back();
    EXPECT_EQ(errorOf([&] { chain.solve(); }), "jointOrients has 0 entries, ikRPsolver needs 1");
}

// Where the handle stands in the direction to which its own rotation turns the bone, the joint takes on that rotation.
TEST(SingleChain, FollowsTheHandlesRotation) {
    Random random(6);
    for (int round = 0; round < 300; ++round) {
        const mat4 handleParent = random.placement(), parent = random.placement();
        const vec3 end = random.vector(), turn = random.angles(), orient = random.angles(), translate = random.vector();
        const int handleOrder = random.order(), order = random.order();
        const mat4 handle = worldMatrix(handleParent, eulerMatrix(turn, handleOrder));
        const vec3 place = transformPoint(parent, translate) + transformVector(handle, end) * 1.7f;
        const vec3 rotate =
            ikSCsolver(handleParent, transformPoint(glm::inverse(handleParent), place), end, turn, handleOrder, parent,
                       {orient}, {translate}, {order}, {vec3(1.3f)}, {vec3(2.0f)}, {random.coin()});
        ASSERT_TRUE(near(worldMatrix(parent, joint(kZero, rotate, kOne, order, orient, kOne, false)), handle));
    }
    const auto solve = [](mat4 handleParent, vec3 handle_world, vec3 end, vec3 scale) {
        return ikSCsolver(handleParent, transformPoint(glm::inverse(handleParent), handle_world), end, kZero, 0,
                          kIdentity, {kZero}, {kZero}, {0}, {scale}, {kOne}, {true});
    };
    // The bone is aimed scaled, along (1, 3, 0), but twisted about the unscaled (1, 1, 0).
    const mat4 quarter = turned({1, 1, 0}, 90);
    EXPECT_TRUE(near(eulerMatrix(solve(quarter, {2, 6, 0}, {1, 1, 0}, {1, 3, 1}), 0), quarter));
    // A half turn across the bone has no twist part.
    EXPECT_EQ(solve(scaled({-1, 1, -1}), {2, 0, 0}, kX, kOne), kZero);
}

} // namespace
} // namespace zent::test
