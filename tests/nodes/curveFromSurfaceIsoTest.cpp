#include "zent/nodes/curveFromSurfaceIso.h"

#include "nodes/testSurfaces.h"
#include "zent/nodes/surfaceKnotInsert.h"

namespace zent::test {
namespace {

TEST(CurveFromSurfaceIso, LiesOnTheSurface) {
    for (const Surface& surface :
         {genericSurface(3, 2, 1, 7, 5), genericSurface(2, 4, 1, 6, 7), genericSurface(3, 3, 3, 8, 6),
          genericSurface(1, 3, 1, 4, 6), genericSurface(3, 1, 1, 6, 4), genericSurface(5, 5, 1, 8, 7)}) {
        for (const int direction : {0, 1, -7}) {
            const auto spans = static_cast<float>(direction != 0 ? surface.cvCountU() - surface.degreeU
                                                                 : surface.cvCountV() - surface.degreeV);
            for (float value : {0.0f, 0.3f, 1.0f, 1.75f, 2.0f, spans}) {
                if (direction != 0 && surface.formU == kFormPeriodic && (value < 1e-5f || value == spans)) {
                    continue; // a periodic direction's ends take rows that do not lie on the surface
                }
                value = std::min(value, spans);
                const Curve curve = curveFromSurfaceIso(surface, direction, value / spans, 0.0f, 1.0f, true);
                EXPECT_EQ(matrixOf(curve), mat4(1.0f));
                EXPECT_EQ(curve.form, direction != 0 ? surface.formV : surface.formU);
                for (float t = 0.0f; t <= curve.domainEnd(); t += 0.0625f) {
                    EXPECT_TRUE(near(curve.localPoint(t),
                                     direction != 0 ? worldPoint(surface, value, t) : worldPoint(surface, t, value),
                                     5e-5f))
                        << surface.degreeU << " " << surface.degreeV << ", direction " << direction << ", " << value;
                }
            }
        }
    }
}

TEST(CurveFromSurfaceIso, RefinementKeepsTheSurface) {
    const Surface original = genericSurface(3, 2, 3, 8, 5);
    const Surface refined =
        surfaceKnotInsertOnV(surfaceKnotInsertOnU(surfaceKnotInsertOnU(original, 1.25f), 1.25f), 1.0f);
    EXPECT_EQ(refined.knotsU, (std::vector<float>{-2, -1, 0, 1, 1.25f, 1.25f, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(refined.knotsV, (std::vector<float>{0, 0, 1, 1, 2, 3, 3}));
    EXPECT_EQ(refined.cv.size(), 10u * 6u);
    EXPECT_EQ(refined.formU, kFormPeriodic);
    for (float t = 0.0f; t < 1.0f; t += 0.01f) {
        const vec2 at(5.0f * t, 3.0f * std::fmod(7.0f * t, 1.0f));
        EXPECT_TRUE(near(worldPoint(refined, at.x, at.y), worldPoint(original, at.x, at.y), 2e-5f));
    }
}

TEST(CurveFromSurfaceIso, TakesTheStatedRow) {
    // Control point (i, j) stands at (i, j, 0): a point of the curve tells its row.
    Surface surface = surfaceOf(2, 2, 1, 1, 5, 3, gridPoint);
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surface, -9e-6f).cv[1], vec3(0, 1, 0)) << "below the start by the tolerance";
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surface, 3.0f).cv[1], vec3(4, 1, 0)) << "the end";
    // At a multiple inner knot the row is the one after the knot's last repetition; row 2 would lie on the surface.
    surface.knotsU = {0, 0, 1, 1, 2, 2};
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surface, 1.0f).cv[1], vec3(3, 1, 0)) << "a double knot";
    surface = surfaceOf(2, 2, 1, 1, 6, 3, gridPoint);
    surface.knotsU = {0, 0, 1, 1, 1, 2, 2};
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surface, 1.0f).cv[1], vec3(5, 1, 0)) << "a triple knot";
    // The rows of a periodic end leave the overlap out, but V counts it in U's degree, 2 for 3: row 6 repeats row 0.
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surfaceOf(3, 2, 3, 1, 9, 3, gridPoint), 6.0f).cv[1], vec3(5, 1, 0));
    EXPECT_EQ(IMPL__curveFromSurfaceIsoU(surfaceOf(2, 3, 1, 3, 3, 9, gridPoint), 6.0f).cv[1], vec3(1, 0, 0));
    // Beyond the end the polynomial runs on: x = u^2 has the control points 0, 0, 1.
    const auto square = [](unsigned i, unsigned j) { return gridPoint(i / 2, j); };
    surface = surfaceOf(2, 2, 1, 1, 3, 3, square);
    EXPECT_EQ(IMPL__curveFromSurfaceIsoV(surface, 1.5f).cv[2], vec3(2.25f, 2.0f, 0.0f));
    EXPECT_TRUE(std::isnan(IMPL__curveFromSurfaceIsoV(surface, std::numeric_limits<float>::quiet_NaN()).cv[0].x));
}

