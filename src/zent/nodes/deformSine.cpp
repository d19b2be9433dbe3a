// Products in this file are told in the column-vector order of glm: the rightmost factor acts on a point first.
#include "zent/nodes/deformSine.h"

#include "zent/math/rotation.h"

#include <algorithm>
#include <cmath>

namespace zent {

template <class T>
T& deformSine(T& geometry, float envelope, mat4 handle, float wavelength, float amplitude, float offset, float lowBound,
              float highBound) {
    if (!(envelope >= kThreshold) || !(wavelength >= kThreshold)) {
        return geometry;
    }
    requireConsistent(geometry, "geometry");
    const float scaledAmplitude = envelope * amplitude;
    const double frequency = 1.0 / static_cast<double>(wavelength * 0.5f);
    const mat4 toHandle = glm::inverse(handle) * matrixOf(geometry);
    const mat4 fromHandle = inverseMatrixOf(geometry) * handle;

    const unsigned count = pointCount(geometry);
    for (unsigned i = 0; i < count; ++i) {
        vec3 point_handle = transformPoint(toHandle, pointsOf(geometry)[i]);
        const float height = point_handle.y < lowBound ? lowBound : std::min(point_handle.y, highBound);
        const auto phase = static_cast<float>(static_cast<double>(height + offset) * kPi * frequency);
        point_handle.x += scaledAmplitude * std::sin(phase);
        writePoint(geometry, i, transformPoint(fromHandle, point_handle));
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
