#pragma once

#include "zent/geometry/nurbs.h"

#include <glm/gtc/type_ptr.hpp>

#include <algorithm>
#include <vector>

/// An independent evaluation in double: the recursive definition of the basis functions and of their derivatives.
namespace zent::test {

using glm::dvec3;

/// Derivative `order` of basis function i at u, on Maya's knots; the textbook's first and last knot never matter inside
/// the domain.
inline double recursiveBasis(const std::vector<float>& knots, int i, int degree, double u, int order) {
    const auto knot = [&](int k) {
        return static_cast<double>(knots[static_cast<std::size_t>(std::clamp(k - 1, 0, int(knots.size()) - 1))]);
    };
    const auto over = [](double a, double b) { return b == 0.0 ? 0.0 : a / b; };
    if (degree == 0) {
        return order == 0 && knot(i) <= u && u < knot(i + 1) ? 1.0 : 0.0;
    }
    const double left = knot(i + degree) - knot(i);
    const double right = knot(i + degree + 1) - knot(i + 1);
    const double low = recursiveBasis(knots, i, degree - 1, u, order == 0 ? 0 : order - 1);
    const double high = recursiveBasis(knots, i + 1, degree - 1, u, order == 0 ? 0 : order - 1);
    return order == 0 ? over((u - knot(i)) * low, left) + over((knot(i + degree + 1) - u) * high, right)
                      : degree * (over(low, left) - over(high, right));
}

inline dvec3 recursivePoint(const Curve& curve, double u, int order) {
    dvec3 sum(0.0);
    for (int i = 0; i < int(curve.cv.size()); ++i) {
        sum += recursiveBasis(curve.knots, i, int(curve.degree), u, order) * dvec3(curve.cv[std::size_t(i)]);
    }
    return sum;
}

inline dvec3 recursivePoint(const Surface& surface, double u, double v, int orderU, int orderV) {
    dvec3 sum(0.0);
    const int countV = int(surface.knotsV.size() - surface.degreeV) + 1;
    for (int i = 0; i < int(surface.cv.size()); ++i) {
        sum += recursiveBasis(surface.knotsU, i / countV, int(surface.degreeU), u, orderU) *
               recursiveBasis(surface.knotsV, i % countV, int(surface.degreeV), v, orderV) *
               dvec3(surface.cv[std::size_t(i)]);
    }
    return sum;
}

/// `count` numbers from -1 to 1 that follow no pattern.
inline std::vector<float> scatter(std::size_t count, unsigned seed) {
    std::vector<float> numbers;
    for (unsigned state = seed * 2654435761u + 1; numbers.size() < count; state = state * 1664525u + 1013904223u) {
        numbers.push_back(static_cast<float>(state >> 8) / 8388608.0f - 1.0f);
    }
    return numbers;
}

inline std::vector<vec3> scatterPoints(std::size_t count, unsigned seed) {
    std::vector<vec3> points;
    const std::vector<float> numbers = scatter(3 * count, seed);
    for (std::size_t i = 0; i < count; ++i) {
        points.push_back(glm::make_vec3(&numbers[3 * i]));
    }
    return points;
}

/// Uneven knots for `count` control points: 2 to about count + 2; clamped ends for an open direction.
inline std::vector<float> unevenKnots(std::size_t count, unsigned degree, unsigned form) {
    std::vector<float> knots;
    const int last = static_cast<int>(count + degree) - 2;
    for (int k = 0; k <= last; ++k) {
        const int inner = form == kFormPeriodic ? k : std::clamp(k, int(degree) - 1, last - int(degree) + 1);
        knots.push_back(2.0f + static_cast<float>(inner) + (inner % 3 == 1 ? 0.375f : 0.0f));
    }
    return knots;
}

inline const mat4 kShear{2.0f, 0.5f,  0.0f, 0.0f, 0.0f, 1.0f,  -1.0f, 0.0f,
                         0.0f, 0.25f, 3.0f, 0.0f, 5.0f, -7.0f, 11.0f, 1.0f};

} // namespace zent::test
