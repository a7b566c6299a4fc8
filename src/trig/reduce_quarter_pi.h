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

// The same for elements side by side. One element is a chain of some sixty operations, each of which waits for the one
// before, so that two or four take little longer than one.
template <int N>
struct QuarterPiReductions {
    F64<N> head, tail;
    U64<N> quadrant;
};

// From here on, to the last finite number, all elements take the same steps.
inline constexpr Real64 hugeFrom = 0x1p30;
template <int N>
inline bool allHuge(F64<N> x) {
    const U32<N> magnitude = packHighWords(asBits(x)) & U32<N>(0x7FFFFFFF);
    return !any(outside(magnitude, highWord(hugeFrom), 0x7FEFFFFF));
}
template <int N>
inline bool allHuge(F32<N> x) {
    return !any(outside(asBits(abs(x)), asBits(static_cast<Real32>(hugeFrom)), 0x7F7FFFFF));
}

template <int N>
QuarterPiReductions<N> reduceHuge(F64<N> x);
extern template QuarterPiReductions<2> reduceHuge(F64<2> x);
extern template QuarterPiReductions<4> reduceHuge(F64<4> x);

}  // namespace okt
