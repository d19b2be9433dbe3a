#include "zent/nodes/nearestPointOnCurve.h"

#include "nodes/rigTest.h"
#include "zent/nodes/intersectCurveSphere.h"
#include "zent/nodes/motionPath.h"

namespace zent::test {
namespace {

/// A straight cubic along x at constant speed, 0 to 3, over a domain.
Curve straight(float start = 0, float end = 1) {
    return clamped(3, {kZero, kX, {2, 0, 0}, {3, 0, 0}}, start, end);
}

TEST(ClosestPointOnCurve, IsExactOnDegreeOne) {
    const Curve line(1, kFormOpen, {kZero, kX, {1, 1, 0}, {1, 1, 0}, {3, 1, 0}}, {0, 1, 2, 3, 7}, moved({0, 0, 5}));
    const std::pair<vec3, float> rows[] = {
        {{-1, -1, 5}, 0},      {{0.25f, -1, 5}, 0.25f}, {{9, 0, 5}, 7}, {{2, 2, 5}, 5},
        {{2, -1, 5}, 1},       {{0.5f, 0.5f, 5}, 0.5f}, // as close to the second segment: the earlier one wins
        {{0.99f, 1.5f, 5}, 2}, // the end of one segment, before one of no length and the one after it
    };
    for (const auto& [point, parameter] : rows) {
        EXPECT_FLOAT_EQ(getClosetPointOnCurve(line, point), parameter);
    }
    // The closing segment is not looked at, and so it needs no knot.
    const Curve loop(1, kFormPeriodic, {kZero, {4, 0, 0}, {4, 4, 0}, kZero}, {0, 1, 2}, kIdentity);
    EXPECT_FLOAT_EQ(getClosetPointOnCurve(loop, {1.5f, 1.6f, 0}), 0.375f);
    EXPECT_NE(errorOf([&] { getClosetPointOnCurve(Curve(1, kFormOpen, loop.cv, loop.knots, kIdentity), kZero); }), "");
}

TEST(ClosestPointOnCurve, SearchesByNewton) {
    const std::tuple<const char*, Curve, vec3, float, float> rows[] = {
        {"inside", straight(), {1.2f, 5, 0}, 0.4f, 1e-5f},
        {"the result lags behind the last step", straight(), {3 * (0.25f + 4e-6f), 0, 0}, 0.25f, 1e-9f},
        {"beyond the end", straight(), {9, 1, 0}, 1, 1e-4f},
        {"the literal samples lie before the domain", straight(5, 6), {1.2f, 5, 0}, 5.4f, 1e-4f},
        {"the literal samples lie beyond the domain", straight(-9, -8), {1.2f, 5, 0}, -8, 1e-4f},
        {"a step below 0 ends at 0", straight(-1, 1), {0.75f, 0, 0}, 0, 1e-9f},
        {"no speed", clamped(2, {kOne, kOne, kOne}), kZero, 0, 1e-9f},
    };
    for (const auto& [what, curve, point, parameter, tolerance] : rows) {
        EXPECT_NEAR(getClosetPointOnCurve(curve, point), parameter, tolerance) << what;
    }
    // Two arms, the point on the far one: three spans are sampled up to parameter 1 only, four at each knot.
    std::vector<vec3> arms{kZero, {0, 6, 0}, {0.5f, 12, 0}, {1, 6, 0}, kX};
    EXPECT_LT(getClosetPointOnCurve(clamped(2, arms), {1, 3, 0}), 1);
    arms.push_back({1, -6, 0});
    EXPECT_GT(getClosetPointOnCurve(clamped(2, arms), {1, 3, 0}), 2);
    // A periodic cubic around an octagon: by symmetry the closest points lie in the directions of knots and middles.
    Curve ring(3, kFormPeriodic, {}, {-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, kIdentity);
    for (const float knot : ring.knots) {
        ring.cv.emplace_back(turned(kZ, knot * 45) * vec4(kX, 1));
    }
    for (const float u : {0.0f, 0.5f, 1.0f, 1.5f, 2.0f, 2.5f, 3.0f, 3.5f, 4.0f, 4.5f, 5.0f}) {
        EXPECT_NEAR(getClosetPointOnCurve(ring, worldPoint(ring, u) * 3.0f), u, 1e-3f);
    }
    for (float& knot : ring.knots) {
        knot -= 4;
    }
    // Below 0 a step wraps by the domain's end, 4, not by its length: to the opposite point, where the search rests.
    EXPECT_NEAR(getClosetPointOnCurve(ring, worldPoint(ring, -2) * 3.0f), 2, 1e-3f);
}

TEST(NearestPointOnCurve, GivesTheControlPointAtTheTruncatedParameter) {
    const Curve curve = clamped(2, {kZero, kX, {3, 0, 0}, {5, 0, 0}, {6, 0, 0}}, 0, 3, moved(kZ));
    const auto [position, parameter] = nearestPointOnCurve(curve, worldPoint(curve, 2.7f));
    EXPECT_NEAR(parameter, 2.7f, 1e-3f);
    EXPECT_EQ(position, vec3(3, 0, 1));
    EXPECT_NE(errorOf([] { nearestPointOnCurve(straight(5, 6), kZero); }).find("curve has 4"), std::string::npos);
}

TEST(IntersectRay, GivesFractionsOfTheSegment) {
    const auto at = [](float x, float y, float radius) { // a segment of length 2 along x
        return intersectRay(vec3(x, y, 0) + kOne, vec3(x + 2, y, 0) + kOne, kOne, radius);
    };
    const RaySphereHit through = at(2, 0, 1), tangent = at(-1, 1, 1), miss = at(-1, 1, 0.9f);
    EXPECT_TRUE(through.hit && near({through.first, through.second, 0}, {-1.5f, -0.5f, 0}));
    EXPECT_TRUE(tangent.hit && near({tangent.first, tangent.second, 0}, {0.5f, 0.5f, 0}));
    EXPECT_TRUE(!miss.hit && std::isnan(miss.first) && std::isnan(miss.second));
}

TEST(IntersectCurveSphere, FindsWhereTheCurveLeaves) {
    const Curve zigzag(1, kFormOpen, {kZero, {10, 0, 0}, {10, 1, 0}, {0, 1, 0}}, {0, 1, 2, 4}, kIdentity);
    const Curve unit = clamped(1, {kZero, kX});
    const std::tuple<const char*, Curve, vec3, float, float> rows[] = {
        {"the last crossing", zigzag, {5, 1, 0}, 2, 3.4f},
        {"no crossing", zigzag, {5, 50, 0}, 2, 4},
        {"a crossing at 0 reads as none", unit, {2, 0, 0}, 2, 1},
        {"beyond the end, within the overhang", unit, kZero, 1.0005f, 1.0005f},
        {"beyond the overhang", unit, kZero, 1.002f, 1},
        {"a cubic", straight(), kX, 1, 2.0f / 3},
        {"the whole tail inside", straight(), kX, 5, 1},
        {"nowhere inside", straight(), {1, 5, 0}, 1, 1.0f / 3},
        {"closest at the end", straight(), {4, 0, 0}, 2, 1},
    };
    for (const auto& [what, curve, center, radius, parameter] : rows) {
        EXPECT_NEAR(intersectCurveSphere(curve, center, radius), parameter, 2e-5f) << what;
        EXPECT_NEAR(intersectCurveSphere(curve, closestSamples(curve), center, radius), parameter, 2e-5f) << what;
    }
}

TEST(MotionPath, WalksByParameterOrByLength) {
    // x is the cube of the parameter, 0 to 1, times a length.
    const auto cubed = [](float length, float start = 0) {
        return clamped(3, {kZero, kZero, kZero, kX * length}, start, start + 1);
    };
    const std::tuple<const char*, Curve, float, bool, float, float> rows[] = {
        {"parameter", cubed(1), 0.5f, false, 0.125f, 1e-6f},
        {"length", cubed(1), 0.5f, true, 0.5f, 1e-4f},
        {"length on another domain", cubed(8, 4), 0.25f, true, 2, 1e-3f},
        {"a fraction below the tolerance is one of the domain", cubed(1e6f), 9e-6f, true, 0, 1e-3f},
        {"so is one at the end", cubed(1e6f), 0.999995f, true, 999985, 3},
        {"and one outside", cubed(1), 2, true, 1, 1e-5f},
        {"the next float of a length is further away than the tolerance", cubed(1e5f), 0.3f, true, 3e4f, 10},
        {"hardly any length", cubed(9e-6f, 3), 0.7f, true, 0, 1e-9f},
        {"that is parameter 0, here the domain's end", cubed(9e-6f, -1), 0.3f, true, 9e-6f, 1e-9f},
    };
    for (const auto& [what, curve, value, fraction, x, tolerance] : rows) {
        EXPECT_NEAR(motionPath(curve, value, fraction).x, x, tolerance) << what;
    }
    EXPECT_EQ(errorOf([] { motionPath(Curve(), 0, true); }).substr(0, 5), "curve");
}

// Domains whose next float is further away than the tolerance, points far away, and numbers that are none.
TEST(CurveSearches, EndOnAnyInput) {
    const Curve far = straight(1e8f, 1e8f + 512);
    EXPECT_NEAR(intersectCurveSphere(far, kX, 1), 1e8f + 512 * 2.0f / 3, 64);
    EXPECT_NEAR(motionPath(far, 0.5f, true).x, 1.5f, 0.1f);

    const float infinity = std::numeric_limits<float>::infinity();
    const std::pair<float, float> domains[] = {{0, 1},          {-7, -2},      {5, 5},   {9, 4},
                                               {-3e38f, 3e38f}, {0, infinity}, {kNaN, 1}};
    for (unsigned kind = 0; kind < 6; ++kind) { // degrees 1 to 3, open and periodic
        for (const float s : {0.0f, 1.0f, 1e19f, 1e37f, kNaN}) {
            for (const auto& [start, end] : domains) {
                Curve curve =
                    clamped(1 + kind / 2, {kZero, {s, s, 0}, {2 * s, -s, s}, {3 * s, s, 0}, kZero}, start, end);
                curve.form = kind % 2 == 0 ? kFormOpen : kFormPeriodic;
                for (const float x : {0.0f, 1.0f, 1e20f, 3e38f, infinity, kNaN}) {
                    getClosetPointOnCurve(curve, {x, 1, x});
                    intersectCurveSphere(curve, {x, 1, x}, 1);
                    motionPath(curve, x, false);
                    motionPath(curve, 0.5f, true);
                }
            }
        }
    }
}

} // namespace
} // namespace zent::test
