// ln(1 + x), in Real64 for both types.
//
// From 0.0713 on in magnitude: 1 + x = 2^e · m; a table gives for the leading bits of m a short reciprocal
// rs/2^-e and its logarithm in two parts. u = x · rs + (rs - 1), taken without the rounded 1 + x, goes
// through a polynomial. From 2^55 on the 1 is dropped. Below 0.0713 three series take over, the longest of
// which carries the square in two parts, with heads of 21 bits by Dekker's split. Real32 narrows the result
// once; where a result of 46 good bits already tells what these steps narrow to, it takes a shorter way.
//
// Largest errors seen:
//   Real32  0.5001 ulp
//   Real64  0.5277 ulp
//
// GCC: -fno-tree-ter (1.01)
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Log1p.h"
#include "explog/log1p_tables.h"
#include "explog/packed_element_loop.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/narrowing.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// Reciprocal, free, low and high part of its logarithm in one row, so that one index serves all.
struct Rows {
    alignas(64) Real64 field[4 * 256] = {};
    constexpr Rows() {
        for (int i = 0; i < 256; ++i) {
            field[4 * i] = tables::log1pRecip[i];
            field[4 * i + 2] = tables::log1pLogs[2 * i];
            field[4 * i + 3] = tables::log1pLogs[2 * i + 1];
        }
    }
};
constexpr Rows rows;

constexpr Real64 tiny = 0x1p-1000;

struct Constants {
    Constant64 one = 1.0;
    Constant64 half = 0.5;
    Constant64 minusHalf = -0.5;
    Constant64 ln2Head = 0x1.62e42feep-1;
    Constant64 ln2Tail = 0x1.a39ef35793c76p-33;
    Constant64 round = 0x1p32;
    Constant64 split = 0x1.00000001p+32;  // 2^32 + 1
    Pattern64 upperWord = 0xFFFFFFFF00000000;
    Pattern64 exponentField = 0x7FF0000000000000;
    Pattern64 inverseScale = 0x7FE0000000000000;
    Pattern32 rowBits = 0x00001FE0;
    Pattern32 bias = 1023;
    // Table ranges: ln(1 + u) = u + u^2 (g2 + g3 u + ...) on |u| < 0.00212, relative error 2^-59.7; fitted.
    Constant64 g2 = -0.5;
    Constant64 g3 = 0x1.555555554d0dfp-2;
    Constant64 g4 = -0x1.ffffffffe169dp-3;
    Constant64 g5 = 0x1.999a24cdb6abcp-3;
    Constant64 g6 = -0x1.5555f7bd1fcd4p-3;
    // ln(1 + x) from 2^-6 to 0.0713, relative error 2^-67.9; fitted. Coefficients of x^4, x^6 ... and of x^3, x^5 ...,
    // the highest first, the head of 1/3 apart.
    Constant64 third = 0x1.55555p-2;
    Constant64 mediumEven[6] = {-0x1.29d524f0060ep-4,  -0x1.554a46fbcec87p-4, -0x1.9999a57df52ccp-4,
                                -0x1.fffffff91931ep-4, -0x1.55555555565f1p-3, -0x1.ffffffffffffep-3};
    Constant64 mediumOdd[6] = {0x1.3ffb2ac7a39a4p-4, 0x1.74544a220006fp-4, 0x1.c71c7998fe202p-4,
                               0x1.24924922ca0f5p-3, 0x1.9999999999fc9p-3, 0x1.5555555453a31p-24};
    // The same from 2^-13 to 2^-6, relative error 2^-68.1; fitted but for 1/3.
    Constant64 shortEven[4] = {-0x1.99d9a03a0403ep-4, -0x1.fffffb94b8a57p-4, -0x1.5555555566ad6p-3,
                               -0x1.ffffffffffffcp-3};
    Constant64 shortOdd[4] = {0x1.c756a566ce20dp-4, 0x1.2492478d1d116p-3, 0x1.99999999a2b21p-3, 0x1.5555555555555p-2};
    // ln(1 + x) = x + x^2 (t2 + t3 x + ...) below 2^-13, relative error 2^-69.2; -1/2 and 1/3, the others fitted.
    Constant64 t2 = -0.5;
    Constant64 t3 = 0x1.5555555555555p-2;
    Constant64 t4 = -0x1.0000003555556p-2;
    Constant64 t5 = 0x1.99999a199b4b4p-3;
    // The ranges by the upper word of the magnitude.
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 tableFirst = 0x3FB24000;
    Pattern32 tableLast = 0x435FFFFF;      // 2^55
    Pattern32 belowMinusOne = 0x03700000;  // less for negative elements, which end at -1
    Pattern32 mediumFirst = 0x3F900000;
    Pattern32 smallFirst = 0x3F200000;
    Pattern32 ordinaryFirst = 0x3C600000;
};
constexpr Constants constants;

