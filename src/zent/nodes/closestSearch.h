#pragma once

#include "zent/math/types.h"

/// What the searches for the closest point on curves and surfaces share.
namespace zent {

/// Where a search rests: a step, a derivative or a distance below it is none.
inline constexpr float kSearchTolerance = 1e-5f;

/// The nearest of the samples looked at so far; a tie keeps the earlier one, and so does NaN.
template <class Parameter>
struct NearestSample {
    Parameter at;
    float distance = std::numeric_limits<float>::max();

    void offer(Parameter candidate, float candidateDistance) {
        if (candidateDistance < distance) {
            at = candidate;
            distance = candidateDistance;
        }
    }
};

/// A parameter of a periodic direction, wrapped by the domain's end and not by its length, deliberately.
inline float wrapByEnd(float u, float end) {
    const float wrapped = std::fmod(u, end);
    return wrapped < 0.0f ? wrapped + end : wrapped;
}

} // namespace zent
