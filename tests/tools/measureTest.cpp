#include "zent/tools/measure.h"

#include "zent/values/Compare.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace zent::test {
namespace {

constexpr float kEpsilon = 0.001f;
const double kNaN = std::nan("");

json output(const char* type, json value) {
    return json::array({{{"name", "out"}, {"type", type}, {"value", std::move(value)}}});
}

std::vector<Statistics> measured(const json& maya, const json& zent, double relative = 0.0) {
    std::vector<Statistics> statistics;
    measure(maya, zent, {kEpsilon, relative}, statistics);
    return statistics;
}

std::vector<std::uint32_t> placeOf(const Where& where) {
    return {where.indices.begin(), where.indices.begin() + where.count};
}

TEST(MeasureTest, NumbersByTheirDifference) {
    const std::vector<Statistics> list =
        measured(output("Vec2[]", {{1, 2}, {3, 4}, {kNaN, 6}}), output("Vec2[]", {{1.5, 2}, {3, 2}, {5, 6}, {7, 8}}));
    ASSERT_EQ(list.size(), 1U); // and the surplus of the node function's list is not looked at
    EXPECT_EQ(list[0].count, 6U);
    EXPECT_EQ(list[0].notFinite, 1U);
    EXPECT_EQ(list[0].over, 2U);
    EXPECT_DOUBLE_EQ(list[0].mean(), 2.5 / 5);
    EXPECT_DOUBLE_EQ(list[0].rms(), std::sqrt(4.25 / 5));
    EXPECT_DOUBLE_EQ(list[0].greatest, 2.0);
    EXPECT_EQ(placeOf(list[0].at), (std::vector<std::uint32_t>{1, 1}));
    EXPECT_EQ(list[0].note, "");
}

TEST(MeasureTest, RotationsByTheNearerOfBothSolutions) {
    const struct {
        std::vector<double> maya, zent;
        double degrees;
    } cases[] = {
        {{10, 20, 30}, {10, 20, 32}, 2},     {{170, 20, -179}, {170, 20, 180}, 1}, // once around
        {{10, 20, 30}, {190, 160, 210}, 0},                                        // the other solution
        {{10, 20, 30}, {-170, 159, 210}, 1},                                       // near it
        {{0, 90, 0}, {90, 90, 90}, 0},                                             // two quarter turns: gimbal lock
        {{0, 90, 5}, {90, 90, 60}, 90},                                            // one quarter turn is no solution
    };
    for (const auto& row : cases) {
        const json maya = output("Euler", row.maya);
        const json zent = output("Euler", row.zent);
        const std::vector<Statistics> list = measured(maya, zent);
        EXPECT_EQ(list[0].unit, Unit::degrees);
        EXPECT_EQ(list[0].count, 1U);
        EXPECT_NEAR(list[0].greatest, row.degrees, 1e-4) << maya << zent;
        EXPECT_EQ(list[0].over == 0, compare(maya, zent, kEpsilon)) << maya << zent;
    }
}

TEST(MeasureTest, ShapesByDistanceInTheWorldAndByTheirKnots) {
    const auto curve = [](json cv, json knots, double moved, unsigned form) {
        return output("Curve", {{"degree", 1},
                                {"form", form},
                                {"cv", std::move(cv)},
                                {"knots", std::move(knots)},
                                {"matrix", {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, moved, 0, 0, 1}}});
    };
    const std::vector<Statistics> list =
        measured(curve({{0, 0, 0}, {1, 0, 0}}, {0, 1}, 0, 1), curve({{-5, 0, 0}, {-4, 1.5, 2}}, {0, 1.5, 2}, 10, 2));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].unit, Unit::distance);
    EXPECT_DOUBLE_EQ(list[0].greatest, 5.0); // (0, 3, 4) in the world
    EXPECT_EQ(placeOf(list[0].at), (std::vector<std::uint32_t>{1}));
    EXPECT_EQ(list[0].over, 1U);
    EXPECT_EQ(list[0].note, "form 2, not 1");
    EXPECT_EQ(list[1].output, "out.knots");
    EXPECT_DOUBLE_EQ(list[1].greatest, 0.5);
    EXPECT_EQ(list[1].note, "3 knots, not 2");
}

TEST(MeasureTest, NotesTellWhatNoValueDoes) {
    EXPECT_EQ(measured(output("Float", 1), output("Vec3", {1, 2, 3}))[0].note, "type Vec3, not Float");
    EXPECT_EQ(measured(output("Float", 1), json::array())[0].note, "type none, not Float");
    const Statistics shorter = measured(output("Float[]", {1, 2, 3}), output("Float[]", {1, 2}))[0];
    EXPECT_EQ(shorter.note, "2 values, not 3");
    EXPECT_EQ(shorter.count, 2U);
}

TEST(MeasureTest, ARelativeToleranceWidensNumbersAndDistances) {
    const json maya = output("Float", 1000.0);
    EXPECT_FALSE(matches(measured(maya, output("Float", 1001.0))));
    EXPECT_TRUE(matches(measured(maya, output("Float", 1001.0), 0.001)));
    EXPECT_FALSE(matches(measured(maya, output("Float", 1001.5), 0.001)));
    EXPECT_TRUE(matches(measured(output("Float", 0.0), output("Float", 0.0005), 0.001))); // within epsilon
    EXPECT_FALSE(matches(measured(output("Float", kNaN), output("Float", kNaN), 1.0)));
    EXPECT_TRUE(isWithin({vec3(1000.0f, 0.0f, 0.0f), vec3(1000.0f, 0.5f, 0.0f)}, 0.001)); // by the length
    EXPECT_FALSE(isWithin({vec3(1.0f, 0.0f, 0.0f), vec3(1.0f, 0.5f, 0.0f)}, 0.001));
}

TEST(MeasureTest, AHistogramCountsHalfDecades) {
    json zeros = json::array();
    json errors = json::array();
    for (const double error : {0.0, 5e-8, 2e-7, 0.5, 0.2, 2.0, 5e7, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}) {
        zeros.push_back(0.0);
        errors.push_back(error);
    }
    EXPECT_FALSE(measured(output("Float[]", zeros), output("Float[]", errors))[0].hasHistogram);
    zeros.push_back(0.0);
    errors.push_back(kNaN);
    const Statistics list = measured(output("Float[]", zeros), output("Float[]", errors))[0];
    ASSERT_TRUE(list.hasHistogram);
    EXPECT_EQ(list.histogram.below, 11U);
    std::vector<std::size_t> filled;
    for (std::size_t i = 0; i < Histogram::kBins; ++i) {
        filled.insert(filled.end(), list.histogram.counts[i], i);
    }
    // 10^-7, 10^-1, 10^-0.5, 10^0; the last bin has all above it
    EXPECT_EQ(filled, (std::vector<std::size_t>{0, 12, 13, 14, Histogram::kBins - 1}));
}

} // namespace
} // namespace zent::test
