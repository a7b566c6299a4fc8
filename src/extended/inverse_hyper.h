// Inverse hyperbolic functions in extended precision: polynomials near zero, or near 1 for acosh, and elsewhere
// logarithms of arguments in two parts.
//
// Largest errors seen, in ulp of the 64-bit significand: asinh 0.56 at -0.46448966441, acosh 0.53 at 1.22946168755,
// atanh 0.54 at -0.23530774312.
#pragma once

#include "extended/inverse_hyper_tables.h"
#include "extended/ln.h"

namespace okt::extended {

// Inverse hyperbolic sine.
template <class T>
inline Real80 asinh(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    if (exponent < 0x3FFE) {
        Real80 z = x * x;
        if (exponent >= 0x3FED) {
            return x + x * z * poly(z, tables::AsinhWide, tables::Asinh);
        }
        return exponent >= 0x3FB4 ? x + x * z * tables::AsinhWide[0] : tinyOdd(x);
    }
    if (exponent == 0x7FFF) {
        return x * 1.0;
    }
    Real80 a = abs(x);
    if (exponent > 0x4025) {
        return negateIf(isNegative(argument), lnFar(asBits(a), 0.0, 1));
    }
    Pair y;
    if (exponent < 0x400A) {  // |x| + sqrt(x^2 + 1)
        y = root(twoProduct(a, a) + Pair{1.0, 0.0}) + Pair{a, 0.0};
    } else {  // 2|x| + 1/(2|x|), with the next term of the series of the root
        Real80 twice = a + a;
        Real80 inverse = 1.0 / twice;
        y = fastTwoSum(twice, inverse - inverse * inverse * inverse);
    }
    return negateIf(isNegative(argument), lnFar(asBits(y.head), y.tail));
}

// Inverse hyperbolic cosine.
template <class T>
inline Real80 acosh(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    if (x != x) {
        return x * 1.0;
    }
    if (x < 1.0) {
        return invalid();
    }
    if (exponent == 0x7FFF) {
        return x * 1.0;
    }
    if (x < 1.25) {
        Real80 t = x - 1.0;
        if (t == 0) {
            return 0.0;
        }
        Pair s = root(Pair{t + t, 0.0});
        return s.head + (s.tail + s.head * t * poly(t, tables::AcoshWide, tables::Acosh));
    }
    if (exponent < 0x400A) {  // x + sqrt(x^2 - 1)
        Pair y = root(twoProduct(x, x) + Pair{-1.0, 0.0}) + Pair{x, 0.0};
        return lnFar(asBits(y.head), y.tail);
    }
    if (exponent < 0x4021) {  // 2x - 1/(2x), with the next term of the series of the root
        Real80 twice = x + x;
        Real80 inverse = 1.0 / twice;
        Pair y = fastTwoSum(twice, -(inverse + inverse * inverse * inverse));
        return lnFar(asBits(y.head), y.tail);
    }
    return lnFar(asBits(x), 0.0, 1);
}

// Inverse hyperbolic tangent.
inline Real80 atanh(Real80 x) {
    int exponent = exponentOf(x);
    if (exponent < 0x3FFD) {
        Real80 z = x * x;
        if (exponent >= 0x3FF8) {
            return x + x * z * poly(z, tables::AtanhWide, tables::Atanh);
        }
        if (exponent >= 0x3FED) {
            // ((atanh x - x)/x^3 - 1/3)/x^2 below 2^-7, relative error of atanh 2^-84.4; Taylor.
            static constexpr Real64 series[4] = {0x1.999999999999ap-3, 0x1.2492492492492p-3, 0x1.c71c71c71c71cp-4,
                                                 0x1.745d1745d1746p-4};
            return x + x * z * (poly(z, series) * z + tables::AtanhWide[0]);
        }
        return exponent >= 0x3FB4 ? x + x * z * tables::AtanhWide[0] : tinyOdd(x);
    }
    if (x != x) {
        return x * 1.0;
    }
    Real80 a = abs(x);
    if (a >= 1.0) {
        return a == 1.0 ? pole(x) : invalid();
    }
    Pair y = fastTwoSum(1.0, a) / fastTwoSum(1.0, -a);
    return negateIf(isNegative(x), 0.5 * lnFar(asBits(y.head), y.tail));
}

}  // namespace okt::extended