// The constants of the shorter way for Real32.
struct ShortConstants {
    Constant64 one = 1.0;
    Constant64 ln2 = 0x1.62e42fefa39efp-1;
    // ln(1 + u) = u + u^2 (c2 + c3 u + ...) on -2^-9 <= u <= 2^-8, relative error 2^-47.2; fitted.
    Constant64 c2 = -0x1.fffffffffe92ep-2;
    Constant64 c3 = 0x1.5555557a8002fp-2;
    Constant64 c4 = -0x1.000020233c053p-2;
    Constant64 c5 = 0x1.9845f04c94be3p-3;
    Pattern32 firstOfTable = 0x3FE60000;  // upper word of 11/16
    Pattern32 exponentField = 0xFFF00000;
    Pattern32 rowBits = 0x00000FF0;
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 leastMagnitude = 0x31800000;  // 2^-28
    Pattern32 infinity = 0x7F800000;
    Pattern32 belowMinusOne = 0x40000000;  // less for negative elements
    NarrowingMargin margin{1 << 10};
};
constexpr ShortConstants shortConstants;

template <int Count, int N>
inline F64<N> horner(const Constant64 (&coefficient)[Count], F64<N> v) {
    F64<N> sum = coefficient[0];
    for (int i = 1; i < Count; ++i) sum = sum * v + coefficient[i];
    return sum;
}

// ln(2^e · (1 + hi + low2)/recip), where (low, high) is -ln recip.
template <int N>
inline F64<N> fromTable(const Constants& c, F64<N> hi, F64<N> lo2, F64<N> e, F64<N> low, F64<N> high) {
    const F64<N> u = hi + lo2;
    const F64<N> v = u * u;
    const F64<N> q = (((v * c.g6 + c.g4) * v + c.g2) + (v * c.g5 + c.g3) * u) * v + lo2;
    const F64<N> rl = (e * c.ln2Tail + low) + q;
    const F64<N> rh = (e * c.ln2Head + high) + hi;
    return rh + rl;
}

// 0.0712890625 to 2^55, and down to -1
template <int N>
[[gnu::always_inline]] inline F64<N> tableRange(const Constants& c, F64<N> x) {
    const F64<N> t = x + c.one;
    const U32<N> ht = packHighWords(asBits(t));
    const InMemory<std::uint32_t, N> row((ht >> 7) & c.rowBits);
    const F64<N> e = toReal64((ht >> 20) - c.bias);
    const F64<N> s = asReal(U64<N>(c.inverseScale) - (asBits(t) & c.exponentField));
    const F64<N> xh = asReal(asBits(x) & c.upperWord);
    const F64<N> xl = x - xh;
    const auto [recip, free, low, high] = gatherRowsAt<Real64>(rows.field, row);
    const F64<N> rs = recip * s;
    const F64<N> b = xh * rs + (rs - c.one);
    const F64<N> d = xl * rs;
    const F64<N> hi = ((b + d) + c.round) - c.round;
    const F64<N> lo2 = (b - hi) + d;
    return fromTable(c, hi, lo2, e, low, high);
}

