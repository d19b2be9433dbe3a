#include "zent/nodes/pointOnSurface.h"

#include "zent/nodes/worldSurface.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

/// (u - 2, v, (u - 2) * v) for u from 2 to 6 and v from 0 to 2, z doubled, moved by (0, 0, 1).
Surface saddle() {
    mat4 matrix(1.0f);
    matrix[2][2] = 2.0f;
    matrix[3][2] = 1.0f;
    return Surface(1, 1, kFormOpen, kFormOpen, {2.0f, 6.0f}, {0.0f, 2.0f}, {{0, 0, 0}, {0, 2, 0}, {4, 0, 0}, {4, 2, 8}},
                   matrix);
}

TEST(PointOnSurfaceTest, AnswersInWorldSpace) {
    using Function = vec3 (*)(const Surface&, float, float, bool);
    const float third = 1.0f / 3.0f;
    const struct {
        Function function;
        vec3 expected;
    } rows[] = {
        // At (3, 1): x 1, y 1. Tangents (1, 0, 2) and (0, 1, 2).
        {pointOnSurfacePosition, {1.0f, 1.0f, 3.0f}},
        {pointOnSurfaceTangentU, {1.0f, 0.0f, 2.0f}},
        {pointOnSurfaceTangentV, {0.0f, 1.0f, 2.0f}},
        {pointOnSurfaceNormal, {-2.0f * third, -2.0f * third, third}},
        {pointOnSurfaceNormalizedNormal, {-2.0f * third, -2.0f * third, third}},
    };
    for (const auto& row : rows) {
        EXPECT_LT(glm::distance(row.function(saddle(), 3.0f, 1.0f, false), row.expected), 1e-5f);
        // Fractions of 6 and 2, whatever the domain's start.
        EXPECT_LT(glm::distance(row.function(saddle(), 0.5f, 0.5f, true), row.expected), 1e-5f);
        EXPECT_THROW(row.function(Surface(vec3(0.0f), mat4(1.0f)), 0.0f, 0.0f, false), std::runtime_error);
    }
}

TEST(PointOnSurfaceTest, NormalAtAPoleIsNaN) {
    Surface cone = saddle();
    cone.cv = {{0, 0, 0}, {0, 0, 0}, {4, 0, 0}, {4, 2, 0}}; // all of u = 2 is one point
    EXPECT_EQ(pointOnSurfaceTangentV(cone, 2.0f, 1.0f, false), vec3(0.0f));
    const vec3 normal = pointOnSurfaceNormal(cone, 2.0f, 1.0f, false);
    EXPECT_TRUE(std::isnan(normal.x) && std::isnan(normal.y) && std::isnan(normal.z));
}

TEST(WorldSurfaceTest, ReplacesTheTransformAlone) {
    const Surface moved = worldSurface(saddle(), mat4(1.0f));
    EXPECT_EQ(moved.cv, saddle().cv);
    EXPECT_EQ(moved.matrixLinear, glm::mat3(1.0f));
    EXPECT_EQ(moved.inverseTranslation, vec3(0.0f));
}

} // namespace
} // namespace zent::test
