// The inverse of erf on Real64, A26: one polynomial of degree 4 in w = 1 - |x|, times x: a row for each of eight cells
// per octave of w, found by the pattern of w. No guard; the elements outside 2^-35 < |x| < 1 are redone one by one.
#pragma once

#include "erf/erf_inv_special.h"
#include "erf/erf_inv_tables.h"
#include "lanes/lookup.h"

namespace okt::inverse_erf {
namespace {

// The cell's row, and the place of w in the cell.
template <int N>
struct Cell {
    U64<N> row;
    F64<N> t;
};
template <int N>
inline Cell<N> cellOf(F64<N> x) {
    const F64<N> w = F64<N>(1) - abs(x);
    return {U64<N>(std::uint64_t{8184}) - (asBits(w) >> 49), w - (w & U64<N>(std::uint64_t{0x3FFE000000000000}))};
}

template <int N>
inline F64<N> erfInvFast(F64<N> x) {
    const Cell<N> cell = cellOf(x);
    const InMemory<std::uint64_t, N> offset((cell.row << 5) + (cell.row << 4));  // 48 bytes a row
    const RowPerLane<N, std::uint64_t> c(tables::erfInvPieces, offset.lane);
    const F64<N> t = cell.t;
    const auto [c0, c1] = c.pair(0);
    const auto [c2, c3] = c.pair(2);
    return ((((c[4] * t + c3) * t + c2) * t + c1) * t + c0) * x;
}

// An element that the block's test has flagged.
[[gnu::noinline, gnu::cold]] inline Real64 erfInvFlagged(Real64 x, OktStatus& status) {
    const std::uint32_t magnitude = highWord(x) & 0x7FFFFFFF;
    if (magnitude >= oneHigh) return outsideDomain(x, status);
    if (magnitude >= smallHigh) {
        const auto [row, t] = cellOf(F64<1>(x));
        const Real64* c = tables::erfInvPieces + 6 * row.raw;
        const F64<1> cube = t * t * t;
        const F64<1> p =
            (F64<1>(c[4]) * t + F64<1>(c[3])) * cube + ((F64<1>(c[2]) * t + F64<1>(c[1])) * t + F64<1>(c[0]));
        return (p * F64<1>(x)).raw;
    }
    return x == 0 ? x : erfInvTiny(x, cutSplit<1>);
}

template <int N>
inline Mask64<N> flaggedLanes(F64<N> x) {
    const U64<N> high = asBits(abs(x));
    return ~(greaterSignedHigh(U64<N>(std::uint64_t{oneHigh} << 32), high) &
             greaterSignedHigh(high, U64<N>(std::uint64_t{smallHigh} << 32)));
}

template <int N>
inline void erfInvFastBlock(const Real64* src, Real64* dst, OktStatus& status) {
    const F64<N> x = F64<N>::load(src);
    const Mask64<N> flagged = flaggedLanes(x);
    const int bits = laneBits(flagged);
    if (bits == 0) [[likely]] {
        erfInvFast(x).store(dst);
        return;
    }
    Real64 flaggedX[N];
    x.store(flaggedX);
    erfInvFast(zeroIf(flagged, x)).store(dst);
    for (int i = 0; i < N; ++i)
        if (bits >> i & 1) storeElement(dst + i, erfInvFlagged(flaggedX[i], status));
}

inline void erfInv64Fast(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - 8; i += 8) erfInvFastBlock<8>(src + i, dst + i, status);
    if (len & 4) {
        erfInvFastBlock<4>(src + i, dst + i, status);
        i += 4;
    }
    if (len & 2) {
        erfInvFastBlock<2>(src + i, dst + i, status);
        i += 2;
    }
    if (len & 1) erfInvFastBlock<1>(src + i, dst + i, status);
}

}  // namespace
}  // namespace okt::inverse_erf
