#include "zent/nodes/skinBlock.h"

#include "zent/math/processor.h"

#include <algorithm>

#ifdef ZENT_X86
#include <immintrin.h>

namespace zent {
namespace {

#define ZENT_AVX512 __attribute__((target("avx512f")))

using SkinWeight = SkinWeights::value_type;

constexpr std::size_t kRow = 4;         ///< points in a register
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

// Twelve numbers by two reads and two writes: one of all sixteen, masked, would wait for the row before, into which its
// place reaches.
ZENT_AVX512 __m512 loadRow(const vec3* points) {
    const float* const values = &points->x;
    return _mm512_insertf32x4(_mm512_castps256_ps512(_mm256_loadu_ps(values)), _mm_loadu_ps(values + 8), 2);
}

ZENT_AVX512 void storeRow(__m512 row, vec3* points) {
    float* const values = &points->x;
    _mm256_storeu_ps(values, _mm512_castps512_ps256(row));
    _mm_storeu_ps(values + 8, _mm512_extractf32x4_ps(row, 2));
}

/// A column of an influence for four points.
ZENT_AVX512 __m512 sameColumn(const Lanes& column) {
    return _mm512_broadcast_f32x4(_mm_load_ps(reinterpret_cast<const float*>(&column)));
}

/// Two columns of an influence, and of another.
ZENT_AVX512 __m512 twoColumns(const Lanes* front, const Lanes* back) {
    const __m512d low = _mm512_castpd256_pd512(_mm256_load_pd(reinterpret_cast<const double*>(front)));
    return _mm512_castpd_ps(_mm512_insertf64x4(low, _mm256_load_pd(reinterpret_cast<const double*>(back)), 1));
}

/// `addRows` for points of N influences.
template <std::size_t N>
ZENT_AVX512 std::size_t addRowsOf(const SkinSums& skin, std::size_t k) {
    const SkinWeight* w = skin.weights + k;
    const SkinWeight* const end = skin.weights + skin.weightCount;
    const Influence* const influences = skin.influences;
    const vec3* const from = skin.from;
    vec3* const sums = skin.sums;
    const std::size_t pointCount = skin.pointCount;
    if (skin.influenceCount == 0) {
        return k;
    }
    const WordMasks words = wordMasks(*w);
    constexpr unsigned kUsed = (1u << kWeightWords * N) - 1;
    const auto ofPoint = static_cast<__mmask16>(words.point & kUsed);
    const auto ofInfluence = static_cast<__mmask16>(words.influence & kUsed);
    const __m512i allPoints = _mm512_maskz_set1_epi32(ofPoint, -1);
    const __m512i allInfluences = _mm512_maskz_set1_epi32(ofInfluence, -1);
    const __m512i nextPoint = _mm512_maskz_set1_epi32(ofPoint, 1);
    const std::size_t lastInfluence = std::min<std::size_t>(skin.influenceCount - 1, 0xffffffffu);
    const __m512i limit = _mm512_mask_set1_epi32(_mm512_set1_epi32(-1), ofInfluence,
                                                 static_cast<int>(static_cast<unsigned>(lastInfluence)));
    // The weights of two points; then the same one of all four.
    const __m512i ofTwo = _mm512_add_epi32(
        _mm512_setr_epi32(0, 3, 6, 9, 12, 12, 12, 12, 16, 19, 22, 25, 28, 28, 28, 28), _mm512_set1_epi32(words.weight));
    const __m512i ofFour = _mm512_setr_epi32(0, 0, 0, 0, 8, 8, 8, 8, 16, 16, 16, 16, 24, 24, 24, 24);
    const __m512i one = _mm512_set1_epi32(1);
    const __m512i allX = _mm512_setr_epi32(0, 0, 0, 0, 3, 3, 3, 3, 6, 6, 6, 6, 9, 9, 9, 9);
    const __m512i allY = _mm512_add_epi32(allX, one);
    const __m512i allZ = _mm512_add_epi32(allY, one);
    const __m512i spread = _mm512_setr_epi32(0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11);
    const __m512i packed = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15);

