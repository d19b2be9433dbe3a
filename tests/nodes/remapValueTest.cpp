#include "zent/nodes/remapValue.h"
#include "zent/nodes/combinationShape.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zent {
namespace {

TEST(Remap, PiecewiseLine) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float cases[][2] = {{-1, 2}, {0.25f, 2}, {0.375f, 3}, {0.5f, 4}, {0.75f, 0}, {1, 9}, {nan, 2}};
    for (const auto& [x, expected] : cases) { // the last value is the value list's own, here one more
        EXPECT_FLOAT_EQ(remap(x, {0.25f, 0.5f, 1}, {2, 4, -4, 9}, {0, 2, 3}), expected) << x;
    }
    // Positions are taken as they come: the halving of {0, 0.8, 0.2, 1} meets 0.2 first, and then 0.8 or 1.
    EXPECT_FLOAT_EQ(remap(0.1f, {0, 0.8f, 0.2f, 1}, {0, 8, 2, 10}, {}), 1.0f);
    EXPECT_FLOAT_EQ(remap(0.6f, {0, 0.8f, 0.2f, 1}, {0, 8, 2, 10}, {}), 6.0f);
    EXPECT_THROW(remap(0, {}, {}, {}), std::runtime_error);
    EXPECT_THROW(remap(0, {0, 1}, {1}, {}), std::runtime_error);
    EXPECT_THROW(remap(0.3f, {0, nan}, {1, 2}, {}), std::runtime_error);

    // Input, minimum, maximum: the minimum wins where the limits cross, and an empty range takes the first value.
    const float values[][4] = {{3, 2, 6, 15}, {9, 2, 6, 15}, {-9, 2, 6, 10}, {9, 6, 2, 10}, {5, 1, 1, 10}};
    for (const auto& [input, min, max, expected] : values) {
        EXPECT_FLOAT_EQ(remapValue(input, min, max, 10, 20, {0, 0.5f, 1}, {0, 1, 0.5f}, {}), expected) << input;
    }
}

TEST(CombinationShape, Methods) {
    EXPECT_FLOAT_EQ(combinationShape({0.5f, 0.25f, -2}, 0), -0.25f);
    EXPECT_FLOAT_EQ(combinationShape({}, 0), 1);
    EXPECT_FLOAT_EQ(combinationShape({0.5f, -0.25f, 2}, 1), -0.25f);
    EXPECT_FLOAT_EQ(combinationShape({0.5f, 0.5f}, 2), 0.5f);
    EXPECT_FLOAT_EQ(combinationShape({0.25f, 0.5f, 1}, 2), 3 / 14.0f);
    EXPECT_TRUE(std::isinf(combinationShape({1, -1}, 2))); // the sum is not guarded
    EXPECT_TRUE(std::isnan(combinationShape({}, 2)));
    EXPECT_EQ(combinationShape({1}, -1) + combinationShape({}, 3), 0.0f);
    EXPECT_THROW(combinationShape({}, 1), std::runtime_error);
}

} // namespace
} // namespace zent
