// Square root and its reciprocal, by neither a root nor a division.
//
// y is the processor's 12-bit approximation of 1/sqrt(x), cut to 9 significant bits (Real32) or 21 (Real64, built
// on the significand and scaled by integer work on the exponent), so that y·y and its product with the head xh of
// x are exact. e = x·y² - 1 is then small and nearly exact, p = (1 + e)^(-1/2) - 1 is a short binomial series, and
//     sqrt(x) = xh·y + (p·y·x + xl·y),    1/sqrt(x) = y + p·y.
// Every normal element gets the same bits in a block and alone, except in a block of InvSqrt on Real32 with a special
// lane in it: such a block is computed by root and division in Real64, the good lanes too.
//
// Largest errors seen: Sqrt 0.7608 ulp at 0x7E7FFFFF (32f), 0.5005 (64f; subnormal up to 0.75); InvSqrt 0.98454 at
// 0x3F85B984 (32f), 0.5005 (64f). The last bit may follow the seed of another processor model.
#include "exports/Sqrt.h"
#include "exports/InvSqrt.h"
#include "frame/loops.h"
#include "lanes/opaque.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
#include "lanes/rsqrt_seed64.h"
#include "lanes/seeds.h"

namespace okt {
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

template <int N>
[[gnu::always_inline]] inline F32<N> sqrtSteps(F32<N> x, F32<N> y) {
    const F32<N> xh = x & U32<N>(splitMask32);
    const F32<N> xl = x - xh;
    const F32<N> g = xh * y;
    const F32<N> q = y * y;
    const F32<N> e = (xh * q - F32<N>(1.0f)) + xl * q;
    const F32<N> p = series(e);
    return ((p * y) * x + xl * y) + g;
}

template <int N>
[[gnu::always_inline]] inline F32<N> invSqrtSteps(F32<N> x) {
    const F32<N> y = seedOf(x);
    const F32<N> e = x * (y * y) - F32<N>(1.0f);
    return series(e) * y + y;
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

// With a seed of 0 a zero passes through the steps, which lose at most its sign.
template <int N>
[[gnu::noinline, gnu::cold]] void sqrtWithZeros(F32<N> x, Real32* dst) {
    const F32<N> y = zeroUnless(~zeroLanes(asBits(x)), seedOf(x));
    (sqrtSteps(x, y) | signOf(x)).store(dst);
}

template <int N>
[[gnu::always_inline]] inline bool sqrtLanes(const Real32* src, Real32* dst) {
    const auto x = F32<N>::load(src);
    const auto outside = outOfRange(asBits(x));
    if (any(outside)) [[unlikely]] {
        if (any(outside & ~zeroLanes(asBits(x)))) return false;
        sqrtWithZeros(x, dst);
        return true;
    }
    sqrtSteps(x, seedOf(x)).store(dst);
    return true;
}

Real32 sqrtElement(Real32 x, OktStatus& status) {
    const auto root = [](Real32 a) { return sqrtSteps(F32x1(a), seedOf(F32x1(a))).raw; };
    const std::uint32_t pattern = asBits(x);
    if (!outOfRange(U32<1>(pattern)).raw) return root(x);
    if (isZero(x) || pattern == Format<Real32>::infinity) return x;
    if (isNaN(x)) return mulOrdered(x, 1.0f);  // quiet
    if (isNegative(x)) {
        status = oktStatusDomain;
        return asReal(Format<Real32>::nan);
    }
    return root(x * 0x1p26f) * 0x1p-13f;
}

void sqrt32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    redoBlockTryTail<4, 16>(
        len, len - 3,
        [=]<int N>(std::integral_constant<int, N>, std::int32_t i) { return sqrtLanes<N>(src + i, dst + i); },
        [&](std::int32_t i) { storeElement(dst + i, sqrtElement(loadElement(src + i), status)); });
}

// N lanes, one of them special, by root and division. Zeros warn first, then negative lanes, whatever their order.
template <int N>
[[gnu::noinline, gnu::cold]] void invSqrtFixUp(F32<N> x, Real32* dst, OktStatus& status) {
    const F64<N> wide = widen(x);
    const F32<N> t = withFlags(narrow(sqrt(wide) / wide));
    const U32<N> pattern = asBits(x);
    const U32<N> infinity(0x7F800000);
    const Mask32<N> zero = zeroLanes(pattern);
    const F32<N> pole = asReal(infinity) | signOf(x);
    select(zero, pole, zeroUnless(~(pattern == infinity), t)).store(dst);
    if (any(zero)) status = oktStatusSingularity;
    // Below zero: the sign bit set, no zero, at most the pattern of minus infinity.
    const Mask32<N> negative = greaterSigned(pattern, U32<N>(0x80000000)) & greaterSigned(U32<N>(0xFF800001), pattern);
    if (any(negative)) status = oktStatusDomain;
}

template <int N>
void invSqrtBlock(const Real32* src, Real32* dst, OktStatus& status) {
    const auto x = F32<N>::load(src);
    if (any(outOfRange(asBits(x)))) [[unlikely]]
        invSqrtFixUp(x, dst, status);
    else
        invSqrtSteps(x).store(dst);
}

void invSqrt32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - 16; i += 16) {
        const auto x = F32<16>::load(src + i);
        if (any(outOfRange(asBits(x)))) [[unlikely]]
            for (std::int32_t block = 0; block < 16; block += 4)
                invSqrtBlock<4>(src + i + block, dst + i + block, status);
        else
            invSqrtSteps(x).store(dst + i);
    }
    for (; i <= len - 4; i += 4) invSqrtBlock<4>(src + i, dst + i, status);
    for (; i < len; ++i) invSqrtBlock<1>(src + i, dst + i, status);
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
        });
}

}  // namespace

OKT_EXPORT(Sqrt, 32f, sqrt32)
OKT_EXPORT(Sqrt, 64f, rootOf64<false>)
OKT_EXPORT(InvSqrt, 32f, invSqrt32)
OKT_EXPORT(InvSqrt, 64f, rootOf64<true>)

}  // namespace okt
