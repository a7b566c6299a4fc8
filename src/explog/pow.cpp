// x^y over arrays of both, and over an array of x with one y.
//
// Real32: y ln x in Real64 and e to this power in Real32. ln x = E ln 2 + ln(mc) + ln(1 + r), where mc
// is the significand rounded to eight fraction bits, its logarithm and reciprocal a table's, and the
// last term r + s2 r^2 + s3 r^3. The exponential is that of Exp: 2^(j/128) from a table, 1 + r + r^2/2.
//
// Real64: 2^(y log2 x) with a logarithm of about 68 bits. log2 x = e + log2(K/c) + log2(1 + u/K),
// where c is K/m to few bits, K the high part of log2 e and u = m c - K in double length; the product
// with y is split exactly; the power of two is a table's 2^(j/128) and a polynomial in the rest.
//
// What lies outside the main range goes through element routines. The Real32 one ends in an exponential of Real64, so
// that last bits may differ from the main path's. The Real64 one takes the main path's steps but for results below
// 2^-963, which it rounds once where they are subnormal.
//
// Largest errors seen:
//   Real32  0.5575 ulp at 0x3EB1FA6B ^ 0xC0501BE3; 3.136 ulp within 2^-8 of 1, at 0x3F803FA3 ^ 0xC72E7695
//   Real64  0.5128 ulp at 0x1.00a1c3bd5fd63p+0 ^ 0x1.859ec7709b808p+16; 0.916 ulp within 0.001 of 1, at
//           0x1.001e442cd17e3p+0 ^ -0x1.3271b26bf5aaap+20; 0.99997 ulp next below 2^-1070, at
//           0x1.85e091726b8p+285 ^ -0x1.dfd81b1d3e59dp+1
//
// GCC: -fno-tree-ter (?)
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (?)
#include "exports/Pow.h"
#include "explog/pow_special.h"
#include "explog/pow_tables.h"
#include "exports/Powx.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "tables/power_pairs32.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Constants32 {
    Constant64 s2 = -0x1.fffffffffcaaep-2;  // -1/2 and 1/3, fitted to the width of a table's interval
    Constant64 s3 = 0x1.55555555512c8p-2;
    Constant64 ln2 = 0x1.62e42fefa39efp-1;
    Constant64 invLn2x128 = 0x1.71547652b82fep+7;  // 128/ln 2
    Constant64 shift = 0x1.8p+52;                  // the sum's low bits hold an integer
    Constant64 ln2Over128 = 0x1.62e42fefa39efp-8;
    Constant32 half = 0.5F;
    Pattern32 fraction = 0x007FFFFF;
    Pattern32 one = 0x3F800000;
    Pattern32 halfStep = 0x00004000;  // half a unit of the eighth fraction bit
    Pattern32 rounded = 0x00FF8000;   // eight fraction bits and the carry out of them
    Pattern32 tableOffset = 0x00001FF0;
    Pattern32 bias = 127;
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 scaleOfN = ~127u;  // the bits of k
};
constexpr Constants32 constants32;

constexpr std::uint32_t mainBoundHigh32 = 0x4055D55C;  // high word of the main path's bound on |y ln x|, about 87.334
// High word of 708.396: beyond it the result is zero or infinite.
constexpr std::uint32_t elementBoundHigh32 = 0x4086232B;

// ln x for x = 2^exponent (mc + difference), where offset leads to the table's entry for mc.
template <int N>
inline F64<N> lnFrom(const Constants32& c, F64<N> difference, F64<N> exponent,
                     const InMemory<std::uint32_t, N>& offset) {
    const auto [ln1p, rcp] = gatherPairsAt<1>(tables::PowLn32, offset);
    const F64<N> r = difference * rcp;
    const F64<N> q = ((c.s3 * r + c.s2) * r) * r;
    return (q + r) + (exponent * c.ln2 + ln1p);
}

// ln x for normal positive x. The significand's difference to mc is exact in Real32 already.
template <int N>
inline F64<N> ln(const Constants32& c, F32<N> x) {
    const U32<N> fraction = asBits(x) & c.fraction;
    const U32<N> roundedUp = fraction + c.halfStep;
    const F32<N> mc = asReal((roundedUp & c.rounded) + c.one);
    const F32<N> m = asReal(fraction | c.one);
    const F64<N> exponent = toReal64((asBits(x) >> 23) - c.bias);
    return lnFrom(c, widen(m - mc), exponent, InMemory<std::uint32_t, N>((roundedUp >> 11) & c.tableOffset));
}

// w = n · ln 2/128 + r for |w| within the main bound.
template <int N>
using Multiple32 = InMemory<std::uint32_t, N>;

