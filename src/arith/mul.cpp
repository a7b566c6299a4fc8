// Products. Real: one IEEE multiplication, of two NaNs the first source's comes through. Complex32: in
// Real64, each part rounded once. Complex64: exact products and compensated sums in Real80, each part rounded
// once, so that a part that cancels keeps all its bits; where plain sums are seen to come to the same, these.
#include "arith/complex_parts.h"
#include "arith/elementwise.h"

namespace okt {
namespace {

template <class T>
OktStatus mulReal(const T* src1, const T* src2, T* dst, std::int32_t len) {
    return elementwise(src1, src2, dst, len, [](auto a, auto b) { return mulOrdered(a, b); });
}

struct Times {
    static auto re(auto a, auto b) { return timesRe(a, b); }
    static auto im(auto a, auto b) { return timesIm(a, b); }
};

OktStatus mulComplex32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len) {
    return x87Frame<53>(len, src1, src2, dst,
                        [=](OktStatus&) { complexLoop32(src1, src2, dst, len, [](auto) { return Times{}; }); });
}

OktStatus mulComplex64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len) {
    return complexProduct64<Times>(src1, src2, dst, len);
}

}  // namespace

OKT_EXPORT(Mul, 32f, mulReal)
OKT_EXPORT(Mul, 64f, mulReal)
OKT_EXPORT(Mul, 32fc, mulComplex32)
OKT_EXPORT(Mul, 64fc, mulComplex64)

}  // namespace okt