// 2^55 and above
Real64 hugeRange(Real64 x) {
    const std::uint32_t ix = highWord(x);
    const F64x1 e = toReal64(U32<1>((ix >> 20) - 1023));
    const Real64 m = bits64((asBits(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 mh = bits64(asBits(m) & 0xFFFFFFFF00000000);
    const Real64 ml = m - mh;
    const Real64* row = rows.field + 4 * (ix >> 12 & 0xFF);
    return fromTable(constants, F64x1(mh * row[0] - Real64{1}), F64x1(ml * row[0]), e, F64x1(row[2]), F64x1(row[3]))
        .raw;
}

template <int N>
inline F64<N> head(const Constants& c, F64<N> x) {
    return x * c.split - x * c.round;
}

// 2^-6 to 0.0712890625: x + (xh + xl)^2 (bh + bl)
template <int N>
inline F64<N> mediumRange(const Constants& c, F64<N> x) {
    const F64<N> v = x * x;
    const F64<N> xh = head(c, x);
    const F64<N> xl = x - xh;
    const F64<N> q = (horner(c.mediumEven, v) * v + horner(c.mediumOdd, v) * x) + xl * c.third;
    const F64<N> a = xh * c.third + c.minusHalf;
    const F64<N> d = (x + xh) * xl;
    const F64<N> b = a + q;
    const F64<N> bh = head(c, b);
    const F64<N> bl = b - bh;
    const F64<N> w = xh * xh + d;
    const F64<N> wh = head(c, w);
    const F64<N> wl = (xh * xh - wh) + d;
    const F64<N> low = xl + (bl * v + wl * bh);
    const F64<N> high = xh + bh * wh;
    return low + high;
}

// 2^-13 to 2^-6
template <int N>
inline F64<N> smallRange(const Constants& c, F64<N> x) {
    const F64<N> v = x * x;
    const F64<N> s = v * (x * horner(c.shortOdd, v) + v * horner(c.shortEven, v));
    const F64<N> xh = asReal(asBits(x) & c.upperWord);
    const F64<N> xl = x - xh;
    const F64<N> square = xh * xh;
    const F64<N> qh = asReal(asBits(square) & c.upperWord);
    const F64<N> ql = square - qh;
    const F64<N> low = (((xh + xl) + xh) * xl + ql) * c.minusHalf + (s + xl);
    const F64<N> high = xh - qh * c.half;
    return low + high;
}

// 2^-57 to 2^-13
template <int N>
inline F64<N> leastRange(const Constants& c, F64<N> x) {
    const F64<N> v = x * x;
    return x + x * (v * (v * c.t5 + c.t3) + x * (v * c.t4 + c.t2));
}

[[gnu::noinline]] Real64 log1pElement(Real64 x, OktStatus& warning) {
    const std::uint32_t hx = highWord(x);
    const std::uint32_t ix = hx & 0x7FFFFFFF;
    if (ix >= 0x7FF00000) {
        if (isNaN(x)) return opaque(x) * opaque(Real64{1});  // quieted
        if (!isNegative(x)) return x;
        warning = oktStatusDomain;
        return opaque(infinity<Real64>()) * opaque(Real64{0});  // the processor's NaN, raises invalid
    }
    if (hx >= 0xBFF00000) {
        if (asBits(x) == 0xBFF0000000000000) {
            warning = oktStatusSingularity;
            return opaque(Real64{-1}) / opaque(Real64{0});  // -Inf, raises divide-by-zero
        }
        warning = oktStatusDomain;
        return opaque(infinity<Real64>()) * opaque(Real64{0});
    }
    if (ix >= 0x43600000) return hugeRange(x);
    if (ix >= 0x3FB24000) return tableRange(constants, F64x1(x)).raw;
    if (ix >= 0x3F900000) return mediumRange(constants, F64x1(x)).raw;
    if (ix >= 0x3F200000) return smallRange(constants, F64x1(x)).raw;
    if (ix >= 0x3C600000) return leastRange(constants, F64x1(x)).raw;
    if (isZero(x)) return x;
    return x - opaque(tiny) * opaque(tiny);  // x, inexact and underflow
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64. Ordinary elements, 2^-57 to 2^55 and above -1, take the steps of their range in lanes. The
// elements of a chunk are listed by range and worked eight of a range at a time. No operation of a
// range raises anything but inexact, which every element raises, so that the order leaves no trace.

constexpr int chunkLength = 128;
constexpr int rangeCount = 4;

struct Chunk {
    alignas(16) Real64 x[chunkLength];
    alignas(16) Real64 result[chunkLength];
    alignas(16) std::uint32_t range[chunkLength];
};

struct Lanes {
    U32<8> magnitude;
    bool ordinary, allInTable;
};

inline Lanes classify(const Constants& c, F64<8> x) {
    const U32<8> hx = packHighWords(asBits(x));
    const U32<8> ix = hx & c.magnitude;
    const U32<8> last = U32<8>(c.tableLast) - (shiftRightSigned(hx, 31) & c.belowMinusOne);
    const Mask32<8> outside = greaterSigned(ix, last) | greaterSigned(U32<8>(c.ordinaryFirst), ix);
    return {ix, !any(outside), !any(greaterSigned(U32<8>(c.tableFirst), ix))};
}

// 0 for the table range to 3 for the least one.
inline U32<8> rangeNumber(const Constants& c, U32<8> ix) {
    const U32<8> one(1);
    return (zeroUnless(greaterSigned(U32<8>(c.tableFirst), ix), one) +
            zeroUnless(greaterSigned(U32<8>(c.mediumFirst), ix), one)) +
           zeroUnless(greaterSigned(U32<8>(c.smallFirst), ix), one);
}

// Eight of the listed places at a time; the last group is filled up with its last place.
template <class Range>
inline void workList(Chunk& chunk, std::uint8_t* place, int count, const Range& range) {
    if (count == 0) return;
    for (int i = 0; i < 8; ++i) place[count + i] = place[count - 1];
    for (int i = 0; i < count; i += 8)
        scatterElementsToPlaces<8>(chunk.result, place + i, range(gatherElementsAtPlaces<8>(chunk.x, place + i)));
}

[[gnu::noinline]] void workByRange(const Constants& c, Chunk& chunk, int length) {
    std::uint8_t place[rangeCount][chunkLength + 8];
    int count[rangeCount] = {};
    for (int i = 0; i < length; ++i) {
        const std::uint32_t range = chunk.range[i];
        place[range][count[range]++] = static_cast<std::uint8_t>(i);
    }
    workList(chunk, place[0], count[0], [&c](F64<8> x) { return tableRange(c, x); });
    workList(chunk, place[1], count[1], [&c](F64<8> x) { return mediumRange(c, x); });
    workList(chunk, place[2], count[2], [&c](F64<8> x) { return smallRange(c, x); });
    workList(chunk, place[3], count[3], [&c](F64<8> x) { return leastRange(c, x); });
}

// Elements behind the last whole block are worked with copies of the last of them.
[[gnu::noinline]] bool chunkOfOrdinary(const Constants& c, const Real64* from, int length, Real64* to) {
    Chunk chunk;
    const int whole = length / 8 * 8;
    bool ordinary = true, allInTable = true;
    const auto enter = [&](F64<8> x, int i) OKT_INLINE {
        const Lanes lanes = classify(c, x);
        ordinary &= lanes.ordinary;
        allInTable &= lanes.allInTable;
        x.store(chunk.x + i);
        rangeNumber(c, lanes.magnitude).store(chunk.range + i);
    };
    for (int i = 0; i < whole; i += 8) enter(F64<8>::load(from + i), i);
    if (whole != length) {
        for (int i = 0; i < 8; ++i)
            chunk.x[whole + i] = loadElement(from + (whole + i < length ? whole + i : length - 1));
        enter(F64<8>::load(chunk.x + whole), whole);
    }
    if (!ordinary) [[unlikely]]
        return false;
    if (allInTable) {
        for (int i = 0; i < whole; i += 8) tableRange(c, F64<8>::load(chunk.x + i)).store(to + i);
        if (whole != length) tableRange(c, F64<8>::load(chunk.x + whole)).store(chunk.result + whole);
    } else {
        workByRange(c, chunk, length);
        for (int i = 0; i < whole; i += 8) F64<8>::load(chunk.result + i).store(to + i);
    }
    for (int i = whole; i < length; ++i) storeElement(to + i, chunk.result[i]);
    return true;
}

// Eight elements of the table range.
inline bool blockOfTable(const Constants& c, const Real64* from, Real64* to) {
    const F64<8> x = F64<8>::load(from);
    const Lanes lanes = classify(c, x);
    if (!lanes.ordinary || !lanes.allInTable) return false;
    tableRange(c, x).store(to);
    return true;
}

void log1p64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants& c = inMemory(constants);
    const auto tryBlock = [&c](const Real64* from, Real64* to) { return blockOfTable(c, from, to); };
    const bool inOrder = smearsForward(src, dst, len, chunkLength);
    for (std::int32_t i = 0, length; i < len; i += length) {
        length = inOrder || len - i < chunkLength ? len - i : chunkLength;
        if (inOrder || length < 12 || !chunkOfOrdinary(c, src + i, length, dst + i)) [[unlikely]]
            packedWarningLoop<8>(src + i, dst + i, length, tryBlock, log1pElement, status);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32. All ranges by one formula, with a relative error below 2^-46: 1 + x is exact where it matters, and the
// table's row at 1 leaves u = x.

template <int N>
inline F64<N> log1pShort(const ShortConstants& c, F64<N> x) {
    const F64<N> t = x + c.one;
    const U32<N> position = packHighWords(asBits(t)) - c.firstOfTable;
    const InMemory<std::uint32_t, N> row((position >> 8) & c.rowBits);
    const F64<N> e = toReal64(shiftRightSigned(position, 20));
    const F64<N> m = asReal(asBits(t) - withHighWords(position & c.exponentField));
    const auto [recip, log] = gatherPairsAt<1>(tables::log1pShort, row);
    const F64<N> u = m * recip - c.one;
    const F64<N> p = ((u * c.c5 + c.c4) * u + c.c3) * u + c.c2;
    return (e * c.ln2 + log) + ((u * u) * p + u);
}

// From 2^-28 on, finite, above -1.
template <int N>
inline bool allOrdinary(const ShortConstants& c, F32<N> x) {
    const U32<N> bits = asBits(x);
    const U32<N> magnitude = bits & c.magnitude;
    const U32<N> end = U32<N>(c.infinity) - (shiftRightSigned(bits, 31) & c.belowMinusOne);
    return all(greaterSigned(end, magnitude) & greaterSigned(magnitude, U32<N>(c.leastMagnitude)));
}

Real32 log1pElement32(Real32 x, OktStatus& warning) {
    return static_cast<Real32>(log1pElement(static_cast<Real64>(x), warning));
}

void log1p32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const ShortConstants& c = inMemory(shortConstants);
    const auto tryBlock = [&c](const Real32* from, Real32* to) OKT_INLINE {
        const F32<8> x = F32<8>::load(from);
        if (!allOrdinary(c, x)) [[unlikely]]
            return false;
        const F64<8> result = log1pShort(c, widen(x));
        if (!c.margin.settlesAll(result)) [[unlikely]]
            return false;
        narrow(result).store(to);
        return true;
    };
    packedWarningLoop<8>(src, dst, len, tryBlock, log1pElement32, status);
}

}  // namespace

OKT_EXPORT(Log1p, 32f, log1p32)
OKT_EXPORT(Log1p, 64f, log1p64)

}  // namespace okt
