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

}  // namespace okt
