// Table lookups by an integer in each lane.
//
// A lookup is named gather, what a lane's entry is, and how it is found:
//
//   Elements, Pairs, Rows   one column, two, four
//   InterleavedPairs        two columns in one vector, the elements of a pair side by side
//
//   ...At              at byte offsets, in lanes or in memory; with a stride, at multiples of it
//   ...ByLowBits       by the number in the low bits of a lane
//   ...ByDigitPairs    by digits of two lanes at once
//   ...AtPlaces        at listed places of an array; scatterElementsToPlaces is the way back
//
// Most integers go through memory: one store, and a narrow load a lane, keep the index work off the units that do the
// arithmetic, and leave the registers to it.
#pragma once

#include "lanes/columns.h"

namespace okt {

// Lanes put into memory, where the compiler has to fetch them from.
template <class T, int N>
struct InMemory {
    alignas(N < registerLanes<T> ? 16 : registerBytes) T lane[N];
    InMemory() = default;
    explicit InMemory(Vec<T, N> v) { put(v); }
    void put(Vec<T, N> v) {
        v.store(lane);
        if constexpr (N > 1) asm("" : "+m"(lane));
    }
    operator Vec<T, N>() const { return Vec<T, N>::load(lane); }
};

namespace gathering {

template <int N>
inline F64<N> toReal64(const std::uint32_t* a) {
    if constexpr (N == 1)
        return okt::toReal64(U32<1>(*a));
    else if constexpr (N == 2)
        return _mm_cvtepi32_pd(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a)));
    else if constexpr (Register<F64<N>>)
        return okt::toReal64(U32<N>::load(a));
    else
        return {toReal64<N / 2>(a), toReal64<N / 2>(a + N / 2)};
}

}  // namespace gathering

// Signed 32-bit integers to Real64, exact. From memory it takes no shuffle.
template <int N>
inline F64<N> toReal64(const InMemory<std::uint32_t, N>& a) {
    return gathering::toReal64<N>(a.lane);
}

