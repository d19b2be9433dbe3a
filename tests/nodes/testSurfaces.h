#pragma once

#include "geometry/recursiveSpline.h"
#include "zent/geometry/shapes.h"

#include <gtest/gtest.h>

namespace zent::test {

/// Integer knots, clamped or consecutive; control point (i, j) stands at place(i, j), a periodic overlap at the
/// beginning.
template <class Place>
Surface surfaceOf(unsigned degreeU, unsigned degreeV, unsigned formU, unsigned formV, unsigned countU, unsigned countV,
                  Place place, mat4 matrix = mat4(1.0f)) {
    const auto knots = [](unsigned degree, unsigned form, unsigned count) {
        std::vector<float> list;
        for (int k = 1 - static_cast<int>(degree); k < static_cast<int>(count); ++k) {
            const int inside = std::clamp(k, 0, static_cast<int>(count - degree));
            list.push_back(static_cast<float>(form == kFormPeriodic ? k : inside));
        }
        return list;
    };
    std::vector<vec3> points;
    for (unsigned i = 0; i < countU * countV; ++i) {
        points.push_back(place(formU == kFormPeriodic ? i / countV % (countU - degreeU) : i / countV,
                               formV == kFormPeriodic ? i % countV % (countV - degreeV) : i % countV));
    }
    return Surface(degreeU, degreeV, formU, formV, knots(degreeU, formU, countU), knots(degreeV, formV, countV), points,
                   matrix);
}

inline vec3 gridPoint(unsigned i, unsigned j) {
    return {static_cast<float>(i), static_cast<float>(j), 0.0f};
}

/// A crumpled plane under a matrix that shears.
inline Surface genericSurface(unsigned degreeU, unsigned degreeV, unsigned formU, unsigned countU, unsigned countV) {
    const std::vector<vec3> offsets = scatterPoints(countU * countV, degreeU);
    const auto place = [&](unsigned i, unsigned j) { return gridPoint(i, j) + 0.2f * offsets[i * countV + j]; };
    return surfaceOf(degreeU, degreeV, formU, kFormOpen, countU, countV, place, kShear);
}

inline vec3 worldPoint(const Surface& surface, float u, float v) {
    return toWorld(surface, surface.localPoint(u, v));
}

inline ::testing::AssertionResult near(vec3 a, vec3 b, float tolerance) {
    const float distance = glm::length(a - b);
    return distance <= tolerance ? ::testing::AssertionSuccess()
                                 : ::testing::AssertionFailure() << "they lie " << distance << " apart";
}

/// The text of the error that an act throws.
template <class Act>
std::string errorOf(Act act) {
    try {
        act();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

} // namespace zent::test
