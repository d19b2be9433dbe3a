#include "zent/nodes/animCurve.h"

#include "zent/math/require.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <complex>
#include <optional>
#include <string>
#include <utility>

namespace zent {

namespace {

enum Infinity : int { kInfinityConstant = 0, kInfinityLinear = 1, kInfinityCycle = 3, kInfinityCycleRelative = 4 };
enum TangentType : int { kTangentLinear = 2, kTangentStep = 5, kTangentStepNext = 17 };

constexpr float kOneThird = 0.33333334f;
constexpr float kTwoThirds = 0.6666667f;
// How far a root may lie outside the unit interval and still be the one looked for.
constexpr float kRootLow = -0.001f;
constexpr float kRootHigh = 1.001f;

bool isSmall(float value) {
    return std::abs(value) < kThreshold;
}

float squaredLength(vec2 v) {
    return glm::dot(v, v);
}

// ---- the input ----------------------------------------------------------------------------------------------------

void requireAscendingTimes(const svec<float, 8>& keyTime) {
    const float* time = keyTime.data();
    const std::size_t gaps = keyTime.size() - 1;
    int bad = 0; // counted without a way out, so that the loop runs in vector registers
    for (std::size_t i = 0; i < gaps; ++i) {
        bad += time[i] < time[i + 1] ? 0 : 1;
    }
    if (bad != 0) {
        const float* at = std::adjacent_find(time, time + keyTime.size(), [](float a, float b) { return !(a < b); });
        fail("key times do not ascend: entry " + std::to_string(at - time + 1) + " is " + shown(at[1]) + " after " +
             shown(at[0]));
    }
}

// ---- the infinities -----------------------------------------------------------------------------------------------

// One end of the curve.
struct End {
    float time, value;
    vec2 tangent;              // the one that leaves the curve
    float period;              // a step by this leads back into the curve
    std::array<float, 2> gain; // what such a step adds to the offset of a relative cycle, in this order
    bool isLast;

