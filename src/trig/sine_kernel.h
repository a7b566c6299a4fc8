// Sines and cosines: the table method in Real64, at 64 or 128 steps a turn, and the element paths that take what the
// block loops leave: huge, infinite and NaN elements and their neighbours.
//
// x = n·step + r + rl, and with B the angle of row n of the table
//     sin x = sin B + cos B·sin r + (cos r - 1)·sin B,
// where sin B is a head and a tail, and cos B = cosHead + cosTail with a power of two for cosHead, so that cosHead·r is
// exact. The leading sum sinHead + cosHead·r + cosTail·r is carried as b with its rounding errors la and lb; the series
// are the plain Taylor coefficients.
#pragma once

#include "frame/status_flag.h"
#include "lanes/lanes.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "tables/sin_cos_table.h"
#include "trig/reduce_quarter_pi.h"
#include "trig/sin_cos_tables.h"

#include <cstdint>

namespace okt::sine {

inline constexpr Real64 roundShifter = 0x1.8p+52;  // the sum's low bits hold the integer

// pi/32 in three parts, products of the first two with n are exact; and 1/3!, 1/5!, 1/7!, 1/9!, 1/2!, 1/4!, 1/6!, 1/8!.
struct Steps64 {
    static constexpr int rows = 64;
    static constexpr Real64 inverse = 0x1.45f306dc9c883p+3;  // 32/pi
    static constexpr Real64 part1 = 0x1.921fb544p-4;
    static constexpr Real64 part2 = 0x1.0b4611a6p-38;
    static constexpr Real64 part3 = 0x1.3198a2e037073p-73;
};

// pi/64, the same.
struct Steps128 {
    static constexpr int rows = 128;
    static constexpr Real64 inverse = 0x1.45f306dc9c883p+4;  // 64/pi
    static constexpr Real64 part1 = 0x1.921fb544p-5;
    static constexpr Real64 part2 = 0x1.0b4611a6p-39;
    static constexpr Real64 part3 = 0x1.3198a2e037073p-74;
};

// sin r = r (1 + s1 r^2 + ...), cos r = 1 + c1 r^2 + ...; Taylor. Relative errors 2^-65.1 and 2^-65.2 on |r| <= pi/64
// with all terms, 2^-61.2 and 2^-58.0 on |r| <= pi/128 with three.
struct Taylor {
    static constexpr Real64 s1 = -0x1.5555555555555p-3;   // -1/3!
    static constexpr Real64 s2 = 0x1.1111111111111p-7;    // 1/5!
    static constexpr Real64 s3 = -0x1.a01a01a01a01ap-13;  // -1/7!
    static constexpr Real64 s4 = 0x1.71de3a556c734p-19;   // 1/9!
    static constexpr Real64 c1 = -0.5;                    // -1/2!
    static constexpr Real64 c2 = 0x1.5555555555555p-5;    // 1/4!
    static constexpr Real64 c3 = -0x1.6c16c16c16c17p-10;  // -1/6!
    static constexpr Real64 c4 = 0x1.a01a01a01a01ap-16;   // 1/8!
};

template <int N>
struct Reduced {
    F64<N> r, rl;
    U64<N> row;  // the row's number in the low bits
};

template <class Steps, int N>
inline Reduced<N> reduce(F64<N> x) {
    const F64<N> t = x * Steps::inverse + roundShifter;
    const F64<N> n = t - roundShifter;
    const F64<N> r1 = x - n * Steps::part1;
    const F64<N> p2 = n * Steps::part2;
    const F64<N> r = r1 - p2;
    return {r, ((r1 - r) - p2) - n * Steps::part3, asBits(t)};
}

// sin r - r and cos r - 1, but for the factors cos B and sin B.
template <int N>
struct Series {
    F64<N> sine, cosine;
};

template <class Steps, int N>
inline Series<N> series(F64<N> r) {
    const F64<N> z = r * r;
    if constexpr (Steps::rows == 64) {
        const F64<N> s = ((F64<N>(Taylor::s4) * z + Taylor::s3) * z + Taylor::s2) * z + Taylor::s1;
        const F64<N> c = ((F64<N>(Taylor::c4) * z + Taylor::c3) * z + Taylor::c2) * z + Taylor::c1;
        return {s * z * r, c * z};
    } else {
        const F64<N> s = (F64<N>(Taylor::s3) * z + Taylor::s2) * z + Taylor::s1;
        const F64<N> c = (F64<N>(Taylor::c3) * z + Taylor::c2) * z + Taylor::c1;
        return {s * z * r, c * z};
    }
}

// The summands of the result, largest last.
template <int N>
struct Summands {
    F64<N> ps, pc, e, la, lb, b;
    F64<N> mainSum() const { return ((((la + e) + lb) + ps) + pc) + b; }
    F64<N> elementSum() const { return ((((ps + pc) + e) + la) + lb) + b; }
};

// The columns of a row of the table, in this order.
template <int N>
struct Row {
    F64<N> cosTail, sinHead, sinTail, cosHead;
};

template <int N>
inline Summands<N> summands(const Row<N>& row, F64<N> r, F64<N> rl, const Series<N>& poly) {
    const F64<N> cosine = row.cosHead + row.cosTail;
    const F64<N> headPart = row.cosHead * r;
    const F64<N> tailPart = row.cosTail * r;
    const F64<N> a = row.sinHead + headPart;
    const F64<N> b = a + tailPart;
    return {poly.sine * cosine,           poly.cosine * row.sinHead, (cosine - row.sinHead * r) * rl + row.sinTail,
            (row.sinHead - a) + headPart, (a - b) + tailPart,        b};
}

// The same from the table's row at byteOffset.
template <int N>
inline Summands<N> summands(const Real64* table, U64<N> byteOffset, F64<N> r, F64<N> rl, const Series<N>& poly) {
    const auto [cosTail, sinHead] = gatherPairsAt(table, byteOffset);
    const auto [sinTail, cosHead] = gatherPairsAt(table + 2, byteOffset);
    return summands(Row<N>{cosTail, sinHead, sinTail, cosHead}, r, rl, poly);
}

// Byte offsets of rows, `quarters` of a turn further on; `row` is a vector of 64-bit or 32-bit integers.
template <class Steps, class V>
inline V rowOffset(V row, int quarters = 0) {
    using Integer = typename V::Element;
    constexpr Integer rows = Steps::rows;
    if (quarters != 0) row = row + V(rows / 4 * static_cast<Integer>(quarters));
    return (row & V(rows - 1)) << 5;
}

// N elements reduced, in memory, with the places of their rows and, for two Quarters, of those a quarter
// of a turn further on. The sums take them up four at a time, for which there are registers enough.
template <class Steps, int N, int Quarters = 1>
class ReducedInMemory {
public:
    explicit ReducedInMemory(F64<N> x) {
        const Reduced<N> a = reduce<Steps>(x);
        a.r.store(r_);
        a.rl.store(rl_);
        const U32<N> row = packLowWords(a.row);
        for (int quarter = 0; quarter < Quarters; ++quarter) rowOffset<Steps>(row, quarter).store(offset_[quarter]);
        const Series<N> poly = series<Steps>(a.r);
        poly.sine.store(sine_);
        poly.cosine.store(cosine_);
        keepInMemory(r_, rl_, sine_, cosine_, offset_);
    }

