// Inverse trigonometric functions in extended precision.
//
// Angle of the point (l, s), 0 <= s <= l: k = round(128*s/l) from a table, and the arctangent of
// u = (s - l*k/128)/(l + s*k/128), whose quotient is taken with its rest.
//
// Largest errors seen, in ulp of the 64-bit significand: atan and atan2 0.55 at 0.0746375638350931,
// asin 0.59 at -0.60395749061968, acos 0.58 at 0.56159181173866.
#pragma once

#include "complex/ext_common.h"

#include <algorithm>

namespace okt {

namespace ext {

// (atan u - u)/u^3.
inline constexpr Real64 atanSeries[4] = {-0x1.5555555555555p-2, 0x1.999999999999ap-3, -0x1.2492492492492p-3,
                                         0x1.c71c71c71c71cp-4};

// A quadrant of directions: the row of atanTable is base + k or base - k, and u counts with the same sign.
struct Octant {
    int base;
    bool minus;
};

// Close to an axis the quotient carries much of the result and is taken with its rest.
OKT_EXT_RARE Real80 angleNearAxis(Real80 s, Real80 l, Real80 ratio, int k, Octant octant) {
    Real80 lh = leading31(l);
    Real80 n1 = s - lh * ratio;
    Real80 n2 = (l - lh) * ratio;
    Real80 sk = s * ratio;
    Real80 d = l + sk;
    Real80 dh = leading31(d);
    Real80 dl = (l - dh) + sk;
    Real80 inverse = 1.0 / d;
    Real80 q = (n1 - n2) * inverse;
    Real80 qh = roundBy(toMultiple40, q);
    Real80 ql = (((n1 - qh * dh) - n2) - qh * dl) * inverse;
    Real80 z = q * q;
    Real80 low = ql + q * z * poly(z, atanSeries);
    Real64 direction = octant.minus ? -1.0 : 1.0;
    const Real64* row = tables::atanTable + 2 * (octant.base + (octant.minus ? -k : k));
    return (qh * direction + row[0]) + (low * direction + row[1]);
}

// Arctangent of s/l turned into the octant, for 2^-13 < s/l <= 1. Short says that l has 53 bits, so that its product
// with k needs no splitting.
template <bool Short>
OKT_EXT Real80 angleInOctant(Real80 s, Real80 l, Octant octant) {
    Real80 m = roundBy(toInteger, s / l * 128.0);
    auto k = static_cast<int>(asInteger(m));
    Real80 ratio = m * 0x1p-7;
    if (k < 8) [[unlikely]] {
        return angleNearAxis(s, l, ratio, k, octant);
    }
    Real80 numerator;
    if constexpr (Short) {
        numerator = s - l * ratio;
    } else {
        Real80 lh = leading31(l);
        numerator = (s - lh * ratio) - (l - lh) * ratio;
    }
    Real80 q = numerator / (s * ratio + l);
    Real80 z = q * q;
    static constexpr Real64 sign[2] = {1.0, -1.0};
    const Real64* row = tables::atanTable + 2 * (octant.base + (octant.minus ? -k : k));
    return ((q * z * poly(z, atanSeries) + q) * sign[octant.minus] + row[1]) + row[0];
}

// The same for a ratio of 2^-12 and less.
inline Real80 smallAngleInOctant(Real80 s, Real80 l, Octant octant) {
    Real80 q = s / l;
    Real80 qh = leading31(q), lh = leading31(l);
    Real80 ql = (((s - qh * lh) - qh * (l - lh)) - (q - qh) * l) / l;
    Real80 z = q * q;
    Real80 low = ql + q * z * poly(z, atanSeries);
    if (octant.base == 0) {
        return q + low;
    }
    const Real64* row = tables::atanTable + 2 * octant.base;
    Real80 rest = octant.minus ? row[1] - low : row[1] + low;
    return row[0] + (octant.minus ? rest - q : rest + q);
}

// A row of atanTable as one number.
inline Real80 tableAngle(int row) { return tables::atanTable[2 * row] + Real80{tables::atanTable[2 * row + 1]}; }

// Where the ratio is above 2^-13 or so the table's row serves, below it the direction of the axis.
OKT_EXT Real80 angleByRatio(Real80 s, Real80 l, int apart, Octant octant) {
    return apart <= 12 ? angleInOctant<false>(s, l, octant) : smallAngleInOctant(s, l, octant);
}

// Octant of a direction by its steepness and its side.
OKT_EXT Octant octantOf(bool steep, bool left) { return steep ? Octant{256, !left} : Octant{left ? 512 : 0, left}; }

// Every argument of atan2Ext that is not of two ordinary magnitudes.
OKT_EXT_RARE Real80 atan2Rare(Real80 y, Real80 x) {
    bool negative = signOf(y), left = signOf(x);
    if (y != y || x != x) {
        return y * x;
    }
    int ey = extExponent(y), ex = extExponent(x);
    if (ey == 0x7FFF || ex == 0x7FFF) {
        if (ey == ex) {
            return negateIf(negative, tableAngle(left ? 384 : 128) - opaque(tiny()));
        }
        if (ey == 0x7FFF) {
            return negateIf(negative, tableAngle(256));
        }
        return negateIf(negative, left ? tableAngle(512) : Real80{0.0});
    }
    if (y == 0) {
        return left ? negateIf(negative, tableAngle(512)) : y;
    }
    if (x == 0) {
        return negateIf(negative, tableAngle(256));
    }
    Real80 a = absExt(y), b = absExt(x);
    bool steep = a > b;
    int apart = ey > ex ? ey - ex : ex - ey;
    if (apart <= 75) {
        if (ey <= 0x1FFF || ex <= 0x1FFF) {
            a *= real80(0x5FFF, 0x8000000000000000U);
            b *= real80(0x5FFF, 0x8000000000000000U);
        } else if (ey >= 0x5FFF && ex >= 0x5FFF) {
            a *= real80(0x1FFF, 0x8000000000000000U);
            b *= real80(0x1FFF, 0x8000000000000000U);
        }
        ey = extExponent(a);
        ex = extExponent(b);
        apart = ey > ex ? ey - ex : ex - ey;
    }
    if (apart <= 75) {
        return negateIf(negative, angleByRatio(steep ? b : a, steep ? a : b, apart, octantOf(steep, left)));
    }
    if (steep) {
        return negateIf(negative, tableAngle(256) - opaque(tiny()));
    }
    return left ? negateIf(negative, tableAngle(512) - opaque(tiny())) : y / x;
}

}  // namespace ext

namespace ext {

// The magnitudes of two finite values in order; steep where the first is the larger. No branch: it would not be
// foreseen.
struct Ordered {
    Real80 larger, smaller;
    bool steep;
};

OKT_EXT Ordered ordered(Real64 y, Real64 x) {
    std::uint64_t a = asBits(absReal64(y)), b = asBits(absReal64(x));
    return {bits64(std::max(a, b)), bits64(std::min(a, b)), a > b};
}

OKT_EXT Ordered ordered(Real80 y, Real80 x) {
    static constexpr Real64 weight[2] = {0.0, 1.0};
    Real80 a = absExt(y), b = absExt(x);
    bool steep = a > b;
    Real64 first = weight[steep], second = weight[!steep];
    return {a * first + b * second, a * second + b * first, steep};
}

}  // namespace ext

// Angle of the point (x, y).
template <class T>
OKT_EXT Real80 atan2Ext(T argumentY, T argumentX) {
    using namespace ext;
    std::uint32_t fieldY = signExponent(argumentY), fieldX = signExponent(argumentX);
    int ey = static_cast<int>(fieldY & 0x7FFF), ex = static_cast<int>(fieldX & 0x7FFF);
    // Zeros, subnormals, infinities and NaNs of either type lie outside these exponents.
    constexpr int lowest = sizeof(T) == 8 ? 0x3C00 : 0x1FFF;
    if (ey > lowest && ex > lowest && ey < 0x5FFF && ex < 0x5FFF && static_cast<unsigned>(ey - ex + 12) <= 24)
        [[likely]] {
        auto [larger, smaller, steep] = ordered(argumentY, argumentX);
        return negateIf(fieldY >> 15 != 0,
                        angleInOctant<sizeof(T) == 8>(smaller, larger, octantOf(steep, fieldX >> 15 != 0)));
    }
    return atan2Rare(argumentY, argumentX);
}

// Arctangent.
template <class T>
inline Real80 atanExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
    Real80 x = argument;
    bool negative = signOf(argument);
    if (exponent < 0x3FF8) {
        Real80 z = x * x;
        if (exponent >= 0x3FF3) {
            return x + x * z * poly(z, atanSeries);
        }
        if (exponent >= 0x3FED) {
            return x + x * z * (atanSeries[1] * z + atanSeries[0]);
        }
        return exponent >= 0x3FB4 ? x + x * z * atanSeries[0] : tinyOdd(x);
    }
    if (x != x) {
        return x * 1.0;
    }
    Real80 a = absExt(x);
    if (exponent >= 0x4040) {
        return negateIf(negative, tableAngle(256) - opaque(tiny()));
    }
    bool steep = a > 1.0;
    int apart = exponent > 0x3FFF ? exponent - 0x3FFF : 0x3FFF - exponent;
    return negateIf(negative,
                    angleByRatio(steep ? Real80{1.0} : a, steep ? a : Real80{1.0}, apart, octantOf(steep, false)));
}

