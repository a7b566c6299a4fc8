// acos z, the written steps on one element.
#pragma once

#include "complex/branch_points.h"
#include "extended/inverse_hyper.h"

namespace okt::complex {

// A zero, infinite or NaN part.
inline Complex64 acosSpecial(Real64 x, Real64 y) {
    if (isZero(x)) {
        return {halfPi64, negatedUnlessNaN(narrow(extended::asinh(y)))};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return isNaN(x) ? Complex64{squared(x), square} : Complex64{square, isInfinite(x) ? squared(x) : square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return isInfinite(y) ? Complex64{x + 0.0, 0.0 - y} : Complex64{square, square};
    }
    if (isZero(y)) {
        if (isBelowOne(x)) {
            return {narrow(extended::acos(x)), negated(y)};
        }
        return {halfTurn(x), withSign(narrow(extended::acosh(magnitude(x))), negated(y))};
    }
    if (isInfinite(x)) {
        return {isInfinite(y) ? diagonal(x) : halfTurn(x), withSign(squared(x), negated(y))};
    }
    return {halfPi64, 0.0 - y};
}

inline Complex64 acosElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(acosSpecial(z.re, z.im));
    }
    auto [angle, logarithm] = acosParts(z.re, z.im);
    Real64 im = narrow(logarithm);
    return closed({narrow(angle), isNegative(z.im) ? im : negated(im)});
}

}  // namespace okt::complex
