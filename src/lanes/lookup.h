// Table lookups by an integer in each lane.
//
// The integers go through memory: one store, and a narrow load a lane, keep the index work off the units that do the
// arithmetic, and leave the registers to it.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// Lanes put into memory, where the compiler has to fetch them from.
template <class T, int N>
struct InMemory {
    alignas(16) T lane[N];
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
    else
        return {toReal64<N / 2>(a), toReal64<N / 2>(a + N / 2)};
}

}  // namespace gathering

// Signed 32-bit integers to Real64, exact. From memory it takes no shuffle.
template <int N>
inline F64<N> toReal64(const InMemory<std::uint32_t, N>& a) {
    return gathering::toReal64<N>(a.lane);
}

// Elements at listed places of an array, and back to them.
template <int N>
inline F64<N> gatherElementsAtPlaces(const Real64* from, const std::uint8_t* place) {
    if constexpr (N == 2)
        return _mm_loadh_pd(_mm_load_sd(from + place[0]), from + place[1]);
    else
        return {gatherElementsAtPlaces<N / 2>(from, place), gatherElementsAtPlaces<N / 2>(from, place + N / 2)};
}
template <int N>
inline void scatterElementsToPlaces(Real64* to, const std::uint8_t* place, F64<N> x) {
    if constexpr (N == 2) {
        _mm_storel_pd(to + place[0], x.raw);
        _mm_storeh_pd(to + place[1], x.raw);
    } else {
        scatterElementsToPlaces<N / 2>(to, place, x.lo);
        scatterElementsToPlaces<N / 2>(to, place + N / 2, x.hi);
    }
}

namespace gathering {

template <int bits>
inline std::size_t lowBits(std::uint64_t pattern) {
    return static_cast<unsigned>(pattern) & ((1u << bits) - 1);
}

template <int bits, int N>
inline Pair<F64<N>> pairs(const Real64* table, const std::uint64_t* n) {
    if constexpr (N == 1) {
        const Real64* entry = table + 2 * lowBits<bits>(n[0]);
        return {entry[0], entry[1]};
    } else if constexpr (N == 2) {
        const __m128d low = _mm_load_pd(table + 2 * lowBits<bits>(n[0]));
        const __m128d high = _mm_load_pd(table + 2 * lowBits<bits>(n[1]));
        return {_mm_unpacklo_pd(low, high), _mm_unpackhi_pd(low, high)};
    } else {
        const auto low = pairs<bits, N / 2>(table, n);
        const auto high = pairs<bits, N / 2>(table, n + N / 2);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

template <int bits, int N>
inline Pair<F32<N>> pairs(const Real32* table, const std::uint32_t* n) {
    if constexpr (N == 1) {
        const Real32* entry = table + 2 * lowBits<bits>(n[0]);
        return {entry[0], entry[1]};
    } else if constexpr (N == 4) {
        const auto entry = [&](int i) { return reinterpret_cast<const Real64*>(table + 2 * lowBits<bits>(n[i])); };
        const __m128 low = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(entry(0)), entry(1)));
        const __m128 high = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(entry(2)), entry(3)));
        return {_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)), _mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1))};
    } else {
        const auto low = pairs<bits, N / 2>(table, n);
        const auto high = pairs<bits, N / 2>(table, n + N / 2);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

inline const Real64* at(const Real64* table, std::uint32_t byteOffset) {
    return reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + byteOffset);
}
inline const Real32* at(const Real32* table, std::uint32_t byteOffset) {
    return reinterpret_cast<const Real32*>(reinterpret_cast<const char*>(table) + byteOffset);
}

}  // namespace gathering

// The four columns of table rows, lane by lane.
template <class V>
struct Columns {
    V c0, c1, c2, c3;
};

