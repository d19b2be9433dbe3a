#include "zent/nodes/animCurve.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace zent {
namespace {

struct Key {
    float time, value;
    vec2 in{1, 0}, out{1, 0};
    int inType = 1, outType = 1;
};

struct Ends {
    int pre = 0, post = 0;
};

float evaluate(const std::vector<Key>& keys, float time, Ends ends = {}, bool weighted = false) {
    svec<float, 8> times, values, inX, inY, outX, outY;
    svec<int, 8> inType, outType;
    for (const Key& key : keys) {
        times.push_back(key.time);
        values.push_back(key.value);
        inX.push_back(key.in.x);
        inY.push_back(key.in.y);
        inType.push_back(key.inType);
        outX.push_back(key.out.x);
        outY.push_back(key.out.y);
        outType.push_back(key.outType);
    }
    return animCurve(time, times, values, inX, inY, inType, outX, outY, outType, ends.pre, ends.post, weighted);
}

TEST(AnimCurve, Infinities) {
    const std::vector<Key> keys{{0, 1, {2, 1}, {1, 0}, 2, 2}, {4, 9, {1, 0}, {1, -2}, 2, 2}};
    const struct {
        float time;
        Ends ends;
        float expected;
    } cases[] = {
        {-2, {0, 1}, 1},  {6, {1, 0}, 9},  {4, {1, 0}, 9},   // constant
        {-2, {1, 0}, 0},  {6, {0, 1}, 5},                    // linear
        {-1, {3, 0}, 7},  {9, {0, 3}, 3},  {4, {0, 3}, 1},   // cycle: the last key is the first one
        {-1, {4, 0}, -1}, {9, {0, 4}, 19}, {4, {0, 4}, 9},   // cycle relative
        {-1, {2, 0}, 0},  {0, {5, 0}, 0},  {-1, {-1, 0}, 0}, // not implemented, at the first key as well
        {4, {0, 5}, 0},   {6, {0, 2}, 0},  {6, {0, 1000}, 0},
    };
    for (const auto& c : cases) {
        EXPECT_FLOAT_EQ(evaluate(keys, c.time, c.ends), c.expected) << c.time << " " << c.ends.pre << c.ends.post;
    }
    EXPECT_TRUE(std::isnan(evaluate({{0, 1, {0, 0}}, {1, 2}}, 0, {1, 0}))); // 0 / 0 comes as it is
}

TEST(AnimCurve, RelativeOffsetIsLeftOutOfFlatSegmentsOnly) {
    const std::vector<Key> keys{{0, 0, {1, 0}, {1, 0}, 1, 5},
                                {1, 5},
                                {2, 5, {1, 0}, {1, 0}, 1, 2},
                                {3, 6, {1, 0}, {1, 0}, 2},
                                {4, 8, {}, {}, 17}};
    const float expected[] = {8.0f, 5.0f, 13.5f, 16.0f}; // step, flat, linear, step next; a period adds 8
    for (int i = 0; i < 4; ++i) {
        const float time = static_cast<float>(i) + 0.5f;
        EXPECT_FLOAT_EQ(evaluate(keys, time + 4.0f, {0, 4}), expected[i]) << i;
        EXPECT_FLOAT_EQ(evaluate(keys, time - 8.0f, {4, 0}), i == 1 ? 5.0f : expected[i] - 24.0f) << i;
    }
}

TEST(AnimCurve, RangeOfExactlyTheThresholdCyclesOnlyRelative) {
    const auto keys = [](float range) { return std::vector<Key>{{0, 2, {}, {}, 1, 5}, {range, 5}}; };
    EXPECT_EQ(evaluate(keys(1e-5f), -5e-6f, {3, 0}), 2.0f);  // not moved: the first step
    EXPECT_EQ(evaluate(keys(1e-5f), -5e-6f, {4, 0}), -1.0f); // moved by one period
    EXPECT_EQ(evaluate(keys(9e-6f), -5e-6f, {4, 0}), 2.0f);
    EXPECT_EQ(evaluate(keys(9e-6f), 5e-5f, {0, 4}), 5.0f);
    EXPECT_EQ(evaluate(keys(2e-5f), -5e-6f, {3, 0}), 2.0f);
}

TEST(AnimCurve, CyclesLandWhereSingleStepsLand) {
    const struct {
        float first, last, time;
    } cases[] = {{0, 0.1f, 1e4f},           {0.1f, 0.7f, -1e5f},        {1000.1f, 1024.8f, -3e6f},
                 {-900.3f, -900, 5000.7f},  {16777216, 16777220, -100}, {0.3f, 1.1f, 3e5f},
                 {-7, -6.5f, 1048576.125f}, {0, 3, 3 * 1048577.0f}};
    for (const auto& c : cases) {
        const std::vector<Key> keys{{c.first, 0.3f, {}, {}, 2, 2}, {c.last, 1.6f, {}, {}, 2, 2}};
        float time = c.time;
        float offset = 0.0f;
        for (; time < c.first; time += c.last - c.first) {
            offset = offset - 1.6f + 0.3f;
        }
        for (; time >= c.last; time -= c.last - c.first) {
            offset = offset + 1.6f - 0.3f;
        }
        const float inside = evaluate(keys, time);
        EXPECT_EQ(evaluate(keys, c.time, {3, 3}), inside) << c.time;
        EXPECT_EQ(evaluate(keys, c.time, {4, 4}), inside + offset) << c.time;
    }
}

TEST(AnimCurve, CyclesEndWhereAStepNoLongerMovesTheTime) {
    const std::vector<Key> keys{{0, 0, {}, {}, 2, 2}, {3, 30, {}, {}, 2, 2}};
    EXPECT_FLOAT_EQ(evaluate(keys, 1e9f, {3, 3}), 10); // 1e9 is 1 more than a multiple of 3
    EXPECT_FLOAT_EQ(evaluate(keys, -1e9f, {3, 3}), 20);
    EXPECT_FLOAT_EQ(evaluate(keys, 1e9f, {4, 4}), 1e10f);
    EXPECT_FLOAT_EQ(evaluate(keys, -1e9f, {4, 4}), -1e10f);
    for (const float time : {3e38f, -3e38f, 7.7e20f, -7.7e20f}) {
        const float value = evaluate({{0.1f, 0, {}, {}, 2, 2}, {0.10002f, 30, {}, {}, 2, 2}}, time, {3, 3});
        EXPECT_TRUE(value >= 0 && value <= 30) << time << " " << value;
    }
    EXPECT_THROW(evaluate(keys, std::numeric_limits<float>::infinity(), {3, 3}), std::runtime_error);
    EXPECT_THROW(evaluate(keys, std::numeric_limits<float>::quiet_NaN()), std::runtime_error);
}

// The Hermite segment of t^3 is t^3 itself. A weighted one with its handles at thirds of the way is the same.
TEST(AnimCurve, ReproducesACubic) {
    const std::vector<Key> slopes{{1, 1, {}, {1, 3}}, {3, 27, {1, 27}, {}}};
    const std::vector<Key> handles{{1, 1, {}, {2, 6}}, {3, 27, {2, 54}, {}}};
    const std::vector<Key> upright{{0, 0, {}, {0, 1}}, {1, 1, {0, 1}, {}}}; // vertical handles have slope 0
    for (const float t : {1.25f, 1.5f, 2.0f, 2.75f}) {
        EXPECT_NEAR(evaluate(slopes, t), t * t * t, 1e-5f);
        EXPECT_NEAR(evaluate(handles, t, {}, true), t * t * t, 1e-5f);
        const float u = 0.5f * (t - 1.0f);
        EXPECT_NEAR(evaluate(upright, u), u * u * (3.0f - 2.0f * u), 1e-6f);
    }
    // Weighted tangents of unit length are slopes, not handles.
    const std::vector<Key> unit{{0, 0, {}, {0.6f, 0.8f}}, {5, 3, {0.8f, -0.6f}, {}}};
    EXPECT_EQ(evaluate(unit, 2, {}, true), evaluate(unit, 2));
}

TEST(AnimCurve, ZeroTangents) {
    const auto segment = [](vec2 out, vec2 in) { return std::vector<Key>{{0, 0, {}, out}, {3, 4, in, {}}}; };
    const struct {
        vec2 out, in;
        float expected; // at a quarter of the way
    } cases[] = {
        {{0, 0}, {0, 0}, 1},         // a line without types of one
        {{0, 0}, {6, 8}, 1},         // along the chord
        {{1.5f, 2}, {0, 0}, 1},      // along the chord
        {{0, 0}, {6, 0}, 0.625f},    // slopes of 0: 4 (3 u^2 - 2 u^3), weighted or not
        {{0, 0}, {-6, -8}, 0.4375f}, // against the chord: slopes 0 and 4/3
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(evaluate(segment(c.out, c.in), 0.75f, {}, true), c.expected, 1e-6f);
        EXPECT_NEAR(evaluate(segment(c.out, c.in), 0.75f), c.expected, 1e-6f);
    }
    EXPECT_EQ(evaluate({{0, 3, {}, {2, 0}}, {5e-6f, 4, {2, 0}, {2, 0}}, {1, 5}}, 1e-6f, {}, true), 0.0f); // too narrow
}

double bezier(double p0, double p1, double p2, double p3, double s) {
    const double r = 1.0 - s;
    return r * r * r * p0 + 3.0 * r * r * s * p1 + 3.0 * r * s * s * p2 + s * s * s * p3;
}

// Handles near a quadratic are left out: single precision loses the root there.
TEST(AnimCurve, WeightedSegmentsAgreeWithBisection) {
    const vec2 handles[] = {{0.5f, 0.83333333f}, {0.2f, 0.53333333f}, {0.1f, 0.2f},    {0.9f, 0.95f},
                            {0.05f, 0.95f},      {0.85f, 0.15f},      {0.3333f, 0.9f}, {0.7f, 0.7f},
                            {0.9f, 0.4f},        {0.2f, 1.0f / 3},    {0.02f, 0.34f},  {0.6f, 0.1f}};
    for (const vec2 x : handles) {
        const vec2 P0(2, -1), P1(2 + 4 * x[0], 5), P2(2 + 4 * x[1], -3), P3(6, 2);
        for (float at = 2.1f; at < 6.0f; at += 0.1f) {
            double low = 0.0;
            double high = 1.0;
            for (int i = 0; i < 60; ++i) {
                const double s = 0.5 * (low + high);
                (bezier(P0.x, P1.x, P2.x, P3.x, s) < static_cast<double>(at) ? low : high) = s;
            }
            EXPECT_NEAR(static_cast<double>(IMPL__bezier_evaluate(P0, P1, P2, P3, at)),
                        bezier(P0.y, P1.y, P2.y, P3.y, low), 2e-3)
                << x[0] << " " << x[1] << " " << at;
        }
    }
}

TEST(AnimCurve, ChoosesRoots) {
    const auto quadratic = [](float r, float s) { return IMPL__solve_quadratic({2, -2 * (r + s), 2 * r * s}); };
    EXPECT_FLOAT_EQ(quadratic(0.25f, 0.75f), 0.75f);
    EXPECT_FLOAT_EQ(quadratic(0.5f, 3), 0.5f);
    EXPECT_FLOAT_EQ(quadratic(-1, 1.0009f), 1.0009f);
    EXPECT_FLOAT_EQ(quadratic(-4, 3), -4); // the second is not tested
    EXPECT_TRUE(std::isnan(IMPL__solve_quadratic({1, 0, 1})));

    const auto cubic = [](float r, float s, float t) {
        return IMPL__solve_cubic({-(r + s + t), r * s + s * t + t * r, -r * s * t});
    };
    EXPECT_NEAR(cubic(0.1f, 0.5f, 0.9f), 0.9f, 1e-5f);
    EXPECT_NEAR(cubic(-4, 0.2f, 5), 0.2f, 1e-5f);
    EXPECT_NEAR(cubic(0.2f, 3, 7), 0.2f, 1e-5f);
    EXPECT_NEAR(cubic(-5, -0.0009f, 1.5f), -0.0009f, 1e-5f);
    EXPECT_NEAR(cubic(-5, 1.5f, 7), -5, 1e-5f);        // the third is not tested
    EXPECT_FLOAT_EQ(IMPL__solve_cubic({0, 0, -8}), 2); // nor is a single one
    EXPECT_TRUE(std::isnan(IMPL__solve_cubic({0, 0, 0})));
}

TEST(AnimCurve, LongerListsAreFineAndBadOnesAreNamed) {
    const auto call = [](svec<float, 8> times, std::size_t cutList, Ends ends = {}) {
        std::vector<std::size_t> sizes(7, times.size() + 1);
        sizes[cutList] = cutList == 0 ? sizes[0] : 1;
        return animCurve(5.0f, times, svec<float, 8>(sizes[0], 7.0f), svec<float, 8>(sizes[1]),
                         svec<float, 8>(sizes[2]), svec<int, 8>(sizes[3]), svec<float, 8>(sizes[4]),
                         svec<float, 8>(sizes[5]), svec<int, 8>(sizes[6]), ends.pre, ends.post, false);
    };
    const auto messageOf = [&](svec<float, 8> times, std::size_t cutList, Ends ends = {}) -> std::string {
        try {
            call(times, cutList, ends);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_EQ(call({1, 2}, 0), 7.0f);
    EXPECT_EQ(call({6}, 0, {0, 3}), 7.0f); // one key is enough where its side does not cycle
    EXPECT_EQ(messageOf({}, 0), "key times has 0 entries, animCurve needs 1");
    EXPECT_EQ(messageOf({1, 2}, 1), "in-tangent x has 1 entries, animCurve needs 2");
    EXPECT_EQ(messageOf({1, 2}, 6), "out-tangent types has 1 entries, animCurve needs 2");
    EXPECT_EQ(messageOf({4}, 0, {3, 3}), "key times has 1 entries, the segment search needs 2");
    EXPECT_NE(messageOf({1, 2, 2}, 0).find("key times do not ascend: entry 2"), std::string::npos);
    EXPECT_NE(messageOf({std::nanf(""), 2}, 0).find("key times do not ascend: entry 1"), std::string::npos);
}

} // namespace
} // namespace zent
