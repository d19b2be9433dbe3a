#include "zent/nodes/ffd.h"

#include "nodes/shapesForDeformers.h"

#include <cmath>

namespace zent::test {
namespace {

/// A lattice at rest, evenly spaced over -0.5 to 0.5 (a direction of one point stands at -0.5).
Lattice restLattice(unsigned s, unsigned t, unsigned u) {
    const auto place = [](unsigned i, unsigned n) {
        return n < 2 ? -0.5f : static_cast<float>(i) / static_cast<float>(n - 1) - 0.5f;
    };
    std::vector<vec3> points;
    for (unsigned k = 0; k < u; ++k) {
        for (unsigned j = 0; j < t; ++j) {
            for (unsigned i = 0; i < s; ++i) {
                points.emplace_back(place(i, s), place(j, t), place(k, u));
            }
        }
    }
    return latticeOf(s, t, u, points);
}

/// The lattice point that alone stands at (1, 0, 0), so that a point's x reads as its weight.
Lattice probe(unsigned s, unsigned t, unsigned u, unsigned index) {
    std::vector<vec3> points(std::size_t{s} * t * u, vec3(0.0f));
    points[index] = vec3(1, 0, 0);
    return latticeOf(s, t, u, points);
}

vec3 through(const Lattice& lattice, vec3 point, bool local = false, unsigned influence = 0) {
    Mesh mesh = meshOf({point});
    return ffdMesh(mesh, lattice, mat4(1.0f), mat4(1.0f), local, influence, influence, influence).points[0];
}

TEST(Ffd, RestLatticeMovesNothing) {
    const std::vector<vec3> points{vec3(0.1f, -0.2f, 0.3f), vec3(0.5f), vec3(-0.5f), vec3(0.8f, -0.7f, 0.6f)};
    const std::array<unsigned, 3> sizes[] = {{2, 2, 2}, {2, 3, 5}, {4, 4, 4}, {7, 2, 11}, {11, 8, 3}};
    for (const auto& [s, t, u] : sizes) {
        SCOPED_TRACE(testing::Message() << s << " " << t << " " << u);
        const mat4 base = translation(vec3(3, 1, 2)) * quarterTurn() * scaling(vec3(2, 3, 4));
        Mesh mesh = meshOf(points, base * translation(vec3(0.0f)));
        ffdMesh(mesh, restLattice(s, t, u), base, base, false, 0, 0, 0);
        expectNear(mesh.points, points, 1e-4f);
        for (const vec3& point : points) { // a window of the whole lattice is no window
            expectNear(through(restLattice(s, t, u), point, true, 50), point, 1e-4f);
        }
    }
}

TEST(Ffd, OrderOfTheMatrices) {
    // The point (0, 0, 0) of a mesh at (1, 2, 0) is (0, 2, 0) of the base lattice, and the rest lattice hands it on:
    // turned to (-2, 0, 0), lifted to (-2, 0, 5) in the world, less the mesh's own place.
    Mesh mesh = meshOf({vec3(0.0f)}, translation(vec3(1, 2, 0)));
    ffdMesh(mesh, restLattice(2, 2, 2), translation(vec3(0, 0, 5)) * quarterTurn(), translation(vec3(1, 0, 0)), false,
            0, 0, 0);
    expectNear(mesh.points[0], vec3(-3, -2, 5));
}

TEST(Ffd, WeightsOfALatticePoint) {
    struct Case {
        Lattice lattice;
        vec3 point;
        bool local;
        unsigned influence;
        float expected;
    };
    const vec3 quarter(-0.25f, 0.0f, 0.25f); // s, t, u of 1/4, 1/2, 3/4
    const Case cases[] = {
        {probe(4, 2, 2, 1), quarter, false, 0, 3 * 0.25f * 0.5625f * 0.5f * 0.25f}, // S runs fastest
        {probe(2, 4, 2, 4), quarter, false, 0, 0.75f * 3 * 0.125f * 0.25f},
        {probe(2, 2, 4, 13), quarter, false, 0, 0.25f * 0.5f * 0.421875f},
        {probe(5, 1, 1, 4), vec3(0.5f, 0, 0), false, 0, 1.0f},          // s = 1: the last point alone
        {probe(3, 1, 1, 2), vec3(1.5f, 0, 0), false, 0, 4.0f},          // s = 2: extrapolated, not clamped
        {probe(5, 2, 2, 1), vec3(-0.2f, -0.5f, -0.5f), true, 2, 0.8f},  // s = 0.3: a fifth into cell 1
        {probe(5, 2, 2, 4), vec3(0.5f, -0.5f, -0.5f), true, 2, 1.0f},   // the last cell holds s = 1
        {probe(5, 2, 2, 0), vec3(-0.75f, -0.5f, -0.5f), true, 2, 2.0f}, // below the lattice: cell 0, extrapolated
        {probe(5, 3, 3, 2), vec3(-0.2f, -0.5f, -0.5f), true, 3, 2 * 0.1f * 0.9f}, // t, u: the whole direction
        {probe(2, 2, 2, 0), vec3(-0.5f), true, 0, 0.0f},                          // no window, nothing at all
        {probe(1, 1, 1, 0), vec3(0.3f), false, 0, 1.0f},                          // a single point weighs 1 anywhere
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        expectNear(through(c.lattice, c.point, c.local, c.influence), vec3(c.expected, 0, 0), 2e-5f);
    }
}

TEST(Ffd, PartialAndSurface) {
    const Lattice lifted = latticeOf(1, 1, 1, {vec3(0, 0, 1)});
    const auto once = translation(vec3(0, 0, 1));
    const vec3 up(0, 0, 2);
    Mesh mesh = meshOf({vec3(0.0f), vec3(0.0f), vec3(0.0f)});
    ffdPartialMesh(mesh, {2u, 0u, 2u, 90u}, lifted, once, mat4(1.0f), false, 0, 0, 0);
    expectNear(mesh.points, {up, vec3(0.0f), up});

    // The rest lattice under a lifted matrix lifts each visited point; the overlap, point 2, after what it repeats.
    Surface surface = surfaceOf(1, kFormPeriodic, 1, 3, std::vector<vec3>(3, vec3(0.0f)));
    surface.closestSamples.emplace_back(vec2(0.0f), vec3(0.0f));
    ffdSurface(surface, restLattice(2, 2, 2), once, mat4(1.0f), false, 0, 0, 0);
    expectNear(surface.cv, {vec3(0, 0, 1), vec3(0, 0, 1), up});
    EXPECT_TRUE(surface.closestSamples.empty());
}

TEST(Ffd, WindowsThatCannotBe) {
    const vec3 far(1e30f, -1e30f, 0.0f); // a cell that no integer holds
    EXPECT_NO_THROW(through(restLattice(11, 1, 1), far, true, 3));
    EXPECT_NO_THROW(through(restLattice(12, 1, 1), far, true, 11));
    expectError([&] { through(restLattice(12, 1, 1), far); }, {"window[0] is 12", "11"});
    expectError([&] { through(restLattice(1, 1, 14), far, true, ~0u); }, {"window[2] is 14", "11"}); // -1 as it arrives
    expectError([&] { through(latticeOf(2, 2, 2, std::vector<vec3>(7)), far); }, {"7", "2 by 2 by 2"});
    EXPECT_NO_THROW(through(latticeOf(2, 2, 2, {}), far, true, 0));
}

// Points go through a whole lattice side by side, and the last ones with others in their place.
TEST(Ffd, PointsSideBySideAreThoseOfEachAlone) {
    for (unsigned count = 1; count < 20; ++count) {
        std::vector<vec3> points;
        for (unsigned i = 0; i < count; ++i) {
            const auto t = static_cast<float>(i);
            points.emplace_back(std::sin(t), std::cos(3.0f * t), 0.1f * t);
        }
        const Lattice lattice = probe(3, 2, 4, 13);
        Mesh all = meshOf(points);
        Mesh some = meshOf(points);
        ffdMesh(all, lattice, quarterTurn(), scaling({2, 3, 4}), false, 2, 2, 2);
        ffdPartialMesh(some, {1, 4, 9, 17}, lattice, quarterTurn(), scaling({2, 3, 4}), false, 2, 2, 2);
        for (unsigned i = 0; i < count; ++i) {
            Mesh alone = meshOf({points[i]});
            ffdMesh(alone, lattice, quarterTurn(), scaling({2, 3, 4}), true, 11, 11, 11);
            EXPECT_EQ(all.points[i], alone.points[0]) << i << " of " << count;
            const bool chosen = i == 1 || i == 4 || i == 9 || i == 17;
            EXPECT_EQ(some.points[i], chosen ? alone.points[0] : points[i]) << i << " of " << count;
        }
    }
}

TEST(Ffd, Helpers) {
    for (unsigned n = 0; n <= 10; ++n) {
        unsigned sum = 0;
        for (unsigned k = 0; k <= 10; ++k) {
            sum += binomial(n, k);
            EXPECT_EQ(binomial(n, k), k > n ? 0u : binomial(n, n - k));
        }
        EXPECT_EQ(sum, 1u << n);
    }
    EXPECT_EQ(binomial(10, 3), 120u);
    expectError([] { binomial(11, 0); }, {"11"});
    for (unsigned n = 0; n <= 25; ++n) {
        EXPECT_FLOAT_EQ(pown(-2.0f, n), std::ldexp(n % 2 == 0 ? 1.0f : -1.0f, static_cast<int>(n)));
    }
    EXPECT_EQ(pown(std::numeric_limits<float>::quiet_NaN(), 0), 1.0f);
}

} // namespace
} // namespace zent::test
