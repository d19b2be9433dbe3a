#include "zent/nodes/closestPointOnSurface.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/shapes.h"
#include "zent/math/lanes.h"
#include "zent/nodes/closestSearch.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

// All points, derivatives and distances here are in world space.
namespace zent {
namespace {

constexpr int kMaxIterations = 19;
constexpr int kSamplesPerPoint = 4;
constexpr float kShortestStep = 0.1f;

/// The grid's parameters in one direction: the domain's end over the count of samples, and its multiples below the end.
template <class Visit>
void visitSamples(const ParameterDirection& direction, unsigned overlap, Visit visit) {
    const float end = direction.end();
    const auto points = static_cast<std::int64_t>(direction.knots.size()) + 1 - std::int64_t{overlap};
    if (points <= 0) {
        return;
    }
    const float step = end / static_cast<float>(kSamplesPerPoint * points);
    float before = std::numeric_limits<float>::quiet_NaN();
    for (float u = step; u < end && u != before; u += step) { // it ends where a step is too large or too small to move
        visit(u);
        before = u;
    }
}

/// A surface point with its first and second partial derivatives.
struct SurfaceJet {
    vec3 s;
    vec3 su;
    vec3 sv;
    vec3 suu;
    vec3 svv;
    vec3 suv;
};

class ClosestPointSearch {
public:
    ClosestPointSearch(const Surface& surface, vec3 point)
        : surface_(surface), u_(alongU(surface)), v_(alongV(surface)), point_(point) {}

    vec2 run(const SurfaceSamples& samples) const {
        vec2 at = nearestSample(samples);
        at = vec2(u_.clamp(at.x), v_.clamp(at.y));
        float here = squaredDistance(at);
        for (int iteration = 0; iteration < kMaxIterations; ++iteration) {
            const SurfaceJet jet = jetAt(at);
            const vec3 offset = jet.s - point_;
            if (guardedLength(offset) < kSearchTolerance) {
                return at;
            }
            vec2 step = newtonStep(jet, offset);
            const float length = guardedSqrt(glm::dot(step, step));
            if (length == 0.0f) {
                return at;
            }
            if (length < kShortestStep) {
                step *= kShortestStep / length; // a short step is lengthened; the line search alone makes one shorter
            }
            if (!halveIntoDomain(at, step) || !halveUntilNearer(at, here, step)) {
                return at;
            }
            const vec2 next(wrap(at.x - step.x, u_), wrap(at.y - step.y, v_));
            if (std::abs(next.x - at.x) < kSearchTolerance && std::abs(next.y - at.y) < kSearchTolerance) {
                return at; // not `next`: on convergence the result stays one update behind
            }
            if (next != at - step) {
                here = squaredDistance(next);
            }
            at = next;
        }
        return at;
    }

private:
    vec2 nearestSample(const SurfaceSamples& samples) const {
        NearestSample<vec2> nearest{vec2(u_.start(), v_.start())};
        std::size_t i = 0;
        for (; i + kLanes <= samples.size(); i += kLanes) {
            const auto side = [&](int axis) {
                return Lanes{samples[i].second[axis], samples[i + 1].second[axis], samples[i + 2].second[axis],
                             samples[i + 3].second[axis]} -
                       point_[axis];
            };
            const Lanes x = side(0);
            const Lanes y = side(1);
            const Lanes z = side(2);
            const Lanes distances = x * x + y * y + z * z;
            float each[kLanes];
            storeLanes(distances, each);
            if (each[0] < nearest.distance || each[1] < nearest.distance || each[2] < nearest.distance ||
                each[3] < nearest.distance) {
                for (std::size_t lane = 0; lane < kLanes; ++lane) {
                    nearest.offer(samples[i + lane].first, each[lane]);
                }
            }
        }
        for (; i < samples.size(); ++i) {
            const vec3 offset = samples[i].second - point_;
            nearest.offer(samples[i].first, glm::dot(offset, offset));
        }
        return nearest.at;
    }

