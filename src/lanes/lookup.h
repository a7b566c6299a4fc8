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
        scatterElementsToPlaces<N / 2>(to, place, x.lowHalf());
        scatterElementsToPlaces<N / 2>(to, place + N / 2, x.highHalf());
    }
}

namespace gathering {

// The columns of N pairs, each at a multiple of 16 bytes and read by one load.
template <int N, class Entry>
inline Pair<F64<N>> transposedPairs(const Entry& entry) {
    const auto at = [&](int i) OKT_INLINE { return _mm_load_pd(entry(i)); };
    if constexpr (N == 2) {
        const __m128d low = at(0), high = at(1);
        return {_mm_unpacklo_pd(low, high), _mm_unpackhi_pd(low, high)};
    }
#if defined(OKT_REGISTERS_256)
    if constexpr (N == 4) {
        const __m256d even = _mm256_insertf128_pd(_mm256_castpd128_pd256(at(0)), at(2), 1);
        const __m256d odd = _mm256_insertf128_pd(_mm256_castpd128_pd256(at(1)), at(3), 1);
        return {_mm256_unpacklo_pd(even, odd), _mm256_unpackhi_pd(even, odd)};
    }
#endif
#if defined(OKT_REGISTERS_512)
    if constexpr (N == 8) {
        const auto four = [&](int i) OKT_INLINE {
            __m512d pairs = _mm512_castpd128_pd512(at(i));
            pairs = _mm512_insertf64x2(pairs, at(i + 2), 1);
            pairs = _mm512_insertf64x2(pairs, at(i + 4), 2);
            return _mm512_insertf64x2(pairs, at(i + 6), 3);
        };
        const __m512d even = four(0), odd = four(1);
        return {_mm512_unpacklo_pd(even, odd), _mm512_unpackhi_pd(even, odd)};
    }
#endif
}

template <int bits>
inline std::size_t lowBits(std::uint64_t pattern) {
    return static_cast<unsigned>(pattern) & ((1u << bits) - 1);
}

template <int bits, int N>
inline Pair<F64<N>> pairs(const Real64* table, const std::uint64_t* n) {
    if constexpr (N == 1) {
        const Real64* entry = table + 2 * lowBits<bits>(n[0]);
        return {entry[0], entry[1]};
    } else if constexpr (Register<F64<N>>) {
        return transposedPairs<N>([&](int i) OKT_INLINE { return table + 2 * lowBits<bits>(n[i]); });
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

// The columns of N rows of four, each read whole; rows start at multiples of 16 bytes.
template <int N, class Row>
inline Columns<F64<N>> wholeRows(const Row& row) {
    if constexpr (N == 2) {
        const auto lower = transposedPairs<2>(row);
        const auto upper = transposedPairs<2>([&](int i) OKT_INLINE { return row(i) + 2; });
        return {lower.first, lower.second, upper.first, upper.second};
    }
#if defined(OKT_REGISTERS_256)
    const auto at = [&](int i) OKT_INLINE { return _mm256_loadu_pd(row(i)); };
    if constexpr (N == 4) {
        const __m256d a = at(0), b = at(1), c = at(2), d = at(3);
        const __m256d ab02 = _mm256_unpacklo_pd(a, b), ab13 = _mm256_unpackhi_pd(a, b);
        const __m256d cd02 = _mm256_unpacklo_pd(c, d), cd13 = _mm256_unpackhi_pd(c, d);
        return {_mm256_permute2f128_pd(ab02, cd02, 0x20), _mm256_permute2f128_pd(ab13, cd13, 0x20),
                _mm256_permute2f128_pd(ab02, cd02, 0x31), _mm256_permute2f128_pd(ab13, cd13, 0x31)};
    }
#endif
#if defined(OKT_REGISTERS_512)
    if constexpr (N == 8) {
        const auto two = [&](int i)
                             OKT_INLINE { return _mm512_insertf64x4(_mm512_castpd256_pd512(at(i)), at(i + 4), 1); };
        const __m512d a = two(0), b = two(1), c = two(2), d = two(3);
        const __m512d ab02 = _mm512_unpacklo_pd(a, b), ab13 = _mm512_unpackhi_pd(a, b);
        const __m512d cd02 = _mm512_unpacklo_pd(c, d), cd13 = _mm512_unpackhi_pd(c, d);
        const __m512i first = _mm512_setr_epi64(0, 1, 8, 9, 4, 5, 12, 13);
        const __m512i second = _mm512_setr_epi64(2, 3, 10, 11, 6, 7, 14, 15);
        return {_mm512_permutex2var_pd(ab02, first, cd02), _mm512_permutex2var_pd(ab13, first, cd13),
                _mm512_permutex2var_pd(ab02, second, cd02), _mm512_permutex2var_pd(ab13, second, cd13)};
    }
#endif
}

template <int N>
inline Columns<F64<N>> rows(const Real64* table, const std::uint32_t* offset) {
    if constexpr (N == 1) {
        const Real64* row = at(table, offset[0]);
        return {row[0], row[1], row[2], row[3]};
    } else if constexpr (Register<F64<N>>) {
        return wholeRows<N>([&](int i) OKT_INLINE { return at(table, offset[i]); });
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
#if defined(OKT_REGISTERS_256)
    } else if constexpr (N == 8) {
        const auto row = [&](int i) OKT_INLINE {
            return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(at(table, offset[i]))),
                                        _mm_load_ps(at(table, offset[i + 4])), 1);
        };
        const __m256 a = row(0), b = row(1), c = row(2), d = row(3);
        const __m256d ab01 = _mm256_castps_pd(_mm256_unpacklo_ps(a, b)),
                      ab23 = _mm256_castps_pd(_mm256_unpackhi_ps(a, b));
        const __m256d cd01 = _mm256_castps_pd(_mm256_unpacklo_ps(c, d)),
                      cd23 = _mm256_castps_pd(_mm256_unpackhi_ps(c, d));
        return {_mm256_castpd_ps(_mm256_unpacklo_pd(ab01, cd01)), _mm256_castpd_ps(_mm256_unpackhi_pd(ab01, cd01)),
                _mm256_castpd_ps(_mm256_unpacklo_pd(ab23, cd23)), _mm256_castpd_ps(_mm256_unpackhi_pd(ab23, cd23))};
#endif
#if defined(OKT_REGISTERS_512)
    } else if constexpr (N == 16) {
        const auto row = [&](int i) OKT_INLINE {
            __m512 four = _mm512_castps128_ps512(_mm_load_ps(at(table, offset[i])));
            four = _mm512_insertf32x4(four, _mm_load_ps(at(table, offset[i + 4])), 1);
            four = _mm512_insertf32x4(four, _mm_load_ps(at(table, offset[i + 8])), 2);
            return _mm512_insertf32x4(four, _mm_load_ps(at(table, offset[i + 12])), 3);
        };
        const __m512 a = row(0), b = row(1), c = row(2), d = row(3);
        const __m512d ab01 = _mm512_castps_pd(_mm512_unpacklo_ps(a, b)),
                      ab23 = _mm512_castps_pd(_mm512_unpackhi_ps(a, b));
        const __m512d cd01 = _mm512_castps_pd(_mm512_unpacklo_ps(c, d)),
                      cd23 = _mm512_castps_pd(_mm512_unpackhi_ps(c, d));
        return {_mm512_castpd_ps(_mm512_unpacklo_pd(ab01, cd01)), _mm512_castpd_ps(_mm512_unpackhi_pd(ab01, cd01)),
                _mm512_castpd_ps(_mm512_unpacklo_pd(ab23, cd23)), _mm512_castpd_ps(_mm512_unpackhi_pd(ab23, cd23))};
#endif
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
    } else if constexpr (Register<F64<N>>) {
        return transposedPairs<N>([&](int i) OKT_INLINE { return entryAt<stride>(table, offset[i]); });
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
// On one lane a call would cost more than the two loads.
template <std::size_t stride>
OKT_INLINE inline Pair<F64<1>> gatherPairsAt(const Real64* table, const InMemory<std::uint32_t, 1>& offset) {
    return gathering::pairsAt<stride, 1>(table, offset.lane);
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

// The entries table[2·index] and table[2·index + 1], one aligned load a lane: index holds byte offsets.
inline Pair<F64<1>> gatherPairsAt(const Real64* table, U64<1> byteOffset) {
    const auto* entry = reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + byteOffset.raw);
    return {entry[0], entry[1]};
}
inline Pair<F64<2>> gatherPairsAt(const Real64* table, U64<2> byteOffset) {
    const char* base = reinterpret_cast<const char*>(table);
    // The offsets fit 16 bits, and taking them as 16-bit fields spares a shuffle.
    const auto low = static_cast<unsigned>(_mm_cvtsi128_si32(byteOffset.raw));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(byteOffset.raw, 4));
    const __m128d a = _mm_load_pd(reinterpret_cast<const Real64*>(base + low));
    const __m128d b = _mm_load_pd(reinterpret_cast<const Real64*>(base + high));
    return {_mm_unpacklo_pd(a, b), _mm_unpackhi_pd(a, b)};
}
template <int N>
requires LanesAbove<N, 2>
inline Pair<F64<N>> gatherPairsAt(const Real64* table, U64<N> byteOffset) {
    if constexpr (Register<F64<N>>) {
        const InMemory<std::uint64_t, N> offset(byteOffset);
        return gathering::pairsAt<1, N>(table, offset.lane);
    } else {
        const auto lo = gatherPairsAt(table, byteOffset.lo);
        const auto hi = gatherPairsAt(table, byteOffset.hi);
        return {{lo.first, hi.first}, {lo.second, hi.second}};
    }
}

// table[byteOffset / 8], one element a lane.
inline F64<1> gatherElementsAt(const Real64* table, U64<1> byteOffset) {
    return *reinterpret_cast<const Real64*>(reinterpret_cast<const char*>(table) + byteOffset.raw);
}
inline F64<2> gatherElementsAt(const Real64* table, U64<2> byteOffset) {
    const char* base = reinterpret_cast<const char*>(table);
    const auto low = static_cast<unsigned>(_mm_cvtsi128_si32(byteOffset.raw));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(byteOffset.raw, 4));
    return _mm_loadh_pd(_mm_load_sd(reinterpret_cast<const Real64*>(base + low)),
                        reinterpret_cast<const Real64*>(base + high));
}
template <int N>
requires LanesAbove<N, 2>
inline F64<N> gatherElementsAt(const Real64* table, U64<N> byteOffset) {
    return {gatherElementsAt(table, byteOffset.lowHalf()), gatherElementsAt(table, byteOffset.highHalf())};
}

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
    const __m128i rows = _mm_or_si128(_mm_slli_epi64(first, 4), _mm_srli_epi64(first, 26));
    const char* base = reinterpret_cast<const char*>(table);
    const auto low = static_cast<unsigned>(_mm_extract_epi16(rows, 0));
    const auto high = static_cast<unsigned>(_mm_extract_epi16(rows, 4));
    return {F64<2>(_mm_load_pd(reinterpret_cast<const Real64*>(base + low))),
            F64<2>(_mm_load_pd(reinterpret_cast<const Real64*>(base + high)))};
}
template <int bit, int N>
requires LanesAbove<N, 4>
inline F64<N> gatherElementsByDigitPairs(const Real64* table, U32<N> digits) {
    return {gatherElementsByDigitPairs<bit>(table, digits.lowHalf()),
            gatherElementsByDigitPairs<bit>(table, digits.highHalf())};
}

}  // namespace okt
