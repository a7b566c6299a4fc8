// Lanes: one set of operations over one, two, four and more elements, so that a kernel's steps are written once.
//
//   F64<N>, F32<N>   N floating-point lanes
//   U64<N>, U32<N>   N integer lanes: patterns, indices, masks in the making
//   Mask64<N>, Mask32<N>   N truth values, from a comparison
//
// One lane is a scalar; the processor's own width (two Real64, four Real32) is a register; anything wider is a pair of
// halves, worked one after the other, which also gives the processor independent chains to overlap. Every operator is
// one IEEE operation in each lane. No intrinsic stands outside this folder.
//
// Names of conversions, by what stays as it is:
//
//   as...      the pattern: asBits, asReal; asWords and asLongs, the same register in other lanes
//   to...      the number: toReal64 and toReal32 of signed integers, toUnsigned of integral Real64
//   widen, narrow   the number or truth value, in lanes of the double or half size: Real32, Real64, masks
//   pack...    a half of each 64-bit lane, as 32-bit lanes side by side: packLowWords, packHighWords
//
// Names of lookups, in lookup.h: gather, what a lane's entry is, and how it is found.
//
//   Elements, Pairs, Rows   one column, two, four; InterleavedPairs, a pair as two lanes side by side
//   ...At              by byte offsets, in lanes or in memory; in memory, with a stride, as multiples of it
//   ...ByLowBits       by the number in the low bits of a lane
//   ...ByDigitPairs    by digits of two lanes at once
//   ...AtPlaces        by a list of places; scatterElementsToPlaces is the way back
#pragma once

#include "lanes/bits.h"

#include <emmintrin.h>

#include <cstddef>
#include <type_traits>

namespace okt {

template <class T, int N>
struct Vec;
template <int Bits, int N>
struct Mask;

template <int N>
using F64 = Vec<Real64, N>;
template <int N>
using F32 = Vec<Real32, N>;
template <int N>
using U64 = Vec<std::uint64_t, N>;
template <int N>
using U32 = Vec<std::uint32_t, N>;
template <int N>
using Mask64 = Mask<64, N>;
template <int N>
using Mask32 = Mask<32, N>;

using F64x1 = F64<1>;
using F64x2 = F64<2>;
using F64x4 = F64<4>;
using F32x1 = F32<1>;
using F32x4 = F32<4>;
using U64x2 = U64<2>;
using U32x4 = U32<4>;

// Lanes in one register of the processor.
template <class T>
inline constexpr int registerLanes = 16 / static_cast<int>(sizeof(T));

template <int N, int bound>
concept LanesAbove = N > bound;
template <class T, int N>
concept RealRegister = std::is_floating_point_v<T> && N == registerLanes<T>;
template <class T, int N>
concept IntegerRegister = std::is_integral_v<T> && N == registerLanes<T>;

// ---------------------------------------------------------------------------------------------------------------------
// One lane.

template <int Bits>
struct Mask<Bits, 1> {
    bool raw;
    friend Mask operator&(Mask a, Mask b) { return {static_cast<bool>(a.raw & b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {static_cast<bool>(a.raw | b.raw)}; }
    friend Mask operator~(Mask a) { return {!a.raw}; }
};

template <class T>
struct Vec<T, 1> {
    static constexpr int lanes = 1;
    using Element = T;
    T raw;

    Vec() = default;
    Vec(T x) : raw(x) {}
    static Vec load(const T* from) { return loadElement(from); }
    void store(T* to) const { storeElement(to, raw); }
    T operator[](int) const { return raw; }

    friend Vec operator+(Vec a, Vec b) { return a.raw + b.raw; }
    friend Vec operator-(Vec a, Vec b) { return a.raw - b.raw; }
    friend Vec operator*(Vec a, Vec b) requires std::is_floating_point_v<T> { return a.raw * b.raw; }
    friend Vec operator/(Vec a, Vec b) requires std::is_floating_point_v<T> { return a.raw / b.raw; }
    friend Vec operator&(Vec a, Vec b) requires std::is_integral_v<T> { return a.raw & b.raw; }
    friend Vec operator|(Vec a, Vec b) requires std::is_integral_v<T> { return a.raw | b.raw; }
    friend Vec operator^(Vec a, Vec b) requires std::is_integral_v<T> { return a.raw ^ b.raw; }
    friend Vec operator~(Vec a) requires std::is_integral_v<T> { return static_cast<T>(~a.raw); }
    friend Vec operator<<(Vec a, int n) requires std::is_integral_v<T> { return a.raw << n; }
    friend Vec operator>>(Vec a, int n) requires std::is_integral_v<T> { return a.raw >> n; }

    using M = Mask<8 * sizeof(T), 1>;
    friend M operator==(Vec a, Vec b) { return {a.raw == b.raw}; }
    friend M operator!=(Vec a, Vec b) { return {a.raw != b.raw}; }
    friend M operator<(Vec a, Vec b) requires std::is_floating_point_v<T> { return {a.raw < b.raw}; }
    friend M operator<=(Vec a, Vec b) requires std::is_floating_point_v<T> { return {a.raw <= b.raw}; }
    friend M operator>(Vec a, Vec b) requires std::is_floating_point_v<T> { return {a.raw > b.raw}; }
    friend M operator>=(Vec a, Vec b) requires std::is_floating_point_v<T> { return {a.raw >= b.raw}; }
};

inline F64<1> sqrt(F64<1> a) { return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(a.raw))); }
inline F32<1> sqrt(F32<1> a) { return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(a.raw))); }

inline U64<1> asBits(F64<1> a) { return asBits(a.raw); }
inline U32<1> asBits(F32<1> a) { return asBits(a.raw); }
inline F64<1> asReal(U64<1> a) { return bits64(a.raw); }
inline F32<1> asReal(U32<1> a) { return bits32(a.raw); }

