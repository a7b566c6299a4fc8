// Sine and cosine in extended precision.
//
// |x| = n*pi/2 + r with |r| <= pi/4 and r as head and tail; polynomials in r^2; n chooses function and signs.
//
// Largest error seen over all exponents: 0.64 ulp of the 64-bit significand, of the cosine at 1211058.
#pragma once

#include "extended/exceptional.h"
#include "extended/polynomial.h"
#include "extended/quarter_turns.h"
#include "extended/sin_cos_tables.h"

namespace okt::extended {

// (sin x - x)/x^3 and (cos x - 1)/x^2 in x^2 below 2^-5, relative errors of sine and cosine 2^-75.5 and 2^-71.8;
// Taylor.
inline constexpr Real80 minusSixth = -0xAAAAAAAAAAAAAAABp-66L;
inline constexpr Real64 sineSeries[3] = {0x1.1111111111111p-7, -0x1.a01a01a01a01ap-13, 0x1.71de3a556c734p-19};
inline constexpr Real64 cosineSeries[4] = {-0.5, 0x1.5555555555555p-5, -0x1.6c16c16c16c17p-10, 0x1.a01a01a01a01ap-16};

struct SinCos {
    Real80 sin, cos;
};

// Arguments below 2^-5 in magnitude, by tiers.
inline SinCos sinCosSmall(Real80 x, int exponent) {
    Real80 z = x * x;
    if (exponent >= 0x3FF4) {
        return {x + x * z * (poly(z, sineSeries) * z + minusSixth), 1.0 + z * poly(z, cosineSeries)};
    }
    if (exponent >= 0x3FEC) {
        return {x + x * z * (sineSeries[0] * z + minusSixth), 1.0 + z * (cosineSeries[1] * z - 0.5)};
    }
    if (exponent >= 0x3FB4) {
        return {x + x * z * minusSixth, 1.0 - z * 0.5};
    }
    return {tinyOdd(x), x == 0 ? Real80{1.0} : 1.0 - opaque(tiny())};
}

// Sine and cosine of r = h + l, h of 11 bits, so that 1 - h^2/2 and h^3 are exact and the square and the cube of r
// lose little.
OKT_INLINE inline SinCos sinCosReduced(Pair r) {
    Real80 x = r.head;
    Real80 z = x * x;
    Real80 h = roundBy(toMultiple11, x);
    Real80 l = (x - h) + r.tail;
    Real80 hh = h * h;
    Real80 both = l * (x + h);  // r^2 - h^2
    Real80 zz = z * z;
    Real80 cosine = polyInTwo(z, zz, tables::CosineWide, tables::Cosine) * zz - both * 0.5;
    Real80 cube = hh * h + (z * l + both * h);
    Real80 sine = (polyInTwo(z, zz, tables::SineWide, tables::Sine) * (cube * z) + r.tail) + cube * minusSixth;
    return {x + sine, (1.0 - hh * 0.5) + cosine};
}

// Signs and exchange by the quarter turns: a row of factors for each turn of a positive argument, then of a negative
// one, as the turns are as good as random and a branch on them is not foreseen. Both values are finite and non-zero.
OKT_INLINE inline SinCos inQuadrant(SinCos v, std::uint32_t turns, bool negative) {
    struct Factors {
        Real64 sinOfSin, sinOfCos, cosOfSin, cosOfCos;
    };
    alignas(64) static constexpr Factors factors[8] = {
        {1, 0, 0, 1},  {0, 1, -1, 0},  {-1, 0, 0, -1}, {0, -1, 1, 0},
        {-1, 0, 0, 1}, {0, -1, -1, 0}, {1, 0, 0, -1},  {0, 1, 1, 0},
    };
    const Factors& f = factors[(turns & 3) + 4 * static_cast<std::uint32_t>(negative)];
    return {v.sin * f.sinOfSin + v.cos * f.sinOfCos, v.sin * f.cosOfSin + v.cos * f.cosOfCos};
}

// Arguments of magnitude below 2^-5 or not below 2^17.
[[gnu::noinline, gnu::cold]] inline SinCos sinCosFar(Real80 x, int exponent) {
    if (exponent < 0x3FFA) {
        return sinCosSmall(x, exponent);
    }
    if (exponent == 0x7FFF) {
        Real80 nan = x != x ? x * 1.0 : x * opaque(Real80{0.0});
        return {nan, nan};
    }
    auto [r, turns] = reduceByQuarterTurns(abs(x), exponent);
    return inQuadrant(sinCosReduced(r), turns, isNegative(x));
}

// Sine and cosine at once.
template <class T>
OKT_INLINE inline SinCos sinCos(T argument) {
    int exponent = exponentOf(argument);
    if (static_cast<unsigned>(exponent - 0x3FFA) >= 0x4010 - 0x3FFA) [[unlikely]] {
        return sinCosFar(argument, exponent);
    }
    auto [r, turns] = reduceSmall(abs(Real80{argument}));
    return inQuadrant(sinCosReduced(r), turns, isNegative(argument));
}

template <class T>
OKT_INLINE inline Real80 sin(T x) {
    return sinCos(x).sin;
}

template <class T>
OKT_INLINE inline Real80 cos(T x) {
    return sinCos(x).cos;
}

}  // namespace okt::extended
