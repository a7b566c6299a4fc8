// Registers of 512 bits: F64<8>, F32<16>, U64<8>, U32<16>, whose masks have a bit a lane. AVX-512 F, DQ, BW, VL.
//
// The rooms of 128, 256 and 512 bits have the same headings in the same order.
#pragma once

#include "lanes/register256.h"

#include <immintrin.h>

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// Masks

template <>
struct Mask<64, 8> {
    __mmask8 raw;
    friend Mask operator&(Mask a, Mask b) { return {static_cast<__mmask8>(a.raw & b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {static_cast<__mmask8>(a.raw | b.raw)}; }
    friend Mask operator~(Mask a) { return {static_cast<__mmask8>(~a.raw)}; }
    Mask<64, 4> lowHalf() const;
    Mask<64, 4> highHalf() const;
};

template <>
struct Mask<32, 16> {
    __mmask16 raw;
    friend Mask operator&(Mask a, Mask b) { return {static_cast<__mmask16>(a.raw & b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {static_cast<__mmask16>(a.raw | b.raw)}; }
    friend Mask operator~(Mask a) { return {static_cast<__mmask16>(~a.raw)}; }
    Mask<32, 8> lowHalf() const;
    Mask<32, 8> highHalf() const;
};

inline int laneBits(Mask<64, 8> m) { return m.raw; }
inline int laneBits(Mask<32, 16> m) { return m.raw; }
inline bool any(Mask<64, 8> m) { return m.raw != 0; }
inline bool any(Mask<32, 16> m) { return m.raw != 0; }
inline bool all(Mask<64, 8> m) { return m.raw == 0xFF; }
inline bool all(Mask<32, 16> m) { return m.raw == 0xFFFF; }

// ---------------------------------------------------------------------------------------------------------------------
// All lanes alike

inline __m512d splat512(Real64 x) {
    __m512i raw = _mm512_castpd_si512(_mm512_set1_pd(x));
#if !defined(__clang__)
    asm("" : "+v"(raw));
#endif
    return _mm512_castsi512_pd(raw);
}
inline __m512 splat512(Real32 x) {
    __m512i raw = _mm512_castps_si512(_mm512_set1_ps(x));
#if !defined(__clang__)
    asm("" : "+v"(raw));
#endif
    return _mm512_castsi512_ps(raw);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real lanes

template <>
struct Vec<Real64, 8> {
    static constexpr int lanes = 8;
    using Element = Real64;
    using M = Mask<64, 8>;
    __m512d raw;

    Vec() = default;
    Vec(__m512d x) : raw(x) {}
    Vec(Real64 x) : raw(splat512(x)) {}
    Vec(Vec<Real64, 4> low, Vec<Real64, 4> high)
        : raw(_mm512_insertf64x4(_mm512_castpd256_pd512(low.raw), high.raw, 1)) {}
    static Vec load(const Real64* from) { return _mm512_loadu_pd(from); }
    static Vec loadAligned(const Real64* from) { return _mm512_load_pd(from); }
    void store(Real64* to) const { _mm512_storeu_pd(to, raw); }
    Real64 operator[](int i) const {
        alignas(64) Real64 out[8];
        _mm512_store_pd(out, raw);
        return out[i];
    }
    Vec<Real64, 4> lowHalf() const { return _mm512_castpd512_pd256(raw); }
    Vec<Real64, 4> highHalf() const { return _mm512_extractf64x4_pd(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm512_add_pd(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm512_sub_pd(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm512_mul_pd(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm512_div_pd(a.raw, b.raw); }
    friend M operator==(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_EQ_OQ)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_NEQ_UQ)}; }
    friend M operator<(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_LT_OS)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_LE_OS)}; }
    friend M operator>(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_GT_OS)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm512_cmp_pd_mask(a.raw, b.raw, _CMP_GE_OS)}; }
};

template <>
struct Vec<Real32, 16> {
    static constexpr int lanes = 16;
    using Element = Real32;
    using M = Mask<32, 16>;
    __m512 raw;

