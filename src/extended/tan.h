// Tangent in extended precision.
//
// |x| = n*pi/2 + r with |r| <= pi/4 and r as head and tail; of r the nearest multiple of pi/64 below comes from a
// table.
//
// Largest error seen over all exponents: 0.51 ulp of the 64-bit significand.
#pragma once

#include "extended/exceptional.h"
#include "extended/polynomial.h"
#include "extended/quarter_turns.h"
#include "extended/tan_tables.h"

namespace okt::extended {

// Tangent of |x| reduced to r, or -1/tan for an odd number of quarter turns, for positive r + tail.
inline Real80 tanReduced(Pair r, bool cotangent) {
    constexpr Real64 sixtyFourOverPi = 0x1.45f306dc9c883p+4;
    constexpr Real64 stepHi = 0x1.921fb544p-5, stepLo = 0x1.0b4611a626331p-39;  // pi/64
    Real80 q = r.head * sixtyFourOverPi;
    auto k = static_cast<std::int64_t>(static_cast<Real64>(q));
    if (k == 0) {
        Real80 z = r.head * r.head;
        if (!cotangent) {
            return r.head + (r.tail + r.head * z * poly(z, tables::TangentWide, tables::Tangent));
        }
        Pair inverse = Pair{-1.0, 0.0} / r;
        return inverse.head + (inverse.tail + r.head * poly(z, tables::CotangentWide, tables::Cotangent));
    }
    // tan(B + t) = T + u*(T + C)/(C - u) and -cot(B + t) = u*(T + C)/(T + u) - C, u = tan t, T and C at B = k*pi/64.
    auto kr = static_cast<Real80>(k);
    Pair t = less({r.head - kr * stepHi, r.tail}, kr * stepLo);
    t = fastTwoSum(t.head, t.tail);
    Real80 z = t.head * t.head;
    Pair u = fastTwoSum(t.head, t.tail + t.head * z * poly(z, tables::TangentWide, tables::Tangent));
    auto entry = [k](const Real64* table) { return Pair{table[2 * k], table[2 * k + 1]}; };
    Pair tangent = entry(tables::tanTable), inverse = entry(tables::cotTable);
    Pair product = u * entry(tables::tanPlusCotTable);
    Pair result = cotangent ? product / (tangent + u) + -inverse : product / (inverse + -u) + tangent;
    return result.head + result.tail;
}

// ((tan x - x)/x^3 - 1/3)/x^2 in x^2 below 2^-10, relative error of the tangent 2^-98.9; Taylor.
inline constexpr Real64 tangentSeries[3] = {0x1.1111111111111p-3, 0x1.ba1ba1ba1ba1cp-5, 0x1.664f4882c10fap-6};

// Tangent.
template <class T>
inline Real80 tan(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    if (exponent < 0x3FF5) {
        Real80 z = x * x;
        if (exponent >= 0x3FEC) {
            return x + x * z * (poly(z, tangentSeries) * z + tables::TangentWide[0]);
        }
        return exponent >= 0x3FB4 ? x + x * z * tables::TangentWide[0] : tinyOdd(x);
    }
    if (exponent == 0x7FFF) {
        return x != x ? x * 1.0 : x * opaque(Real80{0.0});
    }
    auto [rest, turns] = reduceByQuarterTurns(abs(x), exponent);
    Pair r = fastTwoSum(rest.head, rest.tail);  // a quotient follows, which takes no large tail
    bool negative = isNegative(r.head);
    Pair magnitude = negative ? Pair{-r.head, -r.tail} : r;
    Real80 y = tanReduced(magnitude, (turns & 1) != 0);
    return negateIf(negative != isNegative(argument), y);
}

}  // namespace okt::extended
