// Products. Real: one IEEE multiplication, of two NaNs the first source's comes through. Complex32: in
// Real64, each part rounded once. Complex64: exact products and compensated sums in Real80, each part rounded
// once, so that a part that cancels keeps all its bits; where plain sums are seen to come to the same, these.
//
// GCC: -fno-tree-slp-vectorize (0.98)
#include "exports/Mul.h"
#include "arith/complex_parts.h"
#include "arith/elementwise.h"

namespace okt {
namespace {

template <class T>
void mulReal(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus&) {
    elementwise(src1, src2, dst, len, [](auto a, auto b) { return mulOrdered(a, b); });
}

struct Times {
    static auto re(auto a, auto b) { return timesRe(a, b); }
    static auto im(auto a, auto b) { return timesIm(a, b); }
};

void mulComplex32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len, OktStatus&) {
    complexLoop32(src1, src2, dst, len, [](auto) { return Times{}; });
}

}  // namespace

OKT_EXPORT(Mul, 32f, mulReal)
OKT_EXPORT(Mul, 64f, mulReal)
OKT_EXPORT(Mul, 32fc, mulComplex32)
OKT_EXPORT(Mul, 64fc, complexProduct64<Times>)

}  // namespace okt