    Vec() = default;
    Vec(__m512 x) : raw(x) {}
    Vec(Real32 x) : raw(splat512(x)) {}
    Vec(Vec<Real32, 8> low, Vec<Real32, 8> high)
        : raw(_mm512_insertf32x8(_mm512_castps256_ps512(low.raw), high.raw, 1)) {}
    static Vec load(const Real32* from) { return _mm512_loadu_ps(from); }
    static Vec loadAligned(const Real32* from) { return _mm512_load_ps(from); }
    void store(Real32* to) const { _mm512_storeu_ps(to, raw); }
    Real32 operator[](int i) const {
        alignas(64) Real32 out[16];
        _mm512_store_ps(out, raw);
        return out[i];
    }
    Vec<Real32, 8> lowHalf() const { return _mm512_castps512_ps256(raw); }
    Vec<Real32, 8> highHalf() const { return _mm512_extractf32x8_ps(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm512_add_ps(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm512_sub_ps(a.raw, b.raw); }
    friend Vec operator*(Vec a, Vec b) { return _mm512_mul_ps(a.raw, b.raw); }
    friend Vec operator/(Vec a, Vec b) { return _mm512_div_ps(a.raw, b.raw); }
    friend M operator==(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_EQ_OQ)}; }
    friend M operator!=(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_NEQ_UQ)}; }
    friend M operator<(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_LT_OS)}; }
    friend M operator<=(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_LE_OS)}; }
    friend M operator>(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_GT_OS)}; }
    friend M operator>=(Vec a, Vec b) { return {_mm512_cmp_ps_mask(a.raw, b.raw, _CMP_GE_OS)}; }
};

