#include "zent/nodes/joint.h"

#include "zent/math/lanes.h"
#include "zent/math/rotation.h"

#include <glm/gtc/matrix_transform.hpp>

namespace zent {

mat4 joint(vec3 translate, vec3 rotate, vec3 scale, int rotateOrder, vec3 jointOrient, vec3 inverseScale,
           bool compensate) {
    const mat4 orient = eulerRotateMatrix(jointOrient, kRotateXYZ);
    const mat4 rotation = eulerRotateMatrix(rotate, static_cast<RotateOrder>(rotateOrder));
    // The parent's scale is divided out of the axes, not of the translation.
    const vec3 factor = compensate ? 1.0f / inverseScale : vec3(1.0f);
    const Lanes factors{factor.x, factor.y, factor.z, 1.0f};

    // S R J P in Maya's row order, P being `factor` and the translation.
    mat4 m = productOf(productOf(orient, rotation), glm::scale(mat4(1.0f), scale));
    for (int i = 0; i < 4; ++i) {
        storeLanes(loadLanes(&m[i].x) * factors + m[i].w * pointLanes(translate), &m[i].x);
    }
    return m;
}

} // namespace zent
