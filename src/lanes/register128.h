// Registers of 128 bits, which every processor has: F64<2>, F32<4>, U64<2>, U32<4>. SSE2.
//
// The rooms of 128, 256 and 512 bits have the same headings in the same order.
#pragma once

#include "lanes/one_lane.h"

#include <emmintrin.h>

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// Masks

template <>
struct Mask<64, 2> {
    __m128d raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm_and_pd(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm_or_pd(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm_castsi128_pd(_mm_xor_si128(_mm_castpd_si128(a.raw), _mm_set1_epi32(-1)))};
    }
    Mask<64, 1> lowHalf() const;
    Mask<64, 1> highHalf() const;
};

template <>
struct Mask<32, 4> {
    __m128 raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm_and_ps(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm_or_ps(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm_castsi128_ps(_mm_xor_si128(_mm_castps_si128(a.raw), _mm_set1_epi32(-1)))};
    }
    Mask<32, 2> lowHalf() const;
    Mask<32, 2> highHalf() const;
};

inline int laneBits(Mask<64, 2> m) { return _mm_movemask_pd(m.raw); }
inline int laneBits(Mask<32, 4> m) { return _mm_movemask_ps(m.raw); }
inline bool any(Mask<64, 2> m) { return laneBits(m) != 0; }
inline bool any(Mask<32, 4> m) { return laneBits(m) != 0; }
inline bool all(Mask<64, 2> m) { return laneBits(m) == 3; }
inline bool all(Mask<32, 4> m) { return laneBits(m) == 15; }

// ---------------------------------------------------------------------------------------------------------------------
// All lanes alike

