#include "zent/nodes/closestPointOnSurface.h"

#include "nodes/testSurfaces.h"

#include <cmath>
#include <limits>

namespace zent::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(ClosestPointOnSurface, IsNoFartherThanADenseScan) {
    const Surface surfaces[] = {
        genericSurface(3, 3, kFormOpen, kFormOpen, 6, 5),
        genericSurface(2, 3, kFormOpen, kFormOpen, 5, 7),
        genericSurface(3, 2, kFormPeriodic, kFormOpen, 9, 5),
        genericSurface(5, 4, kFormOpen, kFormOpen, 7, 6),
    };
    std::mt19937 random(7);
    std::uniform_real_distribution<float> inner(0.15f, 0.85f);
    for (Surface surface : surfaces) {
        const float endU = surface.knotsU[surface.knotsU.size() - surface.degreeU];
        const float endV = surface.knotsV[surface.knotsV.size() - surface.degreeV];
        for (int query = 0; query < 20; ++query) {
            const vec2 foot(inner(random) * endU, inner(random) * endV);
            const vec3 normal = glm::cross(surface.dPdU(foot.x, foot.y), surface.dPdV(foot.x, foot.y));
            const vec3 point = worldPoint(surface, foot.x, foot.y) + 0.3f * glm::normalize(normal);
            float scanned = kInfinity;
            for (int i = 0; i < 100 * 100; ++i) {
                const vec3 sample = worldPoint(surface, endU * static_cast<float>(i % 100) / 99.0f,
                                               endV * static_cast<float>(i / 100) / 99.0f);
                scanned = std::min(scanned, glm::length(sample - point));
            }
            const vec2 at = closestPointOnSurface(surface, point);
            EXPECT_LE(glm::length(worldPoint(surface, at.x, at.y) - point), scanned + 1e-5f)
                << "degrees " << surface.degreeU << " " << surface.degreeV << ", query " << query;
        }
    }
}

TEST(ClosestPointOnSurface, SamplesFourTimesForEachControlPoint) {
    struct Case {
        const char* what;
        Surface surface;
        std::size_t samples;
        vec2 first;
    };
    const auto anywhere = [](unsigned i, unsigned j) {
        return vec3(static_cast<float>(i), static_cast<float>(j), 0.0f);
    };
    // 6 control points in a bicubic open direction: 24 steps over 3 spans, 23 samples. A periodic one of 4 + degree
    // counts 4 in U; in V it counts knots + 1 - degreeV - degreeU, with U's degree.
    const Case cases[] = {
        {"open", surfaceOf(3, 2, 1, 1, 6, 3, anywhere), 23 * 12, vec2(3.0f / 24.0f, 1.0f / 12.0f)},
        {"periodic U", surfaceOf(3, 2, 3, 1, 7, 4, anywhere), 15 * 15, vec2(4.0f / 16.0f, 2.0f / 16.0f)},
        {"periodic V", surfaceOf(1, 3, 1, 3, 2, 7, anywhere), 7 * 23, vec2(1.0f / 8.0f, 4.0f / 24.0f)},
        {"no sample left in V", surfaceOf(5, 1, 1, 3, 6, 4, anywhere), 0, vec2(0.0f)},
    };
    for (const Case& c : cases) {
        const SurfaceSamples samples = compute_cls_helper(c.surface);
        ASSERT_EQ(samples.size(), c.samples) << c.what;
        if (!samples.empty()) {
            EXPECT_EQ(samples.front().first, c.first) << c.what;
            EXPECT_EQ(samples[1].first.x, c.first.x) << c.what << ": U is the outer loop";
            EXPECT_EQ(samples.front().second, worldPoint(c.surface, c.first.x, c.first.y)) << c.what;
        }
    }
    Surface late = unitSquare();
    late.knotsU = {2.0f, 6.0f};
    EXPECT_EQ(compute_cls_helper(late).front().first.x, 0.75f) << "the domain is taken to start at 0";
}

struct SearchCase {
    const char* what;
    Surface surface;
    vec2 start;
    vec3 point;
    vec2 expected;
    float tolerance;
};

