// Between lanes of 32 and of 64 bits, lane by lane. A register of one size faces half a register or two of the other;
// what is wider than two registers goes by halves.
#pragma once

#include "lanes/halves.h"

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// One lane: what the conversions do

// Real32 to Real64, exact, and back with one rounding.
inline F64<1> widen(F32<1> a) { return static_cast<Real64>(a.raw); }
inline F32<1> narrow(F64<1> a) { return static_cast<Real32>(a.raw); }
// Signed 32-bit integers to Real64, exact.
inline F64<1> toReal64(U32<1> a) { return static_cast<Real64>(static_cast<std::int32_t>(a.raw)); }
// 2^52 plus the lane as an unsigned number, exact.
inline F64<1> above2To52(U32<1> a) { return bits64(std::uint64_t{0x43300000} << 32 | a.raw); }
// 64-bit lanes of these upper words; the lower words are zero.
inline U64<1> withHighWords(U32<1> a) { return static_cast<std::uint64_t>(a.raw) << 32; }
// The lower or the upper 32 bits of each 64-bit lane, side by side.
inline U32<1> packLowWords(U64<1> a) { return static_cast<std::uint32_t>(a.raw); }
inline U32<1> packHighWords(U64<1> a) { return static_cast<std::uint32_t>(a.raw >> 32); }
// Truth values for lanes of the other size.
inline Mask64<1> widen(Mask32<1> m) { return {m.raw}; }
inline Mask32<1> narrow(Mask64<1> m) { return {m.raw}; }

// ---------------------------------------------------------------------------------------------------------------------
// Two lanes: one register of 64-bit lanes, two single lanes of 32 bits

inline F64<2> widen(F32<2> a) { return {widen(a.lo), widen(a.hi)}; }
inline F32<2> narrow(F64<2> a) { return {narrow(a.lowHalf()), narrow(a.highHalf())}; }
inline F64<2> toReal64(U32<2> a) { return {toReal64(a.lo), toReal64(a.hi)}; }
inline F64<2> above2To52(U32<2> a) { return {above2To52(a.lo), above2To52(a.hi)}; }
inline U64<2> withHighWords(U32<2> a) { return {withHighWords(a.lo), withHighWords(a.hi)}; }
inline U32<2> packLowWords(U64<2> a) { return {packLowWords(a.lowHalf()), packLowWords(a.highHalf())}; }
inline U32<2> packHighWords(U64<2> a) { return {packHighWords(a.lowHalf()), packHighWords(a.highHalf())}; }
inline Mask64<2> widen(Mask32<2> m) {
    return {_mm_castsi128_pd(_mm_set_epi64x(-static_cast<long long>(m.hi.raw), -static_cast<long long>(m.lo.raw)))};
}
inline Mask32<2> narrow(Mask64<2> m) { return {narrow(m.lowHalf()), narrow(m.highHalf())}; }

// ---------------------------------------------------------------------------------------------------------------------
// Four lanes: 128 bits of the smaller size

