#include "zent/nodes/weightDriver.h"
#include "zent/math/rotation.h"
#include "zent/nodes/weightDriverDrivers.h"
#include "zent/nodes/weightDriverOutWeight.h"
#include "zent/nodes/weightDriverPoses.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <stdexcept>

namespace zent {
namespace {

const float kHalfTurn = static_cast<float>(kPi);

mat4 turn(float x, float y, float z) {
    return eulerRotateMatrix(glm::radians(vec3(x, y, z)), kRotateXYZ);
}

TEST(WeightDriver, TwistWrapsAboveAQuarterTurnOnly) {
    const float cases[][3] = {
        {1, 1, 45}, {1, -1, -45}, {1, 0, -90}, {-1, -1, -135}}; // the float pi / 2 is above pi / 2
    for (const auto& [y, x, degrees] : cases) {
        EXPECT_FLOAT_EQ(weightDriver__IMPL__atan2(y, x), glm::radians(degrees));
    }
    EXPECT_FLOAT_EQ(weightDriver__IMPL__twistAngle(quat(1, 3, 1, 2), 1), glm::radians(90.0f));
    EXPECT_FLOAT_EQ(weightDriver__IMPL__twistAngle(quat(1, 3, 2, 1), 2), glm::radians(90.0f));
    EXPECT_FLOAT_EQ(weightDriver__IMPL__rbf(3, 2), std::exp(-0.75f));
}

struct Drivers {
    svec<mat4, 16> poses, parents;
    svec<int, 16> modes;
    mat4 driver{1.0f}, reader{1.0f};
    vec3 offset{0.0f};
    int twistAxis = 0;
    bool invert = false;

