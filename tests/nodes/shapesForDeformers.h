#pragma once

#include "zent/geometry/shapes.h"

#include <gtest/gtest.h>

#include <string>

/// Small shapes of every kind, and how tests of deformers look at them.
namespace zent::test {

inline mat4 translation(vec3 offset) {
    mat4 m(1.0f);
    m[3] = vec4(offset, 1.0f);
    return m;
}

inline mat4 scaling(vec3 factors) {
    return mat4(vec4(factors.x, 0, 0, 0), vec4(0, factors.y, 0, 0), vec4(0, 0, factors.z, 0), vec4(0, 0, 0, 1));
}

/// A quarter turn about Z, x to y.
inline mat4 quarterTurn() {
    return mat4(vec4(0, 1, 0, 0), vec4(-1, 0, 0, 0), vec4(0, 0, 1, 0), vec4(0, 0, 0, 1));
}

inline Mesh meshOf(std::vector<vec3> points, const mat4& matrix = mat4(1.0f)) {
    return Mesh(std::move(points), matrix);
}

inline std::vector<float> knotsFor(std::size_t count, unsigned degree) {
    std::vector<float> knots;
    for (std::size_t i = 0; i < count + degree - 1; ++i) {
        knots.push_back(static_cast<float>(i));
    }
    return knots;
}

inline Curve curveOf(unsigned degree, unsigned form, std::vector<vec3> cv, const mat4& matrix = mat4(1.0f)) {
    return Curve(degree, form, cv, knotsFor(cv.size(), degree), matrix);
}

/// A surface of degree 1 with `rows` by `columns` control points; a periodic direction repeats its first line.
inline Surface surfaceOf(unsigned formU, unsigned formV, unsigned rows, unsigned columns, std::vector<vec3> cv,
                         const mat4& matrix = mat4(1.0f)) {
    return Surface(1, 1, formU, formV, knotsFor(rows, 1), knotsFor(columns, 1), std::move(cv), matrix);
}

inline Lattice latticeOf(unsigned s, unsigned t, unsigned u, std::vector<vec3> points) {
    Lattice lattice;
    lattice.s = s;
    lattice.t = t;
    lattice.u = u;
    lattice.points = std::move(points);
    return lattice;
}

inline void expectNear(vec3 actual, vec3 expected, float tolerance = 1e-5f) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
    }
}

inline void expectNear(const std::vector<vec3>& actual, const std::vector<vec3>& expected, float tolerance = 1e-5f) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        SCOPED_TRACE("point " + std::to_string(i));
        expectNear(actual[i], expected[i], tolerance);
    }
}

/// A call throws std::runtime_error with a text that holds each of the parts.
template <class Call>
void expectError(Call call, std::initializer_list<const char*> parts) {
    try {
        call();
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        for (const char* part : parts) {
            EXPECT_NE(std::string(error.what()).find(part), std::string::npos) << error.what();
        }
    }
}

} // namespace zent::test