namespace ext {

// asin x of |x| <= 1/2 less x; z is the square of x, or the value whose root x is.
OKT_EXT Real80 asinRest(Real80 x, Real80 z) { return x * z * poly(z, tables::AsinWide, tables::Asin); }

// asin of the root of w = (1 - a)/2, 1/2 <= a <= 1, as head and low part.
OKT_EXT Pair halfAngle(Real80 a) {
    Real80 w = (1.0 - a) * 0.5;
    Real80 s = root(w);
    if (s == 0) {
        return {s, s};
    }
    Real80 h = leading31(s);
    Real80 rest = ((w - h * h) - (s - h) * (s + h)) / (s + s);
    return {s, rest + asinRest(s, w)};
}

}  // namespace ext

// Arcsine.
template <class T>
inline Real80 asinExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
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
    Real80 a = absExt(x);
    if (a > 1.0) [[unlikely]] {
        return invalid();
    }
    auto [head, low] = halfAngle(a);
    const Real64* halfPi = tables::atanTable + 2 * 256;
    Pair angle = fastTwoSum(halfPi[0], -2.0 * head);
    return negateIf(signOf(argument), angle.head + (angle.tail + (halfPi[1] - 2.0 * low)));
}

// Arccosine.
template <class T>
inline Real80 acosExt(T argument) {
    using namespace ext;
    int exponent = extExponent(argument);
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
    Real80 a = absExt(x);
    if (a > 1.0) [[unlikely]] {
        return invalid();
    }
    auto [head, low] = halfAngle(a);
    if (!signOf(argument)) {
        return 2.0 * (head + low);
    }
    const Real64* pi = tables::atanTable + 2 * 512;
    Pair angle = fastTwoSum(pi[0], -2.0 * head);
    return angle.head + (angle.tail + (pi[1] - 2.0 * low));
}

}  // namespace okt
