#include "zent/geometry/Surface.h"
#include "geometry/recursiveSpline.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

Surface unevenSurface(unsigned degreeU, unsigned formU, unsigned degreeV, unsigned formV) {
    const std::size_t countU = degreeU + 3;
    const std::size_t countV = 2 * degreeV + 1;
    return Surface(degreeU, degreeV, formU, formV, unevenKnots(countU, degreeU, formU),
                   unevenKnots(countV, degreeV, formV), scatterPoints(countU * countV, degreeU), kShear);
}

TEST(Surface, FollowsTheRecursiveDefinition) {
    for (unsigned degreeU = 1; degreeU <= kMaxDegree; ++degreeU) {
        const unsigned degreeV = 1 + (degreeU + 1) % kMaxDegree;
        const Surface surface = unevenSurface(degreeU, kFormPeriodic, degreeV, kFormOpen);
        const glm::dmat3 linear(surface.matrixLinear);
        for (float t = 0.05f; t < 1.0f; t += 0.15f) {
            const float u = glm::mix(surface.knotsU[degreeU - 1], surface.knotsU[surface.knotsU.size() - degreeU], t);
            const float v =
                glm::mix(surface.knotsV[degreeV - 1], surface.knotsV[surface.knotsV.size() - degreeV], 1.0f - t * t);
            const auto exact = [&](int orderU, int orderV) {
                return recursivePoint(surface, static_cast<double>(u), static_cast<double>(v), orderU, orderV);
            };
            const dvec3 errors[]{dvec3(surface.localPoint(u, v)) - exact(0, 0),
                                 dvec3(surface.dPdU(u, v)) - linear * exact(1, 0),
                                 dvec3(surface.dPdV(u, v)) - linear * exact(0, 1)};
            for (const dvec3& error : errors) {
                EXPECT_LT(glm::length(error), 1e-4)
                    << "degrees " << degreeU << ", " << degreeV << " at " << u << ", " << v;
            }
        }
    }
}

TEST(Surface, EvaluatesJustInsideBothEnds) {
    const float big = 16777216.0f;
    const Surface plane(1, 1, kFormPeriodic, kFormOpen, {2.0f, 6.0f}, {0.0f, 1.0f},
                        {{0, 0, 0}, {0, big, 0}, {big, 0, 0}, {big, big, 0}}, kShear);
    // 6 * 2^-22 of a domain of 4, 2^-22 of a domain of 1.
    EXPECT_EQ(plane.localPoint(99.0f, 99.0f), vec3(big - 6.0f, big - 4.0f, 0.0f));
    EXPECT_EQ(plane.localPoint(-99.0f, -99.0f), vec3(0.0f));
}

TEST(Surface, NewMatrixEmptiesTheSamples) {
    Surface surface(vec3(1.0f), mat4(1.0f));
    surface.closestSamples.emplace_back(vec2(0.0f), vec3(0.0f));
    surface.setMatrix(kShear);
    EXPECT_TRUE(surface.closestSamples.empty());
    EXPECT_EQ(surface.translation, vec3(5.0f, -7.0f, 11.0f));
    const glm::mat3 identity = surface.inverseLinear * surface.matrixLinear;
    for (int column = 0; column < 3; ++column) {
        EXPECT_LT(glm::distance(identity[column], glm::mat3(1.0f)[column]), 1e-6f);
    }
    EXPECT_LT(glm::length(surface.inverseLinear * surface.translation + surface.inverseTranslation), 1e-5f);
}

TEST(Surface, RefusesWhatCannotBeEvaluated) {
    Surface surface = unevenSurface(2, kFormOpen, 3, kFormOpen);
    EXPECT_NO_THROW(requireEvaluable(surface, "surface"));
    const auto text = [](const Surface& refused) -> std::string {
        try {
            requireEvaluable(refused, "surface");
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    };
    surface.cv.pop_back();
    EXPECT_EQ(text(surface), "surface control points has 34 entries, 5 by 7 of the knots needs 35");
    surface.degreeV = 6;
    EXPECT_EQ(text(surface), "surface in V has degree 6, evaluation needs 1 to 5");
    EXPECT_EQ(text(Surface(vec3(0.0f), mat4(1.0f))), "surface in U knots has 1 entries, degree 1 needs 2");
}

} // namespace
} // namespace zent::test
