#pragma once

#include "zent/geometry/Curve.h"
#include "zent/nodes/nearestPointOnCurve.h"

#include <vector>

namespace zent {

/// The axis that a joint points along the curve: 0 to 5 are x, -x, y, -y, z, -z; zero for any other value.
vec3 ik__IMPL__forwardAxis(int forwardAxis);

/// The axis of a joint that the up direction turns: 0, 1 are y, -y; 3, 4 are z, -z; 6, 7 are x, -x; zero for 2, 5 and
/// any other value.
vec3 ik__IMPL__upAxis(int upAxis);

/// Where the spline solver takes its up direction from. Any other value leaves the aim as it is.
enum SplineUpType : int {
    kSplineUpObject = 1, ///< from each joint to the start object
    kSplineUpObjectRotationBetween =
        4,                     ///< the up vectors turned with the start and the end object, blended over the chain
    kSplineUpVectorBetween = 6 ///< the up vectors, blended over the chain
};

/// A solved chain: the rotate of each joint (radians, in its rotate order) and the translate of the first.
struct SplineChain {
    std::vector<vec3> rotates;
    vec3 rootTranslate{0.0f};
};

/// Lays a chain of joints along a curve, one bone length after the other; past the curve's end it goes on along the
/// tangent.
///
/// `rootTwist` spreads `twist` (radians) over all joints instead of all but the first; `twistControl` switches the up
/// direction on, told by the two axes and `worldUpType`, with an up vector and matrix for the first and the last joint.
/// `jointOrients` gives the joint count, `translates` the channels of all joints but the first, `endTranslate` that of
/// the chain's end; the other lists hold the joints' channels (see `joint`). The eleventh parameter is not read. Throws
/// std::runtime_error for a curve that cannot be evaluated, an empty chain, and a list shorter than the chain.
SplineChain ikSplineSolver(Curve const& curve, bool rootTwist, bool twistControl, int forwardAxis, int upAxis,
                           int worldUpType, vec3 upVectorStart, vec3 upVectorEnd, mat4 upMatrixStart, mat4 upMatrixEnd,
                           int, vec3 endTranslate, float twist, mat4 rootParent, std::vector<vec3> jointOrients,
                           std::vector<vec3> translates, std::vector<int> rotateOrders, std::vector<vec3> scales,
                           std::vector<vec3> inverseScales, std::vector<bool> compensates);

/// The same with its lists by reference, in the room of the evaluation before it.
void IMPL_ikSplineSolver(Curve const& curve, bool rootTwist, bool twistControl, int forwardAxis, int upAxis,
                         int worldUpType, vec3 upVectorStart, vec3 upVectorEnd, mat4 const& upMatrixStart,
                         mat4 const& upMatrixEnd, vec3 endTranslate, float twist, mat4 const& rootParent,
                         std::vector<vec3> const& jointOrients, std::vector<vec3> const& translates,
                         std::vector<int> const& rotateOrders, std::vector<vec3> const& scales,
                         std::vector<vec3> const& inverseScales, std::vector<bool> const& compensates,
                         CurveSamples& samples, SplineChain& chain);

} // namespace zent
