// erfinv(x) is odd. Three routines:
//
// Real32        in Real64, with one rational per range: in x^2, in x^2 - 0.875^2, and in y = sqrt(-ln(1 - |x|)).
// Real64, A26   one polynomial of degree 4 in w = 1 - |x|, times x: a row for each of eight cells per octave of w,
//               found by the pattern of w. No guard; the elements outside 2^-35 < |x| < 1 are redone one by one.
// Real64, A50   polynomials of degree 12 and 14 in x^2 - 0.875^2 and in 1/y; the first terms, the argument and the last
//               product in two parts, of which the high one is so short that products of high parts are exact.
//
// The first and the third are element loops, worked in lanes by range; the caller's MXCSR acts on all of it.
//
// Results of small elements may be subnormal: they are worked at 2^256
// times their size and rounded once, on the grid of the subnormal numbers.
//
// Largest errors seen: Real32 0.5001 ulp; A50 0.5001 ulp; A26
// a relative error of 2.41e-9, in the cell [0.5, 0.5625) of w.
//
// GCC: -fschedule-insns -fsched-pressure (?)
#include "erf/erf_inv_tables.h"
#include "erf/sorted_loop.h"
#include "exports/ErfInv.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/constant.h"
#include "lanes/double_double.h"
#include "lanes/lanes.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// |x| >= 1, infinite or a NaN.
template <class T>
T outsideDomain(T x, OktStatus& status) {
    if (isNaN(x)) return x * x;
    T result;
    if (magnitudeBits(x) == Format<T>::one) {
        result = x / opaque(T{0});
        status = oktStatusSingularity;
    } else {
        result = opaque(infinity<T>()) * opaque(T{0});
        status = oktStatusDomain;
    }
    raiseStatusFlag(status);
    return result;
}

// The exponent of a positive normal number, and its fraction with exponent 0.
template <int N>
inline F64<N> exponentOf(F64<N> w) {
    return asReal((asBits(w) >> 52) | U64<N>(std::uint64_t{0x4330000000000000})) - F64<N>(0x1p52 + 1023);
}
template <int N>
inline F64<N> fractionOf(F64<N> w) {
    return asReal((asBits(w) & U64<N>(std::uint64_t{0x000FFFFFFFFFFFFF})) | U64<N>(std::uint64_t{0x3FF0000000000000}));
}