    // The last point's register reaches into the sixth weight from its first.
    for (; static_cast<std::size_t>(end - w) >= 3 * N + 6; w += kRow * N) {
        const unsigned point = std::get<0>(*w);
        const __m512i a = _mm512_loadu_si512(w);
        const __m512i b = _mm512_loadu_si512(w + N);
        const __m512i c = _mm512_loadu_si512(w + 2 * N);
        const __m512i d = _mm512_loadu_si512(w + 3 * N);
        const __m512i alikeB = _mm512_add_epi32(a, nextPoint);
        const __m512i alikeC = _mm512_add_epi32(alikeB, nextPoint);
        const __m512i alikeD = _mm512_add_epi32(alikeC, nextPoint);
        constexpr int kOrDiffering = 0xf6; // first | (second ^ third)
        constexpr int kEitherOf = 0xa8;    // (first | second) & third
        __m512i differing = _mm512_xor_si512(b, alikeB);
        differing = _mm512_ternarylogic_epi32(differing, c, alikeC, kOrDiffering);
        differing = _mm512_ternarylogic_epi32(differing, d, alikeD, kOrDiffering);
        const __m512i several = _mm512_xor_si512(a, _mm512_set1_epi32(static_cast<int>(point)));
        const __m512i highest = _mm512_max_epu32(_mm512_max_epu32(a, b), _mm512_max_epu32(c, d));
        __m512i wrong = _mm512_ternarylogic_epi32(differing, several, allPoints, kEitherOf);
        wrong = _mm512_ternarylogic_epi32(wrong, highest, _mm512_min_epu32(highest, limit), kOrDiffering);
        // The last point may have more influences than the three before it.
        const SkinWeight* const next = w + kRow * N;
        if (_mm512_test_epi32_mask(wrong, wrong) != 0 || point + std::size_t{kRow} > pointCount ||
            (next != end && std::get<0>(*next) == point + 3)) {
            break;
        }
        const __m512 position = loadRow(from + point);
        const __m512 x = _mm512_permutexvar_ps(allX, position);
        const __m512 y = _mm512_permutexvar_ps(allY, position);
        const __m512 z = _mm512_permutexvar_ps(allZ, position);
        __m512 sum = _mm512_permutexvar_ps(spread, loadRow(sums + point));
        const __m512 ofAB = _mm512_permutex2var_ps(_mm512_castsi512_ps(a), ofTwo, _mm512_castsi512_ps(b));
        const __m512 ofCD = _mm512_permutex2var_ps(_mm512_castsi512_ps(c), ofTwo, _mm512_castsi512_ps(d));
        __m512i slot = ofFour;
        const auto add = [&](__m512 columnX, __m512 columnY, __m512 columnZ, __m512 translation) ZENT_AVX512 {
            __m512 carried = _mm512_add_ps(_mm512_mul_ps(columnX, x), _mm512_mul_ps(columnY, y));
            carried = _mm512_add_ps(_mm512_add_ps(carried, _mm512_mul_ps(columnZ, z)), translation);
            sum = _mm512_add_ps(sum, _mm512_mul_ps(_mm512_permutex2var_ps(ofAB, slot, ofCD), carried));
            slot = _mm512_add_epi32(slot, one);
        };
        if (_mm512_test_epi32_mask(differing, allInfluences) == 0) {
            for (std::size_t i = 0; i < N; ++i) {
                const Lanes* const column = influences[std::get<1>(w[i])].column;
                add(sameColumn(column[0]), sameColumn(column[1]), sameColumn(column[2]), sameColumn(column[3]));
            }
        } else {
            for (std::size_t i = 0; i < N; ++i) {
                const Lanes* const columnsA = influences[std::get<1>(w[i])].column;
                const Lanes* const columnsB = influences[std::get<1>(w[N + i])].column;
                const Lanes* const columnsC = influences[std::get<1>(w[2 * N + i])].column;
                const Lanes* const columnsD = influences[std::get<1>(w[3 * N + i])].column;
                const __m512 frontAB = twoColumns(columnsA, columnsB);
                const __m512 frontCD = twoColumns(columnsC, columnsD);
                const __m512 backAB = twoColumns(columnsA + 2, columnsB + 2);
                const __m512 backCD = twoColumns(columnsC + 2, columnsD + 2);
                add(_mm512_shuffle_f32x4(frontAB, frontCD, 0x88), _mm512_shuffle_f32x4(frontAB, frontCD, 0xdd),
                    _mm512_shuffle_f32x4(backAB, backCD, 0x88), _mm512_shuffle_f32x4(backAB, backCD, 0xdd));
            }
        }
        storeRow(_mm512_permutexvar_ps(packed, sum), sums + point);
    }
    return static_cast<std::size_t>(w - skin.weights);
}

} // namespace

bool canAddWide() {
    return processor().hasAvx512f;
}

std::size_t addRows(const SkinSums& skin, std::size_t first) {
    const auto pointOf = [&](std::size_t i) { return std::get<0>(skin.weights[i]); };
    std::size_t length = 1;
    while (length <= kLongest && first + length < skin.weightCount && pointOf(first + length) == pointOf(first)) {
        ++length;
    }
    switch (length) {
    case 1:
        return addRowsOf<1>(skin, first);
    case 2:
        return addRowsOf<2>(skin, first);
    case 3:
        return addRowsOf<3>(skin, first);
    case 4:
        return addRowsOf<4>(skin, first);
    case 5:
        return addRowsOf<kLongest>(skin, first);
    default:
        return first;
    }
}

} // namespace zent

#else

namespace zent {

bool canAddWide() {
    return false;
}

std::size_t addRows(const SkinSums& /*skin*/, std::size_t first) {
    return first;
}

} // namespace zent

#endif
