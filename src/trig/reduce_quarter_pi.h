// Reduction of large arguments by the quarter turn.
#pragma once

#include "lanes/lanes.h"

#include <cstdint>

namespace okt {

// x = head + tail + (quadrant + 4m)·pi/2 for some integer m, with |head| at most a little above pi/4.
struct QuarterPiReduction {
    Real64 head, tail;
    std::uint32_t quadrant;  // 0 to 3
};

// For finite |x| >= 2^13, under rounding to nearest. One element, no state, no status.
QuarterPiReduction reduceQuarterPi(Real64 x);

// The same for elements side by side. One element is a chain of up to sixty operations, each of which waits for the one
// before, so that two or four take little longer than one. The elements must be of one kind, whose steps are the same:
// from 2^17 to 2^23, from there to 2^30, or above. False for all others, NaNs and infinities among them.
template <int N>
struct QuarterPiReductions {
    F64<N> head, tail;
    U64<N> quadrant;
};

template <int N>
bool reduceAlike(F64<N> x, QuarterPiReductions<N>& reductions);
extern template bool reduceAlike(F64<2> x, QuarterPiReductions<2>& reductions);
extern template bool reduceAlike(F64<4> x, QuarterPiReductions<4>& reductions);

// Real32 elements are widened when none of them is a NaN, which would be quieted and might be signalling.
template <int N>
inline bool reduceAlike(F32<N> x, QuarterPiReductions<N>& reductions) {
    return !any(outside(asBits(abs(x)), asBits(0x1p17F), 0x7F7FFFFF)) && reduceAlike(widen(x), reductions);
}

}  // namespace okt
