#include "zent/nodes/ikRPsolver.h"

#include "zent/math/lanes.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"
#include "zent/nodes/ikJoint.h"

#include <glm/geometric.hpp>
#include <glm/gtc/constants.hpp>
#include <glm/matrix.hpp>

#include <algorithm>
#include <string>
#include <utility>

namespace zent {
namespace {

/// The widened float threshold decides here, so that the bounds are not those of the float 0.99999.
constexpr double kAlmostParallel = 1.0 - static_cast<double>(kThreshold);

bool hasPole(vec3 poleVector) {
    return glm::dot(poleVector, poleVector) > kThreshold;
}

/// The part of a vector perpendicular to another.
vec3 rejectFrom(vec3 vector, vec3 axis) {
    return vector - (glm::dot(vector, axis) / glm::dot(axis, axis)) * axis;
}

// ---- Two bones, in world space ----

/// The chain as it stands and the handle, as vectors from the root.
struct TwoBones {
    vec3 upper;    ///< root to middle joint
    vec3 lower;    ///< middle joint to end
    vec3 end;      ///< root to end
    vec3 toHandle; ///< root to handle
    float upperLength;
    float lowerLength;
    float handleLength;

    TwoBones(vec3 upper_, vec3 lower_, vec3 toHandle_)
        : upper(upper_), lower(lower_), end(upper_ + lower_), toHandle(toHandle_), upperLength(guardedLength(upper_)),
          lowerLength(guardedLength(lower_)), handleLength(guardedLength(toHandle_)) {}

