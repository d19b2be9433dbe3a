#include "zent/nodes/skinBlock.h"

#include <algorithm>

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>

namespace zent {
namespace {

#define ZENT_AVX512 __attribute__((target("avx512f")))

using SkinWeight = SkinWeights::value_type;

constexpr std::size_t kAlike = 4;
constexpr std::size_t kLongest = 5;     ///< influences of a point: as many weights as one register holds whole
constexpr std::size_t kWeightWords = 3; ///< of a SkinWeight
constexpr unsigned kEveryThird = 0x1249;
static_assert(sizeof(SkinWeight) == kWeightWords * 4);

/// Which words of a list of weights hold what; the order in a tuple is the library's.
struct WordMasks {
    unsigned point;
    unsigned influence;
    int weight; ///< the first
};

WordMasks wordMasks(const SkinWeight& weight) {
    const auto place = [&](const void* word) {
        return (static_cast<const char*>(word) - reinterpret_cast<const char*>(&weight)) / 4;
    };
    return {kEveryThird << place(&std::get<0>(weight)), kEveryThird << place(&std::get<1>(weight)),
            static_cast<int>(place(&std::get<2>(weight)))};
}

ZENT_AVX512 std::size_t addAlike(const SkinSums& skin, std::size_t k) {
    const SkinWeight* const weights = skin.weights;
    const auto pointOf = [&](std::size_t i) { return std::get<0>(weights[i]); };
    // Six are read from the fourth point's first.
    const std::size_t rest = skin.weightCount - k;
    if (rest < kAlike + 6) {
        return k;
    }
    std::size_t length = 1;
    while (length <= kLongest && pointOf(k + length) == pointOf(k)) {
        ++length;
    }
    if (length > kLongest) {
        return k;
    }
    const WordMasks words = wordMasks(weights[k]);
    const unsigned used = (1u << kWeightWords * length) - 1;
    const auto points = static_cast<__mmask16>(words.point & used);
    const auto influences = static_cast<__mmask16>(words.influence & used);
    const auto indices = static_cast<__mmask16>(points | influences);
    const __m512i nextPoint = _mm512_maskz_set1_epi32(points, 1);
    // A bound that no index has where there are more.
    const __m512i bound = _mm512_set1_epi32(static_cast<int>(std::min<std::size_t>(skin.influenceCount, 0xffffffffu)));
    const __m512i one = _mm512_set1_epi32(1);
    // The weights of two points; then the same one of all four.
    const __m512i ofTwo = _mm512_add_epi32(
        _mm512_setr_epi32(0, 3, 6, 9, 12, 12, 12, 12, 16, 19, 22, 25, 28, 28, 28, 28), _mm512_set1_epi32(words.weight));
    const __m512i ofFour = _mm512_setr_epi32(0, 0, 0, 0, 8, 8, 8, 8, 16, 16, 16, 16, 24, 24, 24, 24);
    const __m512i allX = _mm512_setr_epi32(0, 0, 0, 0, 3, 3, 3, 3, 6, 6, 6, 6, 9, 9, 9, 9);
    const __m512i allY = _mm512_add_epi32(allX, one);
    const __m512i allZ = _mm512_add_epi32(allY, one);
    const __m512i spread = _mm512_setr_epi32(0, 1, 2, 15, 3, 4, 5, 15, 6, 7, 8, 15, 9, 10, 11, 15);
    const __m512i packed = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15);
    constexpr __mmask16 kFourPoints = 0xfff;

