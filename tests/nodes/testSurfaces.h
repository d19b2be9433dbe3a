#pragma once

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"
#include "zent/math/rotation.h"

#include <gtest/gtest.h>

#include <random>

namespace zent::test {

/// Integer knots: clamped at both ends, or consecutive ones for a periodic direction.
inline std::vector<float> integerKnots(unsigned degree, unsigned form, unsigned count) {
    const int spans = static_cast<int>(count - degree);
    std::vector<float> knots;
    for (int k = 1 - static_cast<int>(degree); k < static_cast<int>(count); ++k) {
        knots.push_back(static_cast<float>(form == kFormPeriodic ? k : std::clamp(k, 0, spans)));
    }
    return knots;
}

/// Control point (i, j) stands at place(i, j); a periodic direction's overlap repeats its beginning.
template <class Place>
Surface surfaceOf(unsigned degreeU, unsigned degreeV, unsigned formU, unsigned formV, unsigned countU, unsigned countV,
                  Place place, mat4 matrix = mat4(1.0f)) {
    std::vector<vec3> points;
    for (unsigned i = 0; i < countU; ++i) {
        for (unsigned j = 0; j < countV; ++j) {
            points.push_back(place(formU == kFormPeriodic ? i % (countU - degreeU) : i,
                                   formV == kFormPeriodic ? j % (countV - degreeV) : j));
        }
    }
    return Surface(degreeU, degreeV, formU, formV, integerKnots(degreeU, formU, countU),
                   integerKnots(degreeV, formV, countV), points, matrix);
}

/// A surface without symmetries: a plane, a tube where U is periodic, with noise, under a matrix that is no rotation.
inline Surface genericSurface(unsigned degreeU, unsigned degreeV, unsigned formU, unsigned formV, unsigned countU,
                              unsigned countV) {
    std::mt19937 random(countU * 100 + countV * 10 + degreeU);
    std::uniform_real_distribution<float> noise(-0.3f, 0.3f);
    std::vector<vec3> offsets(countU * countV);
    for (vec3& offset : offsets) {
        offset = vec3(noise(random), noise(random), noise(random));
    }
    const float turn = 6.2831853f / static_cast<float>(countU - degreeU);
    const auto place = [&](unsigned i, unsigned j) {
        const auto x = static_cast<float>(i);
        const auto z = static_cast<float>(j);
        const vec3 base = formU == kFormPeriodic ? vec3(2.0f * std::cos(turn * x), 2.0f * std::sin(turn * x), z)
                                                 : vec3(x, 0.2f * x * z, z);
        return base + offsets[i * countV + j];
    };
    const mat4 matrix = composeMatrix(vec3(1.0f, -2.0f, 3.0f), vec3(0.4f, -0.7f, 1.1f), 2, vec3(1.5f, 0.8f, 1.2f));
    return surfaceOf(degreeU, degreeV, formU, formV, countU, countV, place, matrix);
}

/// The surface (u, v, 0) over the unit square, degree 1.
inline Surface unitSquare() {
    return surfaceOf(1, 1, kFormOpen, kFormOpen, 2, 2,
                     [](unsigned i, unsigned j) { return vec3(static_cast<float>(i), static_cast<float>(j), 0.0f); });
}

inline vec3 worldPoint(const Surface& surface, float u, float v) {
    return toWorld(surface, surface.localPoint(u, v));
}

inline ::testing::AssertionResult near(vec3 a, vec3 b, float tolerance) {
    if (glm::length(a - b) <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not (" << b.x << ", "
                                         << b.y << ", " << b.z << ")";
}

} // namespace zent::test
