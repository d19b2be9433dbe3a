#include "zent/nodes/closestPointOnSurface.h"

#include "nodes/testSurfaces.h"

namespace zent::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// (u, v, 0) over the unit square: a Newton step leads straight to the point's foot.
Surface unitSquare(float startU = 0.0f, float endU = 1.0f) {
    Surface surface = surfaceOf(1, 1, 1, 1, 2, 2, gridPoint);
    surface.knotsU = {startU, endU};
    return surface;
}

TEST(ClosestPointOnSurface, IsNoFartherThanADenseScan) {
    for (Surface surface :
         {genericSurface(3, 3, 1, 6, 5), genericSurface(2, 3, 1, 5, 7), genericSurface(5, 4, 1, 7, 6)}) {
        const vec2 end(surface.knotsU.back(), surface.knotsV.back());
        const std::vector<float> numbers = scatter(40, surface.degreeU);
        for (std::size_t query = 0; query < 40; query += 2) {
            const vec2 foot = end * (0.5f + 0.35f * vec2(numbers[query], numbers[query + 1]));
            const vec3 normal = glm::cross(surface.dPdU(foot.x, foot.y), surface.dPdV(foot.x, foot.y));
            const vec3 point = worldPoint(surface, foot.x, foot.y) + 0.3f * glm::normalize(normal);
            float scanned = kInfinity;
            for (int i = 0; i < 100 * 100; ++i) {
                const vec2 at = end / 99.0f * vec2(static_cast<float>(i / 100), static_cast<float>(i % 100));
                scanned = std::min(scanned, glm::distance(worldPoint(surface, at.x, at.y), point));
            }
            const vec2 at = closestPointOnSurface(surface, point);
            EXPECT_LE(glm::distance(worldPoint(surface, at.x, at.y), point), scanned + 1e-5f);
        }
    }
}

TEST(ClosestPointOnSurface, SamplesFourTimesForEachControlPoint) {
    const auto check = [](const Surface& surface, std::size_t count, vec2 first) {
        const SurfaceSamples samples = compute_cls_helper(surface);
        ASSERT_EQ(samples.size(), count);
        EXPECT_EQ(samples[0].first, first);
        EXPECT_EQ(samples[1].first.x, first.x) << "U is the outer loop";
        EXPECT_EQ(samples[0].second, worldPoint(surface, first.x, first.y));
    };
    // 6 control points: 24 steps, 23 samples; but twelve twelfths add up to just under 1, and are one more.
    check(surfaceOf(3, 2, 1, 1, 6, 3, gridPoint, kShear), 23 * 12, vec2(3.0f / 24.0f, 1.0f / 12.0f));
    // A periodic U of 4 + degree counts 4; a periodic V its knots + 1 - degreeV - degreeU, with U's degree.
    check(surfaceOf(3, 2, 3, 1, 7, 4, gridPoint), 15 * 15, vec2(4.0f / 16.0f, 2.0f / 16.0f));
    check(surfaceOf(1, 3, 1, 3, 2, 7, gridPoint), 7 * 23, vec2(1.0f / 8.0f, 4.0f / 24.0f));
    // The domain is taken to start at 0. With no sample for a point left in V there is none at all.
    check(unitSquare(2.0f, 6.0f), 7 * 7, vec2(0.75f, 0.125f));
    EXPECT_TRUE(compute_cls_helper(surfaceOf(5, 1, 1, 3, 6, 4, gridPoint)).empty());
}

