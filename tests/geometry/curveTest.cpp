#include "zent/geometry/Curve.h"
#include "geometry/recursiveSpline.h"
#include "zent/geometry/recurrence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace zent::test {
namespace {

using glm::dmat3;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

void expectNear(vec3 actual, dvec3 expected, double tolerance) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(static_cast<double>(actual[i]), expected[i], tolerance) << "component " << i;
    }
}

Curve unevenCurve(unsigned degree, unsigned form) {
    const std::size_t count = 2 * degree + 3;
    Curve curve(degree, form, scatterPoints(count, degree), unevenKnots(count, degree, form), kShear);
    for (unsigned i = 0; form == kFormPeriodic && i < degree; ++i) {
        curve.cv[count - degree + i] = curve.cv[i];
    }
    return curve;
}

TEST(Curve, FollowsTheRecursiveDefinition) {
    for (unsigned degree = 1; degree <= kMaxDegree; ++degree) {
        for (const unsigned form : {kFormOpen, kFormPeriodic}) {
            SCOPED_TRACE(testing::Message() << "degree " << degree << ", form " << form);
            const Curve curve = unevenCurve(degree, form);
            const dmat3 linear(curve.matrixLinear);
            for (float t = 0.03f; t < 1.0f; t += 0.09f) {
                const float u = curve.domainStart() + t * (curve.domainEnd() - curve.domainStart());
                const double exact = static_cast<double>(u);
                expectNear(curve.localPoint(u), recursivePoint(curve, exact, 0), 2e-6);
                expectNear(curve.dPdU(u), linear * recursivePoint(curve, exact, 1), 5e-5);
                expectNear(curve.d2PdU2(u), linear * recursivePoint(curve, exact, 2), 5e-4);
            }
        }
    }
}

TEST(Curve, EvaluatesJustInsideItsEnd) {
    const std::vector<vec3> line{vec3(0.0f), vec3(16777216.0f, 0.0f, 0.0f)};
    struct {
        std::vector<float> knots;
        float u, x;
    } const rows[]{
        {{2.0f, 6.0f}, 6.0f, 16777210.0f}, // 6 * 2^-22 below 6: the margin scales with the last knot, not the domain
        {{2.0f, 6.0f}, 1e30f, 16777210.0f}, {{2.0f, 6.0f}, kInfinity, 16777210.0f},
        {{2.0f, 6.0f}, 3.0f, 4194304.0f},   {{2.0f, 6.0f}, 1.0f, 0.0f},
        {{2.0f, 6.0f}, -kInfinity, 0.0f},   {{-4.0f, 0.0f}, 0.0f, 16777216.0f}, // no margin at a last knot of 0
    };
    for (const unsigned form : {kFormOpen, kFormPeriodic}) { // nothing wraps
        for (const auto& row : rows) {
            EXPECT_EQ(Curve(1, form, line, row.knots, mat4(1.0f)).localPoint(row.u).x, row.x) << row.u;
        }
    }
    EXPECT_TRUE(std::isnan(Curve(1, kFormOpen, line, {2.0f, 6.0f}, mat4(1.0f)).localPoint(kNaN).x));
    EXPECT_EQ(Curve(1, kFormOpen, line, {2.0f, 6.0f}, kShear).d2PdU2(kNaN), vec3(0.0f)); // degree 1: no work at all
}

TEST(Curve, KeepsItsTransformAndTheInverse) {
    const Curve curve(vec3(1.0f, 2.0f, 3.0f), kShear);
    const vec3 world = curve.matrixLinear * curve.cv[1] + curve.translation;
    EXPECT_EQ(world, vec3(7.0f, -3.75f, 18.0f)); // by hand: the matrix is applied to the point, not the point to it
    expectNear(curve.inverseLinear * world + curve.inverseTranslation, dvec3(1.0, 2.0, 3.0), 1e-5);
    EXPECT_EQ(curve.cv.size(), 2u);
    EXPECT_NO_THROW(requireEvaluable(curve, "curve"));
}

