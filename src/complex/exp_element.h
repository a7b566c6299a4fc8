// e^(a + ib) = e^a*(cos b + i*sin b), one element.
#pragma once

#include "complex/element.h"
#include "extended/exp.h"
#include "extended/sin_cos.h"

namespace okt {

namespace ext {

// Arguments of which a part is zero, infinite or a NaN.
inline Complex64 complexExpSpecial(Complex64 z) {
    Real64 a = z.re, b = z.im;
    if (isZero(b)) {
        return {narrow(expExt(a)), b};
    }
    if (isFinite(b)) {  // a is zero, infinite or a NaN
        Real80 e = expExt(a);
        bool plain = biasedExponent(b) == 0 && !isZero(a);
        return {narrow(e * cosExt(b)), narrow(plain ? e * b : e * sinExt(b))};
    }
    if (isFinite(a)) {
        Real64 nan = narrow(sinExt(b));
        return {nan, nan};
    }
    if (isNaN(a)) {
        Real64 square = squared(a);
        return {square, mulOrdered(b, square)};
    }
    if (isNegative(a)) {
        return {0.0, isNaN(b) ? 0.0 : withSign(0.0, b)};
    }
    return {narrow(expExt(a)), narrow(sinExt(b))};
}

// |a| >= 2^11: the exponential over- or underflows by itself.
inline Complex64 complexExpExtreme(Complex64 z) {
    Real64 a = z.re, b = z.im;
    Real80 scale = powerOfTwoExt(isNegative(a) ? -16382 : 16383);
    Real80 e = opaque(scale) * scale;
    return {narrow(cosExt(b) * e), narrow(biasedExponent(b) == 0 ? e * b : sinExt(b) * e)};
}

}  // namespace ext

inline Complex64 complexExpKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexExpSpecial(z));
    }
    if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        return closed(ext::complexExpExtreme(z));
    }
    Real80 e = expExt(z.re);
    auto [s, c] = sinCosExt(z.im);
    return closed({narrow(e * c), narrow(e * s)});
}

}  // namespace okt
