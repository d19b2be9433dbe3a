#pragma once

#include "zent/math/types.h"

#include <array>

namespace zent {

/// A keyed curve at one input: the infinities, the segment search, and the segment as a step, a line, a cubic Hermite
/// or a weighted Bezier.
///
/// All lists but `keyTime` hold at least one entry for each key time; key times ascend strictly. Tangent types with a
/// meaning: 2 linear (on both sides), 5 step (out), 17 step next (in). Infinities: 0 constant, 1 linear, 3 cycle,
/// 4 cycle relative; any other gives 0. A tangent of x 0 under linear infinity gives what the division gives.
/// Throws std::runtime_error for missing keys, short lists, times that do not ascend, and for a time that no key
/// follows in the segment search (a cycled curve of one key).
float animCurve(float time, svec<float, 8> keyTime, svec<float, 8> keyValue, svec<float, 8> inTangentX,
                svec<float, 8> inTangentY, svec<int, 8> inTangentType, svec<float, 8> outTangentX,
                svec<float, 8> outTangentY, svec<int, 8> outTangentType, int preInfinity, int postInfinity,
                bool weighted);

/// The same with its lists by reference.
float IMPL_animCurve(float time, const svec<float, 8>& keyTime, const svec<float, 8>& keyValue,
                     const svec<float, 8>& inTangentX, const svec<float, 8>& inTangentY,
                     const svec<int, 8>& inTangentType, const svec<float, 8>& outTangentX,
                     const svec<float, 8>& outTangentY, const svec<int, 8>& outTangentType, int preInfinity,
                     int postInfinity, bool weighted);

/// The lists of `animCurve`.
struct AnimCurveKeys {
    svec<float, 8> time, value, inTangentX, inTangentY;
    svec<int, 8> inTangentType;
    svec<float, 8> outTangentX, outTangentY;
    svec<int, 8> outTangentType;
    int preInfinity = 0;
    int postInfinity = 0;
    bool weighted = false;
};

/// A curve for many inputs: its lists are checked once, with the errors of `animCurve`, and never copied. An evaluation
/// costs the search for the segment, and gives what `animCurve` gives.
class KeyedCurve {
public:
    explicit KeyedCurve(AnimCurveKeys keys);
    float operator()(float time) const;

private:
    AnimCurveKeys keys_;
};

/// The polynomial of four Bezier ordinates, the constant first.
std::array<float, 4> IMPL__bezier_to_poly(std::array<float, 4> ordinates);

/// The chosen root of a t^2 + b t + c, given {a, b, c}: the first where it lies within the unit interval (0.001 to each
/// side), else the second, untested. Without real roots: NaN.
float IMPL__solve_quadratic(std::array<float, 3> coefficients);

/// The chosen root of t^3 + a t^2 + b t + c, given {a, b, c}, by Cardano: of three real roots the largest within the
/// unit interval (0.001 to each side), and the smallest, untested, where the larger two lie outside. A triple root at
/// the depressed cubic's origin gives NaN.
float IMPL__solve_cubic(std::array<float, 3> coefficients);

/// The Bezier segment of four points at x, by way of its parameter there. A segment no wider than 1e-5 gives 0.
float IMPL__bezier_evaluate(vec2 P0, vec2 P1, vec2 P2, vec2 P3, float x);

/// The cubic Hermite segment at x, whose end slopes are those of the handles P0 P1 and P2 P3 (0 for a vertical one).
float IMPL__hermit_evaluate(vec2 P0, vec2 P1, vec2 P2, vec2 P3, float x);

} // namespace zent
