#pragma once

#include "zent/math/types.h"

#include <cstddef>
#include <cstring>

namespace zent {

/// How many floats a register of the portable code holds.
inline constexpr std::size_t kLanes = 4;

#if defined(__GNUC__) && !defined(ZENT_PLAIN_LANES)
template <std::size_t N>
struct LanesType {
    using Type __attribute__((vector_size(N * sizeof(float)))) = float;
};
/// N floats side by side: an extension of GCC and Clang, which leave no lane out of a register.
template <std::size_t N>
using LanesOf = typename LanesType<N>::Type;
#else
/// N floats side by side, with the results of a register.
template <std::size_t N>
struct LanesOf {
    float lane[N];

    float& operator[](std::size_t i) { return lane[i]; }
    float operator[](std::size_t i) const { return lane[i]; }
    LanesOf& operator+=(const LanesOf& other) { return *this = *this + other; }

    template <class Operation>
    static LanesOf each(Operation operation) {
        LanesOf result;
        for (std::size_t i = 0; i < N; ++i) {
            result.lane[i] = operation(i);
        }
        return result;
    }
    friend LanesOf operator+(const LanesOf& a, const LanesOf& b) {
        return each([&](std::size_t i) { return a.lane[i] + b.lane[i]; });
    }
    friend LanesOf operator-(const LanesOf& a, const LanesOf& b) {
        return each([&](std::size_t i) { return a.lane[i] - b.lane[i]; });
    }
    friend LanesOf operator*(const LanesOf& a, const LanesOf& b) {
        return each([&](std::size_t i) { return a.lane[i] * b.lane[i]; });
    }
    friend LanesOf operator+(const LanesOf& a, float b) {
        return each([&](std::size_t i) { return a.lane[i] + b; });
    }
    friend LanesOf operator-(const LanesOf& a, float b) {
        return each([&](std::size_t i) { return a.lane[i] - b; });
    }
    friend LanesOf operator-(float a, const LanesOf& b) {
        return each([&](std::size_t i) { return a - b.lane[i]; });
    }
    friend LanesOf operator*(float a, const LanesOf& b) {
        return each([&](std::size_t i) { return a * b.lane[i]; });
    }
    friend LanesOf operator*(const LanesOf& a, float b) { return b * a; }
};
#endif

using Lanes = LanesOf<kLanes>;

/// Four floats from memory, of any alignment.
inline Lanes loadLanes(const float* values) {
    Lanes lanes;
    std::memcpy(&lanes, values, sizeof lanes);
    return lanes;
}

/// x, y, z and 0.
inline Lanes pointLanes(const vec3& point) {
    return Lanes{point.x, point.y, point.z, 0.0f};
}

/// What `linear * point + translation` gives, side by side.
struct AffineLanes {
    Lanes column[3];
    Lanes translation;

    AffineLanes(const mat3& linear, vec3 translation_)
        : column{pointLanes(linear[0]), pointLanes(linear[1]), pointLanes(linear[2])},
          translation(pointLanes(translation_)) {}

    Lanes operator()(const vec3& point) const {
        return column[0] * point.x + column[1] * point.y + column[2] * point.z + translation;
    }
};

inline void storeLanes(Lanes lanes, float* values) {
    std::memcpy(values, &lanes, sizeof lanes);
}

} // namespace zent
