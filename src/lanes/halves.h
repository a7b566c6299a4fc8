// Lanes that no register holds: a pair of halves, worked one after the other, which also gives the processor
// independent chains to overlap.
#pragma once

#include "lanes/registers.h"

namespace okt {

// ---------------------------------------------------------------------------------------------------------------------
// Masks

template <int Bits, int N>
requires LanesAbove<N, 1>
struct Mask<Bits, N> {
    Mask<Bits, N / 2> lo, hi;
    Mask<Bits, N / 2> lowHalf() const { return lo; }
    Mask<Bits, N / 2> highHalf() const { return hi; }
    friend Mask operator&(Mask a, Mask b) { return {a.lo & b.lo, a.hi & b.hi}; }
    friend Mask operator|(Mask a, Mask b) { return {a.lo | b.lo, a.hi | b.hi}; }
    friend Mask operator~(Mask a) { return {~a.lo, ~a.hi}; }
};

template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline int laneBits(Mask<Bits, N> m) { return laneBits(m.lo) | laneBits(m.hi) << (N / 2); }
template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline bool any(Mask<Bits, N> m) { return any(m.lo | m.hi); }
template <int Bits, int N>
requires Paired<Mask<Bits, N>>
inline bool all(Mask<Bits, N> m) { return all(m.lo & m.hi); }

// ---------------------------------------------------------------------------------------------------------------------
// Real and integer lanes

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
    static Vec loadAligned(const T* from) { return {Half::loadAligned(from), Half::loadAligned(from + N / 2)}; }
    void store(T* to) const {
        lo.store(to);
        hi.store(to + N / 2);
    }
    T operator[](int i) const { return i < N / 2 ? lo[i] : hi[i - N / 2]; }
    Half lowHalf() const { return lo; }
    Half highHalf() const { return hi; }

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
template <int N>
requires Paired<U64<N>>
inline Mask64<N> greaterSignedHigh(U64<N> a, U64<N> b) {
    return {greaterSignedHigh(a.lo, b.lo), greaterSignedHigh(a.hi, b.hi)};
}
template <int N>
requires Paired<U32<N>>
inline Mask32<N> negativeLanes(U32<N> a) { return {negativeLanes(a.lo), negativeLanes(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline Mask64<N> negativeLanes(U64<N> a) { return {negativeLanes(a.lo), negativeLanes(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> maskBits(Mask32<N> m) { return {maskBits(m.lo), maskBits(m.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> highWords(U64<N> a) { return {highWords(a.lo), highWords(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> clampedDifference(U32<N> a, std::uint16_t from, std::uint16_t most) {
    return {clampedDifference(a.lo, from, most), clampedDifference(a.hi, from, most)};
}
template <int N>
requires Paired<U32<N>>
inline U32<N> clampHighHalves(U32<N> a, std::uint16_t limit) {
    return {clampHighHalves(a.lo, limit), clampHighHalves(a.hi, limit)};
}
template <int N>
requires Paired<U32<N>>
inline U32<N> maxHighHalves(U32<N> a, U32<N> b) { return {maxHighHalves(a.lo, b.lo), maxHighHalves(a.hi, b.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> mulLowWords(U64<N> a, U64<N> b) { return {mulLowWords(a.lo, b.lo), mulLowWords(a.hi, b.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> mulHighHalves(U32<N> a, std::uint16_t b) { return {mulHighHalves(a.lo, b), mulHighHalves(a.hi, b)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> shiftLeft(U64<N> a, U64<N> count) { return {shiftLeft(a.lo, count.lo), shiftLeft(a.hi, count.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> shiftRight(U64<N> a, U64<N> count) { return {shiftRight(a.lo, count.lo), shiftRight(a.hi, count.hi)}; }
template <int N>
requires Paired<U32<N>>
inline F32<N> toReal32(U32<N> a) { return {toReal32(a.lo), toReal32(a.hi)}; }
template <int N>
requires Paired<U32<N>>
inline U32<N> roundToSigned(F32<N> a) { return {roundToSigned(a.lo), roundToSigned(a.hi)}; }

// ---------------------------------------------------------------------------------------------------------------------
// Choice by a mask

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

}  // namespace okt
