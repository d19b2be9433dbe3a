#include "zent/nodes/pairBlend.h"

#include "zent/math/rotation.h"

namespace zent {
namespace {

quat nonNegativeQuat(vec3 angles) {
    const quat q = eulerToQuat(angles, kRotateXYZ);
    return q.w < 0.0f ? -q : q;
}

float blendComponent(float a, float b, float weight, int mode) {
    switch (mode) {
    case 0:
        return a + (b - a) * weight;
    case 2:
        return b;
    default:
        return a;
    }
}

} // namespace

vec3 pairBlendRotate(vec3 a, vec3 b, float weight, int mode) {
    switch (mode) {
    case 0:
        return (1.0f - weight) * a + weight * b;
    case 1:
        // Deliberately not normalised: far apart, this is not the spherical midpoint.
        return eulerAngles((1.0f - weight) * nonNegativeQuat(a) + weight * nonNegativeQuat(b), kRotateXYZ);
    default:
        return a;
    }
}

vec3 pairBlendTranslate(vec3 a, vec3 b, float weight, int modeX, int modeY, int modeZ) {
    return {blendComponent(a.x, b.x, weight, modeX), blendComponent(a.y, b.y, weight, modeY),
            blendComponent(a.z, b.z, weight, modeZ)};
}

} // namespace zent
