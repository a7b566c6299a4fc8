// x^y on Real64: 2^(y log2 x) with a logarithm of about 68 bits.
//
// log2 x = e + log2(K/c) + log2(1 + u/K), where c is K/m to few bits, K the high part of log2 e and u = m c - K in
// double length; the product with y is split exactly; the power of two is a table's 2^(j/128) and a polynomial in the
// rest. Outside the main range the steps are the same but for results below 2^-963, which are rounded once where they
// are subnormal.
#pragma once

#include "explog/pow_tables.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt::power {
namespace {

struct Constants64 {
    Constant64 k = 0x1.715474p+0;  // log2 e to 28 bits
    // log2(1 + u/K) = u + u (d1 + d2 u + ...) on |u| < 0.000705, relative error 2^-65.5; Taylor. d1 is what K misses of
    // log2 e, divided by K.
    Constant64 d1 = 0x1.9c3a6966457eep-24;
    Constant64 d2 = -0x1.62e4346694107p-2;
    Constant64 d3 = 0x1.47fd462b3b816p-3;
    Constant64 d4 = -0x1.550472a8bb463p-4;
    Constant64 d5 = 0x1.7a334ddfc9f86p-5;
    Constant64 d6 = -0x1.b4ea0e9419f52p-6;
    Constant64 d7 = 0x1.03950cf599c56p-6;
    // 2^z = 1 + z (e1 + e2 z + ...) on |z| <= 2^-8, relative error 2^-60.4; Taylor, cut off to 53 bits.
    Constant64 e1 = 0x1.62e42fefa39efp-1;
    Constant64 e2 = 0x1.ebfbdff82c58ep-3;
    Constant64 e3 = 0x1.c6b08d704a0bfp-5;
    Constant64 e4 = 0x1.3b2ab6fba4e77p-7;
    Constant64 e5 = 0x1.5d87fe78a6731p-10;
    Constant64 shift = 0x1.8p+45;  // the sum's low bits hold the multiple of 1/128
    Pattern64 fraction = 0x000FFFFFFFFFFFFF;
    Pattern64 one = 0x3FF0000000000000;
    Pattern64 upperBits = 0xFFFFFFFFF8000000;  // the lowest 27 bits cleared: half of a significand
    Pattern64 exponentField = 0xFFF0000000000000;
    Pattern32 indexBits = 0x000FFE00;
    Pattern32 halfIndex = 0x00000200;
    Pattern32 offsetBits = 0x00003FF8;
    Pattern32 exponentBase = 0x3FE7FE00;  // makes e go up where the index reaches the middle of the table
    Pattern32 magnitude = 0x7FFFFFFF;
};
constexpr Constants64 constants64;

// The main path's bounds: of the exponent fields of log2 x and y together, which says |y log2 x| < 4096 and some, and
// of n.
constexpr std::uint32_t largestExponentSum = 0x80900000;
constexpr std::int32_t lowestN = -964 * 128, highestN = 1023 * 128;  // both exclusive

// The bounds of the hot loop, within which it makes no difference to the bits which path an element takes.
constexpr std::uint32_t hotExponentFirst = 0x00100000, hotExponentLast = 0x7F2FFFFF;  // 2^-1022 <= |y| < 2^1012
constexpr std::uint32_t hotBoundHigh = 0x408E1000;                                    // |y log2 x| < 962

// The upper half of a significand: a number whose product with another such half is exact.
template <int N>
inline F64<N> upperHalf(const Constants64& c, F64<N> x) {
    return asReal(asBits(x) & c.upperBits);
}

template <int N>
struct Log2 {
    F64<N> leading;    // to a part in 2^11: the range test looks at its exponent
    F64<N> high, low;  // log2 x
};

template <int N>
inline U32<N> exponentFor(const Constants64& c, U32<N> highWords) {
    return shiftRightSigned(highWords - c.exponentBase, 20);
}

// log2 x of a normal x, given its exponent as a number of its own. This and the following steps have to be inlined into
// the hot loop, where eight elements in flight hide the length of the chain of operations; the compiler would put their
// intermediate results into structures in memory.
template <int N>
[[gnu::always_inline]] inline Log2<N> log2Of(const Constants64& c, F64<N> x, U32<N> highWords, U32<N> exponent) {
    const InMemory<std::uint32_t, N> offset((((highWords & c.indexBits) + c.halfIndex) >> 7) & c.offsetBits);
    const F64<N> e = toReal64(exponent);
    const F64<N> rcp = gatherElementsAt<1>(tables::PowRcp64, offset);
    const auto [hi, lo] = gatherPairsAt<2>(tables::PowLog64, offset);

    const F64<N> m = asReal((asBits(x) & c.fraction) | c.one);
    const F64<N> mh = upperHalf(c, m);
    const F64<N> ml = m - mh;
    const F64<N> v = m * rcp;
    const F64<N> a = v - c.k;
    const F64<N> b = (mh * rcp - v) + ml * rcp;

    const F64<N> p = e + hi;
    const F64<N> s1 = p + a;
    const F64<N> l1 = (p - s1) + a;
    const F64<N> s2 = s1 + b;
    const F64<N> l2 = ((s1 - s2) + b) + l1;
    const F64<N> u = b + a;
    const F64<N> q = u * (c.d1 + u * (c.d2 + u * (c.d3 + u * (c.d4 + u * (c.d5 + u * (c.d6 + u * c.d7))))));
    const F64<N> l3 = (l2 + lo) + q;
    const F64<N> h = s2 + l3;
    return {s1, h, (s2 - h) + l3};
}

// A number and its two halves.
template <int N>
struct Halves {
    F64<N> whole, high, low;
};
template <int N>
inline Halves<N> halvesOf(const Constants64& c, F64<N> x) {
    const F64<N> high = upperHalf(c, x);
    return {x, high, x - high};
}

// y log2 x; the high part is exact.
template <int N>
inline F64<N> productHigh(const Constants64& c, const Halves<N>& y, F64<N> logHigh) {
    return y.high * upperHalf(c, logHigh);
}
template <int N>
[[gnu::always_inline]] inline F64<N> productLow(const Constants64& c, const Halves<N>& y, const Log2<N>& log) {
    const F64<N> hh = upperHalf(c, log.high);
    const F64<N> ht = log.high - hh;
    const F64<N> mid = (ht * y.low + ht * y.high) + y.low * hh;
    return mid + y.whole * log.low;
}

template <int N>
struct Exp2 {
    U64<N> n;  // the low bits: 128 k + j
    F64<N> zHigh, z;
    F64<N> hi, lo;  // 2^(j/128)
    F64<N> rest;    // 2^(j/128 + z) = hi + rest
};

// 2^(w + low) without the scale 2^k.
template <int N>
[[gnu::always_inline]] inline Exp2<N> exp2Of(const Constants64& c, F64<N> w, F64<N> low) {
    const F64<N> t = w + c.shift;
    const InMemory<std::uint64_t, N> n(asBits(t));
    const auto [hi, lo] = gatherPairsByLowBits<7, Real64>(tables::PowExp64, n);
    const F64<N> zHigh = w - (t - c.shift);
    const F64<N> z = low + zHigh;
    const F64<N> a = (((((c.e5 * z) + c.e4) * z) * z) * z) * z;
    const F64<N> b = ((c.e3 * z + c.e2) * z) * z;
    const F64<N> e = c.e1 * z;
    return {n, zHigh, z, hi, lo, ((a * hi + lo) + b * hi) + e * hi};
}

// Scaled to a normal result: the exact product with 2^k is an addition to the exponent field.
template <int N>
[[gnu::always_inline]] inline F64<N> scaled(const Constants64& c, const Exp2<N>& p) {
    return asReal(asBits(p.rest + p.hi) + ((p.n << 45) & c.exponentField));
}

inline std::int32_t nOf(Real64 w) { return static_cast<std::int32_t>(lowWord(w + constants64.shift.lane[0])); }

inline Real64 cut(Real64 x, std::uint64_t kept) { return bits64(asBits(x) & kept); }

// Results around and below the smallest normal number, with one rounding into the subnormals.
inline Real64 subnormalPower(const Exp2<1>& p, Real64 low, std::int32_t k, Real64 sign) {
    const Constants64& c = constants64;
    const Real64 hi = p.hi.raw, lo = p.lo.raw, z = p.z.raw, rest = p.rest.raw;
    const Real64 f = sign * 0x1p-111;
    const Real64 g = powerOfTwo<Real64>(k + 111);
    if ((highWord((hi * g) * f) & 0x7FFFFFFF) > 0x00100000) {
        const Real64 zLow = low - (z - p.zHigh.raw);
        const F64x1 v(z);
        const Real64 q = (c.e1 + v * (c.e2 + v * (c.e3 + v * (c.e4 + v * c.e5)))).raw;
        const Real64 product = z * q;
        const Real64 ph = cut(product, ~std::uint64_t{0xFFFFFF});
        const Real64 pl = q * zLow + (product - ph);
        const Real64 th = cut(hi, ~std::uint64_t{0xFFFFFFFF});
        const Real64 tl = hi - th;
        return ((((((product * lo + tl * pl) + pl * th) + lo) + tl * ph) + th * ph) + hi) * (g * f);
    }
    const Real64 tc = cut(hi, ~std::uint64_t{0xFFFFFFFFFFFF});
    const Real64 rc = cut(rest, ~std::uint64_t{0xFFFFFFFF});
    return (tc * g) * f + (((hi - tc) + (rest - rc)) + rc) * (g * f);
}

inline bool exponentsFit(Real64 leading, Real64 y) {
    return (highWord(leading) & 0x7FF00000) + (highWord(y) & 0x7FF00000) <= largestExponentSum;
}

// sign · |x|^y for finite operands other than zero. Infinite and zero results are constants: they raise nothing but
// what the logarithm and its product with y have raised.
inline Real64 generalPower(Real64 x, Real64 y, Real64 sign) {
    const Constants64& c = constants64;
    const Real64 infinite = withSign(infinity<Real64>(), sign), zero = withSign(Real64{0}, sign);

    Real64 a = magnitude(x);
    std::uint32_t exponentLess = 0;
    if (highWord(a) < 0x00100000) {
        a = a * 0x1p52;
        exponentLess = 52;
    }
    const U32<1> high(highWord(a));
    const Log2<1> log = log2Of(c, F64x1(a), high, exponentFor(c, high) - U32<1>(exponentLess));
    keepFlags(log.low.raw);  // of the whole logarithm, whether it is put to use or not
    if (!exponentsFit(log.leading.raw, y)) return isNegative(log.leading.raw) == isNegative(y) ? infinite : zero;

    const Halves<1> halves = halvesOf(c, F64x1(y));
    const F64x1 w = productHigh(c, halves, log.high);
    const F64x1 low = productLow(c, halves, log);
    keepFlags(low.raw);
    const std::int32_t k = nOf(w.raw) >> 7;
    if (k > 1024) return infinite;
    if (k < -1075) return zero;
    const Exp2<1> p = exp2Of(c, w, low);
    const Real64 u = (p.rest + p.hi).raw;
    if (k >= 1023) return (u * powerOfTwo<Real64>(k - 1)) * (2 * sign);  // 2^1024 is no Real64
    if (k >= -963) return (u * powerOfTwo<Real64>(k)) * sign;
    return subnormalPower(p, low.raw, k, sign);
}

// The exponents of a call: an array, or one number for all elements, taken apart ahead of the loop and known to be of
// ordinary size.
struct ExponentArray64 {
    static constexpr bool vary = true;
    const Real64* src;
    Real64 at(std::ptrdiff_t i) const { return loadElement(src + i); }
    template <int N>
    Halves<N> halves(const Constants64& c, std::ptrdiff_t i) const {
        return halvesOf(c, F64<N>::load(src + i));
    }
};
struct OneExponent64 {
    static constexpr bool vary = false;
    Real64 y;
    Constant64 whole, high, low;
    explicit OneExponent64(Real64 exponent)
        : y(exponent),
          whole(exponent),
          high(cut(exponent, constants64.upperBits.lane[0])),
          low(exponent - high.lane[0]) {}
    // Of the others no power near the subnormals comes, where the path would matter.
    static bool serves(Real64 y) {
        return (highWord(y) & 0x7FFFFFFF) - hotExponentFirst <= hotExponentLast - hotExponentFirst;
    }
    Real64 at(std::ptrdiff_t) const { return y; }
    template <int N>
    Halves<N> halves(const Constants64&, std::ptrdiff_t) const {
        return {whole, high, low};
    }
};

// N powers from element i on, or false and nothing stored when one is not hot. No flag is raised but by the steps that
// the element takes on either course.
template <int N, class Exponents>
[[gnu::always_inline]] inline bool tryHot(const Constants64& c, const Real64* src, const Exponents& y, Real64* dst,
                                          std::ptrdiff_t i) {
    const F64<N> x = F64<N>::load(src + i);
    const U32<N> high = packHighWords(asBits(x));
    Mask32<N> unfit = outside(high, 0x00100000, 0x7FEFFFFF);
    if constexpr (Exponents::vary) {
        const U32<N> yHigh = packHighWords(asBits(F64<N>::load(y.src + i)));
        unfit = unfit | outside(yHigh & c.magnitude, hotExponentFirst, hotExponentLast);
    }
    if (any(unfit)) [[unlikely]]
        return false;
    const Log2<N> log = log2Of(c, x, high, exponentFor(c, high));
    const Halves<N> halves = y.template halves<N>(c, i);
    const F64<N> w = productHigh(c, halves, log.high);
    if (any(greaterSigned(packHighWords(asBits(w)) & c.magnitude, U32<N>(hotBoundHigh)))) [[unlikely]]
        return false;
    scaled(c, exp2Of(c, w, productLow(c, halves, log))).store(dst + i);
    return true;
}

// The main path's own test, of one element. Classes come before arithmetic.
inline bool passes(Real64 x, Real64 y) {
    const Constants64& c = constants64;
    const U32<1> high(highWord(x));
    if (high.raw - 0x00100000 > 0x7FDFFFFF || !isFiniteNonzero(y)) return false;
    const Log2<1> log = log2Of(c, F64x1(x), high, exponentFor(c, high));
    if (!exponentsFit(log.leading.raw, y)) return false;
    const std::int32_t n = nOf(productHigh(c, halvesOf(c, F64x1(y)), log.high).raw);
    return n > lowestN && n < highestN;
}

inline Real64 mainPower(Real64 x, Real64 y) {
    const Constants64& c = constants64;
    const U32<1> high(highWord(x));
    const Log2<1> log = log2Of(c, F64x1(x), high, exponentFor(c, high));
    const Halves<1> halves = halvesOf(c, F64x1(y));
    return scaled(c, exp2Of(c, productHigh(c, halves, log.high), productLow(c, halves, log))).raw;
}

}  // namespace
}  // namespace okt::power
