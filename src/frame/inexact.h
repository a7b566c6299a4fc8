// Whether the sticky inexact flag stands already. Where it does, raising it once
// more shows nowhere, and a routine is free to reach its result by a way that is
// inexact where the written one is not. Status registers are read, not written.
#pragma once

#include "lanes/control_state.h"

namespace okt {

inline bool x87InexactStands() { return (readX87Status() & 0x0020u) != 0; }

// The same in MXCSR, with the exception masked and rounding to nearest.
inline bool inexactStandsInNearest() {
    constexpr unsigned roundingControl = 0x6000, inexactMask = 0x1000, inexact = 0x0020;
    return (readMxcsr() & (roundingControl | inexactMask | inexact)) == (inexactMask | inexact);
}

}  // namespace okt
