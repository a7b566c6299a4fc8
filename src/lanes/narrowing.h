// Results in Real64 of limited accuracy that settle what the exact ones narrow to.
#pragma once

#include "lanes/constant.h"

namespace okt {

// A Real32, and the middle between two of them, leaves the low 28 bits of its Real64 pattern zero. A value further than
// `units` in its last place from all such numbers narrows to the same Real32 as everything within that distance, in
// every rounding mode; normal results only.
struct NarrowingMargin {
    Pattern32 units, boundaryBits, within;
    constexpr explicit NarrowingMargin(std::uint32_t distance)
        : units(distance), boundaryBits((1u << 28) - 1), within(2 * distance) {}

    template <int N>
    bool settlesAll(F64<N> value) const {
        const U32<N> fromBoundary = (packLowWords(asBits(value)) + units) & boundaryBits;
        return all(greaterSigned(fromBoundary, U32<N>(within)));
    }
};

}  // namespace okt
