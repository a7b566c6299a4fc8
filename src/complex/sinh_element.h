// sinh(x + iy) = sinh x*cos y + i*cosh x*sin y, the written steps on one element.
#pragma once

#include "complex/element.h"
#include "extended/sin_cos.h"
#include "extended/sinh_cosh.h"

namespace okt::complex {

// |x| >= 2^11 with a finite non-zero y: infinities of the right signs, with the overflow flag.
inline Complex64 sinhExtreme(Real64 x, Real64 y) {
    Real64 h = opaque(largestFinite<Real64>()) * largestFinite<Real64>();
    Real80 c = extended::cos(y);
    return {narrow(c * h * x), biasedExponent(y) == 0 ? h * y : narrow(extended::sin(y) * h)};
}

// Everything but a finite non-zero x with a finite non-zero y.
inline Complex64 sinhSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        return {narrow(extended::sinh(x)), y};
    }
    if (!isFinite(y)) {
        Real64 im = narrow(extended::sin(y));
        return {isFiniteNonzero(x) ? im * x : narrow(extended::sinh(x)), im};
    }
    if (isZero(x)) {
        Complex64 result = {narrow(extended::cos(y) * x), biasedExponent(y) == 0 ? y : narrow(extended::sin(y))};
        raiseInexact();
        return result;
    }
    Real64 square = squared(x);
    if (isNaN(x)) {
        return {square, square};
    }
    if (biasedExponent(y) < 0x3FF) {
        return {x, square * y};
    }
    auto [s, c] = extended::sinCos(y);
    return {narrow(c * x), narrow(square * s)};
}

inline Complex64 sinhElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(sinhSpecial(z.re, z.im));
    }
    if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        return closed(sinhExtreme(z.re, z.im));
    }
    auto [s, c] = extended::sinCos(z.im);
    auto [sh, ch] = extended::sinhCosh(z.re);
    return closed({narrow(sh * c), narrow(ch * s)});
}

}  // namespace okt::complex
