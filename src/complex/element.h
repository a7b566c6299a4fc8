// What the scalar complex kernels share: classes of a part by its bit pattern, signs, operations done for their flags.
//
// A kernel takes one Complex64 and gives one; its arithmetic is Real80 unless it says otherwise, and a part of the
// result is rounded once, when it becomes a Real64.
#pragma once

#include "extended/sign_exponent.h"
#include "lanes/ordered_scalar.h"

#include <bit>
#include <cstdint>

namespace okt {

inline constexpr Real64 smallestNormal64 = 0x1p-1022;
inline constexpr Real64 largestFinite64 = 0x1.fffffffffffffp+1023;

inline std::uint64_t magnitudeOf(Real64 x) { return asBits(x) & 0x7FFFFFFFFFFFFFFFU; }
inline int exponentField(Real64 x) { return static_cast<int>(asBits(x) >> 52) & 0x7FF; }

inline bool isNaN(Real64 x) { return magnitudeOf(x) > 0x7FF0000000000000U; }
inline bool isInf(Real64 x) { return magnitudeOf(x) == 0x7FF0000000000000U; }
inline bool isZero(Real64 x) { return magnitudeOf(x) == 0; }
inline bool isFinite(Real64 x) { return magnitudeOf(x) < 0x7FF0000000000000U; }
inline bool isSubnormal(Real64 x) { return magnitudeOf(x) - 1 < 0x000FFFFFFFFFFFFFU; }
inline bool isFiniteNonzero(Real64 x) { return magnitudeOf(x) - 1 < 0x7FEFFFFFFFFFFFFFU; }

// The pattern of x with the sign bit of y, and with its own sign bit turned.
inline Real64 withSign(Real64 x, Real64 y) { return bits64(magnitudeOf(x) | (asBits(y) & 0x8000000000000000U)); }
inline Real64 negated(Real64 x) { return bits64(asBits(x) ^ 0x8000000000000000U); }

// The same, but a NaN keeps its bits: the quarter turns from one function to another never touch a NaN.
inline Real64 negatedUnlessNaN(Real64 x) { return isNaN(x) ? x : negated(x); }

inline Real64 narrow(Real80 x) { return static_cast<Real64>(x); }

// x*x in Real64: quietens a NaN, makes an infinity positive.
inline Real64 squared(Real64 x) { return x * x; }

inline void raiseUnderflow() { keepFlags(opaque(smallestNormal64) * smallestNormal64); }
inline void raiseInexact() { keepFlags(opaque(largestFinite64) - smallestNormal64); }

// Ends a kernel: a subnormal part of the result raises the underflow flag.
inline Complex64 closed(Complex64 result) {
    if (isSubnormal(result.re) || isSubnormal(result.im)) [[unlikely]] {
        raiseUnderflow();
    }
    return result;
}

namespace ext {

// i*z and -i*z, a NaN keeping its sign.
inline Complex64 turned(Complex64 z) { return {negatedUnlessNaN(z.im), z.re}; }
inline Complex64 turnedBack(Complex64 z) { return {z.im, negatedUnlessNaN(z.re)}; }

}  // namespace ext

inline constexpr Real64 pi64 = 0x1.921fb54442d18p+1;
inline constexpr Real64 halfPi64 = 0x1.921fb54442d18p+0;
inline constexpr Real64 quarterPi64 = 0x1.921fb54442d18p-1;
inline constexpr Real64 threeQuarterPi64 = 0x1.2d97c7f3321d2p+1;

}  // namespace okt
