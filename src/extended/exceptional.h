// Results of arguments that are tiny, huge or outside the domain, with the flags that belong to them.
#pragma once

#include "extended/sign_exponent.h"

namespace okt::extended {

// The tiny and the huge value of the format, for results that under- or overflow.
OKT_INLINE inline Real80 tiny() { return real80(0x0001, 0x8000000000000000U); }
OKT_INLINE inline Real80 huge() { return real80(0x7FFE, 0xFFFFFFFFFFFFFFFFU); }

// A NaN with the invalid flag, an infinity with the divide-by-zero flag.
inline Real80 invalid() { return opaque(Real80{infinity<Real64>()}) * 0.0; }
inline Real80 pole(Real80 sign) { return sign / opaque(Real80{0.0}); }

inline constexpr Real64 twoTo75 = 0x1p75;
inline constexpr Real64 twoToMinus75 = 0x1p-75;

// A tiny argument of an odd function: x, with the inexact flag, and underflow where x is subnormal.
OKT_INLINE inline Real80 tinyOdd(Real80 x) { return x == 0 ? x : (twoTo75 * x - x) * twoToMinus75; }

}  // namespace okt::extended
