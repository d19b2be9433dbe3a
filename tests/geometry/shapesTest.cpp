#include "zent/geometry/shapes.h"
#include "zent/geometry/nurbs.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace zent::test {
namespace {

std::vector<vec3> origins(std::size_t count) {
    return std::vector<vec3>(count, vec3(0.0f));
}

Curve curveOf(unsigned degree, unsigned form, std::size_t count) {
    return Curve(degree, form, origins(count), {}, mat4(1.0f));
}

/// 5 by 4 control points of degrees 2 and 1.
Surface surfaceOf(unsigned formU, unsigned formV) {
    return Surface(2, 1, formU, formV, std::vector<float>(6), std::vector<float>(4), origins(20), mat4(1.0f));
}

TEST(Shapes, CountTheirPoints) {
    EXPECT_EQ(pointCount(Mesh(7)), 7u);
    EXPECT_EQ(pointCount(curveOf(3, kFormOpen, 7)), 7u);
    EXPECT_EQ(pointCount(curveOf(3, kFormClosed, 7)), 7u);
    EXPECT_EQ(pointCount(curveOf(3, kFormPeriodic, 7)), 4u);
    EXPECT_EQ(pointCount(curveOf(3, kFormPeriodic, 3)), 0u);
    EXPECT_EQ(pointCount(curveOf(3, kFormPeriodic, 2)), 0u);             // less than the overlap
    EXPECT_EQ(pointCount(surfaceOf(kFormPeriodic, kFormPeriodic)), 20u); // unlike a curve's, the overlap counts
    EXPECT_EQ(pointCount(onePointShape<Surface>(vec3(0.0f), mat4(1.0f))), 1u);
    EXPECT_EQ(pointCount(onePointShape<Lattice>(vec3(0.0f), mat4(1.0f))), 1u);
    EXPECT_THROW(Mesh(~0ul), std::length_error);
}

TEST(Shapes, RepeatWritesInTheOverlap) {
    const auto moved = [](auto shape, unsigned i) {
        std::vector<int> indices;
        writePoint(shape, i, vec3(1.0f));
        const std::vector<vec3>& points = pointsOf(shape);
        for (std::size_t k = 0; k < points.size(); ++k) {
            if (points[k] == vec3(1.0f)) {
                indices.push_back(static_cast<int>(k));
            }
        }
        return indices;
    };
    using Indices = std::vector<int>;
    EXPECT_EQ(moved(curveOf(3, kFormOpen, 7), 0), Indices{0});
    EXPECT_EQ(moved(curveOf(3, kFormPeriodic, 7), 0), (Indices{0, 4}));
    EXPECT_EQ(moved(curveOf(3, kFormPeriodic, 7), 2), (Indices{2, 6}));
    EXPECT_EQ(moved(curveOf(3, kFormPeriodic, 7), 3), Indices{3});
    EXPECT_EQ(moved(curveOf(3, kFormPeriodic, 7), 5), Indices{5}); // a write into the overlap stays there
    EXPECT_EQ(moved(curveOf(3, kFormPeriodic, 2), 0), Indices{0});

    EXPECT_EQ(moved(surfaceOf(kFormOpen, kFormClosed), 0), Indices{0});
    EXPECT_EQ(moved(surfaceOf(kFormPeriodic, kFormOpen), 6), (Indices{6, 18})); // row 1 of 5: rows 0 and 1 repeat
    EXPECT_EQ(moved(surfaceOf(kFormPeriodic, kFormOpen), 8), Indices{8});       // row 2 does not
    EXPECT_EQ(moved(surfaceOf(kFormOpen, kFormPeriodic), 8), (Indices{8, 11})); // column 0 of 4
    EXPECT_EQ(moved(surfaceOf(kFormOpen, kFormPeriodic), 9), Indices{9});
    EXPECT_EQ(moved(surfaceOf(kFormPeriodic, kFormPeriodic), 4), (Indices{4, 7, 16})); // 19, across, stays: deliberate

    Surface surface = surfaceOf(kFormOpen, kFormOpen);
    surface.closestSamples.emplace_back(vec2(0.0f), vec3(0.0f));
    writePoint(surface, 0, vec3(1.0f));
    EXPECT_TRUE(surface.closestSamples.empty());
}

TEST(Shapes, RefuseCountsThatTheirListsDoNotHold) {
    const auto lattice = [](unsigned s, unsigned t, unsigned u, std::size_t count) {
        Lattice shape;
        shape.s = s;
        shape.t = t;
        shape.u = u;
        shape.points = origins(count);
        return shape;
    };
    const auto text = [](const auto& shape) -> std::string {
        try {
            if constexpr (std::is_same_v<std::decay_t<decltype(shape)>, Lattice>) {
                requireAddressable(shape, "input");
            } else {
                requireConsistent(shape, "input");
            }
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    };
    EXPECT_EQ(text(lattice(2, 3, 4, 24)), "");
    EXPECT_EQ(text(lattice(0, 3, 4, 0)), "");
    EXPECT_EQ(text(lattice(2, 3, 4, 23)), "input has 23 points, its counts are 2 by 3 by 4");
    EXPECT_NE(text(lattice(65536, 65536, 1, 0)), "");       // 0 in 32 bits
    EXPECT_NE(text(lattice(1u << 31, 1u << 31, 4, 0)), ""); // 0 in 64 bits

    Surface surface = surfaceOf(kFormPeriodic, kFormPeriodic);
    EXPECT_EQ(text(surface), "");
    surface.cv.pop_back();
    EXPECT_EQ(text(surface), "input control points has 19 entries, 5 by 4 of the knots needs 20");
    surface.degreeU = 9; // a count below 0
    EXPECT_EQ(text(surface), "input in U knots has 6 entries, degree 9 needs 8");
    surface.degreeU = 4; // three rows, four of which would repeat
    EXPECT_EQ(text(surface), "input in U control points has 3 entries, a periodic overlap needs 4");
    EXPECT_EQ(text(Surface(3, 3, 3, 3, {0, 0}, {0, 0}, {}, mat4(1.0f))), ""); // empty
    const Curve short_(3, kFormPeriodic, origins(2), {}, mat4(1.0f)); // fewer points than it repeats: none to visit
    EXPECT_EQ(text(short_), "");
    EXPECT_EQ(pointCount(short_), 0u);
    EXPECT_EQ(text(onePointShape<Surface>(vec3(0.0f), mat4(1.0f))), "");
}

TEST(Shapes, MeshTakesPointsOverAndStartsAtTheIdentity) {
    const Mesh empty(0);
    EXPECT_EQ(empty.inverseLinear, glm::mat3(1.0f));
    EXPECT_EQ(Mesh(2).points, origins(2));
    std::vector<vec3> points{vec3(1.0f)};
    const vec3* before = points.data();
    const Mesh mesh(std::move(points), mat4(glm::mat3(4.0f)));
    EXPECT_EQ(mesh.points.data(), before);
    EXPECT_EQ(mesh.inverseLinear, glm::mat3(0.25f));
}

} // namespace
} // namespace zent::test
