// Two-bone IK, from a chain's channels to its Euler angles, beside the job of an animation runtime with the conversions
// that it needs for the same.
#include "Pair.h"

#include "zent/nodes/ikRPsolver.h"

#include <glm/gtc/constants.hpp>

#include <cmath>

namespace zent::peers {

namespace {

struct Chain {
    ChainList<vec3> jointOrients, rotates, translates, scales, inverseScales;
    ChainList<int> rotateOrders;
    ChainList<bool> compensates;
};

quat quatOfXYZ(vec3 angles) {
    const vec3 c(std::cos(0.5f * angles.x), std::cos(0.5f * angles.y), std::cos(0.5f * angles.z));
    const vec3 s(std::sin(0.5f * angles.x), std::sin(0.5f * angles.y), std::sin(0.5f * angles.z));
    return {c.x * c.y * c.z + s.x * s.y * s.z, s.x * c.y * c.z - c.x * s.y * s.z, c.x * s.y * c.z + s.x * c.y * s.z,
            c.x * c.y * s.z - s.x * s.y * c.z};
}

vec3 xyzOfQuat(quat q) {
    const mat3 m = glm::mat3_cast(q);
    return {std::atan2(m[1][2], m[2][2]), std::atan2(-m[0][2], std::sqrt(m[0][0] * m[0][0] + m[0][1] * m[0][1])),
            std::atan2(m[0][1], m[0][0])};
}

mat4 localMatrix(const Chain& chain, std::size_t i, quat& local) {
    local = quatOfXYZ(chain.jointOrients[i]) * quatOfXYZ(chain.rotates[i]);
    mat4 m = glm::mat4_cast(local);
    const vec3 inverse = chain.compensates[i] ? 1.0f / chain.inverseScales[i] : vec3(1.0f);
    for (int c = 0; c < 3; ++c) {
        m[c] = vec4(vec3(m[c]) * inverse * chain.scales[i][c], 0.0f);
    }
    m[3] = vec4(chain.translates[i], 1.0f);
    return m;
}

quat between(vec3 from, vec3 to) {
    const float w = std::sqrt(glm::dot(from, from) * glm::dot(to, to)) + glm::dot(from, to);
    return glm::normalize(quat(w, glm::cross(from, to)));
}

/// Matrices from the channels, the job's corrections of both joints in their own spaces, and the angles of these.
ChainList<vec3> runtimeJob(const Chain& chain, const mat4& rootParent, vec3 target, vec3 end, vec3 pole, float twist) {
    quat rootLocal(1.0f, 0.0f, 0.0f, 0.0f);
    quat middleLocal = rootLocal;
    const mat4 root = rootParent * localMatrix(chain, 0, rootLocal);
    const mat4 middle = root * localMatrix(chain, 1, middleLocal);
    const vec3 upper = vec3(middle[3]) - vec3(root[3]);
    const vec3 lower = mat3(middle) * end;
    const vec3 toTarget = target - vec3(root[3]);
    const float a = glm::dot(upper, upper);
    const float b = glm::dot(lower, lower);
    const float ab = std::sqrt(a * b);
    const float wanted = std::acos(glm::clamp((glm::dot(toTarget, toTarget) - a - b) / (2.0f * ab), -1.0f, 1.0f));
    const float present = std::acos(glm::clamp(glm::dot(upper, lower) / ab, -1.0f, 1.0f));
    const quat bend = glm::angleAxis(wanted - present, glm::normalize(glm::cross(upper, lower)));
    quat aim = between(upper + bend * lower, toTarget);
    const vec3 direction = glm::normalize(toTarget);
    const vec3 elbow = aim * upper;
    const vec3 elbowSide = elbow - glm::dot(elbow, direction) * direction;
    const vec3 poleSide = pole - glm::dot(pole, direction) * direction;
    aim = glm::angleAxis(twist, direction) * between(elbowSide, poleSide) * aim;
    const quat rootFrame = glm::quat_cast(mat3(root));
    const quat middleFrame = glm::quat_cast(mat3(middle));
    const quat rootTurn = glm::conjugate(rootFrame) * aim * rootFrame;
    const quat middleTurn = glm::conjugate(middleFrame) * bend * middleFrame;
    return {xyzOfQuat(rootTurn * quatOfXYZ(chain.rotates[0])), xyzOfQuat(middleTurn * quatOfXYZ(chain.rotates[1]))};
}

} // namespace

void ikPeers() {
    const vec3 one(1.0f);
    const Chain chain{{vec3(0.1f, 0.2f, 0.3f), vec3(0.0f, 0.3f, 0.0f)},
                      {vec3(0.0f), vec3(0.0f, 0.9f, 0.0f)},
                      {vec3(0.0f, 1.0f, 0.0f), vec3(2.0f, 0.0f, 0.0f)},
                      {one, one},
                      {one, one},
                      {0, 0},
                      {true, true}};
    const vec3 end(2.0f, 0.0f, 0.0f);
    const vec3 pole(0.0f, 1.0f, 0.3f);
    constexpr std::size_t kTargets = 256;
    std::vector<vec3> targets;
    for (std::size_t i = 0; i < kTargets; ++i) {
        const float t = 0.1f * static_cast<float>(i);
        targets.emplace_back(1.8f + 0.5f * std::sin(t), 1.4f + 0.4f * std::cos(1.7f * t), 0.5f * std::sin(0.6f * t));
    }
    std::vector<ChainList<vec3>> ours(kTargets);
    std::vector<ChainList<vec3>> theirs(kTargets);
    const auto product = [&] {
        for (std::size_t i = 0; i < kTargets; ++i) {
            ours[i] = ikRPsolver2Bones(mat4(1.0f), targets[i], end, pole, 0.2f, mat4(1.0f), chain.jointOrients,
                                       chain.rotates, chain.translates, chain.rotateOrders, chain.scales,
                                       chain.inverseScales, chain.compensates);
        }
    };
    const auto runtime = [&] {
        for (std::size_t i = 0; i < kTargets; ++i) {
            theirs[i] = runtimeJob(chain, mat4(1.0f), targets[i], end, pole, 0.2f);
        }
    };
    product();
    runtime();
    bool agree = true;
    for (std::size_t i = 0; i < kTargets; ++i) {
        for (std::size_t joint = 0; joint < 2; ++joint) {
            // The product takes the smaller of two solutions, so that the turns are compared.
            const quat a = quatOfXYZ(ours[i][joint]);
            const quat b = quatOfXYZ(theirs[i][joint]);
            agree = agree && std::abs(glm::dot(a, b)) > 1.0f - 1e-4f;
        }
    }
    requireAgreement("two-bone IK", agree);
    measure(
        {"two-bone IK, channels to angles", "a runtime's job with the same conversions", product, runtime, kTargets});
}

} // namespace zent::peers
