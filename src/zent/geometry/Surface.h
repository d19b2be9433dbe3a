#pragma once

#include "zent/geometry/Curve.h"

#include <utility>
#include <vector>

namespace zent {

/// World-space samples of a surface, (u, v) with the point there: the starts of the closest-point search.
using SurfaceSamples = std::vector<std::pair<vec2, vec3>>;

/// A non-rational NURBS surface as Maya hands it out, with the object-to-world transform of its shape.
class Surface {
public:
    unsigned degreeU = 0;
    unsigned degreeV = 0;
    unsigned formU = 0;
    unsigned formV = 0;
    SurfaceSamples closestSamples; ///< cache of the closest-point search; whatever moves the surface empties it
    std::vector<vec3> cv;          ///< control points, object space, U-major: index is uIndex * cvCountV() + vIndex
    std::vector<float> knotsU;
    std::vector<float> knotsV;
    mat3 matrixLinear{1.0f};
    mat3 inverseLinear{1.0f};
    vec3 translation{0.0f};
    vec3 inverseTranslation{0.0f};

    /// No points, the identity transform.
    Surface() = default;
    Surface(unsigned degreeU, unsigned degreeV, unsigned formU, unsigned formV, std::vector<float> knotsU,
            std::vector<float> knotsV, std::vector<vec3> cv, mat4 matrix);
    /// A record for work on one point: degrees and forms 1, one control point, the single knot 1 in each direction.
    Surface(vec3 point, mat4 matrix);

    /// Replaces the object-to-world matrix, computes the inverse, and empties `closestSamples`.
    void setMatrix(const mat4& matrix);

    /// The point at (u, v), object space; each parameter is clamped to just inside its domain.
    vec3 localPoint(float u, float v) const;
    /// The partial derivative in U, world space.
    vec3 dPdU(float u, float v) const;
    /// The partial derivative in V, world space.
    vec3 dPdV(float u, float v) const;

    unsigned cvCountU() const { return static_cast<unsigned>(knotsU.size()) - degreeU + 1; }
    unsigned cvCountV() const { return static_cast<unsigned>(knotsV.size()) - degreeV + 1; }
};

} // namespace zent