template <int N, std::size_t terms>
inline F64<N> horner(const Constant64 (&c)[terms], F64<N> x) {
    F64<N> sum(c[terms - 1]);
    for (std::size_t i = terms - 1; i-- > 0;) sum = sum * x + F64<N>(c[i]);
    return sum;
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Constants32 {
    // Constant terms first. erfinv x = x times a polynomial in x^2 below 1/8, relative error 2^-43.0; minimax.
    Constant64 small[5] = {0x1.c5bf891b4f2dap-1, 0x1.db29fb2537066p-3, 0x1.053c416c1708ep-3, 0x1.6266aa6eb3c65p-4,
                           0x1.12885a83a1f16p-4};
    // x times a rational function of x^2 - 0.875^2 up to 7/8, relative error 2^-44.2; minimax.
    Constant64 middleNumerator[7] = {0x1.3d60b08df7cdcp+0,  -0x1.7c83385d06be7p+3, 0x1.427831e786ff2p+5,
                                     -0x1.d21f51f0be243p+5, 0x1.132f01e77675bp+5,  -0x1.a2a295cc269b1p+2,
                                     0x1.6fd9bb64dd69dp-3};
    Constant64 middleDenominator[7] = {1.0,
                                       -0x1.4e7c78d63ffa1p+3,
                                       0x1.3d4a28193e342p+5,
                                       -0x1.0bbe7645434d3p+6,
                                       0x1.8d186d5bbfb91p+5,
                                       -0x1.b9410b0b3c252p+3,
                                       0x1.d28ef24d12a8cp-1};
    // y times one of y down to 1 - |x| = 2^-24, relative error 2^-41.0; minimax.
    Constant64 tailNumerator[6] = {-0x1.3ff6116f23fa7p-6, 0x1.04a7504e650abp+0, 0x1.fb23f3ce2dc7ep+0,
                                   0x1.dfc9a0e53781ap+1,  0x1.15873eacbc322p+1, 0x1.dfe203ac61f29p-3};
    Constant64 tailDenominator[6] = {1.0,
                                     0x1.55e43f6a3b468p+1,
                                     0x1.03ff10915d08cp+2,
                                     0x1.0cc0f8d613288p+2,
                                     0x1.162515639d37p+1,
                                     0x1.dfc0f31098188p-3};
    // -ln(1 - z) = z + z^2 (1/2 + ...) on |z| <= 1/33, relative error 2^-37.7; minimax but for 1/2.
    Constant64 log[5] = {0.5, 0x1.555551dbfc1ddp-2, 0x1.fffff815eef03p-3, 0x1.99f951aac2647p-3, 0x1.55b1e471daaddp-3};
    Constant64 minusLn2 = -0x1.62e42fefa39efp-1;
    Constant64 one = 1.0;
    Constant64 middle = 0.765625;             // 0.875^2
    Constant64 slope = 0x1.c5bf891b4ef6bp-1;  // sqrt(pi)/2
};
constexpr Constants32 constants32;

constexpr std::uint32_t one32 = 0x3F800000;
constexpr std::uint32_t tail32 = 0x3F600000;    // 0.875
constexpr std::uint32_t middle32 = 0x3E000000;  // 0.125
constexpr std::uint32_t small32 = 0x36800000;   // 2^-18

template <int N>
inline F64<N> erfInvTail(const Constants32& k, F64<N> x) {
    const F64<N> w = F64<N>(k.one) - abs(x);
    const InMemory<std::uint64_t, N> i(asBits(w) >> 48);
    const auto [r, l] = gatherPairsByLowBits<4, Real64>(tables::erfInvLog32, i);
    const F64<N> z = F64<N>(k.one) + r * fractionOf(w);
    const F64<N> a = exponentOf(w) * F64<N>(k.minusLn2) + l;
    const F64<N> q = horner(k.log, z) * z * z + z;
    const F64<N> y = sqrt(a + q);
    return (horner(k.tailNumerator, y) * (y | signOf(x))) / horner(k.tailDenominator, y);
}

template <int N>
inline F64<N> erfInvMiddle(const Constants32& k, F64<N> x) {
    const F64<N> s = x * x - F64<N>(k.middle);
    return (horner(k.middleNumerator, s) * x) / horner(k.middleDenominator, s);
}

template <int N>
inline F64<N> erfInvSmall(const Constants32& k, F64<N> x) {
    return horner(k.small, x * x) * x;
}

[[gnu::noinline]] Real32 erfInvElement32(Real32 x, OktStatus& status) {
    const std::uint32_t magnitude = magnitudeBits(x);
    if (magnitude >= one32) return outsideDomain(x, status);
    if (magnitude == 0) return x;
    const F64<1> wide = widen(F32<1>(x));
    const F64<1> result = magnitude >= tail32     ? erfInvTail(constants32, wide)
                          : magnitude >= middle32 ? erfInvMiddle(constants32, wide)
                          : magnitude >= small32  ? erfInvSmall(constants32, wide)
                                                  : wide * F64<1>(constants32.slope);
    return narrow(result).raw;
}

constexpr WordRange ordinary32{small32, one32};

void erfInv32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    SetAside<Real32> tails;
    const auto tryBlock = [&](const Real32* from, Real32* to, std::int32_t place) OKT_INLINE {
        const F32<8> x = F32<8>::load(from);
        const U32<8> magnitude = asBits(abs(x));
        if (!ordinary32.holdsAll(magnitude)) [[unlikely]]
            return false;
        const Mask32<8> tail = greaterSigned(magnitude, U32<8>(tail32 - 1));
        const int tailBits = laneBits(tail);
        if (tailBits != 0) {
            Real32 block[8];
            x.store(block);
            tails.take(block, place, tailBits);
            if (tailBits == 0xFF) return true;
        }
        const F64<8> wide = widen(zeroIf(tail, x));
        const Mask64<8> small = widen(greaterSigned(U32<8>(middle32), magnitude));
        narrow(select(small, erfInvSmall(k, wide), erfInvMiddle(k, wide))).store(to);
        return true;
    };
    const auto finish = [&](Real32* chunk) OKT_INLINE {
        tails.work<8>([&k](F32<8> x) { return narrow(erfInvTail(k, widen(x))); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, erfInvElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64, both routines

constexpr std::uint32_t oneHigh = 0x3FF00000;
constexpr std::uint32_t tailHigh = 0x3FEC0000;    // 0.875
constexpr std::uint32_t middleHigh = 0x3FC00000;  // 0.125
constexpr std::uint32_t smallHigh = 0x3DC00000;   // 2^-35

// The first coefficient of the series with few bits, and the rest of it: sqrt(pi)/2.
constexpr Real64 slopeShort = 0.88623046875;
constexpr Real64 slopeRest = -0x1.db92c4255618fp-19;

// v as its high 16 bits or so, and the rest: the difference of the rounded products drops the lower bits.
template <int N>
inline DoubleDouble<N> shortSplit(F64<N> v) {
    const F64<N> h = v * F64<N>(103079215105.0) - v * F64<N>(103079215104.0);
    return {h, v - h};
}
// The same by cutting the pattern.
template <int N>
inline DoubleDouble<N> cutSplit(F64<N> v) {
    return maskSplit(v, 0xFFFFFFF000000000);
}

// 0 < |x| < 2^-35.
template <class Split>
inline Real64 erfInvTiny(Real64 x, const Split& split) {
    const F64<1> scaled = F64<1>(x) * F64<1>(0x1p256);
    const auto [xh, xl] = split(scaled);
    const F64<1> p1 = F64<1>(slopeShort) * xh;
    const F64<1> p2 = F64<1>(slopeShort) * xl + F64<1>(slopeRest) * scaled;
    const F64<1> v = p1 + p2;
    if ((highWord(v.raw) & 0x7FFFFFFF) >= 0x10100000) return (v * F64<1>(0x1p-256)).raw;

    // Subnormal: an ulp of t is that of the results. The sum with t has the result in its fraction.
    const Real64 small = opaque(Real64{0x1p-1000});
    keepFlags(small * small);  // underflow
    const F64<1> t = F64<1>(0x1p-766) | signOf(F64<1>(x));
    const F64<1> u = split(v + t).hi;
    const F64<1> g = u + ((p1 - (u - t)) + p2);
    return bits64(asBits(g.raw) & 0x800FFFFFFFFFFFFF);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64, A26

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
[[gnu::noinline, gnu::cold]] Real64 erfInvFlagged(Real64 x, OktStatus& status) {
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

void erfInv64Fast(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
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

// ---------------------------------------------------------------------------------------------------------------------
// Real64, A50 and A53

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

[[gnu::noinline]] Real64 erfInvElement64(Real64 x, OktStatus& status) {
    const std::uint32_t magnitude = highWord(x) & 0x7FFFFFFF;
    if (magnitude >= oneHigh) return outsideDomain(x, status);
    if (magnitude >= tailHigh) return erfInvTail(constants64, F64<1>(x)).raw;
    if (magnitude >= middleHigh) return erfInvMiddle(constants64, F64<1>(x)).raw;
    if (magnitude >= smallHigh) return erfInvSmall(constants64, F64<1>(x)).raw;
    return x == 0 ? x : erfInvTiny(x, shortSplit<1>);
}

void erfInv64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
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

OKT_EXPORT(ErfInv, 32f, erfInv32)
OKT_EXPORT_GRADES(ErfInv, 64f, A26, erfInv64Fast)
OKT_EXPORT_GRADES(ErfInv, 64f, A50, erfInv64)

}  // namespace okt
