// The processor's approximation of 1/sqrt carried to Real64.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// 1/sqrt(x) to 12 bits, 21 significant bits and zeros below, for positive normal x. The approximation is taken of the
// significand with exponent 0 or 1, whichever leaves an even rest, which is halved by a shift.
template <int N>
inline F64<N> rsqrtSeed(F64<N> x) {
    const U64<N> bits = asBits(x);
    const U64<N> significand = ((bits << 3) & U64<N>(0x00FFFFFF00000000)) ^ U64<N>(0x0080000000000000);
    const U64<N> r = rsqrtSeedHigh(significand + U64<N>(0x3F80000000000000));
    const U64<N> evenExponent = (bits - U64<N>(0x0010000000000000)) & U64<N>(0xFFE0000000000000);
    return asReal(((r >> 3) & U64<N>(0xFFFFFFFF00000000)) + U64<N>(0x57F0000000000000) - (evenExponent >> 1));
}

}  // namespace okt
