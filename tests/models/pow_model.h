// Models of the general power, with an array and with a scalar for the exponent.
#pragma once

#include "explog/pow_tables.h"
#include "explog_support.h"
#include "tables/exp32_table.h"

namespace okt::model {

namespace pow {

using namespace explog;

enum class YClass { fraction, odd, even };

struct Format32 {
    using Real = Real32;
    using Bits = std::uint32_t;
    static constexpr int fractionBits = 23;
    static constexpr int bias = 127;
    static constexpr Bits infinity = 0x7F800000;
    static constexpr Bits one = 0x3F800000;
    static constexpr Bits domainNaN = 0xFFC00000;
};

struct Format64 {
    using Real = Real64;
    using Bits = std::uint64_t;
    static constexpr int fractionBits = 52;
    static constexpr int bias = 1023;
    static constexpr Bits infinity = 0x7FF0000000000000;
    static constexpr Bits one = 0x3FF0000000000000;
    static constexpr Bits domainNaN = 0xFFF8000000000000;
};

template <class Format>
constexpr typename Format::Bits magnitudeOf(typename Format::Real x) {
    return asBits(x) << 1 >> 1;
}

template <class Format>
constexpr bool isMinus(typename Format::Real x) {
    return asBits(x) != magnitudeOf<Format>(x);
}

template <class Format>
constexpr bool isFiniteNonZero(typename Format::Real x) {
    return magnitudeOf<Format>(x) != 0 && magnitudeOf<Format>(x) < Format::infinity;
}

template <class Format>
YClass classify(typename Format::Real y) {
    using Bits = typename Format::Bits;
    const Bits a = magnitudeOf<Format>(y);
    if (a < Format::one || a >= Format::infinity) return YClass::fraction;
    const int exponent = static_cast<int>(a >> Format::fractionBits) - Format::bias;
    if (exponent > Format::fractionBits) return YClass::even;
    const Bits hiddenOne = Bits{1} << Format::fractionBits;
    const Bits significand = (a & (hiddenOne - 1)) | hiddenOne;
    const Bits shifted = significand << exponent;  // the units bit stands where the hidden one stood
    if ((shifted & (hiddenOne - 1)) != 0) return YClass::fraction;
    return (shifted & hiddenOne) != 0 ? YClass::odd : YClass::even;
}

// Zero, infinite and NaN operands, and a negative base under an exponent that is no integer. The first matching row
// decides.
template <class Format>
typename Format::Real specialTree(typename Format::Real x, typename Format::Real y, OktStatus& status) {
    using Bits = typename Format::Bits;
    const Bits bx = asBits(x);
    const Bits ax = magnitudeOf<Format>(x);
    const Bits ay = magnitudeOf<Format>(y);
    const Bits inf = Format::infinity;
    const Bits sign = Bits{1} << (sizeof(Bits) * 8 - 1);
    const bool xMinus = isMinus<Format>(x);
    const bool yMinus = isMinus<Format>(y);
    const bool yOdd = classify<Format>(y) == YClass::odd;
    const auto domain = [&](Bits result) {
        status = oktStatusDomain;
        raiseFlag(oktStatusDomain);
        return fromBits(result);
    };

    if (ay == 0) return 1;                                   // 1
    if (bx == (Format::one | sign) && ay == inf) return 1;   // 2
    if (bx == Format::one) return 1;                         // 3
    if (ax > inf) return x;                                  // 4
    if (ay > inf) return y;                                  // 5
    if (ax == 0 && ay == inf && yMinus) return domain(inf);  // 6
    if (ay == inf) {
        const bool grows = (ax > Format::one) != yMinus;
        return fromBits(grows ? inf : Bits{0});  // 7, 8, 9, 10
    }
    if (ax == inf && xMinus) {
        if (!yMinus) return fromBits(yOdd ? inf | sign : inf);  // 11, 12
        return fromBits(yOdd ? sign : Bits{0});                 // 13, 14
    }
    if (xMinus && ax != 0) return domain(Format::domainNaN);  // 15
    if (ax == 0 && xMinus) {
        if (yMinus) return domain(yOdd ? inf | sign : inf);  // 16, 17
        return fromBits(yOdd ? sign : Bits{0});              // 18, 19
    }
    if (ax == inf) return fromBits(yMinus ? Bits{0} : inf);  // 20, 21
    if (yMinus) return domain(inf);                          // 22
    return fromBits(Bits{0});                                // 23
}

}  // namespace pow

namespace pow32 {

using namespace pow;

inline constexpr Real64 s2 = real64(0xBFDFFFFFFFFFCAAE);
inline constexpr Real64 s3 = real64(0x3FD55555555512C8);
inline constexpr Real64 ln2 = real64(0x3FE62E42FEFA39EF);
inline constexpr Real64 invLn2x128 = real64(0x40671547652B82FE);
inline constexpr Real64 shift = real64(0x4338000000000000);
inline constexpr Real64 ln2Over128 = real64(0x3F762E42FEFA39EF);

struct LogParts {
    Real64 q, r, base;  // ln x = q + r + base
};

// The logarithm of a normal positive double precision value.
inline LogParts logParts(Real64 x) {
    const std::uint32_t h = highWord(x);
    const std::uint32_t m9 = (h >> 11) & 0x1FF;
    const std::uint32_t i = (m9 + 1) >> 1;
    const Real64 ln1p = tables::PowLn32[2 * i];
    const Real64 rcp = tables::PowLn32[2 * i + 1];

    const Real64 m = fromBits((asBits(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 E = static_cast<Real64>(static_cast<std::int32_t>(h >> 20) - 1023);
    const Real64 mc = (fromBits(asBits(m) | 0x000003FF00000000) + 0x1p44) - 0x1p44;
    const Real64 r = (m - mc) * rcp;
    const Real64 q = ((s3 * r + s2) * r) * r;
    return {q, r, E * ln2 + ln1p};
}

// The packed path for one lane; false when a range test fails.
inline bool mainPath(Real32 x, Real32 y, Real32& result) {
    if (asSigned(asBits(x) - 0x80800000U) > asSigned(0xFEFFFFFFU)) return false;
    if (asSigned((asBits(y) & 0x7FFFFFFFU) - 1) > 0x7F7FFFFF) return false;

    const LogParts log = logParts(static_cast<Real64>(x));
    const Real64 L = (log.q + log.r) + log.base;
    const Real64 w = static_cast<Real64>(y) * L;
    if (highMagnitude(w) > 0x4055D55C) return false;

    const Real64 t = w * invLn2x128 + shift;
    const Real32 r2 = static_cast<Real32>(w - (t - shift) * ln2Over128);
    const std::uint32_t j = lowWord(t) & 0x7F;
    const std::uint32_t scale = ((lowWord(t) << 16) + 0x3F800000U) & 0x7F800000U;
    const Real32 hi = tables::Exp32Table[2 * j];
    const Real32 lo = tables::Exp32Table[2 * j + 1];
    const Real32 p = (r2 * r2) * 0.5F + (r2 + lo);
    result = (p * hi + hi) * fromBits(scale);
    return true;
}

inline Real32 element(Real32 x, Real32 y, OktStatus& status) {
    if (!isFiniteNonZero<Format32>(x) || !isFiniteNonZero<Format32>(y)) return specialTree<Format32>(x, y, status);

    Real64 s = 1.0;
    if (isMinus<Format32>(x)) {
        const YClass yClass = classify<Format32>(y);
        if (yClass == YClass::fraction) return specialTree<Format32>(x, y, status);
        s = yClass == YClass::odd ? -1.0 : 1.0;
    }

    const Real32 base = fromBits(magnitudeOf<Format32>(x));
    Real64 wide = static_cast<Real64>(base);
    Real64 correction = 0.0;
    if (asBits(base) < 0x00800000) {
        wide = wide * real64(0x420226AF33B1FDC1);  // e^23
        correction = 23.0;
    }
    const LogParts log = logParts(wide);
    const Real64 L = ((log.r + log.q) + log.base) - correction;
    const Real64 w = static_cast<Real64>(y) * L;

    Real64 v;
    if (highMagnitude(w) > 0x4086232B) {
        v = w < 0.0 ? 0.0 : real64(0x7F8000007F800000);
    } else {
        const Real64 t = w * invLn2x128 + shift;
        const Real64 r = w - (t - shift) * ln2Over128;
        const std::uint32_t n = lowWord(t);
        const std::uint32_t exponent = ((n >> 7) << 20) + 0x3FF00000U;
        const Real64 g = fromBits(tables::PowExpMant[n & 0x7F] | static_cast<std::uint64_t>(exponent) << 32);
        v = (((real64(0x3FC5555555555555) * r + 0.5) * r) * r + r) * g + g;
    }
    return static_cast<Real32>(v * s);
}

template <class Exponent>
OktStatus loop(const Real32* src, Exponent exponent, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t bound = len & ~7;
    std::int32_t at = 0;
    for (; at < bound; at += 4) {
        Real32 results[4];
        bool passes = true;
        for (int lane = 0; lane < 4; ++lane)
            passes = passes && mainPath(src[at + lane], exponent(at + lane), results[lane]);
        for (int lane = 0; lane < 4; ++lane)
            dst[at + lane] = passes ? results[lane] : element(src[at + lane], exponent(at + lane), status);
    }
    for (; at < len; ++at) {
        Real32 result;
        const bool passes = mainPath(src[at], exponent(at), result);
        dst[at] = passes ? result : element(src[at], exponent(at), status);
    }
    return status;
}

}  // namespace pow32

inline OktStatus Pow_32f(const Real32* src1, const Real32* src2, Real32* dst, std::int32_t len) {
    return pow32::loop(
        src1, [src2](std::int32_t at) { return src2[at]; }, dst, len);
}

namespace pow64 {

using namespace pow;

inline constexpr Real64 K = real64(0x3FF7154740000000);
inline constexpr Real64 d1 = real64(0x3E79C3A6966457EE);
inline constexpr Real64 d2 = real64(0xBFD62E4346694107);
inline constexpr Real64 d3 = real64(0x3FC47FD462B3B816);
inline constexpr Real64 d4 = real64(0xBFB550472A8BB463);
inline constexpr Real64 d5 = real64(0x3FA7A334DDFC9F86);
inline constexpr Real64 d6 = real64(0xBF9B4EA0E9419F52);
inline constexpr Real64 d7 = real64(0x3F903950CF599C56);
inline constexpr Real64 e1 = real64(0x3FE62E42FEFA39EF);
inline constexpr Real64 e2 = real64(0x3FCEBFBDFF82C58E);
inline constexpr Real64 e3 = real64(0x3FAC6B08D704A0BF);
inline constexpr Real64 e4 = real64(0x3F83B2AB6FBA4E77);
inline constexpr Real64 e5 = real64(0x3F55D87FE78A6731);
inline constexpr Real64 shift = real64(0x42C8000000000000);

// log2 x = H + Hl.
struct Log2 {
    Real64 S1, H, Hl;
};

// x is positive and normal; `lift` is what its exponent was raised by.
inline Log2 log2Of(Real64 x, std::int32_t lift) {
    const std::uint32_t h = highWord(x);
    const std::uint32_t i = ((h & 0xFFE00) + 0x200) >> 10;
    const Real64 e = static_cast<Real64>((asSigned(h - 0x3FE7FE00U) >> 20) - lift);
    const Real64 c = tables::PowRcp64[i];
    const Real64 hi = tables::PowLog64[2 * i];
    const Real64 lo = tables::PowLog64[2 * i + 1];

    const Real64 m = fromBits((asBits(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 mh = cleared(m, 27);
    const Real64 ml = m - mh;
    const Real64 v = m * c;
    const Real64 A = v + -K;
    const Real64 B = (mh * c - v) + ml * c;

    const Real64 P = e + hi;
    const Real64 S1 = P + A;
    const Real64 l1 = (P - S1) + A;
    const Real64 S2 = S1 + B;
    const Real64 l2 = ((S1 - S2) + B) + l1;
    const Real64 u = B + A;
    const Real64 q = u * (d1 + u * (d2 + u * (d3 + u * (d4 + u * (d5 + u * (d6 + u * d7))))));
    const Real64 l3 = (l2 + lo) + q;
    const Real64 H = S2 + l3;
    const Real64 Hl = (S2 - H) + l3;
    return {S1, H, Hl};
}

// y log2 x = n/128 + z, in pieces.
struct Product {
    Real64 t;      // holds n in its low bits
    Real64 zHigh;  // z = zHigh + low
    Real64 low;
    Real64 z;
    std::int32_t n;
};

inline Product productOf(Real64 y, const Log2& log) {
    const Real64 Hh = cleared(log.H, 27);
    const Real64 Ht = log.H - Hh;
    const Real64 yh = cleared(y, 27);
    const Real64 yl = y - yh;
    const Real64 w = yh * Hh;
    const Real64 mid = (Ht * yl + Ht * yh) + yl * Hh;
    const Real64 low = mid + y * log.Hl;
    const Real64 t = w + shift;
    const Real64 zHigh = w - (t - shift);
    return {t, zHigh, low, low + zHigh, asSigned(lowWord(t))};
}

struct Terms {
    Real64 hi, lo, a, b, c;
};

inline Terms termsOf(const Product& product) {
    const Real64 z = product.z;
    const std::uint32_t j = static_cast<std::uint32_t>(product.n) & 127;
    const Real64 a = ((((e5 * z + e4) * z) * z) * z) * z;
    const Real64 b = ((e3 * z + e2) * z) * z;
    const Real64 c = e1 * z;
    return {tables::PowExp64[2 * j], tables::PowExp64[2 * j + 1], a, b, c};
}

// 2^(y log2 x) without its scale 2^k.
inline Real64 unscaled(const Product& product) {
    const Terms terms = termsOf(product);
    return (((terms.a * terms.hi + terms.lo) + terms.b * terms.hi) + terms.c * terms.hi) + terms.hi;
}

inline std::uint32_t exponentSum(Real64 S1, Real64 y) {
    return (highWord(S1) & 0x7FF00000U) + (highWord(y) & 0x7FF00000U);
}

// The packed path for one lane; false when a range test fails.
inline bool mainPath(Real64 x, Real64 y, Real64& result) {
    if (asSigned(highWord(x) - 0x80100000U) > asSigned(0xFFDFFFFFU)) return false;
    if (!isFiniteNonZero<Format64>(y)) return false;
    const Log2 log = log2Of(x, 0);
    if (exponentSum(log.S1, y) > 0x80900000U) return false;
    const Product product = productOf(y, log);
    if (product.n >= 0x1FF80 || product.n <= -123392) return false;
    const std::uint64_t scale = ((asBits(product.t) << 45) + 0x3FF0000000000000) & 0xFFF0000000000000;
    result = unscaled(product) * fromBits(scale);
    return true;
}

// Results that may be subnormal, rounded once; s is the sign of the result.
inline Real64 carefulTail(const Product& product, std::int32_t k, Real64 s) {
    const Terms terms = termsOf(product);
    const Real64 hi = terms.hi;
    const Real64 lo = terms.lo;
    const Real64 z = product.z;
    const Real64 zl = product.low - (z - product.zHigh);
    const Real64 f = s * 0x1p-111;
    const Real64 g = powerOfTwo(k + 111);
    const Real64 R = ((terms.a * hi + lo) + terms.b * hi) + terms.c * hi;
    const Real64 G = (hi * g) * f;

    if (highMagnitude(G) > 0x00100000) {
        const Real64 Q = e1 + z * (e2 + z * (e3 + z * (e4 + z * e5)));
        const Real64 P = z * Q;
        const Real64 Ph = cleared(P, 24);
        const Real64 Pl = Q * zl + (P - Ph);
        const Real64 Th = cleared(hi, 32);
        const Real64 Tl = hi - Th;
        const Real64 sum = (((((P * lo + Tl * Pl) + Pl * Th) + lo) + Tl * Ph) + Th * Ph) + hi;
        return sum * (g * f);
    }
    const Real64 Tc = cleared(hi, 48);
    const Real64 Rc = cleared(R, 32);
    const Real64 exact = (Tc * g) * f;
    return exact + (((hi - Tc) + (R - Rc)) + Rc) * (g * f);
}

inline Real64 element(Real64 x, Real64 y, OktStatus& status) {
    if (!isFiniteNonZero<Format64>(x) || !isFiniteNonZero<Format64>(y)) return specialTree<Format64>(x, y, status);

    Real64 s = 1.0;
    if (isMinus<Format64>(x)) {
        const YClass yClass = classify<Format64>(y);
        if (yClass == YClass::fraction) return specialTree<Format64>(x, y, status);
        s = yClass == YClass::odd ? -1.0 : 1.0;
    }

    Real64 base = fromBits(magnitudeOf<Format64>(x));
    std::int32_t lift = 0;
    if (highWord(base) < 0x00100000) {
        base = base * 0x1p52;
        lift = 52;
    }
    const Log2 log = log2Of(base, lift);

    const Real64 infinity = s * real64(0x7FF0000000000000);
    const Real64 zero = s * 0.0;
    if (exponentSum(log.S1, y) > 0x80900000U)
        return isMinus<Format64>(log.S1) == isMinus<Format64>(y) ? infinity : zero;

    const Product product = productOf(y, log);
    const std::int32_t k = product.n >> 7;
    if (k > 1024) return infinity;
    if (k >= 1023) return (unscaled(product) * powerOfTwo(k - 1)) * (2.0 * s);
    if (k >= -963) return (unscaled(product) * powerOfTwo(k)) * s;
    if (k < -1075) return zero;
    return carefulTail(product, k, s);
}

// A pass takes two elements and tests the two behind them as well: both pairs must pass for the packed path. What
// follows the last pass does not count.
template <class Exponent>
OktStatus loop(const Real64* src, Exponent exponent, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t bound = len & ~3;
    std::int32_t at = 0;
    for (; at < bound; at += 2) {
        Real64 results[4];
        const int tested = at + 2 < bound ? 4 : 2;
        bool passes = true;
        for (int lane = 0; lane < tested; ++lane)
            passes = passes && mainPath(src[at + lane], exponent(at + lane), results[lane]);
        for (int lane = 0; lane < 2; ++lane)
            dst[at + lane] = passes ? results[lane] : element(src[at + lane], exponent(at + lane), status);
    }
    for (; at < len; ++at) dst[at] = element(src[at], exponent(at), status);
    return status;
}

}  // namespace pow64

inline OktStatus Pow_64f(const Real64* src1, const Real64* src2, Real64* dst, std::int32_t len) {
    return pow64::loop(
        src1, [src2](std::int32_t at) { return src2[at]; }, dst, len);
}

inline OktStatus Powx_32f(const Real32* src, Real32 y, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    if (asBits(y) == asBits(2.0F)) {
        for (std::int32_t at = 0; at < len; ++at) dst[at] = src[at] * src[at];
        return status;
    }
    // A NaN exponent fails the test of every lane, so each element takes the element routine.
    return pow32::loop(
        src, [y](std::int32_t) { return y; }, dst, len);
}

inline OktStatus Powx_64f(const Real64* src, Real64 y, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    if (asBits(y) == asBits(2.0)) {
        for (std::int32_t at = 0; at < len; ++at) dst[at] = src[at] * src[at];
        return status;
    }
    return pow64::loop(
        src, [y](std::int32_t) { return y; }, dst, len);
}

}  // namespace okt::model