#if !defined(OKT_REGISTERS_256)
inline F64<4> widen(F32<4> a) {
    return {F64<2>(_mm_cvtps_pd(a.raw)), F64<2>(_mm_cvtps_pd(_mm_movehl_ps(a.raw, a.raw)))};
}
inline F32<4> narrow(F64<4> a) { return _mm_movelh_ps(_mm_cvtpd_ps(a.lo.raw), _mm_cvtpd_ps(a.hi.raw)); }
inline F64<4> toReal64(U32<4> a) {
    return {F64<2>(_mm_cvtepi32_pd(a.raw)), F64<2>(_mm_cvtepi32_pd(_mm_unpackhi_epi64(a.raw, a.raw)))};
}
inline F64<4> above2To52(U32<4> a) {
    const __m128i exponent = _mm_set1_epi32(0x43300000);
    return {F64<2>(_mm_castsi128_pd(_mm_unpacklo_epi32(a.raw, exponent))),
            F64<2>(_mm_castsi128_pd(_mm_unpackhi_epi32(a.raw, exponent)))};
}
inline U64<4> withHighWords(U32<4> a) {
    return {U64<2>(_mm_unpacklo_epi32(_mm_setzero_si128(), a.raw)),
            U64<2>(_mm_unpackhi_epi32(_mm_setzero_si128(), a.raw))};
}
inline U32<4> packLowWords(U64<4> a) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(a.lo.raw), _mm_castsi128_ps(a.hi.raw), _MM_SHUFFLE(2, 0, 2, 0)));
}
inline U32<4> packHighWords(U64<4> a) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(a.lo.raw), _mm_castsi128_ps(a.hi.raw), _MM_SHUFFLE(3, 1, 3, 1)));
}
inline Mask64<4> widen(Mask32<4> m) {
    return {{_mm_castps_pd(_mm_unpacklo_ps(m.raw, m.raw))}, {_mm_castps_pd(_mm_unpackhi_ps(m.raw, m.raw))}};
}
inline Mask32<4> narrow(Mask64<4> m) {
    return {_mm_shuffle_ps(_mm_castpd_ps(m.lo.raw), _mm_castpd_ps(m.hi.raw), _MM_SHUFFLE(2, 0, 2, 0))};
}
#else
inline F64<4> widen(F32<4> a) { return _mm256_cvtps_pd(a.raw); }
inline F32<4> narrow(F64<4> a) { return _mm256_cvtpd_ps(a.raw); }
inline F64<4> toReal64(U32<4> a) { return _mm256_cvtepi32_pd(a.raw); }
inline F64<4> above2To52(U32<4> a) {
    return _mm256_castsi256_pd(_mm256_or_si256(_mm256_cvtepu32_epi64(a.raw), _mm256_set1_epi64x(0x4330000000000000)));
}
inline U64<4> withHighWords(U32<4> a) { return _mm256_slli_epi64(_mm256_cvtepu32_epi64(a.raw), 32); }
inline U32<4> packLowWords(U64<4> a) {
    const __m128 low = _mm_castsi128_ps(a.lowHalf().raw), high = _mm_castsi128_ps(a.highHalf().raw);
    return _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)));
}
inline U32<4> packHighWords(U64<4> a) {
    const __m128 low = _mm_castsi128_ps(a.lowHalf().raw), high = _mm_castsi128_ps(a.highHalf().raw);
    return _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1)));
}
inline Mask64<4> widen(Mask32<4> m) { return {_mm256_castsi256_pd(_mm256_cvtepi32_epi64(_mm_castps_si128(m.raw)))}; }
inline Mask32<4> narrow(Mask64<4> m) {
    const __m128 low = _mm_castpd_ps(m.lowHalf().raw), high = _mm_castpd_ps(m.highHalf().raw);
    return {_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0))};
}
#endif

// ---------------------------------------------------------------------------------------------------------------------
// Eight lanes: 256 bits of the smaller size

#if defined(OKT_REGISTERS_512)
inline F64<8> widen(F32<8> a) { return _mm512_cvtps_pd(a.raw); }
inline F32<8> narrow(F64<8> a) { return _mm512_cvtpd_ps(a.raw); }
inline F64<8> toReal64(U32<8> a) { return _mm512_cvtepi32_pd(a.raw); }
inline F64<8> above2To52(U32<8> a) {
    return _mm512_castsi512_pd(_mm512_or_si512(_mm512_cvtepu32_epi64(a.raw), _mm512_set1_epi64(0x4330000000000000)));
}
inline U64<8> withHighWords(U32<8> a) { return _mm512_slli_epi64(_mm512_cvtepu32_epi64(a.raw), 32); }
inline U32<8> packLowWords(U64<8> a) { return _mm512_cvtepi64_epi32(a.raw); }
inline U32<8> packHighWords(U64<8> a) { return _mm512_cvtepi64_epi32(_mm512_srli_epi64(a.raw, 32)); }
inline Mask64<8> widen(Mask32<8> m) { return {static_cast<__mmask8>(_mm256_movemask_ps(m.raw))}; }
inline Mask32<8> narrow(Mask64<8> m) { return {_mm256_castsi256_ps(_mm256_movm_epi32(m.raw))}; }
#elif defined(OKT_REGISTERS_256)
inline U32<8> packLowWords(U64<8> a) {
    const __m256 mixed =
        _mm256_shuffle_ps(_mm256_castsi256_ps(a.lo.raw), _mm256_castsi256_ps(a.hi.raw), _MM_SHUFFLE(2, 0, 2, 0));
    return _mm256_permute4x64_epi64(_mm256_castps_si256(mixed), _MM_SHUFFLE(3, 1, 2, 0));
}
inline U32<8> packHighWords(U64<8> a) {
    const __m256 mixed =
        _mm256_shuffle_ps(_mm256_castsi256_ps(a.lo.raw), _mm256_castsi256_ps(a.hi.raw), _MM_SHUFFLE(3, 1, 3, 1));
    return _mm256_permute4x64_epi64(_mm256_castps_si256(mixed), _MM_SHUFFLE(3, 1, 2, 0));
}
inline Mask32<8> narrow(Mask64<8> m) {
    const __m256 mixed =
        _mm256_shuffle_ps(_mm256_castpd_ps(m.lo.raw), _mm256_castpd_ps(m.hi.raw), _MM_SHUFFLE(2, 0, 2, 0));
    return {_mm256_castpd_ps(_mm256_permute4x64_pd(_mm256_castps_pd(mixed), _MM_SHUFFLE(3, 1, 2, 0)))};
}
#endif

