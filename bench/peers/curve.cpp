// The point and the derivative of a cubic curve beside a loop for cubic curves alone.
#include "Pair.h"

#include "zent/geometry/Curve.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

namespace zent::peers {

namespace {

Curve wave(unsigned count) {
    std::vector<float> knots;
    std::vector<vec3> points;
    const int end = static_cast<int>(count) - 3;
    for (int i = -2; i < end + 3; ++i) {
        knots.push_back(static_cast<float>(std::min(std::max(i, 0), end)));
    }
    for (unsigned i = 0; i < count; ++i) {
        const auto t = static_cast<float>(i);
        points.emplace_back(t, std::sin(t), std::cos(0.7f * t));
    }
    mat4 matrix = glm::mat4_cast(glm::angleAxis(0.3f, glm::normalize(vec3(1.0f, 2.0f, 3.0f))));
    matrix[3] = vec4(1.0f, 2.0f, 3.0f, 1.0f);
    return Curve(3, kFormOpen, std::move(points), std::move(knots), matrix);
}

/// The NURBS Book, A2.2 for degree 3, whose last quotients make the derivative too; the matrix is applied to the sums.
CurveTangent cubic(const Curve& curve, float parameter) {
    const std::vector<float>& knots = curve.knots;
    const float u = std::max(knots[2], std::min(parameter, knots[knots.size() - 3]));
    const auto above = std::upper_bound(knots.begin() + 3, knots.end() - 3, u);
    const float* const k = &*above - 1; // the span's start
    const float left1 = u - k[0];
    const float left2 = u - k[-1];
    const float left3 = u - k[-2];
    const float right1 = k[1] - u;
    const float right2 = k[2] - u;
    const float right3 = k[3] - u;
    const float linear = 1.0f / (right1 + left1);
    const float a0 = right1 * linear / (right1 + left2);
    const float a1 = left1 * linear / (right2 + left1);
    const float b0 = right1 * a0 / (right1 + left3);
    const float b1 = (left2 * a0 + right2 * a1) / (right2 + left2);
    const float b2 = left1 * a1 / (right3 + left1);
    const vec3* const cv = &curve.cv[static_cast<std::size_t>(k - knots.data()) - 2];
    const vec3 point = right1 * b0 * cv[0] + (left3 * b0 + right2 * b1) * cv[1] + (left2 * b1 + right3 * b2) * cv[2] +
                       left1 * b2 * cv[3];
    const vec3 derivative = 3.0f * (b0 * (cv[1] - cv[0]) + b1 * (cv[2] - cv[1]) + b2 * (cv[3] - cv[2]));
    return {curve.matrixLinear * point + curve.translation, curve.matrixLinear * derivative};
}

bool agree(const std::vector<CurveTangent>& a, const std::vector<CurveTangent>& b) {
    const auto near = [](vec3 v, vec3 w) { return glm::length(v - w) <= 1e-4f * (1.0f + glm::length(v)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const CurveTangent& own, const CurveTangent& other) {
        return near(own.s, other.s) && near(own.su, other.su);
    });
}

void tangentPeer(unsigned count) {
    const Curve curve = wave(count);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> within(curve.domainStart(), curve.domainEnd());
    std::vector<float> parameters(256);
    std::generate(parameters.begin(), parameters.end(), [&] { return within(random); });
    std::vector<CurveTangent> ours(parameters.size());
    std::vector<CurveTangent> theirs(parameters.size());
    const auto product = [&] {
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            ours[i] = curve.tangent(parameters[i]);
        }
    };
    const auto plain = [&] {
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            theirs[i] = cubic(curve, parameters[i]);
        }
    };
    product();
    plain();
    requireAgreement("cubic curve", agree(ours, theirs));
    const std::string name = "cubic curve of " + std::to_string(count) + " CVs, point and derivative";
    measure({name, "a loop for cubic curves alone", product, plain, parameters.size()});
}

} // namespace

void curvePeers() {
    tangentPeer(8);
    tangentPeer(40);
}

} // namespace zent::peers