inline F64<8> sqrt(F64<8> a) { return _mm512_sqrt_pd(a.raw); }
inline F32<16> sqrt(F32<16> a) { return _mm512_sqrt_ps(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Integer lanes

template <>
struct Vec<std::uint64_t, 8> {
    static constexpr int lanes = 8;
    using Element = std::uint64_t;
    __m512i raw;

    Vec() = default;
    Vec(__m512i x) : raw(x) {}
    Vec(std::uint64_t x) : raw(_mm512_set1_epi64(static_cast<long long>(x))) {}
    Vec(Vec<std::uint64_t, 4> low, Vec<std::uint64_t, 4> high)
        : raw(_mm512_inserti64x4(_mm512_castsi256_si512(low.raw), high.raw, 1)) {}
    static Vec load(const std::uint64_t* from) { return _mm512_loadu_si512(from); }
    static Vec loadAligned(const std::uint64_t* from) { return _mm512_load_si512(from); }
    void store(std::uint64_t* to) const { _mm512_storeu_si512(to, raw); }
    std::uint64_t operator[](int i) const {
        alignas(64) std::uint64_t out[8];
        _mm512_store_si512(out, raw);
        return out[i];
    }
    Vec<std::uint64_t, 4> lowHalf() const { return _mm512_castsi512_si256(raw); }
    Vec<std::uint64_t, 4> highHalf() const { return _mm512_extracti64x4_epi64(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm512_add_epi64(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm512_sub_epi64(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm512_and_si512(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm512_or_si512(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm512_xor_si512(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm512_xor_si512(a.raw, _mm512_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm512_slli_epi64(a.raw, static_cast<unsigned>(n)); }
    friend Vec operator>>(Vec a, int n) { return _mm512_srli_epi64(a.raw, static_cast<unsigned>(n)); }
};

template <>
struct Vec<std::uint32_t, 16> {
    static constexpr int lanes = 16;
    using Element = std::uint32_t;
    __m512i raw;

    Vec() = default;
    Vec(__m512i x) : raw(x) {}
    Vec(std::uint32_t x) : raw(_mm512_set1_epi32(static_cast<int>(x))) {}
    Vec(Vec<std::uint32_t, 8> low, Vec<std::uint32_t, 8> high)
        : raw(_mm512_inserti64x4(_mm512_castsi256_si512(low.raw), high.raw, 1)) {}
    static Vec load(const std::uint32_t* from) { return _mm512_loadu_si512(from); }
    static Vec loadAligned(const std::uint32_t* from) { return _mm512_load_si512(from); }
    void store(std::uint32_t* to) const { _mm512_storeu_si512(to, raw); }
    std::uint32_t operator[](int i) const {
        alignas(64) std::uint32_t out[16];
        _mm512_store_si512(out, raw);
        return out[i];
    }
    Vec<std::uint32_t, 8> lowHalf() const { return _mm512_castsi512_si256(raw); }
    Vec<std::uint32_t, 8> highHalf() const { return _mm512_extracti64x4_epi64(raw, 1); }

    friend Vec operator+(Vec a, Vec b) { return _mm512_add_epi32(a.raw, b.raw); }
    friend Vec operator-(Vec a, Vec b) { return _mm512_sub_epi32(a.raw, b.raw); }
    friend Vec operator&(Vec a, Vec b) { return _mm512_and_si512(a.raw, b.raw); }
    friend Vec operator|(Vec a, Vec b) { return _mm512_or_si512(a.raw, b.raw); }
    friend Vec operator^(Vec a, Vec b) { return _mm512_xor_si512(a.raw, b.raw); }
    friend Vec operator~(Vec a) { return _mm512_xor_si512(a.raw, _mm512_set1_epi32(-1)); }
    friend Vec operator<<(Vec a, int n) { return _mm512_slli_epi32(a.raw, static_cast<unsigned>(n)); }
    friend Vec operator>>(Vec a, int n) { return _mm512_srli_epi32(a.raw, static_cast<unsigned>(n)); }
    friend Mask32<16> operator==(Vec a, Vec b) { return {_mm512_cmpeq_epi32_mask(a.raw, b.raw)}; }
};

inline U64<8> asBits(F64<8> a) { return _mm512_castpd_si512(a.raw); }
inline U32<16> asBits(F32<16> a) { return _mm512_castps_si512(a.raw); }
inline F64<8> asReal(U64<8> a) { return _mm512_castsi512_pd(a.raw); }
inline F32<16> asReal(U32<16> a) { return _mm512_castsi512_ps(a.raw); }
// The same bits as lanes of the other size.
inline U32<16> asWords(U64<8> a) { return a.raw; }
inline U64<8> asLongs(U32<16> a) { return a.raw; }

inline U32<16> shiftRightSigned(U32<16> a, int n) { return _mm512_srai_epi32(a.raw, static_cast<unsigned>(n)); }
inline Mask32<16> greaterSigned(U32<16> a, U32<16> b) { return {_mm512_cmpgt_epi32_mask(a.raw, b.raw)}; }
inline Mask64<8> greaterSignedHigh(U64<8> a, U64<8> b) {
    return {_mm512_cmpgt_epi64_mask(_mm512_srai_epi64(a.raw, 32), _mm512_srai_epi64(b.raw, 32))};
}
inline Mask32<16> negativeLanes(U32<16> a) { return {_mm512_movepi32_mask(a.raw)}; }
inline Mask64<8> negativeLanes(U64<8> a) { return {_mm512_movepi64_mask(a.raw)}; }
inline U32<16> maskBits(Mask32<16> m) { return _mm512_movm_epi32(m.raw); }
inline U64<8> highWords(U64<8> a) { return _mm512_srli_epi64(a.raw, 32); }
inline U32<16> clampedDifference(U32<16> a, std::uint16_t from, std::uint16_t most) {
    return _mm512_min_epi16(_mm512_subs_epu16(a.raw, _mm512_set1_epi32(from)), _mm512_set1_epi32(most));
}
inline U32<16> clampHighHalves(U32<16> a, std::uint16_t limit) {
    const __m512i top = _mm512_set1_epi32(static_cast<int>(limit) << 16);
    return _mm512_min_epi16(_mm512_max_epi16(a.raw, _mm512_setzero_si512()), top);
}
inline U32<16> maxHighHalves(U32<16> a, U32<16> b) { return _mm512_max_epi16(a.raw, b.raw); }
inline U64<8> mulLowWords(U64<8> a, U64<8> b) { return _mm512_mul_epu32(a.raw, b.raw); }
inline U32<16> mulHighHalves(U32<16> a, std::uint16_t b) {
    return _mm512_mulhi_epu16(a.raw, _mm512_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(b) << 16)));
}
inline U64<8> shiftLeft(U64<8> a, U64<8> count) { return _mm512_sllv_epi64(a.raw, count.raw); }
inline U64<8> shiftRight(U64<8> a, U64<8> count) { return _mm512_srlv_epi64(a.raw, count.raw); }
inline F32<16> toReal32(U32<16> a) { return _mm512_cvtepi32_ps(a.raw); }
inline U32<16> roundToSigned(F32<16> a) { return _mm512_cvtps_epi32(a.raw); }

// ---------------------------------------------------------------------------------------------------------------------
// Choice by a mask

inline F64<8> select(Mask64<8> m, F64<8> yes, F64<8> no) { return _mm512_mask_blend_pd(m.raw, no.raw, yes.raw); }
inline F32<16> select(Mask32<16> m, F32<16> yes, F32<16> no) { return _mm512_mask_blend_ps(m.raw, no.raw, yes.raw); }
inline U64<8> select(Mask64<8> m, U64<8> yes, U64<8> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline U32<16> select(Mask32<16> m, U32<16> yes, U32<16> no) { return asBits(select(m, asReal(yes), asReal(no))); }
inline F64<8> zeroUnless(Mask64<8> m, F64<8> a) { return _mm512_maskz_mov_pd(m.raw, a.raw); }
inline F32<16> zeroUnless(Mask32<16> m, F32<16> a) { return _mm512_maskz_mov_ps(m.raw, a.raw); }
inline U64<8> zeroUnless(Mask64<8> m, U64<8> a) { return _mm512_maskz_mov_epi64(m.raw, a.raw); }
inline U32<16> zeroUnless(Mask32<16> m, U32<16> a) { return _mm512_maskz_mov_epi32(m.raw, a.raw); }
inline F64<8> zeroIf(Mask64<8> m, F64<8> a) { return zeroUnless(~m, a); }
inline F32<16> zeroIf(Mask32<16> m, F32<16> a) { return zeroUnless(~m, a); }

// ---------------------------------------------------------------------------------------------------------------------
// Halves of masks

inline Mask<64, 4> Mask<64, 8>::lowHalf() const {
    return {_mm256_castsi256_pd(_mm256_movm_epi64(static_cast<__mmask8>(raw & 15)))};
}
inline Mask<64, 4> Mask<64, 8>::highHalf() const {
    return {_mm256_castsi256_pd(_mm256_movm_epi64(static_cast<__mmask8>(raw >> 4)))};
}
inline Mask<32, 8> Mask<32, 16>::lowHalf() const {
    return {_mm256_castsi256_ps(_mm256_movm_epi32(static_cast<__mmask8>(raw)))};
}
inline Mask<32, 8> Mask<32, 16>::highHalf() const {
    return {_mm256_castsi256_ps(_mm256_movm_epi32(static_cast<__mmask8>(raw >> 8)))};
}

// ---------------------------------------------------------------------------------------------------------------------
// Interleaved pairs to two vectors of columns, and back

inline Pair<F32<16>> deinterleaved(F32<16> a, F32<16> b) {
    const __m512i even = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    const __m512i odd = _mm512_setr_epi32(1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
    return {_mm512_permutex2var_ps(a.raw, even, b.raw), _mm512_permutex2var_ps(a.raw, odd, b.raw)};
}
inline Pair<F64<8>> deinterleaved(F64<8> a, F64<8> b) {
    const __m512i even = _mm512_setr_epi64(0, 2, 4, 6, 8, 10, 12, 14),
                  odd = _mm512_setr_epi64(1, 3, 5, 7, 9, 11, 13, 15);
    return {_mm512_permutex2var_pd(a.raw, even, b.raw), _mm512_permutex2var_pd(a.raw, odd, b.raw)};
}
inline Pair<F32<16>> interleaved(F32<16> first, F32<16> second) {
    const __m512i low = _mm512_setr_epi32(0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    const __m512i high = _mm512_setr_epi32(8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
    return {_mm512_permutex2var_ps(first.raw, low, second.raw), _mm512_permutex2var_ps(first.raw, high, second.raw)};
}
inline Pair<F64<8>> interleaved(F64<8> first, F64<8> second) {
    const __m512i low = _mm512_setr_epi64(0, 8, 1, 9, 2, 10, 3, 11),
                  high = _mm512_setr_epi64(4, 12, 5, 13, 6, 14, 7, 15);
    return {_mm512_permutex2var_pd(first.raw, low, second.raw), _mm512_permutex2var_pd(first.raw, high, second.raw)};
}

}  // namespace okt
