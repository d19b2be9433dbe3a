#pragma once

#include "zent/math/rotation.h"

#include <cstddef>
#include <optional>

/// What the weighted constraints share: which target counts, when the rest value stands, and the two ways to blend.
namespace zent {

/// Target lists are read at one index; the weight list decides how many targets there are.
template <class T>
using TargetList = svec<T, 4>;

/// A target that takes no part in a blend. Signed: a negative weight is weak too.
inline bool isWeak(float weight) {
    return weight < kThreshold;
}

inline float sumOf(const TargetList<float>& weights) {
    float sum = 0.0f;
    for (const float weight : weights) {
        sum += weight;
    }
    return sum;
}

/// No target, or weights whose sum is weak. Negative weights count here, although their targets are skipped in a blend.
inline bool isAtRest(const TargetList<float>& weights) {
    return isWeak(sumOf(weights));
}

/// The mean of `value(i)` over the targets that are not weak. None where all are: several weak weights can have a sum
/// that is not.
template <class TargetValue>
std::optional<vec3> weightedMean(const TargetList<float>& weights, TargetValue value) {
    vec3 total(0.0f);
    float strength = 0.0f;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (!isWeak(weights[i])) {
            total += weights[i] * value(i);
            strength += weights[i];
        }
    }
    if (strength == 0.0f) {
        return std::nullopt;
    }
    return total * (1.0f / strength);
}

/// How a rotation constraint blends its targets. Any other value takes in no target at all.
enum InterpType : int {
    kInterpNoFlip = 0,
    kInterpAverage = 1, ///< the weighted sum, as for kInterpNoFlip
    kInterpShortest = 2 ///< from the first target on, one spherical step towards each of the others
};

/// The blend of the rotations `rotation(i, weight)`, normalised; a blend that takes in no target is the identity.
/// `weight` is that of the target at the start of its turn, which for kInterpShortest is normalised after the first.
template <class TargetRotation>
quat blendRotations(int interpType, TargetList<float> weights, TargetRotation rotation) {
    quat blend(0.0f, 0.0f, 0.0f, 0.0f);
    for (std::size_t i = 0; i < weights.size(); ++i) {
        quat q = rotation(i, weights[i]);
        if (q.w < 0.0f) {
            q = -q;
        }
        if (interpType == kInterpShortest && i == 0) {
            blend = q; // whatever its weight: the first target stands in the result even at weight 0
            const float normalise = 1.0f / sumOf(weights);
            for (float& weight : weights) {
                weight *= normalise;
            }
        } else if (isWeak(weights[i])) {
            continue;
        } else if (interpType == kInterpShortest) {
            blend = slerpStep(blend, q, weights[i]);
        } else if (interpType == kInterpNoFlip || interpType == kInterpAverage) {
            blend += weights[i] * q;
        }
    }
    return normalizeOrIdentity(blend);
}

} // namespace zent