namespace gathering {

// How a lane's integer tells where its entry stands.
template <std::size_t stride>
struct AtMultiplesOf {
    template <class T, class Offset>
    static const T* entry(const T* table, Offset offset) {
        return reinterpret_cast<const T*>(reinterpret_cast<const char*>(table) + stride * offset);
    }
};
using AtBytes = AtMultiplesOf<1>;
template <int bits, int columns>
struct ByLowBits {
    template <class T, class Number>
    static const T* entry(const T* table, Number n) {
        const std::size_t index = static_cast<unsigned>(n) & ((1u << bits) - 1);
        return table + columns * index;
    }
};

template <class How, int N, class Place>
inline F64<N> elements(const Real64* table, const Place* place) {
    if constexpr (N == 1)
        return *How::entry(table, place[0]);
    else if constexpr (N == 2)
        return _mm_loadh_pd(_mm_load_sd(How::entry(table, place[0])), How::entry(table, place[1]));
    else
        return {elements<How, N / 2>(table, place), elements<How, N / 2>(table, place + N / 2)};
}

template <class How, int N, class T, class Place>
inline Pair<Vec<T, N>> pairs(const T* table, const Place* place) {
    if constexpr (N == 1) {
        const T* entry = How::entry(table, place[0]);
        return {entry[0], entry[1]};
    } else if constexpr (sizeof(T) == 8 && Register<Vec<T, N>>) {
        return pairsOfRegister<N>([&](int i) OKT_INLINE { return How::entry(table, place[i]); });
    } else if constexpr (sizeof(T) == 4 && N == 4) {
        return pairsOfRegister32([&](int i) OKT_INLINE { return How::entry(table, place[i]); });
    } else {
        const auto low = pairs<How, N / 2>(table, place);
        const auto high = pairs<How, N / 2>(table, place + N / 2);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

template <class How, int N, class Place>
inline F64<2 * N> interleavedPairs(const Real64* table, const Place* place) {
    if constexpr (N == 1)
        return F64<2>::loadAligned(How::entry(table, place[0]));
    else
        return {interleavedPairs<How, N / 2>(table, place), interleavedPairs<How, N / 2>(table, place + N / 2)};
}

template <class How, int N, class T, class Place>
inline Columns<Vec<T, N>> rows(const T* table, const Place* place) {
    if constexpr (N == 1) {
        const T* row = How::entry(table, place[0]);
        return {row[0], row[1], row[2], row[3]};
    } else if constexpr (sizeof(T) == 8 && Register<Vec<T, N>>) {
        return rowsOfRegister<N>([&](int i) OKT_INLINE { return How::entry(table, place[i]); });
    } else if constexpr (sizeof(T) == 4 && Register<Vec<T, N>>) {
        return rowsOfRegister32<N>([&](int i) OKT_INLINE { return How::entry(table, place[i]); });
    } else {
        const auto lo = rows<How, N / 2>(table, place);
        const auto hi = rows<How, N / 2>(table, place + N / 2);
        return {{lo.c0, hi.c0}, {lo.c1, hi.c1}, {lo.c2, hi.c2}, {lo.c3, hi.c3}};
    }
}

// Offsets below 2^16 in lanes: taking them as 16-bit fields spares a shuffle.
struct TwoOffsets {
    unsigned lane[2];
    explicit TwoOffsets(U64<2> byteOffset)
        : lane{static_cast<unsigned>(_mm_cvtsi128_si32(byteOffset.raw)),
               static_cast<unsigned>(_mm_extract_epi16(byteOffset.raw, 4))} {}
};

}  // namespace gathering

// ---------------------------------------------------------------------------------------------------------------------
// At byte offsets in lanes, below 2^16

inline F64<1> gatherElementsAt(const Real64* table, U64<1> byteOffset) {
    return gathering::elements<gathering::AtBytes, 1>(table, &byteOffset.raw);
}
inline F64<2> gatherElementsAt(const Real64* table, U64<2> byteOffset) {
    return gathering::elements<gathering::AtBytes, 2>(table, gathering::TwoOffsets(byteOffset).lane);
}
template <int N>
requires LanesAbove<N, 2>
inline F64<N> gatherElementsAt(const Real64* table, U64<N> byteOffset) {
    return {gatherElementsAt(table, byteOffset.lowHalf()), gatherElementsAt(table, byteOffset.highHalf())};
}

inline Pair<F64<1>> gatherPairsAt(const Real64* table, U64<1> byteOffset) {
    return gathering::pairs<gathering::AtBytes, 1>(table, &byteOffset.raw);
}
inline Pair<F64<2>> gatherPairsAt(const Real64* table, U64<2> byteOffset) {
    return gathering::pairs<gathering::AtBytes, 2>(table, gathering::TwoOffsets(byteOffset).lane);
}
template <int N>
requires LanesAbove<N, 2>
inline Pair<F64<N>> gatherPairsAt(const Real64* table, U64<N> byteOffset) {
    if constexpr (Register<F64<N>>) {
        const InMemory<std::uint64_t, N> offset(byteOffset);
        return gathering::pairs<gathering::AtBytes, N>(table, offset.lane);
    } else {
        const auto lo = gatherPairsAt(table, byteOffset.lo);
        const auto hi = gatherPairsAt(table, byteOffset.hi);
        return {{lo.first, hi.first}, {lo.second, hi.second}};
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// At byte offsets in memory

// A stride of 1, 2, 4 or 8 costs nothing, so that tables with entries of different sizes share their offsets.
template <std::size_t stride, int N>
inline F64<N> gatherElementsAt(const Real64* table, const InMemory<std::uint32_t, N>& offset) {
    return gathering::elements<gathering::AtMultiplesOf<stride>, N>(table, offset.lane);
}
template <std::size_t stride, int N>
inline Pair<F64<N>> gatherPairsAt(const Real64* table, const InMemory<std::uint32_t, N>& offset) {
    return gathering::pairs<gathering::AtMultiplesOf<stride>, N>(table, offset.lane);
}
// On one lane a call would cost more than the two loads.
template <std::size_t stride>
OKT_INLINE inline Pair<F64<1>> gatherPairsAt(const Real64* table, const InMemory<std::uint32_t, 1>& offset) {
    return gathering::pairs<gathering::AtMultiplesOf<stride>, 1>(table, offset.lane);
}
template <class T, int N>
inline Columns<Vec<T, N>> gatherRowsAt(const T* table, const InMemory<std::uint32_t, N>& byteOffset) {
    return gathering::rows<gathering::AtBytes, N>(table, byteOffset.lane);
}
template <int N>
inline F64<2 * N> gatherInterleavedPairsAt(const Real64* table, const InMemory<std::uint64_t, N>& byteOffset) {
    return gathering::interleavedPairs<gathering::AtBytes, N>(table, byteOffset.lane);
}

// Rows of any length, read by columns as a polynomial needs them. The byte offsets stand in memory and stay there.
template <int N, class Offset = std::uint32_t>
class RowPerLane {
public:
    RowPerLane(const Real64* table, const Offset* byteOffset) : table_(table), offset_(byteOffset) {}
    Pair<F64<N>> pair(int evenColumn) const {
        return gathering::pairs<gathering::AtBytes, N>(table_ + evenColumn, offset_);
    }
    F64<N> operator[](int column) const { return gathering::elements<gathering::AtBytes, N>(table_ + column, offset_); }

private:
    const Real64* table_;
    const Offset* offset_;
};

// ---------------------------------------------------------------------------------------------------------------------
// By the number in the low bits of a lane

template <int bits, int N>
inline F64<N> gatherElementsByLowBits(const Real64* table, const InMemory<std::uint64_t, N>& n) {
    return gathering::elements<gathering::ByLowBits<bits, 1>, N>(table, n.lane);
}
template <int bits, class T, int N>
inline Pair<Vec<T, N>> gatherPairsByLowBits(const T* table, const InMemory<Unsigned<T>, N>& n) {
    return gathering::pairs<gathering::ByLowBits<bits, 2>, N>(table, n.lane);
}

// ---------------------------------------------------------------------------------------------------------------------
// By digits of two lanes at once

// The factor of each lane's digit 0 to 2 at `bit` of the lane. The table holds a row for every two lanes' digits: the
// factors of d0 and d1 stand at row d0 + 4 d1.
template <int bit>
inline F64<1> gatherElementsByDigitPairs(const Real64* table, U32<1> digits) {
    return table[2 * (digits.raw >> bit & 3)];
}
template <int bit>
inline F64<4> gatherElementsByDigitPairs(const Real64* table, U32<4> digits) {
    const __m128i first = _mm_and_si128(_mm_srli_epi32(digits.raw, bit), _mm_set1_epi32(3));
    // In bytes, in the low half.
    const gathering::TwoOffsets rows(U64<2>(_mm_or_si128(_mm_slli_epi64(first, 4), _mm_srli_epi64(first, 26))));
    return gathering::interleavedPairs<gathering::AtBytes, 2>(table, rows.lane);
}
template <int bit, int N>
requires LanesAbove<N, 4>
inline F64<N> gatherElementsByDigitPairs(const Real64* table, U32<N> digits) {
    return {gatherElementsByDigitPairs<bit>(table, digits.lowHalf()),
            gatherElementsByDigitPairs<bit>(table, digits.highHalf())};
}

// ---------------------------------------------------------------------------------------------------------------------
// At listed places

template <int N>
inline F64<N> gatherElementsAtPlaces(const Real64* from, const std::uint8_t* place) {
    return gathering::elements<gathering::AtMultiplesOf<sizeof(Real64)>, N>(from, place);
}
template <int N>
inline void scatterElementsToPlaces(Real64* to, const std::uint8_t* place, F64<N> x) {
    if constexpr (N == 1) {
        to[place[0]] = x.raw;
    } else if constexpr (N == 2) {
        _mm_storel_pd(to + place[0], x.raw);
        _mm_storeh_pd(to + place[1], x.raw);
    } else {
        scatterElementsToPlaces<N / 2>(to, place, x.lowHalf());
        scatterElementsToPlaces<N / 2>(to, place + N / 2, x.highHalf());
    }
}

}  // namespace okt
