// The 80-bit extended format: one sign bit, 15 exponent bits (0x3FFF is 1.0), 64 significand bits with the leading
// one written out. Values live on the stack of the x87 unit; the functions here reach their bits through memory.
#pragma once

#include "oktvm.h"

#include <bit>
#include <cstdint>

namespace okt {

using Real80 = long double;
static_assert(__LDBL_MANT_DIG__ == 64, "the extended kernels need 64 significand bits");

struct Bits80 {
    std::uint64_t significand;
    std::uint16_t signExponent;
};

// A Real80 in its 16-byte slot of memory.
union Slot80 {
    Real80 value;
    Bits80 bits;
};

// Each field is read by a load of its own width: a wider one would have to wait for the store of ten bytes to retire.
inline std::uint64_t significandOf(Real80 x) {
    Slot80 slot;
    slot.value = x;
    return static_cast<const volatile std::uint64_t&>(slot.bits.significand);
}

inline std::uint16_t signExponentOf(Real80 x) {
    Slot80 slot;
    slot.value = x;
    return static_cast<const volatile std::uint16_t&>(slot.bits.signExponent);
}

inline Bits80 bitsOf(Real80 x) {
    Slot80 slot;
    slot.value = x;
    return {static_cast<const volatile std::uint64_t&>(slot.bits.significand),
            static_cast<const volatile std::uint16_t&>(slot.bits.signExponent)};
}

inline Real80 real80(std::uint16_t signExponent, std::uint64_t significand) {
    Slot80 slot;
    slot.bits.significand = significand;
    slot.bits.signExponent = signExponent;
    return slot.value;
}

// 2^k for the exponents of normal numbers, -16382 to 16383.
inline Real80 powerOfTwoExt(int k) {
    return real80(static_cast<std::uint16_t>(k + 0x3FFF), 0x8000000000000000U);
}

// 2^k for the exponents of normal Real64, -1022 to 1023.
inline Real64 powerOfTwo64(int k) {
    return std::bit_cast<Real64>(static_cast<std::uint64_t>(k + 1023) << 52);
}

// Sign and biased exponent in the 16 bits of Real80, for both types. A Real64 needs no trip through an 80-bit slot; its
// infinities and NaNs get the exponent 0x7FFF, its subnormals that just below its smallest normal.
inline std::uint32_t signExponent(Real80 x) { return signExponentOf(x); }
inline std::uint32_t signExponent(Real64 x) {
    auto field = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(x) >> 52);
    std::uint32_t exponent = field & 0x7FF;
    return (field >> 11 << 15) | (exponent == 0x7FF ? 0x7FFFU : exponent + (0x3FFF - 0x3FF));
}

// The exponent alone: the kernels choose their tiers by it.
template <class T>
inline int extExponent(T x) {
    return static_cast<int>(signExponent(x) & 0x7FFF);
}

template <class T>
inline bool signOf(T x) {
    return signExponent(x) >> 15 != 0;
}
template <>
inline bool signOf(Real64 x) {
    return std::bit_cast<std::uint64_t>(x) >> 63 != 0;
}

inline Real80 absExt(Real80 x) { return __builtin_fabsl(x); }
inline Real64 absReal64(Real64 x) { return std::bit_cast<Real64>(std::bit_cast<std::uint64_t>(x) & 0x7FFFFFFFFFFFFFFFU); }

// x with its sign turned round where negate is set, without a branch.
inline Real80 negateIf(bool negate, Real80 x) {
    static constexpr Real64 factor[2] = {1.0, -1.0};
    return x * factor[negate];
}

// The value as the compiler must take it: unknown until run time, so that an operation on it really happens
// and raises its flags.
inline Real80 opaque(Real80 x) {
    asm("" : "+t"(x));
    return x;
}
inline Real64 opaque(Real64 x) {
    asm("" : "+x"(x));
    return x;
}

// Ends a value that is computed for its flags alone.
inline void discard(Real64 x) { asm volatile("" ::"x"(x)); }
inline void discard(Real80 x) {
    asm volatile("" : "+t"(x));
}

} // namespace okt
