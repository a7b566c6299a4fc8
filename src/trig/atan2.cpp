// The angle of the point (x, y), from -pi to pi.
//
// Main path: with a = |y|, b = |x| and c the centre of the interval that a/b lies in, t = (a - c·b)/(b + c·a) (see
// atan.cpp), numerator and denominator as sums of two parts on Real64. The quotient is had without a division, from
// the processor's 12-bit approximation r of 1/d: with e = d·r - 1, 1/d = r + r·(-e + e^2 - ... ). For x < 0 the angle
// is pi - arctan(a/b), pi in two parts.
// Element path, for elements whose exponents the main path must not meet: true quotients, arctangents and sums in pairs
// of Real64, which leave nothing but the last rounding. A block with one such element goes that way as a whole, and
// main and element path differ in the last bit of some 4 % of ordinary elements.
//
// Largest errors seen: main path 0.8195 ulp, 0.998 where the result is subnormal (Real32), 0.7461 (Real64); element
// path 0.5156 at y = 0x1.29cb140f45613p-3, x = 0x1.339fe2c7d4af3p+0.
//
// GCC: -fschedule-insns -fsched-pressure (?)
// GCC: -frename-registers (?)
#include "exports/Atan2.h"
#include "exports/Arg.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
#include "lanes/seeds.h"
#include "trig/atan_intervals.h"
#include "trig/atan_pair_table.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Element path

