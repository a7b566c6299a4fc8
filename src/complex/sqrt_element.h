// Principal square root, the written steps on one element.
#pragma once

#include "complex/element.h"
#include "extended/sign_exponent.h"

namespace okt::complex {

// A zero, infinite or NaN part, in the order of the contract.
inline Complex64 sqrtSpecial(Real64 x, Real64 y) {
    if (isInfinite(y)) {
        return {infinity<Real64>(), y};
    }
    if (isInfinite(x)) {
        if (isNaN(y)) {
            return isNegative(x) ? Complex64{squared(y), infinity<Real64>()}
                                 : Complex64{infinity<Real64>(), squared(y)};
        }
        return isNegative(x) ? Complex64{0.0, withSign(x, y)} : Complex64{x, withSign(0.0, y)};
    }
    if (isNaN(x) || isNaN(y)) {
        Real64 nan = mulOrdered(x, y);
        return {nan, nan};
    }
    if (isZero(x)) {
        Real64 t = narrow(sqrt(0.5 * Real80{magnitude(y)}));
        return {t, withSign(t, y)};
    }
    if (isNegative(x)) {  // y is a zero from here on
        return {0.0, withSign(narrow(sqrt(-Real80{x})), y)};
    }
    return {narrow(sqrt(Real80{x})), y};
}

inline Complex64 sqrtElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(sqrtSpecial(z.re, z.im));
    }
    Real80 x = z.re, y = z.im;
    Real80 m = sqrt(x * x + y * y);
    // t is the part along the axis on whose side the point lies.
    Real80 t = sqrt(0.5 * m + 0.5 * abs(x));
    Real64 along = narrow(t);
    Real64 across = magnitude(narrow((0.5 * y) / t));
    bool left = isNegative(z.re);
    return closed({left ? across : along, withSign(left ? along : across, z.im)});
}

}  // namespace okt::complex