TEST(CurveFromSurfaceIso, ClampsFirstAndScalesToTheDomainThen) {
    // y is the V parameter.
    const auto place = [](unsigned i, unsigned j) { return gridPoint(i, 2 + 4 * j); };
    Surface surface = surfaceOf(1, 1, 1, 1, 2, 2, place);
    surface.knotsV = {2.0f, 6.0f};
    const auto check = [&](float value, float minValue, float maxValue, bool relative, float y) {
        const Curve curve = curveFromSurfaceIso(surface, 0, value, minValue, maxValue, relative);
        EXPECT_TRUE(near(curve.cv[1], vec3(1.0f, y, 0.0f), 1e-6f)) << value << " " << minValue << " " << maxValue;
    };
    check(3.0f, 4.0f, 9.0f, false, 4.0f);
    check(5.0f, 0.0f, 4.0f, false, 4.0f);
    check(3.0f, 5.0f, 4.0f, false, 3.0f);     // crossed bounds are not used
    check(0.9f, 0.0f, 0.5f, true, 4.0f);      // the bounds are fractions, too
    check(1.0f, 0.0f, 9.0f, false, 1.0f);     // below the first knot it extrapolates,
    check(8.0f, 0.0f, 9.0f, false, 5.99999f); // beyond the last it ends
    surface.knotsV = {0.0f, 4096.0f};         // which 1e-5 does not move
    check(4096.0f, 0.0f, 9999.0f, false, 6.0f);
}

TEST(CurveFromSurfaceIso, RejectsWhatLeadsOutsideItsLists) {
    Surface surface = surfaceOf(2, 2, 1, 1, 4, 4, gridPoint);
    EXPECT_EQ(errorOf([&] { IMPL__curveFromSurfaceIsoV(surface, -0.5f); }),
              "isoparm value is -0.5, the domain starts at 0");
    EXPECT_EQ(errorOf([&] { surfaceKnotInsertOnU(surface, -0.5f); }), "knot in U is -0.5, the domain starts at 0");
    // The end's row is before the first: 3 knots, less V's degree 1 and U's 3.
    EXPECT_EQ(errorOf([] { IMPL__curveFromSurfaceIsoU(surfaceOf(3, 1, 1, 3, 4, 3, gridPoint), 2.0f); }),
              "knots in V has 3 entries, the row at the domain's end needs 4");
    EXPECT_EQ(errorOf([] { curveFromSurfaceIsoInterp(surfaceOf(3, 1, 3, 1, 6, 2, gridPoint), 1, 9.0f); }),
              "control points across the curve has 6 entries, the segment of the value needs 8");
    surface.cv.pop_back();
    EXPECT_NE(errorOf([&] { curveFromSurfaceIso(surface, 0, 0.5f, 0.0f, 1.0f, false); }), "none");
}

} // namespace
} // namespace zent::test
