// What Sqrt and InvSqrt share: square root and its reciprocal, by neither a root nor a division.
//
// y is a 12-bit approximation of 1/sqrt(x) (lanes/seeds.h), cut to 9 significant bits (Real32) or 21 (Real64, built
// on the significand and scaled by integer work on the exponent), so that y·y and its product with the head xh of
// x are exact. e = x·y² - 1 is then small and nearly exact, p = (1 + e)^(-1/2) - 1 is a short binomial series, and
//     sqrt(x) = xh·y + (p·y·x + xl·y),    1/sqrt(x) = y + p·y.
// Every normal element gets the same bits in a block and alone, except in a block of InvSqrt on Real32 with a special
// lane in it: such a block is computed by root and division in Real64, the good lanes too.
//
// Errors with every approximation whose own error is within 1.5·2^-12:
//   Real32  The cut lowers y by up to 2^-8: e is within -0.0086 and 0.00074. The product of y² that is near 1 has more
//           bits than 24; it is rounded by up to 2^-25 below 1 and 2^-24 above, and the result by half of that, up to
//           half a unit besides the last rounding. The cut leaves one or two y for an element: all can be tried.
//   Real64  |e| < 0.00074: the series leaves 0.23 e^6, which with the roundings of all small terms comes to 0.0023 ulp
//           (Sqrt) and 0.0016 ulp (InvSqrt). xh·y² is exact if the approximation has up to 16 significant bits, as
//           those of processors have; with more bits its rounding adds up to half a unit.
#pragma once

#include "frame/loops.h"
#include "lanes/lanes.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
#include "lanes/rsqrt_seed64.h"
#include "lanes/seeds.h"

namespace okt::square {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32.

constexpr std::uint32_t splitMask32 = 0xFFFF8000;  // 9 significant bits

// (1 + e)^(-1/2) - 1 = -1/2 e + 3/8 e² - 5/16 e³ + ...
template <int N>
[[gnu::always_inline]] inline F32<N> series(F32<N> e) {
    const F32<N> p = inStep(F32<N>(-0.3125f) * e + F32<N>(0.375f));
    return inStep(inStep(p * e + F32<N>(-0.5f)) * e);
}

template <int N>
[[gnu::always_inline]] inline F32<N> seedOf(F32<N> x) {
    return rsqrtSeedOfNormal(x) & U32<N>(splitMask32);
}

// Neither positive, normal and finite.
template <int N>
Mask32<N> outOfRange(U32<N> x) {
    return greaterSigned(x - U32<N>(0x80800000), U32<N>(0xFEFFFFFF));
}
template <int N>
Mask32<N> zeroLanes(U32<N> x) {
    return x + x == U32<N>(0);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64.

constexpr std::uint64_t splitMask64 = 0xFFFFFFFF00000000;  // 21 significant bits
constexpr Real64 subnormalUp = 0x1p54;
constexpr Real64 subnormalDown = 0x1p27;

template <int N>
[[gnu::always_inline]] inline F64<N> series(F64<N> e) {
    F64<N> p = inStep(F64<N>(-0.24609375) * e + F64<N>(0.2734375));
    p = inStep(p * e + F64<N>(-0.3125));
    p = inStep(p * e + F64<N>(0.375));
    p = inStep(p * e + F64<N>(-0.5));
    return inStep(p * e);
}

// x·y² - 1.
template <int N>
[[gnu::always_inline]] inline F64<N> seedError(F64<N> xh, F64<N> xl, F64<N> y) {
    const F64<N> q = y * y;
    return (xh * q - F64<N>(1.0)) + xl * q;
}

template <int N>
[[gnu::always_inline]] inline F64<N> sqrtSum(F64<N> x, F64<N> xh, F64<N> xl, F64<N> y, F64<N> p) {
    return ((p * y) * x + xl * y) + xh * y;
}

template <int N>
[[gnu::always_inline]] inline F64<N> sqrtSteps(F64<N> x) {
    const F64<N> y = rsqrtSeed(x);
    const F64<N> xh = x & U64<N>(splitMask64);
    const F64<N> xl = x - xh;
    return sqrtSum(x, xh, xl, y, series(seedError(xh, xl, y)));
}

template <int N>
[[gnu::always_inline]] inline F64<N> invSqrtSteps(F64<N> x) {
    const F64<N> y = rsqrtSeed(x);
    const F64<N> xh = x & U64<N>(splitMask64);
    const F64<N> xl = x - xh;
    return series(seedError(xh, xl, y)) * y + y;
}

// By the high words, as for Real32.
template <int N>
bool anyOutOfRange(F64<N> x) {
    return any(greaterSigned(packHighWords(asBits(x)) - U32<N>(0x80100000), U32<N>(0xFFDFFFFF)));
}

// An out-of-range element. NaNs are told apart before the masks above could make an infinity of one.
template <bool inverse>
[[gnu::noinline]] Real64 specialElement(Real64 x, OktStatus& status) {
    if (isNaN(x)) return mulOrdered(x, 1.0);  // quiet
    if (isZero(x)) {
        if constexpr (!inverse) return x;
        status = oktStatusSingularity;
        return withSign(infinity<Real64>(), x);
    }
    if (isNegative(x)) {
        status = oktStatusDomain;
        return asReal(Format<Real64>::nan);
    }
    if (isInfinite(x)) return inverse ? 0.0 : x;

    const F64x1 scaled = x * subnormalUp;
    if constexpr (inverse) return invSqrtSteps(scaled).raw * subnormalDown;
    // The seed and the series of the scaled element, but the sum of the element itself: y is too small by 2^-27.
    const auto split = [](F64x1 a) { return a & U64<1>(splitMask64); };
    const F64x1 y = rsqrtSeed(scaled);
    const F64x1 p = series(seedError(split(scaled), scaled - split(scaled), y));
    return sqrtSum(F64x1(x), split(x), F64x1(x) - split(x), y, p).raw * subnormalDown;
}

template <bool inverse, int N>
[[gnu::always_inline]] inline F64<N> steps(F64<N> x) {
    if constexpr (inverse)
        return invSqrtSteps(x);
    else
        return sqrtSteps(x);
}

template <bool inverse>
void rootOf64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    redoBlockTryTail<4, 16>(
        len, len - 3,
        [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
            const auto x = F64<N>::load(src + i);
            if (anyOutOfRange(x)) return false;
            steps<inverse>(x).store(dst + i);
            return true;
        },
        [&](std::int32_t i) {
            const F64x1 x = F64x1::load(src + i);
            (anyOutOfRange(x) ? F64x1(specialElement<inverse>(x.raw, status)) : steps<inverse>(x)).store(dst + i);
        },
        growPasses<16>(dst, src));
}

}  // namespace
}  // namespace okt::square
