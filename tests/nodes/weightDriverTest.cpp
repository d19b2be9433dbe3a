#include "zent/nodes/weightDriver.h"
#include "zent/math/rotation.h"
#include "zent/nodes/weightDriverDrivers.h"
#include "zent/nodes/weightDriverOutWeight.h"
#include "zent/nodes/weightDriverPoses.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace zent {
namespace {

constexpr float kPiFloat = 3.14159265f;

mat4 rotation(float xDegrees, float yDegrees, float zDegrees) {
    return eulerRotateMatrix(glm::radians(vec3(xDegrees, yDegrees, zDegrees)), kRotateXYZ);
}

TEST(WeightDriver, Helpers) {
    EXPECT_FLOAT_EQ(weightDriver__IMPL__rbf(3, 2), std::exp(-0.75f));
    EXPECT_FLOAT_EQ(weightDriver__IMPL__rbf(3, 0), std::exp(-3.0f));
    EXPECT_FLOAT_EQ(weightDriver__IMPL__atan2(1, 1), 0.25f * kPiFloat);
    EXPECT_FLOAT_EQ(weightDriver__IMPL__atan2(1, -1), -0.25f * kPiFloat);
    EXPECT_FLOAT_EQ(weightDriver__IMPL__atan2(1, 0), -0.5f * kPiFloat);    // the float is above the double pi / 2
    EXPECT_FLOAT_EQ(weightDriver__IMPL__atan2(-1, -1), -0.75f * kPiFloat); // no counterpart below
    const quat q(std::cos(0.4f), 0, std::sin(0.4f), 0);
    EXPECT_FLOAT_EQ(weightDriver__IMPL__twistAngle(q, 1), 0.8f);
    EXPECT_FLOAT_EQ(weightDriver__IMPL__twistAngle(q, 2), 0);
    EXPECT_FLOAT_EQ(weightDriver__IMPL__twistAngle(quat(0.6f, 0.8f, 0, 0), 7), 2 * std::atan2(0.8f, 0.6f));
}

struct Drivers {
    svec<mat4, 16> poses;
    svec<mat4, 16> parents;
    svec<int, 16> modes;
    mat4 driver{1.0f};
    mat4 reader{1.0f};
    vec3 offset{0.0f};
    int twistAxis = 0;
    bool invert = false;

    svec<float, 16> weights(int unread = 0) const {
        return weightDriverDrivers(unread, -unread, twistAxis, invert, driver, reader, poses, parents, modes, offset);
    }
};

TEST(WeightDriverDrivers, StandingAtAPoseGivesThatPose) {
    Drivers d;
    for (int i = 0; i < 5; ++i) {
        const float a = static_cast<float>(i);
        d.poses.push_back(rotation(10 + 25 * a, -40 + 30 * a, 15 * a * a - 50));
        d.parents.push_back(glm::translate(rotation(-70 * a, 20 + a, 33), vec3(a, 2, -3)));
        d.modes.push_back(0);
    }
    d.offset = vec3(0.3f, -1.1f, 2);
    for (int run = 0; run < 6; ++run) {
        d.twistAxis = run % 3;
        d.invert = run > 2;
        for (std::size_t i = 0; i < 5; ++i) {
            d.driver = d.poses[i];
            d.reader = glm::inverse(d.parents[i]);
            const svec<float, 16> weights = d.weights(run);
            for (std::size_t j = 0; j < 5; ++j) {
                EXPECT_NEAR(weights[j], i == j ? 1.0f : 0.0f, 1e-4f) << run << " " << i << " " << j;
            }
        }
    }
}

TEST(WeightDriverDrivers, OnePoseFallsOffWithTheDistance) {
    const struct {
        const char* what;
        Drivers d;
        float distance;
    } cases[] = {
        {"a quarter turn", {{mat4(1)}, {mat4(1)}, {0}, rotation(0, 0, 90)}, std::sqrt(2.0f)},
        {"twist", {{mat4(1)}, {mat4(1)}, {0}, rotation(90, 0, 0)}, 0.5f * kPiFloat},
        {"twist ignored", {{mat4(1)}, {mat4(1)}, {1}, rotation(90, 0, 0)}, 0},
        {"any other mode", {{mat4(1)}, {mat4(1)}, {-3}, rotation(90, 0, 0)}, 0.5f * kPiFloat},
        {"y axis", {{mat4(1)}, {mat4(1)}, {1}, rotation(0, 0, 90), mat4(1), vec3(0), 1}, std::sqrt(2.0f)},
        {"z axis", {{mat4(1)}, {mat4(1)}, {1}, rotation(0, 0, 90), mat4(1), vec3(0), 2}, 0},
        // The driver turns first, then the reader: x to x to y. The other way round it ends at z.
        {"reader", {{rotation(0, 0, 90)}, {mat4(1)}, {1}, rotation(90, 0, 0), rotation(0, 0, 90)}, 0},
        {"parent", {{rotation(90, 0, 0)}, {rotation(0, 0, -90)}, {1}, rotation(0, 0, 90)}, 0},
        // Twists of 110 and -90 degrees under the offset's inverse; 200 - 360 and 0 without, -70 and 90 under itself.
        {"offset",
         {{mat4(1)}, {mat4(1)}, {0}, rotation(200, 0, 0), mat4(1), vec3(kPiFloat / 2, 0, 0)},
         kPiFloat * 200 / 180},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.d.weights()[0], std::exp(-c.distance), 2e-6f) << c.what;
    }
}

