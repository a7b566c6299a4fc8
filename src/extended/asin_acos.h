// Arcsine and arccosine in extended precision: a polynomial up to 1/2, above it the arcsine of sqrt((1 - |x|)/2), whose
// double is taken from pi/2.
//
// Largest errors seen, in ulp of the 64-bit significand: asin 0.59 at -0.60395749061968, acos 0.58 at 0.56159181173866.
#pragma once

#include "extended/asin_acos_tables.h"
#include "extended/atan_table.h"
#include "extended/exceptional.h"
#include "extended/pair.h"
#include "extended/polynomial.h"

namespace okt::extended {

// asin x of |x| <= 1/2 less x; z is the square of x, or the value whose root x is.
OKT_INLINE inline Real80 asinRest(Real80 x, Real80 z) { return x * z * poly(z, tables::AsinWide, tables::Asin); }

// asin of the root of w = (1 - a)/2, 1/2 <= a <= 1, as head and low part.
OKT_INLINE inline Pair halfAngle(Real80 a) {
    Real80 w = (1.0 - a) * 0.5;
    Real80 s = sqrt(w);
    if (s == 0) {
        return {s, s};
    }
    Real80 h = leading31(s);
    Real80 rest = ((w - h * h) - (s - h) * (s + h)) / (s + s);
    return {s, rest + asinRest(s, w)};
}

// Arcsine.
template <class T>
inline Real80 asin(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    if (exponent < 0x3FFE) {
        if (exponent >= 0x3FF3) {
            return x + asinRest(x, x * x);
        }
        Real80 z = x * x;
        if (exponent >= 0x3FED) {
            return x + x * z * (tables::AsinWide[2] * z + tables::AsinWide[0]);
        }
        return exponent >= 0x3FB4 ? x + x * z * tables::AsinWide[0] : tinyOdd(x);
    }
    if (exponent == 0x7FFF && x != x) [[unlikely]] {
        return x * 1.0;
    }
    Real80 a = abs(x);
    if (a > 1.0) [[unlikely]] {
        return invalid();
    }
    auto [head, low] = halfAngle(a);
    const Real64* halfPi = tables::atanTable + 2 * 256;
    Pair angle = fastTwoSum(halfPi[0], -2.0 * head);
    return negateIf(isNegative(argument), angle.head + (angle.tail + (halfPi[1] - 2.0 * low)));
}

// Arccosine.
template <class T>
inline Real80 acos(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    const Real64* halfPi = tables::atanTable + 2 * 256;
    if (exponent < 0x3FFE) {
        Real80 rest = exponent >= 0x3FED ? asinRest(x, x * x) : x * x * x * tables::AsinWide[0];
        Pair angle = fastTwoSum(halfPi[0], -x);
        return angle.head + (angle.tail + (halfPi[1] - rest));
    }
    if (exponent == 0x7FFF && x != x) [[unlikely]] {
        return x * 1.0;
    }
    Real80 a = abs(x);
    if (a > 1.0) [[unlikely]] {
        return invalid();
    }
    auto [head, low] = halfAngle(a);
    if (!isNegative(argument)) {
        return 2.0 * (head + low);
    }
    const Real64* pi = tables::atanTable + 2 * 512;
    Pair angle = fastTwoSum(pi[0], -2.0 * head);
    return angle.head + (angle.tail + (pi[1] - 2.0 * low));
}

}  // namespace okt::extended
