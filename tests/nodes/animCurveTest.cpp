#include "zent/nodes/animCurve.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace zent {
namespace {

// Tangent types as in, out: 2 linear, 5 and 17 steps.
struct Key {
    float time, value;
    vec2 in{1, 0}, out{1, 0};
    int inType = 1, outType = 1;
};

float evaluate(const std::vector<Key>& keys, float time, int pre = 0, int post = 0, bool weighted = false) {
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
    const float result = animCurve(time, times, values, inX, inY, inType, outX, outY, outType, pre, post, weighted);
    const float again = KeyedCurve({times, values, inX, inY, inType, outX, outY, outType, pre, post, weighted})(time);
    EXPECT_TRUE(again == result || (std::isnan(again) && std::isnan(result))) << again << " " << result;
    return result;
}

TEST(AnimCurve, Infinities) {
    const std::vector<Key> keys{{0, 1, {2, 1}, {1, 0}, 2, 2}, {4, 9, {1, 0}, {1, -2}, 2, 2}};
    const struct {
        float time;
        int pre, post;
        float expected;
    } cases[] = {
        {-2, 0, 1, 1},   {6, 1, 0, 9},
        {-2, 1, 0, 0},   {6, 0, 1, 5}, // constant, linear
        {-1, 3, 0, 7},   {9, 0, 3, 3},
        {4, 0, 3, 1}, // cycle: the last key is the first
        {-1, 4, 0, -1},  {9, 0, 4, 19},
        {4, 0, 4, 9}, // cycle relative
        {-1, 2, 0, 0},   {0, 5, 0, 0},
        {-1, -1, 0, 0},  {4, 0, 5, 0},
        {6, 0, 1000, 0},                          // none of these
        {1e9f, 0, 3, 1}, {-1e9f, 4, 0, 1 - 2e9f}, // a step does not move these
    };
    for (const auto& c : cases) {
        EXPECT_FLOAT_EQ(evaluate(keys, c.time, c.pre, c.post), c.expected) << c.time << " " << c.pre << c.post;
    }
    EXPECT_TRUE(std::isnan(evaluate({{0, 1, {0, 0}}, {1, 2}}, 0, 1, 0))); // 0 / 0 comes as it is
    EXPECT_THROW(evaluate(keys, std::numeric_limits<float>::infinity(), 3, 3), std::runtime_error);

    // A range of exactly 1e-5 cycles only relative: the cubic half a range before its start, or in its middle.
    const auto narrow = [](float range) { return std::vector<Key>{{0, 2}, {range, 5}}; };
    EXPECT_FLOAT_EQ(evaluate(narrow(1e-5f), -5e-6f, 3, 0), 5.0f);
    EXPECT_FLOAT_EQ(evaluate(narrow(1e-5f), -5e-6f, 4, 0), 0.5f);
    EXPECT_EQ(evaluate(narrow(9e-6f), 5e-5f, 0, 4), 5.0f);
}

TEST(AnimCurve, RelativeOffsetIsLeftOutOfFlatSegmentsOnly) {
    const std::vector<Key> keys{
        {0, 0, {}, {}, 1, 5}, {1, 5}, {2, 5, {}, {}, 1, 2}, {3, 6, {}, {}, 2}, {4, 8, {}, {}, 17}};
    const float expected[] = {8.0f, 5.0f, 13.5f, 16.0f}; // step, flat, linear, step next; a period adds 8
    for (int i = 0; i < 4; ++i) {
        EXPECT_FLOAT_EQ(evaluate(keys, static_cast<float>(i) + 4.5f, 0, 4), expected[i]) << i;
        EXPECT_FLOAT_EQ(evaluate(keys, static_cast<float>(i) - 7.5f, 4, 0), i == 1 ? 5.0f : expected[i] - 24) << i;
    }
}

TEST(AnimCurve, CyclesLandWhereSingleStepsLand) {
    const float cases[][3] = {{0, 0.1f, 1e4f}, {0.1f, 0.7f, -1e5f}, {1000.1f, 1024.8f, -3e6f}, {-7, -6.5f, 1e6f}};
    for (const auto& [first, last, start] : cases) {
        const std::vector<Key> keys{{first, 0.3f, {}, {}, 2, 2}, {last, 1.6f, {}, {}, 2, 2}};
        float time = start;
        float offset = 0.0f;
        while (time < first) {
            time += last - first;
            offset = offset - 1.6f + 0.3f;
        }
        while (time >= last) {
            time -= last - first;
            offset = offset + 1.6f - 0.3f;
        }
        EXPECT_EQ(evaluate(keys, start, 3, 3), evaluate(keys, time)) << start;
        EXPECT_EQ(evaluate(keys, start, 4, 4), evaluate(keys, time) + offset) << start;
    }
}

TEST(AnimCurve, Segments) {
    const auto segment = [](vec2 out, vec2 in) { return std::vector<Key>{{0, 0, {}, out}, {3, 4, in, {}}}; };
    const struct {
        std::vector<Key> keys;
        float time, weighted, unweighted;
    } cases[] = {
        // The slopes and ends of t^3. As handles these reach a sixth into the segment; twice as long, a third.
        {{{1, 1, {}, {1, 3}, 1, 2}, {3, 27, {1, 27}, {}}}, 2, 11, 8},
        {{{1, 1, {}, {2, 6}}, {3, 27, {2, 54}, {}, 2}}, 1.5f, 3.375f, 3.375f},
        {segment({0.6f, 0.8f}, {0.8f, -0.6f}), 1.5f, 2.78125f, 2.78125f},     // weighted of unit length: slopes
        {segment({0, 1}, {0, 1}), 0.75f, 0.625f, 0.625f},                     // upright: slope 0
        {segment({0, 0}, {0, 0}), 0.75f, 1, 1},                               // a line without types of one
        {segment({0, 0}, {6, 8}), 0.75f, 1, 1},                               // along the chord
        {segment({1.5f, 2}, {0, 0}), 0.75f, 1, 1},                            // along the chord
        {segment({0, 0}, {6, 0}), 0.75f, 0.625f, 0.625f},                     // slopes of 0, weighted or not
        {{{0, 3, {}, {2, 0}}, {5e-6f, 4, {2, 0}}, {1, 5}}, 1e-6f, 0, 3.104f}, // too narrow for a Bezier
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(evaluate(c.keys, c.time, 0, 0, true), c.weighted, 1e-5f) << &c - cases;
        EXPECT_NEAR(evaluate(c.keys, c.time), c.unweighted, 1e-5f) << &c - cases;
    }
}

double bezier(double p0, double p1, double p2, double p3, double s) {
    const double r = 1.0 - s;
    return r * r * r * p0 + 3.0 * r * r * s * p1 + 3.0 * r * s * s * p2 + s * s * s * p3;
}

// Handles near those of a quadratic are left out: single precision loses the root there.
TEST(AnimCurve, WeightedSegmentsAgreeWithBisection) {
    const vec2 handles[] = {{0.5f, 0.83333333f}, {0.2f, 0.53333333f}, {0.1f, 0.2f}, {0.9f, 0.95f}, {0.05f, 0.95f},
                            {0.85f, 0.15f},      {0.3333f, 0.9f},     {0.7f, 0.7f}, {0.9f, 0.4f},  {0.02f, 0.34f}};
    for (const vec2 x : handles) {
        const vec2 P0(2, -1), P1(2 + 4 * x[0], 5), P2(2 + 4 * x[1], -3), P3(6, 2);
        for (int step = 1; step < 40; ++step) {
            const float at = 2 + 0.1f * static_cast<float>(step);
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

// The polynomial of x, rounded in another order, misses this by 0.008.
TEST(AnimCurve, TheCubicOfTimeIsTheExplicitOne) {
    const std::vector<Key> keys{{0, 0, {}, {1.31f, 0.5f}}, {1, 1, {0.72f, 0.25f}, {}}};
    EXPECT_FLOAT_EQ(evaluate(keys, 0.3f, 0, 0, true), 0.20439443f);
}

TEST(AnimCurve, ChoosesRoots) {
    // Neither the second of two roots nor the third of three is tested, nor a single one.
    const float quadratics[][3] = {{0.25f, 0.75f, 0.75f}, {0.5f, 3, 0.5f}, {-1, 1.0009f, 1.0009f}, {-4, 3, -4}};
    for (const auto& [r, s, chosen] : quadratics) {
        EXPECT_FLOAT_EQ(IMPL__solve_quadratic({2, -2 * (r + s), 2 * r * s}), chosen);
    }
    const float cubics[][4] = {
        {0.1f, 0.5f, 0.9f, 0.9f}, {-4, 0.2f, 5, 0.2f}, {0.2f, 3, 7, 0.2f}, {-5, 1.5f, 7, -5}, {-3, -2, 5, -3}};
    for (const auto& [r, s, t, chosen] : cubics) {
        EXPECT_NEAR(IMPL__solve_cubic({-(r + s + t), r * s + s * t + t * r, -r * s * t}), chosen, 1e-5f);
    }
    EXPECT_FLOAT_EQ(IMPL__solve_cubic({0, 0, -8}), 2);
    EXPECT_TRUE(std::isnan(IMPL__solve_cubic({0, 0, 0})));
    EXPECT_TRUE(std::isnan(IMPL__solve_quadratic({1, 0, 1})));
}

TEST(AnimCurve, LongerListsAreFineAndBadOnesAreNamed) {
    const auto outcome = [](svec<float, 8> times, std::size_t cut, int infinity = 0, float time = 5) -> std::string {
        const auto n = [&](std::size_t list) { return list == cut ? 1 : times.size() + 1; };
        try {
            return std::to_string(animCurve(time, times, {7, 7, 7}, svec<float, 8>(n(1)), svec<float, 8>(n(2)),
                                            svec<int, 8>(n(3)), svec<float, 8>(n(4)), svec<float, 8>(n(5)),
                                            svec<int, 8>(n(6)), 0, infinity, false));
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    };
    EXPECT_EQ(outcome({1, 2}, 0), "7.000000");
    EXPECT_EQ(outcome({6}, 0, 3), "7.000000"); // one key is enough where its side does not cycle
    EXPECT_EQ(outcome({4}, 0, 3), "key times has 1 entries, the segment search needs 2");
    EXPECT_EQ(outcome({1, 2}, 0, 3, HUGE_VALF), "time is inf, which lies in no segment of the curve");
    EXPECT_EQ(outcome({}, 0), "key times has 0 entries, animCurve needs 1");
    EXPECT_EQ(outcome({1, 2}, 1), "in-tangent x has 1 entries, animCurve needs 2");
    EXPECT_EQ(outcome({1, 2}, 6), "out-tangent types has 1 entries, animCurve needs 2");
    EXPECT_EQ(outcome({1, 2, 2}, 0), "key times do not ascend: entry 2 is 2 after 2");
    EXPECT_EQ(outcome({std::nanf(""), 2}, 0), "key times do not ascend: entry 1 is 2 after nan");
}

} // namespace
} // namespace zent
