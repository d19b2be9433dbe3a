#include "zent/nodes/tangentConstraint.h"

#include "zent/math/rotation.h"
#include "zent/nodes/aimConstraint.h"
#include "zent/nodes/nearestPointOnCurve.h"

#include <glm/geometric.hpp>
#include <glm/matrix.hpp>

namespace zent {

vec3 tangentConstraint(mat4 parentInverse, int rotateOrder, vec3 position, Curve const& curve, vec3 aimVector,
                       vec3 upVector, int worldUpType, mat4 worldUpMatrix, vec3 worldUpVector) {
    const vec3 node_world = transformPoint(glm::inverse(parentInverse), position);
    const vec3 tangent_world = glm::normalize(curve.dPdU(getClosetPointOnCurve(curve, node_world)));
    const vec3 tangent_parent = aim__IMPL__toParentSpace(parentInverse, tangent_world);
    const vec3 worldUp = aim__IMPL__worldUpDir(worldUpType, worldUpMatrix, worldUpVector, node_world);
    return eulerAngles(IMPL__aimConstraint(parentInverse, tangent_parent, aimVector, upVector, worldUp),
                       static_cast<RotateOrder>(rotateOrder));
}

} // namespace zent
