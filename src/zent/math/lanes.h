#pragma once

#include "zent/math/types.h"

#include <cstddef>
#include <cstring>

#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
#include <emmintrin.h>
#endif

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
    friend LanesOf operator/(const LanesOf& a, const LanesOf& b) {
        return each([&](std::size_t i) { return a.lane[i] / b.lane[i]; });
    }
    friend LanesOf operator/(float a, const LanesOf& b) {
        return each([&](std::size_t i) { return a / b.lane[i]; });
    }
    friend LanesOf operator/(const LanesOf& a, float b) {
        return each([&](std::size_t i) { return a.lane[i] / b; });
    }
    friend LanesOf operator+(const LanesOf& a, float b) {
        return each([&](std::size_t i) { return a.lane[i] + b; });
    }
    friend LanesOf operator-(const LanesOf& a, float b) {
        return each([&](std::size_t i) { return a.lane[i] - b; });
    }
    friend LanesOf operator+(float a, const LanesOf& b) { return b + a; }
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

/// Whether one of the lanes lies below a number; NaN does not.
inline bool anyBelow(const Lanes& lanes, float bound) {
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    return _mm_movemask_ps(_mm_cmplt_ps(lanes, _mm_set1_ps(bound))) != 0;
#else
    return lanes[0] < bound || lanes[1] < bound || lanes[2] < bound || lanes[3] < bound;
#endif
}

/// The lanes 1 to 3 of four, the first of these, the second and the third side by side.
inline void lastThreeAcross(const Lanes (&rows)[4], Lanes (&columns)[3]) {
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    const __m128 front01 = _mm_unpacklo_ps(rows[0], rows[1]);
    const __m128 front23 = _mm_unpacklo_ps(rows[2], rows[3]);
    const __m128 back01 = _mm_unpackhi_ps(rows[0], rows[1]);
    const __m128 back23 = _mm_unpackhi_ps(rows[2], rows[3]);
    columns[0] = _mm_movehl_ps(front23, front01);
    columns[1] = _mm_movelh_ps(back01, back23);
    columns[2] = _mm_movehl_ps(back23, back01);
#else
    for (std::size_t i = 0; i < 3; ++i) {
        columns[i] = Lanes{rows[0][i + 1], rows[1][i + 1], rows[2][i + 1], rows[3][i + 1]};
    }
#endif
}

/// 0 and the first three lanes.
inline Lanes shiftedUp(const Lanes& lanes) {
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    return _mm_castsi128_ps(_mm_slli_si128(_mm_castps_si128(lanes), sizeof(float)));
#else
    return Lanes{0.0f, lanes[0], lanes[1], lanes[2]};
#endif
}

/// The last three lanes and 0.
inline Lanes shiftedDown(const Lanes& lanes) {
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    return _mm_castsi128_ps(_mm_srli_si128(_mm_castps_si128(lanes), sizeof(float)));
#else
    return Lanes{lanes[1], lanes[2], lanes[3], 0.0f};
#endif
}

/// The first three lanes, and a number.
inline Lanes withLast(const Lanes& lanes, float last) {
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    const __m128 firstThree = _mm_castsi128_ps(_mm_setr_epi32(-1, -1, -1, 0));
    return _mm_or_ps(_mm_and_ps(lanes, firstThree), _mm_setr_ps(0.0f, 0.0f, 0.0f, last));
#else
    return Lanes{lanes[0], lanes[1], lanes[2], last};
#endif
}

/// Whether the first three lanes of two differ by less than a number each; NaN does not.
inline bool firstThreeWithin(const Lanes& a, const Lanes& b, float bound) {
    const Lanes off = a - b;
#if defined(__GNUC__) && defined(__SSE2__) && !defined(ZENT_PLAIN_LANES)
    const __m128 size = _mm_andnot_ps(_mm_set1_ps(-0.0f), off);
    return (_mm_movemask_ps(_mm_cmplt_ps(size, _mm_set1_ps(bound))) & 7) == 7;
#else
    return std::abs(off[0]) < bound && std::abs(off[1]) < bound && std::abs(off[2]) < bound;
#endif
}

/// x, y, z and 0.
inline Lanes pointLanes(const vec3& point) {
    return Lanes{point.x, point.y, point.z, 0.0f};
}

/// The first three lanes.
inline vec3 toPoint(const Lanes& lanes) {
    return vec3(lanes[0], lanes[1], lanes[2]);
}

/// What `linear * point + translation` gives, side by side.
struct AffineLanes {
    Lanes column[3];
    Lanes translation;

    AffineLanes(const mat3& linear, vec3 translation_)
        : column{loadLanes(&linear[0].x), loadLanes(&linear[1].x), shiftedDown(loadLanes(&linear[1].z))},
          translation(pointLanes(translation_)) {}

    template <class Point>
    Lanes operator()(const Point& point) const {
        return column[0] * point[0] + column[1] * point[1] + column[2] * point[2] + translation;
    }
};

inline void storeLanes(Lanes lanes, float* values) {
    std::memcpy(values, &lanes, sizeof lanes);
}

/// `a * b` to the bit, a column at a time: compilers take glm's apart into single numbers.
inline mat4 productOf(const mat4& a, const mat4& b) {
    const Lanes column[4] = {loadLanes(&a[0].x), loadLanes(&a[1].x), loadLanes(&a[2].x), loadLanes(&a[3].x)};
    mat4 product;
    for (int i = 0; i < 4; ++i) {
        storeLanes(column[0] * b[i].x + column[1] * b[i].y + column[2] * b[i].z + column[3] * b[i].w, &product[i].x);
    }
    return product;
}

} // namespace zent
