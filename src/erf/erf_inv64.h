// The inverse of erf on Real64, A50: polynomials of degree 12 and 14 in x^2 - 0.875^2 and in 1/y, y = sqrt(-ln(1 -
// |x|)); the first terms, the argument and the last product in two parts, of which the high one is so short that
// products of high parts are exact.
#pragma once

#include "erf/erf_inv_special.h"
#include "erf/erf_inv_tables.h"
#include "erf/inverse_terms.h"
#include "erf/sorted_loop.h"
#include "lanes/lookup.h"

namespace okt::inverse_erf {
namespace {

struct Constants64 {
    Constant64 one = 1.0;
    Constant64 half = 0.5;
    Constant64 middle = 0.765625;  // 0.875^2
    Constant64 rowsOfS = -128.0 / 3;
    Constant64 rowCount = 32.0;
    Constant64 lastRow = 31.0;
    Constant64 widthOfS = 0.0234375;  // 3/128
    Constant64 sixteen = 16.0;
    Constant64 sixteenth = 0.0625;
    // The series in s = x^2: three short coefficients, the rest of the first, and the coefficients from s on, of which
    // the first two are rests. erfinv x below 1/8, relative error 2^-74.5; fitted.
    Constant64 seriesA = slopeShort;
    Constant64 seriesLow = slopeRest;
    Constant64 seriesB = 0x1.db2ap-3;
    Constant64 seriesC = 0.12755584716796875;
    Constant64 seriesRest[8] = {-0x1.340468702cad5p-25, 0x1.6055c8e68c6bbp-22, 0x1.62847c47db0ecp-4,
                                0x1.0a13189fc0194p-4,   0x1.a7c857c26535cp-5,  0x1.5eed224d0de5dp-5,
                                0x1.2a3b8effe372bp-5,   0x1.1453877604fe5p-5};
    // -ln(1 - z) = z + z^2 (1/2 + ...) on -0.0028 < z < 0.0029, relative error 2^-55.2; fitted but for 1/2.
    Constant64 log[5] = {0.5, 0x1.555555554d0dfp-2, 0x1.ffffffffe169dp-3, 0x1.999a24cdb6abcp-3, 0x1.5555f7bd1fcd4p-3};
    Constant64 minusLn2Hi = -0x1.62e42feep-1;  // short, so that its product with an exponent is exact
    Constant64 minusLn2Lo = -0x1.a39ef35793c76p-33;
};
constexpr Constants64 constants64;

// x · (c0 + c1 t + c2 t^2 + plain), where c0 is hi + lo, c1 and c2 are short, and t is given by its parts, too. The sum
// is made from the smallest term up; then its short part is taken, and the rest gathered, which is exact but for `low`.
template <int N>
struct LeadingTerms {
    F64<N> hi, lo, c1, c2;
};
template <int N>
inline F64<N> timesPolynomial(F64<N> x, DoubleDouble<N> xParts, const LeadingTerms<N>& c, F64<N> t,
                              DoubleDouble<N> tParts, F64<N> plain) {
    const F64<N> linear = c.c1 * tParts.hi;
    const F64<N> square = c.c2 * tParts.hi * tParts.hi;
    const F64<N> low = ((c.c2 * (tParts.lo * (tParts.hi + t)) + c.c1 * tParts.lo) + plain) + c.lo;
    const F64<N> top = shortSplit(c.hi + (linear + (square + low))).hi;
    const F64<N> rest = (((c.hi - top) + linear) + square) + low;
    return xParts.hi * top + (xParts.lo * top + x * rest);
}

// 2^-35 <= |x| < 0.125.
template <int N>
inline F64<N> erfInvSmall(const Constants64& k, F64<N> x) {
    const DoubleDouble<N> parts = shortSplit(x);
    const F64<N> square = parts.hi * parts.hi;  // exact
    const F64<N> squareLo = parts.hi * parts.lo + parts.lo * x;
    const F64<N> s = square + squareLo;
    const F64<N> sh = shortSplit(s).hi;
    const DoubleDouble<N> sParts = {sh, (square - sh) + squareLo};
    const LeadingTerms<N> c = {F64<N>(k.seriesA), F64<N>(k.seriesLow), F64<N>(k.seriesB), F64<N>(k.seriesC)};
    return timesPolynomial(x, parts, c, s, sParts, horner(k.seriesRest, s) * s);
}

// 0.125 <= |x| < 0.875.
template <int N>
inline F64<N> erfInvMiddle(const Constants64& k, F64<N> x) {
    const DoubleDouble<N> parts = shortSplit(x);
    const F64<N> s = parts.hi * parts.hi - F64<N>(k.middle);  // exact
    const F64<N> sLo = parts.hi * parts.lo + parts.lo * x;
    const F64<N> cell = truncated(s * F64<N>(k.rowsOfS));
    const F64<N> row = select(cell == F64<N>(k.rowCount), F64<N>(k.lastRow), cell);
    const F64<N> centred = s + row * F64<N>(k.widthOfS);  // exact
    const F64<N> v = centred + sLo;
    const F64<N> vh = shortSplit(v).hi;
    const DoubleDouble<N> vParts = {vh, (centred - vh) + sLo};

    const InMemory<std::uint64_t, N> offset(toUnsigned(row) << 7);  // 128 bytes a row
    const RowPerLane<N, std::uint64_t> b(tables::erfInvMiddle, offset.lane);
    const auto [b12, b13] = b.pair(12);
    const auto [b10, b11] = b.pair(10);
    const auto [b8, b9] = b.pair(8);
    const auto [b6, b7] = b.pair(6);
    const auto [b4, b5] = b.pair(4);
    const auto [b2, b3] = b.pair(2);
    const auto [b0, b1] = b.pair(0);
    const auto [b14, b15] = b.pair(14);
    F64<N> p = (((((b12 * v + b11) * v + b10) * v + b9) * v + b8) * v + b7) * v + b6;
    p = ((((p * v + b5) * v + b4) * v + b3) * v + b2) * v + b1;
    return timesPolynomial(x, parts, LeadingTerms<N>{b13, b0, b14, b15}, v, vParts, p * v);
}

// 0.875 <= |x| < 1.
template <int N>
inline F64<N> erfInvTail(const Constants64& k, F64<N> x) {
    const F64<N> w = F64<N>(k.one) - abs(x);
    const F64<N> e = exponentOf(w), m = fractionOf(w);
    const InMemory<std::uint64_t, N> logOffset((asBits(w) >> 39) & U64<N>(std::uint64_t{0xFF << 5}));  // 32 bytes a row
    const RowPerLane<N, std::uint64_t> log(tables::erfInvLog, logOffset.lane);
    const auto [minusR, logHi] = log.pair(0);
    const F64<N> logLo = log[2];
    const auto [mh, ml] = shortSplit(m);
    const F64<N> z1 = F64<N>(k.one) + mh * minusR;
    const F64<N> z2 = ml * minusR;
    const F64<N> a = e * F64<N>(k.minusLn2Hi) + logHi;
    const F64<N> b = e * F64<N>(k.minusLn2Lo) + logLo;
    const F64<N> z = z1 + z2;
    const F64<N> q = horner(k.log, z) * z * z + z2;

    const F64<N> head = a + z1;  // exact
    const F64<N> wh = shortSplit(head).hi;
    const F64<N> wl = (head - wh) + (b + q);
    const F64<N> minusLog = wh + wl;
    const F64<N> r = F64<N>(k.one) / sqrt(minusLog);
    const auto [rh, rl] = shortSplit(r);
    const F64<N> square = rh * rh;
    const F64<N> correction =
        ((F64<N>(k.one) - square * wh) - (square * wl + (rh * rl + rl * r) * minusLog)) * r * F64<N>(k.half);
    const F64<N> rLow = rl + correction;
    const DoubleDouble<N> yParts = {(wh * rh) | signOf(x), (wl * rh + minusLog * rLow) ^ signOf(x)};

    const F64<N> row = truncated(F64<N>(k.sixteen) * rh);
    const F64<N> t0 = rh - row * F64<N>(k.sixteenth);
    const F64<N> t = t0 + rLow;
    const F64<N> th = shortSplit(t).hi;
    const DoubleDouble<N> tParts = {th, (t0 - th) + rLow};

    const U64<N> i = toUnsigned(row) - U64<N>(std::uint64_t{2});
    const InMemory<std::uint64_t, N> offset((i << 7) + (i << 4));  // 144 bytes a row
    const RowPerLane<N, std::uint64_t> c(tables::erfInvTail, offset.lane);
    const auto [c14, c15] = c.pair(14);
    const auto [c12, c13] = c.pair(12);
    const auto [c10, c11] = c.pair(10);
    const auto [c8, c9] = c.pair(8);
    const auto [c6, c7] = c.pair(6);
    const auto [c4, c5] = c.pair(4);
    const auto [c2, c3] = c.pair(2);
    const auto [c0, c1] = c.pair(0);
    const auto [c16, c17] = c.pair(16);
    F64<N> p = ((((((c14 * t + c13) * t + c12) * t + c11) * t + c10) * t + c9) * t + c8) * t + c7;
    p = (((((p * t + c6) * t + c5) * t + c4) * t + c3) * t + c2) * t + c1;
    const F64<N> y = yParts.hi + yParts.lo;
    return timesPolynomial(y, yParts, LeadingTerms<N>{c15, c0, c16, c17}, t, tParts, p * t);
}

constexpr WordRange ordinary64{smallHigh, oneHigh};

[[gnu::noinline]] inline Real64 erfInvElement64(Real64 x, OktStatus& status) {
    const std::uint32_t magnitude = highWord(x) & 0x7FFFFFFF;
    if (magnitude >= oneHigh) return outsideDomain(x, status);
    if (magnitude >= tailHigh) return erfInvTail(constants64, F64<1>(x)).raw;
    if (magnitude >= middleHigh) return erfInvMiddle(constants64, F64<1>(x)).raw;
    if (magnitude >= smallHigh) return erfInvSmall(constants64, F64<1>(x)).raw;
    return x == 0 ? x : erfInvTiny(x, shortSplit<1>);
}

inline void erfInv64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    SetAside<Real64> small, middle, tails;
    const auto tryBlock = [&](const Real64* from, Real64* to, std::int32_t place) OKT_INLINE {
        const F64<8> x = F64<8>::load(from);
        const U32<8> high = packHighWords(asBits(x)) & U32<8>(0x7FFFFFFF);
        if (!ordinary64.holdsAll(high)) [[unlikely]]
            return false;
        const int smallBits = laneBits(greaterSigned(U32<8>(middleHigh), high));
        const int tailBits = laneBits(greaterSigned(high, U32<8>(tailHigh - 1)));
        if ((smallBits | tailBits) != 0) {
            Real64 block[8];
            x.store(block);
            if (smallBits != 0) small.take(block, place, smallBits);
            if (tailBits != 0) tails.take(block, place, tailBits);
            middle.take(block, place, 0xFF & ~(smallBits | tailBits));
            return true;
        }
        erfInvMiddle(k, x.lowHalf()).store(to);
        erfInvMiddle(k, x.highHalf()).store(to + 4);
        return true;
    };
    const auto finish = [&](Real64* chunk) OKT_INLINE {
        small.work<4>([&k](F64<4> x) { return erfInvSmall(k, x); }, chunk);
        middle.work<4>([&k](F64<4> x) { return erfInvMiddle(k, x); }, chunk);
        tails.work<4>([&k](F64<4> x) { return erfInvTail(k, x); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, erfInvElement64, status);
}

}  // namespace
}  // namespace okt::inverse_erf
