// The last step of a polynomial in more than Real64's precision, as the error functions take it on Real64.
#pragma once

#include "lanes/double_double.h"

namespace okt {

// c1 + t · slope with its low part, c0 added to it. The product of the high parts of t and the slope is exact.
template <int N>
inline DoubleDouble<N> splitStep(DoubleDouble<N> slope, F64<N> t, F64<N> c1, F64<N> c0) {
    const auto [slopeHi, rest] = maskSplit(slope.hi);
    const F64<N> slopeLo = slope.lo + rest;
    const auto [th, tl] = maskSplit(t);
    const F64<N> product = slopeHi * th;
    const F64<N> low = ((slopeLo * tl) + (tl * slopeHi)) + (th * slopeLo);
    const auto [head, e] = twoSum(product, c1);
    return {head, (e + low) + c0};
}

}  // namespace okt
