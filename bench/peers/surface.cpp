// The closest point on a surface beside Newton's iteration as textbooks have it, from the same samples.
#include "Pair.h"

#include "zent/geometry/basis.h"
#include "zent/nodes/closestPointOnSurface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace zent::peers {

namespace {

/// A bicubic surface of 20 by 20 control points, waves on a plane.
Surface waves() {
    std::vector<float> knots;
    for (int i = -2; i < 20; ++i) {
        knots.push_back(static_cast<float>(std::min(std::max(i, 0), 17)));
    }
    std::vector<vec3> points;
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 20; ++j) {
            const vec2 at(static_cast<float>(i), static_cast<float>(j));
            points.emplace_back(at.x, at.y, std::sin(at.x) * std::cos(0.7f * at.y));
        }
    }
    return Surface(3, 3, kFormOpen, kFormOpen, knots, knots, points, mat4(1.0f));
}

// By itself: within its caller compilers make slower code of it.
[[gnu::noinline]] vec2 nearestSample(vec3 point, const SurfaceSamples& samples) {
    vec2 at(0.0f);
    float nearest = std::numeric_limits<float>::max();
    for (const auto& [parameters, sample] : samples) {
        const vec3 offset = sample - point;
        const float distance = glm::dot(offset, offset);
        if (distance < nearest) {
            nearest = distance;
            at = parameters;
        }
    }
    return at;
}

/// (u, v) by the tests and the update of The NURBS Book, 6.1, limited to the domain.
vec2 textbookClosest(const Surface& surface, vec3 point, const SurfaceSamples& samples) {
    constexpr int kIterations = 20;
    constexpr float kClose = 1e-5f;
    vec2 at = nearestSample(point, samples);
    const unsigned degree = surface.degreeU;
    const float end = surface.knotsU[surface.knotsU.size() - degree];
    for (int iteration = 0; iteration < kIterations; ++iteration) {
        const float u = clampParameter(at.x, degree, surface.knotsU);
        const float v = clampParameter(at.y, degree, surface.knotsV);
        const unsigned spanU = findSpan(u, degree, surface.knotsU);
        const unsigned spanV = findSpan(v, degree, surface.knotsV);
        const BasisDerivatives nu = computeDerivatives(2, degree, spanU, u, surface.knotsU);
        const BasisDerivatives nv = computeDerivatives(2, degree, spanV, v, surface.knotsV);
        std::array<std::array<vec3, 3>, 3> s{};
        for (unsigned i = 0; i <= degree; ++i) {
            for (unsigned j = 0; j <= degree; ++j) {
                const vec3 cv = surface.cv[(spanU + 1 - degree + i) * surface.cvCountV() + spanV + 1 - degree + j];
                for (std::size_t k = 0; k < 3; ++k) {
                    for (std::size_t l = 0; k + l < 3; ++l) {
                        s[k][l] += nu[k][i] * nv[l][j] * cv;
                    }
                }
            }
        }
        const vec3 r = s[0][0] - point;
        const float f = glm::dot(r, s[1][0]);
        const float g = glm::dot(r, s[0][1]);
        const float lengths = glm::length(r);
        if (lengths < kClose || (std::abs(f) < kClose * lengths * glm::length(s[1][0]) &&
                                 std::abs(g) < kClose * lengths * glm::length(s[0][1]))) {
            break;
        }
        const float fu = glm::dot(s[1][0], s[1][0]) + glm::dot(r, s[2][0]);
        const float fv = glm::dot(s[1][0], s[0][1]) + glm::dot(r, s[1][1]);
        const float gv = glm::dot(s[0][1], s[0][1]) + glm::dot(r, s[0][2]);
        const float inverse = 1.0f / (fu * gv - fv * fv);
        const vec2 next = glm::clamp(at - inverse * vec2(gv * f - fv * g, fu * g - fv * f), 0.0f, end);
        const vec3 moved = (next.x - at.x) * s[1][0] + (next.y - at.y) * s[0][1];
        at = next;
        if (glm::length(moved) < kClose) {
            break;
        }
    }
    return at;
}

} // namespace

void surfacePeers() {
    const Surface surface = waves();
    const SurfaceSamples samples = compute_cls_helper(surface);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> along(1.0f, 18.0f);
    std::uniform_real_distribution<float> off(-1.0f, 1.0f);
    std::vector<vec3> points(256);
    for (vec3& point : points) {
        point.x = along(random);
        point.y = along(random);
        point.z = off(random);
    }
    std::vector<vec2> ours(points.size());
    std::vector<vec2> theirs(points.size());
    const auto product = [&] {
        for (std::size_t i = 0; i < points.size(); ++i) {
            ours[i] = getClosetPointOnSurface(surface, points[i], samples);
        }
    };
    const auto textbook = [&] {
        for (std::size_t i = 0; i < points.size(); ++i) {
            theirs[i] = textbookClosest(surface, points[i], samples);
        }
    };
    product();
    textbook();
    // Newton's iteration alone may leave for another place that is near, or for none; ours stops within 1e-3.
    std::size_t near = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const float found = glm::length(surface.localPoint(ours[i].x, ours[i].y) - points[i]);
        const float other = glm::length(surface.localPoint(theirs[i].x, theirs[i].y) - points[i]);
        near += found <= other + 1e-3f ? 1u : 0u;
    }
    requireAgreement("closest point on a surface", near == points.size());
    measure({"closest point on a surface of 20 by 20", "Newton's iteration from the same samples", product, textbook,
             points.size()});
}

} // namespace zent::peers