    /// The six sums in one pass. The search may leave a domain that starts above 0 downwards; the sums do not follow.
    SurfaceJet jetAt(vec2 at) const {
        const float u = u_.start() > 0.0f ? u_.clamp(at.x) : at.x;
        const float v = v_.start() > 0.0f ? v_.clamp(at.y) : at.y;
        const unsigned spanU = u_.span(u);
        const unsigned spanV = v_.span(v);
        const BasisDerivatives nu = u_.derivatives(2, spanU, u);
        const BasisDerivatives nv = v_.derivatives(2, spanV, v);
        const vec3* row = &surface_.cv[u_.first(spanU) * u_.stride + v_.first(spanV)];
        const AffineLanes place(surface_.matrixLinear, surface_.translation);
        std::array<Lanes, 6> sums{};
        for (unsigned i = 0; i <= u_.degree; ++i, row += u_.stride) {
            for (unsigned j = 0; j <= v_.degree; ++j) {
                const Lanes p = place(row[j]);
                sums[0] += (nu[0][i] * nv[0][j]) * p;
                sums[1] += (nu[1][i] * nv[0][j]) * p;
                sums[2] += (nu[0][i] * nv[1][j]) * p;
                sums[3] += (nu[2][i] * nv[0][j]) * p;
                sums[4] += (nu[0][i] * nv[2][j]) * p;
                sums[5] += (nu[1][i] * nv[1][j]) * p;
            }
        }
        const auto sum = [&](std::size_t k) { return vec3(sums[k][0], sums[k][1], sums[k][2]); };
        return {sum(0), sum(1), sum(2), sum(3), sum(4), sum(5)};
    }

    /// What is subtracted from (u, v); along one direction only where the other derivative vanishes, as at a pole.
    static vec2 newtonStep(const SurfaceJet& jet, vec3 offset) {
        const float fuu = glm::dot(jet.su, jet.su) + glm::dot(offset, jet.suu);
        const float fvv = glm::dot(jet.sv, jet.sv) + glm::dot(offset, jet.svv);
        const float fuv = glm::dot(jet.su, jet.sv) + glm::dot(offset, jet.suv);
        const float gu = glm::dot(offset, jet.su);
        const float gv = glm::dot(offset, jet.sv);
        if (guardedLength(jet.su) < kThreshold) {
            return {0.0f, gv / fvv};
        }
        if (guardedLength(jet.sv) < kThreshold) {
            return {gu / fuu, 0.0f};
        }
        const float inverse = -1.0f / (fuv * fuv - fuu * fvv);
        return {inverse * (fvv * gu - fuv * gv), inverse * (fuu * gv - fuv * gu)};
    }

    /// False where halving no longer changes a step: 0, an infinity or NaN in both directions.
    static bool halve(vec2& step) {
        const vec2 half = 0.5f * step;
        const bool changes = std::abs(half.x) < std::abs(step.x) || std::abs(half.y) < std::abs(step.y);
        step = half;
        return changes;
    }

    bool halveIntoDomain(vec2 at, vec2& step) const {
        // The lower bounds are 0, not the start of the domain.
        const auto outside = [&](vec2 next) {
            return next.x < 0.0f || next.x > u_.end() || next.y < 0.0f || next.y > v_.end();
        };
        while (outside(at - step)) {
            if (!halve(step)) {
                return false;
            }
        }
        return true;
    }

    /// `here` is the squared distance at `at`, and then that of the step.
    bool halveUntilNearer(vec2 at, float& here, vec2& step) const {
        float there = squaredDistance(at - step);
        while (there > here) {
            if (!halve(step)) {
                return false;
            }
            there = squaredDistance(at - step);
        }
        here = there;
        return true;
    }

    float squaredDistance(vec2 at) const {
        const vec3 offset = toWorld(surface_, surface_.localPoint(at.x, at.y)) - point_;
        return glm::dot(offset, offset);
    }

    static float wrap(float u, const ParameterDirection& direction) {
        return direction.form == kFormPeriodic ? wrapByEnd(u, direction.end()) : u;
    }

    const Surface& surface_;
    ParameterDirection u_;
    ParameterDirection v_;
    vec3 point_;
};

} // namespace

void compute_cls_helper(const Surface& surface, SurfaceSamples& samples) {
    requireEvaluable(surface, "surface");
    const unsigned overlapU = surface.formU == kFormPeriodic ? 2 * surface.degreeU : surface.degreeU;
    // The overlap of a periodic V is counted in U's degree: the search's start depends on this very grid.
    const unsigned overlapV = surface.degreeV + (surface.formV == kFormPeriodic ? surface.degreeU : 0);
    samples.clear();
    visitSamples(alongU(surface), overlapU, [&](float u) {
        visitSamples(alongV(surface), overlapV,
                     [&](float v) { samples.emplace_back(vec2(u, v), toWorld(surface, surface.localPoint(u, v))); });
    });
}

SurfaceSamples compute_cls_helper(const Surface& surface) {
    SurfaceSamples samples;
    compute_cls_helper(surface, samples);
    return samples;
}

vec2 getClosetPointOnSurface(const Surface& surface, vec3 point, const SurfaceSamples& samples) {
    requireEvaluable(surface, "surface");
    return ClosestPointSearch(surface, point).run(samples);
}

vec2 closestPointOnSurface(Surface& surface, vec3 point) {
    if (surface.closestSamples.empty()) {
        compute_cls_helper(surface, surface.closestSamples);
    }
    return getClosetPointOnSurface(surface, point, surface.closestSamples);
}

} // namespace zent
