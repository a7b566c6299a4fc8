// Approximations of 1/x and 1/sqrt(x) in integer arithmetic, the same on every processor at every number of lanes.
//
// The pattern of 1/x is that of a constant less x's, the pattern of 1/sqrt(x) that of a constant less half of x's, but
// for a correction that depends on the significand (and the lowest bit of the exponent, for the root). One line in each
// of 32 intervals gives the correction; the sum is rounded to 13 significant bits, which leaves squares and products
// with short numbers exact. The relative error is below 1.5·2^-12, as that of rcpps and rsqrtps, and zeros, subnormals,
// infinities, NaNs, negative operands and flags are as theirs.
#pragma once

#include "lanes/lookup.h"
#include "lanes/seed_tables.h"

namespace okt::table_seeds {

// The products of the signed halves of each lane, summed.
inline U32<1> sumOfHalvesProducts(U32<1> a, U32<1> b) {
    const auto low = [](std::uint32_t v) { return static_cast<std::int32_t>(static_cast<std::int16_t>(v & 0xFFFF)); };
    return static_cast<std::uint32_t>(low(a.raw) * low(b.raw) + low(a.raw >> 16) * low(b.raw >> 16));
}
inline U32<4> sumOfHalvesProducts(U32<4> a, U32<4> b) { return _mm_madd_epi16(a.raw, b.raw); }
#if defined(OKT_REGISTERS_256)
inline U32<8> sumOfHalvesProducts(U32<8> a, U32<8> b) { return _mm256_madd_epi16(a.raw, b.raw); }
#endif
#if defined(OKT_REGISTERS_512)
inline U32<16> sumOfHalvesProducts(U32<16> a, U32<16> b) { return _mm512_madd_epi16(a.raw, b.raw); }
#endif

inline U32<1> lookUp(const std::uint32_t* table, U32<1> index) { return table[index.raw]; }
inline U32<4> lookUp(const std::uint32_t* table, U32<4> index) {
    const InMemory<std::uint32_t, 4> place(index);
    const auto entry = [&](int i) { return _mm_cvtsi32_si128(static_cast<int>(table[place.lane[i]])); };
    return _mm_unpacklo_epi64(_mm_unpacklo_epi32(entry(0), entry(1)), _mm_unpacklo_epi32(entry(2), entry(3)));
}
#if defined(OKT_REGISTERS_256)
// All 32 entries stand in four registers, of which the upper bits of the index choose.
inline U32<8> lookUp(const std::uint32_t* table, U32<8> index) {
    const auto eight = [&](int i) OKT_INLINE {
        return U32<8>(_mm256_permutevar8x32_epi32(U32<8>::load(table + 8 * i).raw, index.raw));
    };
    const Mask32<8> bit3 = negativeLanes(index << 28), bit4 = negativeLanes(index << 27);
    return select(bit4, select(bit3, eight(3), eight(2)), select(bit3, eight(1), eight(0)));
}
#endif
#if defined(OKT_REGISTERS_512)
inline U32<16> lookUp(const std::uint32_t* table, U32<16> index) {
    return _mm512_permutex2var_epi32(U32<16>::load(table).raw, index.raw, U32<16>::load(table + 16).raw);
}
#endif

// What the line of an interval gives at a place from 0 to 2^15 - 1 of it.
template <int N>
inline U32<N> correction(const std::uint32_t* lines, U32<N> interval, U32<N> place) {
    return shiftRightSigned(sumOfHalvesProducts(lookUp(lines, interval), place | U32<N>(0x40000000)), 9);
}

// The constants hold the middle of the corrections and half a unit of the last bit kept.
inline constexpr std::uint32_t recipConstant = (252u << 23) + 0x00F50000 + 0x400;
inline constexpr std::uint32_t rsqrtConstant = (188u << 23) + 0x013A8000 + 0x400;
inline constexpr std::uint32_t keptBits = 0xFFFFF800;

// Of positive normal operands whose approximation is normal.
template <int N>
inline U32<N> recipPattern(U32<N> x) {
    const U32<N> D = correction(tables::recipSeedLines, (x >> 18) & U32<N>(31), (x >> 3) & U32<N>(0x7FFF));
    return ((U32<N>(recipConstant) - x) + D) & U32<N>(keptBits);
}
template <int N>
inline U32<N> rsqrtPattern(U32<N> x) {
    const U32<N> D = correction(tables::rsqrtSeedLines, (x >> 19) & U32<N>(31), (x >> 4) & U32<N>(0x7FFF));
    return ((U32<N>(rsqrtConstant) - (x >> 1)) + D) & U32<N>(keptBits);
}

template <int N>
inline F32<N> recipOfNormal(F32<N> x) {
    return asReal(recipPattern(asBits(x)));
}
template <int N>
inline F32<N> rsqrtOfNormal(F32<N> x) {
    return asReal(rsqrtPattern(asBits(x)));
}

// Of any operand.
inline F32<1> recip(F32<1> operand) {
    const std::uint32_t x = asBits(operand.raw), sign = x & 0x80000000, magnitude = x ^ sign;
    if (magnitude > 0x7F800000) return bits32(x | 0x00400000);
    if (magnitude < 0x00800000) return bits32(sign | 0x7F800000);
    if (magnitude >= 0x7E800000) return bits32(sign);  // of an infinity, or it would be subnormal
    return bits32(sign | recipPattern(U32<1>(magnitude)).raw);
}
inline F32<1> rsqrt(F32<1> operand) {
    const std::uint32_t x = asBits(operand.raw), sign = x & 0x80000000, magnitude = x ^ sign;
    if (magnitude > 0x7F800000) return bits32(x | 0x00400000);
    if (magnitude < 0x00800000) return bits32(sign | 0x7F800000);
    if (sign != 0) return bits32(0xFFC00000);
    if (magnitude == 0x7F800000) return bits32(0);
    return rsqrtOfNormal(operand);
}

template <int N>
[[gnu::noinline, gnu::cold]] F32<N> laneByLane(F32<N> x, F32<1> (*approximation)(F32<1>)) {
    alignas(16) Real32 lane[N];
    x.store(lane);
    for (Real32& operand : lane) operand = approximation(F32<1>(operand)).raw;
    return F32<N>::load(lane);
}

// Zeros and subnormals are met often, in lanes whose result is void; the other particular operands are not.
template <int N>
inline F32<N> recip(F32<N> operand) {
    const U32<N> x = asBits(operand), sign = x & U32<N>(0x80000000), magnitude = x ^ sign;
    if (any(greaterSigned(magnitude, U32<N>(0x7E800000 - 1)))) [[unlikely]]
        return laneByLane(operand, recip);
    const Mask32<N> zero = greaterSigned(U32<N>(0x00800000), magnitude);
    return asReal(select(zero, U32<N>(0x7F800000), recipPattern(magnitude)) | sign);
}
template <int N>
inline F32<N> rsqrt(F32<N> operand) {
    const U32<N> x = asBits(operand);
    // As signed numbers: below zero, or from infinity on.
    if (any(greaterSigned(U32<N>(0), x) | greaterSigned(x, U32<N>(0x7F800000 - 1)))) [[unlikely]]
        return laneByLane(operand, rsqrt);
    return asReal(select(greaterSigned(U32<N>(0x00800000), x), U32<N>(0x7F800000), rsqrtPattern(x)));
}

}  // namespace okt::table_seeds
