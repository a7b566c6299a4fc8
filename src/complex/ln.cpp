// Natural logarithm, ln|z| + i·arg z, as ln(s)/2 with s = a^2 + b^2 and the angle of the point (a, b). Where |s - 1| is
// not above 0.03, the logarithm is a polynomial in w = s - 1, taken from the squares without the rounding of s.
//
// Complex32 has three routines:
//   A11  s in Real64, the rest in Real32: a polynomial over [sqrt(1/2), sqrt(2)), and the arctangent of the quotient of
//        the smaller and the larger part, which comes from the processor's approximate reciprocal and one Newton step.
//   A21  ln s by a table of short reciprocals in Real64 (see explog/ln.cpp), the angle in Real32 from a true quotient.
//   A24  everything in Real64. The angle is K + arctan((p·B - q·A)/(p·A + q·B)), A = |a|, B = |b|, with K the angle of
//        (p, q), one of five directions, and pi - K - arctan(...) for a < 0.
// Complex64 has one: as A24 with a finer table; s, its distance from 1, the
// two sides of the quotient and the quotient are sums of a head and a rest.
//
// An element with a part outside a routine's range goes through the written steps; its neighbours do not.
//
// Largest errors seen, real and imaginary part, in ulp:
//   A11        2524 at (0x1.8fff82p-19, 0x1.fffffep-1), 3771 at (0x1p+0, 0x1.ffecdep-24): leading coefficients
//   A21        0.839 at (-0x1.19a096p-1, 0x1.ab497cp-1), 3.00 at (0x1.75a948p-1, 0x1.77f93ep-1): beside the diagonal
//   A24        0.5000, 0.5004 at (0x1.de23dep+34, 0x1.4552e4p+33)
//   Complex64  0.5018 at (0x1.e4016c940dd0dp-1, -0x1.7a5b3270bf60ep-2), 0.5215 at (0x1.e8b6b0012d14ep+0,
//              -0x1.a2a53fd964754p-1)
//
// GCC: -fschedule-insns -fsched-pressure (?)
#include "exports/Ln.h"
#include "complex/block_loop.h"
#include "complex/ln_tables.h"
#include "complex/single_elements.h"
#include "lanes/constant.h"
#include "lanes/double_double.h"
#include "lanes/lookup.h"
#include "lanes/seeds.h"

#include <iterator>
#include <utility>

namespace okt::complex {
namespace {

constexpr Real64 nearOne = 0x1.eb851eb851eb8p-6;  // 0.03

struct RangeConstants {
    Pattern32 magnitude32 = 0x7FFFFFFF;
    Constant64 one = 1.0;
    Constant64 nearOneLimit = nearOne;
    Constant32 half32 = 0.5F;
    Constant64 half = 0.5;
};

// The squares of a and b and their sum.
template <int N>
struct Squares {
    F64<N> a, b, sum;

