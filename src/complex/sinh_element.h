// Hyperbolic and trigonometric functions, one element. The trigonometric ones are quarter turns of the hyperbolic.
#pragma once

#include "complex/element.h"
#include "extended/exp.h"
#include "extended/sin_cos.h"

namespace okt {

namespace ext {

// |x| >= 2^11 with a finite non-zero y: infinities of the right signs, with the overflow flag.
inline Complex64 complexCoshExtreme(Real64 x, Real64 y) {
    Real64 h = opaque(largestFinite<Real64>()) * largestFinite<Real64>();
    Real80 c = cosExt(y);
    Real64 g = h * x;
    return {narrow(c * h), biasedExponent(y) == 0 ? g * y : narrow(g * sinExt(y))};
}

inline Complex64 complexSinhExtreme(Real64 x, Real64 y) {
    Real64 h = opaque(largestFinite<Real64>()) * largestFinite<Real64>();
    Real80 c = cosExt(y);
    return {narrow(c * h * x), biasedExponent(y) == 0 ? h * y : narrow(sinExt(y) * h)};
}

// Everything but a finite non-zero x with a finite non-zero y.
inline Complex64 complexCoshSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        Real64 re = narrow(coshExt(x));
        return {re, isNaN(x) || !isNegative(x) ? y : negated(y)};
    }
    if (isZero(x)) {
        Real64 re = narrow(cosExt(y));
        if (isNaN(y)) {
            return {re, negated(x)};
        }
        if (isInfinite(y)) {
            return {re, isNegative(y) ? negated(x) : x};
        }
        raiseInexact();
        return {re, biasedExponent(y) == 0 ? x * y : narrow(sinExt(y) * x)};
    }
    if (isFinite(y)) {
        Real64 square = squared(x);
        if (isNaN(x)) {
            return {square, square};
        }
        if (biasedExponent(y) < 0x3FF) {
            return {square, x * y};
        }
        auto [s, c] = sinCosExt(y);
        return {narrow(square * c), narrow(s * x)};
    }
    if (isFinite(x)) {
        return {narrow(cosExt(y)), narrow(sinExt(y))};
    }
    return {narrow(coshExt(x)), narrow(sinExt(y))};
}

inline Complex64 complexSinhSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        return {narrow(sinhExt(x)), y};
    }
    if (!isFinite(y)) {
        Real64 im = narrow(sinExt(y));
        return {isFiniteNonzero(x) ? im * x : narrow(sinhExt(x)), im};
    }
    if (isZero(x)) {
        Complex64 result = {narrow(cosExt(y) * x), biasedExponent(y) == 0 ? y : narrow(sinExt(y))};
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
    auto [s, c] = sinCosExt(y);
    return {narrow(c * x), narrow(square * s)};
}

// A zero, infinite or NaN x, or such a y but for the zero.
inline Complex64 complexTanhSpecial(Real64 x, Real64 y) {
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
        auto [s, c] = sinCosExt(y);
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
    Real64 im = narrow(tanExt(y));
    return {isInfinite(y) ? im : x, im};
}

// |x| >= 2^9: one, and a zero with the sign of sin y*cos y.
inline Complex64 complexTanhExtreme(Real64 x, Real64 y) {
    Real64 re = opaque(withSign(1.0, x)) - smallestNormal<Real64>();
    if (isZero(y)) {
        return {re, y};
    }
    Real64 sign = y;
    if (isSubnormal(y)) {
        keepFlags(opaque(y) + y);
    } else {
        auto [s, c] = sinCosExt(y);
        sign = narrow(s * c);
    }
    raiseUnderflow();
    return {re, withSign(0.0, sign)};
}

}  // namespace ext

inline Complex64 complexCoshKernel(Complex64 z) {
    Complex64 result;
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        result = ext::complexCoshSpecial(z.re, z.im);
    } else if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        result = ext::complexCoshExtreme(z.re, z.im);
    } else {
        auto [s, c] = sinCosExt(z.im);
        auto [sh, ch] = sinhCoshExt(z.re);
        result = {narrow(ch * c), narrow(sh * s)};
    }
    if (isSubnormal(result.im)) [[unlikely]] {
        raiseUnderflow();
    }
    return result;
}

inline Complex64 complexSinhKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexSinhSpecial(z.re, z.im));
    }
    if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        return closed(ext::complexSinhExtreme(z.re, z.im));
    }
    auto [s, c] = sinCosExt(z.im);
    auto [sh, ch] = sinhCoshExt(z.re);
    return closed({narrow(sh * c), narrow(ch * s)});
}

inline Complex64 complexTanhKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFinite(z.im)) [[unlikely]] {
        return closed(ext::complexTanhSpecial(z.re, z.im));
    }
    if (biasedExponent(z.re) >= 0x408) [[unlikely]] {
        return closed(ext::complexTanhExtreme(z.re, z.im));
    }
    auto [s, c] = sinCosExt(z.im);
    auto [sh, ch] = sinhCoshExt(z.re);
    Real80 d = sh * sh + c * c;
    return closed({narrow(sh * ch / d), narrow(c * s / d)});
}

inline Complex64 complexCosKernel(Complex64 z) { return complexCoshKernel(ext::turned(z)); }
inline Complex64 complexSinKernel(Complex64 z) { return ext::turnedBack(complexSinhKernel(ext::turned(z))); }
inline Complex64 complexTanKernel(Complex64 z) { return ext::turnedBack(complexTanhKernel(ext::turned(z))); }

}  // namespace okt