    vec3 handleDirection() const { return toHandle / handleLength; }
    bool isOutOfReach() const { return handleLength + kThreshold > upperLength + lowerLength; }
};

/// The turn of the lower bone that opens or closes the elbow until the end is as far from the root as the handle, by
/// the law of cosines. Angles are between the bones as vectors: 0 is the straight chain, which has no plane to bend in
/// and gives NaN.
quat bendElbow(const TwoBones& chain) {
    const float la = chain.upperLength;
    const float le = chain.lowerLength;
    const float lh = chain.handleLength;
    const float present = std::acos(std::clamp(glm::dot(chain.lower, chain.upper) / (la * le), -1.0f, 1.0f));
    const float wanted = std::acos(std::clamp((lh * lh - (le * le + la * la)) / (2.0f * la * le), -1.0f, 1.0f));
    return glm::angleAxis(wanted - present, glm::normalize(glm::cross(chain.upper, chain.lower)));
}

/// The turn of the whole chain that brings the bent chain's end onto the handle's line.
quat aimEnd(const TwoBones& chain, quat bend) {
    return rotationBetween(glm::normalize(chain.upper + bend * chain.lower), chain.handleDirection());
}

/// Which way the elbow points after the aim. A chain that the handle stretches straight keeps the side it bent to
/// before.
vec3 elbowDirection(const TwoBones& chain, quat aim) {
    return aim * (chain.isOutOfReach() ? rejectFrom(chain.upper, chain.end) : chain.upper);
}

/// The turn about the handle's line that brings the elbow to the side of the pole.
quat turnToPole(const TwoBones& chain, vec3 elbow, vec3 pole) {
    const vec3 elbowSide = rejectFrom(elbow, chain.toHandle);
    const vec3 poleSide = rejectFrom(pole, chain.toHandle);
    const float elbowLength = guardedLength(elbowSide);
    const float poleLength = guardedLength(poleSide);
    const float cosine = glm::dot(elbowSide, poleSide) / (elbowLength * poleLength);
    // Opposite, or a pole on the line. The second test takes the squared length, deliberately: a short pole is turned
    // too.
    if (std::abs(cosine + 1.0f) < kThreshold || glm::dot(poleSide, poleSide) < kThreshold) {
        return glm::angleAxis(glm::pi<float>(), chain.handleDirection());
    }
    return rotationBetween(elbowSide / elbowLength, poleSide / poleLength);
}

/// A joint's rotate after a turn in world space.
/// The turn is taken into the frame of the joint with its present rotate and stands left of that rotate: in general
/// position the joint does not follow the turn exactly, and so it is meant.
vec3 turnedRotate(const mat4& joint_world, quat turn_world, vec3 rotate, int rotateOrder) {
    const auto order = static_cast<RotateOrder>(rotateOrder);
    const quat frame = get_orient(joint_world);
    const quat turn_joint = glm::inverse(frame) * turn_world * frame;
    return eulerAngles(turn_joint * eulerToQuat(rotate, order), order);
}

// ---- One bone, in the joint's frame at zero rotate ----

/// The unit axis of a vector's smallest component; x where none is smaller than the others.
vec3 leastAxis(vec3 v) {
    if (std::abs(v.z) < std::abs(v.x) && std::abs(v.z) < std::abs(v.y)) {
        return {0.0f, 0.0f, 1.0f};
    }
    if (std::abs(v.y) < std::abs(v.x)) {
        return {0.0f, 1.0f, 0.0f};
    }
    return {1.0f, 0.0f, 0.0f};
}

/// The angle about the aimed bone that turns the bone's reference axis to the plane of the pole, 0 to a whole turn.
float poleAngle(quat aim, vec3 bone, vec3 pole) {
    const vec3 direction = glm::normalize(aim * bone);
    vec3 reference = aim * leastAxis(bone);
    const float along = glm::dot(reference, direction);
    if (std::abs(along) > kThreshold) {
        reference = glm::normalize(reference - along * direction);
    }
    const vec3 poleNormal = glm::normalize(glm::cross(pole, direction));
    const float cosine = glm::dot(poleNormal, reference);
    float angle = std::acos(cosine);
    if (static_cast<double>(cosine) <= -kAlmostParallel) {
        angle = glm::pi<float>();
    } else if (static_cast<double>(cosine) >= kAlmostParallel) {
        angle = 0.0f;
    }
    if (glm::dot(glm::cross(poleNormal, reference), direction) > 0.0f) {
        angle = static_cast<float>(2.0 * kPi - static_cast<double>(angle));
    }
    return angle;
}

void requireEqualLists(std::size_t joints, std::initializer_list<std::pair<const char*, std::size_t>> lists) {
    for (const auto& [name, size] : lists) {
        if (size != joints) {
            fail(std::string(name) + " has " + std::to_string(size) + " entries, jointOrients has " +
                 std::to_string(joints));
        }
    }
}

} // namespace

ChainList<vec3> ikRPsolver(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector, float twist,
                           mat4 rootParent, ChainList<vec3> jointOrients, ChainList<vec3> rotates,
                           ChainList<vec3> translates, ChainList<int> rotateOrders, ChainList<vec3> scales,
                           ChainList<vec3> inverseScales, ChainList<bool> compensates) {
    requireAtLeast("jointOrients", jointOrients.size(), 1, "ikRPsolver");
    requireEqualLists(jointOrients.size(), {{"rotates", rotates.size()},
                                            {"translates", translates.size()},
                                            {"rotateOrders", rotateOrders.size()},
                                            {"scales", scales.size()},
                                            {"inverseScales", inverseScales.size()},
                                            {"compensates", compensates.size()}});
    if (jointOrients.size() == 1) {
        return {ikRPsolver1Bone(handleParent, handleTranslate, endTranslate, poleVector, twist, rootParent,
                                jointOrients[0], rotates[0], translates[0], rotateOrders[0], scales[0],
                                inverseScales[0], compensates[0])};
    }
    return ikRPsolver2Bones(handleParent, handleTranslate, endTranslate, poleVector, twist, rootParent, jointOrients,
                            rotates, translates, rotateOrders, scales, inverseScales, compensates);
}

ChainList<vec3> ikRPsolver2Bones(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector,
                                 float twist, mat4 rootParent, ChainList<vec3> jointOrients, ChainList<vec3> rotates,
                                 ChainList<vec3> translates, ChainList<int> rotateOrders, ChainList<vec3> scales,
                                 ChainList<vec3> inverseScales, ChainList<bool> compensates) {
    requireLists("ikRPsolver2Bones", 2,
                 {{"jointOrients", jointOrients.size()},
                  {"rotates", rotates.size()},
                  {"translates", translates.size()},
                  {"rotateOrders", rotateOrders.size()},
                  {"scales", scales.size()},
                  {"inverseScales", inverseScales.size()},
                  {"compensates", compensates.size()}});
    const auto local = [&](std::size_t i) {
        return ik__IMPL__matrix(translates[i], jointOrients[i], scales[i], inverseScales[i], compensates[i], rotates[i],
                                static_cast<RotateOrder>(rotateOrders[i]));
    };
    const mat4 root_world = productOf(rootParent, local(0));
    const mat4 middle_world = productOf(root_world, local(1));
    const vec3 root(root_world[3]);
    const TwoBones chain(vec3(middle_world[3]) - root, transformVector(middle_world, endTranslate),
                         transformPoint(handleParent, handleTranslate) - root);

    const quat bend = bendElbow(chain);
    quat aim = aimEnd(chain, bend);
    if (hasPole(poleVector)) {
        aim = turnToPole(chain, elbowDirection(chain, aim), transformVector(handleParent, poleVector)) * aim;
    }
    if (twist > kThreshold) { // signed: a negative twist is ignored, deliberately unlike the one-bone solver
        aim = glm::angleAxis(twist, chain.handleDirection()) * aim;
    }
    return {turnedRotate(root_world, aim, rotates[0], rotateOrders[0]),
            turnedRotate(middle_world, bend, rotates[1], rotateOrders[1])};
}

vec3 ikRPsolver1Bone(mat4 handleParent, vec3 handleTranslate, vec3 endTranslate, vec3 poleVector, float twist,
                     mat4 rootParent, vec3 jointOrient, vec3 /*rotate*/, vec3 translate, int rotateOrder, vec3 scale,
                     vec3 inverseScale, bool compensate) {
    const mat4 frame = ik__IMPL__frame(rootParent, translate, jointOrient, inverseScale, compensate);
    const vec3 bone = endTranslate * scale;
    const vec3 handle = transformPoint(glm::inverse(frame), transformPoint(handleParent, handleTranslate));
    const vec3 handleDirection = glm::normalize(handle);

    const quat aim = rotationBetween(glm::normalize(bone), handleDirection);
    float angle = 0.0f;
    if (hasPole(poleVector)) {
        const vec3 pole_world = transformVector(handleParent, poleVector);
        angle = poleAngle(aim, bone, glm::inverse(mat3(frame)) * pole_world);
    }
    // Untested, so that a negative twist acts here: deliberately unlike the two-bone solver.
    return eulerAngles(glm::angleAxis(angle + twist, handleDirection) * aim, static_cast<RotateOrder>(rotateOrder));
}

} // namespace zent