inline U32<1> shiftRightSigned(U32<1> a, int n) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(a.raw) >> n);
}
inline Mask32<1> greaterSigned(U32<1> a, U32<1> b) {
    return {static_cast<std::int32_t>(a.raw) > static_cast<std::int32_t>(b.raw)};
}
// The lower 32 bits of each 64-bit lane, side by side.
inline U32<1> packLowWords(U64<1> a) { return static_cast<std::uint32_t>(a.raw); }

// All ones where true.
inline U32<1> maskBits(Mask32<1> m) { return 0u - std::uint32_t{m.raw}; }

template <int Bits>
inline bool any(Mask<Bits, 1> m) {
    return m.raw;
}
template <int Bits>
inline bool all(Mask<Bits, 1> m) {
    return m.raw;
}
template <int Bits>
inline int laneBits(Mask<Bits, 1> m) {
    return m.raw;
}

template <class T>
inline Vec<T, 1> select(Mask<8 * sizeof(T), 1> m, Vec<T, 1> yes, Vec<T, 1> no) {
    return m.raw ? yes : no;
}
template <class T>
inline Vec<T, 1> zeroUnless(Mask<8 * sizeof(T), 1> m, Vec<T, 1> a) {
    return m.raw ? a : Vec<T, 1>(T{0});
}
template <class T>
inline Vec<T, 1> zeroIf(Mask<8 * sizeof(T), 1> m, Vec<T, 1> a) {
    return m.raw ? Vec<T, 1>(T{0}) : a;
}

inline F64<1> widen(F32<1> a) { return static_cast<Real64>(a.raw); }
inline F32<1> narrow(F64<1> a) { return static_cast<Real32>(a.raw); }

// Signed 32-bit integers to Real64, exact, and to Real32.
inline F64<1> toReal64(U32<1> a) { return static_cast<Real64>(static_cast<std::int32_t>(a.raw)); }
inline F32<1> toReal32(U32<1> a) { return static_cast<Real32>(static_cast<std::int32_t>(a.raw)); }

// The upper 32 bits of each 64-bit lane, in the low half of the lane.
inline U64<1> highWords(U64<1> a) { return a.raw >> 32; }
// The same as 32-bit lanes side by side.
inline U32<1> packHighWords(U64<1> a) { return static_cast<std::uint32_t>(a.raw >> 32); }

// Compares the upper words of 64-bit lanes as signed integers.
inline Mask64<1> greaterSignedHigh(U64<1> a, U64<1> b) {
    return {static_cast<std::int32_t>(a.raw >> 32) > static_cast<std::int32_t>(b.raw >> 32)};
}
// a - from, but not below zero and not above `most`, for lanes below 2^15.
inline U32<1> clampedDifference(U32<1> a, std::uint16_t from, std::uint16_t most) {
    const std::uint32_t difference = a.raw > from ? a.raw - from : 0;
    return difference < most ? difference : std::uint32_t{most};
}

// The product of the lower words.
inline U64<1> mulLowWords(U64<1> a, U64<1> b) { return (a.raw & 0xFFFFFFFF) * (b.raw & 0xFFFFFFFF); }
// The upper half of the product of the upper 16 bits of each lane, there; the lower 16 bits are zero.
inline U32<1> mulHighHalves(U32<1> a, std::uint16_t b) { return ((a.raw >> 16) * b) & 0xFFFF0000; }

// 64-bit lanes of these upper words; the lower words are zero.
inline U64<1> withHighWords(U32<1> a) { return static_cast<std::uint64_t>(a.raw) << 32; }

// The factor of each lane's digit 0 to 2 at `bit` of the lane. The table holds a row for every two lanes' digits: the
// factors of d0 and d1 stand at row d0 + 4 d1.
template <int bit>
inline F64<1> gatherElementsByDigitPairs(const Real64* table, U32<1> digits) {
    return table[2 * (digits.raw >> bit & 3)];
}
// Lanes with the sign bit set.
inline Mask32<1> negativeLanes(U32<1> a) { return {static_cast<std::int32_t>(a.raw) < 0}; }
inline Mask64<1> negativeLanes(U64<1> a) { return {static_cast<std::int64_t>(a.raw) < 0}; }

// 2^52 plus the lane as an unsigned number, exact.
inline F64<1> above2To52(U32<1> a) { return bits64(std::uint64_t{0x43300000} << 32 | a.raw); }

// The truth values of 32-bit lanes for 64-bit lanes.
inline Mask64<1> widen(Mask32<1> m) { return {m.raw}; }

// Each lane by a count of its own, 0 to 63.
inline U64<1> shiftLeft(U64<1> a, U64<1> count) { return a.raw << (count.raw & 63); }
inline U64<1> shiftRight(U64<1> a, U64<1> count) { return a.raw >> (count.raw & 63); }

// To a signed 32-bit integer by the rounding mode in force.
inline U32<1> roundToSigned(F32<1> a) { return static_cast<std::uint32_t>(_mm_cvtss_si32(_mm_set_ss(a.raw))); }

// ---------------------------------------------------------------------------------------------------------------------
// One register.

template <>
struct Mask<64, 2> {
    __m128d raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm_and_pd(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm_or_pd(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm_castsi128_pd(_mm_xor_si128(_mm_castpd_si128(a.raw), _mm_set1_epi32(-1)))};
    }
};

template <>
struct Mask<32, 4> {
    __m128 raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm_and_ps(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm_or_ps(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm_castsi128_ps(_mm_xor_si128(_mm_castps_si128(a.raw), _mm_set1_epi32(-1)))};
    }
};