    bool mustCycle(float t) const { return isLast ? t >= time : t < time; }
};

struct CycleState {
    float time;
    float offset; // what a relative cycle has gathered
};

// For a period too small for single steps to move the time: all periods at once, up to the last.
CycleState takeAllPeriods(const End& end, CycleState state, bool relative) {
    const double period = static_cast<double>(end.period);
    const double beyondEnd = static_cast<double>(state.time) - static_cast<double>(end.time);
    const double rest = std::fmod(beyondEnd, period);
    if (relative) {
        state.offset += static_cast<float>(std::round((rest - beyondEnd) / period)) * (end.gain[0] + end.gain[1]);
    }
    state.time = static_cast<float>(static_cast<double>(end.time) + rest);
    return state;
}

// Single steps, each with its own rounding. Single precision bounds their number: where the period is half the spacing
// of floats at the time there are some 25 million, and where it is less a step no longer changes the time.
CycleState cycleInto(const End& end, CycleState state, bool relative) {
    while (end.mustCycle(state.time)) {
        const float next = state.time + end.period;
        if (next == state.time) {
            state = takeAllPeriods(end, state, relative);
            continue;
        }
        state.time = next;
        if (relative) {
            state.offset = state.offset + end.gain[0] + end.gain[1];
        }
    }
    return state;
}

// The result beyond an end, or none where the time has been moved into the curve or stays for the segment search.
std::optional<float> beyond(const End& end, int infinity, CycleState& state) {
    const float range = std::abs(end.period);
    switch (infinity) {
    case kInfinityConstant:
        return end.value;
    case kInfinityLinear:
        return (state.time - end.time) * end.tangent.y / end.tangent.x + end.value;
    case kInfinityCycle: // a range of exactly 1e-5 does not cycle, but cycles relative: the tests differ on purpose
        if (range > kThreshold) {
            state = cycleInto(end, state, false);
        }
        return std::nullopt;
    case kInfinityCycleRelative:
        if (range < kThreshold) {
            return end.value;
        }
        state = cycleInto(end, state, true);
        return std::nullopt;
    default:
        return 0.0f;
    }
}

// ---- the segment --------------------------------------------------------------------------------------------------

struct Segment {
    float time0, time1;
    float value0, value1;
    vec2 out, in; // the left key's out-tangent and the right key's in-tangent
    bool linear;  // both tangent types say so
};

enum class Shape { Linear, Hermite, Bezier };

bool isAlongChord(const Segment& segment, vec2 tangent, float squaredTangent) {
    const vec2 chord(segment.time1 - segment.time0, segment.value1 - segment.value0);
    const vec2 chordDirection = chord * (1.0f / std::sqrt(squaredLength(chord)));
    const vec2 direction = tangent * (1.0f / std::sqrt(squaredTangent));
    return std::sqrt(squaredLength(direction - chordDirection)) < kThreshold;
}

Shape segmentShape(const Segment& segment, bool weighted) {
    const float squaredOut = squaredLength(segment.out);
    const float squaredIn = squaredLength(segment.in);
    const bool noOut = squaredOut < kThreshold;
    const bool noIn = squaredIn < kThreshold;
    if (segment.linear || (noOut && noIn)) {
        return Shape::Linear;
    }
    if (noOut || noIn) { // never a Bezier, weighted or not
        const bool along =
            noOut ? isAlongChord(segment, segment.in, squaredIn) : isAlongChord(segment, segment.out, squaredOut);
        return along ? Shape::Linear : Shape::Hermite;
    }
    const bool unit = !(std::abs(squaredOut - 1.0f) > kThreshold || std::abs(squaredIn - 1.0f) > kThreshold);
    return weighted && !unit ? Shape::Bezier : Shape::Hermite;
}

float evaluateSegment(const Segment& segment, Shape shape, float time) {
    if (shape == Shape::Linear) {
        return (time - segment.time0) * (segment.value1 - segment.value0) / (segment.time1 - segment.time0) +
               segment.value0;
    }
    const float scale = shape == Shape::Bezier ? 1.0f : std::abs(segment.time1 - segment.time0);
    const vec2 P0(segment.time0, segment.value0);
    const vec2 P3(segment.time1, segment.value1);
    const vec2 P1 = P0 + scale * segment.out * kOneThird;
    const vec2 P2 = P3 - scale * segment.in * kOneThird;
    return shape == Shape::Bezier ? IMPL__bezier_evaluate(P0, P1, P2, P3, time)
                                  : IMPL__hermit_evaluate(P0, P1, P2, P3, time);
}

// ---- the cubic ----------------------------------------------------------------------------------------------------

bool isInUnitInterval(float root) {
    return root >= kRootLow && root <= kRootHigh;
}

// One real root: no test of its range, and no guard against u of 0.
float singleRoot(float a3, float p, float q, float discriminant) {
    const float s = guardedSqrt(discriminant);
    const float u = static_cast<float>(std::cbrt(static_cast<double>(s) - 0.5 * static_cast<double>(q)));
    const float v = static_cast<float>(static_cast<double>(p) * (-1.0 / 3.0) / static_cast<double>(u));
    return (u - a3) + v;
}

std::complex<float> cubeRoot(float p, float q) {
    const float discriminant = p * p * 0.037037037f * p + q * q * 0.25f;
    const std::complex<float> root = std::sqrt(std::complex<float>(discriminant, 0.0f));
    const float w = -0.5f * q - root.real();
    // The discriminant is negative in double; in float it may have been rounded to a positive number.
    if (root.imag() == 0.0f && w > 0.0f) {
        return {std::cbrt(w), 0.0f};
    }
    const std::complex<float> polar = std::log(std::complex<float>(w, -root.imag()));
    const float r = std::exp(polar.real() * kOneThird);
    const float angle = polar.imag() * kOneThird;
    return {r * std::cos(angle), r * std::sin(angle)};
}

// Three real roots from the cube root z: that of z itself, of z turned by a third of a turn, and of z turned by two.
float chosenOfThreeRoots(float a3, float p, float q) {
    constexpr float kC = 2.598076f;  // 3 sqrt(3) / 2
    constexpr float kS = 0.8660254f; // sqrt(3) / 2
    const std::complex<float> z = cubeRoot(p, q);
    const float zr = z.real();
    const float zi = z.imag();
    const float n = (3.0f * zr) * (3.0f * zr) + (3.0f * zi) * (3.0f * zi);

    const float first = (zr - a3) - p * 3.0f * zr / n;
    if (isInUnitInterval(first)) {
        return first;
    }
    const float re3 = -1.5f * zr - kC * zi;
    const float im3 = kC * zr - 1.5f * zi;
    const float second = (-0.5f * zr - (kS * zi + a3)) - p * re3 / (re3 * re3 + im3 * im3);
    // The third root is the last resort and is not tested.
    if (second > kRootHigh || second < kRootLow) {
        return (-0.5f * zr + kS * zi) + ((3.0f * zr * 0.5f * p + 3.0f * zi * -kS * p) / n - a3);
    }
    return second;
}

} // namespace

std::array<float, 4> IMPL__bezier_to_poly(std::array<float, 4> ordinates) {
    const auto [p0, p1, p2, p3] = ordinates;
    return {p0, 3.0f * (p1 - p0), 3.0f * (p2 - 2.0f * p1 + p0), p3 - 3.0f * p2 + 3.0f * p1 - p0};
}

float IMPL__solve_quadratic(std::array<float, 3> coefficients) {
    const auto [a, b, c] = coefficients;
    const float r = guardedSqrt(b * b - 4.0f * a * c);
    const float first = (r - b) / (2.0f * a);
    if (isInUnitInterval(first)) {
        return first;
    }
    return -(r + b) / (2.0f * a);
}

float IMPL__solve_cubic(std::array<float, 3> coefficients) {
    const auto [a, b, c] = coefficients;
    const double aDouble = static_cast<double>(a);
    const float a3 = static_cast<float>(aDouble * (1.0 / 3.0));
    const float p = b - a * a3;
    const float q = static_cast<float>(
        static_cast<double>(c) - aDouble * (static_cast<double>(b) * (1.0 / 3.0) - aDouble * aDouble * (2.0 / 27.0)));

    const double pDouble = static_cast<double>(p);
    const double qDouble = static_cast<double>(q);
    const float discriminant =
        static_cast<float>(qDouble * qDouble * 0.25 + pDouble * pDouble * pDouble * 0.037037037037037035);
    return discriminant >= 0.0f ? singleRoot(a3, p, q, discriminant) : chosenOfThreeRoots(a3, p, q);
}

float IMPL__bezier_evaluate(vec2 P0, vec2 P1, vec2 P2, vec2 P3, float x) {
    const float dx = P3.x - P0.x;
    if (!(dx > kThreshold)) {
        return 0.0f;
    }
    const float x1 = (P1.x - P0.x) / dx;
    const float x2 = (P2.x - P0.x) / dx;
    const float u = (x - P0.x) / dx;

    float s = u;
    if (!isSmall(x1 - kOneThird) || !isSmall(x2 - kTwoThirds)) {
        // Not IMPL__bezier_to_poly of 0, x1, x2, 1: the cubic's formula amplifies the last bit of c3.
        const float c1 = 3.0f * x1;
        const float c2 = 3.0f * (x2 - 2.0f * x1);
        const float c3 = 1.0f - 3.0f * (x2 - x1);
        if (std::abs(c3) > kThreshold) {
            const float inverse = 1.0f / c3;
            s = IMPL__solve_cubic({c2 * inverse, c1 * inverse, -u * inverse});
        } else {
            s = IMPL__solve_quadratic({c2, c1, -u});
        }
    }
    const auto [k0, k1, k2, k3] = IMPL__bezier_to_poly({P0.y, P1.y, P2.y, P3.y});
    return k0 + s * (k1 + s * (k2 + s * k3));
}

float IMPL__hermit_evaluate(vec2 P0, vec2 P1, vec2 P2, vec2 P3, float x) {
    const float dx = P3.x - P0.x;
    const float dy = P3.y - P0.y;
    const vec2 d1 = P1 - P0;
    const vec2 d2 = P3 - P2;
    const float m1 = d1.x == 0.0f ? 0.0f : d1.y / d1.x;
    const float m2 = d2.x == 0.0f ? 0.0f : d2.y / d2.x;
    const float a = m1 * dx;
    const float b = m2 * dx;
    const float k = 1.0f / (dx * dx);
    const float u = x - P0.x;
    return P0.y + u * (m1 + u * (k * (3.0f * dy - 2.0f * a - b) + k * u * (a + b - 2.0f * dy) / dx));
}

namespace {

// Both ways in have lists of their own.
struct KeyLists {
    const svec<float, 8>&keyTime, &keyValue, &inTangentX, &inTangentY;
    const svec<int, 8>& inTangentType;
    const svec<float, 8>&outTangentX, &outTangentY;
    const svec<int, 8>& outTangentType;
    int preInfinity, postInfinity;
    bool weighted;
};

void requireKeys(const KeyLists& keys) {
    requireAtLeast("key times", keys.keyTime.size(), 1, "animCurve");
    requireLists("animCurve", keys.keyTime.size(),
                 {{"key values", keys.keyValue.size()},
                  {"in-tangent x", keys.inTangentX.size()},
                  {"in-tangent y", keys.inTangentY.size()},
                  {"in-tangent types", keys.inTangentType.size()},
                  {"out-tangent x", keys.outTangentX.size()},
                  {"out-tangent y", keys.outTangentY.size()},
                  {"out-tangent types", keys.outTangentType.size()}});
    requireAscendingTimes(keys.keyTime);
}

float evaluateKeys(float time, const KeyLists& keys) {
    const auto& [keyTime, keyValue, inTangentX, inTangentY, inTangentType, outTangentX, outTangentY, outTangentType,
                 preInfinity, postInfinity, weighted] = keys;
    const std::size_t last = keyTime.size() - 1;
    const float range = keyTime[last] - keyTime[0];
    const End firstEnd{
        keyTime[0], keyValue[0], vec2(inTangentX[0], inTangentY[0]), range, {-keyValue[last], keyValue[0]}, false};
    const End lastEnd{keyTime[last],
                      keyValue[last],
                      vec2(outTangentX[last], outTangentY[last]),
                      -range,
                      {keyValue[last], -keyValue[0]},
                      true};
    CycleState state{time, 0.0f};
    if (state.time <= firstEnd.time) { // the first key itself counts as before the curve
        if (const auto result = beyond(firstEnd, preInfinity, state)) {
            return *result;
        }
    }
    if (state.time >= lastEnd.time) { // also a time that the other end has moved, or left as it was
        if (const auto result = beyond(lastEnd, postInfinity, state)) {
            return *result;
        }
    }

    const auto after = std::upper_bound(keyTime.begin(), keyTime.end(), state.time);
    const std::size_t hi = std::max<std::size_t>(static_cast<std::size_t>(after - keyTime.begin()), 1);
    const std::size_t lo = hi - 1;
    if (hi > last && last > 0) { // NaN, as of an infinite time that a cycle cannot bring into the curve
        fail("time is " + shown(time) + ", which lies in no segment of the curve");
    }
    requireAtLeast("key times", keyTime.size(), hi + 1, "the segment search");

    if (outTangentType[lo] == kTangentStep) {
        return state.offset + keyValue[lo];
    }
    if (inTangentType[hi] == kTangentStepNext) {
        return state.offset + keyValue[hi];
    }
    if (isSmall(keyValue[lo] - keyValue[hi])) {
        return keyValue[lo]; // a flat segment leaves out the offset of a relative cycle, on purpose
    }
    const Segment segment{keyTime[lo],
                          keyTime[hi],
                          keyValue[lo],
                          keyValue[hi],
                          vec2(outTangentX[lo], outTangentY[lo]),
                          vec2(inTangentX[hi], inTangentY[hi]),
                          outTangentType[lo] == kTangentLinear && inTangentType[hi] == kTangentLinear};
    return evaluateSegment(segment, segmentShape(segment, weighted), state.time) + state.offset;
}

KeyLists listsOf(const AnimCurveKeys& keys) {
    return {keys.time,          keys.value,        keys.inTangentX,  keys.inTangentY,
            keys.inTangentType, keys.outTangentX,  keys.outTangentY, keys.outTangentType,
            keys.preInfinity,   keys.postInfinity, keys.weighted};
}

} // namespace

float IMPL_animCurve(float time, const svec<float, 8>& keyTime, const svec<float, 8>& keyValue,
                     const svec<float, 8>& inTangentX, const svec<float, 8>& inTangentY,
                     const svec<int, 8>& inTangentType, const svec<float, 8>& outTangentX,
                     const svec<float, 8>& outTangentY, const svec<int, 8>& outTangentType, int preInfinity,
                     int postInfinity, bool weighted) {
    const KeyLists keys{keyTime,     keyValue,       inTangentX,  inTangentY,   inTangentType, outTangentX,
                        outTangentY, outTangentType, preInfinity, postInfinity, weighted};
    requireKeys(keys);
    return evaluateKeys(time, keys);
}

float animCurve(float time, svec<float, 8> keyTime, svec<float, 8> keyValue, svec<float, 8> inTangentX,
                svec<float, 8> inTangentY, svec<int, 8> inTangentType, svec<float, 8> outTangentX,
                svec<float, 8> outTangentY, svec<int, 8> outTangentType, int preInfinity, int postInfinity,
                bool weighted) {
    return IMPL_animCurve(time, keyTime, keyValue, inTangentX, inTangentY, inTangentType, outTangentX, outTangentY,
                          outTangentType, preInfinity, postInfinity, weighted);
}

KeyedCurve::KeyedCurve(AnimCurveKeys keys) : keys_(std::move(keys)) {
    requireKeys(listsOf(keys_));
}

float KeyedCurve::operator()(float time) const {
    return evaluateKeys(time, listsOf(keys_));
}

} // namespace zent