    for (; k + kAlike * length + 6 <= skin.weightCount; k += kAlike * length) {
        const std::size_t point = pointOf(k);
        const __m512i a = _mm512_loadu_si512(weights + k);
        const __m512i b = _mm512_loadu_si512(weights + k + length);
        const __m512i c = _mm512_loadu_si512(weights + k + 2 * length);
        const __m512i d = _mm512_loadu_si512(weights + k + 3 * length);
        const __m512i wantedB = _mm512_add_epi32(a, nextPoint);
        const __m512i wantedC = _mm512_add_epi32(wantedB, nextPoint);
        const __m512i wantedD = _mm512_add_epi32(wantedC, nextPoint);
        const unsigned wrong =
            unsigned{_mm512_mask_cmpneq_epi32_mask(points, a, _mm512_set1_epi32(static_cast<int>(pointOf(k))))} |
            _mm512_mask_cmpge_epu32_mask(influences, a, bound) | _mm512_mask_cmpneq_epi32_mask(indices, b, wantedB) |
            _mm512_mask_cmpneq_epi32_mask(indices, c, wantedC) | _mm512_mask_cmpneq_epi32_mask(indices, d, wantedD);
        // The last point may have more influences than the three before it.
        if (wrong != 0 || point + kAlike > skin.pointCount || pointOf(k + kAlike * length) == pointOf(k) + 3) {
            break;
        }
        const __m512 from = _mm512_maskz_loadu_ps(kFourPoints, skin.from + point);
        const __m512 x = _mm512_permutexvar_ps(allX, from);
        const __m512 y = _mm512_permutexvar_ps(allY, from);
        const __m512 z = _mm512_permutexvar_ps(allZ, from);
        __m512 sum = _mm512_permutexvar_ps(spread, _mm512_maskz_loadu_ps(kFourPoints, skin.sums + point));
        const __m512 ofAB = _mm512_permutex2var_ps(_mm512_castsi512_ps(a), ofTwo, _mm512_castsi512_ps(b));
        const __m512 ofCD = _mm512_permutex2var_ps(_mm512_castsi512_ps(c), ofTwo, _mm512_castsi512_ps(d));
        __m512i slot = ofFour;
        for (std::size_t i = 0; i < length; ++i) {
            const auto* const columns =
                reinterpret_cast<const __m128*>(skin.influences[std::get<1>(weights[k + i])].column);
            const __m512 carried =
                _mm512_add_ps(_mm512_add_ps(_mm512_add_ps(_mm512_mul_ps(_mm512_broadcast_f32x4(columns[0]), x),
                                                          _mm512_mul_ps(_mm512_broadcast_f32x4(columns[1]), y)),
                                            _mm512_mul_ps(_mm512_broadcast_f32x4(columns[2]), z)),
                              _mm512_broadcast_f32x4(columns[3]));
            sum = _mm512_add_ps(sum, _mm512_mul_ps(_mm512_permutex2var_ps(ofAB, slot, ofCD), carried));
            slot = _mm512_add_epi32(slot, one);
        }
        _mm512_mask_storeu_ps(skin.sums + point, kFourPoints, _mm512_permutexvar_ps(packed, sum));
    }
    return k;
}

/// Four weighted influences of a point, added to its sum one after the other.
ZENT_AVX512 __m128 addFour(const SkinWeight* weights, const Influence* influences, __m512 xyz1, __m128 sum) {
    const __m512 a = _mm512_mul_ps(_mm512_load_ps(influences[std::get<1>(weights[0])].column), xyz1);
    const __m512 b = _mm512_mul_ps(_mm512_load_ps(influences[std::get<1>(weights[1])].column), xyz1);
    const __m512 c = _mm512_mul_ps(_mm512_load_ps(influences[std::get<1>(weights[2])].column), xyz1);
    const __m512 d = _mm512_mul_ps(_mm512_load_ps(influences[std::get<1>(weights[3])].column), xyz1);
    // From a register for each influence to one for each column.
    const __m512 frontAB = _mm512_shuffle_f32x4(a, b, 0x44);
    const __m512 frontCD = _mm512_shuffle_f32x4(c, d, 0x44);
    const __m512 backAB = _mm512_shuffle_f32x4(a, b, 0xee);
    const __m512 backCD = _mm512_shuffle_f32x4(c, d, 0xee);
    const __m512 carried = _mm512_add_ps(_mm512_add_ps(_mm512_add_ps(_mm512_shuffle_f32x4(frontAB, frontCD, 0x88),
                                                                     _mm512_shuffle_f32x4(frontAB, frontCD, 0xdd)),
                                                       _mm512_shuffle_f32x4(backAB, backCD, 0x88)),
                                         _mm512_shuffle_f32x4(backAB, backCD, 0xdd));
    const __m512 strided = _mm512_maskz_loadu_ps(0x249, &std::get<2>(*weights));
    const __m512i ofFour = _mm512_setr_epi32(0, 0, 0, 0, 3, 3, 3, 3, 6, 6, 6, 6, 9, 9, 9, 9);
    const __m512 weighted = _mm512_mul_ps(carried, _mm512_permutexvar_ps(ofFour, strided));
    sum = _mm_add_ps(sum, _mm512_castps512_ps128(weighted));
    sum = _mm_add_ps(sum, _mm512_extractf32x4_ps(weighted, 1));
    sum = _mm_add_ps(sum, _mm512_extractf32x4_ps(weighted, 2));
    return _mm_add_ps(sum, _mm512_extractf32x4_ps(weighted, 3));
}

ZENT_AVX512 std::size_t addEach(const SkinSums& skin, std::size_t k, std::size_t last) {
    const SkinWeight* const weights = skin.weights;
    const std::size_t count = skin.weightCount;
    const std::size_t bound = skin.influenceCount;
    const auto pointOf = [&](std::size_t i) { return std::get<0>(weights[i]); };
    const auto influenceOf = [&](std::size_t i) { return std::get<1>(weights[i]); };
    const __m512i spread = _mm512_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3);
    while (k < last) {
        const unsigned point = pointOf(k);
        if (point >= skin.pointCount || k + 1 == count || pointOf(k + 1) != point) {
            break;
        }
        const vec3 from = skin.from[point];
        vec3& to = skin.sums[point];
        const __m512 xyz1 =
            _mm512_permutexvar_ps(spread, _mm512_castps128_ps512(_mm_setr_ps(from.x, from.y, from.z, 1.0f)));
        __m128 sum = _mm_setr_ps(to.x, to.y, to.z, 0.0f);
        std::size_t next = k;
        while (next + 4 <= count && pointOf(next) == point && pointOf(next + 1) == point &&
               pointOf(next + 2) == point && pointOf(next + 3) == point && influenceOf(next) < bound &&
               influenceOf(next + 1) < bound && influenceOf(next + 2) < bound && influenceOf(next + 3) < bound) {
            sum = addFour(weights + next, skin.influences, xyz1, sum);
            next += 4;
        }
        for (; next < count && pointOf(next) == point; ++next) {
            if (influenceOf(next) >= bound) {
                return k;
            }
            float weighted[4];
            storeLanes(std::get<2>(weights[next]) * skin.influences[influenceOf(next)](from), weighted);
            sum = _mm_add_ps(sum, _mm_loadu_ps(weighted));
        }
        float each[4];
        _mm_storeu_ps(each, sum);
        to = vec3(each[0], each[1], each[2]);
        k = next;
    }
    return k;
}

} // namespace

bool canAddWide() {
    static const bool can = __builtin_cpu_supports("avx512f") != 0;
    return can;
}

std::size_t addAlikePoints(const SkinSums& skin, std::size_t first) {
    return addAlike(skin, first);
}

std::size_t addWholePoints(const SkinSums& skin, std::size_t first, std::size_t last) {
    return addEach(skin, first, last);
}

} // namespace zent

#else

namespace zent {

bool canAddWide() {
    return false;
}

std::size_t addAlikePoints(const SkinSums& /*skin*/, std::size_t first) {
    return first;
}

std::size_t addWholePoints(const SkinSums& /*skin*/, std::size_t first, std::size_t /*last*/) {
    return first;
}

} // namespace zent

#endif
