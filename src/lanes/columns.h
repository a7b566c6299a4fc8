// Entries of tables, one for each lane, as columns of lanes: what fills a register at a time. Pairs and rows of four
// stand at multiples of 16 bytes and are read whole; `entry(i)` says where lane i's entry stands.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// The four columns of table rows, lane by lane.
template <class V>
struct Columns {
    V c0, c1, c2, c3;
};

namespace gathering {

// Pairs.
template <int N, class Entry>
inline Pair<F64<N>> pairsOfRegister(const Entry& entry) {
    const auto at = [&](int i) OKT_INLINE { return _mm_load_pd(entry(i)); };
    if constexpr (N == 2) {
        const __m128d low = at(0), high = at(1);
        return {_mm_unpacklo_pd(low, high), _mm_unpackhi_pd(low, high)};
    }
#if defined(OKT_REGISTERS_256)
    if constexpr (N == 4) {
        const __m256d even = _mm256_insertf128_pd(_mm256_castpd128_pd256(at(0)), at(2), 1);
        const __m256d odd = _mm256_insertf128_pd(_mm256_castpd128_pd256(at(1)), at(3), 1);
        return {_mm256_unpacklo_pd(even, odd), _mm256_unpackhi_pd(even, odd)};
    }
#endif
#if defined(OKT_REGISTERS_512)
    if constexpr (N == 8) {
        const auto four = [&](int i) OKT_INLINE {
            __m512d pairs = _mm512_castpd128_pd512(at(i));
            pairs = _mm512_insertf64x2(pairs, at(i + 2), 1);
            pairs = _mm512_insertf64x2(pairs, at(i + 4), 2);
            return _mm512_insertf64x2(pairs, at(i + 6), 3);
        };
        const __m512d even = four(0), odd = four(1);
        return {_mm512_unpacklo_pd(even, odd), _mm512_unpackhi_pd(even, odd)};
    }
#endif
}

// Pairs of Real32, each of which goes as one Real64.
template <class Entry>
inline Pair<F32<4>> pairsOfRegister32(const Entry& entry) {
    const auto both = [&](int i) { return reinterpret_cast<const Real64*>(entry(i)); };
    const __m128 low = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(both(0)), both(1)));
    const __m128 high = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(both(2)), both(3)));
    return {_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)), _mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1))};
}

// Rows of four.
template <int N, class Entry>
inline Columns<F64<N>> rowsOfRegister(const Entry& entry) {
    if constexpr (N == 2) {
        const auto lower = pairsOfRegister<2>(entry);
        const auto upper = pairsOfRegister<2>([&](int i) OKT_INLINE { return entry(i) + 2; });
        return {lower.first, lower.second, upper.first, upper.second};
    }
#if defined(OKT_REGISTERS_256)
    const auto at = [&](int i) OKT_INLINE { return _mm256_loadu_pd(entry(i)); };
    if constexpr (N == 4) {
        const __m256d a = at(0), b = at(1), c = at(2), d = at(3);
        const __m256d ab02 = _mm256_unpacklo_pd(a, b), ab13 = _mm256_unpackhi_pd(a, b);
        const __m256d cd02 = _mm256_unpacklo_pd(c, d), cd13 = _mm256_unpackhi_pd(c, d);
        return {_mm256_permute2f128_pd(ab02, cd02, 0x20), _mm256_permute2f128_pd(ab13, cd13, 0x20),
                _mm256_permute2f128_pd(ab02, cd02, 0x31), _mm256_permute2f128_pd(ab13, cd13, 0x31)};
    }
#endif
#if defined(OKT_REGISTERS_512)
    if constexpr (N == 8) {
        const auto two = [&](int i)
                             OKT_INLINE { return _mm512_insertf64x4(_mm512_castpd256_pd512(at(i)), at(i + 4), 1); };
        const __m512d a = two(0), b = two(1), c = two(2), d = two(3);
        const __m512d ab02 = _mm512_unpacklo_pd(a, b), ab13 = _mm512_unpackhi_pd(a, b);
        const __m512d cd02 = _mm512_unpacklo_pd(c, d), cd13 = _mm512_unpackhi_pd(c, d);
        const __m512i first = _mm512_setr_epi64(0, 1, 8, 9, 4, 5, 12, 13);
        const __m512i second = _mm512_setr_epi64(2, 3, 10, 11, 6, 7, 14, 15);
        return {_mm512_permutex2var_pd(ab02, first, cd02), _mm512_permutex2var_pd(ab13, first, cd13),
                _mm512_permutex2var_pd(ab02, second, cd02), _mm512_permutex2var_pd(ab13, second, cd13)};
    }
#endif
}

