// Exponential and hyperbolic functions in extended precision.
//
// e^x = 2^k*2^(j/256)*(1 + p), n = 256k + j = round(x*256/ln 2), r = x - n*ln 2/256, p = e^r - 1.
//
// Largest errors seen, in ulp of the 64-bit significand: exp 0.52 at -0.0189776627728, sinh 0.56 at 0.452807527654,
// cosh 0.58 at -0.498337368612, tanh 0.66 at -0.474513494259.
#pragma once

#include "extended/pair.h"

namespace okt {

namespace ext {

struct ExpConstants {
    static constexpr Real64 invLn2x256 = 369.3299304675746;
    static constexpr Real64 ln2Over256Hi = 0.0027076061742263846;  // 29 bits: its products with n are exact
    static constexpr Real64 ln2Over256Lo = -1.6409824502660487e-13;
    // (e^r - 1 - r)/r^2, |r| <= ln 2/512.
    static constexpr Real64 c2 = 0.5, c3 = 0.16666666666665733, c4 = 0.0416666666666645, c5 = 0.008333335878865304,
                            c6 = 0.001388889298015527;
};

// n and r of an argument.
struct ExpReduced {
    Real80 r;
    std::int64_t n;
};

OKT_EXT ExpReduced expReduce(Real80 x) {
    using C = ExpConstants;
    Real80 m = roundBy(toInteger, x * C::invLn2x256);
    return {(x - m * C::ln2Over256Hi) - m * C::ln2Over256Lo, asInteger(m)};
}

// 2^(j/256)*(1 + p), j = n mod 256, as a head of 32 bits and a low part.
OKT_EXT Pair expAssemble(std::int64_t n, Real80 p) {
    const Real64* row = tables::exp2Table + 2 * (n & 255);
    Real80 hi = row[0], lo = row[1];
    return {hi, p * (hi + lo) + lo};
}

// e^x but for the factor 2^floor(n/256).
struct ExpParts {
    Pair value;
    std::int64_t n;
};

OKT_EXT ExpParts expParts(Real80 x) {
    using C = ExpConstants;
    auto [r, n] = expReduce(x);
    Real80 s = r * r;
    Real80 p = (((C::c6 * s + C::c4) * s + C::c2) + (C::c5 * s + C::c3) * r) * s + r;
    return {expAssemble(n, p), n};
}

// v*2^k for every k that e^x can need: in two factors, as k may lie outside the exponents of normal numbers.
OKT_EXT Real80 scaleWide(Real80 v, int k) {
    int half = k >> 1;
    return v * powerOfTwoExt(half) * powerOfTwoExt(k - half);
}

// Both of e^x and e^-x, each but for its factor 2^floor(n/256): -n and -r serve the second.
struct ExpBoth {
    Pair up, down;
    std::int64_t n;
};

OKT_EXT ExpBoth expBoth(Real80 x) {
    using C = ExpConstants;
    auto [r, n] = expReduce(x);
    Real80 s = r * r;
    Real80 even = ((C::c6 * s + C::c4) * s + C::c2) * s;
    Real80 odd = (C::c5 * s + C::c3) * s * r + r;
    return {expAssemble(n, even + odd), expAssemble(-n, even - odd), n};
}

// Inverse factorials of the short series.
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
OKT_EXT Real80 expSmall(Real80 x, int exponent) {
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
OKT_EXT_RARE Real80 expFar(Real80 x, int exponent) {
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

}  // namespace ext

// e^x. The argument may be a Real64, which saves a trip through memory for its exponent.
template <class T>
OKT_EXT Real80 expExt(T argument) {
    int exponent = extExponent(argument);
    if (static_cast<unsigned>(exponent - 0x3FFA) >= 0x4008 - 0x3FFA) [[unlikely]] {
        return ext::expFar(argument, exponent);
    }
    auto [value, n] = ext::expParts(argument);  // |x| < 512: 2^k is a Real64
    return (value.head + value.tail) * powerOfTwo<Real64>(static_cast<int>(n >> 8));
}

struct SinhCosh {
    Real80 sinh, cosh;
};

namespace ext {

// Arguments of magnitude below 2^-18 or not below 32.
OKT_EXT_RARE SinhCosh sinhCoshFar(Real80 x, int exponent) {
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

}  // namespace ext

// Both hyperbolic functions on one exponential.
template <class T>
OKT_EXT SinhCosh sinhCoshExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
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
OKT_EXT Real80 sinhExt(T x) {
    return sinhCoshExt(x).sinh;
}

template <class T>
OKT_EXT Real80 coshExt(T x) {
    return sinhCoshExt(x).cosh;
}

// Hyperbolic tangent.
inline Real80 tanhExt(Real80 x) {
    using namespace ext;
    int exponent = extExponent(x);
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
    Real80 grow = powerOfTwoExt(static_cast<int>(n >> 8));
    Pair sum = fastTwoSum(value.head * grow, value.tail * grow);
    Pair result = Pair{1.0, 0.0} + -(Pair{2.0, 0.0} / (sum + Pair{1.0, 0.0}));
    return negateIf(isNegative(x), result.head + result.tail);
}

}  // namespace okt
