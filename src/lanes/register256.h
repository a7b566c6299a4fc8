// Registers of 256 bits: F64<4>, F32<8>, U64<4>, U32<8>. AVX2.
//
// The rooms of 128, 256 and 512 bits have the same headings in the same order.
#pragma once

#include "lanes/register128.h"

#include <immintrin.h>

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// Masks

template <>
struct Mask<64, 4> {
    __m256d raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm256_and_pd(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm256_or_pd(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm256_castsi256_pd(_mm256_xor_si256(_mm256_castpd_si256(a.raw), _mm256_set1_epi32(-1)))};
    }
    Mask<64, 2> lowHalf() const;
    Mask<64, 2> highHalf() const;
};

template <>
struct Mask<32, 8> {
    __m256 raw;
    friend Mask operator&(Mask a, Mask b) { return {_mm256_and_ps(a.raw, b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {_mm256_or_ps(a.raw, b.raw)}; }
    friend Mask operator~(Mask a) {
        return {_mm256_castsi256_ps(_mm256_xor_si256(_mm256_castps_si256(a.raw), _mm256_set1_epi32(-1)))};
    }
    Mask<32, 4> lowHalf() const;
    Mask<32, 4> highHalf() const;
};

inline int laneBits(Mask<64, 4> m) { return _mm256_movemask_pd(m.raw); }
inline int laneBits(Mask<32, 8> m) { return _mm256_movemask_ps(m.raw); }
inline bool any(Mask<64, 4> m) { return laneBits(m) != 0; }
inline bool any(Mask<32, 8> m) { return laneBits(m) != 0; }
inline bool all(Mask<64, 4> m) { return laneBits(m) == 15; }
inline bool all(Mask<32, 8> m) { return laneBits(m) == 0xff; }

// ---------------------------------------------------------------------------------------------------------------------
// All lanes alike

inline __m256d splat256(Real64 x) {
    __m256i raw = _mm256_castpd_si256(_mm256_set1_pd(x));
#if !defined(__clang__)
    asm("" : "+v"(raw));
#endif
    return _mm256_castsi256_pd(raw);
}
inline __m256 splat256(Real32 x) {
    __m256i raw = _mm256_castps_si256(_mm256_set1_ps(x));
#if !defined(__clang__)
    asm("" : "+v"(raw));
#endif
    return _mm256_castsi256_ps(raw);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real lanes

template <>
struct Vec<Real64, 4> {
    static constexpr int lanes = 4;
    using Element = Real64;
    using M = Mask<64, 4>;
    __m256d raw;

    Vec() = default;
    Vec(__m256d x) : raw(x) {}
    Vec(Real64 x) : raw(splat256(x)) {}
    Vec(Vec<Real64, 2> low, Vec<Real64, 2> high) : raw(_mm256_set_m128d(high.raw, low.raw)) {}
    static Vec load(const Real64* from) { return _mm256_loadu_pd(from); }
    static Vec loadAligned(const Real64* from) { return _mm256_load_pd(from); }
    void store(Real64* to) const { _mm256_storeu_pd(to, raw); }
    Real64 operator[](int i) const {
        alignas(32) Real64 out[4];
        _mm256_store_pd(out, raw);
        return out[i];
    }
    Vec<Real64, 2> lowHalf() const { return _mm256_castpd256_pd128(raw); }
    Vec<Real64, 2> highHalf() const { return _mm256_extractf128_pd(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm256_add_pd(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm256_sub_pd(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm256_mul_pd(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm256_div_pd(a.raw, b.raw); }
    friend M operator==(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_EQ_OQ)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_NEQ_UQ)}; }
    friend M operator<(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_LT_OS)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_LE_OS)}; }
    friend M operator>(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_GT_OS)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm256_cmp_pd(a.raw, b.raw, _CMP_GE_OS)}; }
};

template <>
struct Vec<Real32, 8> {
    static constexpr int lanes = 8;
    using Element = Real32;
    using M = Mask<32, 8>;
    __m256 raw;

