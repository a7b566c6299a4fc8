// ln z = ln|z| + i*arg z, the written steps on one element.
//
// ln|z| is half of ln s, s = a^2 + b^2; where s is within 0.03 of 1, half of ln(1 + w) with w = s - 1 from exact
// squares.
#pragma once

#include "complex/element.h"
#include "extended/atan.h"
#include "extended/ln.h"

#include <algorithm>

namespace okt::complex {

// A part that is infinite or a NaN; the angle of such a point is a NaN's or atan2's.
inline Complex64 lnSpecial(Real64 a, Real64 b, Real80 angleFactor) {
    if (!isNaN(a) && !isNaN(b)) {
        return {infinity<Real64>(), narrow(extended::atan2(b, a) * angleFactor)};
    }
    if (isNaN(a)) {
        return isInfinite(b) ? Complex64{squared(b), squared(a)} : Complex64{mulOrdered(b, a), squared(a)};
    }
    return isInfinite(a) ? Complex64{squared(a), squared(b)} : Complex64{squared(b), squared(b)};
}

// High part of x for an exact square, 31 bits of the significand.
OKT_INLINE inline Real80 squareHead(Real80 x) {
    Real80 p = x * 0x1.000000008p+33;  // 2^33 + 1
    return p - (p - x);
}

// The magnitudes of two finite values in order. No branch: it would not be foreseen.
struct Ordered {
    Real80 larger, smaller;
};

OKT_INLINE inline Ordered ordered(Real64 y, Real64 x) {
    std::uint64_t a = asBits(magnitude(y)), b = asBits(magnitude(x));
    return {bits64(std::max(a, b)), bits64(std::min(a, b))};
}

// ln(a^2 + b^2).
OKT_INLINE inline Real80 lnOfSquares(Real64 a, Real64 b) {
    auto [major, minor] = ordered(b, a);
    Real80 majorSquare = major * major, minorSquare = minor * minor;
    Real80 s = majorSquare + minorSquare;
    if (abs(s - 1.0) > 0x1.eb851eb851eb8p-6) {
        return extended::ln(s);
    }
    Real80 mh = squareHead(major), ml = major - mh;
    Real80 majorError = ((mh * mh - majorSquare) + 2.0 * mh * ml) + ml * ml;
    Real80 nh = squareHead(minor), nl = minor - nh;
    Real80 minorError = ((nh * nh - minorSquare) + 2.0 * nh * nl) + nl * nl;
    Real80 z = s - majorSquare;
    Real80 sumError = (majorSquare - (s - z)) + (minorSquare - z);
    return extended::log1p((s - 1.0) + ((majorError + minorError) + sumError));
}

// Behind a call the parts would go through memory one by one and come back as a pair, which waits for the stores.
OKT_INLINE inline Complex64 lnElement(Complex64 z) {
    if (!isFinite(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(lnSpecial(z.re, z.im, 1.0));
    }
    // Hidden, so that no part gets to the x87 unit before it is known to be finite: a signalling NaN raises invalid
    // there.
    Real64 re = opaque(z.re), im = opaque(z.im);
    Real80 angle = extended::atan2(im, re);
    return closed({narrow(lnOfSquares(re, im) * 0.5), narrow(angle)});
}

}  // namespace okt::complex
