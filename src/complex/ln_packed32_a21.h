// The packed logarithm on Complex32, A21: ln s in Real64, the angle in Real32. MXCSR is the caller's.
#pragma once

#include "complex/ln_packed.h"

namespace okt::complex::logarithm {
namespace {

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

inline void lnc32A21(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
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

}  // namespace
}  // namespace okt::complex::logarithm
