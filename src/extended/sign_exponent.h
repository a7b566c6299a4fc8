// Signs, exponents and powers of two of Real80, and exponents of Real64 in the same terms.
#pragma once

#include "lanes/pattern.h"
#include "lanes/real80.h"

#include <cstdint>

namespace okt::extended {

// The number with the given sign and exponent field and significand.
inline Real80 real80(std::uint16_t signAndExponent, std::uint64_t significand) {
    return fromBits({significand, signAndExponent});
}

// 2^k for the exponents of normal numbers, -16382 to 16383.
inline Real80 powerOfTwo80(int k) { return real80(static_cast<std::uint16_t>(k + 0x3FFF), 0x8000000000000000U); }

// Sign and biased exponent in the 16 bits of Real80, for both types. A Real64 needs no trip through an 80-bit slot; its
// infinities and NaNs get the exponent 0x7FFF, its subnormals that just below its smallest normal.
inline std::uint32_t signExponent(Real80 x) { return asBits(x).signAndExponent; }
inline std::uint32_t signExponent(Real64 x) {
    auto field = static_cast<std::uint32_t>(asBits(x) >> 52);
    std::uint32_t exponent = field & 0x7FF;
    return (field >> 11 << 15) | (exponent == 0x7FF ? 0x7FFFU : exponent + (0x3FFF - 0x3FF));
}

// The exponent alone: the kernels choose their tiers by it.
template <class T>
inline int exponentOf(T x) {
    return static_cast<int>(signExponent(x) & 0x7FFF);
}

using okt::isNegative;
inline bool isNegative(Real80 x) { return signExponent(x) >> 15 != 0; }

// x with its sign turned round where negate is set, without a branch.
inline Real80 negateIf(bool negate, Real80 x) {
    static constexpr Real64 factor[2] = {1.0, -1.0};
    return x * factor[negate];
}

}  // namespace okt::extended
