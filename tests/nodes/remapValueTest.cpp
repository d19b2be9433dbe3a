#include "zent/nodes/remapValue.h"
#include "zent/nodes/combinationShape.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zent {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(Remap, PiecewiseLine) {
    const svec<float, 4> positions{0.25f, 0.5f, 1.0f};
    const svec<float, 4> values{2, 4, -4, 9}; // one more than positions
    const struct { float x, expected; } cases[] = {{-1, 2}, {0.25f, 2}, {0.375f, 3}, {0.5f, 4}, {0.75f, 0}, {kNaN, 2}};
    for (const auto& c : cases) {
        EXPECT_FLOAT_EQ(remap(c.x, positions, values, {0, 2, 3}), c.expected) << c.x;
    }
    EXPECT_EQ(remap(1, positions, values, {}), 9.0f); // the value list's own last entry
    EXPECT_EQ(remap(7, {0.5f}, {3}, {1}), 3.0f);
    // Positions are taken as they come: the halving of {0, 0.8, 0.2, 1} meets 0.2 first, and then 0.8 or 1.
    EXPECT_FLOAT_EQ(remap(0.1f, {0, 0.8f, 0.2f, 1}, {0, 8, 2, 10}, {}), 1.0f);
    EXPECT_FLOAT_EQ(remap(0.6f, {0, 0.8f, 0.2f, 1}, {0, 8, 2, 10}, {}), 6.0f);

    EXPECT_THROW(remap(0, {}, {}, {}), std::runtime_error);
    EXPECT_THROW(remap(0.3f, positions, {1, 2}, {}), std::runtime_error);
    EXPECT_THROW(remap(0.3f, {0, kNaN}, {1, 2}, {}), std::runtime_error);
}

TEST(Remap, Value) {
    const auto value = [](float input, float min, float max) {
        return remapValue(input, min, max, 10, 20, {0, 0.5f, 1}, {0, 1, 0.5f}, {1, 1, 1});
    };
    EXPECT_FLOAT_EQ(value(3, 2, 6), 15);
    EXPECT_FLOAT_EQ(value(9, 2, 6), 15); // limited to 6
    EXPECT_FLOAT_EQ(value(-9, 2, 6), 10);
    EXPECT_FLOAT_EQ(value(9, 6, 2), 10); // the minimum wins where the limits cross
    EXPECT_FLOAT_EQ(value(5, 1, 1), 10); // NaN takes the first value
    EXPECT_FLOAT_EQ(value(kNaN, 2, 6), 10);
}

TEST(CombinationShape, Methods) {
    const struct {
        svec<float, 4> weights;
        int method;
        float expected;
    } cases[] = {
        {{0.5f, 0.25f, -2}, 0, -0.25f},
        {{}, 0, 1},
        {{0.5f, -0.25f, 2}, 1, -0.25f},
        {{3}, 1, 3},
        {{0.5f, 0.5f}, 2, 0.5f},
        {{2}, 2, 1},
        {{0.25f, 0.5f, 1}, 2, 3 / 14.0f},
        {{1, 1}, 3, 0},
        {{1}, -1, 0},
        {{}, 3, 0},
    };
    for (const auto& c : cases) {
        EXPECT_FLOAT_EQ(combinationShape(c.weights, c.method), c.expected) << c.method << " of " << c.weights.size();
    }
    EXPECT_TRUE(std::isnan(combinationShape({0, 0}, 2)));
    EXPECT_TRUE(std::isnan(combinationShape({}, 2)));
    EXPECT_TRUE(std::isinf(combinationShape({1, -1}, 2))); // the sum is not guarded
    EXPECT_THROW(combinationShape({}, 1), std::runtime_error);
}

} // namespace
} // namespace zent
