#include "zent/nodes/closestPointOnSurface.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/recurrence.h"
#include "zent/geometry/shapes.h"
#include "zent/math/lanes.h"
#include "zent/nodes/closestSearch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
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
    static_assert(sizeof(SurfaceSamples::value_type) == 5 * sizeof(float), "u, v, x, y, z without gaps");

    vec2 nearestSample(const SurfaceSamples& samples) const {
        NearestSample<vec2> nearest{vec2(u_.start(), v_.start())};
        std::size_t i = 0;
        for (; i + kLanes <= samples.size(); i += kLanes) {
            Lanes rows[kLanes]; // of each sample v, x, y and z
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                std::memcpy(&rows[lane], reinterpret_cast<const char*>(&samples[i + lane]) + sizeof(float),
                            sizeof rows[lane]);
            }
            Lanes at[3];
            lastThreeAcross(rows, at);
            const Lanes x = at[0] - point_.x;
            const Lanes y = at[1] - point_.y;
            const Lanes z = at[2] - point_.z;
            const Lanes distances = x * x + y * y + z * z;
            if (anyBelow(distances, nearest.distance)) {
                float each[kLanes];
                storeLanes(distances, each);
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
        // A step that was lengthened is halved many times: several at once.
        for (bool more = true; more;) {
            vec2 steps[kLanes];
            std::size_t count = 0;
            do {
                steps[count++] = step;
                more = halve(step);
            } while (more && count < kLanes);
            std::fill(steps + count, steps + kLanes, steps[count - 1]);
            float distances[kLanes];
            const bool isKnown = distancesOnOneSpan(at, steps, distances);
            for (std::size_t i = 0; i < count; ++i) {
                const float there = isKnown ? distances[i] : squaredDistance(at - steps[i]);
                if (!(there > here)) {
                    here = there;
                    step = steps[i];
                    return true;
                }
            }
        }
        return false;
    }

    /// Whether a parameter is sure to lie on a span; of knots that are not in order none is.
    bool holds(const ParameterDirection& direction, unsigned span, float parameter) const {
        return isSorted_ && direction.knots[span] <= parameter && parameter < direction.knots[span + 1];
    }

    /// `squaredDistance` of as many as there are lanes, each by the operations of one, as long as all lie on one span
    /// in either direction. False where they don't.
    bool distancesOnOneSpan(vec2 at, const vec2* steps, float* distances) const {
        Lanes u;
        Lanes v;
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const vec2 next = at - steps[lane];
            u[lane] = u_.clamp(next.x);
            v[lane] = v_.clamp(next.y);
        }
        const unsigned spanU = u_.span(u[0]);
        const unsigned spanV = v_.span(v[0]);
        // Of steps that are halved the others lie between the first and the last.
        if (!holds(u_, spanU, u[kLanes - 1]) || !holds(v_, spanV, v[kLanes - 1])) {
            return false;
        }
        Lanes sum[3] = {};
        withDegree(u_.degree, [&](auto p) {
            const auto weightsU = basisTable<p>(spanU, u, u_.knots);
            withDegree(v_.degree, [&](auto q) {
                const auto weightsV = basisTable<q>(spanV, v, v_.knots);
                const vec3* row = &surface_.cv[u_.first(spanU) * u_.stride + v_.first(spanV)];
                for (int i = 0; i <= p; ++i, row += u_.stride) {
                    for (int j = 0; j <= q; ++j) {
                        const Lanes weight = weightsU[i][p] * weightsV[j][q];
                        sum[0] += weight * row[j].x;
                        sum[1] += weight * row[j].y;
                        sum[2] += weight * row[j].z;
                    }
                }
            });
        });
        Lanes offset[3];
        for (int axis = 0; axis < 3; ++axis) {
            offset[axis] = (surface_.matrixLinear[0][axis] * sum[0] + surface_.matrixLinear[1][axis] * sum[1] +
                            surface_.matrixLinear[2][axis] * sum[2]) +
                           surface_.translation[axis] - point_[axis];
        }
        storeLanes(offset[0] * offset[0] + offset[1] * offset[1] + offset[2] * offset[2], distances);
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
    bool isSorted_ =
        std::is_sorted(u_.knots.begin(), u_.knots.end()) && std::is_sorted(v_.knots.begin(), v_.knots.end());
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
