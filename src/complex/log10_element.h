// log z = ln z*log e, the written steps on one element.
#pragma once

#include "complex/ln_element.h"

namespace okt::complex {

inline constexpr Real80 log10E = 0xDE5BD8A937287195p-65L;

OKT_INLINE inline Complex64 log10Element(Complex64 z) {
    if (!isFinite(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(lnSpecial(z.re, z.im, log10E));
    }
    Real80 angle = extended::atan2(z.im, z.re);
    return closed({narrow(lnOfSquares(z.re, z.im) * 0.5 * log10E), narrow(angle * log10E)});
}

}  // namespace okt::complex
