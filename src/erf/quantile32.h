// The normal quantile and the inverse of erfc on Real32, by range: worked in Real64 with short logarithm and root.
#pragma once

#include "erf/inverse_terms.h"
#include "erf/quantile_tables.h"
#include "lanes/lookup.h"

namespace okt::quantile {

using inverse_erf::exponentOf;
using inverse_erf::fractionOf;
using inverse_erf::horner;

struct Constants32 : inverse_erf::CentralTerms32 {
    // y times one of y down to u = 2^-149, relative error 2^-38.9; minimax.
    Constant64 tailNumerator[7] = {-0x1.4a4387d25dbbap-1, 0x1.6587c5f919f2cp+5, 0x1.73b9fa8902aacp+6,
                                   0x1.48acb938984efp+7,  0x1.fc271651a35cdp+6, 0x1.8e4d27c5ea7c2p+4,
                                   0x1.00030858a3e1fp+0};
    Constant64 tailDenominator[7] = {0x1.6f5a7fffc17fbp+5,
                                     0x1.d1e6a5778b0d8p+6,
                                     0x1.85a49e4b657d3p+7,
                                     0x1.91bc57a32a049p+7,
                                     0x1.02df4ff643849p+7,
                                     0x1.8e6f1de947e93p+4,
                                     1.0};
    // ln(1 + z) = z + z^2 (-1/2 + ...) and sqrt(1 + z) = 1 + z (1/2 + ...) on |z| <= 1/33, relative errors 2^-37.7 and
    // 2^-40.5; minimax but for the constant terms.
    Constant64 log[5] = {-0.5, 0x1.555551dbfc1ddp-2, -0x1.fffff815eef03p-3, 0x1.99f951aac2647p-3,
                         -0x1.55b1e471daaddp-3};
    Constant64 root[5] = {0.5, -0x1.fffffe05c4ffbp-4, 0x1.fffff941190dp-5, -0x1.4036cad71ed67p-5, 0x1.c07909e448b69p-6};
    Constant64 ln2 = 0x1.62e42fefa39efp-1;
    Constant64 rootTwo = 0x1.6a09e667f3bcdp+0;
    Constant64 one = 1.0;
    Constant64 middle = 0.875;
    Constant64 smallLimit = 0.125;
    Pattern64 oneBits = 0x3FF0000000000000;
};
inline constexpr Constants32 constants32;

template <class Function, int N>
inline F64<N> quotient32(const Constants32& k, F64<N> numerator, F64<N> factor, F64<N> denominator) {
    F64<N> product = numerator * factor;
    if constexpr (Function::scaled) product = product * F64<N>(k.rootTwo);
    return product / denominator;
}

// Where |t| < 0.125: exact for t = 0.
template <class Function, int N>
inline F64<N> series32(const Constants32& k, F64<N> t) {
    F64<N> product = horner(k.small, t * t) * t;
    if constexpr (Function::scaled) product = product * F64<N>(k.rootTwo);
    return product;
}

// Where 0.125 <= |t| < 0.875.
template <class Function, int N>
inline F64<N> middle32(const Constants32& k, F64<N> t) {
    const F64<N> a = abs(t);
    const F64<N> s = (a + F64<N>(k.middle)) * (a - F64<N>(k.middle));
    return quotient32<Function>(k, horner(k.middleNumerator, s), t, horner(k.middleDenominator, s));
}

// -ln u.
template <int N>
inline F64<N> minusLog32(const Constants32& k, F64<N> u) {
    const InMemory<std::uint64_t, N> i(asBits(u) >> 48);
    const F64<N> e = exponentOf(u);
    const F64<N> z = gatherElementsByLowBits<4>(tables::recip32, i) * fractionOf(u) - F64<N>(k.one);
    const F64<N> q = horner(k.log, z) * z * z;
    return F64<N>(0) - (((e * F64<N>(k.ln2) + q) + z) + gatherElementsByLowBits<4>(tables::logMid32, i));
}

// The root of w >= 1: of the exponent the even part is halved, and the rest stays with the fraction.
template <int N>
inline F64<N> root32(const Constants32& k, F64<N> w) {
    const U64<N> e = (asBits(w) >> 52) - U64<N>(std::uint64_t{1023});
    const U64<N> half = e >> 1;
    const F64<N> scale = asReal((half << 52) + U64<N>(k.oneBits));
    const F64<N> w2 = asReal(asBits(w) - (half << 53));
    const InMemory<std::uint64_t, N> i((asBits(w2) >> 48) ^ U64<N>(std::uint64_t{16}));
    const F64<N> v = scale * gatherElementsByLowBits<5>(tables::sqrtMid32, i);
    const F64<N> z = gatherElementsByLowBits<5>(tables::recip32, i) * w2 - F64<N>(k.one);
    return v * (F64<N>(k.one) + horner(k.root, z) * z);
}

// Where |t| >= 0.875; `sign` holds the sign bit of the result.
template <class Function, int N>
inline F64<N> tail32(const Constants32& k, F64<N> u, F64<N> sign) {
    const F64<N> y = root32(k, minusLog32(k, u));
    return quotient32<Function>(k, horner(k.tailNumerator, y), y | sign, horner(k.tailDenominator, y));
}

}  // namespace okt::quantile
