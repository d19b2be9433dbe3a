#include "zent/math/rotation.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace zent {
namespace {

constexpr float kPiFloat = 3.14159274f; // the nearest float, above the double pi
constexpr std::array<const char*, 6> kLetters = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

float degrees(float angle) {
    return glm::radians(angle);
}

template <class Matrix>
float largestDifference(Matrix const& a, Matrix const& b) {
    float largest = 0.0f;
    for (int i = 0; i < Matrix::length(); ++i) {
        for (int j = 0; j < Matrix::length(); ++j) {
            largest = std::max(largest, std::abs(a[i][j] - b[i][j]));
        }
    }
    return largest;
}

void expectNear(vec3 actual, vec3 expected, float tolerance) {
    EXPECT_LT(glm::distance(actual, expected), tolerance)
        << actual.x << " " << actual.y << " " << actual.z << " against " << expected.x << " " << expected.y << " "
        << expected.z;
}

void expectNear(quat actual, quat expected, float tolerance) {
    EXPECT_LT(glm::length(actual - expected), tolerance)
        << actual.x << " " << actual.y << " " << actual.z << " " << actual.w;
}

/// glm rotates column vectors, so its matrices in its own storage are Maya's for row vectors.
mat4 axisMatrix(int axis, float angle) {
    vec3 direction(0.0f);
    direction[axis] = 1.0f;
    return glm::rotate(mat4(1.0f), angle, direction);
}

float absoluteSum(vec3 a) {
    return std::abs(a.x) + std::abs(a.y) + std::abs(a.z);
}

class Random {
public:
    explicit Random(unsigned int seed) : engine_(seed) {}
    float uniform(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(engine_); }
    vec3 vector(float lo, float hi) {
        const float x = uniform(lo, hi), y = uniform(lo, hi);
        return {x, y, uniform(lo, hi)};
    }
    RotateOrder order() { return static_cast<RotateOrder>(engine_() % 6); }

private:
    std::mt19937 engine_;
};

TEST(Rotation, AxesActInTheOrderOfTheLetters) {
    Random random(1);
    for (int round = 0; round < 600; ++round) {
        const auto order = static_cast<RotateOrder>(round % 6);
        const vec3 angles = random.vector(-7.0f, 7.0f);
        mat4 expected(1.0f);
        for (const char* letter = kLetters[static_cast<std::size_t>(order)]; *letter != '\0'; ++letter) {
            expected = axisMatrix(*letter - 'x', angles[*letter - 'x']) * expected; // the later factor on the right
        }
        ASSERT_LT(largestDifference(eulerRotateMatrix(angles, order), expected), 2e-6f) << "order " << order;
    }
}

// A million rotations by two routes, back again, and the choice among the solutions.
TEST(Rotation, MatricesQuaternionsAndAnglesAgree) {
    Random random(2);
    float routes = 0.0f, rebuilt = 0.0f, recovered = 0.0f;
    int notSmallest = 0, unwrapped = 0;
    for (int round = 0; round < 1000000; ++round) {
        const RotateOrder order = random.order();
        const vec3 angles = random.vector(-10.0f, 10.0f);
        const mat4 matrix = eulerRotateMatrix(angles, order);
        const quat q = eulerToQuat(angles, order);
        routes = std::max(routes, largestDifference(matrix, glm::mat4_cast(q)));
        if (round % 2 == 0) {
            const auto [regular, first, second] = get_both_euler(matrix, order);
            if (regular) {
                rebuilt = std::max({rebuilt, largestDifference(matrix, eulerRotateMatrix(first, order)),
                                    largestDifference(matrix, eulerRotateMatrix(second, order))});
                const float chosen = absoluteSum(eulerAngles(q, order));
                notSmallest += chosen > std::min(absoluteSum(first), absoluteSum(second)) + 0.01f;
            }
        } else {
            // Seen from the angles themselves, the closest solution is the angles.
            const int middle = kLetters[static_cast<std::size_t>(order)][1] - 'x';
            const float c = std::abs(std::cos(angles[middle]));
            const vec3 closest = eulerAngles(q, order, angles);
            if (c > 0.01f) {
                recovered = std::max(recovered, c * glm::distance(closest, angles));
            }
            unwrapped += glm::any(glm::greaterThan(glm::abs(closest - angles), vec3(kPiFloat + 1e-5f)));
        }
    }
    EXPECT_LT(routes, 3e-6f);
    EXPECT_LT(rebuilt, 2e-4f); // just beside gimbal lock the outer angles carry a float's error over 0.003
    EXPECT_LT(recovered, 1e-5f);
    EXPECT_EQ(notSmallest, 0);
    EXPECT_EQ(unwrapped, 0);
}

TEST(Rotation, AnOrderOutOfRangeGivesZeros) {
    for (const int number : {6, 7, -1, 1000000}) {
        const auto order = static_cast<RotateOrder>(number);
        EXPECT_EQ(eulerRotateMatrix(vec3(1.0f), order), mat4(0.0f));
        EXPECT_EQ(eulerToQuat(vec3(1.0f), order), quat(0.0f, 0.0f, 0.0f, 0.0f));
        EXPECT_EQ(get_both_euler(mat4(1.0f), order), std::make_tuple(false, vec3(0.0f), vec3(0.0f)));
        EXPECT_EQ(composeMatrix(vec3(5.0f), vec3(1.0f), number, vec3(2.0f)), mat4(0.0f));
    }
}

TEST(Rotation, GimbalLockLeavesTheLastAngleZero) {
    const float lock = degrees(90.0f);
    for (int order = 0; order < 6; ++order) {
        const char* letters = kLetters[static_cast<std::size_t>(order)];
        const int first = letters[0] - 'x', middle = letters[1] - 'x', last = letters[2] - 'x';
        vec3 angles(0.0f);
        angles[first] = 0.4f;
        angles[middle] = lock;
        angles[last] = 0.3f;
        const mat4 matrix = eulerRotateMatrix(angles, static_cast<RotateOrder>(order));
        const auto [regular, primary, alternative] = get_both_euler(mat3(matrix), static_cast<RotateOrder>(order));
        EXPECT_FALSE(regular) << letters;
        EXPECT_EQ(primary[last], 0.0f) << letters;
        EXPECT_EQ(alternative, vec3(0.0f)) << letters;
        EXPECT_LT(largestDifference(eulerRotateMatrix(primary, static_cast<RotateOrder>(order)), matrix), 1e-6f)
            << letters;
    }
}

// The squared length, not the length, is held against 1e-5, and just at it zyx differs from the others.
TEST(Rotation, OnlyZyxIsRegularAtTheGimbalThreshold) {
    constexpr std::array<std::array<int, 4>, 6> kCells = {
        {{0, 0, 0, 1}, {1, 1, 1, 2}, {2, 0, 2, 2}, {0, 0, 0, 2}, {1, 0, 1, 1}, {2, 1, 2, 2}}};
    float below = std::sqrt(kThreshold);
    while (below * below >= kThreshold) {
        below = std::nextafter(below, 0.0f);
    }
    const float rest = std::sqrt(kThreshold - below * below);
    ASSERT_EQ(below * below + rest * rest, kThreshold);
    for (int order = 0; order < 6; ++order) {
        const auto [i, j, k, l] = kCells[static_cast<std::size_t>(order)];
        const auto isRegular = [&, i = i, j = j, k = k, l = l](float a, float b) {
            mat3 m(1.0f);
            m[i][j] = a;
            m[k][l] = b;
            return std::get<0>(get_both_euler(m, static_cast<RotateOrder>(order)));
        };
        EXPECT_EQ(isRegular(below, rest), order == kRotateZYX) << order;
        EXPECT_FALSE(isRegular(below, 0.0f)) << order;
        EXPECT_TRUE(isRegular(below, 2.0f * rest)) << order;
        EXPECT_FALSE(isRegular(kNaN, 1.0f)) << order;
    }
}

// The float nearest pi lies beyond the double pi: it turns back, where every other positive angle turns on.
TEST(Rotation, TheAlternativeIsFormedInDouble) {
    mat3 halfTurn(0.0f);
    halfTurn[0][0] = 1.0f;
    halfTurn[1][1] = halfTurn[2][2] = -1.0f;
    const auto [regular, primary, alternative] = get_both_euler(halfTurn, kRotateXYZ);
    EXPECT_TRUE(regular);
    EXPECT_EQ(primary.x, kPiFloat);
    EXPECT_NEAR(alternative.x, 8.742278e-8f, 1e-12f);
    EXPECT_EQ(alternative.y, kPiFloat);
    EXPECT_EQ(alternative.z, kPiFloat);
}

TEST(Rotation, TheSmallerSumWinsAndATieKeepsThePrimary) {
    for (int order = 0; order < 6; ++order) {
        EXPECT_EQ(eulerAngles(quat(1.0f, 0.0f, 0.0f, 0.0f), static_cast<RotateOrder>(order)), vec3(0.0f));
    }
    const auto there = [](float outer, float middle) { return vec3(degrees(outer), degrees(middle), degrees(outer)); };
    expectNear(eulerAngles(eulerToQuat(there(-170.0f, 10.0f), kRotateXYZ), kRotateXYZ), there(10.0f, 170.0f), 1e-5f);
    // The other solution of positive angles lies at 350 degrees, not at -10.
    expectNear(eulerAngles(eulerToQuat(there(170.0f, 10.0f), kRotateXYZ), kRotateXYZ), there(170.0f, 10.0f), 1e-5f);
    EXPECT_EQ(smallerEuler({true, vec3(1.0f, -2.0f, 3.0f), vec3(3.0f, 2.0f, 1.0f)}), vec3(1.0f, -2.0f, 3.0f));
    EXPECT_EQ(smallerEuler({false, vec3(9.0f), vec3(0.0f)}), vec3(9.0f)); // at gimbal lock zero is no solution
}

TEST(Rotation, TheClosestSolutionIsWrappedAtGimbalLockToo) {
    const quat locked = eulerToQuat(vec3(0.4f, degrees(90.0f), 0.0f), kRotateXYZ);
    const float turns = 3.0f * 2.0f * kPiFloat;
    expectNear(eulerAngles(locked, kRotateXYZ, vec3(0.5f + turns, 0.0f, -turns)),
               vec3(0.4f + turns, degrees(90.0f), -turns), 1e-3f);
}

TEST(Rotation, QuatToEulerNormalises) {
    expectNear(quatToEuler(vec4(0.0f, 0.0f, 30.0f * std::sin(0.2f), 30.0f * std::cos(0.2f))), vec3(0.0f, 0.0f, 0.4f),
               1e-6f);
    EXPECT_EQ(quatToEuler(vec4(0.0f)), vec3(0.0f));
    EXPECT_TRUE(std::isnan(quatToEuler(vec4(0.0f, kNaN, 0.0f, 1.0f)).x));
    EXPECT_EQ(quatToEuler(vec4(1e-20f, 0.0f, 0.0f, 0.0f)), vec3(0.0f)); // its square is below the smallest float
}

TEST(Rotation, ThresholdsAndTies) {
    const vec3 x(1.0f, 0.0f, 0.0f), y(0.0f, 1.0f, 0.0f), z(0.0f, 0.0f, 1.0f);
    const float bit = std::numeric_limits<float>::epsilon();
    struct Case {
        vec3 from, to;
        quat turn, unitTurn;
    };
    const float h = std::sqrt(0.5f), halfTurn = -4.371138828673793e-08f; // the cosine of the float next to pi / 2
    const Case cases[] = {
        {x, y, {h, z * h}, {h, z * h}},
        {x, -x, {0.0f, y}, {halfTurn, y}},
        {y, -y, {0.0f, z}, {halfTurn, -x}}, // x is not larger than z
        {z, -z, {0.0f, -y}, {halfTurn, -y}},
        {(x + z) * h, (x + z) * -h, {0.0f, -y}, {halfTurn, y}}, // a tie
        {x, {1.0f, 3e-4f, 0.0f}, {1.0f, z * 1.5e-4f}, {1.0f, 0.0f, 0.0f, 0.0f}},
        {x, {-1.0f, 3e-3f, 0.0f}, {1.5e-3f, z}, {halfTurn, y}},
        {x, {-1.0f + bit, 4e-3f, 0.0f}, {2e-3f, z}, {2.44e-4f, z * 8.19f}}, // beyond the threshold, and no unit vector
        {x, {kNaN, 0.0f, 0.0f}, quat(kNaN, kNaN, kNaN, kNaN), quat(kNaN, kNaN, kNaN, kNaN)},
        {vec3(0.0f), x, {1.0f, 0.0f, 0.0f, 0.0f}, {h, 0.0f, 0.0f, 0.0f}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        if (std::isnan(c.turn.w)) {
            EXPECT_TRUE(std::isnan(rotationBetween(c.from, c.to).w));
            EXPECT_TRUE(std::isnan(rotationBetweenUnits(c.from, c.to).w));
            EXPECT_TRUE(std::isnan(slerpStep(c.turn, c.turn, 0.5f).w));
            EXPECT_TRUE(std::isnan(normalizeOrIdentity(c.turn).w));
            EXPECT_TRUE(std::isnan(rotationAxis(c.turn).x) && std::isnan(rotationAngle(c.turn)));
        } else {
            expectNear(rotationBetween(c.from, c.to), c.turn, 5e-5f);
            expectNear(rotationBetweenUnits(c.from, c.to), c.unitTurn, 2e-2f);
        }
    }
    // A step between opposite quaternions of one rotation is none, and the linear one is not normalised.
    const quat a(1.0f, 0.0f, 0.0f, 0.0f);
    expectNear(slerpStep(a, -a, 0.25f), a, 1e-7f);
    expectNear(slerpStep(a, quat(1.0f, x), 0.5f), quat(1.0f, 0.5f * x), 1e-7f);
    expectNear(slerpStep(a, quat(0.0f, x), 0.5f), quat(h, h * x), 1e-6f);
}

TEST(Decompose, TakesApartWhatWasComposed) {
    Random random(3);
    for (int round = 0; round < 2000; ++round) {
        const vec3 scale = random.vector(0.3f, 3.0f) * vec3(1.0f, 1.0f, round % 2 == 0 ? 1.0f : -1.0f);
        const vec3 shear = random.vector(-2.0f, 2.0f), angles = random.vector(-4.0f, 4.0f);
        const mat4 rotation = eulerRotateMatrix(angles, random.order());
        mat4 sheared(1.0f);
        sheared[1].x = shear.x;
        sheared[2].x = shear.y;
        sheared[2].y = shear.z;
        mat4 matrix = rotation * sheared; // rows scaled, sheared, then rotated
        for (int i = 0; i < 3; ++i) {
            matrix[i] *= scale[i];
        }
        matrix[3] = vec4(7.0f, 8.0f, 9.0f, 1.0f);

        const float sign = scale.z < 0.0f ? -1.0f : 1.0f; // of the shear's last two: divided by the positive length
        expectNear(decomposeMatrixScale(matrix), scale, 1e-4f);
        expectNear(decomposeMatrixShear(matrix), shear * vec3(1.0f, sign, sign), 1e-4f);
        EXPECT_EQ(decomposeMatrixTranslate(matrix), vec3(7.0f, 8.0f, 9.0f));
        if (sign > 0.0f) {
            ASSERT_LT(largestDifference(glm::mat4_cast(decomposeMatrixQuat(matrix)), rotation), 1e-4f);
        }
    }
}

TEST(Decompose, ASmallDeterminantCountsAsMirrored) {
    const auto uniform = [](float scale, float corner) {
        mat4 m = glm::scale(mat4(1.0f), vec3(scale));
        m[3].w = corner;
        return m;
    };
    struct Case {
        float scale, corner;
        bool mirrored;
    };
    for (const Case& c :
         {Case{0.05f, 1.0f, true}, {0.2f, 1.0f, false}, {1.0f, 0.0001f, true}, {0.05f, 100.0f, false}}) {
        const mat4 m = uniform(c.scale, c.corner);
        expectNear(decomposeMatrixScale(m), c.scale * vec3(1.0f, 1.0f, c.mirrored ? -1.0f : 1.0f), 1e-6f);
        // The quaternion of minus the identity is a half turn about x by its largest term, of length sqrt(1/2).
        expectNear(get_orient(m), c.mirrored ? quat(0.0f, std::sqrt(0.5f), 0.0f, 0.0f) : quat(1.0f, 0.0f, 0.0f, 0.0f),
                   1e-6f);
    }
}

TEST(Decompose, AngleReadsTheScaleAndZeroRowsAreNotRepaired) {
    mat4 matrix = axisMatrix(0, degrees(45.0f));
    matrix[1] *= 2.0f;
    expectNear(decomposeMatrixRotate(matrix), vec3(std::atan(2.0f), 0.0f, 0.0f), 1e-6f);
    expectNear(decomposeMatrixQuat(matrix), eulerToQuat(vec3(degrees(45.0f), 0.0f, 0.0f), kRotateXYZ), 1e-6f);

    matrix[1] = vec4(0.0f);
    EXPECT_EQ(decomposeMatrixScale(matrix).y, 0.0f);
    EXPECT_TRUE(std::isnan(decomposeMatrixShear(matrix).x));
    EXPECT_TRUE(std::isnan(get_orient(matrix).w));
}

TEST(CoreSlerp, SpinAndShortestWay) {
    const float h = std::sqrt(0.75f);
    const quat a(1.0f, 0.0f, 0.0f, 0.0f), b(0.5f, 0.0f, 0.0f, h); // 60 degrees apart, a turn of 120 about z
    struct Case {
        const char* what;
        quat b;
        float t;
        int spin;
        bool flip;
        quat expected;
    };
    const quat middle(h, 0.0f, 0.0f, 0.5f), oneSpin(-0.5f, 0.0f, 0.0f, h), backSpin(0.5f, 0.0f, 0.0f, -h);
    for (const Case& c : {
             Case{"no spin", b, 0.5f, 0, true, middle},
             {"spin sweeps half a turn more", b, 0.5f, 1, true, oneSpin},
             {"the other side, no flip", -b, 0.5f, 1, false, oneSpin},
             {"the other side flips 0 to -1", -b, 0.5f, 0, true, backSpin},
             {"the other side flips 1 to 0", -b, 0.5f, 1, true, middle},
             {"the other side flips 5 to 0", -b, 0.5f, 5, true, middle},
             {"equal ones ignore spin", a, 7.0f, 3, false, a},
             {"a dot product above 1 is linear", b * 4.0f, 0.5f, 1, false, (a + b * 4.0f) * 0.5f},
         }) {
        SCOPED_TRACE(c.what);
        expectNear(core_slerp(a, c.b, c.t, c.spin, c.flip), c.expected, 1e-6f);
    }
}

TEST(ComposeMatrix, ScalesThenRotatesThenTranslates) {
    const mat4 m = composeMatrix(vec3(5.0f, 6.0f, 7.0f), vec3(0.0f, 0.0f, degrees(90.0f)), 0, vec3(2.0f, 1.0f, 1.0f));
    expectNear(vec3(m[0]), vec3(0.0f, 2.0f, 0.0f), 1e-6f);
    expectNear(transformPoint(m, vec3(1.0f)), vec3(4.0f, 8.0f, 8.0f), 1e-5f);
    expectNear(transformVector(m, vec3(1.0f)), vec3(-1.0f, 2.0f, 1.0f), 1e-5f);
}

} // namespace
} // namespace zent
