#pragma once

#include "zent/geometry/Curve.h"
#include "zent/math/rotation.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

namespace zent::test {

constexpr float kDegree = 0.0174532925f;
const float kNaN = std::numeric_limits<float>::quiet_NaN();
const mat4 kIdentity(1.0f);
const vec3 kZero(0.0f), kOne(1.0f), kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

inline testing::AssertionResult near(vec3 actual, vec3 expected, float tolerance = 1e-4f) {
    return glm::distance(actual, expected) < tolerance
               ? testing::AssertionSuccess()
               : testing::AssertionFailure() << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") is not ("
                                             << expected.x << ", " << expected.y << ", " << expected.z << ")";
}
/// Linear parts alone.
inline testing::AssertionResult near(const mat4& actual, const mat4& expected, float tolerance = 1e-3f) {
    const mat3 d = mat3(actual) - mat3(expected);
    return near({glm::length(d[0]), glm::length(d[1]), glm::length(d[2])}, kZero, tolerance);
}
inline bool hasNaN(vec3 v) {
    return std::isnan(v.x + v.y + v.z);
}

inline mat4 moved(vec3 v) {
    return glm::translate(kIdentity, v);
}
inline mat4 scaled(vec3 v) {
    return glm::scale(kIdentity, v);
}
inline mat4 turned(vec3 axis, float degrees) {
    return glm::rotate(kIdentity, degrees * kDegree, axis);
}
inline mat4 eulerMatrix(vec3 angles, int order) {
    return eulerRotateMatrix(angles, static_cast<RotateOrder>(order));
}
/// The direction of the part of a vector perpendicular to a line.
inline vec3 sideOf(vec3 v, vec3 line) {
    return glm::normalize(v - glm::dot(v, line) / glm::dot(line, line) * line);
}

inline std::string errorOf(const std::function<void()>& run) {
    try {
        run();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

/// A clamped curve with even knots; without a domain, a span is 1 long.
inline Curve clamped(unsigned degree, std::vector<vec3> cv, float start = 0, float end = -1, mat4 matrix = kIdentity) {
    const std::size_t spans = cv.size() - degree;
    const float width = end == -1 ? 1 : (end - start) / static_cast<float>(spans);
    std::vector<float> knots(degree, start);
    for (std::size_t i = 1; i <= spans; ++i) {
        knots.push_back(start + width * static_cast<float>(i));
    }
    knots.insert(knots.end(), degree - 1, knots.back());
    return Curve(degree, kFormOpen, std::move(cv), std::move(knots), matrix);
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    float uniform(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(engine_); }
    vec3 vector(float lo = -2, float hi = 2) {
        const float x = uniform(lo, hi), y = uniform(lo, hi);
        return {x, y, uniform(lo, hi)};
    }
    vec3 angles() { return vector(-4, 4); }
    int order() { return static_cast<int>(engine_() % 6); }
    bool coin() { return engine_() % 2 == 0; }
    /// Scaled alike in all axes, turned and moved.
    mat4 placement(float scale = 1) { return moved(vector()) * eulerMatrix(angles(), 0) * scaled(vec3(scale)); }

private:
    std::mt19937 engine_;
};

} // namespace zent::test