TEST(WeightDriverDrivers, TwistCountsOnlyAgainstPosesThatUseIt) {
    // Directions x and y, twists ignored and 0: the distance is sqrt(2), its mean over four pairs half of that.
    const Drivers d{{mat4(1), rotation(0, 0, 90)}, {mat4(1), mat4(1)}, {1, 0}, rotation(60, 0, 0)};
    const float k = std::exp(-2 * std::sqrt(2.0f));
    const float toB = std::exp(-2 * std::sqrt(2 + kPiFloat * kPiFloat / 9));
    const svec<float, 16> weights = d.weights();
    EXPECT_NEAR(weights[0], (1 - k * toB) / (1 - k * k), 1e-6f);
    EXPECT_NEAR(weights[1], (toB - k) / (1 - k * k), 1e-6f);
}

TEST(WeightDriverDrivers, SingularKernelsAndBadLists) {
    Drivers d{{mat4(1), rotation(0, 90, 0), mat4(1)}, {mat4(1), mat4(1), mat4(1), mat4(0)}, {0, 0, 0, 0, 5}};
    EXPECT_EQ(d.weights(), (svec<float, 16>{0, 0, 0})); // two equal poses; lists longer than needed are fine
    d.modes.resize(2);
    EXPECT_THROW(d.weights(), std::runtime_error);
    d.modes.resize(3);
    d.parents.resize(2);
    EXPECT_THROW(d.weights(), std::runtime_error);
    d.poses.clear();
    EXPECT_TRUE(d.weights().empty());
}

TEST(WeightDriverOutWeight, FallsOffWithTheAngle) {
    const mat4 second = glm::translate(mat4(1), vec3(1, 2, 3)) * rotation(0, 0, 90) *
                        glm::scale(mat4(1), vec3(3, 1, 1)); // its x axis is y
    const auto at = [](vec3 offset) { return glm::translate(mat4(1), vec3(1, 2, 3) + offset); };
    EXPECT_NEAR(weightDriverOutWeight(at({2, 2, 0}), second, 90, false), 0.5f, 1e-6f);
    EXPECT_NEAR(weightDriverOutWeight(at({2, 2, 0}), second, 180, true), 0.25f, 1e-6f);
    EXPECT_NEAR(weightDriverOutWeight(at({5, 0, 0}), second, 120, true), 0.25f, 1e-6f);
    EXPECT_EQ(weightDriverOutWeight(at({2, -2, 0}), second, 90, false), 0.0f);
    EXPECT_EQ(weightDriverOutWeight(at({2, 2, 0}), second, -90, false), 1.0f);
    EXPECT_TRUE(std::isnan(weightDriverOutWeight(at({0, 0, 0}), second, 90, false)));
}