TEST(ClosestPointOnSurface, SearchesByTheStatedSteps) {
    const auto check = [](const char* what, const Surface& surface, vec2 start, vec3 point, vec2 expected,
                          float tolerance = 0.0f) {
        const vec2 at =
            getClosetPointOnSurface(surface, point, {{vec2(9.0f), vec3(99.0f)}, {start, point}, {vec2(0.0f), point}});
        EXPECT_NEAR(at.x, expected.x, tolerance) << what;
        EXPECT_NEAR(at.y, expected.y, tolerance) << what;
    };
    const Surface square = unitSquare();
    check("a start on the point", square, {0.3f, 0.4f}, {0.3f, 0.4f, 0.0f}, {0.3f, 0.4f});
    check("a start outside", square, {5.0f, -5.0f}, {1.0f, 0.0f, 0.0f}, {1.0f - 2.3841858e-7f, 0.0f});
    check("one step", square, {0.25f, 0.25f}, {0.75f, 0.5f, 0.5f}, {0.75f, 0.5f});
    check("a step of no length", square, {0.5f, 0.25f}, {0.5f, 0.25f, 1.0f}, {0.5f, 0.25f});
    // 2e-5 to go: the step of 0.1 is halved to 0.1 / 4096, the first that leads no farther away; the next one is below
    // the tolerance, and the result is the parameters before it.
    check("a short step stretched", square, {0.5f, 0.5f}, {0.50002f, 0.5f, 0.01f}, {0.5000244f, 0.5f}, 2e-7f);
    check("a result one step behind", square, {0.5f, 0.5f}, {0.500004f, 0.5f, 0.01f}, {0.5f, 0.5f});
    Surface wide = unitSquare(0.0f, 40.0f);
    wide.cv[2].x = wide.cv[3].x = 40.0f;
    check("a long step as it is", wide, {0.5f, 0.5f}, {39.5f, 0.5f, 0.0f}, {39.5f, 0.5f}, 1e-5f);

    check("a border", square, {0.5f, 0.5f}, {2.0f, 0.5f, 0.0f}, {1.0f, 0.5f}, 1e-5f);
    check("the very end", square, {0.5f, 0.5f}, {1.0f, 0.5f, 0.25f}, {1.0f, 0.5f});
    Surface periodic = square;
    periodic.formU = kFormPeriodic;
    check("the end, periodic", periodic, {0.5f, 0.5f}, {1.0f, 0.5f, 0.25f}, {0.0f, 0.5f});
    check("0 as the lower bound", unitSquare(2.0f, 6.0f), {4.0f, 0.5f}, {-1.0f, 0.5f, 0.0f}, {0.0f, 0.5f});

    // (v (2u - 1), v, 0): at v = 0 the derivative in U vanishes, and U stays.
    const auto fan = [](unsigned i, unsigned j) { return gridPoint(j == 0 ? 0 : 2 * i, j) - gridPoint(j, 0); };
    check("a pole", surfaceOf(1, 1, 1, 1, 2, 2, fan), {0.5f, 0.0f}, {0.0f, 0.75f, 0.0f}, {0.5f, 0.75f});
    const auto turned = [&](unsigned i, unsigned j) { return fan(j, i); };
    check("a pole of V", surfaceOf(1, 1, 1, 1, 2, 2, turned), {0.0f, 0.5f}, {0.0f, 0.75f, 0.0f}, {0.75f, 0.5f});
}

TEST(ClosestPointOnSurface, ResamplesOnlyAfterAMove) {
    Surface surface = unitSquare();
    surface.closestSamples = {{vec2(0.25f, 0.75f), vec3(0.0f)}};
    EXPECT_EQ(closestPointOnSurface(surface, vec3(0.25f, 0.75f, 1.0f)), vec2(0.25f, 0.75f));
    EXPECT_EQ(surface.closestSamples.size(), 1u);
    surface.setMatrix(kShear);
    closestPointOnSurface(surface, vec3(0.0f));
    EXPECT_EQ(surface.closestSamples.size(), 49u);
}

TEST(ClosestPointOnSurface, EndsOnWhateverItIsGiven) {
    EXPECT_EQ(getClosetPointOnSurface(unitSquare(), vec3(0.0f), {}), vec2(0.0f)) << "no sample: the domain's start";
    EXPECT_TRUE(std::isnan(getClosetPointOnSurface(unitSquare(), vec3(kNaN), {}).x));
    for (const float end : {1e38f, 1e-38f, 1e-45f, 0.0f, -1.0f, kInfinity, kNaN}) {
        for (const float coordinate : {0.0f, 1e30f, -kInfinity, kNaN}) {
            Surface surface = unitSquare(-std::abs(end), end);
            surface.knotsV = surface.knotsU;
            surface.cv[3] = vec3(coordinate, 1.0f, 0.0f);
            const vec2 at = closestPointOnSurface(surface, vec3(0.5f, coordinate, 1.0f));
            EXPECT_FALSE(at.x > std::max(end, 0.0f)) << end << " " << coordinate;
        }
    }
}

} // namespace
} // namespace zent::test
