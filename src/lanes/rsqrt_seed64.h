// The approximation of 1/sqrt carried to Real64.
#pragma once

#include "lanes/seeds.h"

namespace okt {

// 1/sqrt(x) to 12 bits, 21 significant bits and zeros below, for positive normal x. The approximation is taken of the
// significand with exponent 0 or 1, whichever leaves an even rest, which is halved by a shift.
template <int N>
inline F64<N> rsqrtSeed(F64<N> x) {
    const U32<N> high = packHighWords(asBits(x));
    const U32<N> significand = (packHighWords(asBits(x) << 3) & U32<N>(0x00FFFFFF)) ^ U32<N>(0x00800000);
    const U32<N> r = asBits(rsqrtSeedOfNormal(asReal(significand + U32<N>(0x3F800000))));
    const U32<N> evenExponent = (high - U32<N>(0x00100000)) & U32<N>(0xFFE00000);
    return asReal(withHighWords((r >> 3) + U32<N>(0x57F00000) - (evenExponent >> 1)));
}

}  // namespace okt
