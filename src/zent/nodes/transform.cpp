#include "zent/nodes/transform.h"

#include "zent/math/rotation.h"

namespace zent {

// Products in Maya's row order: M = T(-scalePivot) S H T(toRotatePivot) R T(toParent).
namespace {

/// T(-pivot) S H T(offset).
mat4 scaleAndShear(vec3 scale, vec3 shear, vec3 pivot, vec3 offset) {
    const mat3 sheared(vec3(1.0f, 0.0f, 0.0f), vec3(shear.x, 1.0f, 0.0f), vec3(shear.y, shear.z, 1.0f));
    const mat3 linear = scaledRows(sheared, scale);
    mat4 m(linear);
    m[3] = vec4(offset - linear * pivot, 1.0f);
    return m;
}

} // namespace

mat4 transform(vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 shear, vec3 rotatePivot, vec3 scalePivot,
               vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    const vec3 toRotatePivot = scalePivot + scalePivotTranslate - rotatePivot;
    const vec3 toParent = rotatePivot + rotatePivotTranslate + translate;
    const mat4 rotation = eulerRotateMatrix(rotate, static_cast<RotateOrder>(rotateOrder));

    mat4 m = rotation * scaleAndShear(scale, shear, scalePivot, toRotatePivot);
    m[3] += vec4(m[3].w * toParent, 0.0f);
    return m;
}

} // namespace zent