    void storeSums(Real64* to, const Real64* table, int quarter = 0) const {
        for (int i = 0; i < N; i += 4) {
            const RowPerLane<4> columns(table, offset_[quarter] + i);
            const auto [cosTail, sinHead] = columns.pair(0);
            const auto [sinTail, cosHead] = columns.pair(2);
            const auto at = [i](const Real64* v) { return F64<4>::load(v + i); };
            summands(Row<4>{cosTail, sinHead, sinTail, cosHead}, at(r_), at(rl_), {at(sine_), at(cosine_)})
                .mainSum()
                .store(to + i);
        }
    }

private:
    alignas(16) Real64 r_[N], rl_[N], sine_[N], cosine_[N];
    alignas(16) std::uint32_t offset_[Quarters][N];
};

// |x| below 90112 in every lane; NaNs and infinities are not.
template <int N>
inline bool inMainRange(F64<N> x) {
    const U32<N> magnitude = packHighWords(asBits(x)) & U32<N>(0x7FFFFFFF);
    return !any(greaterSigned(magnitude, U32<N>(0x40F5FFFF)));
}

// |x| up to 10000.0 in every lane.
template <int N>
inline bool inMainRange(F32<N> x) {
    return !any(greaterSigned(asBits(x) & U32<N>(0x7FFFFFFF), U32<N>(0x461C4000)));
}

// |x| below 9984 in every lane: a test of the upper halves of the patterns, and of all lanes at once.
inline bool wellInMainRange(F32<16> x) {
    const U32<16> magnitude = asBits(x) & U32<16>(0x7FFFFFFF);
    const auto largest = [](U32<8> m) OKT_INLINE { return maxHighHalves(m.lowHalf(), m.highHalf()); };
    return !any(
        greaterSigned(maxHighHalves(largest(magnitude.lowHalf()), largest(magnitude.highHalf())), U32<4>(0x461BFFFF)));
}

// The Real32 loops work a strip of elements in two passes, with reduced arguments in memory between them. A
// pass has few values alive for each element, so that many elements' chains, which are long, run side by side.
inline constexpr int stripLength = 32;

// The first pass: `reduce(i)` for the eight elements from i on, as long as elements are well in range; false
// where some are not.
template <class Reduce>
inline bool reduceStrip(const Real32* src, const Reduce& reduce) {
    for (int i = 0; i < stripLength; i += 16) {
        if (!wellInMainRange(F32<16>::load(src + i))) [[unlikely]]
            return false;
        reduce(i);
        reduce(i + 8);
    }
    return true;
}

// ---------------------------------------------------------------------------------------------------------------------
// Element paths: one element, reduced by reduceQuarterPi from 2^17 up.

template <int N>
struct ElementAngle {
    F64<N> r, rl;
    U64<N> row;
    Series<N> poly;

