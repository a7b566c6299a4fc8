// What the packed forms of the logarithm share: s = a^2 + b^2 and its distance from 1, and ln s by a table.
//
// With s = 2^e · m and c short and close to 1/m, ln s = e·ln 2 - ln c + ln(1 + r), r = m·c - 1. The product is taken in
// two parts, of which the first, of the upper half of m, is exact.
#pragma once

#include "complex/block_loop.h"
#include "complex/ln_tables.h"
#include "complex/single_elements.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"

namespace okt::complex::logarithm {
namespace {

constexpr Real64 nearOne = 0x1.eb851eb851eb8p-6;  // 0.03

struct RangeConstants {
    Pattern32 magnitude32 = 0x7FFFFFFF;
    Constant64 one = 1.0;
    Constant64 nearOneLimit = nearOne;
    Constant32 half32 = 0.5F;
    Constant64 half = 0.5;
};

// The squares of a and b and their sum.
template <int N>
struct Squares {
    F64<N> a, b, sum;

    // The sum's distance from 1; zero in the lanes that are far from 1, which keeps them out of harm.
    F64<N> distance(Mask64<N> far) const {
        const Mask64<N> first = a > b;
        const F64<N> w = (select(first, a, b) - F64<N>(1.0)) + select(first, b, a);
        return zeroIf(far, w);
    }
};
template <int N>
inline Squares<N> squares(F64<N> a, F64<N> b) {
    const F64<N> a2 = a * a, b2 = b * b;
    return {a2, b2, a2 + b2};
}

template <int N, class Constants>
inline Mask64<N> farFromOne(const Constants& k, F64<N> sum) {
    return abs(sum - F64<N>(k.one)) > F64<N>(k.nearOneLimit);
}

// Lanes whose magnitude lies outside first .. last, by pattern.
template <int N, class Constants>
inline Mask32<N> flagged32(const Constants& k, F32<N> re, F32<N> im, std::uint32_t first, std::uint32_t last) {
    const U32<N> magnitude = k.magnitude32;
    return outside(asBits(re) & magnitude, first, last) | outside(asBits(im) & magnitude, first, last);
}

struct TableConstants : RangeConstants {
    Pattern32 exponentBias = 1023;
    Pattern64 mantissa = 0x000FFFFFFFFFFFFF;
    Pattern64 unit = 0x3FF0000000000000;
    Pattern64 mantissaHigh = 0x7FFFFFFF00000000;
    Constant64 ln2Hi = 0x1.62e42fefa38p-1;  // the lower 11 bits are zero: products with exponents are exact
    Constant64 ln2Lo = 0x1.ef35793c7673p-45;
};

template <int N>
struct Terms {
    F64<N> A, B;  // m·c - 1
    F64<N> S, Q;  // e·ln 2 - ln c
};

// From 2^bits + 1 rows (c, 0, hi, lo), hi + lo = -ln c.
// `restOfMantissa` makes of the lower half of m what m·c is to have.
template <int bits, int N, class Rest>
inline Terms<N> lnTerms(const TableConstants& k, const Real64* table, F64<N> s, const Rest& restOfMantissa) {
    const U64<N> pattern = asBits(s);
    const U32<N> h = packHighWords(pattern);
    // The leading bits + 1 mantissa bits, rounded to `bits`.
    constexpr std::uint32_t step = 1u << (20 - bits), rounding = step >> 1;
    constexpr std::uint32_t kept = 0xFFFFF & ~(rounding - 1), rows = 0x1FFFFF & ~(step - 1);
    const InMemory<std::uint32_t, N> offset((((h & U32<N>(kept)) + U32<N>(rounding)) & U32<N>(rows)) >> (15 - bits));
    const F64<N> m = asReal((pattern & U64<N>(k.mantissa)) | U64<N>(k.unit));
    const F64<N> mh = m & U64<N>(k.mantissaHigh);
    const F64<N> ml = restOfMantissa(m - mh);
    const F64<N> e = toReal64((h >> 20) - U32<N>(k.exponentBias));
    const F64<N> c = gatherElementsAt<1>(table, offset);
    const auto [hi, lo] = gatherPairsAt<1>(table + 2, offset);
    return {mh * c - F64<N>(k.one), ml * c, hi + F64<N>(k.ln2Hi) * e, lo + F64<N>(k.ln2Lo) * e};
}
template <int N>
inline Terms<N> lnTerms32(const TableConstants& k, F64<N> s) {
    return lnTerms<8>(k, tables::LnComplex32Table, s, [](F64<N> ml) OKT_INLINE { return ml; });
}

// ln(1 + w) = w·(1 - w·(1/2 - w·(1/3 - ... - w/last)))
template <int last, int N>
inline F64<N> alternating(F64<N> w, int n = 1) {
    F64<N> sum = 1.0 / last;
    for (int i = last - 1; i >= n; --i) sum = F64<N>(1.0 / i) - w * sum;
    return sum;
}

}  // namespace
}  // namespace okt::complex::logarithm
