// Square root, by the steps of sqrt_steps.h.
//
// Errors with every approximation within its error: 32f 0.9832 ulp at 0x406F1442, the largest of all elements with all
// approximations; 64f below 0.503 with up to 16 significant bits (seen 0.5010), of a subnormal number below 0.753, as
// xl·y may be half of the root; with more bits below 1.003 and 1.253 (seen 1.0000).
#include "exports/Sqrt.h"
#include "lanes/seeds.h"
#include "root/sqrt_steps.h"

namespace okt::square {
namespace {

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
        [&](std::int32_t i) { storeElement(dst + i, sqrtElement(loadElement(src + i), status)); },
        growPasses<16>(dst, src));
}

}  // namespace

OKT_EXPORT(Sqrt, 32f, sqrt32)
OKT_EXPORT(Sqrt, 64f, rootOf64<false>)

}  // namespace okt::square