// Rows of four Real32.
template <int N, class Entry>
inline Columns<F32<N>> rowsOfRegister32(const Entry& entry) {
    const auto at = [&](int i) OKT_INLINE { return _mm_load_ps(entry(i)); };
    if constexpr (N == 4) {
        const __m128 a = at(0), b = at(1);
        const __m128 c = at(2), d = at(3);
        const __m128 ab01 = _mm_unpacklo_ps(a, b), ab23 = _mm_unpackhi_ps(a, b);
        const __m128 cd01 = _mm_unpacklo_ps(c, d), cd23 = _mm_unpackhi_ps(c, d);
        return {_mm_movelh_ps(ab01, cd01), _mm_movehl_ps(cd01, ab01), _mm_movelh_ps(ab23, cd23),
                _mm_movehl_ps(cd23, ab23)};
#if defined(OKT_REGISTERS_256)
    } else if constexpr (N == 8) {
        const auto quarters = [&](int i) OKT_INLINE {
            return _mm256_insertf128_ps(_mm256_castps128_ps256(at(i)), at(i + 4), 1);
        };
        const __m256 a = quarters(0), b = quarters(1), c = quarters(2), d = quarters(3);
        const __m256d ab01 = _mm256_castps_pd(_mm256_unpacklo_ps(a, b)),
                      ab23 = _mm256_castps_pd(_mm256_unpackhi_ps(a, b));
        const __m256d cd01 = _mm256_castps_pd(_mm256_unpacklo_ps(c, d)),
                      cd23 = _mm256_castps_pd(_mm256_unpackhi_ps(c, d));
        return {_mm256_castpd_ps(_mm256_unpacklo_pd(ab01, cd01)), _mm256_castpd_ps(_mm256_unpackhi_pd(ab01, cd01)),
                _mm256_castpd_ps(_mm256_unpacklo_pd(ab23, cd23)), _mm256_castpd_ps(_mm256_unpackhi_pd(ab23, cd23))};
#endif
#if defined(OKT_REGISTERS_512)
    } else if constexpr (N == 16) {
        const auto quarters = [&](int i) OKT_INLINE {
            __m512 four = _mm512_castps128_ps512(at(i));
            four = _mm512_insertf32x4(four, at(i + 4), 1);
            four = _mm512_insertf32x4(four, at(i + 8), 2);
            return _mm512_insertf32x4(four, at(i + 12), 3);
        };
        const __m512 a = quarters(0), b = quarters(1), c = quarters(2), d = quarters(3);
        const __m512d ab01 = _mm512_castps_pd(_mm512_unpacklo_ps(a, b)),
                      ab23 = _mm512_castps_pd(_mm512_unpackhi_ps(a, b));
        const __m512d cd01 = _mm512_castps_pd(_mm512_unpacklo_ps(c, d)),
                      cd23 = _mm512_castps_pd(_mm512_unpackhi_ps(c, d));
        return {_mm512_castpd_ps(_mm512_unpacklo_pd(ab01, cd01)), _mm512_castpd_ps(_mm512_unpackhi_pd(ab01, cd01)),
                _mm512_castpd_ps(_mm512_unpacklo_pd(ab23, cd23)), _mm512_castpd_ps(_mm512_unpackhi_pd(ab23, cd23))};
#endif
    }
}

}  // namespace gathering

}  // namespace okt
