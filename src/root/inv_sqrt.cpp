// Reciprocal of the square root, by the steps of sqrt_steps.h.
//
// Errors with every approximation within its error: 32f 0.9911 ulp at 0x3F8110C8, the largest of all elements with all
// approximations; 64f below 0.502 with up to 16 significant bits (seen 0.5010), with more bits below 1.002 (seen
// 0.9990).
#include "exports/InvSqrt.h"
#include "lanes/seeds.h"
#include "root/sqrt_steps.h"

namespace okt::square {
namespace {

template <int N>
[[gnu::always_inline]] inline F32<N> invSqrtSteps(F32<N> x) {
    const F32<N> y = seedOf(x);
    const F32<N> e = x * (y * y) - F32<N>(1.0f);
    return series(e) * y + y;
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

}  // namespace

OKT_EXPORT(InvSqrt, 32f, invSqrt32)
OKT_EXPORT(InvSqrt, 64f, rootOf64<true>)

}  // namespace okt::square
