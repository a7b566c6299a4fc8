// Rows of a table, one a lane, read by columns as a polynomial needs them.
#pragma once

#include "lanes/gather.h"

namespace okt {

namespace gathering {

template <int bits, int N>
inline F64<N> lowElements(const Real64* table, const std::uint64_t* n) {
    const auto at = [&](int lane) { return table + lowBits<bits>(n[lane]); };
    if constexpr (N == 1)
        return *at(0);
    else if constexpr (N == 2)
        return _mm_loadh_pd(_mm_load_sd(at(0)), at(1));
    else
        return {lowElements<bits, N / 2>(table, n), lowElements<bits, N / 2>(table, n + N / 2)};
}

}  // namespace gathering

// The table's rows at the given byte offsets, which stand in memory and stay there. Rows start at multiples of 16
// bytes, and so do pairs of columns.
template <int N, class Offset = std::uint32_t>
class RowPerLane {
public:
    RowPerLane(const Real64* table, const Offset* byteOffset) : table_(table), offset_(byteOffset) {}
    Pair<F64<N>> pair(int evenColumn) const { return gathering::pairsAt<1, N>(table_ + evenColumn, offset_); }
    F64<N> operator[](int column) const { return gathering::elementsAt<1, N>(table_ + column, offset_); }

private:
    const Real64* table_;
    const Offset* offset_;
};

// table[j], where j is the number in the low `bits` bits of a lane.
template <int bits, int N>
inline F64<N> gatherElements(const Real64* table, const InMemory<std::uint64_t, N>& n) {
    return gathering::lowElements<bits, N>(table, n.lane);
}

// Lanes whose lower half is zero, the upper half taken as a signed number and brought into 0 to `limit`.
inline U32<1> clampHighHalves(U32<1> a, std::uint16_t limit) {
    const auto value = static_cast<std::int32_t>(a.raw) >> 16;
    return static_cast<std::uint32_t>(value < 0 ? 0 : value > limit ? limit : value) << 16;
}
inline U32<4> clampHighHalves(U32<4> a, std::uint16_t limit) {
    const __m128i top = _mm_set1_epi32(static_cast<int>(limit) << 16);
    return _mm_min_epi16(_mm_max_epi16(a.raw, _mm_setzero_si128()), top);
}
template <int N>
requires Paired<U32<N>>
inline U32<N> clampHighHalves(U32<N> a, std::uint16_t limit) {
    return {clampHighHalves(a.lo, limit), clampHighHalves(a.hi, limit)};
}

}  // namespace okt