inline int laneBits(Mask64<2> m) { return _mm_movemask_pd(m.raw); }
inline int laneBits(Mask32<4> m) { return _mm_movemask_ps(m.raw); }
inline bool any(Mask64<2> m) { return laneBits(m) != 0; }
inline bool any(Mask32<4> m) { return laneBits(m) != 0; }
inline bool all(Mask64<2> m) { return laneBits(m) == 3; }
inline bool all(Mask32<4> m) { return laneBits(m) == 15; }

// All lanes alike. GCC makes a constant anew from one element wherever it is used, at the cost of a shuffle; a value of
// whose making it knows nothing is loaded whole and kept in a register over a loop.
inline __m128d splat(Real64 x) {
    __m128i raw = _mm_castpd_si128(_mm_set1_pd(x));
#if !defined(__clang__)
    asm("" : "+x"(raw));
#endif
    return _mm_castsi128_pd(raw);
}
inline __m128 splat(Real32 x) {
    __m128i raw = _mm_castps_si128(_mm_set1_ps(x));
#if !defined(__clang__)
    asm("" : "+x"(raw));
#endif
    return _mm_castsi128_ps(raw);
}

template <>
struct Vec<Real64, 2> {
    static constexpr int lanes = 2;
    using Element = Real64;
    __m128d raw;

    Vec() = default;
    Vec(__m128d x) : raw(x) {}
    Vec(Real64 x) : raw(splat(x)) {}
    Vec(F64<1> low, F64<1> high) : raw(_mm_set_pd(high.raw, low.raw)) {}
    static Vec load(const Real64* from) { return _mm_loadu_pd(from); }
    static Vec loadAligned(const Real64* from) { return _mm_load_pd(from); }
    void store(Real64* to) const { _mm_storeu_pd(to, raw); }
    Real64 operator[](int i) const { return i == 0 ? _mm_cvtsd_f64(raw) : _mm_cvtsd_f64(_mm_unpackhi_pd(raw, raw)); }

