// Quotients.
//
// Real: one IEEE division an element, under the caller's MXCSR. A finite element divided by a
// zero warns: on Real32 the divisor is tested by its bits, on Real64 by a comparison with 0.0
// after the division, so that a subnormal divisor counts as a zero there when the caller's
// denormals-are-zero is set. Elements are divided side by side where no divisor can warn.
//
// Complex: the first source times the conjugate of the second, times the reciprocal of the second's squared
// modulus. Complex32 in Real64; Complex64 in Real80 with compensated numerators. A zero divisor takes the course of the
// IEEE operations; there is no status.
//
// GCC: -fno-tree-slp-vectorize (1.00)
#include "exports/Div.h"
#include "arith/complex_parts.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

Real32 divElement(Real32 x, Real32 y, OktStatus& status) {
    const Real32 quotient = x / y;
    if (isZero(y) && isFinite(x)) {
        status = oktStatusSingularity;
        raiseStatusFlag(status);
    }
    return quotient;
}

Real64 divElement(Real64 x, Real64 y, OktStatus& status) {
    const Real64 quotient = x / y;
    if (isFinite(x) && isFinite(y) && y == 0.0) {
        status = oktStatusSingularity;
        raiseStatusFlag(status);
    }
    return quotient;
}

// Whether a divisor of the block may warn. The subnormal ones of Real64 are
// left to the element routine, whose comparison can raise the denormal flag.
template <int N>
bool mayWarn(F32<N> divisor) {
    const U32<N> bits = asBits(divisor);
    return any(bits + bits == U32<N>(0));
}
template <int N>
bool mayWarn(F64<N> divisor) {
    return any(greaterSigned(U32<N>(0x00100000), packHighWords(asBits(divisor)) & U32<N>(0x7FFFFFFF)));
}

template <class T>
void divReal(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus& status) {
    packedElementLoop<4, 8>(
        src1, src2, dst, len,
        []<int N>(std::integral_constant<int, N>, const T* x, const T* y, T* quotient) {
            const auto divisor = Vec<T, N>::load(y);
            if (mayWarn(divisor)) [[unlikely]]
                return false;
            (Vec<T, N>::load(x) / divisor).store(quotient);
            return true;
        },
        [](T x, T y, OktStatus& s) { return divElement(x, y, s); }, status);
}

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

void divComplex32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len, OktStatus&) {
    complexLoop32(src1, src2, dst, len, [](auto b) { return quotientBy(b); });
}

template <class R>
struct Quotient64 {
    R r;
    explicit Quotient64(ComplexOf<R> b) : r(R(1.0) / (b.im * b.im + b.re * b.re)) {}
    static auto re(auto a, auto b) { return timesConjRe(a, b); }
    static auto im(auto a, auto b) { return timesConjIm(a, b); }
    R finish(R numerator) const { return numerator * r; }
};

// Says whether the numerators are compensated.
[[gnu::noinline]] bool divElement64(const Complex64* src1, const Complex64* src2, Complex64* dst) {
    const auto a = loadParts(src1);
    const auto b = loadParts(src2);
    const Quotient64<Real80> quotient(extended(b));
    const auto part = [&](Real80 numerator) { return static_cast<Real64>(quotient.finish(numerator)); };
    if (needsSimplePath(a, b)) {
        storeImaginary(dst, part(quotient.im(extended(a), extended(b))));
        // The imaginary part may have been stored into a source.
        storeReal(dst, part(quotient.re(extended(loadParts(src1)), extended(loadParts(src2)))));
        return false;
    }
    const bool compensates = !hasShortParts(a, b);
    const auto storeParts = [&](auto x, auto y) {
        const Real64 re = part(quotient.re(x, y)), im = part(quotient.im(x, y));
        storeReal(dst, re);
        storeImaginary(dst, im);
    };
    if (compensates)
        storeParts(split(a), split(b));
    else
        storeParts(extended(a), extended(b));
    return compensates;
}

void divComplex64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len, OktStatus&) {
    complexLoop64<Quotient64>(src1, src2, dst, len, divElement64);
}

}  // namespace

OKT_EXPORT(Div, 32f, divReal)
OKT_EXPORT(Div, 64f, divReal)
OKT_EXPORT(Div, 32fc, divComplex32)
OKT_EXPORT(Div, 64fc, divComplex64)

}  // namespace okt
