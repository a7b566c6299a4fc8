// Complex quotients: the first source times the conjugate of the second, times the reciprocal of the second's squared
// modulus. Complex32 in Real64; Complex64 in Real80 with compensated numerators. A zero divisor takes the course of the
// IEEE operations; there is no status.
#include "arith/complex_parts.h"

namespace okt {
namespace {

template <class R>
struct Quotient {
    R r;  // 1/|b|^2, kept while the parts are stored
    auto re(ComplexOf<R> a, ComplexOf<R> b) const { return timesConjRe(a, b) * r; }
    auto im(ComplexOf<R> a, ComplexOf<R> b) const { return timesConjImFlipped(a, b) * r; }
};

template <class V>
Quotient<Ordered<V>> quotientBy(ComplexOf<Ordered<V>> b) {
    const auto imSquared = b.im * b.im;
    return {Ordered<V>{V(1.0)} / (b.re * b.re + imSquared)};
}

OktStatus divComplex32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len) {
    return x87Frame<53>(len, src1, src2, dst, [=](OktStatus&) {
        complexLoop32(src1, src2, dst, len, [](auto b) { return quotientBy(b); });
    });
}

void divElement64(const Complex64* src1, const Complex64* src2, Complex64* dst) {
    const auto a = loadParts(src1);
    const auto b = loadParts(src2);
    const Real80 bre = b.re, bim = b.im;
    const Real80 r = 1.0L / (bim * bim + bre * bre);
    if (needsSimplePath(a, b)) [[unlikely]] {
        storeImaginary(dst, static_cast<Real64>(timesConjIm(extended(a), extended(b)) * r));
        // The imaginary part may have been stored into a source.
        const auto x = extended(loadParts(src1)), y = extended(loadParts(src2));
        storeReal(dst, static_cast<Real64>(r * timesConjRe(x, y)));
        return;
    }
    const auto x = split(a), y = split(b);
    const Real80 re = timesConjRe(x, y) * r;
    const Real80 im = timesConjIm(x, y) * r;
    storeReal(dst, static_cast<Real64>(re));
    storeImaginary(dst, static_cast<Real64>(im));
}

OktStatus divComplex64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len) {
    return x87Frame<64>(len, src1, src2, dst, [=](OktStatus&) {
        for (std::int32_t i = 0; i < len; ++i) divElement64(src1 + i, src2 + i, dst + i);
    });
}

}  // namespace

OKT_EXPORT(Div, 32fc, divComplex32)
OKT_EXPORT(Div, 64fc, divComplex64)

}  // namespace okt
