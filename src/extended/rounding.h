// Real80 cut and rounded to fewer bits, so that sums and products of the pieces are exact.
#pragma once

#include "lanes/real80.h"

#include <cstdint>

namespace okt::extended {

// Adding and taking away 1.5*2^k rounds to a multiple of 2^(k-63).
inline constexpr Real64 toMultiple31 = 0x1.8p+32;  // multiples of 2^-31
inline constexpr Real64 toMultiple40 = 0x1.8p+23;  // multiples of 2^-40
inline constexpr Real64 toMultiple11 = 0x1.8p+52;  // multiples of 2^-11
inline constexpr Real64 toInteger = 0x1.8p+63;

// x rounded to a multiple of the given magic constant's last place.
OKT_INLINE inline Real80 roundBy(Real80 magic, Real80 x) { return (x + magic) - magic; }

// The leading 31 or 32 bits of x, whatever its magnitude.
OKT_INLINE inline Real80 leading31(Real80 x) {
    Real80 big = x * toMultiple31;
    return (x + big) - big;
}

// An integer-valued x as an integer. It is exact in Real64, so the conversion does not depend on a rounding mode.
OKT_INLINE inline std::int64_t asInteger(Real80 x) { return static_cast<std::int64_t>(static_cast<Real64>(x)); }

// The leading 32 bits of x: the products of two such parts are exact.
OKT_INLINE inline Real80 leading32(Real80 x) {
    Real80 p = x * 4294967297.0;
    return p - (p - x);
}

}  // namespace okt::extended