template <int N>
inline F32<N> reduce(const Constants32& c, F64<N> w, Multiple32<N>& n) {
    const F64<N> t = w * c.invLn2x128 + c.shift;
    n.put(packLowWords(asBits(t)));
    return narrow(w - (t - c.shift) * c.ln2Over128);
}

// e^w. The result is normal, so that the exact product with 2^k is an addition to the exponent field.
template <int N>
inline F32<N> expMain(const Constants32& c, F32<N> r, const Multiple32<N>& n) {
    const auto [hi, lo] = gatherPairsByLowBits<8, Real32>(powerPairs32.pairs, n);
    const F32<N> p = (r * r) * c.half + (r + lo);
    const U32<N> k = (U32<N>(n) & c.scaleOfN) << 16;
    return asReal(asBits(p * hi + hi) + k);
}

// The exponents of a call: an array, or one number for all elements, widened ahead of the loop and known to be finite.
struct ExponentArray32 {
    static constexpr bool vary = true;
    const Real32* src;
    Real32 at(std::ptrdiff_t i) const { return loadElement(src + i); }
    template <int N>
    F64<N> wide(std::ptrdiff_t i) const {
        return widen(F32<N>::load(src + i));
    }
};
struct OneExponent32 {
    static constexpr bool vary = false;
    Real32 y;
    Constant64 widened;
    explicit OneExponent32(Real32 exponent) : y(exponent), widened(exponent) {}
    static bool serves(Real32 y) { return isFinite(y); }
    Real32 at(std::ptrdiff_t) const { return y; }
    template <int N>
    F64<N> wide(std::ptrdiff_t) const {
        return widened;
    }
};

// N powers from element i on up to the reduced argument of the exponential, or false when one is outside the main
// range. Bases and exponents are tested before there is arithmetic on them, infinite exponents with the NaNs, and the
// exponential waits for the test of its argument: an element that takes another course raises no flags here.
template <int N, class Exponents>
inline bool beginMain(const Constants32& c, const Real32* src, const Exponents& y, std::ptrdiff_t i, F32<N>& r,
                      Multiple32<N>& n) {
    const F32<N> x = F32<N>::load(src + i);
    Mask32<N> unfit = outside(asBits(x), 0x00800000, 0x7F7FFFFF);
    if constexpr (Exponents::vary)
        unfit = unfit | greaterSigned(asBits(F32<N>::load(y.src + i)) & c.magnitude, U32<N>(0x7F7FFFFF));
    if (any(unfit)) [[unlikely]]
        return false;
    const F64<N> w = y.template wide<N>(i) * ln(c, x);
    if (any(greaterSigned(packHighWords(asBits(w)) & c.magnitude, U32<N>(mainBoundHigh32)))) [[unlikely]]
        return false;
    r = reduce(c, w, n);
    return true;
}

template <int N, class Exponents>
inline bool tryMain(const Constants32& c, const Real32* src, const Exponents& y, Real32* dst, std::ptrdiff_t i) {
    F32<N> r;
    Multiple32<N> n;
    if (!beginMain<N>(c, src, y, i, r, n)) [[unlikely]]
        return false;
    expMain(c, r, n).store(dst + i);
    return true;
}

