// The angle of the point (x, y) on Real32, main path.
//
// With a = |y|, b = |x| and c one of 0, 1/2, 1 and 2, or infinity, t = (a - c·b)/(b + c·a), whose quotient is one of
// Real64 by an approximate reciprocal; the arctangent of t is a polynomial in Real32, that of c comes in two parts. For
// x < 0 the angle is pi - arctan(a/b).
#pragma once

#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/seeds.h"

namespace okt::angle {
namespace {

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

}  // namespace
}  // namespace okt::angle