    ElementAngle(F64<N> head, F64<N> tail, U64<N> quadrant) {
        const Reduced<N> reduced = reduce<Steps64>(head);
        r = reduced.r;
        rl = reduced.rl + tail;
        row = reduced.row + (quadrant << 4);
        poly = series<Steps64>(r);
    }

    F64<N> sine() const { return at(0); }
    F64<N> cosine() const { return at(1); }

private:
    F64<N> at(int quarters) const {
        return summands(tables::sinCosElementTable, rowOffset<Steps64>(row, quarters), r, rl, poly).elementSum();
    }
};

// For finite x; below 2^-252 the functions have steps of their own.
inline ElementAngle<1> elementAngle(Real64 x) {
    QuarterPiReduction reduction{x, 0.0, 0};
    if (biasedExponent(x) >= 1040) reduction = reduceQuarterPi(x);
    return {reduction.head, reduction.tail, std::uint64_t{reduction.quadrant}};
}

template <int N>
inline ElementAngle<N> elementAngle(const QuarterPiReductions<N>& reductions) {
    return {reductions.head, reductions.tail, reductions.quadrant};
}

inline bool isTiny(Real64 x) { return biasedExponent(x) < 771; }

// Rounds like x and raises inexact; a zero comes back as it is.
inline Real64 sineOfTiny(Real64 x) {
    if (x == 0.0) return x;
    return (0x1p55 * x - x) * 0x1p-55;
}
inline Real64 cosineOfTiny(Real64 x) { return 1.0 - abs(F64<1>(x)).raw; }

// An infinity has no sine: the default NaN with invalid raised, and the status. A NaN comes back quiet.
inline Real64 ofNonFinite(Real64 x, OktStatus& status) {
    const Real64 result = x - x;
    if (isInfinite(x)) {
        raiseStatusFlag(oktStatusDomain);
        status = oktStatusDomain;
    }
    return result;
}

// The Real32 element paths give an infinity of either sign this NaN.
inline Real32 ofInfinity32(OktStatus& status) {
    raiseStatusFlag(oktStatusDomain);
    status = oktStatusDomain;
    return asReal(Format<Real32>::nan);
}

}  // namespace okt::sine
