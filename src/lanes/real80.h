// Real80, the x87 extended format: 64 significand bits with an explicit integer bit, 15 exponent bits.
#pragma once

#include "lanes/bits.h"
#include "lanes/opaque.h"

#include <cstdint>

namespace okt {

using Real80 = long double;
static_assert(__LDBL_MANT_DIG__ == 64, "long double must be the x87 extended format");

// The parts of a Real80's pattern.
struct Real80Bits {
    std::uint64_t significand;      // with the integer bit on top
    std::uint16_t signAndExponent;  // sign in bit 15, exponent biased by 16383
};

// Each field is read by a load of its own width: a wider one would wait until the store of ten bytes retires.
inline Real80Bits asBits(Real80 x) {
    union {
        Real80 value;
        Real80Bits bits;
    } slot;
    slot.value = x;
    return {slot.bits.significand, static_cast<const volatile std::uint16_t&>(slot.bits.signAndExponent)};
}

inline Real80 fromBits(Real80Bits bits) {
    Real80 x;
    __builtin_memcpy(&x, &bits, 10);
    return x;
}

OKT_INLINE inline Real80 abs(Real80 x) { return __builtin_fabsl(x); }

// Square root by the processor: correctly rounded, and by itself right for zeros, infinities, NaNs and negative
// arguments, which give a NaN with the invalid flag.
OKT_INLINE inline Real80 sqrt(Real80 x) {
    asm("fsqrt" : "+t"(x));
    return x;
}

// Either value by a move under a condition instead of a branch.
OKT_INLINE inline Real80 select(bool condition, Real80 whenSet, Real80 otherwise) {
    asm("testb %2, %2\n\tfcmovne %1, %0" : "+t"(otherwise) : "f"(whenSet), "q"(condition) : "cc");
    return otherwise;
}

// The significand as a number in [1, 2), by an integer load; every step is exact.
inline Real80 significandOf(Real80Bits bits) {
    return (static_cast<Real80>(static_cast<std::int64_t>(bits.significand)) + 0x1p64L) * 0x1p-63L;
}

}  // namespace okt
