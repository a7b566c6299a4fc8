// Hyperbolic tangent in extended precision: a polynomial below 1/2, 1 - 2/(e^2|x| + 1) above.
//
// Largest error seen: 0.66 ulp of the 64-bit significand, at -0.474513494259.
#pragma once

#include "extended/exp.h"
#include "extended/tanh_tables.h"

namespace okt::extended {

// Hyperbolic tangent.
inline Real80 tanh(Real80 x) {
    int exponent = exponentOf(x);
    if (exponent < 0x3FFE) {
        Real80 z = x * x;
        if (exponent >= 0x3FED) {
            return x + x * z * poly(z, tables::TanhWide, tables::Tanh);
        }
        return exponent >= 0x3FB4 ? x + x * z * tables::TanhWide[0] : tinyOdd(x);
    }
    if (exponent >= 0x4004) {
        return x != x ? x * 1.0 : negateIf(isNegative(x), 1.0 - opaque(tiny()));
    }
    // 1 - 2/(e^2|x| + 1)
    auto [value, n] = expParts(abs(x) * 2.0);
    Real80 grow = powerOfTwo80(static_cast<int>(n >> 8));
    Pair sum = fastTwoSum(value.head * grow, value.tail * grow);
    Pair result = Pair{1.0, 0.0} + -(Pair{2.0, 0.0} / (sum + Pair{1.0, 0.0}));
    return negateIf(isNegative(x), result.head + result.tail);
}

}  // namespace okt::extended