// Over the unit square the Newton step is exact: it leads straight to the point's foot.
TEST(ClosestPointOnSurface, SearchesByTheStatedSteps) {
    Surface periodic = unitSquare();
    periodic.formU = kFormPeriodic;
    Surface late = unitSquare();
    late.knotsU = {2.0f, 6.0f};
    Surface wide = unitSquare();
    wide.knotsU = {0.0f, 40.0f};
    wide.cv[2].x = wide.cv[3].x = 40.0f;
    // (v (2u - 1), v, 0): at v = 0 all u are one point.
    const auto fan = [](unsigned i, unsigned j) {
        return j == 0 ? vec3(0.0f) : vec3(2.0f * static_cast<float>(i) - 1.0f, 1.0f, 0.0f);
    };
    const Surface poleV = surfaceOf(1, 1, 1, 1, 2, 2, fan);
    const Surface poleU = surfaceOf(1, 1, 1, 1, 2, 2, [&](unsigned i, unsigned j) { return fan(j, i); });
    const float end = 1.0f - 2.3841858e-7f;

    const SearchCase cases[] = {
        {"a start on the point", unitSquare(), {0.3f, 0.4f}, {0.3f, 0.4f, 0.0f}, {0.3f, 0.4f}, 0.0f},
        {"a start beyond the domain", unitSquare(), {5.0f, -5.0f}, {1.0f, 0.0f, 0.0f}, {end, 0.0f}, 0.0f},
        {"one step, exact", unitSquare(), {0.25f, 0.25f}, {0.75f, 0.5f, 0.5f}, {0.75f, 0.5f}, 0.0f},
        {"no limit on a long step", wide, {0.5f, 0.5f}, {39.5f, 0.5f, 0.0f}, {39.5f, 0.5f}, 1e-5f},
        // 2e-5 to go: the step of 0.1 is halved to 0.1 / 4096, the first that leads no farther away, then the next one,
        // 0.1 / 16384, is below the tolerance and not taken.
        {"a short step stretched", unitSquare(), {0.5f, 0.5f}, {0.50002f, 0.5f, 0.01f}, {0.5000244f, 0.5f}, 2e-7f},
        {"a result one step behind", unitSquare(), {0.5f, 0.5f}, {0.500004f, 0.5f, 0.01f}, {0.5f, 0.5f}, 0.0f},
        {"a step of no length", unitSquare(), {0.5f, 0.25f}, {0.5f, 0.25f, 1.0f}, {0.5f, 0.25f}, 0.0f},
        {"a border", unitSquare(), {0.5f, 0.5f}, {2.0f, 0.5f, 0.0f}, {1.0f, 0.5f}, 1e-5f},
        {"the end of an open direction", unitSquare(), {0.5f, 0.5f}, {1.0f, 0.5f, 0.25f}, {1.0f, 0.5f}, 0.0f},
        {"the end of a periodic one", periodic, {0.5f, 0.5f}, {1.0f, 0.5f, 0.25f}, {0.0f, 0.5f}, 0.0f},
        {"a lower bound of 0, not the domain's start", late, {4.0f, 0.5f}, {-1.0f, 0.5f, 0.0f}, {0.0f, 0.5f}, 0.0f},
        {"a pole in U", poleV, {0.5f, 0.0f}, {0.0f, 0.75f, 0.0f}, {0.5f, 0.75f}, 0.0f},
        {"a pole in V", poleU, {0.0f, 0.5f}, {0.0f, 0.75f, 0.0f}, {0.75f, 0.5f}, 0.0f},
    };
    for (const SearchCase& c : cases) {
        const SurfaceSamples start = {{c.start, worldPoint(c.surface, c.start.x, c.start.y)}};
        const vec2 at = getClosetPointOnSurface(c.surface, c.point, start);
        EXPECT_NEAR(at.x, c.expected.x, c.tolerance) << c.what;
        EXPECT_NEAR(at.y, c.expected.y, c.tolerance) << c.what;
    }
}

TEST(ClosestPointOnSurface, StartsFromTheFirstOfTheNearestSamples) {
    const Surface surface = unitSquare();
    const vec3 point(0.5f, 0.5f, 1.0f);
    const SurfaceSamples tie = {{vec2(0.5f), vec3(9.0f)}, {vec2(0.5f, 0.5f), point}, {vec2(0.0f), point}};
    EXPECT_EQ(getClosetPointOnSurface(surface, point, tie), vec2(0.5f));
    // No sample: from the domain's start, where this point is.
    EXPECT_EQ(getClosetPointOnSurface(surface, vec3(0.0f), {}), vec2(0.0f));
}

TEST(ClosestPointOnSurface, ResamplesOnlyAfterAMove) {
    Surface surface = unitSquare();
    surface.closestSamples = {{vec2(0.25f, 0.75f), vec3(0.0f)}};
    EXPECT_EQ(closestPointOnSurface(surface, vec3(0.25f, 0.75f, 1.0f)), vec2(0.25f, 0.75f));
    EXPECT_EQ(surface.closestSamples.size(), 1u);
    surface.setMatrix(composeMatrix(vec3(10.0f, 0.0f, 0.0f), vec3(0.0f), 0, vec3(2.0f)));
    const vec2 at = closestPointOnSurface(surface, vec3(10.5f, 1.5f, 1.0f));
    EXPECT_NEAR(at.x, 0.25f, 1e-4f);
    EXPECT_NEAR(at.y, 0.75f, 1e-4f);
    EXPECT_EQ(surface.closestSamples.size(), 49u);
}

TEST(ClosestPointOnSurface, EndsOnWhateverItIsGiven) {
    Surface flat = unitSquare();
    EXPECT_TRUE(std::isnan(closestPointOnSurface(flat, vec3(kNaN)).x));
    for (const float end : {1e38f, 1e-38f, 1e-45f, 0.0f, -1.0f, kInfinity, kNaN}) {
        for (const float coordinate : {0.0f, 1e30f, -kInfinity, kNaN}) {
            Surface surface = unitSquare();
            surface.knotsU = surface.knotsV = {-std::abs(end), end};
            surface.cv[3] = vec3(coordinate, 1.0f, 0.0f);
            const vec2 at = closestPointOnSurface(surface, vec3(0.5f, coordinate, 1.0f));
            EXPECT_FALSE(at.x > std::max(end, 0.0f)) << end << " " << coordinate;
        }
    }
}

} // namespace
} // namespace zent::test