namespace element {

constexpr Real64 pi = 0x1.921fb54442d18p+1;
constexpr Real64 piTail = 0x1.1a62633145c07p-53;
constexpr Real64 halfPi = 0x1.921fb54442d18p+0;
constexpr Real64 halfPiTail = 0x1.1a62633145c07p-54;

// Constants whose sum is rounded at run time, for the inexact flag.
inline Real64 summed(Real64 head, Real64 tail) { return opaque(head) + tail; }

// The upper half of the significand.
inline Real64 split(Real64 v) {
    constexpr Real64 dekkerSplitter = 134217729.0;  // 2^27 + 1
    const Real64 scaled = dekkerSplitter * v;
    return scaled - (scaled - v);
}

// arctan T in two parts: the product is cut as the sum head + low.
struct Parts {
    Real64 head, low;
};

// What a sum s = a + b rounded off, whichever of the two is larger.
inline Real64 lost(Real64 a, Real64 b, Real64 s) {
    const Real64 rest = a - s;
    return (b + rest) + (a - (s + rest));
}

// (nh + nl)/(dh + dl): 1/dh by a division, cut to its upper half R, and a correction of two terms.
struct Quotient {
    Real64 T, Th, Tl;
};
inline Quotient quotient(Real64 nh, Real64 nl, Real64 dh, Real64 dl) {
    const Real64 R = split(1.0 / dh);
    const Real64 E = (1.0 - dh * R) - dl * R;
    const Real64 W = (E + 1.0) * E * R;
    const Real64 m = nh * R;
    const Real64 l = nl * R + (nh * W + nl * W);
    const Real64 T = m + l;
    const Real64 Th = split(T);
    return {T, Th, ((m - T) + l) + (T - Th)};
}

// T + T^3·P, the product in two parts.
inline Parts arctangent(const Quotient& q, Real64 z) {
    // (arctan t - t)/t^3 over t^2 on |t| <= 1/8, relative error of arctan 2^-61.7; fitted.
    constexpr Real64 c6 = -0x1.029bd34239994p-4, c5 = 0x1.3ab7c1048afd1p-4, c4 = -0x1.745be69cca475p-4,
                     c3 = 0x1.c71c6f9b157d3p-4, c2 = -0x1.2492492382a27p-3, c1 = 0x1.99999999991bbp-3,
                     c0 = -0x1.5555555555555p-2;
    const Real64 P = ((((((c6 * z + c5) * z + c4) * z + c3) * z + c2) * z + c1) * z + c0) * z;
    const Real64 Ph = split(P);
    const Real64 Pl = P - Ph;
    const Real64 X = Pl * q.Tl + Ph * q.Tl + Pl * q.Th;
    const Real64 M = Ph * q.Th;
    const Real64 U = q.Th + M;
    const Real64 rest = M - U;
    return {U, (rest + q.Th) + (M - (U + rest)) + q.Tl + X};
}

// Numerator and denominator of the addition theorem exactly in two parts each, then the quotient.
inline Quotient reduced(Real64 a, Real64 b, Real64 c) {
    const Real64 bh = split(b);
    const Real64 f = -((b - bh) * c);
    const Real64 g0 = bh * c * -1.0;
    const Real64 v = g0 + f;
    const Real64 N = a + v;
    const Real64 Nh = split(N);
    const Real64 rest = a - N;
    const Real64 Nl = ((g0 - v) + f) + ((rest + v) + (a - (N + rest))) + (N - Nh);

    const Real64 ah = split(a);
    const Real64 vl = (a - ah) * c;
    const Real64 vd = ah * c + vl;
    const Real64 D = b + vd;
    const Real64 s = b - D;
    const Real64 Dh = split(D);
    const Real64 Dl = ((ah * c - vd) + vl) + ((b - (D + s)) + (s + vd)) + (D - Dh);
    return quotient(Nh, Nl, Dh, Dl);
}

Real64 generalAngle(Real64 y, Real64 x) {
    const bool negative = isNegative(x);
    const Real64 q = magnitude(y) / magnitude(x);

    // Both by the same power of two: a about 1.
    Real64 a = magnitude(y);
    const int ey = biasedExponent(y);
    int k = ey - 1023;
    if (ey == 0) {
        a = a * 0x1p1022;
        k = -1022;
    } else if (ey >= 2046) {
        a = a * 0x1p-1022;
        k = 1022;
    } else {
        a = bits64((asBits(a) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    }
    const Real64 b = magnitude(x) * powerOfTwo<Real64>(-k);

    Parts angle;
    if (q < 0.125) {
        const Real64 ah = split(a), bh = split(b);
        const Quotient t = quotient(ah, a - ah, bh, b - bh);
        angle = arctangent(t, q * q);
    } else {
        // The centre has the exponent of q and a significand of 1.25 or 1.75.
        const std::uint32_t word = highWord(q);
        const Real64 c = fromWords((word & 0x7FF00000) | ((word & 0x00080000) + 0x40000), 0);
        std::uint32_t i = (word - 0x3FC00000) >> 19;
        if (i > 113) i = 113;
        const Real64 A = tables::atanPairTable[2 * i], A2 = tables::atanPairTable[2 * i + 1];

        const Quotient t = reduced(a, b, c);
        angle = arctangent(t, t.T * t.T);
        const Real64 V = angle.head + A;
        angle.low = angle.low + lost(angle.head, A, V) + A2;
        angle.head = V;
    }

    const Real64 base = negative ? pi : 0.0, baseTail = negative ? piTail : 0.0;
    const Real64 U = negative ? -angle.head : angle.head;
    const Real64 low = negative ? -angle.low : angle.low;
    const Real64 S = U + base;
    const Real64 rest = U - S;
    const Real64 e2 = (base + rest) + (U - (S + rest));
    return withSign(((low + e2) + baseTail) + S, y);
}

// y/x so small that the angle is the quotient; the square makes it inexact. Whether the result is subnormal is decided
// by the quotient as it will be stored.
template <class T>
Real64 smallAngle(Real64 y, Real64 x) {
    const Real64 q = magnitude(y) / magnitude(x);
    const T stored = static_cast<T>(q);
    Real64 angle;
    if (biasedExponent(stored) == 0)
        angle = static_cast<Real64>(stored + stored * stored);
    else
        angle = q * (1.0 + q);
    return withSign(angle, y);
}

// T is the element type.
template <class T>
[[gnu::noinline, gnu::cold]] Real64 angle(Real64 y, Real64 x) {
    const bool negative = isNegative(x);

    if (isNaN(y) || isNaN(x)) return addOrdered(y, x);  // y's if both are
    if (isInfinite(y)) {
        if (isFinite(x)) return withSign(summed(halfPi, halfPiTail), y);
        return withSign(negative ? summed(0x1.2d97c7f3321d2p+1, 0x1.a79394c9e8a0ap-54)
                                 : summed(0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55),
                        y);
    }
    if (isInfinite(x)) return withSign(negative ? summed(pi, piTail) : 0.0, y);
    if (isZero(y)) return negative ? withSign(summed(pi, piTail), y) : y;
    if (isZero(x)) return withSign(summed(halfPi, halfPiTail), y);

    const int d = biasedExponent(y) - biasedExponent(x);
    if (d < -53) return negative ? withSign(summed(pi, piTail), y) : smallAngle<T>(y, x);
    if (d >= 74) return withSign(summed(halfPi, halfPiTail), y);
    if (d >= 54) return withSign((halfPiTail - x / magnitude(y)) + halfPi, y);
    return generalAngle(y, x);
}

}  // namespace element

Real64 atan2Element(Real64 y, Real64 x) { return element::angle<Real64>(y, x); }
Real32 atan2Element(Real32 y, Real32 x) { return static_cast<Real32>(element::angle<Real32>(y, x)); }

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    Pattern64 magnitudeMask = 0x7FFFFFFFFFFFFFFF;
    Pattern64 signBit = 0x8000000000000000;
    Pattern64 splitMask = 0xFFFFFFFFF8000000;  // the upper 26 bits of the significand

    Pattern32 magnitudeWord = 0x7FFFFFFF;
    WordRange range{0x00300000, 0x7E000000};  // upper words: 2^-1020 <= |v| < 2^993

    atan::Limits limits;

    // Seed of 1/d: the significand goes through the approximation as a Real32 in [1, 2), the exponent is negated.
    Pattern64 fraction32 = 0x007FFFFF;
    Pattern64 one32 = 0x3F800000;
    Pattern64 exponentField = 0x7FF0000000000000;
    Pattern64 twiceBias = 0x7FE0000000000000 - 0x07F0000000000000;  // less the bias of the shifted Real32

    Constant64 one = 1.0;

    // (arctan t - t)/t over w = t^4: H the terms with t^2 as a factor, G those with t^4; on |t| <= 7/16, relative error
    // of arctan 2^-57.7; fitted.
    Constant64 G5 = 0x1.be4fbe6733718p-7;
    Constant64 G4 = 0x1.6ad5558fe19c9p-5;
    Constant64 G3 = 0x1.e12f1edf7c393p-5;
    Constant64 G2 = 0x1.3b132b731e73ap-4;
    Constant64 G1 = 0x1.c71c719f99f96p-4;
    Constant64 G0 = 0x1.9999999998f43p-3;
    Constant64 H5 = -0x1.04cd71f92185ep-5;
    Constant64 H4 = -0x1.a9e755ca13d23p-5;
    Constant64 H3 = -0x1.1108d326c68edp-4;
    Constant64 H2 = -0x1.745d119677a4fp-4;
    Constant64 H1 = -0x1.2492492441a21p-3;
    Constant64 H0 = -0x1.5555555555552p-2;

    Pattern64 pi = 0x400921FB54442D18;
    Pattern64 piTailNegative = 0xBCA1A64000000000;  // fifteen bits, a little more than pi's rest
};
constexpr Constants64 constants64;

template <int N>
inline bool inRange(const Constants64& k, F64<N> y, F64<N> x) {
    const auto outside = [&](F64<N> v) OKT_INLINE {
        const U32<N> word = packHighWords(asBits(v)) & U32<N>(k.magnitudeWord);
        return greaterSigned(word - U32<N>(k.range.origin), U32<N>(k.range.last));
    };
    return !any(outside(y) | outside(x));
}

template <int N>
inline F64<N> reciprocalSeed(const Constants64& k, F64<N> d) {
    const U64<N> bits = asBits(d);
    const U64<N> seed = recipSeedLow(((bits >> 29) & U64<N>(k.fraction32)) | U64<N>(k.one32));
    return asReal((U64<N>(k.twiceBias) - (bits & U64<N>(k.exponentField))) + (seed << 29));
}

template <int N>
[[gnu::always_inline]] inline F64<N> mainAngle(const Constants64& k, F64<N> y, F64<N> x) {
    const F64<N> a = y & U64<N>(k.magnitudeMask);
    const F64<N> b = x & U64<N>(k.magnitudeMask);
    const F64<N> sx = x & U64<N>(k.signBit);
    const F64<N> a1 = a & U64<N>(k.splitMask);
    const F64<N> a2 = a - a1;
    const F64<N> b1 = b & U64<N>(k.splitMask);
    const F64<N> b2 = b - b1;

    const atan::Interval<N> interval = k.limits.intervalOf(a, b);
    const F64<N> c = interval.centre();

    // Numerator a - b·c or -b, denominator b + a·c or a, each as a head of 26 bits and the rest.
    const F64<N> n1 = zeroIf(interval.last, a1) - b1 * c;
    const F64<N> n2 = zeroIf(interval.last, a2) - b2 * c;
    const F64<N> n = n1 + n2;
    const F64<N> nh = n & U64<N>(k.splitMask);
    const F64<N> nl = (n2 - (n - n1)) + (n - nh);

    const F64<N> d1 = zeroIf(interval.last, b1) + a1 * c;
    const F64<N> d2 = zeroIf(interval.last, b2) + a2 * c;
    const F64<N> d = d1 + d2;
    const F64<N> dh = d & U64<N>(k.splitMask);
    const F64<N> dl = (d2 + (d1 - d)) + (d - dh);

    // 1/(dh + dl) = r + g.
    const F64<N> r = reciprocalSeed(k, dh);
    const F64<N> e = (dh * r - k.one) + dl * r;
    const F64<N> g = (((((e - k.one) * e + k.one) * e - k.one) * e + k.one) * e - k.one) * e * r;
    const F64<N> th = r * nh;
    const F64<N> tl = (g * nh + g * nl) + r * nl;
    const F64<N> t = tl + th;

    const F64<N> z = t * t;
    const F64<N> w = z * z;
    const F64<N> P = (((((k.G5 * w + k.G4) * w + k.G3) * w + k.G2) * w + k.G1) * w + k.G0) * w;
    const F64<N> Q = (((((k.H5 * w + k.H4) * w + k.H3) * w + k.H2) * w + k.H1) * w + k.H0) * z;
    const F64<N> u = (P + Q) * t;

    const Mask64<N> negative = negativeLanes(asBits(x));
    const F64<N> pi1 = zeroUnless(negative, asReal(U64<N>(k.pi)));
    const F64<N> pi2 = zeroUnless(negative, asReal(U64<N>(k.piTailNegative)));
    const F64<N> A = ((u + ((tl + interval.tail()) + pi2)) + th) + interval.head();
    return ((A ^ sx) + pi1) | (y & U64<N>(k.signBit));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// The arctangent of 0, 1/2, 1, 2 and infinity in two parts, in the order of the regions.
alignas(16) constexpr Real32 centreAngle[5][2] = {
    {0.0F, 0.0F},
    {0x1.dac67p-2F, 0x1.586edp-28F},
    {0x1.921fbp-1F, 0x1.5110bp-23F},
    {0x1.1b6e2p+0F, -0x1.b451p-22F},
    {0x1.921fbp+0F, 0x1.5110bp-22F},
};

struct Constants32 {
    Pattern32 magnitudeMask = 0x7FFFFFFF;
    Pattern32 signBit = 0x80000000;

    // A block's elements must lie above 2^-125, an element alone may lie there.
    WordRange range[2] = {{0x01000001, 0x7D000000}, {0x01000000, 0x7D000000}};

    // Factors of |x| that part the regions; the first two regions come before the second and third limit, and behind
    // the last t = -|x|/|y|.
    Constant32 limitA = 0.375F;
    Constant32 limitB = 0x1.70a3d8p-1F;  // 0.72
    Constant32 limitC = 1.75F;
    Constant32 limitD = 2.6875F;

    Pattern32 lastCentre = asBits(2.0F);
    Pattern32 lastRow = 3;

    Constant64 two = 2.0;
    Pattern64 headOfReal64 = ~std::uint64_t{0x1FFFFFFF};  // the 24 bits that Real32 holds

    // (arctan t - t)/t over w = t^4: Q the terms with t^2 as a factor, P those with t^4; on |t| <= 3/8, relative error
    // of arctan 2^-26.5; fitted.
    Constant32 P1 = 0x1.5c2652p-4F;
    Constant32 P0 = 0x1.995476p-3F;
    Constant32 Q1 = -0x1.1e9c9cp-3F;
    Constant32 Q0 = -0x1.5554d8p-2F;

    // pi, its head rounded up to 20 bits. The tail is taken with x's sign flipped, and pi comes with x < 0 alone.
    Pattern32 pi = 0x40490FE0;
    Pattern32 piTailFlipped = 0x35ABBBD3;
};
constexpr Constants32 constants32;

template <int N>
inline bool inRange(const Constants32& k, F32<N> y, F32<N> x) {
    const WordRange& range = k.range[N == 1];
    const auto outside = [&](F32<N> v) OKT_INLINE {
        return greaterSigned((asBits(v) & U32<N>(k.magnitudeMask)) - U32<N>(range.origin), U32<N>(range.last));
    };
    return !any(outside(y) | outside(x));
}

// n/d in Real64: r near 1/d, v = d·r, and 1/v = (1 + (1 - v)^2)·(1 + (1 - v)).
template <int N>
inline F64<N> quotient(const Constants32& k, F32<N> n, F32<N> d) {
    const F64<N> r = widen(recipSeedOfNormal(d));
    const F64<N> v = r * widen(d);
    const F64<N> rest = k.two - v;
    return (v * v + (rest - v)) * rest * r * widen(n);
}

template <int N>
[[gnu::always_inline]] inline F32<N> mainAngle(const Constants32& k, F32<N> y, F32<N> x) {
    const F32<N> a = y & U32<N>(k.magnitudeMask);
    const F32<N> b = x & U32<N>(k.magnitudeMask);
    const F32<N> sx = x & U32<N>(k.signBit);

    const auto below = [&](const Constant32& limit) OKT_INLINE { return greaterSigned(asBits(limit * b), asBits(a)); };
    // All ones where true.
    const U32<N> inA = maskBits(below(k.limitA));
    const U32<N> upToB = maskBits(below(k.limitB));
    const U32<N> upToC = maskBits(below(k.limitC));
    const U32<N> inD = maskBits(greaterSigned(asBits(a), asBits(k.limitD * b)));
    const U32<N> passed = upToB + upToC;  // -2, -1, 0
    const InMemory<std::uint32_t, N> row((inA + passed) + (U32<N>(k.lastRow) - inD));

    // 0, 1/2, 1, 2, and 1 in the last region, where the numerator is 0 - b and the denominator 0 + a. The steps from
    // 1/2 to 1 and to 2 are steps of the exponent.
    const F32<N> c = asReal((((passed + inD) << 23) + k.lastCentre) & ~inA);
    const F32<N> n = (a & ~inD) - c * b;
    const F32<N> d = (b & ~inD) + c * a;
    const F64<N> t = quotient(k, n, d);
    const auto centre = gatherPairsByLowBits<8>(centreAngle[0], row);
    const F64<N> head = t & U64<N>(k.headOfReal64);
    const F32<N> th = narrow(head);
    const F32<N> tl = narrow(t - head) + centre.second;

    const F32<N> z = th * th;
    const F32<N> w = z * z;
    const F32<N> P = (k.P1 * w + k.P0) * w;
    const F32<N> Q = (k.Q1 * w + k.Q0) * z;
    const F32<N> u = (P + Q) * th;

    const Mask32<N> negative = negativeLanes(asBits(x));
    const F32<N> pi1 = zeroUnless(negative, asReal(U32<N>(k.pi)));
    const F32<N> pi2 = zeroUnless(negative, asReal(U32<N>(k.piTailFlipped)));
    const F32<N> A = ((u + (tl + pi2)) + th) + centre.first;
    return ((A | sx) + pi1) | (y & U32<N>(k.signBit));
}

// ---------------------------------------------------------------------------------------------------------------------
// Loops

constexpr std::int32_t blocksEndOf(Real64, std::int32_t len) { return len & ~15; }
constexpr std::int32_t blocksEndOf(Real32, std::int32_t len) { return len & ~11; }  // bit 2 stays, bit 3 goes

// `load(lanes<N>, i)` gives y and x of the elements from i on.
template <class T, class Load>
void angles(const Load& load, T* dst, std::int32_t len) {
    constexpr int block = sizeof(T) == 4 ? 4 : 2;
    const auto* const k = [] {
        if constexpr (block == 4)
            return &inMemory(constants32);
        else
            return &inMemory(constants64);
    }();
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto [y, x] = load(lanes<N>, i);
        if (!inRange(*k, y, x)) [[unlikely]]
            return false;
        mainAngle(*k, y, x).store(dst + i);
        return true;
    };
    const auto element = [=](std::int32_t i) {
        const auto [y, x] = load(lanes<1>, i);
        storeElement(dst + i, atan2Element(y.raw, x.raw));
    };
    redoBlockTryTail<block, 4 * block>(len, blocksEndOf(T{}, len), tryLanes, element);
}

template <class T>
void atan2(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus&) {
    const auto load = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        return Pair<Vec<T, N>>{Vec<T, N>::load(src1 + i), Vec<T, N>::load(src2 + i)};
    };
    angles(load, dst, len);
}

template <class Complex, class T>
void arg(const Complex* src, T* dst, std::int32_t len, OktStatus&) {
    const T* parts = reinterpret_cast<const T*>(src);
    const auto load = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto [x, y] = loadInterleaved<N>(parts + std::ptrdiff_t{2} * i);
        return Pair<Vec<T, N>>{y, x};
    };
    angles(load, dst, len);
}

}  // namespace

OKT_EXPORT(Atan2, 32f, atan2)
OKT_EXPORT(Atan2, 64f, atan2)
OKT_EXPORT(Arg, 32fc, arg)
OKT_EXPORT(Arg, 64fc, arg)

}  // namespace okt
