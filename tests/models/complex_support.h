// What the models of the complex functions share: an element that leaves a block goes through the written steps, whose
// results are checked by themselves, widened before and narrowed after it.
#pragma once

#include "complex/exp_element.h"
#include "complex/ln_element.h"
#include "complex/sqrt_element.h"
#include "explog_support.h"

namespace okt::model::complex {

using explog::asSigned;
using explog::highWord;
using explog::opaque;
using explog::real32;
using explog::real64;

inline std::uint32_t magnitude(Real32 x) { return asBits(x) & 0x7FFFFFFFU; }

inline bool isSubnormal(Real32 x) { return magnitude(x) != 0 && magnitude(x) < 0x00800000U; }

template <auto Element>
Complex32 throughElement(Complex32 z) {
    // Hidden from the compiler: where the steps return a part as it is, it would fold
    // the two conversions into none, and they are something else under denormals-are-zero.
    const Complex64 wide = Element({opaque(static_cast<Real64>(z.re)), opaque(static_cast<Real64>(z.im))});
    const Complex32 result{static_cast<Real32>(wide.re), static_cast<Real32>(wide.im)};
    if (isSubnormal(result.re) || isSubnormal(result.im)) explog::dropped(opaque(0x1p-126F) * 0x1p-126F);
    return result;
}

// Every element by itself: blocks and padded tails treat an element alike wherever it stands.
template <class S, class D>
OktStatus each(D (*element)(S), const S* src, D* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = element(src[i]);
    return oktStatusOk;
}

}  // namespace okt::model::complex
