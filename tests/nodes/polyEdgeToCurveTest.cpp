#include "zent/nodes/polyEdgeToCurve.h"

#include "nodes/testSurfaces.h"
#include "zent/geometry/nurbs.h"

#include <Eigen/SparseLU>

namespace zent::test {
namespace {

using Vertices = std::vector<unsigned>;

Mesh zigzag() {
    return Mesh(scatterPoints(6, 1), kShear);
}

void expectThrough(const Curve& curve, const Vertices& vertices) {
    const Mesh mesh = zigzag();
    EXPECT_EQ(matrixOf(curve), mat4(1.0f));
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        EXPECT_TRUE(near(curve.localPoint(static_cast<float>(i)), toWorld(mesh, mesh.points[vertices[i]]), 2e-5f))
            << "degree " << curve.degree << ", vertex " << i << " of " << vertices.size();
    }
}

TEST(PolyEdgeToCurve, OpenRunsThroughItsPointsAndIsStraightAtItsEnds) {
    for (const Vertices& vertices : {Vertices{2, 4}, {5, 0, 1}, {3, 1, 4, 1}, {0, 1, 2, 3, 4, 5}}) {
        const Curve curve = polyEdgeToCurve(zigzag(), vertices, 3);
        const auto last = static_cast<float>(vertices.size() - 1);
        EXPECT_EQ(curve.form, kFormOpen);
        EXPECT_EQ(curve.cv.size(), vertices.size() + 2);
        ASSERT_EQ(curve.knots.size(), vertices.size() + 4);
        for (std::size_t k = 0; k < curve.knots.size(); ++k) {
            EXPECT_EQ(curve.knots[k], std::clamp(static_cast<float>(k) - 2.0f, 0.0f, last));
        }
        expectThrough(curve, vertices);
        EXPECT_TRUE(near(curve.d2PdU2(0.0f), vec3(0.0f), 2e-4f));
        EXPECT_TRUE(near(curve.d2PdU2(last), vec3(0.0f), 2e-4f));
    }
}

TEST(PolyEdgeToCurve, ClosedRunsThroughItsPointsAndRepeatsItsBeginning) {
    const auto check = [](unsigned degree, const Vertices& vertices) {
        const std::size_t count = vertices.size() - 1;
        const Curve curve = polyEdgeToCurve(zigzag(), vertices, degree);
        EXPECT_EQ(curve.form, kFormPeriodic);
        ASSERT_EQ(curve.cv.size(), count + degree);
        for (unsigned j = 0; j < degree; ++j) {
            EXPECT_EQ(curve.cv[count + j], curve.cv[j]);
        }
        ASSERT_EQ(curve.knots.size(), count + 2 * degree - 1);
        for (std::size_t k = 0; k < curve.knots.size(); ++k) {
            EXPECT_EQ(curve.knots[k], static_cast<float>(k) + 1.0f - static_cast<float>(degree));
        }
        expectThrough(curve, vertices);
    };
    check(3, {0, 1, 2, 3, 4, 5, 0});
    check(2, {0, 1, 2, 3, 4, 0});
    check(4, {5, 4, 3, 2, 1, 5});
    check(5, {0, 1, 2, 3, 4, 5, 0});
    check(3, {1, 3, 1}); // fewer than the weights of a row: those that meet in a column add up
    check(5, {4, 2, 0, 4});
    // Degree 2 takes the mean of two neighbours at each point: around an even count they cannot be told apart.
    const Curve unsolvable = polyEdgeToCurve(zigzag(), {0, 1, 2, 3, 0}, 2);
    ASSERT_EQ(unsolvable.cv.size(), 6u);
    EXPECT_TRUE(std::isnan(unsolvable.cv[0].x));
}

// Each coordinate is a solve of its own; a solve of all three at once differs in the last bits in most lists.
TEST(PolyEdgeToCurve, ACoordinateIsSolvedByItself) {
    for (std::size_t count = 12; count < 40; ++count) {
        const std::vector<vec3> points = scatterPoints(count, static_cast<unsigned>(count));
        const Curve curve = curveFromEditPoints(3, points);
        const auto size = static_cast<Eigen::Index>(count + 2);
        Eigen::SparseMatrix<float> matrix(size, size);
        Eigen::VectorXf target = Eigen::VectorXf::Zero(size);
        for (Eigen::Index row = 0; row < size; ++row) {
            const auto i = static_cast<std::size_t>(row);
            const float u = i < count ? static_cast<float>(i) : i == count ? 0.0f : static_cast<float>(count - 1);
            const unsigned span = findSpan(u, 3, curve.knots);
            const BasisRow weights =
                i < count ? basisFunctions(3, span, u, curve.knots) : computeDerivatives(2, 3, span, u, curve.knots)[2];
            for (Eigen::Index j = 0; j < 4; ++j) {
                if (std::abs(weights[static_cast<std::size_t>(j)]) >= kThreshold) {
                    matrix.insert(row, span - 2 + j) = weights[static_cast<std::size_t>(j)];
                }
            }
            target[row] = i < count ? points[i].z : 0.0f;
        }
        matrix.makeCompressed();
        const Eigen::SparseLU<Eigen::SparseMatrix<float>> solver(matrix);
        const Eigen::VectorXf z = solver.solve(target);
        for (Eigen::Index i = 0; i < size; ++i) {
            ASSERT_EQ(curve.cv[static_cast<std::size_t>(i)].z, z[i]) << count << " points, " << i;
        }
    }
}

TEST(PolyEdgeToCurve, DegreeOneIsThePolyline) {
    for (const Vertices& vertices : {Vertices{3, 1, 4}, {0, 2, 5, 0}, {4}}) {
        const Curve curve = curveFromMeshEdge(zigzag(), vertices);
        EXPECT_EQ(curve.degree, 1u);
        EXPECT_EQ(curve.form, vertices.front() == vertices.back() ? kFormPeriodic : kFormOpen);
        ASSERT_EQ(curve.cv.size(), vertices.size());
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            EXPECT_EQ(curve.cv[i], toWorld(zigzag(), zigzag().points[vertices[i]]));
            EXPECT_EQ(curve.knots[i], static_cast<float>(i));
        }
    }
}

TEST(PolyEdgeToCurve, RejectsListsThatMakeNoCurve) {
    const auto check = [](const Vertices& vertices, unsigned degree, const char* text) {
        EXPECT_EQ(errorOf([&] { polyEdgeToCurve(zigzag(), vertices, degree); }), text);
    };
    check({}, 1, "vertices has 0 entries, a curve needs 1");
    check({0, 6, 2}, 1, "vertices[1] is 6, the mesh has 6");
    check({0, 1, 7}, 3, "vertices[2] is 7, the mesh has 6");
    check({0, 1, 2}, 2, "degree is 2, an open curve through points needs 3");
    check({0, 1, 2, 0}, 6, "degree is 6, a closed curve needs 1 to 5");
    check({0, 1, 0}, 0, "degree is 0, a closed curve needs 1 to 5");
    check({4, 4}, 3, "vertices has 2 entries, a closed curve, its first vertex repeated at the end, needs 3");
    EXPECT_EQ(errorOf([] { curveFromEditPoints(3, {vec3(1.0f)}); }), "points has 1 entries, an open curve needs 2");
}

} // namespace
} // namespace zent::test
