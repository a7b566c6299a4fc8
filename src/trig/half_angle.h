// What arcsine and arccosine share. With a = |x|:
//     a <= 1/2:  arcsin a = a + a·z·P(z),  z = a^2;
//     a > 1/2:   arccos a = 2·arcsin s,    z = s^2 = (1 - a)/2, s = sqrt(z) as a head and a rest.
#pragma once

#include "lanes/constant.h"
#include "lanes/lanes.h"
#include "lanes/pattern.h"
#include "lanes/rsqrt_seed64.h"
#include "oktvm_types.h"

namespace okt::half_angle {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Polynomial32 {
    // (arcsin a - a)/a^3 in a^2 on a <= 1/2, relative error of arcsin 2^-27.2; fitted.
    Constant32 R4 = 0x1.5a67dap-5F;
    Constant32 R3 = 0x1.8b13b6p-6F;
    Constant32 R2 = 0x1.749846p-5F;
    Constant32 R1 = 0x1.3300f2p-4F;
    Constant32 R0 = 0x1.5555ccp-3F;
};

// (arcsin a - a)/a over z = a^2.
template <int N>
inline F32<N> excess(const Polynomial32& k, F32<N> z) {
    const F32<N> w = z * z;
    const F32<N> p = (k.R4 * w + k.R2) * w + k.R0;
    const F32<N> q = (k.R3 * w + k.R1) * w;
    return p * z + q;
}

inline constexpr std::uint32_t rootHeadMask32 = 0xFFFF0000;
inline constexpr std::uint32_t halved32 = 0x00800000;  // one in the exponent field

// |x| = 1 and beyond, NaNs too: there the arithmetic is not the last word.
template <int N>
inline Mask32<N> beyondOne(F32<N> squared) {
    return ~(squared < F32<N>(1.0F));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    Constant64 one = 1.0;
    Constant64 half = 0.5;
    Constant64 four = 4.0;
    Pattern64 upperWord = 0xFFFFFFFF00000000;

    // (1 + e)^(-1/2) = 1 + r1 e + r2 e^2 + ... on |e| < 1/1365, twice the error of the approximation; relative error
    // 2^-64.6; Taylor.
    Constant64 r5 = -0.24609375;
    Constant64 r4 = 0.2734375;
    Constant64 r3 = -0.3125;
    Constant64 r2 = 0.375;
    Constant64 r1 = -0.5;

    // (arcsin a - a)/a over z = a^2, odd and even powers of z apart, on a <= 1/2, relative error of arcsin 2^-58.4;
    // fitted.
    Constant64 E6 = 0x1.0d60d1986aec6p-5;
    Constant64 E5 = 0x1.6825c16316f03p-6;
    Constant64 E4 = 0x1.622cb270118bp-7;
    Constant64 E3 = 0x1.ca247eb6664e5p-7;
    Constant64 E2 = 0x1.6e8be19f6199dp-6;
    Constant64 E1 = 0x1.6db6db724fe19p-5;
    Constant64 E0 = 0x1.5555555555579p-3;
    Constant64 O5 = -0x1.5e9019191be85p-6;
    Constant64 O4 = 0x1.d768b20a865acp-9;
    Constant64 O3 = 0x1.755bdefc292c9p-7;
    Constant64 O2 = 0x1.1c49bd43e63f7p-6;
    Constant64 O1 = 0x1.f1c71a7cedd43p-6;
    Constant64 O0 = 0x1.333333332dc42p-4;
};

// The argument of the series u = uh + l, a or -sqrt(2 (1 - a)), and the rest of the arcsine S·u.
template <int N>
struct Reduced64 {
    Mask64<N> big;  // a > 1/2
    F64<N> uh, l, Su;
};

template <int N>
inline Reduced64<N> reduced(const Constants64& k, F64<N> a) {
    const Mask64<N> big = F64<N>(k.half) < a;
    const F64<N> w0 = zeroUnless(big, (k.one - a) * k.half);
    const F64<N> z = w0 | zeroIf(big, a * a);
    const F64<N> q = k.four * w0;

    // sqrt(q) = q/sqrt(q): y from the approximation, and what it lacks by a series in e = q·y^2 - 1. The approximation
    // gives a negative number for a zero, which leaves +0 for both parts of the root in the other lanes.
    const F64<N> y = rsqrtSeed(q);
    const F64<N> qh = q & U64<N>(k.upperWord);
    const F64<N> ql = q - qh;
    const F64<N> qhy = qh * y;
    const F64<N> qly = ql * y;
    const F64<N> e = (qhy * y - k.one) + qly * y;
    const F64<N> g = ((((k.r5 * e + k.r4) * e + k.r3) * e + k.r2) * e + k.r1) * e * -y;
    const F64<N> uh = -qhy | zeroIf(big, a);
    const F64<N> l = g * q - qly;
    const F64<N> u = uh + l;

    const F64<N> z2 = z * z;
    const F64<N> E = ((((((k.E6 * z2 + k.E5) * z2 + k.E4) * z2 + k.E3) * z2 + k.E2) * z2 + k.E1) * z2 + k.E0) * z;
    const F64<N> O = (((((k.O5 * z2 + k.O4) * z2 + k.O3) * z2 + k.O2) * z2 + k.O1) * z2 + k.O0) * z2;
    return {big, uh, l, (E + O) * u};
}

// The same on Real64, by the upper word.
template <int N>
inline Mask32<N> reachesOne(F64<N> a) {
    return greaterSigned(packHighWords(asBits(a)), U32<N>(0x3FF00000 - 1));
}

// ---------------------------------------------------------------------------------------------------------------------

// Results of a function's flagged elements.
template <class Bits>
struct Patch {
    Bits atOne, atMinusOne, beyond;
    Bits nanSet, nanFlip;  // what is set and flipped in a NaN
};

// Flagged lanes in order. A NaN's result is made of its pattern, as compilers do not keep the sign of NaNs in
// arithmetic.
template <class T, int N>
[[gnu::noinline, gnu::cold]] void patchLanes(int flagged, Vec<T, N> x, T* dst, const Patch<Unsigned<T>>& patch,
                                             OktStatus& status) {
    using Bits = Unsigned<T>;
    using F = Format<T>;
    alignas(16) Bits patterns[N];
    asBits(x).store(patterns);
    for (int i = 0; i < N; ++i) {
        const Bits a = patterns[i] & ~F::sign;
        if ((flagged >> i & 1) == 0 || a < F::one) continue;
        if (a == F::one) {
            storeBits(dst + i, a == patterns[i] ? patch.atOne : patch.atMinusOne);
        } else if (a > F::infinity) {
            storeBits(dst + i, (patterns[i] | patch.nanSet) ^ patch.nanFlip);
        } else {
            storeBits(dst + i, patch.beyond);
            status = oktStatusDomain;
        }
    }
}

// Blocks of AtOnce elements and the rest one at a time; `kernel(x)` gives results and the mask of flagged lanes.
template <int AtOnce, class T, class Kernel>
inline void blocks(const T* src, T* dst, std::int32_t len, const Kernel& kernel, const Patch<Unsigned<T>>& patch,
                   OktStatus& status) {
    std::int32_t i = 0;
    const auto step = [&]<int N>(std::integral_constant<int, N>) OKT_INLINE {
        const auto x = Vec<T, N>::load(src + i);
        const auto [result, flagged] = kernel(x);
        result.store(dst + i);
        if (any(flagged)) [[unlikely]]
            patchLanes(laneBits(flagged), x, dst + i, patch, status);
        i += N;
    };
    while (i <= len - AtOnce) step(std::integral_constant<int, AtOnce>{});
    while (i < len) step(std::integral_constant<int, 1>{});
}

template <int N>
struct Outcome32 {
    F32<N> result;
    Mask32<N> flagged;
};
template <int N>
struct Outcome64 {
    F64<N> result;
    Mask32<N> flagged;
};

}  // namespace okt::half_angle
