// acosh z, the written steps on one element.
#pragma once

#include "complex/branch_points.h"
#include "extended/inverse_hyper.h"

namespace okt::complex {

// A zero, infinite or NaN part.
inline Complex64 acoshSpecial(Real64 x, Real64 y) {
    if (isNaN(y)) {
        Real64 square = squared(y);
        return {isNaN(x) || isInfinite(x) ? squared(x) : square, square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return isInfinite(y) ? Complex64{squared(y), x + 0.0} : Complex64{square, square};
    }
    if (isZero(y)) {
        if (isBelowOne(x)) {
            return {0.0, withSign(narrow(extended::acos(x)), y)};
        }
        return {narrow(extended::acosh(magnitude(x))), withSign(halfTurn(x), y)};
    }
    if (isZero(x)) {
        return {narrow(extended::asinh(magnitude(y))), narrow(extended::atan2(y, x))};
    }
    if (isInfinite(x)) {
        return {squared(x), withSign(isInfinite(y) ? diagonal(x) : halfTurn(x), y)};
    }
    return {squared(y), withSign(halfPi64, y)};
}

inline Complex64 acoshElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(acoshSpecial(z.re, z.im));
    }
    auto [angle, logarithm] = acosParts(z.re, z.im);
    return closed({narrow(logarithm), withSign(narrow(angle), z.im)});
}

}  // namespace okt::complex
