// asinh z, the written steps on one element: those of acos and acosh with the roles of the parts exchanged.
#pragma once

#include "complex/branch_points.h"
#include "extended/inverse_hyper.h"

namespace okt::complex {

// A zero, infinite or NaN part.
inline Complex64 asinhSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        return {narrow(extended::asinh(x)), y};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return {isNaN(x) ? squared(x) : isInfinite(x) ? x : square, square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return {isInfinite(y) ? squared(y) : square, square};
    }
    if (isZero(x)) {
        if (isBelowOne(y)) {
            return {x, narrow(extended::asin(y))};
        }
        return {narrow(extended::acosh(magnitude(y)) * Real80{withSign(1.0, x)}), withSign(halfPi64, y)};
    }
    if (isInfinite(x)) {
        return {x, withSign(isInfinite(y) ? quarterPi64 : 0.0, y)};
    }
    return {withSign(infinity<Real64>(), x), withSign(halfPi64, y)};
}

inline Complex64 asinhElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(asinhSpecial(z.re, z.im));
    }
    Distances d = distances(magnitude(z.im), magnitude(z.re));
    Logarithm start = startLogarithm(d);
    Real80 angle;
    if (d.a <= 0xE666666666666666p-64L * d.A) {  // 0.9
        angle = extended::asin(d.a / d.A);
    } else {
        Real80 v = otherLeg(d);
        angle = extended::atan2(d.a, d.a > 1.0 ? d.b * v : v);
    }
    return closed({withSign(narrow(finishLogarithm(start, d)), z.re), withSign(narrow(angle), z.im)});
}

}  // namespace okt::complex
