// Hyperbolic sine and cosine in extended precision: polynomials below 1/2, the two exponentials above.
//
// Largest errors seen, in ulp of the 64-bit significand: sinh 0.56 at 0.452807527654, cosh 0.58 at -0.498337368612.
#pragma once

#include "extended/exp.h"
#include "extended/sinh_cosh_tables.h"

namespace okt::extended {

struct SinhCosh {
    Real80 sinh, cosh;
};

// Both of e^x and e^-x, each but for its factor 2^floor(n/256): -n and -r serve the second.
struct ExpBoth {
    Pair up, down;
    std::int64_t n;
};

OKT_INLINE inline ExpBoth expBoth(Real80 x) {
    using C = ExpConstants;
    auto [r, n] = expReduce(x);
    Real80 s = r * r;
    Real80 even = ((C::c6 * s + C::c4) * s + C::c2) * s;
    Real80 odd = (C::c5 * s + C::c3) * s * r + r;
    return {expAssemble(n, even + odd), expAssemble(-n, even - odd), n};
}

// Arguments of magnitude below 2^-18 or not below 32.
[[gnu::noinline, gnu::cold]] inline SinhCosh sinhCoshFar(Real80 x, int exponent) {
    if (exponent < 0x3FED) {
        if (exponent >= 0x3FB4) {
            Real80 z = x * x;
            return {x + x * z * tables::SinhWide[0], 1.0 + z * 0.5};
        }
        return {tinyOdd(x), x == 0 ? Real80{1.0} : 1.0 + opaque(tiny())};
    }
    Real80 a = abs(x);
    if (exponent == 0x7FFF) {
        return {x * 1.0, a * 1.0};
    }
    if (a > real80(0x400C, 0xB174DDC031AEC0E9U)) {
        Real80 over = opaque(huge()) * huge();
        return {negateIf(isNegative(x), over), over};
    }
    auto [value, n] = expParts(a);
    Real80 half = scaleWide(value.head + value.tail, static_cast<int>(n >> 8) - 1);
    return {negateIf(isNegative(x), half), half};  // e^-|x| lies below the last place
}

// Both hyperbolic functions on one exponential.
template <class T>
OKT_INLINE inline SinhCosh sinhCosh(T argument) {
    int exponent = exponentOf(argument);
    if (static_cast<unsigned>(exponent - 0x3FED) >= 0x4004 - 0x3FED) [[unlikely]] {
        return sinhCoshFar(argument, exponent);
    }
    Real80 x = argument;
    if (exponent < 0x3FFE) {
        Real80 z = x * x;
        return {x + x * z * poly(z, tables::SinhWide, tables::Sinh),
                1.0 + (z * 0.5 + z * z * poly(z, tables::CoshWide, tables::Cosh))};
    }
    // 1/2 <= |x| < 32
    auto [up, down, n] = expBoth(x);
    Real64 grow = powerOfTwo<Real64>(static_cast<int>(n >> 8) - 1);
    Real64 shrink = powerOfTwo<Real64>(static_cast<int>((-n) >> 8) - 1);
    Real80 a = up.head * grow, al = up.tail * grow;
    Real80 b = down.head * shrink, bl = down.tail * shrink;
    // Both heads have 32 bits, but far apart their sum and difference may not be exact.
    Real80 sum = a + b, difference = a - b;
    if (exponent < 0x4002) {
        return {difference + (al - bl), sum + (al + bl)};
    }
    Pair s = twoSum(a, b), d = twoSum(a, -b);
    return {d.head + (d.tail + (al - bl)), s.head + (s.tail + (al + bl))};
}

template <class T>
OKT_INLINE inline Real80 sinh(T x) {
    return sinhCosh(x).sinh;
}

template <class T>
OKT_INLINE inline Real80 cosh(T x) {
    return sinhCosh(x).cosh;
}

}  // namespace okt::extended
