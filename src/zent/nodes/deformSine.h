#pragma once

#include "zent/geometry/shapes.h"

namespace zent {

/// Maya's sine, in place: moves each point along the handle's X axis by a sine of its height on the handle's Y axis. T
/// is Curve or Surface; points are in object space, `handle` goes to the world, lengths are in handle space.
///
/// Nothing happens for an envelope or a wavelength below 1e-5; from there up the envelope scales the amplitude. Beyond
/// a bound the displacement stays as it is at the bound.
template <class T>
T& deformSine(T& geometry, float envelope, mat4 handle, float wavelength, float amplitude, float offset, float lowBound,
              float highBound);
extern template Curve& deformSine(Curve&, float, mat4, float, float, float, float, float);
extern template Surface& deformSine(Surface&, float, mat4, float, float, float, float, float);

/// The same for a caller that moves a record point by point: set up once for the shape's transform and its inverse.
class PointSine {
public:
    PointSine() = default; ///< leaves every point as it is
    PointSine(mat4 const& objectToWorld, mat4 const& worldToObject, float envelope, mat4 const& handle,
              float wavelength, float amplitude, float offset, float lowBound, float highBound);
    vec3 operator()(vec3 point) const;

private:
    bool moves_ = false;
    float amplitude_ = 0.0f;
    float offset_ = 0.0f;
    float lowBound_ = 0.0f;
    float highBound_ = 0.0f;
    double frequency_ = 0.0;
    mat4 toHandle_{1.0f};
    mat4 fromHandle_{1.0f};
};

Curve& deformSineCurve(Curve& geometry, float envelope, mat4 handle, float wavelength, float amplitude, float offset,
                       float lowBound, float highBound);
Surface& deformSineSurface(Surface& geometry, float envelope, mat4 handle, float wavelength, float amplitude,
                           float offset, float lowBound, float highBound);

/// The displacement at the height y.
float deformSine__IMPL__delta(float y, float amplitude, float wavelength, float offset, float envelope);

} // namespace zent
