// The first source times the conjugate of the second, by the same arithmetic as the complex product.
#include "arith/complex_parts.h"

namespace okt {
namespace {

struct TimesConj {
    static auto re(auto a, auto b) { return timesConjRe(a, b); }
    static auto im(auto a, auto b) { return timesConjImFlipped(a, b); }
};

OktStatus mulByConj32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len) {
    return x87Frame<53>(len, src1, src2, dst,
                        [=](OktStatus&) { complexLoop32(src1, src2, dst, len, [](auto) { return TimesConj{}; }); });
}

struct TimesConj64 : TimesConj {
    static auto im(auto a, auto b) { return timesConjIm(a, b); }
};

OktStatus mulByConj64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len) {
    return complexProduct64<TimesConj64>(src1, src2, dst, len);
}

}  // namespace

OKT_EXPORT(MulByConj, 32fc, mulByConj32)
OKT_EXPORT(MulByConj, 64fc, mulByConj64)

}  // namespace okt
