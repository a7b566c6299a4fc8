// Square root of a positive Real64 or Real80 without a root or a division, to nearly twice the working precision.
//
// The number is s = 4^k · m2 with m2 in [1, 4). A 12-bit value of 1/sqrt(m2) from
// InverseRootStarts begins three coupled steps g -> sqrt(m2), h -> 1/(2 sqrt(m2)); the
// residual m2 - g², exact by splitting g, gives the last correction residual · h.
#pragma once

#include "lanes/lanes.h"
#include "lanes/lookup.h"
#include "tables/inverse_root_starts.h"

namespace okt {

inline constexpr Real64 rootSplitConstant = 0x1.0000002p+27;  // 2^27 + 1

// sqrt(m2) is g + residual · h.
template <class R>
struct MultiplicativeRoot {
    R g, h, residual;
    R value() const { return residual * h + g; }
};

// R is Real64 lanes or Real80.
template <class R>
inline MultiplicativeRoot<R> rootOfSignificand(R m2, R start) {
    R h = R(0.5) * start;
    R g = start * m2;
    for (int step = 0; step < 3; ++step) {
        const R r = R(0.5) - g * h;
        const R next = g + r * g;
        h = inStep(h + r * h);
        g = inStep(next);
    }
    const R c = R(rootSplitConstant) * g;
    const R u = c - g;
    const R hi = c - u;
    const R lo = g - hi;
    const R d = m2 - hi * hi;
    return {g, h, ((R(0.0) - R(2.0) * hi) - lo) * lo + d};
}

template <int N>
struct RootParts {
    MultiplicativeRoot<F64<N>> root;                                   // of m2
    U64<N> biasedHalfExponent;                                         // k + 1023
    F64<N> scale() const { return asReal(biasedHalfExponent << 52); }  // 2^k
};

// A zero or an infinity is taken by its exponent field like any other pattern.
template <int N>
inline RootParts<N> rootParts(F64<N> s) {
    const U64<N> bits = asBits(s);
    // Bit 52, the lowest of the biased exponent, is set when the unbiased exponent is even: its inverse is the odd bit.
    const U64<N> flipped = bits ^ U64<N>(0x0010000000000000);
    const F64<N> m2 = asReal((flipped & U64<N>(0x001FFFFFFFFFFFFF)) + U64<N>(0x3FF0000000000000));
    const F64<N> start = gatherElementsAt(tables::InverseRootStarts, (flipped >> 41) & U64<N>(0xFF8));
    return {rootOfSignificand(m2, start), ((bits >> 52) + U64<N>(1023)) >> 1};
}

}  // namespace okt
