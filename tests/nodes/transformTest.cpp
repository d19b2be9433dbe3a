#include "zent/nodes/transform.h"

#include "zent/math/rotation.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/limit.h"
#include "zent/nodes/locatorWorldPosition.h"
#include "zent/nodes/pairBlend.h"
#include "zent/nodes/worldMatrix.h"

#include <glm/gtc/matrix_access.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <random>

namespace zent {
namespace {

constexpr float kQuarter = 1.57079633f;

void expectNear(vec3 actual, vec3 expected, float tolerance = 1e-5f) {
    EXPECT_LT(glm::distance(actual, expected), tolerance)
        << actual.x << " " << actual.y << " " << actual.z << " against " << expected.x << " " << expected.y << " "
        << expected.z;
}

class TransformNodes : public testing::Test {
protected:
    float uniform(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(engine_); }
    vec3 vector(float lo = -2.0f, float hi = 2.0f) {
        const float x = uniform(lo, hi), y = uniform(lo, hi);
        return {x, y, uniform(lo, hi)};
    }
    std::mt19937 engine_{5};
};

// A point goes through the channels one after the other, rotated by quaternions.
TEST_F(TransformNodes, TransformFollowsAPoint) {
    for (int round = 0; round < 3000; ++round) {
        const int order = round % 6;
        const vec3 translate = vector(), rotate = vector(-4.0f, 4.0f), scale = vector(), shear = vector();
        const vec3 rotatePivot = vector(), scalePivot = vector();
        const vec3 rotatePivotTranslate = vector(), scalePivotTranslate = vector();
        const vec3 start = vector();

        vec3 p = scale * (start - scalePivot);
        p = vec3(p.x + shear.x * p.y + shear.y * p.z, p.y + shear.z * p.z, p.z);
        p += scalePivot + scalePivotTranslate - rotatePivot;
        p = eulerToQuat(rotate, static_cast<RotateOrder>(order)) * p;
        p += rotatePivot + rotatePivotTranslate + translate;

        const mat4 m = transform(translate, rotate, order, scale, shear, rotatePivot, scalePivot, rotatePivotTranslate,
                                 scalePivotTranslate);
        ASSERT_LT(glm::distance(transformPoint(m, start), p), 1e-4f) << "order " << order;
        ASSERT_EQ(glm::row(m, 3), vec4(0.0f, 0.0f, 0.0f, 1.0f)); // Maya's fourth column
    }
}

TEST_F(TransformNodes, TransformHoldsItsPivots) {
    const vec3 zero(0.0f), one(1.0f), pivot(1.0f, 0.0f, 0.0f), turn(0.0f, 0.0f, kQuarter);
    const mat4 scaled = transform(zero, zero, 0, vec3(2.0f), zero, zero, pivot, zero, zero);
    expectNear(transformPoint(scaled, pivot), pivot);
    expectNear(transformPoint(scaled, zero), -pivot);
    const mat4 turned = transform(zero, turn, 0, one, zero, pivot, zero, zero, zero);
    expectNear(transformPoint(turned, pivot), pivot);
    expectNear(transformPoint(turned, zero), vec3(1.0f, -1.0f, 0.0f));
    const vec3 place(3.0f, 4.0f, 5.0f);
    EXPECT_EQ(vec3(transform(place, turn, 4, vec3(2.0f), one, zero, zero, zero, zero)[3]), place);
    EXPECT_EQ(transform(place, turn, 6, one, zero, pivot, pivot, one, one), mat4(0.0f));
}

TEST_F(TransformNodes, JointFollowsAPoint) {
    for (int round = 0; round < 3000; ++round) {
        const int order = round % 6;
        const vec3 translate = vector(), rotate = vector(-4.0f, 4.0f), scale = vector();
        const vec3 jointOrient = vector(-4.0f, 4.0f), inverseScale = vector(0.5f, 2.0f), start = vector();
        // Scaled, rotated, oriented (always xyz), rid of the parent's scale, moved by the unscaled translation.
        const vec3 oriented = eulerToQuat(jointOrient, kRotateXYZ) *
                              (eulerToQuat(rotate, static_cast<RotateOrder>(order)) * (scale * start));
        const mat4 plain = joint(translate, rotate, scale, order, jointOrient, vec3(0.0f), false);
        ASSERT_LT(glm::distance(transformPoint(plain, start), oriented + translate), 1e-4f) << "order " << order;
        const mat4 compensated = joint(translate, rotate, scale, order, jointOrient, inverseScale, true);
        ASSERT_LT(glm::distance(transformPoint(compensated, start), oriented / inverseScale + translate), 1e-4f);
    }
    EXPECT_TRUE(std::isinf(joint(vec3(0.0f), vec3(0.0f), vec3(1.0f), 0, vec3(0.0f), vec3(0.0f), true)[1][1]));
    EXPECT_EQ(joint(vec3(1.0f), vec3(0.0f), vec3(1.0f), 6, vec3(0.0f), vec3(1.0f), true), mat4(0.0f));
}

TEST_F(TransformNodes, TheLocalMatrixActsFirst) {
    const mat4 parent = glm::rotate(mat4(1.0f), kQuarter, vec3(0.0f, 0.0f, 1.0f));
    const mat4 local = glm::translate(mat4(1.0f), vec3(1.0f, 0.0f, 0.0f));
    expectNear(vec3(worldMatrix(parent, local)[3]), vec3(0.0f, 1.0f, 0.0f));
    expectNear(locatorWorldPosition(vec3(0.0f, 2.0f, 0.0f), worldMatrix(parent, local)), vec3(-2.0f, 1.0f, 0.0f));
}

TEST_F(TransformNodes, LimitLetsTheMaximumWin) {
    struct Case {
        float value;
        bool minEnable;
        float min;
        bool maxEnable;
        float max, expected;
    };
    for (const Case& c : {
             Case{5.0f, false, 8.0f, false, 1.0f, 5.0f},
             {5.0f, true, 8.0f, false, 1.0f, 8.0f},
             {5.0f, false, 8.0f, true, 1.0f, 1.0f},
             {5.0f, true, 8.0f, true, 6.0f, 6.0f},
             {5.0f, true, 0.0f, true, 9.0f, 5.0f},
         }) {
        EXPECT_EQ(limit(c.value, c.minEnable, c.min, c.maxEnable, c.max), c.expected);
    }
    EXPECT_EQ(limit3(vec3(-9.0f, 0.0f, 9.0f), true, -1.0f, true, 1.0f, true, 2.0f, true, 3.0f, false, 4.0f, true, 5.0f),
              vec3(-1.0f, 2.0f, 5.0f));
}

TEST_F(TransformNodes, PairBlendModes) {
    const vec3 a(1.0f, 2.0f, 3.0f), b(5.0f, 6.0f, 7.0f);
    EXPECT_EQ(pairBlendTranslate(a, b, 0.25f, 1, 2, 0), vec3(1.0f, 6.0f, 4.0f));
    EXPECT_EQ(pairBlendRotate(a, b, 0.25f, 0), vec3(2.0f, 3.0f, 4.0f));
    EXPECT_EQ(pairBlendRotate(a, b, 0.25f, 2), a);
    EXPECT_EQ(pairBlendRotate(a, b, 0.25f, -1), a);
}

// By quaternions. Turns of 0 and r about x, blended evenly: q = (s/2, 0, 0, (1 + c)/2) of r/2, with m = 1 - 2xx the
// matrix's cosine and 2xw its sine, which a unit quaternion would make one turn of r/2.
TEST_F(TransformNodes, PairBlendQuaternionsStayUnnormalised) {
    const float r = 2.0f, x = std::sin(1.0f) / 2.0f, w = (1.0f + std::cos(1.0f)) / 2.0f;
    const float expected = std::atan2(2.0f * x * w, 1.0f - 2.0f * x * x);
    ASSERT_GT(std::abs(expected - r / 2.0f), 0.01f);
    expectNear(pairBlendRotate(vec3(0.0f), vec3(r, 0.0f, 0.0f), 0.5f, 1), vec3(expected, 0.0f, 0.0f));
    // Beyond half a turn w is negative and the quaternion negated: the way back is the short one.
    expectNear(pairBlendRotate(vec3(4.0f, 0.0f, 0.0f), vec3(0.0f), 0.0f, 1), vec3(4.0f - 4.0f * kQuarter, 0.0f, 0.0f));
    const vec3 either = pairBlendRotate(vec3(0.3f, 0.0f, 0.0f), vec3(0.3f + 4.0f * kQuarter, 0.0f, 0.0f), 0.5f, 1);
    expectNear(either, vec3(0.3f, 0.0f, 0.0f));
}

} // namespace
} // namespace zent
