#include "zent/nodes/polyEdgeToCurve.h"

#include "nodes/testSurfaces.h"

#include <stdexcept>

namespace zent::test {
namespace {

Mesh zigzag() {
    return Mesh({{0, 0, 0}, {1, 2, 0}, {3, 1, 1}, {4, -1, 2}, {2, -3, 1}, {-1, -2, 3}},
                composeMatrix(vec3(5.0f, 6.0f, 7.0f), vec3(0.5f, 1.0f, -0.3f), 1, vec3(2.0f, 1.0f, 0.5f)));
}

void expectThrough(const Curve& curve, const Mesh& mesh, const std::vector<unsigned>& vertices) {
    EXPECT_EQ(matrixOf(curve), mat4(1.0f));
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        EXPECT_TRUE(near(curve.localPoint(static_cast<float>(i)), toWorld(mesh, mesh.points[vertices[i]]), 2e-5f))
            << "degree " << curve.degree << ", vertex " << i << " of " << vertices.size();
    }
}

TEST(PolyEdgeToCurve, OpenRunsThroughItsPointsAndIsStraightAtItsEnds) {
    const Mesh mesh = zigzag();
    for (const std::vector<unsigned>& vertices :
         {std::vector<unsigned>{2, 4}, {5, 0, 1}, {3, 1, 4, 1}, {0, 1, 2, 3, 4, 5}}) {
        const Curve curve = polyEdgeToCurve(mesh, vertices, 3);
        const auto last = static_cast<float>(vertices.size() - 1);
        EXPECT_EQ(curve.form, kFormOpen);
        EXPECT_EQ(curve.cv.size(), vertices.size() + 2);
        EXPECT_EQ(curve.knots.size(), vertices.size() + 4);
        EXPECT_EQ(curve.knots[2], 0.0f);
        EXPECT_EQ(curve.knots[vertices.size() + 1], last);
        expectThrough(curve, mesh, vertices);
        EXPECT_TRUE(near(curve.d2PdU2(0.0f), vec3(0.0f), 2e-4f));
        EXPECT_TRUE(near(curve.d2PdU2(last), vec3(0.0f), 2e-4f));
    }
    // Two points: the straight line between them.
    const Curve line = curveFromEditPoints(3, {vec3(0.0f), vec3(3.0f, 6.0f, -3.0f)});
    EXPECT_TRUE(near(line.cv[1], vec3(1.0f, 2.0f, -1.0f), 1e-6f));
}

TEST(PolyEdgeToCurve, ClosedRunsThroughItsPointsAndRepeatsItsBeginning) {
    const Mesh mesh = zigzag();
    struct Case {
        unsigned degree;
        std::vector<unsigned> vertices;
    };
    // The last three are shorter than a row of weights: weights that meet in one column add up.
    const Case cases[] = {
        {3, {0, 1, 2, 3, 4, 5, 0}}, {3, {2, 0, 4, 1, 5, 2}}, {2, {0, 1, 2, 3, 4, 0}}, {4, {5, 4, 3, 2, 1, 5}},
        {5, {0, 1, 2, 3, 4, 5, 0}}, {3, {1, 3, 1}},          {5, {4, 2, 0, 4}},       {2, {4, 2, 0, 4}},
    };
    for (const Case& c : cases) {
        const std::size_t count = c.vertices.size() - 1;
        const Curve curve = polyEdgeToCurve(mesh, c.vertices, c.degree);
        EXPECT_EQ(curve.form, kFormPeriodic);
        ASSERT_EQ(curve.cv.size(), count + c.degree);
        for (unsigned j = 0; j < c.degree; ++j) {
            EXPECT_EQ(curve.cv[count + j], curve.cv[j]);
        }
        ASSERT_EQ(curve.knots.size(), count + 2 * c.degree - 1);
        for (std::size_t k = 0; k < curve.knots.size(); ++k) {
            EXPECT_EQ(curve.knots[k], static_cast<float>(k) + 1.0f - static_cast<float>(c.degree));
        }
        expectThrough(curve, mesh, c.vertices);
    }
}

TEST(PolyEdgeToCurve, DegreeOneIsThePolyline) {
    const Mesh mesh = zigzag();
    for (const std::vector<unsigned>& vertices : {std::vector<unsigned>{3, 1, 4}, {0, 2, 5, 0}, {4}}) {
        const Curve curve = curveFromMeshEdge(mesh, vertices);
        EXPECT_EQ(curve.degree, 1u);
        EXPECT_EQ(curve.form, vertices.front() == vertices.back() ? kFormPeriodic : kFormOpen);
        ASSERT_EQ(curve.cv.size(), vertices.size());
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            EXPECT_EQ(curve.cv[i], toWorld(mesh, mesh.points[vertices[i]]));
            EXPECT_EQ(curve.knots[i], static_cast<float>(i));
        }
    }
}

TEST(PolyEdgeToCurve, SurvivesASystemWithoutSolution) {
    // Degree 2 takes the mean of two neighbours at each point: around an even count they cannot be told apart.
    const Curve curve = polyEdgeToCurve(zigzag(), {0, 1, 2, 3, 0}, 2);
    ASSERT_EQ(curve.cv.size(), 6u);
    EXPECT_FALSE(near(curve.localPoint(1.0f), toWorld(zigzag(), zigzag().points[1]), 1e-3f));
}

TEST(PolyEdgeToCurve, RejectsListsThatMakeNoCurve) {
    const Mesh mesh = zigzag();
    struct Case {
        std::vector<unsigned> vertices;
        unsigned degree;
        const char* text;
    };
    const Case cases[] = {
        {{}, 1, "vertices has 0 entries, a curve needs 1"},
        {{}, 3, "vertices has 0 entries, a curve needs 1"},
        {{0, 6, 2}, 1, "vertices[1] is 6, the mesh has 6"},
        {{0, 1, 7}, 3, "vertices[2] is 7, the mesh has 6"},
        {{0, 1, 2}, 2, "degree is 2, an open curve through points needs 3"},
        {{0, 1, 2, 0}, 6, "degree is 6, a closed curve needs 1 to 5"},
        {{0, 1, 0}, 0, "degree is 0, a closed curve needs 1 to 5"},
        {{4, 4}, 3, "vertices has 2 entries, a closed curve, its first vertex repeated at the end, needs 3"},
    };
    for (const Case& c : cases) {
        try {
            polyEdgeToCurve(mesh, c.vertices, c.degree);
            FAIL() << c.text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), c.text);
        }
    }
    EXPECT_THROW(curveFromEditPoints(3, {vec3(1.0f)}), std::runtime_error);
}

} // namespace
} // namespace zent::test
