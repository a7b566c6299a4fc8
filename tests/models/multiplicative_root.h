// The square root that the moduli, the hypotenuse and the power 3/2 share: table of starts, three multiplicative rounds
// and the exact residual of a split, all in Real64.
#pragma once

#include "oktvm_types.h"
#include "tables/inverse_root_starts.h"
#include "tests/models/bits.h"

#include <cstdint>

namespace okt::model::multiplicative {

// sqrt(s) = ((e2 * h) + g) * 2^half, to rather more than 53 bits before the roundings of that expression.
struct Root {
    Real64 g;
    Real64 h;
    Real64 e2;
    int half;  // (e - odd) / 2
};

// 2^n for a normal result, built from the exponent field.
inline Real64 powerOfTwo(int n) { return fromBits(static_cast<std::uint64_t>(n + 1023) << 52); }

// The exponent field is taken as it stands, that of a subnormal and of an infinity too.
inline Root root(Real64 s) {
    const std::uint64_t pattern = asBits(s);
    const int e = static_cast<int>(pattern >> 52 & 0x7FF) - 1023;
    const int odd = e & 1;
    const Real64 m = fromBits((pattern & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 m2 = m * (odd ? 2.0 : 1.0);
    const std::uint64_t index = static_cast<std::uint64_t>(odd) * 256 + (pattern >> 44 & 0xFF);

    const Real64 t = tables::InverseRootStarts[index];
    Real64 h = 0.5 * t;
    Real64 g = t * m2;
    for (int round = 0; round < 3; ++round) {
        const Real64 r = 0.5 - g * h;
        const Real64 gNew = g + r * g;
        const Real64 hNew = h + r * h;
        g = gNew;
        h = hNew;
    }

    const Real64 c = 134217729.0 * g;
    const Real64 u = c - g;
    const Real64 hi = c - u;
    const Real64 lo = g - hi;
    const Real64 d = m2 - hi * hi;
    const Real64 e2 = (((0.0 - 2.0 * hi) - lo) * lo) + d;
    return {g, h, e2, (e - odd) / 2};
}

}  // namespace okt::model::multiplicative
