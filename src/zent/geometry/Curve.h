#pragma once

#include "zent/math/types.h"

#include <vector>

namespace zent {

/// Maya's form of a curve, or of one direction of a surface. Only `kFormPeriodic` changes behaviour.
inline constexpr unsigned kFormOpen = 1;
inline constexpr unsigned kFormClosed = 2;
inline constexpr unsigned kFormPeriodic = 3;

/// A point of a curve with its first derivative, world space.
struct CurveTangent {
    vec3 s;
    vec3 su;
};

/// A point of a curve with its first and second derivatives, world space.
struct CurveJet {
    vec3 s;
    vec3 su;
    vec3 suu;
};

/// A non-rational NURBS curve as Maya hands it out, with the object-to-world transform of its shape.
class Curve {
public:
    unsigned degree = 0;           ///< 1 to 5
    unsigned form = 0;             ///< kFormOpen, kFormClosed, kFormPeriodic
    std::vector<vec3> cv;          ///< control points, object space; a periodic curve's last `degree` repeat the first
    std::vector<float> knots;      ///< Maya's knots: cv.size() + degree - 1 of them
    mat3 matrixLinear{1.0f};       ///< linear part of the object-to-world matrix, by columns
    mat3 inverseLinear{1.0f};      ///< linear part of its inverse
    vec3 translation{0.0f};        ///< translation of the object-to-world matrix
    vec3 inverseTranslation{0.0f}; ///< translation of its inverse

    /// No points, the identity transform.
    Curve() = default;
    Curve(unsigned degree, unsigned form, std::vector<vec3> cv, std::vector<float> knots, mat4 matrix);
    /// A record for work on one point: degree 1, open, two control points at `point`, knots 0 and 1.
    Curve(vec3 point, mat4 matrix);

    /// The point at a parameter, object space. The parameter is clamped to just inside the domain; nothing wraps.
    vec3 localPoint(float u) const;
    /// The first derivative at a parameter, world space.
    vec3 dPdU(float u) const;
    /// The second derivative at a parameter, world space; zero for a curve of degree 1.
    vec3 d2PdU2(float u) const;
    /// The point and the first derivative at a parameter from one basis, world space: what the two give, in less time.
    CurveTangent tangent(float u) const;
    /// The point and both derivatives at a parameter from one basis, world space: what the three give, in less time.
    CurveJet jet(float u) const;
    /// The length between two parameters, world space, by 8-point Gauss-Legendre panels of one average span.
    float arcLength(float from, float to) const;

    float domainStart() const { return knots[degree - 1]; }
    float domainEnd() const { return knots[knots.size() - degree]; }
};

} // namespace zent
