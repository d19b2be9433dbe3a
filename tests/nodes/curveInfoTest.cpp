#include "zent/nodes/curveInfo.h"

#include "zent/geometry/nurbs.h"
#include "zent/nodes/curve_from_cv.h"
#include "zent/nodes/pointOnCurveInfo.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

const mat4 kPlaced{2.0f, 0.0f, 0.0f, 0.0f, 0.0f, 3.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 10.0f, 20.0f, 30.0f, 1.0f};

TEST(CurveInfoTest, MeasuresDegreeOneFromItsControlPoints) {
    // Scaled by (2, 3, 1): steps of 6, 12 and 5.
    const std::vector<vec3> points{{0, 0, 0}, {3, 0, 0}, {3, 4, 0}, {3, 4, 5}};
    const struct {
        unsigned form;
        std::size_t count;
        float length;
    } rows[] = {
        {kFormOpen, 4, 23.0f},     {kFormClosed, 4, 23.0f},
        {kFormPeriodic, 4, 18.0f}, // the last point does not count, nor does the way to it
        {kFormOpen, 1, 0.0f},      {kFormPeriodic, 2, 0.0f},
    };
    for (const auto& row : rows) {
        const std::vector<vec3> cv(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(row.count));
        EXPECT_FLOAT_EQ(curveInfo(Curve(1, row.form, cv, {}, kPlaced)), row.length); // knots are not looked at
    }
    EXPECT_THROW(curveInfo(Curve(1, kFormOpen, {}, {}, kPlaced)), std::runtime_error);
    EXPECT_THROW(curveInfo(Curve(1, kFormPeriodic, {vec3(0.0f)}, {}, kPlaced)), std::runtime_error);
}

TEST(CurveInfoTest, IntegratesOtherDegrees) {
    // y = x^2 from 0 to 1, with x doubled and y tripled: y = 3 / 4 x^2 from 0 to 2, c = 3 / 2.
    const Curve parabola(2, kFormOpen, {{0, 0, 0}, {0.5f, 0, 0}, {1, 1, 0}}, {2, 2, 6, 6}, kPlaced);
    EXPECT_NEAR(curveInfo(parabola), std::sqrt(10.0f) + std::asinh(3.0f) / 3.0f, 1e-5f);
    EXPECT_THROW(curveInfo(Curve()), std::runtime_error);
}

TEST(PointOnCurveInfoTest, ScalesByTheEndOfTheDomainAlone) {
    const Curve line(1, kFormOpen, {{0, 0, 0}, {4, 4, 4}}, {2.0f, 6.0f}, kPlaced);
    const auto expectPoint = [](vec3 actual, vec3 expected) { EXPECT_LT(glm::distance(actual, expected), 1e-4f); };
    expectPoint(pointOnCurveInfo(line, 3.0f, false), {12.0f, 23.0f, 31.0f});
    expectPoint(pointOnCurveInfo(line, 0.5f, true), {12.0f, 23.0f, 31.0f}); // 0.5 * 6, not the middle
    expectPoint(pointOnCurveInfo(line, 0.25f, true), {10.0f, 20.0f, 30.0f});
    EXPECT_THROW(pointOnCurveInfo(Curve(6, kFormOpen, {}, {}, kPlaced), 0.0f, false), std::runtime_error);
}

TEST(CurveFromCvTest, KeepsTheOverlapInStep) {
    const Curve ring(3, kFormPeriodic, std::vector<vec3>(7, vec3(0.0f)), {0, 1, 2, 3, 4, 5, 6, 7, 8}, kPlaced);
    const Curve moved = curve_from_cv(ring, {{0, vec3(1.0f)}, {3, vec3(2.0f)}, {5, vec3(3.0f)}});
    const float expected[] = {1.0f, 0.0f, 0.0f, 2.0f, 1.0f, 3.0f, 0.0f}; // 0 repeats at 4; 5 does not at 1
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(moved.cv[i], vec3(expected[i])) << i;
    }
    // In ascending order of the keys: the overlap's own entry comes last.
    EXPECT_EQ(curve_from_cv(ring, {{4, vec3(9.0f)}, {0, vec3(1.0f)}}).cv[4], vec3(9.0f));
    EXPECT_EQ(moved.translation, vec3(10.0f, 20.0f, 30.0f));
    EXPECT_EQ(moved.inverseLinear, ring.inverseLinear);
    EXPECT_EQ(moved.knots, ring.knots);
    try {
        curve_from_cv(ring, {{0, vec3(1.0f)}, {7, vec3(1.0f)}});
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "curve_from_cv: control point[1] is 7, the curve has 7");
    }
}

} // namespace
} // namespace zent::test