svec<float, 16> poses(svec<float, 16> input, PoseElements inputs, PoseElements values) {
    return weightDriverPoses(3, -1, input, inputs, values);
}

TEST(WeightDriverPoses, StandingAtAPoseGivesItsValues) {
    const PoseElements inputs{{{0, 0}, 1}, {{0, 1}, -2}, {{1, 0}, 0.5f}, {{3, 1}, 4}}; // pose 2 is a hole: zeros
    const PoseElements values{{{0, 0}, 1}, {{0, 3}, 7}, {{1, 2}, -5}, {{2, 1}, 3}, {{3, 0}, 2}};
    const float at[][2] = {{1, -2}, {0.5f, 0}, {0, 0}, {0, 4}};
    const float expected[][4] = {{1, 0, 0, 7}, {0, 0, -5, 0}, {0, 3, 0, 0}, {2, 0, 0, 0}};
    for (std::size_t i = 0; i < 4; ++i) {
        const svec<float, 16> result = poses({at[i][0], at[i][1]}, inputs, values);
        ASSERT_EQ(result.size(), 4u);
        for (std::size_t j = 0; j < 4; ++j) {
            EXPECT_NEAR(result[j], expected[i][j], 1e-4f) << i << " " << j;
        }
    }
}

TEST(WeightDriverPoses, InBetween) {
    // Poses at 0 and 1: the mean distance is 1/2, the kernel exp(-4 d).
    const svec<float, 16> two = poses({0.25f}, {{{1, 0}, 1}}, {{{0, 0}, 1}, {{1, 1}, 1}});
    const float k = std::exp(-4.0f);
    EXPECT_NEAR(two[0], (std::exp(-1.0f) - k * std::exp(-3.0f)) / (1 - k * k), 1e-6f);
    EXPECT_NEAR(two[1], (std::exp(-3.0f) - k * std::exp(-1.0f)) / (1 - k * k), 1e-6f);

    EXPECT_FLOAT_EQ(poses({3, 4}, {}, {{{0, 0}, 2}})[0], 2 * std::exp(-5.0f)); // one pose, at zero
    EXPECT_FLOAT_EQ(poses({}, {}, {{{0, 0}, 2}})[0], 2);
    EXPECT_TRUE(poses({1}, {}, {}).empty());
    // Equal poses are not tested for, unlike those of the drivers.
    for (const float value : poses({0.5f}, {{{0, 0}, 1}, {{1, 0}, 1}}, {{{0, 0}, 1}, {{1, 1}, 1}})) {
        EXPECT_FALSE(std::isfinite(value));
    }
}

TEST(WeightDriverPoses, BadKeysAreNamed) {
    const struct {
        PoseElements inputs, values;
        const char* message;
    } cases[] = {
        {{{{3, 2}, 1}}, {}, "pose inputs[3] is 2, the input has 2"},
        {{{{1, 0}, 1}}, {{{0, 2}, 1}}, "pose values[0] is 2, the list of poses has 2"},
        {{{{4000000000u, 0}, 1}}, {}, "pose inputs ask for a matrix of 4000000001 by 4000000001"},
        {{{{1, 0}, 1}}, {{{8192, 0}, 1}}, "pose values ask for a matrix of 8193 by 8193"},
    };
    for (const auto& c : cases) {
        try {
            poses({1, 2}, c.inputs, c.values);
            ADD_FAILURE() << c.message;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).rfind(c.message, 0), 0u) << error.what();
        }
    }
}

} // namespace
} // namespace zent
