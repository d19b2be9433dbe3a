#include "zent/nodes/ikSplineSolver.h"

#include "zent/geometry/nurbs.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"
#include "zent/nodes/ikJoint.h"
#include "zent/nodes/intersectCurveSphere.h"
#include "zent/nodes/nearestPointOnCurve.h"

#include <glm/geometric.hpp>
#include <glm/matrix.hpp>

#include <algorithm>

namespace zent {
namespace {

/// How far a point may be from a bone length away and still be where the curve leaves the sphere.
constexpr float kOnSphere = 0.001f;

/// The walk along the curve, from joint to joint by spheres of the bone's length.
struct CurveWalk {
    const Curve& curve;
    const CurveSamples& samples;
    float parameter = 0.0f;

    /// The place of the next joint, world space.
    vec3 next(vec3 joint, float boneLength) {
        const float crossing = intersectCurveSphere(curve, samples, joint, boneLength);
        // A search that does not advance has passed the end: the chain never runs back along the curve.
        parameter = crossing > parameter ? crossing : curve.domainEnd();
        const vec3 point = worldPoint(curve, parameter);
        if (std::abs(guardedLength(point - joint) - boneLength) <= kOnSphere) {
            return point;
        }
        const vec3 tangent = glm::normalize(curve.dPdU(parameter));
        return point + intersectLine(point, tangent, joint, boneLength).second * tangent;
    }
};

/// The up direction's turn about a joint's forward axis.
struct UpControl {
    int worldUpType;
    vec3 forward;
    vec3 up;
    vec3 side;
    vec3 startPosition{0.0f};
    vec3 startVector{0.0f};
    vec3 endVector{0.0f};

    UpControl(int forwardAxis, int upAxis, int worldUpType_, vec3 upVectorStart, vec3 upVectorEnd,
              const mat4& upMatrixStart, const mat4& upMatrixEnd)
        : worldUpType(worldUpType_), forward(ik__IMPL__forwardAxis(forwardAxis)), up(ik__IMPL__upAxis(upAxis)),
          side(glm::cross(forward, up)), startPosition(upMatrixStart[3]) {
        if (worldUpType == kSplineUpObjectRotationBetween) {
            startVector = glm::normalize(transformVector(upMatrixStart, upVectorStart));
            endVector = glm::normalize(transformVector(upMatrixEnd, upVectorEnd));
        } else if (worldUpType == kSplineUpVectorBetween) {
            startVector = glm::normalize(upVectorStart);
            endVector = glm::normalize(upVectorEnd);
        }
    }

