// e^(a + ib) = e^a*(cos b + i*sin b), the written steps on one element.
#pragma once

#include "complex/element.h"
#include "extended/exp.h"
#include "extended/sin_cos.h"

namespace okt::complex {

// Arguments of which a part is zero, infinite or a NaN.
inline Complex64 expSpecial(Complex64 z) {
    Real64 a = z.re, b = z.im;
    if (isZero(b)) {
        return {narrow(extended::exp(a)), b};
    }
    if (isFinite(b)) {  // a is zero, infinite or a NaN
        Real80 e = extended::exp(a);
        bool plain = biasedExponent(b) == 0 && !isZero(a);
        return {narrow(e * extended::cos(b)), narrow(plain ? e * b : e * extended::sin(b))};
    }
    if (isFinite(a)) {
        Real64 nan = narrow(extended::sin(b));
        return {nan, nan};
    }
    if (isNaN(a)) {
        Real64 square = squared(a);
        return {square, mulOrdered(b, square)};
    }
    if (isNegative(a)) {
        return {0.0, isNaN(b) ? 0.0 : withSign(0.0, b)};
    }
    return {narrow(extended::exp(a)), narrow(extended::sin(b))};
}

// |a| >= 2^11: the exponential over- or underflows by itself.
inline Complex64 expExtreme(Complex64 z) {
    Real64 a = z.re, b = z.im;
    Real80 scale = extended::powerOfTwo80(isNegative(a) ? -16382 : 16383);
    Real80 e = opaque(scale) * scale;
    return {narrow(extended::cos(b) * e), narrow(biasedExponent(b) == 0 ? e * b : extended::sin(b) * e)};
}

inline Complex64 expElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(expSpecial(z));
    }
    if (biasedExponent(z.re) >= 0x40A) [[unlikely]] {
        return closed(expExtreme(z));
    }
    Real80 e = extended::exp(z.re);
    auto [s, c] = extended::sinCos(z.im);
    return closed({narrow(e * c), narrow(e * s)});
}

}  // namespace okt::complex
