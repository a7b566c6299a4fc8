// Exponential in extended precision.
//
// e^x = 2^k*2^(j/256)*(1 + p), n = 256k + j = round(x*256/ln 2), r = x - n*ln 2/256, p = e^r - 1.
//
// Largest error seen: 0.52 ulp of the 64-bit significand, at -0.0189776627728.
#pragma once

#include "extended/exceptional.h"
#include "extended/exp_table.h"
#include "extended/pair.h"
#include "extended/polynomial.h"

namespace okt::extended {

struct ExpConstants {
    static constexpr Real64 invLn2x256 = 0x1.71547652b82fep+8;
    static constexpr Real64 ln2Over256Hi = 0x1.62e42ffp-9;  // 29 bits: its products with n are exact
    static constexpr Real64 ln2Over256Lo = -0x1.718432a1b0e26p-43;
    // (e^r - 1 - r)/r^2, |r| <= ln 2/512, relative error of e^r 2^-75.9; 1/2, the others fitted.
    static constexpr Real64 c2 = 0.5, c3 = 0x1.5555555555405p-3, c4 = 0x1.555555555541dp-5, c5 = 0x1.111116887cd7cp-7,
                            c6 = 0x1.6c16c87372663p-10;
};

// n and r of an argument.
struct ExpReduced {
    Real80 r;
    std::int64_t n;
};

OKT_INLINE inline ExpReduced expReduce(Real80 x) {
    using C = ExpConstants;
    Real80 m = roundBy(toInteger, x * C::invLn2x256);
    return {(x - m * C::ln2Over256Hi) - m * C::ln2Over256Lo, asInteger(m)};
}

// 2^(j/256)*(1 + p), j = n mod 256, as a head of 32 bits and a low part.
OKT_INLINE inline Pair expAssemble(std::int64_t n, Real80 p) {
    const Real64* row = tables::exp2Table + 2 * (n & 255);
    Real80 hi = row[0], lo = row[1];
    return {hi, p * (hi + lo) + lo};
}

// e^x but for the factor 2^floor(n/256).
struct ExpParts {
    Pair value;
    std::int64_t n;
};

OKT_INLINE inline ExpParts expParts(Real80 x) {
    using C = ExpConstants;
    auto [r, n] = expReduce(x);
    Real80 s = r * r;
    Real80 p = (((C::c6 * s + C::c4) * s + C::c2) + (C::c5 * s + C::c3) * r) * s + r;
    return {expAssemble(n, p), n};
}

// v*2^k for every k that e^x can need: in two factors, as k may lie outside the exponents of normal numbers.
OKT_INLINE inline Real80 scaleWide(Real80 v, int k) {
    int half = k >> 1;
    return v * powerOfTwo80(half) * powerOfTwo80(k - half);
}

// (e^x - 1 - x)/x^2; Taylor. Relative errors of e^x 2^-70.7 below 2^-5 and 2^-75.4 below 2^-11.
inline constexpr Real64 expSeries9[8] = {0.5,
                                         0x1.5555555555555p-3,
                                         0x1.5555555555555p-5,
                                         0x1.1111111111111p-7,
                                         0x1.6c16c16c16c17p-10,
                                         0x1.a01a01a01a01ap-13,
                                         0x1.a01a01a01a01ap-16,
                                         0x1.71de3a556c734p-19};
inline constexpr Real64 expSeries5[4] = {0.5, 0x1.5555555555555p-3, 0x1.5555555555555p-5, 0x1.1111111111111p-7};

// Arguments below 2^-5 in magnitude: 1 + x + x^2*(...), by tiers.
OKT_INLINE inline Real80 expSmall(Real80 x, int exponent) {
    if (exponent >= 0x3FF4) {
        return 1.0 + (x + x * x * poly(x, expSeries9));
    }
    if (exponent >= 0x3FED) {
        return 1.0 + (x + x * x * poly(x, expSeries5));
    }
    if (exponent >= 0x3FE5) {
        return 1.0 + (x + x * x * (x * expSeries5[1] + 0.5));
    }
    if (exponent >= 0x3FBC) {
        return 1.0 + (x + x * x * 0.5);
    }
    return 1.0 + x;
}

// Arguments of magnitude below 2^-5 or not below 512.
[[gnu::noinline, gnu::cold]] inline Real80 expFar(Real80 x, int exponent) {
    if (exponent < 0x3FFA) {
        return expSmall(x, exponent);
    }
    if (exponent == 0x7FFF) {
        if (x != x) {
            return x * 1.0;
        }
        return x > 0 ? x : Real80{0.0};
    }
    if (x > real80(0x400C, 0xB17217F7D1CF79ACU)) {
        return opaque(huge()) * huge();
    }
    if (x < real80(0xC00C, 0xB220C44769C201E8U)) {
        return opaque(tiny()) * tiny();
    }
    auto [value, n] = expParts(x);
    return scaleWide(value.head + value.tail, static_cast<int>(n >> 8));
}

// e^x. The argument may be a Real64, which saves a trip through memory for its exponent.
template <class T>
OKT_INLINE inline Real80 exp(T argument) {
    int exponent = exponentOf(argument);
    if (static_cast<unsigned>(exponent - 0x3FFA) >= 0x4008 - 0x3FFA) [[unlikely]] {
        return expFar(argument, exponent);
    }
    auto [value, n] = expParts(argument);  // |x| < 512: 2^k is a Real64
    return (value.head + value.tail) * powerOfTwo<Real64>(static_cast<int>(n >> 8));
}

}  // namespace okt::extended
