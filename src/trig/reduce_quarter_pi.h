// Reduction of large arguments by the quarter turn.
#pragma once

#include "oktvm.h"

#include <cstdint>

namespace okt {

// x = head + tail + (quadrant + 4m)·pi/2 for some integer m, with |head| at most a little above pi/4.
struct QuarterPiReduction {
    Real64 head, tail;
    std::uint32_t quadrant;  // 0 to 3
};

// For finite |x| >= 2^13, under rounding to nearest. One element, no state, no status.
QuarterPiReduction reduceQuarterPi(Real64 x);

}  // namespace okt
