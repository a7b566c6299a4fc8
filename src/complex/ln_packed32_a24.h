// The packed logarithm on Complex32, A24: all in Real64.
#pragma once

#include "complex/ln_direction.h"

#include <iterator>

namespace okt::complex::logarithm {
namespace {

struct ConstantsA24 : DirectionConstants {
    // ln(1 + r) on |r| <= 2^-9, relative error 2^-38.3; Taylor.
    Constant64 quarter = 0.25;
    Constant64 third = 0x1.5555555555555p-2;
    Coefficients<std::size(tables::Arctangent32)> arctangent{tables::Arctangent32};
};
constexpr ConstantsA24 constantsA24;

template <int N>
inline F64<N> lnFarA24(const ConstantsA24& k, F64<N> s) {
    const Terms<N> t = lnTerms32(k, s);
    const F64<N> r = t.A + t.B;
    const F64<N> poly = r * r * (r * (F64<N>(k.third) - r * F64<N>(k.quarter)) - F64<N>(k.half));
    return ((poly + t.Q) + t.B) + (t.S + t.A);
}

template <int N>
[[gnu::noinline, gnu::cold]] F64<N> lnMixedA24(const Squares<N>& s, Mask64<N> far, F64<N> farResult) {
    const F64<N> w = s.distance(far);
    return select(far, farResult, w * alternating<8>(w));
}

// Without the sign of b.
template <int N>
inline F64<N> angleA24(const ConstantsA24& k, F32<N> re, F32<N> im) {
    const F64<N> A = widen(abs(re)), B = widen(abs(im));
    const Direction<N> direction = directionOf(k, A, B, asBits(signOf(re)));
    const auto [p, q] = direction.pq();
    const F64<N> t = (p * B - q * A) / (p * A + q * B);
    const F64<N> z = t * t;
    const F64<N> arctan = t * z * k.arctangent.at(z) + t;
    return (arctan ^ signOf(widen(re))) + direction.angle().first;
}

inline void lnc32A24(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const ConstantsA24& k = inMemory(constantsA24);
    paddedBlocks<N>(src, dst, len, [&k](const Complex32* from, Complex32* to) OKT_INLINE {
        auto [re, im] = loadInterleaved<N>(partsOf(from));
        const Mask32<N> flagged = flagged32(k, re, im, 0x00800000, 0x7F7FFFFF);
        if (any(flagged)) [[unlikely]] {
            re = select(flagged, F32<N>(2.0F), re);
            im = select(flagged, F32<N>(2.0F), im);
        }
        const Squares<N> s = squares(widen(re), widen(im));
        const Mask64<N> far = farFromOne(k, s.sum);
        F64<N> L = lnFarA24(k, s.sum);
        if (!all(far)) [[unlikely]]
            L = lnMixedA24(s, far, L);
        const F32<N> angle = narrow(angleA24(k, re, im)) | signOf(im);
        storeBlock(from, to, narrow(F64<N>(k.half) * L), angle, flagged, singleLn);
    });
}

}  // namespace
}  // namespace okt::complex::logarithm
