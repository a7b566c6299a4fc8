// What the models of the error functions share: words of a pattern, warnings, double-double steps.
#pragma once

#include "bits.h"
#include "oktvm_types.h"

#include <cstdint>

namespace okt::model::erf {

inline Real64 pattern64(std::uint64_t pattern) { return fromBits(pattern); }
inline std::uint32_t highMagnitude(Real64 x) { return static_cast<std::uint32_t>(asBits(x) >> 32) & 0x7FFFFFFFU; }
inline bool isNegative(Real64 x) { return asBits(x) >> 63 != 0; }
inline Real64 magnitude(Real64 x) { return pattern64(asBits(x) & 0x7FFFFFFFFFFFFFFFULL); }

// The value with the sign bit of `from` set in it as well.
inline Real64 orSign(Real64 value, Real64 from) { return pattern64(asBits(value) | (asBits(from) & (1ULL << 63))); }

// Exponent and significand in [1, 2) of a positive normal number.
inline std::int32_t exponentOf(Real64 x) { return static_cast<std::int32_t>(asBits(x) >> 52 & 0x7FF) - 1023; }
inline Real64 significandOf(Real64 x) { return pattern64((asBits(x) & 0x000FFFFFFFFFFFFFULL) | 0x3FF0000000000000ULL); }
inline int topFractionBits(Real64 x, int count) {
    return static_cast<int>(asBits(x) >> (52 - count) & ((1ULL << count) - 1));
}

// The double with the biased exponent (exponent + 1023) mod 2048 and nothing else.
inline Real64 powerOfTwo(std::int32_t exponent) {
    return pattern64(static_cast<std::uint64_t>(static_cast<std::uint32_t>(exponent + 1023) & 0x7FFU) << 52);
}

// A value that the compiler takes to be unknown, so that arithmetic on it happens when and where it is written.
template <class T>
T unknown(T value) {
    volatile T cell = value;
    return cell;
}

// Arithmetic done for its flags.
template <class T>
void forFlags(T value) {
    volatile T cell = value;
    static_cast<void>(cell);
}

// Stores the warning and raises its IEEE flag.
inline void warn(OktStatus& status, OktStatus code) {
    status = code;
    const Real64 tiny = unknown(pattern64(0x0010000000000001));
    if (code == oktStatusUnderflow) forFlags(tiny * tiny);
    if (code == oktStatusSingularity) forFlags(unknown(1.0) / unknown(0.0));
    if (code == oktStatusDomain) forFlags(unknown(0.0) / unknown(0.0));
}

struct Pair {
    Real64 hi, lo;
};

inline Pair twoSum(Real64 a, Real64 b) {
    const Real64 s = b + a;
    const Real64 d = a - s;
    const Real64 t = s + d;
    return {s, (d + b) + (a - t)};
}

// a dominates.
inline Pair fastTwoSum(Real64 a, Real64 b) {
    const Real64 s = a + b;
    return {s, (a - s) + b};
}

inline Pair splitBy(Real64 multiplier, Real64 v) {
    const Real64 t = multiplier * v;
    const Real64 d = t - v;
    const Real64 h = t - d;
    return {h, v - h};
}

// High part of 26 bits.
inline Pair split(Real64 v) { return splitBy(134217729.0, v); }

// High part of 21 bits.
inline Pair tableSplit(Real64 v) { return splitBy(4294967297.0, v); }

inline Pair exactProduct(Real64 a, Real64 b) {
    const auto [a1, a2] = split(a);
    const auto [b1, b2] = split(b);
    const Real64 p = a * b;
    const Real64 e = (((a1 * b1 - p) + a1 * b2) + a2 * b1) + a2 * b2;
    return {p, e};
}

// Polynomial by Horner's rule, c[0] the constant term.
template <int N>
Real64 horner(const Real64 (&c)[N], Real64 x) {
    Real64 p = c[N - 1];
    for (int k = N - 2; k >= 0; --k) p = p * x + c[k];
    return p;
}

}  // namespace okt::model::erf
