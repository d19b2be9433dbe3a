#include "zent/nodes/angleBetween.h"
#include "zent/nodes/blendColors.h"
#include "zent/nodes/blendTwoAttr.h"
#include "zent/nodes/blendWeighted.h"
#include "zent/nodes/clamp.h"
#include "zent/nodes/condition.h"
#include "zent/nodes/distanceBetween.h"
#include "zent/nodes/inverseMatrix.h"
#include "zent/nodes/lerp.h"
#include "zent/nodes/multiplyDivide.h"
#include "zent/nodes/multMatrix.h"
#include "zent/nodes/plusMinusAverage.h"
#include "zent/nodes/reverse.h"
#include "zent/nodes/setRange.h"
#include "zent/nodes/unitConversion.h"
#include "zent/nodes/worldVisibility.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace zent {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

TEST(Utility, Blends) {
    const vec3 a(1.0f, 2.0f, 3.0f), b(5.0f, -2.0f, 3.0f);
    EXPECT_EQ(blendColors(a, b, 0.25f), vec3(4.0f, -1.0f, 3.0f)); // color1 at 1
    EXPECT_EQ(lerp(a, b, 0.25f), vec3(2.0f, 1.0f, 3.0f));         // b at 1
    EXPECT_EQ(lerp(a, b, -1.0f), vec3(-3.0f, 6.0f, 3.0f));
    EXPECT_EQ(blendTwoAttr({2.0f, 6.0f}, 1.5f), 8.0f);
    EXPECT_EQ(blendTwoAttr({2.0f}, 9.0f), 2.0f);
    EXPECT_EQ(errorOf([] { blendTwoAttr({}, 0.5f); }), "input has 0 entries, blendTwoAttr needs 1");
    EXPECT_EQ(blendWeighted({{0, 2.0f}, {3, 5.0f}}, {{0, -0.5f}, {1, 100.0f}}), 4.0f);
    EXPECT_EQ(blendWeighted({}, {{0, 1.0f}}), 0.0f);
    EXPECT_EQ(reverse(0.25f), 0.75f);
    EXPECT_EQ(unitConversion2D(vec2(1.0f, -2.0f), 3.0f), vec2(3.0f, -6.0f));
    EXPECT_EQ(unitConversion3D(a, 2.0f), vec3(2.0f, 4.0f, 6.0f));
    EXPECT_TRUE(worldVisibility(true, true));
    EXPECT_FALSE(worldVisibility(true, false));
}

TEST(Utility, ClampLetsTheUpperBoundWin) {
    EXPECT_EQ(clamp(5.0f, 0.0f, 1.0f), 1.0f);
    EXPECT_EQ(clamp(-5.0f, 0.0f, 1.0f), 0.0f);
    for (const float input : {-9.0f, 1.5f, 9.0f}) {
        EXPECT_EQ(clamp(input, 2.0f, 1.0f), 1.0f);
    }
    EXPECT_TRUE(std::isnan(clamp(kNaN, 0.0f, 1.0f)));
}

TEST(Utility, Condition) {
    struct Case {
        float first, second;
        const char* holds; // for op 0 to 6
    };
    for (const Case& c : {
             Case{1.0f, 1.0f, "1001010"},
             {2.0f, 1.0f, "0111000"},
             {1.0f, 2.0f, "0100110"},
             {0.0f, 9e-6f, "1000110"},
             {0.0f, 1.1e-5f, "0100110"},
             {0.0f, kThreshold, "0000110"}, // neither equal nor not equal
             {kThreshold, 0.0f, "0011000"},
             {kNaN, 0.0f, "0000110"},
         }) {
        for (int op = 0; op < 7; ++op) {
            const bool holds = c.holds[op] == '1';
            EXPECT_EQ(condition1D(c.first, c.second, 7.0f, 8.0f, op), holds ? 7.0f : 8.0f) << c.first << " op " << op;
            EXPECT_EQ(condition3D(c.first, c.second, vec3(7.0f), vec3(8.0f), op), vec3(holds ? 7.0f : 8.0f));
        }
        EXPECT_EQ(condition1D(c.first, c.second, 7.0f, 8.0f, -1), 8.0f);
    }
}