    // The sum's distance from 1; zero in the lanes that are far from 1, which keeps them out of harm.
    F64<N> distance(Mask64<N> far) const {
        const Mask64<N> first = a > b;
        const F64<N> w = (select(first, a, b) - F64<N>(1.0)) + select(first, b, a);
        return zeroIf(far, w);
    }
};
template <int N>
inline Squares<N> squares(F64<N> a, F64<N> b) {
    const F64<N> a2 = a * a, b2 = b * b;
    return {a2, b2, a2 + b2};
}

template <int N, class Constants>
inline Mask64<N> farFromOne(const Constants& k, F64<N> sum) {
    return abs(sum - F64<N>(k.one)) > F64<N>(k.nearOneLimit);
}

// Lanes whose magnitude lies outside first .. last, by pattern.
template <int N, class Constants>
inline Mask32<N> flagged32(const Constants& k, F32<N> re, F32<N> im, std::uint32_t first, std::uint32_t last) {
    const U32<N> magnitude = k.magnitude32;
    return outside(asBits(re) & magnitude, first, last) | outside(asBits(im) & magnitude, first, last);
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex32, A11

struct ConstantsA11 : RangeConstants {
    Pattern32 mantissa = 0x000FFFFF;
    Pattern32 toSqrt2 = 0x00095F61;  // carries into the exponent from the mantissa of sqrt(2) on
    Pattern32 exponentBit = 0x00100000;
    Pattern32 unit = 0x07F00000;
    Pattern32 exponent = 0x7FF00000;
    Pattern32 integerBias = 0x4B000000;         // 2^23
    Constant32 exponentBias = 0x1.0007fep+23F;  // 2^23 + 1023
    Constant32 one32 = 1.0F;
    Constant32 two32 = 2.0F;
    Constant32 ln2 = 0x1.62e43p-1F;

    // ln(1 + u)/u on 1/sqrt 2 <= 1 + u < sqrt 2, relative error 2^-14.0; minimax on an interval wider by 0.01 at each
    // end.
    Constant32 c1 = 0x1.6c478p-3F, c2 = -0x1.172256p-2F, c3 = 0x1.589e54p-2F, c4 = -0x1.ff59fp-2F, c5 = 0x1.fffb06p-1F;

    // (arctan t)/t over t^2, its even and odd terms, on |t| <= 1, relative error 2^-12.1; minimax on |t| <= 1.01.
    Constant32 e1 = -0x1.64904p-5F, e0 = -0x1.4d5146p-2F, o1 = 0x1.3c9036p-3F, o0 = 0x1.ffe28ap-1F;

    Constant32 halfPi = 0x1.921fb6p+0F;
    Constant32 pi = 0x1.921fb6p+1F;
};
constexpr ConstantsA11 constantsA11;

template <int N>
inline F32<N> lnFarA11(const ConstantsA11& k, F64<N> s) {
    const U32<N> h = packHighWords(asBits(s));
    const U32<N> mant = h & U32<N>(k.mantissa);
    const U32<N> bit = (mant + U32<N>(k.toSqrt2)) & U32<N>(k.exponentBit);
    const F32<N> u = asReal((mant ^ (bit ^ U32<N>(k.unit))) << 3) - F32<N>(k.one32);
    const U32<N> e = (((h & U32<N>(k.exponent)) + bit) >> 20) | U32<N>(k.integerBias);
    const F32<N> base = (asReal(e) - F32<N>(k.exponentBias)) * F32<N>(k.ln2);
    const F32<N> p = ((F32<N>(k.c1) * u + F32<N>(k.c2)) * u + F32<N>(k.c3)) * u + F32<N>(k.c4);
    return (p * u + F32<N>(k.c5)) * u + base;
}

template <int N>
[[gnu::noinline, gnu::cold]] F32<N> lnMixedA11(const Squares<N>& s, Mask64<N> far, F32<N> farResult) {
    // ln(1 + w)/w on |w| <= 0.03, relative error 2^-12.6; minimax.
    constexpr Real32 n1 = 0x1.0009dap+0F, n2 = -0x1.0013b6p-1F;
    const F32<N> w = narrow(s.distance(far));
    const F32<N> near = (F32<N>(n2) * w + F32<N>(n1)) * w;
    return select(narrow(far), farResult, near);
}

template <int N>
inline F32<N> angleA11(const ConstantsA11& k, F32<N> re, F32<N> im) {
    const F32<N> A = abs(re), B = abs(im);
    const Mask32<N> flat = B <= A;
    const F32<N> den = select(flat, A, B), num = select(flat, B, -A);
    const F32<N> rcp = recipSeed(den);
    const F32<N> t = num * ((F32<N>(k.two32) - den * rcp) * rcp);
    const F32<N> z = t * t, y = z * z;
    const F32<N> arctan = ((F32<N>(k.e1) * y + F32<N>(k.e0)) * z + (y * F32<N>(k.o1) + F32<N>(k.o0))) * t;
    const F32<N> v = arctan + zeroIf(flat, F32<N>(k.halfPi));
    const F32<N> left = zeroUnless(re <= F32<N>(0.0F), F32<N>(k.pi));
    return ((v | signOf(re)) + left) | signOf(im);
}

void lnc32A11(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const ConstantsA11& k = inMemory(constantsA11);
    paddedBlocks<N>(src, dst, len, [&k](const Complex32* from, Complex32* to) OKT_INLINE {
        const auto [re, im] = loadInterleaved<N>(partsOf(from));
        const Squares<N> s = squares(widen(re), widen(im));
        const Mask64<N> far = farFromOne(k, s.sum);
        F32<N> L = lnFarA11(k, s.sum);
        if (!all(far)) [[unlikely]]
            L = lnMixedA11(s, far, L);
        storeBlock(from, to, F32<N>(k.half32) * L, angleA11(k, re, im), flagged32(k, re, im, 0x01000000, 0x7CFFFFFF),
                   singleLn);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// ln s by a table: with s = 2^e · m and c short and close to 1/m, ln s = e·ln 2 - ln c + ln(1 + r), r = m·c - 1. The
// product is taken in two parts, of which the first, of the upper half of m, is exact.

struct TableConstants : RangeConstants {
    Pattern32 exponentBias = 1023;
    Pattern64 mantissa = 0x000FFFFFFFFFFFFF;
    Pattern64 unit = 0x3FF0000000000000;
    Pattern64 mantissaHigh = 0x7FFFFFFF00000000;
    Constant64 ln2Hi = 0x1.62e42fefa38p-1;  // the lower 11 bits are zero: products with exponents are exact
    Constant64 ln2Lo = 0x1.ef35793c7673p-45;
};

template <int N>
struct Terms {
    F64<N> A, B;  // m·c - 1
    F64<N> S, Q;  // e·ln 2 - ln c
};

// From 2^bits + 1 rows (c, 0, hi, lo), hi + lo = -ln c.
// `restOfMantissa` makes of the lower half of m what m·c is to have.
template <int bits, int N, class Rest>
inline Terms<N> lnTerms(const TableConstants& k, const Real64* table, F64<N> s, const Rest& restOfMantissa) {
    const U64<N> pattern = asBits(s);
    const U32<N> h = packHighWords(pattern);
    // The leading bits + 1 mantissa bits, rounded to `bits`.
    constexpr std::uint32_t step = 1u << (20 - bits), rounding = step >> 1;
    constexpr std::uint32_t kept = 0xFFFFF & ~(rounding - 1), rows = 0x1FFFFF & ~(step - 1);
    const InMemory<std::uint32_t, N> offset((((h & U32<N>(kept)) + U32<N>(rounding)) & U32<N>(rows)) >> (15 - bits));
    const F64<N> m = asReal((pattern & U64<N>(k.mantissa)) | U64<N>(k.unit));
    const F64<N> mh = m & U64<N>(k.mantissaHigh);
    const F64<N> ml = restOfMantissa(m - mh);
    const F64<N> e = toReal64((h >> 20) - U32<N>(k.exponentBias));
    const F64<N> c = gatherElementsAt<1>(table, offset);
    const auto [hi, lo] = gatherPairsAt<1>(table + 2, offset);
    return {mh * c - F64<N>(k.one), ml * c, hi + F64<N>(k.ln2Hi) * e, lo + F64<N>(k.ln2Lo) * e};
}
template <int N>
inline Terms<N> lnTerms32(const TableConstants& k, F64<N> s) {
    return lnTerms<8>(k, tables::LnComplex32Table, s, [](F64<N> ml) OKT_INLINE { return ml; });
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex32, A21: MXCSR is the caller's.

struct ConstantsA21 : TableConstants {
    // ln(1 + r) = r + r^2 (-1/2 + p3 r + p2 r^2 + p5 r^3 + p4 r^4) on |r| <= 2^-9, relative error 2^-46.1. Decimal
    // numbers of eight digits next to 1/5, -1/6, 1/3 and -1/4.
    Constant64 p5 = 0x1.999a252fba57dp-3, p4 = -0x1.5555e15dfe62fp-3, p3 = 0x1.5555551c112dap-2, p2 = -0.25;

    // (arctan t)/t = 1 + z·even + y·odd over y = t^4, z = t^2 on |t| <= 1, relative error 2^-24.4; fitted.
    Constant32 e3 = -0x1.06728p-6F, e2 = -0x1.3321dap-4F, e1 = -0x1.22e0ep-3F, e0 = -0x1.5554a4p-2F;
    Constant32 o3 = 0x1.73c95cp-9F, o2 = 0x1.5d1b78p-5F, o1 = 0x1.b3bf5ep-4F, o0 = 0x1.99728cp-3F;

    Constant32 one32 = 1.0F;
    Constant32 halfPi = 0x1.921fb6p+0F;
    Constant32 pi = 0x1.921fb6p+1F;
};
constexpr ConstantsA21 constantsA21;

template <int N>
inline F64<N> lnFarA21(const ConstantsA21& k, F64<N> s) {
    const Terms<N> t = lnTerms32(k, s);
    const F64<N> r = t.A + t.B, r2 = r * r;
    const F64<N> odd = (F64<N>(k.p5) * r2 + F64<N>(k.p3)) * r;
    const F64<N> even = (F64<N>(k.p4) * r2 + F64<N>(k.p2)) * r2 - F64<N>(k.half);
    const F64<N> poly = r2 * (odd + even);
    const Mask64<N> atOne = t.S == F64<N>(0.0);
    return ((poly + t.Q) + zeroIf(atOne, t.B)) + ((t.S + t.A) + zeroUnless(atOne, t.B));
}

template <int N>
[[gnu::noinline, gnu::cold]] F64<N> lnMixedA21(const Squares<N>& s, Mask64<N> far, F64<N> farResult) {
    // ln(1 + w)/w on |w| <= 0.03, relative error 2^-25.5; minimax.
    constexpr Real64 n1 = 0x1.ffffff513801bp-1, n2 = -0x1.fffffd7f0886ap-2, n3 = 0x1.5584a45eeef6fp-2,
                     n4 = -0x1.002f5040e29d7p-2;
    const F64<N> w = s.distance(far);
    const F64<N> p = (F64<N>(n4) * w + F64<N>(n3)) * w;
    const F64<N> near = ((p + F64<N>(n2)) * w + F64<N>(n1)) * w;
    return select(far, farResult, near);
}

template <int N>
inline F32<N> angleA21(const ConstantsA21& k, F32<N> re, F32<N> im) {
    const F32<N> A = abs(re), B = abs(im);
    const Mask32<N> steep = A < B;
    const F32<N> t = (select(steep, A, B) / select(steep, B, A)) ^ zeroUnless(steep, F32<N>(-0.0F));
    const F32<N> z = t * t, y = z * z;
    const F32<N> even = ((F32<N>(k.e3) * y + F32<N>(k.e2)) * y + F32<N>(k.e1)) * y + F32<N>(k.e0);
    const F32<N> odd = ((F32<N>(k.o3) * y + F32<N>(k.o2)) * y + F32<N>(k.o1)) * y + F32<N>(k.o0);
    const F32<N> arctan = ((z * even + odd * y) + F32<N>(k.one32)) * t;
    const F32<N> first = arctan + zeroUnless(steep, F32<N>(k.halfPi));
    const F32<N> left = zeroUnless(negativeLanes(asBits(re)), F32<N>(k.pi));
    return ((first ^ signOf(re)) + left) ^ signOf(im);
}

// A part that counts as a zero, a subnormal one under denormals-are-zero too, as a zero of its sign.
template <int N>
inline F32<N> zerosMadeClear(F32<N> part, Mask32<N> zero) {
    return zeroIf(zero, part) | signOf(part);
}

void lnc32A21(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const ConstantsA21& k = inMemory(constantsA21);
    paddedBlocks<N>(src, dst, len, [&k](const Complex32* from, Complex32* to) OKT_INLINE {
        const auto [srcRe, srcIm] = loadInterleaved<N>(partsOf(from));
        const Mask32<N> zeroRe = srcRe == F32<N>(0.0F), zeroIm = srcIm == F32<N>(0.0F);
        const F32<N> re = zerosMadeClear(srcRe, zeroRe), im = zerosMadeClear(srcIm, zeroIm);
        const Squares<N> s = squares(widen(re), widen(im));
        const Mask64<N> far = farFromOne(k, s.sum);
        F64<N> L = lnFarA21(k, s.sum);
        if (!all(far)) [[unlikely]]
            L = lnMixedA21(s, far, L);
        storeBlock(from, to, narrow(F64<N>(k.half) * L), angleA21(k, re, im),
                   (zeroRe | zeroIm) | flagged32(k, re, im, 0, 0x7F7FFFFF), singleLn);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// The angle's direction, for A24 and Complex64.

struct DirectionConstants : TableConstants {
    // Quotients B/A between the five directions.
    Constant64 limit[4] = {0.4375, 0.6875, 1.1875, 2.4375};
};

template <int N>
struct Direction {
    InMemory<std::uint32_t, N> row, angleRow;  // in bytes; the latter's is that of pi - K for a < 0

    Pair<F64<N>> pq() const { return gatherPairsAt<1>(tables::ArgumentTable, row); }
    Pair<F64<N>> angle() const { return gatherPairsAt<1>(tables::ArgumentTable + 4, angleRow); }
};

// Where exactly a direction ends does not matter: upper words are compared.
template <int N>
inline Direction<N> directionOf(const DirectionConstants& k, F64<N> A, F64<N> B, U32<N> signRe) {
    const U32<N> upper = packHighWords(asBits(B));
    const auto beyond = [&](int i) OKT_INLINE {
        return maskBits(greaterSigned(upper, packHighWords(asBits(F64<N>(k.limit[i]) * A))));
    };
    const U32<N> row = (U32<N>(0) - ((beyond(0) + beyond(1)) + (beyond(2) + beyond(3)))) << 6;
    return {InMemory<std::uint32_t, N>(row), InMemory<std::uint32_t, N>(row + (signRe >> 27))};
}

// c[First] + c[First + 2]·y + ...
template <std::size_t first, int N, std::size_t count>
inline F64<N> everyOther(const Constant64 (&c)[count], F64<N> y) {
    if constexpr (first + 2 >= count)
        return c[first];
    else
        return everyOther<first + 2>(c, y) * y + F64<N>(c[first]);
}

template <std::size_t count>
struct Coefficients {
    Constant64 c[count];

    template <std::size_t... i>
    constexpr Coefficients(const Real64 (&values)[count], Real64 less, std::index_sequence<i...>)
        : c{(i == 0 ? values[0] - less : values[i])...} {}
    // `less` is taken from the constant term.
    constexpr Coefficients(const Real64 (&values)[count], Real64 less = 0.0)
        : Coefficients(values, less, std::make_index_sequence<count>()) {}

    // The constant term is added last, which leaves one rounding of full size.
    template <int N>
    F64<N> at(F64<N> z) const {
        const F64<N> y = z * z;
        return (everyOther<2>(c, y) * z + everyOther<1>(c, y)) * z + F64<N>(c[0]);
    }
};

// ---------------------------------------------------------------------------------------------------------------------
// Complex32, A24

struct ConstantsA24 : DirectionConstants {
    // ln(1 + r) on |r| <= 2^-9, relative error 2^-38.3; Taylor.
    Constant64 quarter = 0.25;
    Constant64 third = 0x1.5555555555555p-2;
    Coefficients<std::size(tables::Arctangent32)> arctangent{tables::Arctangent32};
};
constexpr ConstantsA24 constantsA24;

template <int N>
inline F64<N> lnFarA24(const ConstantsA24& k, F64<N> s) {
    const Terms<N> t = lnTerms32(k, s);
    const F64<N> r = t.A + t.B;
    const F64<N> poly = r * r * (r * (F64<N>(k.third) - r * F64<N>(k.quarter)) - F64<N>(k.half));
    return ((poly + t.Q) + t.B) + (t.S + t.A);
}

// ln(1 + w) = w·(1 - w·(1/2 - w·(1/3 - ... - w/last)))
template <int last, int N>
inline F64<N> alternating(F64<N> w, int n = 1) {
    F64<N> sum = 1.0 / last;
    for (int i = last - 1; i >= n; --i) sum = F64<N>(1.0 / i) - w * sum;
    return sum;
}

template <int N>
[[gnu::noinline, gnu::cold]] F64<N> lnMixedA24(const Squares<N>& s, Mask64<N> far, F64<N> farResult) {
    const F64<N> w = s.distance(far);
    return select(far, farResult, w * alternating<8>(w));
}

// Without the sign of b.
template <int N>
inline F64<N> angleA24(const ConstantsA24& k, F32<N> re, F32<N> im) {
    const F64<N> A = widen(abs(re)), B = widen(abs(im));
    const Direction<N> direction = directionOf(k, A, B, asBits(signOf(re)));
    const auto [p, q] = direction.pq();
    const F64<N> t = (p * B - q * A) / (p * A + q * B);
    const F64<N> z = t * t;
    const F64<N> arctan = t * z * k.arctangent.at(z) + t;
    return (arctan ^ signOf(widen(re))) + direction.angle().first;
}

void lnc32A24(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const ConstantsA24& k = inMemory(constantsA24);
    paddedBlocks<N>(src, dst, len, [&k](const Complex32* from, Complex32* to) OKT_INLINE {
        auto [re, im] = loadInterleaved<N>(partsOf(from));
        const Mask32<N> flagged = flagged32(k, re, im, 0x00800000, 0x7F7FFFFF);
        if (any(flagged)) [[unlikely]] {
            re = select(flagged, F32<N>(2.0F), re);
            im = select(flagged, F32<N>(2.0F), im);
        }
        const Squares<N> s = squares(widen(re), widen(im));
        const Mask64<N> far = farFromOne(k, s.sum);
        F64<N> L = lnFarA24(k, s.sum);
        if (!all(far)) [[unlikely]]
            L = lnMixedA24(s, far, L);
        const F32<N> angle = narrow(angleA24(k, re, im)) | signOf(im);
        storeBlock(from, to, narrow(F64<N>(k.half) * L), angle, flagged, singleLn);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex64

struct Constants64 : DirectionConstants {
    Pattern64 headBits = splitMaskWide;
    Pattern64 exponent = 0x7FF0000000000000;
    Pattern64 hundredBinades = std::uint64_t{100} << 52;
    Pattern64 twiceBias = 0x7FE0000000000000;
    Pattern64 tinyQuotient = 0x3BF0000000000000;  // 2^-64
    Pattern64 cubeBits = 0xFFFFFFC000000000;
    // ln(1 + r) = r + r^2 (b2 + b3 r + ...) on |r| <= 2^-10, relative error 2^-56.5; minimax.
    Constant64 b2 = -0x1.ffffffffffca9p-2;
    Constant64 b3 = 0x1.555555555512ap-2;
    Constant64 b4 = -0x1.00000d588d052p-2;
    Constant64 b5 = 0x1.9999b39037e04p-3;
    static constexpr Real64 third = -85.0 / 256.0;
    Constant64 thirdShort = third;
    Coefficients<std::size(tables::Arctangent64)> arctangent{tables::Arctangent64, third};
};
constexpr Constants64 constants64;

// A part's magnitude, and its upper 26 bits and the rest.
template <int N>
struct Cut {
    F64<N> whole, head, rest;
    Cut(const Constants64& k, F64<N> part) : whole(abs(part)), head(whole & U64<N>(k.headBits)), rest(whole - head) {}
};

template <int N>
inline F64<N> lnFar64(const Constants64& k, const Cut<N>& a, const Cut<N>& b, Squares<N> s) {
    // What the squares and their sum have rounded off.
    const F64<N> restA = (a.head * a.head - s.a) + a.rest * (a.whole + a.head);
    const F64<N> restB = (b.head * b.head - s.b) + b.rest * (b.whole + b.head);
    const F64<N> v = s.sum - s.a;
    const F64<N> restSum = (s.a - (s.sum - v)) + (s.b - v);
    // A rest far below the last place is left out, as it could not be scaled without an underflow.
    const F64<N> anyRest = restSum + (restA + restB);
    const F64<N> rest =
        zeroIf(greaterSignedHigh(asBits(s.sum), asBits(abs(anyRest)) + U64<N>(k.hundredBinades)), anyRest);
    const F64<N> unscale = asReal(U64<N>(k.twiceBias) - (asBits(s.sum) & U64<N>(k.exponent)));
    const Terms<N> t =
        lnTerms<9>(k, tables::LnComplex64Table, s.sum, [&](F64<N> ml) OKT_INLINE { return ml + rest * unscale; });
    const F64<N> r = t.B + t.A;
    const F64<N> poly = r * r * (F64<N>(k.b2) + r * (F64<N>(k.b3) + r * (F64<N>(k.b4) + r * F64<N>(k.b5))));
    const DoubleDouble<N> head = fastTwoSum(t.S, t.A);
    return (((poly + t.Q) + t.B) + head.lo) + head.hi;
}

// The distance of a^2 + b^2 from 1 without error but the last rounding of its rest, and the logarithm's series with the
// square's half as a head and a rest, too.
template <int N>
inline F64<N> lnNear64(F64<N> a, F64<N> b, Mask64<N> far) {
    const DoubleDouble<N> ca = dekkerSplit(a), cb = dekkerSplit(b);
    const DoubleDouble<N> a2 = exactProduct(a, ca, a, ca), b2 = exactProduct(b, cb, b, cb);
    const DoubleDouble<N> sum = twoSum(a2.hi, b2.hi), rests = twoSum(a2.lo, b2.lo);
    const DoubleDouble<N> first = twoSum(sum.hi - F64<N>(1.0), sum.lo);
    const DoubleDouble<N> second = twoSum(first.hi, rests.hi);
    const DoubleDouble<N> w = fastTwoSum(second.hi, second.lo + (first.lo + rests.lo));
    const F64<N> h = zeroIf(far, w.hi), l = zeroIf(far, w.lo);

    const F64<N> top = dekkerSplit(h).hi;
    const F64<N> halfSquare = F64<N>(0.5) * (top * top);
    const F64<N> halfRest = F64<N>(0.5) * ((h - top) * (h + top));
    const DoubleDouble<N> head = fastTwoSum(h, -halfSquare);
    const F64<N> cubic = h * h * h * alternating<12>(h, 3);
    return head.hi + (head.lo + ((cubic - halfRest) + (l - h * l)));
}

template <int N>
[[gnu::noinline, gnu::cold]] F64<N> lnMixed64(const F64<N>& a, const F64<N>& b, Mask64<N> far,
                                              const F64<N>& farResult) {
    return select(far, farResult, lnNear64(a, b, far));
}

template <int N>
inline F64<N> angle64(const Constants64& k, F64<N> re, F64<N> im, const Cut<N>& a, const Cut<N>& b) {
    const F64<N> signRe = signOf(re);
    const Direction<N> direction = directionOf(k, a.whole, b.whole, packHighWords(asBits(signRe)));
    const auto [p, q] = direction.pq();

    // Numerator and denominator: the products are exact.
    const F64<N> n1 = p * b.head - q * a.head, n2 = p * b.rest - q * a.rest;
    const F64<N> n = n1 + n2, nRest = (n1 - n) + n2;
    const F64<N> d1 = p * a.head + q * b.head, d2 = p * a.rest + q * b.rest;
    const F64<N> d = d1 + d2, dHead = d & U64<N>(k.headBits);
    const F64<N> dRest = (d - dHead) + ((d1 - d) + d2);

    const F64<N> inverse = F64<N>(k.one) / d;
    const F64<N> th = (n * inverse) & U64<N>(k.headBits);
    const F64<N> tl = (((n - th * dHead) - th * dRest) + nRest) * inverse;

    // arctan t = t - t^3/3 + ... The head of the cube's term, of 15 bits of t and 7 bits of the third,
    // is exact. Nothing comes from a tiny quotient, whose powers would be below the normal numbers.
    const F64<N> top = zeroIf(greaterSignedHigh(U64<N>(k.tinyQuotient), asBits(abs(th))), th);
    const F64<N> t = top + tl, z = t * t;
    const F64<N> tShort = top & U64<N>(k.cubeBits);
    const F64<N> tShort2 = tShort * tShort;
    const F64<N> cube = tShort2 * tShort * F64<N>(k.thirdShort);
    const F64<N> tMissing = (top - tShort) + tl;
    const F64<N> cubeRest = F64<N>(k.thirdShort) * (tMissing * ((z + tShort2) + t * tShort));
    const F64<N> further = t * (z * k.arctangent.at(z));
    const DoubleDouble<N> arctan = fastTwoSum(th, cube);
    const F64<N> arctanRest = arctan.lo + (tl + (further + cubeRest));

    const auto [K, kRest] = direction.angle();
    const DoubleDouble<N> head = fastTwoSum(K, arctan.hi ^ signRe);
    return ((((arctanRest ^ signRe) + kRest) + head.lo) + head.hi) | signOf(im);
}

void lnc64(const Complex64* src, Complex64* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const Constants64& k = inMemory(constants64);
    paddedBlocks<N>(src, dst, len, [&k](const Complex64* from, Complex64* to) OKT_INLINE {
        auto [re, im] = loadInterleaved<N>(partsOf(from));
        // Upper words of 2^-450 and of the numbers just below 2^450.
        const auto outOfRange = [&](F64<N> part) OKT_INLINE {
            return outside(packHighWords(asBits(part)) & U32<N>(k.magnitude32), 0x23D00000, 0x5C0FFFFF);
        };
        const Mask32<N> flagged = outOfRange(re) | outOfRange(im);
        if (any(flagged)) [[unlikely]] {
            re = select(widen(flagged), F64<N>(2.0), re);
            im = select(widen(flagged), F64<N>(2.0), im);
        }
        const Cut<N> a(k, re), b(k, im);
        const Squares<N> s = squares(a.whole, b.whole);
        const Mask64<N> far = farFromOne(k, s.sum);
        F64<N> L = lnFar64(k, a, b, s);
        if (!all(far)) [[unlikely]]
            L = lnMixed64(a.whole, b.whole, far, L);
        storeBlock(from, to, F64<N>(k.half) * L, angle64(k, re, im, a, b), flagged, singleLn);
    });
}

}  // namespace

OKT_EXPORT_GRADES(Ln, 32fc, A11, lnc32A11)
OKT_EXPORT_GRADES(Ln, 32fc, A21, lnc32A21)
OKT_EXPORT_GRADES(Ln, 32fc, A24, lnc32A24)
OKT_EXPORT(Ln, 64fc, lnc64)

}  // namespace okt::complex
