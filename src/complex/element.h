// What the written steps of complex functions share. They take one Complex64 and give one; their arithmetic is Real80
// unless they say otherwise, and a part of the result is rounded once, when it becomes a Real64.
#pragma once

#include "lanes/ordered_scalar.h"
#include "lanes/pattern.h"
#include "lanes/real80.h"

namespace okt::complex {

inline Real64 narrow(Real80 x) { return static_cast<Real64>(x); }

// x*x in Real64: quietens a NaN, makes an infinity positive.
inline Real64 squared(Real64 x) { return x * x; }

inline void raiseUnderflow() { keepFlags(opaque(smallestNormal<Real64>()) * smallestNormal<Real64>()); }
inline void raiseInexact() { keepFlags(opaque(largestFinite<Real64>()) - smallestNormal<Real64>()); }

// Ends the steps: a subnormal part of the result raises the underflow flag.
inline Complex64 closed(Complex64 result) {
    if (isSubnormal(result.re) || isSubnormal(result.im)) [[unlikely]] {
        raiseUnderflow();
    }
    return result;
}

inline constexpr Real64 pi64 = 0x1.921fb54442d18p+1;
inline constexpr Real64 halfPi64 = 0x1.921fb54442d18p+0;
inline constexpr Real64 quarterPi64 = 0x1.921fb54442d18p-1;
inline constexpr Real64 threeQuarterPi64 = 0x1.2d97c7f3321d2p+1;

// The sign turned, but a NaN keeps its bits: the quarter turns from one function to another never touch a NaN.
inline Real64 negatedUnlessNaN(Real64 x) { return isNaN(x) ? x : negated(x); }

// i*z and -i*z, a NaN keeping its sign.
inline Complex64 turned(Complex64 z) { return {negatedUnlessNaN(z.im), z.re}; }
inline Complex64 turnedBack(Complex64 z) { return {z.im, negatedUnlessNaN(z.re)}; }

}  // namespace okt::complex