namespace gathering {

template <int N>
inline Columns<F64<N>> rows(const Real64* table, const std::uint32_t* offset) {
    if constexpr (N == 1) {
        const Real64* row = at(table, offset[0]);
        return {row[0], row[1], row[2], row[3]};
    } else if constexpr (N == 2) {
        const Real64* a = at(table, offset[0]);
        const Real64* b = at(table, offset[1]);
        const __m128d a01 = _mm_load_pd(a), a23 = _mm_load_pd(a + 2);
        const __m128d b01 = _mm_load_pd(b), b23 = _mm_load_pd(b + 2);
        return {_mm_unpacklo_pd(a01, b01), _mm_unpackhi_pd(a01, b01), _mm_unpacklo_pd(a23, b23),
                _mm_unpackhi_pd(a23, b23)};
    } else {
        const auto lo = rows<N / 2>(table, offset);
        const auto hi = rows<N / 2>(table, offset + N / 2);
        return {{lo.c0, hi.c0}, {lo.c1, hi.c1}, {lo.c2, hi.c2}, {lo.c3, hi.c3}};
    }
}

template <int N>
inline Columns<F32<N>> rows(const Real32* table, const std::uint32_t* offset) {
    if constexpr (N == 1) {
        const Real32* row = at(table, offset[0]);
        return {row[0], row[1], row[2], row[3]};
    } else if constexpr (N == 4) {
        const __m128 a = _mm_load_ps(at(table, offset[0])), b = _mm_load_ps(at(table, offset[1]));
        const __m128 c = _mm_load_ps(at(table, offset[2])), d = _mm_load_ps(at(table, offset[3]));
        const __m128 ab01 = _mm_unpacklo_ps(a, b), ab23 = _mm_unpackhi_ps(a, b);
        const __m128 cd01 = _mm_unpacklo_ps(c, d), cd23 = _mm_unpackhi_ps(c, d);
        return {_mm_movelh_ps(ab01, cd01), _mm_movehl_ps(cd01, ab01), _mm_movelh_ps(ab23, cd23),
                _mm_movehl_ps(cd23, ab23)};
    } else {
        const auto lo = rows<N / 2>(table, offset);
        const auto hi = rows<N / 2>(table, offset + N / 2);
        return {{lo.c0, hi.c0}, {lo.c1, hi.c1}, {lo.c2, hi.c2}, {lo.c3, hi.c3}};
    }
}

}  // namespace gathering

// The pairs table[2j], table[2j + 1], where j is the number in the low `bits` bits of a lane.
template <int bits, class T, int N>
inline Pair<Vec<T, N>> gatherPairsByLowBits(const T* table, const InMemory<Unsigned<T>, N>& n) {
    return gathering::pairs<bits, N>(table, n.lane);
}

// The rows of four at the given byte offsets.
template <class T, int N>
inline Columns<Vec<T, N>> gatherRowsAt(const T* table, const InMemory<std::uint32_t, N>& byteOffset) {
    return gathering::rows<N>(table, byteOffset.lane);
}

namespace gathering {

template <std::size_t stride, class Offset>
inline const Real64* entryAt(const Real64* table, Offset offset) {
    return reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + stride * offset);
}

template <std::size_t stride, int N, class Offset>
inline F64<N> elementsAt(const Real64* table, const Offset* offset) {
    if constexpr (N == 1)
        return *entryAt<stride>(table, offset[0]);
    else if constexpr (N == 2)
        return _mm_loadh_pd(_mm_load_sd(entryAt<stride>(table, offset[0])), entryAt<stride>(table, offset[1]));
    else
        return {elementsAt<stride, N / 2>(table, offset), elementsAt<stride, N / 2>(table, offset + N / 2)};
}

template <std::size_t stride, int N, class Offset>
inline Pair<F64<N>> pairsAt(const Real64* table, const Offset* offset) {
    if constexpr (N == 1) {
        const Real64* entry = entryAt<stride>(table, offset[0]);
        return {entry[0], entry[1]};
    } else if constexpr (N == 2) {
        const __m128d low = _mm_load_pd(entryAt<stride>(table, offset[0]));
        const __m128d high = _mm_load_pd(entryAt<stride>(table, offset[1]));
        return {_mm_unpacklo_pd(low, high), _mm_unpackhi_pd(low, high)};
    } else {
        const auto low = pairsAt<stride, N / 2>(table, offset);
        const auto high = pairsAt<stride, N / 2>(table, offset + N / 2);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

}  // namespace gathering

// The elements, and the pairs of elements, that stand stride · offset bytes behind the table's start. A stride of 1, 2,
// 4 or 8 costs nothing, so that tables with entries of different sizes share their offsets.
template <std::size_t stride, int N>
inline F64<N> gatherElementsAt(const Real64* table, const InMemory<std::uint32_t, N>& offset) {
    return gathering::elementsAt<stride, N>(table, offset.lane);
}
template <std::size_t stride, int N>
inline Pair<F64<N>> gatherPairsAt(const Real64* table, const InMemory<std::uint32_t, N>& offset) {
    return gathering::pairsAt<stride, N>(table, offset.lane);
}

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
inline F64<N> gatherElementsByLowBits(const Real64* table, const InMemory<std::uint64_t, N>& n) {
    return gathering::lowElements<bits, N>(table, n.lane);
}

namespace gathering {

template <int N>
inline F64<2 * N> interleavedPairsAt(const Real64* table, const std::uint64_t* offset) {
    if constexpr (N == 1)
        return F64<2>::loadAligned(entryAt<1>(table, offset[0]));
    else
        return {interleavedPairsAt<N / 2>(table, offset), interleavedPairsAt<N / 2>(table, offset + N / 2)};
}

}  // namespace gathering

// The pairs at the given byte offsets, both elements of a pair side by side.
template <int N>
inline F64<2 * N> gatherInterleavedPairsAt(const Real64* table, const InMemory<std::uint64_t, N>& byteOffset) {
    return gathering::interleavedPairsAt<N>(table, byteOffset.lane);
}

}  // namespace okt