    svec<float, 16> weights() const {
        return weightDriverDrivers(3, -1, twistAxis, invert, driver, reader, poses, parents, modes, offset);
    }
};

TEST(WeightDriverDrivers, StandingAtAPoseGivesThatPose) {
    Drivers d;
    d.offset = vec3(0.3f, -1.1f, 2);
    for (int i = 0; i < 5; ++i) {
        const float a = static_cast<float>(i);
        d.poses.push_back(turn(10 + 25 * a, -40 + 30 * a, 15 * a * a - 50));
        d.parents.push_back(glm::translate(turn(-70 * a, 20 + a, 33), vec3(a, 2, -3)));
        d.modes.push_back(0);
    }
    for (std::size_t i = 0; i < 5; ++i) {
        d.twistAxis = static_cast<int>(i) % 3;
        d.invert = i > 2;
        d.driver = d.poses[i];
        d.reader = glm::inverse(d.parents[i]);
        for (std::size_t j = 0; j < 5; ++j) {
            EXPECT_NEAR(d.weights()[j], i == j ? 1.0f : 0.0f, 1e-4f) << i << " " << j;
        }
    }
}

TEST(WeightDriverDrivers, OnePoseFallsOffWithTheDistance) {
    const struct {
        Drivers d;
        float distance;
    } cases[] = {
        {{{turn(0, 0, 0)}, {mat4(1)}, {1}, turn(0, 0, 90)}, std::sqrt(2.0f)},
        {{{turn(0, 0, 0)}, {mat4(1)}, {1}, turn(0, 0, 90), mat4(1), vec3(0), 2}, 0}, // about the axis itself
        {{{turn(90, 0, 0)}, {mat4(1)}, {-3}, turn(0, 0, 0)}, 0.5f * kHalfTurn},      // twist alone
        {{{turn(0, 0, 0)}, {mat4(1)}, {1}, turn(90, 0, 0)}, 0},                      // a mode that ignores it
        // The driver turns first, then the reader: x to x to y. The other way round it ends at z.
        {{{turn(0, 0, 90)}, {mat4(1)}, {1}, turn(90, 0, 0), turn(0, 0, 90)}, 0},
        {{{turn(90, 0, 0)}, {turn(0, 0, -90)}, {1}, turn(0, 0, 90)}, 0},
        // The offset turns after the rest: both axes end at -y.
        {{{turn(0, 0, 0)}, {mat4(1)}, {0}, turn(60, 0, 0), mat4(1), vec3(0, 0, kHalfTurn / 2)}, kHalfTurn / 3},
        // Twists of 110 and -90 degrees under the offset's inverse; -160 and 0 without, -70 and 90 under itself.
        {{{turn(0, 0, 0)}, {mat4(1)}, {0}, turn(200, 0, 0), mat4(1), vec3(kHalfTurn / 2, 0, 0)}, kHalfTurn * 10 / 9},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.d.weights()[0], std::exp(-c.distance), 2e-6f) << &c - cases;
    }
}

TEST(WeightDriverDrivers, SeveralPoses) {
    // Directions x and y, twist ignored by the first: sqrt(2) apart, half of that in the mean over four pairs.
    Drivers d{{turn(0, 0, 0), turn(0, 0, 90)}, {mat4(1), mat4(1), mat4(0)}, {1, 0, 9}, turn(60, 0, 0)};
    const float k = std::exp(-2 * std::sqrt(2.0f));
    const float toSecond = std::exp(-2 * std::sqrt(2 + kHalfTurn * kHalfTurn / 9));
    EXPECT_NEAR(d.weights()[0], (1 - k * toSecond) / (1 - k * k), 1e-6f);
    EXPECT_NEAR(d.weights()[1], (toSecond - k) / (1 - k * k), 1e-6f);

    d.poses = {turn(0, 90, 0), turn(0, 90, 0)};
    EXPECT_EQ(d.weights(), (svec<float, 16>{0, 0})); // equal poses
    d.poses.push_back(mat4(1));
    d.parents.resize(2);
    EXPECT_THROW(d.weights(), std::runtime_error);
    d.parents.resize(3);
    d.modes.resize(2);
    EXPECT_THROW(d.weights(), std::runtime_error);
    EXPECT_TRUE(Drivers{}.weights().empty());
}

TEST(WeightDriverOutWeight, FallsOffWithTheAngle) {
    const mat4 second = glm::translate(mat4(1), vec3(1, 2, 3)) * turn(0, 0, 90) * glm::scale(mat4(1), vec3(3, 1, 1));
    const float cases[][6] = {// offset, limit, invert, expected; the x axis of the second points along y
                              {2, 2, 0, 90, 0, 0.5f},
                              {2, 2, 0, 180, 1, 0.25f},
                              {2, -2, 0, 90, 0, 0},
                              {2, 2, 0, -9, 0, 1}};
    for (const auto& [x, y, z, limit, invert, expected] : cases) {
        const mat4 first = glm::translate(mat4(1), vec3(1 + x, 2 + y, 3 + z));
        EXPECT_NEAR(weightDriverOutWeight(first, second, limit, invert > 0), expected, 1e-6f);
    }
    EXPECT_TRUE(std::isnan(weightDriverOutWeight(second, second, 90, false)));
}

TEST(WeightDriverPoses, Interpolates) {
    const PoseElements inputs{{{0, 0}, 1}, {{0, 1}, -2}, {{1, 0}, 0.5f}, {{3, 1}, 4}}; // pose 2 is a hole: zeros
    const PoseElements values{{{0, 0}, 1}, {{0, 3}, 7}, {{1, 2}, -5}, {{2, 1}, 3}, {{3, 0}, 2}};
    const float at[][2] = {{1, -2}, {0.5f, 0}, {0, 0}, {0, 4}};
    const float expected[][4] = {{1, 0, 0, 7}, {0, 0, -5, 0}, {0, 3, 0, 0}, {2, 0, 0, 0}};
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_NEAR(weightDriverPoses(3, -1, {at[i / 4][0], at[i / 4][1]}, inputs, values).at(i % 4),
                    expected[i / 4][i % 4], 1e-4f);
    }
    // Poses at 0 and 1: the mean distance is 1/2, the kernel exp(-4 d).
    const PoseElements identity{{{0, 0}, 1}, {{1, 1}, 1}};
    const svec<float, 16> two = weightDriverPoses(0, 0, {0.25f}, {{{1, 0}, 1}}, identity);
    const float k = std::exp(-4.0f);
    EXPECT_NEAR(two[0], (std::exp(-1.0f) - k * std::exp(-3.0f)) / (1 - k * k), 1e-6f);
    EXPECT_NEAR(two[1], (std::exp(-3.0f) - k * std::exp(-1.0f)) / (1 - k * k), 1e-6f);
    EXPECT_FLOAT_EQ(weightDriverPoses(0, 0, {}, {}, {{{0, 0}, 2}})[0], 2);
    EXPECT_TRUE(weightDriverPoses(0, 0, {1}, {}, {}).empty());
    // Equal poses are not tested for, unlike those of the drivers.
    EXPECT_FALSE(std::isfinite(weightDriverPoses(0, 0, {0.5f}, {{{0, 0}, 1}, {{1, 0}, 1}}, identity)[0]));
}

TEST(WeightDriverPoses, BadKeysAreNamed) {
    const struct {
        PoseElements inputs, values;
        const char* message;
    } cases[] = {{{{{3, 2}, 1}}, {}, "pose inputs[3] is 2, the input has 2"},
                 {{{{1, 0}, 1}}, {{{0, 2}, 1}}, "pose values[0] is 2, the list of poses has 2"},
                 {{{{4000000000u, 0}, 1}}, {}, "pose inputs ask for a matrix of 4000000001 by 4000000001"},
                 {{{{1, 0}, 1}}, {{{2048, 0}, 1}}, "pose values ask for a matrix of 2049 by 2049"}};
    for (const auto& c : cases) {
        try {
            weightDriverPoses(0, 0, {1, 2}, c.inputs, c.values);
            ADD_FAILURE() << c.message;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).rfind(c.message, 0), 0u) << error.what();
        }
    }
}

// Three matrices and numbers a pose: as many poses as the manifest lists, but no more memory than it stands for.
TEST(WeightDriverPoses, MatricesGoByWhatIsGiven) {
    EXPECT_NO_THROW(requireWeightDriverSize("poses", 3000, 3000, 9000));
    EXPECT_THROW(requireWeightDriverSize("poses", 3000, 3000, 4), std::runtime_error);
    EXPECT_THROW(requireWeightDriverSize("poses", 50000, 50000, 150000), std::runtime_error);
}

} // namespace
} // namespace zent
