// The packed logarithm on Complex32, A11: s in Real64, the rest in Real32.
#pragma once

#include "complex/ln_packed.h"
#include "lanes/seeds.h"

namespace okt::complex::logarithm {
namespace {

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

inline void lnc32A11(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
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

}  // namespace
}  // namespace okt::complex::logarithm
