// The angle of the point (x, y) on Real64.
//
// Main path: with a = |y|, b = |x| and c the centre of the interval that a/b lies in, t = (a - c·b)/(b + c·a) (see
// atan.cpp), numerator and denominator as sums of two parts on Real64. The quotient is had without a division, from
// a 12-bit approximation r of 1/d (lanes/seeds.h): with e = d·r - 1, 1/d = r + r·(-e + e^2 - ... ). For x < 0 the angle
// is pi - arctan(a/b), pi in two parts.
#pragma once

#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/seeds.h"
#include "trig/atan_intervals.h"

namespace okt::angle {
namespace {

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

}  // namespace
}  // namespace okt::angle
