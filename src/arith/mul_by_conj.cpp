// The first source times the conjugate of the second, by the same arithmetic as the complex product.
//
// GCC: -fno-tree-slp-vectorize (0.95)
#include "arith/complex_parts.h"
#include "exports/MulByConj.h"

namespace okt {
namespace {

struct TimesConj {
    static auto re(auto a, auto b) { return timesConjRe(a, b); }
    static auto im(auto a, auto b) { return timesConjImFlipped(a, b); }
};

void mulByConj32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len, OktStatus&) {
    complexLoop32(src1, src2, dst, len, [](auto) { return TimesConj{}; });
}

struct TimesConj64 : TimesConj {
    static auto im(auto a, auto b) { return timesConjIm(a, b); }
};

}  // namespace

OKT_EXPORT(MulByConj, 32fc, mulByConj32)
OKT_EXPORT(MulByConj, 64fc, complexProduct64<TimesConj64>)

}  // namespace okt