TEST(Curve, MeasuresLengths) {
    // y = x^2 for x from 0 to 1: sqrt(5) / 2 + asinh(2) / 4.
    const Curve parabola(2, kFormOpen, {{0, 0, 0}, {0.5f, 0, 0}, {1, 1, 0}}, {0, 0, 1, 1}, mat4(mat3(3.0f)));
    EXPECT_NEAR(parabola.arcLength(0.0f, 1.0f), 3.0f * 1.4789429f, 1e-5f);
    EXPECT_EQ(parabola.arcLength(0.3f, 0.3f), 0.0f);
    EXPECT_NEAR(parabola.arcLength(1.0f, 0.0f), -3.0f * 1.4789429f, 1e-5f); // one panel, backwards

    // A uniform cubic round a regular polygon passes its knots at a radius of (2 + cos(step)) / 3, and is round
    // between.
    const std::size_t sides = 64;
    Curve circle(3, kFormPeriodic, {}, {}, mat4(1.0f));
    for (std::size_t i = 0; i < sides + 3; ++i) {
        const double angle = 2.0 * kPi * static_cast<double>(i) / double(sides);
        circle.cv.emplace_back(std::cos(angle), std::sin(angle), 0.0);
    }
    for (std::size_t i = 0; i < sides + 5; ++i) {
        circle.knots.push_back(static_cast<float>(i) - 2.0f);
    }
    const double radius = (2.0 + std::cos(2.0 * kPi / double(sides))) / 3.0;
    EXPECT_NEAR(static_cast<double>(circle.arcLength(0.0f, float(sides))), 2.0 * kPi * radius, 2e-4);
    EXPECT_NEAR(static_cast<double>(circle.arcLength(8.0f, 24.0f)), 0.5 * kPi * radius, 1e-4);
}

/// The rule's own estimate over equal panels of a chain of straight segments: the speed on segment k is its length.
double gaussOverSegments(const std::vector<double>& lengths, int panels) {
    const double nodes[]{0.1834346424956498, 0.5255324099163290, 0.7966664774136267, 0.9602898564975363};
    const double weights[]{0.3626837833783620, 0.3137066458778873, 0.2223810344533745, 0.1012285362903763};
    const double half = static_cast<double>(lengths.size()) / panels / 2.0;
    double sum = 0.0;
    for (int panel = 0; panel < panels; ++panel) {
        for (int i = 0; i < 8; ++i) {
            const double u = half * (2 * panel + 1 + (i < 4 ? nodes[i % 4] : -nodes[i % 4]));
            sum += half * weights[i % 4] * lengths[static_cast<std::size_t>(u)];
        }
    }
    return sum;
}

// The true number of spans of a periodic curve is larger than the count of panels. Deliberate.
TEST(Curve, CutsAPeriodicDomainIntoFewerPanelsThanSpans) {
    const auto chain = [](std::vector<double> lengths) {
        Curve curve(1, kFormPeriodic, {vec3(0.0f)}, {0.0f}, mat4(1.0f));
        for (const double length : lengths) {
            curve.cv.push_back(curve.cv.back() + vec3(static_cast<float>(length), 0.0f, 0.0f));
            curve.knots.push_back(curve.knots.back() + 1.0f);
        }
        return curve;
    };
    struct {
        std::vector<double> lengths;
        int panels;
    } const rows[]{
        {{1, 5, 2, 9}, 3}, // 5 control points, 4 spans
        {{1, 5, 2}, 2},
        {{1, 5}, 1},
        {{4}, 1}, // 2 control points, as many as twice the degree: the step is infinite
    };
    for (const auto& row : rows) {
        const double end = static_cast<double>(row.lengths.size());
        EXPECT_NEAR(static_cast<double>(chain(row.lengths).arcLength(0.0f, static_cast<float>(end))),
                    gaussOverSegments(row.lengths, row.panels), 1e-4);
    }
    EXPECT_EQ(spanCount(Curve(3, kFormPeriodic, scatterPoints(5, 1), {}, mat4(1.0f))), 0u);
}

TEST(Curve, EndsOnAnyInput) {
    const Curve line(1, kFormOpen, {vec3(0.0f), vec3(1.0f, 0.0f, 0.0f)}, {0.0f, 1.0f}, mat4(1.0f));
    EXPECT_NEAR(line.arcLength(33554432.0f, 33554496.0f), 64.0f, 1e-4f); // a step of 1 no longer moves the parameter
    EXPECT_TRUE(std::isnan(line.arcLength(kNaN, 1.0f)));
    EXPECT_TRUE(std::isnan(line.arcLength(0.0f, kNaN)));

    const std::vector<float> odd{kNaN, kInfinity, -kInfinity, 0.0f, 1.0f, 1.0f, -3.0f, 1e30f, 1e-40f, 2.0f};
    for (unsigned state = 0; state < 4000; ++state) {
        const unsigned degree = 1 + state % kMaxDegree;
        std::vector<float> knots;
        for (const float number : scatter(2 * degree + state % 4, state)) {
            knots.push_back(odd[static_cast<std::size_t>((number + 1.0f) * 4.99f)]);
        }
        const std::size_t count = knots.size() - degree + 1;
        const Curve curve(degree, 1 + state % 3, scatterPoints(count, state), knots, mat4(1.0f));
        requireEvaluable(curve, "curve");
        for (const float u : odd) {
            const unsigned span = findSpan(u, degree, knots);
            EXPECT_GE(span, degree - 1);
            EXPECT_LE(span, knots.size() - degree - 1);
            curve.localPoint(u); // reads inside its lists, which the sanitizers see
        }
        curve.arcLength(curve.domainStart(), curve.domainEnd());
    }
}

