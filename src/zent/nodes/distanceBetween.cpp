#include "zent/nodes/distanceBetween.h"

namespace zent {

float distanceBetweenTwoPoints(vec3 a, vec3 b) {
    return guardedLength(b - a);
}

float distanceDimShape(vec3 a, vec3 b) {
    return distanceBetweenTwoPoints(a, b);
}

float distanceBetweenTwoMatrices(mat4 a, mat4 b) {
    return distanceBetweenTwoPoints(vec3(a[3]), vec3(b[3]));
}

} // namespace zent