    Vec() = default;
    Vec(__m256 x) : raw(x) {}
    Vec(Real32 x) : raw(splat256(x)) {}
    Vec(Vec<Real32, 4> low, Vec<Real32, 4> high) : raw(_mm256_set_m128(high.raw, low.raw)) {}
    static Vec load(const Real32* from) { return _mm256_loadu_ps(from); }
    static Vec loadAligned(const Real32* from) { return _mm256_load_ps(from); }
    void store(Real32* to) const { _mm256_storeu_ps(to, raw); }
    Real32 operator[](int i) const {
        alignas(32) Real32 out[8];
        _mm256_store_ps(out, raw);
        return out[i];
    }
    Vec<Real32, 4> lowHalf() const { return _mm256_castps256_ps128(raw); }
    Vec<Real32, 4> highHalf() const { return _mm256_extractf128_ps(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm256_add_ps(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm256_sub_ps(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm256_mul_ps(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm256_div_ps(a.raw, b.raw); }
    friend M operator==(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_EQ_OQ)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_NEQ_UQ)}; }
    friend M operator<(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_LT_OS)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_LE_OS)}; }
    friend M operator>(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_GT_OS)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm256_cmp_ps(a.raw, b.raw, _CMP_GE_OS)}; }
};

inline F64<4> sqrt(F64<4> a) { return _mm256_sqrt_pd(a.raw); }
inline F32<8> sqrt(F32<8> a) { return _mm256_sqrt_ps(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Integer lanes

template <>
struct Vec<std::uint64_t, 4> {
    static constexpr int lanes = 4;
    using Element = std::uint64_t;
    __m256i raw;

    Vec() = default;
    Vec(__m256i x) : raw(x) {}
    Vec(std::uint64_t x) : raw(_mm256_set1_epi64x(static_cast<long long>(x))) {}
    Vec(Vec<std::uint64_t, 2> low, Vec<std::uint64_t, 2> high) : raw(_mm256_set_m128i(high.raw, low.raw)) {}
    static Vec load(const std::uint64_t* from) { return _mm256_loadu_si256(reinterpret_cast<const __m256i_u*>(from)); }
    static Vec loadAligned(const std::uint64_t* from) {
        return _mm256_load_si256(reinterpret_cast<const __m256i*>(from));
    }
    void store(std::uint64_t* to) const { _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(to), raw); }
    std::uint64_t operator[](int i) const {
        alignas(32) std::uint64_t out[4];
        _mm256_store_si256(reinterpret_cast<__m256i*>(out), raw);
        return out[i];
    }
    Vec<std::uint64_t, 2> lowHalf() const { return _mm256_castsi256_si128(raw); }
    Vec<std::uint64_t, 2> highHalf() const { return _mm256_extracti128_si256(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm256_add_epi64(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm256_sub_epi64(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm256_and_si256(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm256_or_si256(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm256_xor_si256(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm256_xor_si256(a.raw, _mm256_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm256_slli_epi64(a.raw, n); }
    friend Vec operator>>(Vec a, int n) { return _mm256_srli_epi64(a.raw, n); }
};

template <>
struct Vec<std::uint32_t, 8> {
    static constexpr int lanes = 8;
    using Element = std::uint32_t;
    __m256i raw;

    Vec() = default;
    Vec(__m256i x) : raw(x) {}
    Vec(std::uint32_t x) : raw(_mm256_set1_epi32(static_cast<int>(x))) {}
    Vec(Vec<std::uint32_t, 4> low, Vec<std::uint32_t, 4> high) : raw(_mm256_set_m128i(high.raw, low.raw)) {}
    static Vec load(const std::uint32_t* from) { return _mm256_loadu_si256(reinterpret_cast<const __m256i_u*>(from)); }
    static Vec loadAligned(const std::uint32_t* from) {
        return _mm256_load_si256(reinterpret_cast<const __m256i*>(from));
    }
    void store(std::uint32_t* to) const { _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(to), raw); }
    std::uint32_t operator[](int i) const {
        alignas(32) std::uint32_t out[8];
        _mm256_store_si256(reinterpret_cast<__m256i*>(out), raw);
        return out[i];
    }
    Vec<std::uint32_t, 4> lowHalf() const { return _mm256_castsi256_si128(raw); }
    Vec<std::uint32_t, 4> highHalf() const { return _mm256_extracti128_si256(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm256_add_epi32(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm256_sub_epi32(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm256_and_si256(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm256_or_si256(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm256_xor_si256(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm256_xor_si256(a.raw, _mm256_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm256_slli_epi32(a.raw, n); }
    friend Vec operator>>(Vec a, int n) { return _mm256_srli_epi32(a.raw, n); }
    friend Mask32<8> operator==(Vec a, Vec b) { return {_mm256_castsi256_ps(_mm256_cmpeq_epi32(a.raw, b.raw))}; }
};

inline U64<4> asBits(F64<4> a) { return _mm256_castpd_si256(a.raw); }
inline U32<8> asBits(F32<8> a) { return _mm256_castps_si256(a.raw); }
inline F64<4> asReal(U64<4> a) { return _mm256_castsi256_pd(a.raw); }
inline F32<8> asReal(U32<8> a) { return _mm256_castsi256_ps(a.raw); }
// The same bits as lanes of the other size.
inline U32<8> asWords(U64<4> a) { return a.raw; }
inline U64<4> asLongs(U32<8> a) { return a.raw; }

inline U32<8> shiftRightSigned(U32<8> a, int n) { return _mm256_srai_epi32(a.raw, n); }
inline Mask32<8> greaterSigned(U32<8> a, U32<8> b) { return {_mm256_castsi256_ps(_mm256_cmpgt_epi32(a.raw, b.raw))}; }
inline Mask64<4> greaterSignedHigh(U64<4> a, U64<4> b) {
    const __m256i words = _mm256_cmpgt_epi32(a.raw, b.raw);
    return {_mm256_castsi256_pd(_mm256_shuffle_epi32(words, _MM_SHUFFLE(3, 3, 1, 1)))};
}
inline Mask32<8> negativeLanes(U32<8> a) { return {_mm256_castsi256_ps(_mm256_srai_epi32(a.raw, 31))}; }
inline Mask64<4> negativeLanes(U64<4> a) {
    return {_mm256_castsi256_pd(_mm256_srai_epi32(_mm256_shuffle_epi32(a.raw, _MM_SHUFFLE(3, 3, 1, 1)), 31))};
}
inline U32<8> maskBits(Mask32<8> m) { return _mm256_castps_si256(m.raw); }
inline U64<4> highWords(U64<4> a) { return _mm256_srli_epi64(a.raw, 32); }
inline U32<8> clampedDifference(U32<8> a, std::uint16_t from, std::uint16_t most) {
    return _mm256_min_epi16(_mm256_subs_epu16(a.raw, _mm256_set1_epi32(from)), _mm256_set1_epi32(most));
}
inline U32<8> clampHighHalves(U32<8> a, std::uint16_t limit) {
    const __m256i top = _mm256_set1_epi32(static_cast<int>(limit) << 16);
    return _mm256_min_epi16(_mm256_max_epi16(a.raw, _mm256_setzero_si256()), top);
}
inline U32<8> maxHighHalves(U32<8> a, U32<8> b) { return _mm256_max_epi16(a.raw, b.raw); }
inline U64<4> mulLowWords(U64<4> a, U64<4> b) { return _mm256_mul_epu32(a.raw, b.raw); }
inline U32<8> mulHighHalves(U32<8> a, std::uint16_t b) {
    return _mm256_mulhi_epu16(a.raw, _mm256_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(b) << 16)));
}
inline U64<4> shiftLeft(U64<4> a, U64<4> count) { return _mm256_sllv_epi64(a.raw, count.raw); }
inline U64<4> shiftRight(U64<4> a, U64<4> count) { return _mm256_srlv_epi64(a.raw, count.raw); }
inline F32<8> toReal32(U32<8> a) { return _mm256_cvtepi32_ps(a.raw); }
inline U32<8> roundToSigned(F32<8> a) { return _mm256_cvtps_epi32(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Choice by a mask

inline F64<4> select(Mask64<4> m, F64<4> yes, F64<4> no) { return _mm256_blendv_pd(no.raw, yes.raw, m.raw); }
inline F32<8> select(Mask32<8> m, F32<8> yes, F32<8> no) { return _mm256_blendv_ps(no.raw, yes.raw, m.raw); }
inline U64<4> select(Mask64<4> m, U64<4> yes, U64<4> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline U32<8> select(Mask32<8> m, U32<8> yes, U32<8> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline F64<4> zeroUnless(Mask64<4> m, F64<4> a) { return _mm256_and_pd(m.raw, a.raw); }
inline F32<8> zeroUnless(Mask32<8> m, F32<8> a) { return _mm256_and_ps(m.raw, a.raw); }
inline U64<4> zeroUnless(Mask64<4> m, U64<4> a) { return _mm256_and_si256(_mm256_castpd_si256(m.raw), a.raw); }
inline U32<8> zeroUnless(Mask32<8> m, U32<8> a) { return _mm256_and_si256(_mm256_castps_si256(m.raw), a.raw); }
inline F64<4> zeroIf(Mask64<4> m, F64<4> a) { return _mm256_andnot_pd(m.raw, a.raw); }
inline F32<8> zeroIf(Mask32<8> m, F32<8> a) { return _mm256_andnot_ps(m.raw, a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Halves of masks

inline Mask<64, 2> Mask<64, 4>::lowHalf() const { return {_mm256_castpd256_pd128(raw)}; }
inline Mask<64, 2> Mask<64, 4>::highHalf() const { return {_mm256_extractf128_pd(raw, 1)}; }
inline Mask<32, 4> Mask<32, 8>::lowHalf() const { return {_mm256_castps256_ps128(raw)}; }
inline Mask<32, 4> Mask<32, 8>::highHalf() const { return {_mm256_extractf128_ps(raw, 1)}; }

// ---------------------------------------------------------------------------------------------------------------------
// Interleaved pairs to two vectors of columns, and back

inline Pair<F32<8>> deinterleaved(F32<8> a, F32<8> b) {
    const __m256 low = _mm256_permute2f128_ps(a.raw, b.raw, 0x20), high = _mm256_permute2f128_ps(a.raw, b.raw, 0x31);
    return {_mm256_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)),
            _mm256_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1))};
}
inline Pair<F64<4>> deinterleaved(F64<4> a, F64<4> b) {
    const __m256d low = _mm256_permute2f128_pd(a.raw, b.raw, 0x20), high = _mm256_permute2f128_pd(a.raw, b.raw, 0x31);
    return {_mm256_unpacklo_pd(low, high), _mm256_unpackhi_pd(low, high)};
}
inline Pair<F32<8>> interleaved(F32<8> first, F32<8> second) {
    const __m256 low = _mm256_unpacklo_ps(first.raw, second.raw), high = _mm256_unpackhi_ps(first.raw, second.raw);
    return {_mm256_permute2f128_ps(low, high, 0x20), _mm256_permute2f128_ps(low, high, 0x31)};
}
inline Pair<F64<4>> interleaved(F64<4> first, F64<4> second) {
    const __m256d low = _mm256_unpacklo_pd(first.raw, second.raw), high = _mm256_unpackhi_pd(first.raw, second.raw);
    return {_mm256_permute2f128_pd(low, high, 0x20), _mm256_permute2f128_pd(low, high, 0x31)};
}

}  // namespace okt
