// cosh(x + iy) = cosh x*cos y + i*sinh x*sin y, the written steps on one element.
#pragma once

#include "complex/element.h"
#include "extended/sin_cos.h"
#include "extended/sinh_cosh.h"

namespace okt::complex {

// |x| >= 2^11 with a finite non-zero y: infinities of the right signs, with the overflow flag.
inline Complex64 coshExtreme(Real64 x, Real64 y) {
    Real64 h = opaque(largestFinite<Real64>()) * largestFinite<Real64>();
    Real80 c = extended::cos(y);
    Real64 g = h * x;
    return {narrow(c * h), biasedExponent(y) == 0 ? g * y : narrow(g * extended::sin(y))};
}

// Everything but a finite non-zero x with a finite non-zero y.
inline Complex64 coshSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        Real64 re = narrow(extended::cosh(x));
        return {re, isNaN(x) || !isNegative(x) ? y : negated(y)};
    }
    if (isZero(x)) {
        Real64 re = narrow(extended::cos(y));
        if (isNaN(y)) {
            return {re, negated(x)};
        }
        if (isInfinite(y)) {
            return {re, isNegative(y) ? negated(x) : x};
        }
        raiseInexact();
        return {re, biasedExponent(y) == 0 ? x * y : narrow(extended::sin(y) * x)};
    }
    if (isFinite(y)) {
        Real64 square = squared(x);
        if (isNaN(x)) {
            return {square, square};
        }
        if (biasedExponent(y) < 0x3FF) {
            return {square, x * y};
        }
        auto [s, c] = extended::sinCos(y);
        return {narrow(square * c), narrow(s * x)};
    }
    if (isFinite(x)) {
        return {narrow(extended::cos(y)), narrow(extended::sin(y))};
    }
    return {narrow(extended::cosh(x)), narrow(extended::sin(y))};
}

inline Complex64 coshElement(Complex64 z) {
    Complex64 result;
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        result = coshSpecial(z.re, z.im);
    } else if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        result = coshExtreme(z.re, z.im);
    } else {
        auto [s, c] = extended::sinCos(z.im);
        auto [sh, ch] = extended::sinhCosh(z.re);
        result = {narrow(ch * c), narrow(sh * s)};
    }
    if (isSubnormal(result.im)) [[unlikely]] {
        raiseUnderflow();
    }
    return result;
}

}  // namespace okt::complex