TEST(Utility, MultiplyDivide) {
    EXPECT_EQ(multiplyDivide3D(vec3(2.0f, 9.0f, 8.0f), vec3(3.0f, 0.5f, 2.0f), 3), vec3(8.0f, 3.0f, 64.0f));
    constexpr std::array<float, 5> kExpected = {6.0f, 24.0f, 1.5f, 1296.0f, 0.0f};
    for (int op = 0; op < 5; ++op) {
        EXPECT_EQ(multiplyDivide1D(6.0f, 4.0f, op), kExpected[static_cast<std::size_t>(op)]) << op;
    }
    EXPECT_EQ(multiplyDivide1D(6.0f, 4.0f, -1), 0.0f);
    EXPECT_EQ(multiplyDivide1D(-6.0f, 0.0f, 2), -kInfinity);
}

TEST(Utility, PlusMinusAverage) {
    constexpr std::array<float, 5> kExpected = {10.0f, 15.0f, 5.0f, 5.0f, 0.0f};
    for (int op = 0; op < 5; ++op) {
        const float expected = kExpected[static_cast<std::size_t>(op)];
        EXPECT_EQ(plusMinusAverage1D({10.0f, 2.0f, 3.0f}, op), expected) << op;
        EXPECT_EQ(plusMinusAverage2D({vec2(10.0f, 0.0f), vec2(2.0f, 0.0f), vec2(3.0f, 0.0f)}, op),
                  vec2(expected, 0.0f));
        EXPECT_EQ(plusMinusAverage3D({vec3(0.0f, 0.0f, 10.0f), vec3(0.0f, 0.0f, 5.0f), vec3(0.0f)}, op),
                  vec3(0.0f, 0.0f, expected));
    }
    EXPECT_EQ(plusMinusAverage1D({4.0f}, 2), 4.0f);
    EXPECT_EQ(plusMinusAverage1D({}, 1), 0.0f);
    EXPECT_EQ(plusMinusAverage1D({}, 4), 0.0f);
    EXPECT_TRUE(std::isnan(plusMinusAverage3D({}, 3).y));
    EXPECT_EQ(errorOf([] { plusMinusAverage1D({}, 0); }), "in has 0 entries, plusMinusAverage1D needs 1");
    EXPECT_EQ(errorOf([] { plusMinusAverage2D({}, 2); }), "in has 0 entries, plusMinusAverage2D needs 1");
}

TEST(Utility, SetRange) {
    struct Case {
        float value, oldMin, oldMax, min, max, expected;
    };
    for (const Case& c : {
             Case{3.0f, 2.0f, 6.0f, 10.0f, 50.0f, 20.0f},
             {1.0f, 2.0f, 6.0f, 10.0f, 50.0f, 10.0f},
             {7.0f, 2.0f, 6.0f, 10.0f, 50.0f, 50.0f},
             {3.0f, 2.0f, 6.0f, 50.0f, 10.0f, 40.0f},
             {3.0f, 2.0f, 2.0f, 10.0f, 50.0f, 0.0f},   // no old range: neither min nor max
             {3.0f, 0.0f, -9e-6f, 10.0f, 50.0f, 0.0f}, // by magnitude
             {3.0f, 6.0f, 2.0f, 10.0f, 50.0f, 10.0f},  // a reversed one has no inside
             {6.0f, 6.0f, 2.0f, 10.0f, 50.0f, 50.0f},
             {2e30f, 0.0f, 4e30f, 0.0f, 2e30f, kInfinity}, // multiplied before divided
         }) {
        EXPECT_EQ(setRange1D(c.value, c.oldMin, c.oldMax, c.min, c.max), c.expected) << c.value;
    }
    EXPECT_EQ(setRange3D(vec3(3.0f, 0.0f, 3.0f), vec3(2.0f), vec3(6.0f, 6.0f, 2.0f), vec3(10.0f), vec3(50.0f)),
              vec3(20.0f, 10.0f, 0.0f));
}

TEST(Utility, Distances) {
    EXPECT_EQ(distanceBetweenTwoPoints(vec3(1.0f, 2.0f, 3.0f), vec3(3.0f, 5.0f, 9.0f)), 7.0f);
    EXPECT_EQ(distanceDimShape(vec3(0.0f), vec3(0.0f, -4.0f, 3.0f)), 5.0f);
    EXPECT_EQ(distanceBetweenTwoPoints(vec3(0.0f), vec3(1e-20f, 0.0f, 0.0f)), 0.0f);
    mat4 a = glm::rotate(mat4(3.0f), 1.0f, vec3(1.0f, 2.0f, 3.0f)), b(0.0f);
    a[3] = vec4(1.0f, 2.0f, 3.0f, 1.0f);
    b[3] = vec4(3.0f, 5.0f, 9.0f, -8.0f);
    EXPECT_EQ(distanceBetweenTwoMatrices(a, b), 7.0f);
}