// ---------------------------------------------------------------------------------------------------------------------
// Sixteen lanes: 512 bits of the smaller size

#if defined(OKT_REGISTERS_512)
inline U32<16> packLowWords(U64<16> a) {
    const __m512i even = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    return _mm512_permutex2var_epi32(a.lo.raw, even, a.hi.raw);
}
inline U32<16> packHighWords(U64<16> a) {
    const __m512i odd = _mm512_setr_epi32(1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
    return _mm512_permutex2var_epi32(a.lo.raw, odd, a.hi.raw);
}
inline Mask64<16> widen(Mask32<16> m) { return {{static_cast<__mmask8>(m.raw)}, {static_cast<__mmask8>(m.raw >> 8)}}; }
inline Mask32<16> narrow(Mask64<16> m) { return {static_cast<__mmask16>(m.lo.raw | m.hi.raw << 8)}; }
#endif

// ---------------------------------------------------------------------------------------------------------------------
// By halves: what two registers of the larger size do not hold, or no instruction converts at once

template <int N>
requires LanesAbove<N, 4>
inline F64<N> widen(F32<N> a) { return {widen(a.lowHalf()), widen(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline F32<N> narrow(F64<N> a) { return {narrow(a.lowHalf()), narrow(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline F64<N> toReal64(U32<N> a) { return {toReal64(a.lowHalf()), toReal64(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline F64<N> above2To52(U32<N> a) { return {above2To52(a.lowHalf()), above2To52(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline U64<N> withHighWords(U32<N> a) { return {withHighWords(a.lowHalf()), withHighWords(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline U32<N> packLowWords(U64<N> a) { return {packLowWords(a.lowHalf()), packLowWords(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline U32<N> packHighWords(U64<N> a) { return {packHighWords(a.lowHalf()), packHighWords(a.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline Mask64<N> widen(Mask32<N> m) { return {widen(m.lowHalf()), widen(m.highHalf())}; }
template <int N>
requires LanesAbove<N, 4>
inline Mask32<N> narrow(Mask64<N> m) { return {narrow(m.lowHalf()), narrow(m.highHalf())}; }

// ---------------------------------------------------------------------------------------------------------------------
// From memory

// Real32 elements to Real64 lanes. Where the conversion reads them by itself, it takes no shuffle for every other pair.
template <int N>
inline F64<N> widenAt(const Real32* from) {
    if constexpr (N == 1) {
        return widen(F32<1>::load(from));
    } else if constexpr (N == 2) {
        struct [[gnu::packed, gnu::may_alias]] Elements {
            Real32 lane[2];
        };
        __m128d wide;
#if defined(__AVX__)
        asm("vcvtps2pd %1, %0" : "=v"(wide) : "m"(*reinterpret_cast<const Elements*>(from)));
#else
        asm("cvtps2pd %1, %0" : "=x"(wide) : "m"(*reinterpret_cast<const Elements*>(from)));
#endif
        return wide;
    } else if constexpr (Register<F64<N>>) {
        return widen(F32<N>::load(from));
    } else {
        return {widenAt<N / 2>(from), widenAt<N / 2>(from + N / 2)};
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64 lanes and 32-bit integers within them

// The number without its fraction, for numbers below 2^31, whatever the rounding mode.
inline F64<1> truncated(F64<1> a) { return static_cast<Real64>(static_cast<std::int32_t>(a.raw)); }
inline F64<2> truncated(F64<2> a) { return _mm_cvtepi32_pd(_mm_cvttpd_epi32(a.raw)); }
#if defined(OKT_REGISTERS_256)
inline F64<4> truncated(F64<4> a) { return _mm256_cvtepi32_pd(_mm256_cvttpd_epi32(a.raw)); }
#endif
#if defined(OKT_REGISTERS_512)
inline F64<8> truncated(F64<8> a) { return _mm512_cvtepi32_pd(_mm512_cvttpd_epi32(a.raw)); }
#endif
template <int N>
requires Paired<F64<N>>
inline F64<N> truncated(F64<N> a) { return {truncated(a.lo), truncated(a.hi)}; }

// The integer of a non-negative integral number below 2^31.
template <int N>
inline U64<N> toUnsigned(F64<N> a) {
    return asBits(a + F64<N>(0x1p52)) & U64<N>(std::uint64_t{0x7FFFFFFF});
}

}  // namespace okt
