// ln z = ln|z| + i*arg z and its decimal sister, one element.
//
// ln|z| is half of ln s, s = a^2 + b^2; where s is within 0.03 of 1, half of ln(1 + w) with w = s - 1 from exact
// squares.
#pragma once

#include "complex/element.h"
#include "extended/atan.h"
#include "extended/ln.h"

namespace okt {

namespace ext {

inline constexpr Real80 log10E = 0xDE5BD8A937287195p-65L;

// A part that is infinite or a NaN; the angle of such a point is a NaN's or atan2's.
inline Complex64 complexLogSpecial(Real64 a, Real64 b, Real80 angleFactor) {
    if (!isNaN(a) && !isNaN(b)) {
        return {infinity<Real64>(), narrow(atan2Ext(b, a) * angleFactor)};
    }
    if (isNaN(a)) {
        return isInfinite(b) ? Complex64{squared(b), squared(a)} : Complex64{mulOrdered(b, a), squared(a)};
    }
    return isInfinite(a) ? Complex64{squared(a), squared(b)} : Complex64{squared(b), squared(b)};
}

// High part of x for an exact square, 31 bits of the significand.
OKT_EXT Real80 squareHead(Real80 x) {
    Real80 p = x * 0x1.000000008p+33;  // 2^33 + 1
    return p - (p - x);
}

// ln(a^2 + b^2).
OKT_EXT Real80 lnOfSquares(Real64 a, Real64 b) {
    auto [major, minor] = ordered(b, a);
    Real80 majorSquare = major * major, minorSquare = minor * minor;
    Real80 s = majorSquare + minorSquare;
    if (abs(s - 1.0) > 0x1.eb851eb851eb8p-6) {
        return logExt(s);
    }
    Real80 mh = squareHead(major), ml = major - mh;
    Real80 majorError = ((mh * mh - majorSquare) + 2.0 * mh * ml) + ml * ml;
    Real80 nh = squareHead(minor), nl = minor - nh;
    Real80 minorError = ((nh * nh - minorSquare) + 2.0 * nh * nl) + nl * nl;
    Real80 z = s - majorSquare;
    Real80 sumError = (majorSquare - (s - z)) + (minorSquare - z);
    return log1pExt((s - 1.0) + ((majorError + minorError) + sumError));
}

}  // namespace ext

inline Complex64 complexLogKernel(Complex64 z) {
    if (!isFinite(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(ext::complexLogSpecial(z.re, z.im, 1.0));
    }
    Real80 angle = atan2Ext(z.im, z.re);
    return closed({narrow(ext::lnOfSquares(z.re, z.im) * 0.5), narrow(angle)});
}

inline Complex64 complexLog10Kernel(Complex64 z) {
    using ext::log10E;
    if (!isFinite(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(ext::complexLogSpecial(z.re, z.im, log10E));
    }
    Real80 angle = atan2Ext(z.im, z.re);
    return closed({narrow(ext::lnOfSquares(z.re, z.im) * 0.5 * log10E), narrow(angle * log10E)});
}

}  // namespace okt
