#include "Function.h"

#include "zent/nodes/aimConstraint.h"
#include "zent/nodes/ikRPsolver.h"
#include "zent/nodes/ikSCsolver.h"
#include "zent/nodes/ikSplineSolver.h"
#include "zent/nodes/orientConstraint.h"
#include "zent/nodes/parentConstraint.h"
#include "zent/nodes/pointConstraint.h"
#include "zent/nodes/poleVectorConstraint.h"
#include "zent/nodes/scaleConstraint.h"
#include "zent/nodes/tangentConstraint.h"

namespace zent::python {

namespace {

// The weighted forms, not those of a single target.
using PointConstraint = vec3 (*)(mat4, vec3, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>,
                                 TargetList<vec3>);
using ScaleConstraint = vec3 (*)(mat4, bool, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>);
using ParentTranslate = vec3 (*)(mat4, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>,
                                 TargetList<vec3>, TargetList<vec3>, TargetList<vec3>, TargetList<int>,
                                 TargetList<vec3>, TargetList<vec3>, TargetList<bool>, TargetList<vec3>);

std::pair<std::vector<vec3>, vec3> splineSolver(Curve const& curve, bool rootTwist, bool twistControl, int forwardAxis,
                                                int upAxis, int worldUpType, vec3 upVectorStart, vec3 upVectorEnd,
                                                mat4 upMatrixStart, mat4 upMatrixEnd, int unused, vec3 endTranslate,
                                                float twist, mat4 rootParent, std::vector<vec3> jointOrients,
                                                std::vector<vec3> translates, std::vector<int> rotateOrders,
                                                std::vector<vec3> scales, std::vector<vec3> inverseScales,
                                                std::vector<bool> compensates) {
    SplineChain chain = ikSplineSolver(curve, rootTwist, twistControl, forwardAxis, upAxis, worldUpType, upVectorStart,
                                       upVectorEnd, upMatrixStart, upMatrixEnd, unused, endTranslate, twist, rootParent,
                                       std::move(jointOrients), std::move(translates), std::move(rotateOrders),
                                       std::move(scales), std::move(inverseScales), std::move(compensates));
    return {std::move(chain.rotates), chain.rootTranslate};
}

} // namespace

void bindConstraints(Functions& functions) {
    functions.add("pointConstraint", PointConstraint{pointConstraint},
                  "constraintParentInverseMatrix=I constraintRotatePivot=0 constraintRotateTranslate=0 offset=0 "
                  "targetWeight restTranslate=0 targetParentMatrix targetTranslate targetRotatePivot=0",
                  "The translate of a node held at the weighted mean of its targets, in its parent's space.\n\n"
                  "No target, or weights that sum below 1e-5, give `restTranslate`; targets of a weight below 1e-5 are "
                  "skipped. A target\nlist shorter than the weights raises Error.");
    functions.add("scaleConstraint", ScaleConstraint{scaleConstraint},
                  "constraintParentInverseMatrix=I constraintScaleCompensate=0 offset=1 targetWeight restScale=1 "
                  "targetParentMatrix targetScale",
                  "The scale of a node held at the weighted mean of its targets; `offset` is a factor. Weights are "
                  "those of\n`pointConstraint`.");
    functions.add("orientConstraint", orientConstraint,
                  "constraintParentInverseMatrix=I constraintRotateOrder=0 constraintJointOrient:rad=0 offset:rad=0 "
                  "interpType=1 targetWeight restRotate:rad=0 targetParentMatrix targetRotate:rad targetRotateOrder=0 "
                  "targetJointOrient:rad=0",
                  "The rotate (radians, in `constraintRotateOrder`) of a node that follows the rotation of its "
                  "targets.\n\nInterpolation: 0 no flip, 1 average, 2 shortest. Weights are those of "
                  "`pointConstraint`.");
    functions.add("parentConstraintTranslate", ParentTranslate{parentConstraintTranslate},
                  "constraintParentInverseMatrix=I constraintRotatePivot=0 constraintRotateTranslate=0 targetWeight "
                  "restTranslate=0 targetParentMatrix targetTranslate targetOffsetTranslate=0 targetRotatePivot=0 "
                  "targetRotate:rad=0 targetRotateOrder=0 targetScale=1 targetInverseScale=1 targetScaleCompensate=0 "
                  "targetJointOrient:rad=0",
                  "The translate of a node that follows its targets like a child. Weights are those of "
                  "`pointConstraint`.");
    functions.add("parentConstraintRotate", parentConstraintRotate,
                  "constraintParentInverseMatrix=I constraintRotateOrder=0 constraintJointOrient:rad=0 interpType=1 "
                  "targetWeight restRotate:rad=0 targetParentMatrix targetRotate:rad targetOffsetRotate:rad=0 "
                  "targetRotateOrder=0 targetJointOrient:rad=0",
                  "The rotate (radians, in `constraintRotateOrder`) of a node that follows its targets like a child. "
                  "One target alone is\nfollowed whatever its weight. Weights are those of `pointConstraint`.");
    functions.add(
        "aimConstraint",
        static_cast<vec3 (*)(mat4, vec3, vec3, vec3, int, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>,
                             TargetList<vec3>, TargetList<vec3>, int, mat4, vec3, vec3, vec3)>(aimConstraint),
        "constraintParentInverseMatrix=I constraintTranslate=0 constraintRotatePivot=0 "
        "constraintRotateTranslate=0 constraintRotateOrder=0 constraintJointOrient:rad=0 offset:rad=0 "
        "targetWeight restRotate:rad=0 targetParentMatrix targetTranslate targetRotatePivot=0 worldUpType=3 "
        "worldUpMatrix=I worldUpVector aimVector upVector",
        "The rotate (radians, in `constraintRotateOrder`) of a node that aims at its targets.\n\n"
        "World up: 0 scene, 1 object, 2 object rotation, 3 vector. A target at the node itself gives NaN. "
        "Weights are those of\n`pointConstraint`.");
    functions.add(
        "tangentConstraint", tangentConstraint,
        "constraintParentInverseMatrix=I constraintRotateOrder=0 constraintTranslate=0 targetGeometry aimVector "
        "upVector worldUpType=3 worldUpMatrix=I worldUpVector",
        "The rotate (radians, in `constraintRotateOrder`) of a node whose `aimVector` follows a curve's "
        "tangent at the closest\npoint to it. World up as of `aimConstraint`. A curve that cannot be "
        "evaluated raises Error.");
    functions.add(
        "poleVectorConstraint", poleVectorConstraint,
        "constraintParentInverseMatrix=I constraintRotatePivot pivotSpace=I targetParentMatrix=I targetTranslate "
        "targetRotatePivot=0",
        "The pole vector of an IK handle held at a target: from the chain's root, `constraintRotatePivot` in "
        "`pivotSpace`, to the\ntarget, in the handle's parent's space.");
    functions.add(
        "ikRPsolver", ikRPsolver,
        "parentMatrix=I translate endTranslate poleVector twist:rad=0 rootParentMatrix=I jointOrient:rad=0 "
        "rotate:rad jointTranslate rotateOrder=0 scale=1 inverseScale=1 segmentScaleCompensate=1",
        "The rotates (radians, each in its joint's rotate order) that bring the end of a chain of one or two "
        "joints to an IK\nhandle.\n\n`translate` and `poleVector` are the handle's, in the space of "
        "`parentMatrix`; `endTranslate` is the end effector's.\nThe lists hold the joints' channels, the root "
        "first; `rotate` is the pose that tells where the chain bends. An empty\nchain and lists of unequal "
        "length raise Error.");
    functions.add("ikSCsolver", ikSCsolver,
                  "parentMatrix=I translate endTranslate rotate:rad=0 handleRotateOrder=0 rootParentMatrix=I "
                  "jointOrient:rad=0 jointTranslate rotateOrder=0 scale=1 inverseScale=1 segmentScaleCompensate=1",
                  "The rotate (radians, in the joint's rotate order) that points a single joint's bone at an IK handle "
                  "and turns it about\nthe bone with the handle's own `rotate`. The lists of one hold the joint's "
                  "channels.");
    functions.add(
        "ikSplineSolver", splineSolver,
        "inCurve rootTwistMode=0 dTwistControlEnable=0 dForwardAxis=0 dWorldUpAxis=0 dWorldUpType=0 "
        "dWorldUpVector=0 dWorldUpVectorEnd=0 dWorldUpMatrix=I dWorldUpMatrixEnd=I unused=0 endTranslate "
        "twist:rad=0 rootParentMatrix=I jointOrient:rad translate rotateOrder=0 scale=1 inverseScale=1 "
        "segmentScaleCompensate=1",
        "Lays a chain of joints along a curve: each joint's rotate (radians, in its rotate order), and the "
        "translate of the\nfirst.\n\n`jointOrient` gives the number of joints, `translate` the channels of all "
        "but the first, `endTranslate` that of the\nchain's end. World up: 1 object, 4 object rotation of start "
        "and end, 6 vectors of start and end. An empty chain and\nshort lists raise Error.");
}

} // namespace zent::python