// ln a for normal positive a with all the bits of a Real64.
Real64 lnOfWide(Real64 a) {
    const std::uint32_t high = highWord(a);
    const Real64 m = bits64((asBits(a) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    // The bits that are set below the rounding place settle every tie.
    const Real64 rounder = 0x1p44;  // its unit in the last place is 2^-8
    const Real64 mc = (bits64(asBits(m) | 0x000003FF00000000) + rounder) - rounder;
    const std::uint32_t offset = ((high & 0x000FFFFF) + 0x800) >> 12 << 4;
    const F64x1 exponent(static_cast<std::int32_t>(high >> 20) - 1023);
    return lnFrom(constants32, F64x1(m - mc), exponent, InMemory<std::uint32_t, 1>(offset)).raw;
}

// e^w, degree three, in Real64.
Real64 expOfWide(Real64 w) {
    const Real64 shift = constants32.shift.lane[0];
    const Real64 t = w * constants32.invLn2x128.lane[0] + shift;
    const Real64 r = w - (t - shift) * constants32.ln2Over128.lane[0];
    const auto n = static_cast<std::int32_t>(lowWord(t));
    const std::uint64_t exponentField = static_cast<std::uint32_t>((n >> 7) * 0x100000 + 0x3FF00000);
    const Real64 g = bits64(tables::PowExpMant[n & 127] | exponentField << 32);
    constexpr Real64 sixth = 0x1.5555555555555p-3;
    return (((sixth * r + 0.5) * r) * r + r) * g + g;
}

// sign · |x|^y for finite operands other than zero. Rounded to Real32 once, by the conversion, whose flags are all that
// an overflow or underflow leaves.
Real32 generalPower(Real32 x, Real32 y, Real64 sign) {
    constexpr Real64 expOf23 = 0x1.226af33b1fdc1p+33;  // e^23, to make normal numbers of subnormal ones
    const std::uint32_t magnitude = magnitudeBits(x);
    const Real64 wide = bits32(magnitude);
    const Real64 lnX = magnitude < 0x00800000 ? lnOfWide(wide * expOf23) - 23.0 : lnOfWide(wide);
    const Real64 w = y * lnX;
    if ((highWord(w) & 0x7FFFFFFF) <= elementBoundHigh32) return static_cast<Real32>(expOfWide(w) * sign);
    const Real64 huge = 0x1.000007f8p+1017;
    return static_cast<Real32>(opaque(w < 0 ? 0.0 : huge) * sign);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    Constant64 k = 0x1.715474p+0;           // log2 e to 28 bits
    Constant64 d1 = 0x1.9c3a6966457eep-24;  // what K misses of log2 e; further the series of log2(1 + u/K) / u
    Constant64 d2 = -0x1.62e4346694107p-2;
    Constant64 d3 = 0x1.47fd462b3b816p-3;
    Constant64 d4 = -0x1.550472a8bb463p-4;
    Constant64 d5 = 0x1.7a334ddfc9f86p-5;
    Constant64 d6 = -0x1.b4ea0e9419f52p-6;
    Constant64 d7 = 0x1.03950cf599c56p-6;
    Constant64 e1 = 0x1.62e42fefa39efp-1;  // ln 2; further the series of 2^z
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

// The main path's bounds.
constexpr std::uint32_t largestExponentSum = 0x80900000;  // exponent fields of log2 x and y: |y log2 x| < 4096 and some
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

std::int32_t nOf(Real64 w) { return static_cast<std::int32_t>(lowWord(w + constants64.shift.lane[0])); }

Real64 cut(Real64 x, std::uint64_t kept) { return bits64(asBits(x) & kept); }

// Results around and below the smallest normal number, with one rounding into the subnormals.
Real64 subnormalPower(const Exp2<1>& p, Real64 low, std::int32_t k, Real64 sign) {
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

bool exponentsFit(Real64 leading, Real64 y) {
    return (highWord(leading) & 0x7FF00000) + (highWord(y) & 0x7FF00000) <= largestExponentSum;
}

// sign · |x|^y for finite operands other than zero. Infinite and zero results are constants: they raise nothing but
// what the logarithm and its product with y have raised.
Real64 generalPower(Real64 x, Real64 y, Real64 sign) {
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
bool passes(Real64 x, Real64 y) {
    const Constants64& c = constants64;
    const U32<1> high(highWord(x));
    if (high.raw - 0x00100000 > 0x7FDFFFFF || !isFiniteNonzero(y)) return false;
    const Log2<1> log = log2Of(c, F64x1(x), high, exponentFor(c, high));
    if (!exponentsFit(log.leading.raw, y)) return false;
    const std::int32_t n = nOf(productHigh(c, halvesOf(c, F64x1(y)), log.high).raw);
    return n > lowestN && n < highestN;
}

Real64 mainPower(Real64 x, Real64 y) {
    const Constants64& c = constants64;
    const U32<1> high(highWord(x));
    const Log2<1> log = log2Of(c, F64x1(x), high, exponentFor(c, high));
    const Halves<1> halves = halvesOf(c, F64x1(y));
    return scaled(c, exp2Of(c, productHigh(c, halves, log.high), productLow(c, halves, log))).raw;
}

// ---------------------------------------------------------------------------------------------------------------------

// One element completely.
template <class T>
[[gnu::noinline]] T powElement(T x, T y, OktStatus& status) {
    if (!isFiniteNonzero(x) || !isFiniteNonzero(y)) return specialPower(x, y, status);
    if (!isNegative(x)) return generalPower(x, y, 1.0);
    switch (classify(y)) {
        case ExponentClass::odd: return generalPower(x, y, -1.0);
        case ExponentClass::even: return generalPower(x, y, 1.0);
        default: return specialPower(x, y, status);
    }
}

template <class T, class Exponents>
void powElements(const T* src, const Exponents& y, T* dst, std::ptrdiff_t first, std::ptrdiff_t end,
                 OktStatus& status) {
    for (std::ptrdiff_t i = first; i < end; ++i)
        storeElement(dst + i, powElement(loadElement(src + i), y.at(i), status));
}

// Two blocks of four, each of which fails for itself.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powTwoBlocks(const Real32* src, const Exponents& y, Real32* dst, std::ptrdiff_t first,
                                               OktStatus& status) {
    for (std::ptrdiff_t i = first; i < first + 8; i += 4)
        if (!tryMain<4>(constants32, src, y, dst, i)) powElements(src, y, dst, i, i + 4, status);
}

// Blocks of four up to the last multiple of eight; the elements behind it take the same steps one at a time.
template <class Exponents>
void powLoop(const Real32* src, const Exponents& y, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32* const c = &inMemory(constants32);
    const std::ptrdiff_t end = len & ~7;
    blocksAhead<8, F32<8>, Multiple32<8>>(
        end,
        [=](std::ptrdiff_t i, F32<8>& r, Multiple32<8>& n) OKT_INLINE { return beginMain<8>(*c, src, y, i, r, n); },
        [=](std::ptrdiff_t i, F32<8> r, const Multiple32<8>& n) OKT_INLINE { expMain(*c, r, n).store(dst + i); },
        [&](std::ptrdiff_t i) { powTwoBlocks(src, y, dst, i, status); });
    for (std::ptrdiff_t i = end; i < len; ++i)
        if (!tryMain<1>(*c, src, y, dst, i)) powElements(src, y, dst, i, i + 1, status);
}

// Two blocks of two, that is a pair of pairs. A pair takes the main path if it passes its tests and the pair behind it
// does so as well; behind the last pair there is none that could fail.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powTwoPairs(const Real64* src, const Exponents& y, Real64* dst, std::ptrdiff_t first,
                                              std::ptrdiff_t end, OktStatus& status) {
    const auto pairPasses = [&](std::ptrdiff_t i) {
        return i >= end || (passes(loadElement(src + i), y.at(i)) && passes(loadElement(src + i + 1), y.at(i + 1)));
    };
    bool passed = pairPasses(first);
    for (std::ptrdiff_t i = first; i < first + 4; i += 2) {
        const bool nextPassed = pairPasses(i + 2);
        if (passed && nextPassed) {
            for (std::ptrdiff_t j = i; j < i + 2; ++j) storeElement(dst + j, mainPower(loadElement(src + j), y.at(j)));
        } else {
            powElements(src, y, dst, i, i + 2, status);
        }
        passed = nextPassed;
    }
}

// The four elements from `first` on, or eight, some of which are not hot.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powPairs(const Real64* src, const Exponents& y, Real64* dst, std::ptrdiff_t first,
                                           std::ptrdiff_t last, std::ptrdiff_t end, OktStatus& status) {
    for (std::ptrdiff_t i = first; i < last; i += 4)
        if (!tryHot<4>(constants64, src, y, dst, i)) powTwoPairs(src, y, dst, i, end, status);
}

// Pairs up to the last multiple of four; the elements behind it are for the element routine. The path of a pair depends
// on the pair behind it, but shows in the bits outside the hot range only: hot elements need no look ahead.
template <class Exponents>
void powLoop(const Real64* src, const Exponents& y, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& c = inMemory(constants64);
    const std::ptrdiff_t end = len & ~3;
    std::ptrdiff_t i = 0;
    for (; i <= end - 8; i += 8)
        if (!tryHot<8>(c, src, y, dst, i)) [[unlikely]]
            powPairs(src, y, dst, i, i + 8, end, status);
    powPairs(src, y, dst, i, end, end, status);
    powElements(src, y, dst, end, len, status);
}

template <class T, class Exponents>
void pow(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus& status) {
    powLoop(src1, Exponents{src2}, dst, len, status);
}

// One exponent that every element goes with through the element routine.
template <class T>
struct ElementsExponent {
    T y;
    T at(std::ptrdiff_t) const { return y; }
};

template <class T, class OneExponent>
void powx(const T* src, T y, T* dst, std::int32_t len, OktStatus& status) {
    if (asBits(y) == asBits(T{2}))  // squares without any test: a NaN gives its product, and nothing warns
        vectorLoop([](auto x) { return x * x; }, dst, static_cast<std::size_t>(len), src);
    else if (OneExponent::serves(y))
        powLoop(src, OneExponent(y), dst, len, status);
    else
        powElements(src, ElementsExponent<T>{y}, dst, 0, len, status);
}

}  // namespace

OKT_EXPORT(Pow, 32f, (pow<Real32, ExponentArray32>))
OKT_EXPORT(Pow, 64f, (pow<Real64, ExponentArray64>))
OKT_EXPORT(Powx, 32f, (powx<Real32, OneExponent32>))
OKT_EXPORT(Powx, 64f, (powx<Real64, OneExponent64>))

}  // namespace okt