// GCC makes a constant anew from one element wherever it is used, at the cost of a shuffle; a value of whose making it
// knows nothing is loaded whole and kept in a register over a loop.
inline __m128d splat128(Real64 x) {
    __m128i raw = _mm_castpd_si128(_mm_set1_pd(x));
#if !defined(__clang__)
    asm("" : "+x"(raw));
#endif
    return _mm_castsi128_pd(raw);
}
inline __m128 splat128(Real32 x) {
    __m128i raw = _mm_castps_si128(_mm_set1_ps(x));
#if !defined(__clang__)
    asm("" : "+x"(raw));
#endif
    return _mm_castsi128_ps(raw);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real lanes

template <>
struct Vec<Real64, 2> {
    static constexpr int lanes = 2;
    using Element = Real64;
    using M = Mask<64, 2>;
    __m128d raw;

    Vec() = default;
    Vec(__m128d x) : raw(x) {}
    Vec(Real64 x) : raw(splat128(x)) {}
    Vec(Vec<Real64, 1> low, Vec<Real64, 1> high) : raw(_mm_set_pd(high.raw, low.raw)) {}
    static Vec load(const Real64* from) { return _mm_loadu_pd(from); }
    static Vec loadAligned(const Real64* from) { return _mm_load_pd(from); }
    void store(Real64* to) const { _mm_storeu_pd(to, raw); }
    Real64 operator[](int i) const { return i == 0 ? _mm_cvtsd_f64(raw) : _mm_cvtsd_f64(_mm_unpackhi_pd(raw, raw)); }
    F64<1> lowHalf() const { return _mm_cvtsd_f64(raw); }
    F64<1> highHalf() const { return _mm_cvtsd_f64(_mm_unpackhi_pd(raw, raw)); }

    friend Vec operator+(Vec a, Vec b) { return _mm_add_pd(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm_sub_pd(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm_mul_pd(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm_div_pd(a.raw, b.raw); }
    friend M operator==(Vec a, Vec b) { return {_mm_cmpeq_pd(a.raw, b.raw)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm_cmpneq_pd(a.raw, b.raw)}; }
    friend M operator<(Vec a, Vec b) { return {_mm_cmplt_pd(a.raw, b.raw)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm_cmple_pd(a.raw, b.raw)}; }
    friend M operator>(Vec a, Vec b) { return {_mm_cmpgt_pd(a.raw, b.raw)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm_cmpge_pd(a.raw, b.raw)}; }
};

template <>
struct Vec<Real32, 4> {
    static constexpr int lanes = 4;
    using Element = Real32;
    using M = Mask<32, 4>;
    __m128 raw;

    Vec() = default;
    Vec(__m128 x) : raw(x) {}
    Vec(Real32 x) : raw(splat128(x)) {}
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
    friend M operator==(Vec a, Vec b) { return {_mm_cmpeq_ps(a.raw, b.raw)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm_cmpneq_ps(a.raw, b.raw)}; }
    friend M operator<(Vec a, Vec b) { return {_mm_cmplt_ps(a.raw, b.raw)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm_cmple_ps(a.raw, b.raw)}; }
    friend M operator>(Vec a, Vec b) { return {_mm_cmpgt_ps(a.raw, b.raw)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm_cmpge_ps(a.raw, b.raw)}; }
};

inline F64<2> sqrt(F64<2> a) { return _mm_sqrt_pd(a.raw); }
inline F32<4> sqrt(F32<4> a) { return _mm_sqrt_ps(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Integer lanes

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
    U64<1> lowHalf() const { return (*this)[0]; }
    U64<1> highHalf() const { return (*this)[1]; }

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

inline U64<2> asBits(F64<2> a) { return _mm_castpd_si128(a.raw); }
inline U32<4> asBits(F32<4> a) { return _mm_castps_si128(a.raw); }
inline F64<2> asReal(U64<2> a) { return _mm_castsi128_pd(a.raw); }
inline F32<4> asReal(U32<4> a) { return _mm_castsi128_ps(a.raw); }
// The same bits as lanes of the other size.
inline U32<4> asWords(U64<2> a) { return a.raw; }
inline U64<2> asLongs(U32<4> a) { return a.raw; }

inline U32<4> shiftRightSigned(U32<4> a, int n) { return _mm_srai_epi32(a.raw, n); }
inline Mask32<4> greaterSigned(U32<4> a, U32<4> b) { return {_mm_castsi128_ps(_mm_cmpgt_epi32(a.raw, b.raw))}; }
inline Mask64<2> greaterSignedHigh(U64<2> a, U64<2> b) {
    const __m128i words = _mm_cmpgt_epi32(a.raw, b.raw);
    return {_mm_castsi128_pd(_mm_shuffle_epi32(words, _MM_SHUFFLE(3, 3, 1, 1)))};
}
inline Mask32<4> negativeLanes(U32<4> a) { return {_mm_castsi128_ps(_mm_srai_epi32(a.raw, 31))}; }
inline Mask64<2> negativeLanes(U64<2> a) {
    return {_mm_castsi128_pd(_mm_srai_epi32(_mm_shuffle_epi32(a.raw, _MM_SHUFFLE(3, 3, 1, 1)), 31))};
}
inline U32<4> maskBits(Mask32<4> m) { return _mm_castps_si128(m.raw); }
inline U64<2> highWords(U64<2> a) { return _mm_srli_epi64(a.raw, 32); }
inline U32<4> clampedDifference(U32<4> a, std::uint16_t from, std::uint16_t most) {
    return _mm_min_epi16(_mm_subs_epu16(a.raw, _mm_set1_epi32(from)), _mm_set1_epi32(most));
}
inline U32<4> clampHighHalves(U32<4> a, std::uint16_t limit) {
    const __m128i top = _mm_set1_epi32(static_cast<int>(limit) << 16);
    return _mm_min_epi16(_mm_max_epi16(a.raw, _mm_setzero_si128()), top);
}
inline U32<4> maxHighHalves(U32<4> a, U32<4> b) { return _mm_max_epi16(a.raw, b.raw); }
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
inline U32<4> roundToSigned(F32<4> a) { return _mm_cvtps_epi32(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Choice by a mask

inline F64<2> select(Mask64<2> m, F64<2> yes, F64<2> no) {
    return _mm_or_pd(_mm_and_pd(m.raw, yes.raw), _mm_andnot_pd(m.raw, no.raw));
}
inline F32<4> select(Mask32<4> m, F32<4> yes, F32<4> no) {
    return _mm_or_ps(_mm_and_ps(m.raw, yes.raw), _mm_andnot_ps(m.raw, no.raw));
}
inline U64<2> select(Mask64<2> m, U64<2> yes, U64<2> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline U32<4> select(Mask32<4> m, U32<4> yes, U32<4> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline F64<2> zeroUnless(Mask64<2> m, F64<2> a) { return _mm_and_pd(m.raw, a.raw); }
inline F32<4> zeroUnless(Mask32<4> m, F32<4> a) { return _mm_and_ps(m.raw, a.raw); }
inline U64<2> zeroUnless(Mask64<2> m, U64<2> a) { return _mm_and_si128(_mm_castpd_si128(m.raw), a.raw); }
inline U32<4> zeroUnless(Mask32<4> m, U32<4> a) { return _mm_and_si128(_mm_castps_si128(m.raw), a.raw); }
inline F64<2> zeroIf(Mask64<2> m, F64<2> a) { return _mm_andnot_pd(m.raw, a.raw); }
inline F32<4> zeroIf(Mask32<4> m, F32<4> a) { return _mm_andnot_ps(m.raw, a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Halves of masks

inline Mask<64, 1> Mask<64, 2>::lowHalf() const { return {(laneBits(*this) & 1) != 0}; }
inline Mask<64, 1> Mask<64, 2>::highHalf() const { return {(laneBits(*this) & 2) != 0}; }

// ---------------------------------------------------------------------------------------------------------------------
// Interleaved pairs to two vectors of columns, and back

inline Pair<F32<4>> deinterleaved(F32<4> a, F32<4> b) {
    return {_mm_shuffle_ps(a.raw, b.raw, _MM_SHUFFLE(2, 0, 2, 0)),
            _mm_shuffle_ps(a.raw, b.raw, _MM_SHUFFLE(3, 1, 3, 1))};
}
inline Pair<F64<2>> deinterleaved(F64<2> a, F64<2> b) {
    return {_mm_unpacklo_pd(a.raw, b.raw), _mm_unpackhi_pd(a.raw, b.raw)};
}
inline Pair<F32<4>> interleaved(F32<4> first, F32<4> second) {
    return {_mm_unpacklo_ps(first.raw, second.raw), _mm_unpackhi_ps(first.raw, second.raw)};
}
inline Pair<F64<2>> interleaved(F64<2> first, F64<2> second) {
    return {_mm_unpacklo_pd(first.raw, second.raw), _mm_unpackhi_pd(first.raw, second.raw)};
}

}  // namespace okt
