#include "zent/nodes/deformBend.h"
#include "zent/nodes/deformSine.h"

#include "nodes/shapesForDeformers.h"

namespace zent::test {
namespace {

const float kHalfPi = static_cast<float>(kPi / 2.0);
const float kRadius = 1.0f / kHalfPi; // of the bend that turns by a right angle at a height of 1

TEST(Bend, PointsOfTheArc) {
    struct Case {
        vec3 point;
        float low;
        float high;
        vec3 expected;
    };
    const float r = kRadius;
    const Case cases[] = {
        {{0, 1, 0}, -1, 1, {r, r, 0}},
        {{0.1f, 1, 5}, -1, 1, {r, r - 0.1f, 5}}, // x runs along the radius, z stays
        {{0, 3, 0}, -1, 1, {r + 2, r, 0}},       // straight on beyond the bound
        {{0, -1, 0}, -1, 1, {r, -r, 0}},
        {{0.1f, -3, 0}, -1, 1, {r + 2, -r + 0.1f, 0}},
        {{7, 0, 0}, -1, 1, {7, 0, 0}},
        {{7, 0.5f, 0}, -1, 0, {7, 0.5f, 0}}, // bounded to a height of nothing: as it is
        {{0, 0, 0}, 1, 1, {r - 1, r, 0}},    // a positive low bound takes y = 0 with it,
        {{0, 1, 0}, 2, 1, {r, r, 0}},        // but no positive y
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        for (const float envelope : {1.0f, 0.5f, 0.00001f}) { // only gates
            Mesh mesh = meshOf({c.point});
            expectNear(deformBendMesh(mesh, envelope, mat4(1.0f), kHalfPi, c.low, c.high).points[0], c.expected);
        }
        for (const auto& [envelope, curvature] :
             {std::pair(0.0f, kHalfPi), {-1.0f, kHalfPi}, {1.0f, 0.0f}, {1.0f, -1.0f}}) {
            Mesh mesh = meshOf({c.point});
            EXPECT_EQ(deformBendMesh(mesh, envelope, mat4(1.0f), curvature, c.low, c.high).points[0], c.point);
        }
    }
}

TEST(Bend, HandleSpaceAndPart) {
    // The handle's Y is -x of the world: (-1, 0, 0) there is a height of 1. The mesh stands at x = 5.
    const vec3 point(-6, 0, 0);
    const vec3 bent(-kRadius - 5, kRadius, 0);
    Mesh mesh = meshOf({point, point, point}, translation(vec3(5, 0, 0)));
    expectNear(deformBendPartialMesh(mesh, 0.5f, {2u, 0u, 2u, 70u}, quarterTurn(), kHalfPi, -1, 1).points,
               {bent, point, bent});
    expectNear(
        deformBendMesh(mesh = meshOf({point}, translation(vec3(5, 0, 0))), 1, quarterTurn(), kHalfPi, -1, 1).points,
        {bent});
}

TEST(Sine, DisplacementByHeight) {
    struct Case {
        float y, envelope, wavelength, amplitude, offset, low, high;
        float expected;
    };
    const Case cases[] = {
        {0.5f, 0.25f, 2, 3, 0, -9, 9, 0.75f}, // the envelope scales the amplitude
        {0.5f, 1, 4, 1, 0, -9, 9, std::sqrt(0.5f)},
        {0.0f, 1, 2, 1, 0.5f, -9, 9, 1},
        {7.0f, 1, 2, 1, 0, -9, 0.5f, 1}, // stays as at the bound
        {-7.0f, 1, 2, 1, 0, -0.5f, 9, -1},
        {0.0f, 1, 2, 1, 0, 0.5f, 9, 1}, // and both bounds act on either side of 0
        {0.5f, 0, 2, 1, 0, -9, 9, 0},
        {0.5f, -1, 2, 1, 0, -9, 9, 0},
        {0.5f, 1, 0, 1, 0, -9, 9, 0},
        {0.5f, 1, -2, 1, 0, -9, 9, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        // The handle's X is y of the world, its Y -x; the shape stands at x = 5.
        Surface surface = surfaceOf(1, 1, 1, 1, {vec3(-5 - c.y, 4, 3)}, translation(vec3(5, 0, 0)));
        surface.closestSamples.emplace_back(vec2(0.0f), vec3(0.0f));
        deformSineSurface(surface, c.envelope, quarterTurn(), c.wavelength, c.amplitude, c.offset, c.low, c.high);
        expectNear(surface.cv[0], vec3(-5 - c.y, 4 + c.expected, 3));
        EXPECT_EQ(surface.closestSamples.empty(), c.expected != 0.0f);
        if (c.expected != 0.0f && std::abs(c.y) < 7.0f && c.low < 0.0f) {
            EXPECT_NEAR(deformSine__IMPL__delta(c.y, c.amplitude, c.wavelength, c.offset, c.envelope), c.expected,
                        1e-5f);
        }
    }
}

TEST(Sine, PeriodicOverlaps) {
    const vec3 rest(0, 0.5f, 0);
    const vec3 moved(1, 0.5f, 0);
    Curve curve = curveOf(2, kFormPeriodic, {rest, rest, vec3(0.0f), vec3(8.0f), vec3(8.0f)});
    deformSineCurve(curve, 1, mat4(1.0f), 2, 1, 0, -9, 9);
    expectNear(curve.cv, {moved, moved, vec3(0.0f), moved, moved});
    Surface surface = surfaceOf(kFormPeriodic, 1, 3, 1, {rest, rest, rest});
    deformSineSurface(surface, 1, mat4(1.0f), 2, 1, 0, -9, 9);
    expectNear(surface.cv, {moved, moved, vec3(2, 0.5f, 0)}); // the overlap is visited after what it repeats
}

} // namespace
} // namespace zent::test
