// tanh(x + iy) = (sinh x*cosh x + i*sin y*cos y)/(sinh^2 x + cos^2 y), the written steps on one element.
#pragma once

#include "complex/element.h"
#include "extended/sin_cos.h"
#include "extended/sinh_cosh.h"
#include "extended/tan.h"

namespace okt::complex {

// A zero, infinite or NaN x, or such a y but for the zero.
inline Complex64 tanhSpecial(Real64 x, Real64 y) {
    if (isInfinite(x)) {
        Real64 one = withSign(1.0, x);
        if (isNaN(y)) {
            keepFlags(squared(y));
            return {one, 0.0};
        }
        if (isInfinite(y) || biasedExponent(y) < 0x3FF) {
            if (isSubnormal(y)) {
                keepFlags(opaque(y) + y);
            }
            return {one, withSign(0.0, y)};
        }
        auto [s, c] = extended::sinCos(y);
        return {one, withSign(0.0, narrow(s * c))};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        if (isZero(y)) {
            return {square, y};
        }
        return {square, isNaN(y) ? squared(y) : square};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return {square, square};
    }
    if (isZero(y)) {
        return {x, y};
    }
    Real64 im = narrow(extended::tan(y));
    return {isInfinite(y) ? im : x, im};
}

// |x| >= 2^9: one, and a zero with the sign of sin y*cos y.
inline Complex64 tanhExtreme(Real64 x, Real64 y) {
    Real64 re = opaque(withSign(1.0, x)) - smallestNormal<Real64>();
    if (isZero(y)) {
        return {re, y};
    }
    Real64 sign = y;
    if (isSubnormal(y)) {
        keepFlags(opaque(y) + y);
    } else {
        auto [s, c] = extended::sinCos(y);
        sign = narrow(s * c);
    }
    raiseUnderflow();
    return {re, withSign(0.0, sign)};
}

inline Complex64 tanhElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(tanhSpecial(z.re, z.im));
    }
    if (biasedExponent(z.re) >= 0x408) [[unlikely]] {
        return closed(tanhExtreme(z.re, z.im));
    }
    auto [s, c] = extended::sinCos(z.im);
    auto [sh, ch] = extended::sinhCosh(z.re);
    Real80 d = sh * sh + c * c;
    return closed({narrow(sh * ch / d), narrow(c * s / d)});
}

}  // namespace okt::complex
