// The angle of a point from one of five directions, for the packed logarithms A24 and Complex64: K +
// arctan((p·B - q·A)/(p·A + q·B)), A = |a|, B = |b|, with K the angle of (p, q).
#pragma once

#include "complex/ln_packed.h"

#include <utility>

namespace okt::complex::logarithm {
namespace {

struct DirectionConstants : TableConstants {
    // Quotients B/A between the five directions.
    Constant64 limit[4] = {0.4375, 0.6875, 1.1875, 2.4375};
};

template <int N>
struct Direction {
    InMemory<std::uint32_t, N> row, angleRow;  // in bytes; the latter's is that of pi - K for a < 0

    Pair<F64<N>> pq() const { return gatherPairsAt<1>(tables::ArgumentTable, row); }
    Pair<F64<N>> angle() const { return gatherPairsAt<1>(tables::ArgumentTable + 4, angleRow); }
};

// Where exactly a direction ends does not matter: upper words are compared.
template <int N>
inline Direction<N> directionOf(const DirectionConstants& k, F64<N> A, F64<N> B, U32<N> signRe) {
    const U32<N> upper = packHighWords(asBits(B));
    const auto beyond = [&](int i) OKT_INLINE {
        return maskBits(greaterSigned(upper, packHighWords(asBits(F64<N>(k.limit[i]) * A))));
    };
    const U32<N> row = (U32<N>(0) - ((beyond(0) + beyond(1)) + (beyond(2) + beyond(3)))) << 6;
    return {InMemory<std::uint32_t, N>(row), InMemory<std::uint32_t, N>(row + (signRe >> 27))};
}

// c[First] + c[First + 2]·y + ...
template <std::size_t first, int N, std::size_t count>
inline F64<N> everyOther(const Constant64 (&c)[count], F64<N> y) {
    if constexpr (first + 2 >= count)
        return c[first];
    else
        return everyOther<first + 2>(c, y) * y + F64<N>(c[first]);
}

template <std::size_t count>
struct Coefficients {
    Constant64 c[count];

    template <std::size_t... i>
    constexpr Coefficients(const Real64 (&values)[count], Real64 less, std::index_sequence<i...>)
        : c{(i == 0 ? values[0] - less : values[i])...} {}
    // `less` is taken from the constant term.
    constexpr Coefficients(const Real64 (&values)[count], Real64 less = 0.0)
        : Coefficients(values, less, std::make_index_sequence<count>()) {}

    // The constant term is added last, which leaves one rounding of full size.
    template <int N>
    F64<N> at(F64<N> z) const {
        const F64<N> y = z * z;
        return (everyOther<2>(c, y) * z + everyOther<1>(c, y)) * z + F64<N>(c[0]);
    }
};

}  // namespace
}  // namespace okt::complex::logarithm
