#include "zent/nodes/curveFromSurfaceIso.h"

#include "nodes/testSurfaces.h"
#include "zent/nodes/surfaceKnotInsert.h"

#include <limits>
#include <stdexcept>

namespace zent::test {
namespace {

/// Control point (i, j) stands at (i, j, 0): a result tells which row it took.
vec3 gridPoint(unsigned i, unsigned j) {
    return {static_cast<float>(i), static_cast<float>(j), 0.0f};
}

TEST(CurveFromSurfaceIso, LiesOnTheSurface) {
    const Surface surfaces[] = {
        genericSurface(3, 2, kFormOpen, kFormOpen, 7, 5),     genericSurface(2, 4, kFormOpen, kFormOpen, 6, 7),
        genericSurface(3, 3, kFormPeriodic, kFormOpen, 8, 6), genericSurface(1, 3, kFormOpen, kFormOpen, 4, 6),
        genericSurface(3, 1, kFormOpen, kFormOpen, 6, 4),     genericSurface(5, 5, kFormOpen, kFormOpen, 8, 7),
    };
    for (const Surface& surface : surfaces) {
        for (const int direction : {0, 1, -7}) {
            // Both ends, simple inner knots (1 and 2), and between knots; fractions of the domain.
            const float end = direction != 0 ? surface.knotsU[surface.knotsU.size() - surface.degreeU]
                                             : surface.knotsV[surface.knotsV.size() - surface.degreeV];
            for (const float value : {0.0f, 0.000005f, 0.3f, 1.0f, 1.75f, 2.0f, end}) {
                const float at = std::min(value, end);
                if (direction != 0 && surface.formU == kFormPeriodic && (at < 1e-5f || at == end)) {
                    continue; // rows without refinement, as a clamped direction has them
                }
                const Curve curve = curveFromSurfaceIso(surface, direction, at / end, 0.0f, 1.0f, true);
                EXPECT_EQ(matrixOf(curve), mat4(1.0f));
                EXPECT_EQ(curve.form, direction != 0 ? surface.formV : surface.formU);
                EXPECT_EQ(curve.degree, direction != 0 ? surface.degreeV : surface.degreeU);
                for (int i = 0; i <= 20; ++i) {
                    const float t = curve.domainEnd() * static_cast<float>(i) / 20.0f;
                    EXPECT_TRUE(near(toWorld(curve, curve.localPoint(t)),
                                     direction != 0 ? worldPoint(surface, at, t) : worldPoint(surface, t, at), 5e-5f))
                        << surface.degreeU << " " << surface.degreeV << ", direction " << direction << ", " << at;
                }
            }
        }
    }
}

TEST(CurveFromSurfaceIso, RefinementKeepsTheSurface) {
    Surface original = genericSurface(3, 2, kFormPeriodic, kFormOpen, 8, 5);
    original.closestSamples.emplace_back(vec2(0.5f), vec3(0.0f));
    const Surface refined =
        surfaceKnotInsertOnV(surfaceKnotInsertOnU(surfaceKnotInsertOnU(original, 1.25f), 1.25f), 1.0f);
    EXPECT_EQ(refined.knotsU, (std::vector<float>{-2, -1, 0, 1, 1.25f, 1.25f, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(refined.knotsV, (std::vector<float>{0, 0, 1, 1, 2, 3, 3}));
    EXPECT_EQ(refined.cv.size(), 10u * 6u);
    EXPECT_EQ(refined.formU, kFormPeriodic);
    EXPECT_TRUE(refined.closestSamples.empty());
    for (int i = 0; i <= 100; ++i) {
        const float u = 5.0f * static_cast<float>(i % 11) / 10.0f;
        const float v = 3.0f * static_cast<float>(i) / 100.0f;
        EXPECT_TRUE(near(worldPoint(refined, u, v), worldPoint(original, u, v), 2e-5f));
    }
}

TEST(CurveFromSurfaceIso, TakesTheStatedRow) {
    const auto withKnots = [](Surface surface, std::vector<float> knotsU) {
        surface.knotsU = std::move(knotsU);
        return surface;
    };
    struct Case {
        const char* what;
        Surface surface;
        int direction;
        float value;
        float row;
    };
    const Case cases[] = {
        {"the start", surfaceOf(2, 2, 1, 1, 5, 3, gridPoint), 1, 0.0f, 0},
        {"below it, within the tolerance", surfaceOf(2, 2, 1, 1, 5, 3, gridPoint), 1, -9e-6f, 0},
        {"the end", surfaceOf(2, 2, 1, 1, 5, 3, gridPoint), 1, 3.0f, 4},
        // The row is counted from the knot's last repetition, past the one that lies on the surface (row 2 of both).
        {"a double inner knot", withKnots(surfaceOf(2, 2, 1, 1, 5, 3, gridPoint), {0, 0, 1, 1, 2, 2}), 1, 1.0f, 3},
        {"a triple inner knot", withKnots(surfaceOf(2, 2, 1, 1, 6, 3, gridPoint), {0, 0, 1, 1, 1, 2, 2}), 1, 1.0f, 5},
        {"the start of a periodic U", surfaceOf(3, 2, 3, 1, 9, 3, gridPoint), 1, 0.0f, 0},
        {"the end of a periodic U", surfaceOf(3, 2, 3, 1, 9, 3, gridPoint), 1, 6.0f, 5},
        // In V the overlap is counted as U's 2, not as V's 3: row 6, which repeats row 0, not 5.
        {"the end of a periodic V", surfaceOf(2, 3, 1, 3, 3, 9, gridPoint), 0, 6.0f, 0},
    };
    for (const Case& c : cases) {
        const Curve curve = c.direction != 0 ? IMPL__curveFromSurfaceIsoV(c.surface, c.value)
                                             : IMPL__curveFromSurfaceIsoU(c.surface, c.value);
        ASSERT_EQ(curve.cv.size(), 3u) << c.what;
        for (unsigned j = 0; j < 3; ++j) {
            const auto running = static_cast<float>(j);
            EXPECT_EQ(curve.cv[j], c.direction != 0 ? vec3(c.row, running, 0.0f) : vec3(running, c.row, 0.0f))
                << c.what;
        }
    }
}

TEST(CurveFromSurfaceIso, ExtrapolatesBeyondTheEnd) {
    // x = u^2 in U, by the control points 0, 0, 1.
    const auto square = [](unsigned i, unsigned j) { return vec3(i == 2 ? 1.0f : 0.0f, static_cast<float>(j), 0.0f); };
    const Curve curve = IMPL__curveFromSurfaceIsoV(surfaceOf(2, 2, 1, 1, 3, 3, square), 1.5f);
    EXPECT_EQ(curve.cv[2], vec3(2.25f, 2.0f, 0.0f));
    EXPECT_TRUE(std::isnan(
        IMPL__curveFromSurfaceIsoV(surfaceOf(2, 2, 1, 1, 3, 3, square), std::numeric_limits<float>::quiet_NaN())
            .cv[0]
            .x));
}

TEST(CurveFromSurfaceIso, ClampsFirstAndScalesToTheDomainThen) {
    // Degree 1 over the knots 2 to 6 in V, y from 2 to 6: the curve's y is its value.
    Surface surface = surfaceOf(1, 1, 1, 1, 2, 2, [](unsigned i, unsigned j) {
        return vec3(static_cast<float>(i), j == 0 ? 2.0f : 6.0f, 0.0f);
    });
    surface.knotsV = {2.0f, 6.0f};
    struct Case {
        float value, minValue, maxValue;
        bool relative;
        float y;
    };
    const Case cases[] = {
        {3.0f, 0.0f, 9.0f, false, 3.0f},     {3.0f, 4.0f, 9.0f, false, 4.0f},
        {5.0f, 0.0f, 4.0f, false, 4.0f},     {3.0f, 5.0f, 4.0f, false, 3.0f}, // no clamp with crossed bounds
        {0.25f, 0.0f, 1.0f, true, 3.0f},     {0.9f, 0.0f, 0.5f, true, 4.0f},  // fractions are clamped, not parameters
        {1.0f, 0.0f, 9.0f, false, 1.0f},                                      // extrapolates below the first knot
        {8.0f, 0.0f, 9.0f, false, 5.99999f},                                  // but ends inside the last segment
    };
    for (const Case& c : cases) {
        const Curve curve = curveFromSurfaceIso(surface, 0, c.value, c.minValue, c.maxValue, c.relative);
        EXPECT_NEAR(curve.cv[1].y, c.y, 1e-6f) << c.value << " " << c.minValue << " " << c.maxValue;
        EXPECT_EQ(curve.cv[1].x, 1.0f);
    }
    surface.knotsV = {0.0f, 4096.0f}; // so long that 1e-5 does not move its end
    EXPECT_EQ(curveFromSurfaceIso(surface, 0, 4096.0f, 0.0f, 9999.0f, false).cv[0].y, 6.0f);
}

TEST(CurveFromSurfaceIso, RejectsWhatLeadsOutsideItsLists) {
    const Surface surface = surfaceOf(2, 2, 1, 1, 4, 4, gridPoint);
    EXPECT_THROW(IMPL__curveFromSurfaceIsoV(surface, -0.001f), std::runtime_error);
    EXPECT_THROW(curveFromSurfaceIso(surface, 0, -1.0f, -5.0f, 5.0f, false), std::runtime_error);
    EXPECT_THROW(surfaceKnotInsertOnU(surface, -0.001f), std::runtime_error);
    EXPECT_THROW(curveFromSurfaceIsoInterp(surfaceOf(3, 1, 3, 1, 6, 2, gridPoint), 1, 9.0f), std::runtime_error);
    // The end's row, 3 knots - degree 1 - degree 3, is before the first.
    EXPECT_THROW(IMPL__curveFromSurfaceIsoU(surfaceOf(3, 1, 1, 3, 4, 3, gridPoint), 2.0f), std::runtime_error);
    Surface cut = surface;
    cut.cv.pop_back();
    EXPECT_THROW(curveFromSurfaceIso(cut, 0, 0.5f, 0.0f, 1.0f, false), std::runtime_error);
}

} // namespace
} // namespace zent::test
