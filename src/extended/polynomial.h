// Polynomials on Real80 whose coefficients are Real64. Where a coefficient needs more places it is a pair of them: that
// costs one addition from memory more, an 80-bit constant several operations of the load unit.
#pragma once

#include "lanes/real80.h"

#include <cstddef>

namespace okt::extended {

// c[First] + z*(c[First + Step] + ...), Horner's rule on every Step-th coefficient.
template <std::size_t First, std::size_t Step, std::size_t N>
OKT_INLINE inline Real80 horner(Real80 z, const Real64 (&c)[N]) {
    if constexpr (First + Step >= N) {
        return c[First];
    } else {
        return horner<First + Step, Step>(z, c) * z + c[First];
    }
}

// The polynomial with the coefficients c.
template <std::size_t N>
OKT_INLINE inline Real80 poly(Real80 z, const Real64 (&c)[N]) {
    return horner<0, 1>(z, c);
}

// The polynomial with the coefficients c as two chains of half the length, in even and in odd powers.
template <std::size_t N>
OKT_INLINE inline Real80 polyInTwo(Real80 z, Real80 zz, const Real64 (&c)[N]) {
    return horner<1, 2>(zz, c) * z + horner<0, 2>(zz, c);
}

// The same with leading coefficients of two parts each.
template <std::size_t I = 0, std::size_t W, std::size_t N>
OKT_INLINE inline Real80 poly(Real80 z, const Real64 (&wide)[W], const Real64 (&c)[N]) {
    if constexpr (I == W) {
        return poly(z, c);
    } else {
        return (poly<I + 2>(z, wide, c) * z + wide[I + 1]) + wide[I];
    }
}

template <std::size_t I = 0, std::size_t W, std::size_t N>
OKT_INLINE inline Real80 polyInTwo(Real80 z, Real80 zz, const Real64 (&wide)[W], const Real64 (&c)[N]) {
    if constexpr (I == W) {
        return polyInTwo(z, zz, c);
    } else {
        return (polyInTwo<I + 2>(z, zz, wide, c) * z + wide[I + 1]) + wide[I];
    }
}

}  // namespace okt::extended
