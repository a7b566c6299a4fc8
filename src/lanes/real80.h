// Real80, the x87 extended format: 64 significand bits with an explicit integer bit, 15 exponent bits.
#pragma once

#include "lanes/bits.h"

#include <cstdint>

namespace okt {

using Real80 = long double;
static_assert(__LDBL_MANT_DIG__ == 64, "long double must be the x87 extended format");

// The parts of a Real80's pattern.
struct Real80Bits {
    std::uint64_t significand;       // with the integer bit on top
    std::uint16_t signAndExponent;  // sign in bit 15, exponent biased by 16383
};

inline Real80Bits asBits(Real80 x) {
    Real80Bits bits;
    __builtin_memcpy(&bits, &x, 10);
    return bits;
}

inline Real80 fromBits(Real80Bits bits) {
    Real80 x;
    __builtin_memcpy(&x, &bits, 10);
    return x;
}

// The significand as a number in [1, 2). Building it in memory from two pieces and loading it as one would stall the
// load until both are written; the integer load does not, and every step is exact.
inline Real80 significandOf(Real80Bits bits) {
    return (static_cast<Real80>(static_cast<std::int64_t>(bits.significand)) + 0x1p64L) * 0x1p-63L;
}

// 2^k for a normal Real64 power at no cost, any other in two pieces.
inline Real80 powerOfTwo(int k) {
    if (static_cast<unsigned>(k + 1022) <= 2045u) [[likely]]
        return bits64(static_cast<std::uint64_t>(k + 1023) << 52);
    return fromBits({std::uint64_t{1} << 63, static_cast<std::uint16_t>(k + 16383)});
}

}  // namespace okt
