#include "zent/nodes/deformSine.h"

#include "zent/math/rotation.h"

#include <algorithm>
#include <cmath>

namespace zent {

PointSine::PointSine(mat4 const& objectToWorld, mat4 const& worldToObject, float envelope, mat4 const& handle,
                     float wavelength, float amplitude, float offset, float lowBound, float highBound)
    : moves_(envelope >= kThreshold && wavelength >= kThreshold), amplitude_(envelope * amplitude), offset_(offset),
      lowBound_(lowBound), highBound_(highBound), frequency_(1.0 / static_cast<double>(wavelength * 0.5f)) {
    if (moves_) {
        toHandle_ = glm::inverse(handle) * objectToWorld;
        fromHandle_ = worldToObject * handle;
    }
}

vec3 PointSine::operator()(vec3 point) const {
    if (!moves_) {
        return point;
    }
    vec3 point_handle = transformPoint(toHandle_, point);
    const float height = point_handle.y < lowBound_ ? lowBound_ : std::min(point_handle.y, highBound_);
    const auto phase = static_cast<float>(static_cast<double>(height + offset_) * kPi * frequency_);
    point_handle.x += amplitude_ * std::sin(phase);
    return transformPoint(fromHandle_, point_handle);
}

template <class T>
T& deformSine(T& geometry, float envelope, mat4 handle, float wavelength, float amplitude, float offset, float lowBound,
              float highBound) {
    if (!(envelope >= kThreshold) || !(wavelength >= kThreshold)) {
        return geometry;
    }
    requireConsistent(geometry, "geometry");
    const PointSine moved(matrixOf(geometry), inverseMatrixOf(geometry), envelope, handle, wavelength, amplitude,
                          offset, lowBound, highBound);
    const unsigned count = pointCount(geometry);
    PointWriter<T> write(geometry);
    for (unsigned i = 0; i < count; ++i) {
        write(i, moved(pointsOf(geometry)[i]));
    }
    return geometry;
}

template Curve& deformSine(Curve&, float, mat4, float, float, float, float, float);
template Surface& deformSine(Surface&, float, mat4, float, float, float, float, float);

Curve& deformSineCurve(Curve& geometry, float envelope, mat4 handle, float wavelength, float amplitude, float offset,
                       float lowBound, float highBound) {
    return deformSine(geometry, envelope, handle, wavelength, amplitude, offset, lowBound, highBound);
}

Surface& deformSineSurface(Surface& geometry, float envelope, mat4 handle, float wavelength, float amplitude,
                           float offset, float lowBound, float highBound) {
    return deformSine(geometry, envelope, handle, wavelength, amplitude, offset, lowBound, highBound);
}

float deformSine__IMPL__delta(float y, float amplitude, float wavelength, float offset, float envelope) {
    const double phase = static_cast<double>(offset + y) * kPi / static_cast<double>(wavelength * 0.5f);
    return std::sin(static_cast<float>(phase)) * (envelope * amplitude);
}

} // namespace zent