void expectSameBits(vec3 actual, vec3 expected) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(std::isnan(actual[i]) ? std::isnan(expected[i])
                                          : std::memcmp(&actual[i], &expected[i], sizeof(float)) == 0)
            << actual[i] << " for " << expected[i];
    }
}

// The steps of any degree, on knots and parameters that leave the domain, divide by 0, underflow and overflow.
TEST(Curve, OfDegreeThreeHasTheBitsOfTheStepsOfAnyDegree) {
    const std::vector<float> odd{kNaN, kInfinity, 0.0f, -0.0f, 0.5f, 1.0f, 1.0f, 1.5f, 2.0f, 1e30f, 1e-40f, -2.0f};
    for (unsigned state = 0; state < 2000; ++state) {
        std::vector<float> knots;
        for (const float number : scatter(6 + state % 4, state)) {
            knots.push_back(state % 3 == 0   ? odd[static_cast<std::size_t>((number + 1.0f) * 5.99f)]
                            : state % 3 == 1 ? std::round(2.0f * number)
                                             : 3.0f * number);
        }
        if (state % 3 != 0) {
            std::sort(knots.begin(), knots.end());
        }
        const Curve curve(3, kFormOpen, scatterPoints(knots.size() - 2, state), knots, kShear);
        for (const float u : odd) {
            const float at = clampParameter(u, 3, knots);
            const unsigned span = findSpan(at, 3, knots);
            const BasisDerivatives rows = computeDerivatives(2, 3, span, at, knots);
            const auto ofCubic = cubicRows<2>(span, at, knots);
            vec3 sums[3]{};
            for (unsigned k = 0; k < 3; ++k) {
                for (unsigned j = 0; j < 4; ++j) {
                    const vec3 cv = curve.cv[span - 2 + j];
                    sums[k] += rows[k][j] * (k == 0 ? cv : curve.matrixLinear * cv + curve.translation);
                    expectSameBits(vec3(ofCubic[k][j]), vec3(rows[k][j]));
                }
            }
            const vec3 point = curve.matrixLinear * sums[0] + curve.translation;
            expectSameBits(curve.localPoint(u), sums[0]);
            expectSameBits(curve.dPdU(u), sums[1]);
            expectSameBits(curve.d2PdU2(u), sums[2]);
            expectSameBits(curve.tangent(u).s, point);
            expectSameBits(curve.tangent(u).su, sums[1]);
            expectSameBits(curve.jet(u).s, point);
            expectSameBits(curve.jet(u).su, sums[1]);
        }
    }
}

TEST(Curve, RefusesWhatCannotBeEvaluated) {
    struct {
        unsigned degree;
        std::size_t points, knots;
        const char* text;
    } const rows[]{
        {0, 4, 4, "curve has degree 0, evaluation needs 1 to 5"},
        {6, 20, 25, "curve has degree 6, evaluation needs 1 to 5"},
        {3, 0, 0, "curve knots has 0 entries, degree 3 needs 6"},
        {3, 3, 5, "curve knots has 5 entries, degree 3 needs 6"},
        {3, 3, 6, "curve control points has 3 entries, 6 knots needs 4"},
        {3, 4, 6, nullptr},
        {3, 9, 6, nullptr}, // surplus control points are never reached
    };
    for (const auto& row : rows) {
        const Curve curve(row.degree, kFormOpen, std::vector<vec3>(row.points, vec3(0.0f)),
                          std::vector<float>(row.knots), mat4(1.0f));
        try {
            requireEvaluable(curve, "curve");
            EXPECT_EQ(row.text, nullptr);
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), row.text);
        }
    }
}

} // namespace
} // namespace zent::test
