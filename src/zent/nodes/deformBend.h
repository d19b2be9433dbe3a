#pragma once

#include "zent/geometry/Mesh.h"

#include <vector>

namespace zent {

/// Maya's bend, in place: the handle's Y axis between the bounds becomes an arc of `curvature` (radians for each unit
/// of handle space), and what lies beyond a bound goes straight on. Points are in object space, `handle` goes to the
/// world.
///
/// Nothing happens for an envelope or a curvature below 1e-5, so that a negative curvature never bends; from there up
/// the envelope has no effect. Each bound acts on the side of its own sign of y.
Mesh& deformBendMesh(Mesh& geometry, float envelope, mat4 handle, float curvature, float lowBound, float highBound);

/// The same for a caller that bends a record point by point: set up once for the shape's transform and its inverse.
class PointBend {
public:
    PointBend() = default; ///< leaves every point as it is
    PointBend(mat4 const& objectToWorld, mat4 const& worldToObject, float envelope, mat4 const& handle, float curvature,
              float lowBound, float highBound);
    vec3 operator()(vec3 point) const;

private:
    bool bends_ = false;
    float curvature_ = 0.0f;
    float lowBound_ = 0.0f;
    float highBound_ = 0.0f;
    mat4 toHandle_{1.0f};
    mat4 fromHandle_{1.0f};
};

/// The same for the points that `indices` names, in any order; an index beyond the points names none.
Mesh& deformBendPartialMesh(Mesh& geometry, float envelope, std::vector<unsigned int> indices, mat4 handle,
                            float curvature, float lowBound, float highBound);

} // namespace zent
