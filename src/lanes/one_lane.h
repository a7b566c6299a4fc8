// One lane: a scalar, so that an element routine takes the steps of a block. What an operation does is told here; in
// the rooms of registers and of halves it stands under the same name and heading.
#pragma once

#include "lanes/types.h"

#include <emmintrin.h>

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// Masks

template <int Bits>
struct Mask<Bits, 1> {
    bool raw;
    friend Mask operator&(Mask a, Mask b) { return {static_cast<bool>(a.raw & b.raw)}; }
    friend Mask operator|(Mask a, Mask b) { return {static_cast<bool>(a.raw | b.raw)}; }
    friend Mask operator~(Mask a) { return {!a.raw}; }
};

// A bit for each lane, the first lane's lowest.
template <int Bits>
inline int laneBits(Mask<Bits, 1> m) {
    return m.raw;
}
template <int Bits>
inline bool any(Mask<Bits, 1> m) {
    return m.raw;
}
template <int Bits>
inline bool all(Mask<Bits, 1> m) {
    return m.raw;
}

// ---------------------------------------------------------------------------------------------------------------------
// Real and integer lanes

template <class T>
struct Vec<T, 1> {
    static constexpr int lanes = 1;
    using Element = T;
    T raw;

    Vec() = default;
    Vec(T x) : raw(x) {}
    static Vec load(const T* from) { return loadElement(from); }
    static Vec loadAligned(const T* from) { return *from; }
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
// Compares the upper words of 64-bit lanes as signed integers.
inline Mask64<1> greaterSignedHigh(U64<1> a, U64<1> b) {
    return {static_cast<std::int32_t>(a.raw >> 32) > static_cast<std::int32_t>(b.raw >> 32)};
}
// Lanes with the sign bit set.
inline Mask32<1> negativeLanes(U32<1> a) { return {static_cast<std::int32_t>(a.raw) < 0}; }
inline Mask64<1> negativeLanes(U64<1> a) { return {static_cast<std::int64_t>(a.raw) < 0}; }
// All ones where true.
inline U32<1> maskBits(Mask32<1> m) { return 0u - std::uint32_t{m.raw}; }
// The upper 32 bits of each 64-bit lane, in the low half of the lane.
inline U64<1> highWords(U64<1> a) { return a.raw >> 32; }
// a - from, but not below zero and not above `most`, for lanes below 2^15.
inline U32<1> clampedDifference(U32<1> a, std::uint16_t from, std::uint16_t most) {
    const std::uint32_t difference = a.raw > from ? a.raw - from : 0;
    return difference < most ? difference : std::uint32_t{most};
}
// Lanes whose lower half is zero, the upper half taken as a signed number and brought into 0 to `limit`.
inline U32<1> clampHighHalves(U32<1> a, std::uint16_t limit) {
    const auto value = static_cast<std::int32_t>(a.raw) >> 16;
    return static_cast<std::uint32_t>(value < 0 ? 0 : value > limit ? limit : value) << 16;
}
// The larger of the upper halves, as signed numbers, in the upper half; the lower half is any.
inline U32<1> maxHighHalves(U32<1> a, U32<1> b) {
    return static_cast<std::int32_t>(a.raw) < static_cast<std::int32_t>(b.raw) ? b : a;
}
// The product of the lower words.
inline U64<1> mulLowWords(U64<1> a, U64<1> b) { return (a.raw & 0xFFFFFFFF) * (b.raw & 0xFFFFFFFF); }
// The upper half of the product of the upper 16 bits of each lane, there; the lower 16 bits are zero.
inline U32<1> mulHighHalves(U32<1> a, std::uint16_t b) { return ((a.raw >> 16) * b) & 0xFFFF0000; }
// Each lane by a count of its own, 0 to 63.
inline U64<1> shiftLeft(U64<1> a, U64<1> count) { return a.raw << (count.raw & 63); }
inline U64<1> shiftRight(U64<1> a, U64<1> count) { return a.raw >> (count.raw & 63); }
// Signed 32-bit integers to Real32.
inline F32<1> toReal32(U32<1> a) { return static_cast<Real32>(static_cast<std::int32_t>(a.raw)); }
// To a signed 32-bit integer by the rounding mode in force.
inline U32<1> roundToSigned(F32<1> a) { return static_cast<std::uint32_t>(_mm_cvtss_si32(_mm_set_ss(a.raw))); }

// ---------------------------------------------------------------------------------------------------------------------
// Choice by a mask

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

}  // namespace okt