    /// The turn for a joint that `aim` has pointed along the curve, `fraction` of the way down the chain.
    quat turn(const mat4& frame, quat aim, float fraction) const {
        const mat3 toJoint = glm::inverse(glm::mat3_cast(aim)) * glm::inverse(mat3(frame));
        const auto turnTo = [&](vec3 up_world) {
            const vec3 up_joint = toJoint * up_world;
            return glm::angleAxis(std::atan2(glm::dot(up_joint, side), glm::dot(up_joint, up)), forward);
        };
        switch (worldUpType) {
        case kSplineUpObject: // the start object for all joints: nothing is blended
            return turnTo(glm::normalize(startPosition - vec3(frame[3])));
        case kSplineUpObjectRotationBetween:
        case kSplineUpVectorBetween:
            return slerpStep(turnTo(startVector), turnTo(endVector), fraction);
        default:
            return {1.0f, 0.0f, 0.0f, 0.0f};
        }
    }
};

/// A joint's frame after its own rotation and scale; row 3 stands.
mat4 turnedFrame(mat4 frame, quat rotation, vec3 scale) {
    const mat3 turned = scaledRows(mat3(frame) * glm::mat3_cast(rotation), scale);
    for (int row = 0; row < 3; ++row) {
        frame[row] = vec4(turned[row], frame[row].w);
    }
    return frame;
}

} // namespace

vec3 ik__IMPL__forwardAxis(int forwardAxis) {
    switch (forwardAxis) {
    case 0:
        return {1.0f, 0.0f, 0.0f};
    case 1:
        return {-1.0f, 0.0f, 0.0f};
    case 2:
        return {0.0f, 1.0f, 0.0f};
    case 3:
        return {0.0f, -1.0f, 0.0f};
    case 4:
        return {0.0f, 0.0f, 1.0f};
    case 5:
        return {0.0f, 0.0f, -1.0f};
    default:
        return vec3(0.0f);
    }
}

vec3 ik__IMPL__upAxis(int upAxis) {
    switch (upAxis) { // no axis for 2 and 5, deliberately
    case 0:
        return {0.0f, 1.0f, 0.0f};
    case 1:
        return {0.0f, -1.0f, 0.0f};
    case 3:
        return {0.0f, 0.0f, 1.0f};
    case 4:
        return {0.0f, 0.0f, -1.0f};
    case 6:
        return {1.0f, 0.0f, 0.0f};
    case 7:
        return {-1.0f, 0.0f, 0.0f};
    default:
        return vec3(0.0f);
    }
}

void IMPL_ikSplineSolver(Curve const& curve, bool rootTwist, bool twistControl, int forwardAxis, int upAxis,
                         int worldUpType, vec3 upVectorStart, vec3 upVectorEnd, mat4 const& upMatrixStart,
                         mat4 const& upMatrixEnd, vec3 endTranslate, float twist, mat4 const& rootParent,
                         std::vector<vec3> const& jointOrients, std::vector<vec3> const& translates,
                         std::vector<int> const& rotateOrders, std::vector<vec3> const& scales,
                         std::vector<vec3> const& inverseScales, std::vector<bool> const& compensates,
                         CurveSamples& samples, SplineChain& chain) {
    const std::size_t count = jointOrients.size();
    requireEvaluable(curve, "curve");
    requireAtLeast("jointOrients", count, 1, "ikSplineSolver");
    requireAtLeast("translates", translates.size(), count - 1, "ikSplineSolver");
    requireLists("ikSplineSolver", count,
                 {{"rotateOrders", rotateOrders.size()},
                  {"scales", scales.size()},
                  {"inverseScales", inverseScales.size()},
                  {"compensates", compensates.size()}});

    const auto intervals = static_cast<float>(std::max<std::size_t>(count - 1, 1));
    const float jointTwist = rootTwist ? twist / static_cast<float>(count) : twist * (1.0f / intervals);
    const UpControl up(forwardAxis, upAxis, worldUpType, upVectorStart, upVectorEnd, upMatrixStart, upMatrixEnd);
    closestSamples(curve, samples);
    CurveWalk walk{curve, samples};

    // The root stands at parameter 0, deliberately not at the domain's start.
    chain.rootTranslate = transformPoint(glm::inverse(rootParent), worldPoint(curve, 0.0f));
    chain.rotates.clear();
    chain.rotates.reserve(count);
    mat4 parent = rootParent;
    // The first frame holds the joint's scale, which acts once more in turnedFrame: deliberate, and only here.
    mat4 frame = rootParent *
                 ik__IMPL__matrix(chain.rootTranslate, jointOrients[0], scales[0], inverseScales[0], compensates[0]);
    for (std::size_t i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        const vec3 bone = isLast ? endTranslate : translates[i];
        const vec3 scale = ik__IMPL__scale(scales[i], inverseScales[i], compensates[i]);
        const float boneLength = guardedLength(scale * get_scale_and_shear(parent).first * bone);

        quat rotation(1.0f, 0.0f, 0.0f, 0.0f);
        if (boneLength >= kThreshold) {
            const vec3 target_world = walk.next(vec3(frame[3]), boneLength);
            const vec3 direction = glm::normalize(transformPoint(glm::inverse(frame), target_world));
            rotation = rotationBetweenUnits(glm::normalize(bone), direction);
            if (rootTwist || i > 0) {
                rotation = glm::angleAxis(jointTwist, direction) * rotation;
            }
        }
        if (twistControl) {
            rotation = rotation * up.turn(frame, rotation, static_cast<float>(i) / intervals);
        }
        chain.rotates.push_back(eulerAngles(rotation, static_cast<RotateOrder>(rotateOrders[i])));
        parent = turnedFrame(frame, rotation, scales[i]);
        if (!isLast) {
            frame =
                ik__IMPL__frame(parent, translates[i], jointOrients[i + 1], inverseScales[i + 1], compensates[i + 1]);
        }
    }
}

SplineChain ikSplineSolver(Curve const& curve, bool rootTwist, bool twistControl, int forwardAxis, int upAxis,
                           int worldUpType, vec3 upVectorStart, vec3 upVectorEnd, mat4 upMatrixStart, mat4 upMatrixEnd,
                           int /*unused*/, vec3 endTranslate, float twist, mat4 rootParent,
                           std::vector<vec3> jointOrients, std::vector<vec3> translates, std::vector<int> rotateOrders,
                           std::vector<vec3> scales, std::vector<vec3> inverseScales, std::vector<bool> compensates) {
    CurveSamples samples;
    SplineChain chain;
    IMPL_ikSplineSolver(curve, rootTwist, twistControl, forwardAxis, upAxis, worldUpType, upVectorStart, upVectorEnd,
                        upMatrixStart, upMatrixEnd, endTranslate, twist, rootParent, jointOrients, translates,
                        rotateOrders, scales, inverseScales, compensates, samples, chain);
    return chain;
}

} // namespace zent