    friend Vec operator+(Vec a, Vec b) { return _mm_add_pd(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm_sub_pd(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm_mul_pd(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm_div_pd(a.raw, b.raw); }
    friend Mask64<2> operator==(Vec a, Vec b) { return {_mm_cmpeq_pd(a.raw, b.raw)}; }
    friend Mask64<2> operator!=(Vec a, Vec b) { return {_mm_cmpneq_pd(a.raw, b.raw)}; }
    friend Mask64<2> operator<(Vec a, Vec b) { return {_mm_cmplt_pd(a.raw, b.raw)}; }
    friend Mask64<2> operator<=(Vec a, Vec b) { return {_mm_cmple_pd(a.raw, b.raw)}; }
    friend Mask64<2> operator>(Vec a, Vec b) { return {_mm_cmpgt_pd(a.raw, b.raw)}; }
    friend Mask64<2> operator>=(Vec a, Vec b) { return {_mm_cmpge_pd(a.raw, b.raw)}; }
};

template <>
struct Vec<Real32, 4> {
    static constexpr int lanes = 4;
    using Element = Real32;
    __m128 raw;

    Vec() = default;
    Vec(__m128 x) : raw(x) {}
    Vec(Real32 x) : raw(splat(x)) {}
    static Vec load(const Real32* from) { return _mm_loadu_ps(from); }
    static Vec loadAligned(const Real32* from) { return _mm_load_ps(from); }
    void store(Real32* to) const { _mm_storeu_ps(to, raw); }
    Real32 operator[](int i) const {
        alignas(16) Real32 out[4];
        _mm_store_ps(out, raw);
        return out[i];
    }

    friend Vec operator+(Vec a, Vec b) { return _mm_add_ps(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm_sub_ps(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm_mul_ps(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm_div_ps(a.raw, b.raw); }
    friend Mask32<4> operator==(Vec a, Vec b) { return {_mm_cmpeq_ps(a.raw, b.raw)}; }
    friend Mask32<4> operator!=(Vec a, Vec b) { return {_mm_cmpneq_ps(a.raw, b.raw)}; }
    friend Mask32<4> operator<(Vec a, Vec b) { return {_mm_cmplt_ps(a.raw, b.raw)}; }
    friend Mask32<4> operator<=(Vec a, Vec b) { return {_mm_cmple_ps(a.raw, b.raw)}; }
    friend Mask32<4> operator>(Vec a, Vec b) { return {_mm_cmpgt_ps(a.raw, b.raw)}; }
    friend Mask32<4> operator>=(Vec a, Vec b) { return {_mm_cmpge_ps(a.raw, b.raw)}; }
};

template <>
struct Vec<std::uint64_t, 2> {
    static constexpr int lanes = 2;
    using Element = std::uint64_t;
    __m128i raw;

    Vec() = default;
    Vec(__m128i x) : raw(x) {}
    Vec(std::uint64_t x) : raw(_mm_set1_epi64x(static_cast<long long>(x))) {}
    Vec(U64<1> low, U64<1> high)
        : raw(_mm_set_epi64x(static_cast<long long>(high.raw), static_cast<long long>(low.raw))) {}
    static Vec load(const std::uint64_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i_u*>(from)); }
    static Vec loadAligned(const std::uint64_t* from) { return _mm_load_si128(reinterpret_cast<const __m128i*>(from)); }
    void store(std::uint64_t* to) const { _mm_storeu_si128(reinterpret_cast<__m128i_u*>(to), raw); }
    std::uint64_t operator[](int i) const {
        return static_cast<std::uint64_t>(_mm_cvtsi128_si64(i == 0 ? raw : _mm_unpackhi_epi64(raw, raw)));
    }

    friend Vec operator+(Vec a, Vec b) { return _mm_add_epi64(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm_sub_epi64(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm_and_si128(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm_or_si128(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm_xor_si128(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm_xor_si128(a.raw, _mm_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm_slli_epi64(a.raw, n); }
    friend Vec operator>>(Vec a, int n) { return _mm_srli_epi64(a.raw, n); }
};

template <>
struct Vec<std::uint32_t, 4> {
    static constexpr int lanes = 4;
    using Element = std::uint32_t;
    __m128i raw;

    Vec() = default;
    Vec(__m128i x) : raw(x) {}
    Vec(std::uint32_t x) : raw(_mm_set1_epi32(static_cast<int>(x))) {}
    static Vec load(const std::uint32_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i_u*>(from)); }
    static Vec loadAligned(const std::uint32_t* from) { return _mm_load_si128(reinterpret_cast<const __m128i*>(from)); }
    void store(std::uint32_t* to) const { _mm_storeu_si128(reinterpret_cast<__m128i_u*>(to), raw); }
    std::uint32_t operator[](int i) const {
        alignas(16) std::uint32_t out[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(out), raw);
        return out[i];
    }

    friend Vec operator+(Vec a, Vec b) { return _mm_add_epi32(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm_sub_epi32(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm_and_si128(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm_or_si128(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm_xor_si128(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm_xor_si128(a.raw, _mm_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm_slli_epi32(a.raw, n); }
    friend Vec operator>>(Vec a, int n) { return _mm_srli_epi32(a.raw, n); }
    friend Mask32<4> operator==(Vec a, Vec b) { return {_mm_castsi128_ps(_mm_cmpeq_epi32(a.raw, b.raw))}; }
};

inline F64<2> sqrt(F64<2> a) { return _mm_sqrt_pd(a.raw); }
inline F32<4> sqrt(F32<4> a) { return _mm_sqrt_ps(a.raw); }

inline U64<2> asBits(F64<2> a) { return _mm_castpd_si128(a.raw); }
inline U32<4> asBits(F32<4> a) { return _mm_castps_si128(a.raw); }
inline F64<2> asReal(U64<2> a) { return _mm_castsi128_pd(a.raw); }
inline F32<4> asReal(U32<4> a) { return _mm_castsi128_ps(a.raw); }

inline U32<4> shiftRightSigned(U32<4> a, int n) { return _mm_srai_epi32(a.raw, n); }
inline Mask32<4> greaterSigned(U32<4> a, U32<4> b) { return {_mm_castsi128_ps(_mm_cmpgt_epi32(a.raw, b.raw))}; }

inline U32<4> maskBits(Mask32<4> m) { return _mm_castps_si128(m.raw); }

// The same 128 bits as two 64-bit or four 32-bit lanes.
inline U32<4> asWords(U64<2> a) { return a.raw; }
inline U64<2> asLongs(U32<4> a) { return a.raw; }

template <class T, int N>
requires RealRegister<T, N>
inline Vec<T, N> select(Mask<8 * sizeof(T), N> m, Vec<T, N> yes, Vec<T, N> no) {
    if constexpr (sizeof(T) == 8)
        return _mm_or_pd(_mm_and_pd(m.raw, yes.raw), _mm_andnot_pd(m.raw, no.raw));
    else
        return _mm_or_ps(_mm_and_ps(m.raw, yes.raw), _mm_andnot_ps(m.raw, no.raw));
}
template <class T, int N>
requires IntegerRegister<T, N>
inline Vec<T, N> select(Mask<8 * sizeof(T), N> m, Vec<T, N> yes, Vec<T, N> no) {
    return asBits(select(m, asReal(yes), asReal(no)));
}
inline F64<2> zeroUnless(Mask64<2> m, F64<2> a) { return _mm_and_pd(m.raw, a.raw); }
inline F32<4> zeroUnless(Mask32<4> m, F32<4> a) { return _mm_and_ps(m.raw, a.raw); }
inline F64<2> zeroIf(Mask64<2> m, F64<2> a) { return _mm_andnot_pd(m.raw, a.raw); }
inline F32<4> zeroIf(Mask32<4> m, F32<4> a) { return _mm_andnot_ps(m.raw, a.raw); }
inline U64<2> zeroUnless(Mask64<2> m, U64<2> a) { return _mm_and_si128(_mm_castpd_si128(m.raw), a.raw); }
inline U32<4> zeroUnless(Mask32<4> m, U32<4> a) { return _mm_and_si128(_mm_castps_si128(m.raw), a.raw); }

inline U64<2> highWords(U64<2> a) { return _mm_srli_epi64(a.raw, 32); }

inline Mask64<2> greaterSignedHigh(U64<2> a, U64<2> b) {
    const __m128i words = _mm_cmpgt_epi32(a.raw, b.raw);
    return {_mm_castsi128_pd(_mm_shuffle_epi32(words, _MM_SHUFFLE(3, 3, 1, 1)))};
}
inline U32<4> clampedDifference(U32<4> a, std::uint16_t from, std::uint16_t most) {
    return _mm_min_epi16(_mm_subs_epu16(a.raw, _mm_set1_epi32(from)), _mm_set1_epi32(most));
}
inline U64<2> mulLowWords(U64<2> a, U64<2> b) { return _mm_mul_epu32(a.raw, b.raw); }
inline U32<4> mulHighHalves(U32<4> a, std::uint16_t b) {
    return _mm_mulhi_epu16(a.raw, _mm_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(b) << 16)));
}
inline U64<2> shiftLeft(U64<2> a, U64<2> count) {
    const __m128i low = _mm_sll_epi64(a.raw, count.raw);
    const __m128i high = _mm_sll_epi64(a.raw, _mm_unpackhi_epi64(count.raw, count.raw));
    return _mm_castpd_si128(_mm_move_sd(_mm_castsi128_pd(high), _mm_castsi128_pd(low)));
}
inline U64<2> shiftRight(U64<2> a, U64<2> count) {
    const __m128i low = _mm_srl_epi64(a.raw, count.raw);
    const __m128i high = _mm_srl_epi64(a.raw, _mm_unpackhi_epi64(count.raw, count.raw));
    return _mm_castpd_si128(_mm_move_sd(_mm_castsi128_pd(high), _mm_castsi128_pd(low)));
}
inline F32<4> toReal32(U32<4> a) { return _mm_cvtepi32_ps(a.raw); }
inline Mask64<2> negativeLanes(U64<2> a) {
    return {_mm_castsi128_pd(_mm_srai_epi32(_mm_shuffle_epi32(a.raw, _MM_SHUFFLE(3, 3, 1, 1)), 31))};
}
inline Mask32<4> negativeLanes(U32<4> a) { return {_mm_castsi128_ps(_mm_srai_epi32(a.raw, 31))}; }
// The larger of the upper halves, as signed numbers, in the upper half; the lower half is any.
inline U32<4> maxHighHalves(U32<4> a, U32<4> b) { return _mm_max_epi16(a.raw, b.raw); }
inline U32<4> roundToSigned(F32<4> a) { return _mm_cvtps_epi32(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Wider than a register: a pair of halves.

template <int Bits, int N>
requires LanesAbove<N, 1>
struct Mask<Bits, N> {
    Mask<Bits, N / 2> lo, hi;
    friend Mask operator&(Mask a, Mask b) { return {a.lo & b.lo, a.hi & b.hi}; }
    friend Mask operator|(Mask a, Mask b) { return {a.lo | b.lo, a.hi | b.hi}; }
    friend Mask operator~(Mask a) { return {~a.lo, ~a.hi}; }
};

template <class T, int N>
requires LanesAbove<N, 1>
struct Vec<T, N> {
    static constexpr int lanes = N;
    using Element = T;
    using Half = Vec<T, N / 2>;
    using M = Mask<8 * sizeof(T), N>;
    Half lo, hi;

    Vec() = default;
    Vec(Half low, Half high) : lo(low), hi(high) {}
    Vec(T x) : lo(x), hi(x) {}
    static Vec load(const T* from) { return {Half::load(from), Half::load(from + N / 2)}; }
    void store(T* to) const {
        lo.store(to);
        hi.store(to + N / 2);
    }
    T operator[](int i) const { return i < N / 2 ? lo[i] : hi[i - N / 2]; }

    friend Vec operator+(Vec a, Vec b) { return {a.lo + b.lo, a.hi + b.hi}; }
    friend Vec operator-(Vec a, Vec b) { return {a.lo - b.lo, a.hi - b.hi}; }
    friend Vec operator*(Vec a, Vec b) { return {a.lo * b.lo, a.hi * b.hi}; }
    friend Vec operator/(Vec a, Vec b) { return {a.lo / b.lo, a.hi / b.hi}; }
    friend Vec operator&(Vec a, Vec b) { return {a.lo & b.lo, a.hi & b.hi}; }
    friend Vec operator|(Vec a, Vec b) { return {a.lo | b.lo, a.hi | b.hi}; }
    friend Vec operator^(Vec a, Vec b) { return {a.lo ^ b.lo, a.hi ^ b.hi}; }
    friend Vec operator~(Vec a) { return {~a.lo, ~a.hi}; }
    friend Vec operator<<(Vec a, int n) { return {a.lo << n, a.hi << n}; }
    friend Vec operator>>(Vec a, int n) { return {a.lo >> n, a.hi >> n}; }
    friend M operator==(Vec a, Vec b) { return {a.lo == b.lo, a.hi == b.hi}; }
    friend M operator!=(Vec a, Vec b) { return {a.lo != b.lo, a.hi != b.hi}; }
    friend M operator<(Vec a, Vec b) { return {a.lo < b.lo, a.hi < b.hi}; }
    friend M operator<=(Vec a, Vec b) { return {a.lo <= b.lo, a.hi <= b.hi}; }
    friend M operator>(Vec a, Vec b) { return {a.lo > b.lo, a.hi > b.hi}; }
    friend M operator>=(Vec a, Vec b) { return {a.lo >= b.lo, a.hi >= b.hi}; }
};

// A type that is a pair of halves here.
template <class V>
concept Paired = requires(V v) {
    v.lo;
    v.hi;
};

template <class T, int N>
requires Paired<Vec<T, N>>
inline Vec<T, N> sqrt(Vec<T, N> a) { return {sqrt(a.lo), sqrt(a.hi)}; }
template <class T, int N>
requires Paired<Vec<T, N>>
inline Vec<Unsigned<T>, N> asBits(Vec<T, N> a) { return {asBits(a.lo), asBits(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline F64<N> asReal(U64<N> a) { return {asReal(a.lo), asReal(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline F32<N> asReal(U32<N> a) { return {asReal(a.lo), asReal(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> shiftRightSigned(U32<N> a, int n) { return {shiftRightSigned(a.lo, n), shiftRightSigned(a.hi, n)}; }
template <int N>
requires Paired<U32<N>>
inline Mask32<N> greaterSigned(U32<N> a, U32<N> b) { return {greaterSigned(a.lo, b.lo), greaterSigned(a.hi, b.hi)}; }
inline U32<4> packLowWords(U64<4> a) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(a.lo.raw), _mm_castsi128_ps(a.hi.raw), _MM_SHUFFLE(2, 0, 2, 0)));
}
template <int N>
requires LanesAbove<N, 4>
inline U32<N> packLowWords(U64<N> a) { return {packLowWords(a.lo), packLowWords(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> maskBits(Mask32<N> m) { return {maskBits(m.lo), maskBits(m.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> highWords(U64<N> a) { return {highWords(a.lo), highWords(a.hi)}; }
inline U32<4> packHighWords(U64<4> a) {
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm_castsi128_ps(a.lo.raw), _mm_castsi128_ps(a.hi.raw), _MM_SHUFFLE(3, 1, 3, 1)));
}
template <int N>
requires LanesAbove<N, 4>
inline U32<N> packHighWords(U64<N> a) { return {packHighWords(a.lo), packHighWords(a.hi)}; }
inline F64<4> toReal64(U32<4> a) {
    return {F64<2>(_mm_cvtepi32_pd(a.raw)), F64<2>(_mm_cvtepi32_pd(_mm_unpackhi_epi64(a.raw, a.raw)))};
}
template <int N>
requires Paired<U32<N>>
inline F64<N> toReal64(U32<N> a) { return {toReal64(a.lo), toReal64(a.hi)}; }
inline F64<4> above2To52(U32<4> a) {
    const __m128i exponent = _mm_set1_epi32(0x43300000);
    return {F64<2>(_mm_castsi128_pd(_mm_unpacklo_epi32(a.raw, exponent))),
            F64<2>(_mm_castsi128_pd(_mm_unpackhi_epi32(a.raw, exponent)))};
}
template <int N>
requires Paired<U32<N>>
inline F64<N> above2To52(U32<N> a) { return {above2To52(a.lo), above2To52(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline F32<N> toReal32(U32<N> a) { return {toReal32(a.lo), toReal32(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline Mask64<N> greaterSignedHigh(U64<N> a, U64<N> b) {
    return {greaterSignedHigh(a.lo, b.lo), greaterSignedHigh(a.hi, b.hi)};
}
template <int N>
requires Paired<U32<N>>
inline U32<N> clampedDifference(U32<N> a, std::uint16_t from, std::uint16_t most) {
    return {clampedDifference(a.lo, from, most), clampedDifference(a.hi, from, most)};
}
template <int N>
requires Paired<U64<N>>
inline U64<N> mulLowWords(U64<N> a, U64<N> b) { return {mulLowWords(a.lo, b.lo), mulLowWords(a.hi, b.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> shiftLeft(U64<N> a, U64<N> count) { return {shiftLeft(a.lo, count.lo), shiftLeft(a.hi, count.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> shiftRight(U64<N> a, U64<N> count) { return {shiftRight(a.lo, count.lo), shiftRight(a.hi, count.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> mulHighHalves(U32<N> a, std::uint16_t b) { return {mulHighHalves(a.lo, b), mulHighHalves(a.hi, b)}; }
inline U64<4> withHighWords(U32<4> a) {
    return {U64<2>(_mm_unpacklo_epi32(_mm_setzero_si128(), a.raw)),
            U64<2>(_mm_unpackhi_epi32(_mm_setzero_si128(), a.raw))};
}
template <int N>
requires LanesAbove<N, 4>
inline U64<N> withHighWords(U32<N> a) { return {withHighWords(a.lo), withHighWords(a.hi)}; }

template <int N>
requires Paired<U32<N>>
inline Mask32<N> negativeLanes(U32<N> a) { return {negativeLanes(a.lo), negativeLanes(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline Mask64<N> negativeLanes(U64<N> a) { return {negativeLanes(a.lo), negativeLanes(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> roundToSigned(F32<N> a) { return {roundToSigned(a.lo), roundToSigned(a.hi)}; }

template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline int laneBits(Mask<Bits, N> m) { return laneBits(m.lo) | laneBits(m.hi) << (N / 2); }
template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline bool any(Mask<Bits, N> m) { return any(m.lo | m.hi); }
template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline bool all(Mask<Bits, N> m) { return all(m.lo & m.hi); }

template <class T, int N>
requires Paired<Vec<T, N>>
inline Vec<T, N> select(Mask<8 * sizeof(T), N> m, Vec<T, N> yes, Vec<T, N> no) {
    return {select(m.lo, yes.lo, no.lo), select(m.hi, yes.hi, no.hi)};
}
template <class T, int N>
requires Paired<Vec<T, N>>
inline Vec<T, N> zeroUnless(Mask<8 * sizeof(T), N> m, Vec<T, N> a) {
    return {zeroUnless(m.lo, a.lo), zeroUnless(m.hi, a.hi)};
}
template <class T, int N>
requires Paired<Vec<T, N>>
inline Vec<T, N> zeroIf(Mask<8 * sizeof(T), N> m, Vec<T, N> a) { return {zeroIf(m.lo, a.lo), zeroIf(m.hi, a.hi)}; }

// Real32 lanes to Real64 lanes, exact, and back with one rounding.
inline F64<4> widen(F32<4> a) {
    return {F64<2>(_mm_cvtps_pd(a.raw)), F64<2>(_mm_cvtps_pd(_mm_movehl_ps(a.raw, a.raw)))};
}
inline F32<4> narrow(F64<4> a) { return _mm_movelh_ps(_mm_cvtpd_ps(a.lo.raw), _mm_cvtpd_ps(a.hi.raw)); }
template <int N>
requires Paired<F32<N>>
inline F64<N> widen(F32<N> a) { return {widen(a.lo), widen(a.hi)}; }
// The same from elements in memory, which the conversion reads by itself: no shuffle for every other pair.
template <int N>
inline F64<N> widenAt(const Real32* from) {
    if constexpr (N == 2) {
        struct [[gnu::packed, gnu::may_alias]] Elements {
            Real32 lane[2];
        };
        __m128d wide;
        asm("cvtps2pd %1, %0" : "=x"(wide) : "m"(*reinterpret_cast<const Elements*>(from)));
        return wide;
    } else {
        return {widenAt<N / 2>(from), widenAt<N / 2>(from + N / 2)};
    }
}
template <int N>
requires LanesAbove<N, 4>
inline F32<N> narrow(F64<N> a) { return {narrow(a.lo), narrow(a.hi)}; }

inline U32<2> packHighWords(U64<2> a) { return {packHighWords(U64<1>(a[0])), packHighWords(U64<1>(a[1]))}; }
inline F32<2> narrow(F64<2> a) { return {narrow(F64<1>(a[0])), narrow(F64<1>(a[1]))}; }
// The truth values of 64-bit lanes for 32-bit lanes.
inline Mask32<4> narrow(Mask64<4> m) {
    return {_mm_shuffle_ps(_mm_castpd_ps(m.lo.raw), _mm_castpd_ps(m.hi.raw), _MM_SHUFFLE(2, 0, 2, 0))};
}
inline Mask64<2> widen(Mask32<2> m) {
    return {_mm_castsi128_pd(_mm_set_epi64x(-static_cast<long long>(m.hi.raw), -static_cast<long long>(m.lo.raw)))};
}
inline Mask64<4> widen(Mask32<4> m) {
    return {{_mm_castps_pd(_mm_unpacklo_ps(m.raw, m.raw))}, {_mm_castps_pd(_mm_unpackhi_ps(m.raw, m.raw))}};
}
template <int N>
requires LanesAbove<N, 4>
inline Mask64<N> widen(Mask32<N> m) { return {widen(m.lo), widen(m.hi)}; }

// ---------------------------------------------------------------------------------------------------------------------
// Any width.

template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> signOf(Vec<T, N> a) {  // the sign bit alone
    return asReal(asBits(a) & Vec<Unsigned<T>, N>(Unsigned<T>{1} << (8 * sizeof(T) - 1)));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> abs(Vec<T, N> a) {
    return asReal(asBits(a) & Vec<Unsigned<T>, N>(~(Unsigned<T>{1} << (8 * sizeof(T) - 1))));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator-(Vec<T, N> a) {  // a flipped sign bit, no arithmetic
    return asReal(asBits(a) ^ Vec<Unsigned<T>, N>(Unsigned<T>{1} << (8 * sizeof(T) - 1)));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator&(Vec<T, N> a, Vec<Unsigned<T>, N> pattern) { return asReal(asBits(a) & pattern); }
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator|(Vec<T, N> a, Vec<T, N> b) { return asReal(asBits(a) | asBits(b)); }
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator^(Vec<T, N> a, Vec<T, N> b) { return asReal(asBits(a) ^ asBits(b)); }

// Lanes outside first .. last, as unsigned numbers; the range may wrap around, so that it serves signed numbers, too.
template <int N>
inline Mask32<N> outside(U32<N> a, std::uint32_t first, std::uint32_t last) {
    constexpr std::uint32_t lowest = 0x80000000;  // in a signed comparison
    return greaterSigned(a + U32<N>(lowest - first), U32<N>(lowest + (last - first)));
}

// The value itself. All its registers are made before anything that uses the result: the compiler,
// which would rather work long chains one after the other, is held to working them side by side.
template <class V>
inline V inStep(V v) {
    return v;
}
template <class V>
requires Paired<V>
inline V inStep(V v) {
    constexpr int registers = V::lanes / registerLanes<typename V::Element>;
    if constexpr (registers == 2)
        asm("" : "+x"(v.lo.raw), "+x"(v.hi.raw));
    else if constexpr (registers == 4)
        asm("" : "+x"(v.lo.lo.raw), "+x"(v.lo.hi.raw), "+x"(v.hi.lo.raw), "+x"(v.hi.hi.raw));
    else if constexpr (registers == 8)
        asm(""
            : "+x"(v.lo.lo.lo.raw), "+x"(v.lo.lo.hi.raw), "+x"(v.lo.hi.lo.raw), "+x"(v.lo.hi.hi.raw),
              "+x"(v.hi.lo.lo.raw), "+x"(v.hi.lo.hi.raw), "+x"(v.hi.hi.lo.raw), "+x"(v.hi.hi.hi.raw));
    return v;
}

// Two columns, lane by lane.
template <class V>
struct Pair {
    V first, second;
};

// The entries table[2·index] and table[2·index + 1], one aligned load a lane: index holds byte offsets.
inline Pair<F64<1>> gatherPairsAt(const Real64* table, U64<1> byteOffset) {
    const auto* entry = reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + byteOffset.raw);
    return {entry[0], entry[1]};
}
inline Pair<F64<2>> gatherPairsAt(const Real64* table, U64<2> byteOffset) {
    const char* base = reinterpret_cast<const char*>(table);
    // The offsets fit 16 bits, and taking them as 16-bit fields spares a shuffle.
    const auto low = static_cast<unsigned>(_mm_cvtsi128_si32(byteOffset.raw));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(byteOffset.raw, 4));
    const __m128d a = _mm_load_pd(reinterpret_cast<const Real64*>(base + low));
    const __m128d b = _mm_load_pd(reinterpret_cast<const Real64*>(base + high));
    return {_mm_unpacklo_pd(a, b), _mm_unpackhi_pd(a, b)};
}
template <int N>
requires Paired<U64<N>>
inline Pair<F64<N>> gatherPairsAt(const Real64* table, U64<N> byteOffset) {
    const auto lo = gatherPairsAt(table, byteOffset.lo);
    const auto hi = gatherPairsAt(table, byteOffset.hi);
    return {{lo.first, hi.first}, {lo.second, hi.second}};
}

// table[byteOffset / 8], one element a lane.
inline F64<1> gatherElementsAt(const Real64* table, U64<1> byteOffset) {
    return *reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + byteOffset.raw);
}
inline F64<2> gatherElementsAt(const Real64* table, U64<2> byteOffset) {
    const char* base = reinterpret_cast<const char*>(table);
    const auto low = static_cast<unsigned>(_mm_cvtsi128_si32(byteOffset.raw));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(byteOffset.raw, 4));
    return _mm_loadh_pd(_mm_load_sd(reinterpret_cast<const Real64*>(base + low)),
                        reinterpret_cast<const Real64*>(base + high));
}
template <int N>
requires Paired<U64<N>>
inline F64<N> gatherElementsAt(const Real64* table, U64<N> byteOffset) {
    return {gatherElementsAt(table, byteOffset.lo), gatherElementsAt(table, byteOffset.hi)};
}

template <int bit>
inline F64<4> gatherElementsByDigitPairs(const Real64* table, U32<4> digits) {
    const __m128i first = _mm_and_si128(_mm_srli_epi32(digits.raw, bit), _mm_set1_epi32(3));
    // In bytes, in the low half.
    const __m128i rows = _mm_or_si128(_mm_slli_epi64(first, 4), _mm_srli_epi64(first, 26));
    const char* base = reinterpret_cast<const char*>(table);
    const auto low = static_cast<unsigned>(_mm_extract_epi16(rows, 0));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(rows, 4));
    return {F64<2>(_mm_load_pd(reinterpret_cast<const Real64*>(base + low))),
            F64<2>(_mm_load_pd(reinterpret_cast<const Real64*>(base + high)))};
}
template <int bit, int N>
requires LanesAbove<N, 4>
inline F64<N> gatherElementsByDigitPairs(const Real64* table, U32<N> digits) {
    return {gatherElementsByDigitPairs<bit>(table, digits.lo), gatherElementsByDigitPairs<bit>(table, digits.hi)};
}

// Every lane twice: one value for both parts of a complex number.
inline F64<4> eachTwice(F64<2> a) {
    const __m128i raw = _mm_castpd_si128(a.raw);
    return {F64<2>(_mm_castsi128_pd(_mm_shuffle_epi32(raw, _MM_SHUFFLE(1, 0, 1, 0)))),
            F64<2>(_mm_castsi128_pd(_mm_shuffle_epi32(raw, _MM_SHUFFLE(3, 2, 3, 2))))};
}
template <int N>
requires Paired<F64<N>>
inline F64<2 * N> eachTwice(F64<N> a) { return {eachTwice(a.lo), eachTwice(a.hi)}; }

// Interleaved pairs to two vectors of columns, and back.
inline Pair<F32<4>> loadInterleaved(const Real32* from) {
    const __m128 a = _mm_loadu_ps(from);
    const __m128 b = _mm_loadu_ps(from + 4);
    return {_mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)), _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1))};
}
inline void storeInterleaved(Real32* to, F32<4> first, F32<4> second) {
    _mm_storeu_ps(to, _mm_unpacklo_ps(first.raw, second.raw));
    _mm_storeu_ps(to + 4, _mm_unpackhi_ps(first.raw, second.raw));
}
inline Pair<F64<2>> loadInterleaved(const Real64* from) {
    const __m128d a = _mm_loadu_pd(from);
    const __m128d b = _mm_loadu_pd(from + 2);
    return {_mm_unpacklo_pd(a, b), _mm_unpackhi_pd(a, b)};
}
inline void storeInterleaved(Real64* to, F64<2> first, F64<2> second) {
    _mm_storeu_pd(to, _mm_unpacklo_pd(first.raw, second.raw));
    _mm_storeu_pd(to + 2, _mm_unpackhi_pd(first.raw, second.raw));
}
template <int N, class T>
inline Pair<Vec<T, N>> loadInterleaved(const T* from) {
    if constexpr (N == 1) {
        return {loadElement(from), loadElement(from + 1)};
    } else if constexpr (N == registerLanes<T>) {
        return loadInterleaved(from);
    } else {
        const auto low = loadInterleaved<N / 2>(from);
        const auto high = loadInterleaved<N / 2>(from + N);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

template <class T, int N>
requires LanesAbove<N, registerLanes<T>>
inline void storeInterleaved(T* to, Vec<T, N> first, Vec<T, N> second) {
    storeInterleaved(to, first.lo, second.lo);
    storeInterleaved(to + N, first.hi, second.hi);
}

// Lanes whose lower half is zero, the upper half taken as a signed number and brought into 0 to `limit`.
inline U32<1> clampHighHalves(U32<1> a, std::uint16_t limit) {
    const auto value = static_cast<std::int32_t>(a.raw) >> 16;
    return static_cast<std::uint32_t>(value < 0 ? 0 : value > limit ? limit : value) << 16;
}
inline U32<4> clampHighHalves(U32<4> a, std::uint16_t limit) {
    const __m128i top = _mm_set1_epi32(static_cast<int>(limit) << 16);
    return _mm_min_epi16(_mm_max_epi16(a.raw, _mm_setzero_si128()), top);
}
template <int N>
requires Paired<U32<N>>
inline U32<N> clampHighHalves(U32<N> a, std::uint16_t limit) {
    return {clampHighHalves(a.lo, limit), clampHighHalves(a.hi, limit)};
}

// The number without its fraction, for numbers below 2^31, whatever the rounding mode.
inline F64<1> truncated(F64<1> a) { return static_cast<Real64>(static_cast<std::int32_t>(a.raw)); }
inline F64<2> truncated(F64<2> a) { return _mm_cvtepi32_pd(_mm_cvttpd_epi32(a.raw)); }
template <int N>
requires Paired<F64<N>>
inline F64<N> truncated(F64<N> a) { return {truncated(a.lo), truncated(a.hi)}; }

// The integer of a non-negative integral number below 2^31.
template <int N>
inline U64<N> toUnsigned(F64<N> a) {
    return asBits(a + F64<N>(0x1p52)) & U64<N>(std::uint64_t{0x7FFFFFFF});
}

}  // namespace okt
