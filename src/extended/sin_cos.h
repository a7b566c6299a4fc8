// Sine, cosine and tangent in extended precision.
//
// |x| = n*pi/2 + r with |r| <= pi/4 and r as head and tail; polynomials in r^2; n chooses function and signs.
//
// Largest errors seen, in ulp of the 64-bit significand, over all exponents: sine and cosine 0.64 (cosine at 1211058),
// tangent 0.51.
#pragma once

#include "extended/pair.h"

namespace okt {

namespace ext {

// An argument brought to [-pi/4, pi/4] (by magnitude: the sign of x is not in it) and the quarter turns taken off.
struct Quarter {
    Pair r;
    std::uint32_t turns;
};

// pi/2 in pieces short enough for exact products with the quarter turns: below 2^17 of them, and below 2^30.
struct HalfPi {
    static constexpr Real64 a1 = 2 * 0.7853981633974456, a2 = 2 * 2.6951514290790658e-15,
                            a3 = 2 * -6.2684951034662496e-30;
    static constexpr Real64 b1 = 2 * 0.7853981633670628, b2 = 2 * 3.038550253151983e-11,
                            b3 = 2 * 1.0111331243555832e-21, b4 = 2 * 4.2392138301741147e-32,
                            b5 = 2 * 1.0335160549131994e-43;
    static constexpr Real64 twoOverPi = 1.2732395447351628 / 2;
};

// Subtraction of one exact piece, the part that falls off the head going to the tail.
OKT_EXT Pair less(Pair r, Real80 piece) {
    Real80 head = r.head - piece;
    return {head, r.tail + ((r.head - head) - piece)};
}

// a < 2^17. The tail is left unnormalised: it is small beside the head, if not below its last place.
OKT_EXT Quarter reduceSmall(Real80 a) {
    using C = HalfPi;
    Real80 m = roundBy(toInteger, a * C::twoOverPi);
    Real80 first = a - m * C::a1;
    Real80 piece = m * C::a2;
    Real80 head = first - piece;
    return {{head, ((first - head) - piece) - m * C::a3}, static_cast<std::uint32_t>(asInteger(m))};
}

// 2^17 <= a < 2^30.
inline Quarter reduceMedium(Real80 a) {
    using C = HalfPi;
    Real80 m = roundBy(toInteger, a * C::twoOverPi);
    Pair r = less(less({a - m * C::b1, 0.0}, m * C::b2), m * C::b3);
    r = fastTwoSum(r.head, (r.tail - m * C::b4) - m * C::b5);
    return {r, static_cast<std::uint32_t>(asInteger(m))};
}

// a >= 2^30, finite: the product of the significand with those digits of 4/pi that matter modulo 8, in integers.
// Digits of a weight that would give multiples of 8 are left out; 256 bits of the product are kept, 3 of them integer.
inline Quarter reduceLarge(Real80 a) {
    __extension__ using Wide = unsigned __int128;
    Real80Bits bits = asBits(a);
    // The first digit of 4/pi whose product with the lowest bit of the significand weighs 4; 128 zeros stand in front.
    unsigned first = static_cast<unsigned>((bits.signAndExponent & 0x7FFF) - (0x3FFF + 63) - 2 + 128);
    const std::uint64_t* word = tables::fourOverPiSlices + (first >> 6);
    unsigned shift = first & 63;
    auto digits = [&](int i) { return (word[i] << shift) | (word[i + 1] >> 1 >> (63 - shift)); };
    Wide m = bits.significand;
    Wide p3 = m * digits(3);
    Wide p2 = m * digits(2) + (p3 >> 64);
    Wide p1 = m * digits(1) + (p2 >> 64);
    std::uint64_t top = bits.significand * digits(0) + static_cast<std::uint64_t>(p1 >> 64);
    std::uint64_t middle = static_cast<std::uint64_t>(p1), low = static_cast<std::uint64_t>(p2);
    // Eighths of a turn have weight 2^61 of top; one more and without the lowest bit gives the nearest quarter.
    top += std::uint64_t{1} << 61;
    auto turns = static_cast<std::uint32_t>(top >> 62);
    auto whole = static_cast<std::int64_t>(top & 0x3FFFFFFFFFFFFFFFU) - (std::int64_t{1} << 61);
    // The fraction of an eighth: exact in three numbers, then head and tail.
    Real80 f1 = static_cast<Real80>(whole) * 0x1p-61;
    Real80 f2 = static_cast<Real80>(middle) * 0x1p-125;
    Real80 f3 = static_cast<Real80>(low) * 0x1p-189;
    Pair f = fastTwoSum(f1, f2);
    f = fastTwoSum(f.head, f.tail + f3);
    // Times pi/4.
    constexpr Real64 quarterPiHi = 0.7853981633670628, quarterPiLo = 3.038550253253096e-11;
    Real80 head = leading31(f.head);
    return {
        fastTwoSum(head * quarterPiHi, (f.head - head) * quarterPiHi + (f.tail * quarterPiHi + f.head * quarterPiLo)),
        turns};
}

// |x| reduced, for a finite x; exponent is that of x.
OKT_EXT Quarter reduceQuarterPiExt(Real80 a, int exponent) {
    if (exponent < 0x4010) {
        return reduceSmall(a);
    }
    return exponent < 0x401D ? reduceMedium(a) : reduceLarge(a);
}

// What the small tiers need of the series.
inline constexpr Real80 minusSixth = -0xAAAAAAAAAAAAAAABp-66L;
inline constexpr Real64 sineSeries[3] = {0x1.1111111111111p-7, -0x1.a01a01a01a01ap-13, 0x1.71de3a556c734p-19};
inline constexpr Real64 cosineSeries[4] = {-0.5, 0x1.5555555555555p-5, -0x1.6c16c16c16c17p-10, 0x1.a01a01a01a01ap-16};

}  // namespace ext

struct SinCos {
    Real80 sin, cos;
};

namespace ext {

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
OKT_EXT SinCos sinCosReduced(Pair r) {
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
OKT_EXT SinCos inQuadrant(SinCos v, std::uint32_t turns, bool negative) {
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
OKT_EXT_RARE SinCos sinCosFar(Real80 x, int exponent) {
    if (exponent < 0x3FFA) {
        return sinCosSmall(x, exponent);
    }
    if (exponent == 0x7FFF) {
        Real80 nan = x != x ? x * 1.0 : x * opaque(Real80{0.0});
        return {nan, nan};
    }
    auto [r, turns] = reduceQuarterPiExt(abs(x), exponent);
    return inQuadrant(sinCosReduced(r), turns, isNegative(x));
}

}  // namespace ext

// Sine and cosine at once.
template <class T>
OKT_EXT SinCos sinCosExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
    if (static_cast<unsigned>(exponent - 0x3FFA) >= 0x4010 - 0x3FFA) [[unlikely]] {
        return sinCosFar(argument, exponent);
    }
    auto [r, turns] = reduceSmall(abs(Real80{argument}));
    return inQuadrant(sinCosReduced(r), turns, isNegative(argument));
}

template <class T>
OKT_EXT Real80 sinExt(T x) {
    return sinCosExt(x).sin;
}

template <class T>
OKT_EXT Real80 cosExt(T x) {
    return sinCosExt(x).cos;
}

namespace ext {

// Tangent of |x| reduced to r, or -1/tan for an odd number of quarter turns, for positive r + tail.
inline Real80 tanReduced(Pair r, bool cotangent) {
    constexpr Real64 sixtyFourOverPi = 20.371832715762604;
    constexpr Real64 stepHi = 0.049087385210441425, stepLo = 1.899093908283185e-12;  // pi/64
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

inline constexpr Real64 tangentSeries[3] = {0x1.1111111111111p-3, 0x1.ba1ba1ba1ba1cp-5, 0x1.664f4882c10fap-6};

}  // namespace ext

// Tangent.
template <class T>
inline Real80 tanExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
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
    auto [rest, turns] = reduceQuarterPiExt(abs(x), exponent);
    Pair r = fastTwoSum(rest.head, rest.tail);  // a quotient follows, which takes no large tail
    bool negative = isNegative(r.head);
    Pair magnitude = negative ? Pair{-r.head, -r.tail} : r;
    Real80 y = tanReduced(magnitude, (turns & 1) != 0);
    return negateIf(negative != isNegative(argument), y);
}

}  // namespace okt