TEST(AngleBetween, AngleAndAxis) {
    const vec3 x(1.0f, 0.0f, 0.0f), y(0.0f, 1.0f, 0.0f), z(0.0f, 0.0f, 1.0f), tiny(9e-6f, 0.0f, 0.0f);
    constexpr float kHalfTurn = 3.14159274f;
    struct Case {
        vec3 a, b;
        float angle;
        vec3 axis;
    };
    for (const Case& c : {
             Case{x, y, kHalfTurn / 2.0f, z},
             {y, x, kHalfTurn / 2.0f, -z},
             {5.0f * z, x + z, kHalfTurn / 4.0f, y},
             {x, 3.0f * x, 0.0f, z},
             {vec3(5.0f, 4.0f, 0.0f), vec3(5.0f, 4.0f, 0.0f), 0.0f, z},
             {x, -x, kHalfTurn, y},            // across x: (-y, x, 0)
             {z, -2.0f * z, kHalfTurn, -y},    // across z: (0, -z, y)
             {x + z, -(x + z), kHalfTurn, -y}, // a tie is not strictly greater
             {vec3(3.0f, 4.0f, 0.0f), vec3(-3.0f, -4.0f, 0.0f), kHalfTurn, vec3(-0.8f, 0.6f, 0.0f)},
             {tiny, y, 0.0f, z},
             {y, tiny, 0.0f, z},
             {vec3(0.0f), x, 0.0f, z},
         }) {
        EXPECT_NEAR(angleBetween__COMPUTE__angle(c.a, c.b), c.angle, 1e-6f);
        const vec3 axis = angleBetween__COMPUTE__axis(c.a, c.b);
        EXPECT_LT(glm::distance(axis, c.axis), 1e-6f) << axis.x << " " << axis.y << " " << axis.z;
    }
}

TEST(AngleBetween, TheTurnMovesAToB) {
    std::mt19937 engine(4);
    std::uniform_real_distribution<float> uniform(-3.0f, 3.0f);
    const auto vector = [&] {
        const float x = uniform(engine), y = uniform(engine);
        return vec3(x, y, uniform(engine));
    };
    for (int round = 0; round < 2000; ++round) {
        const vec3 a = vector(), b = vector();
        const quat turn = glm::angleAxis(angleBetween__COMPUTE__angle(a, b), angleBetween__COMPUTE__axis(a, b));
        ASSERT_LT(glm::distance(turn * glm::normalize(a), glm::normalize(b)), 2e-3f);
    }
}

TEST(Matrices, ProductAndInverse) {
    const mat4 move = glm::translate(mat4(1.0f), vec3(1.0f, 0.0f, 0.0f));
    const mat4 turn = glm::rotate(mat4(1.0f), glm::radians(90.0f), vec3(0.0f, 0.0f, 1.0f));
    EXPECT_EQ(multMatrix({}), mat4(1.0f));
    EXPECT_EQ(multMatrix({move}), move);
    // The origin is moved first, then turned: the translation ends on y.
    EXPECT_LT(glm::distance(vec3(multMatrix({move, turn})[3]), vec3(0.0f, 1.0f, 0.0f)), 1e-6f);
    EXPECT_LT(glm::distance(vec3(multMatrix({turn, move})[3]), vec3(1.0f, 0.0f, 0.0f)), 1e-6f);
    EXPECT_LT(glm::distance(vec3(multMatrix({move, turn, move})[3]), vec3(1.0f, 1.0f, 0.0f)), 1e-6f);

    const mat4 both = multMatrix({move, turn});
    for (const auto inverse : {inverseMatrix, inverseLocal, inverseWorld}) {
        const mat4 unit = multMatrix({both, inverse(both)});
        for (int i = 0; i < 4; ++i) {
            EXPECT_LT(glm::distance(unit[i], mat4(1.0f)[i]), 1e-6f);
        }
    }
    EXPECT_FALSE(std::isfinite(inverseMatrix(mat4(0.0f))[0][0]));
}

} // namespace
} // namespace zent
