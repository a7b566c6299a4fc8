// Angle of a point and arctangent in extended precision.
//
// Angle of the point (l, s), 0 <= s <= l: k = round(128*s/l) from a table, and the arctangent of
// u = (s - l*k/128)/(l + s*k/128), whose quotient is taken with its rest.
//
// Largest errors seen, in ulp of the 64-bit significand: atan 0.55 at 0.0746375638350931, atan2 0.64 at
// y = 0x1.39035a92972bfp-5 and x = 0x1.15f377a59c8a5p+0.
#pragma once

#include "extended/atan_table.h"
#include "extended/exceptional.h"
#include "extended/polynomial.h"
#include "extended/rounding.h"

namespace okt::extended {

// (atan u - u)/u^3 in u^2, |u| <= 1/256, relative error of the arctangent 2^-71.5; Taylor.
inline constexpr Real64 atanSeries[4] = {-0x1.5555555555555p-2, 0x1.999999999999ap-3, -0x1.2492492492492p-3,
                                         0x1.c71c71c71c71cp-4};

// Close to an axis the quotient carries much of the result and is taken with its rest.
[[gnu::noinline, gnu::cold]] inline Real80 angleNearAxis(Real80 s, Real80 l, Real80 ratio, int row) {
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
    const Real64* angle = tables::atanTable + 2 * row;
    return (qh + angle[0]) + (low + angle[1]);
}

// The direction of row base of atanTable plus the arctangent of s/l, 2^-13 < |s/l| <= 1. lHead is l rounded to Real64.
// k = round(128*s/l): the Real64 t has its last place at 2^-7, so that rounding to it gives both k/128 and, in its
// pattern, k.
struct AngleStart {
    Real80 s, l;
    Real64 lHead, t;
    int base;
};

inline constexpr Real64 angleMagic = 0x1.8p45;

OKT_INLINE inline AngleStart startAngle(int base, Real80 s, Real80 l, Real64 lHead) {
    return {s, l, lHead, static_cast<Real64>(s / l + angleMagic), base};
}

// Short says that l is lHead.
template <bool Short>
OKT_INLINE inline Real80 finishAngle(const AngleStart& a) {
    auto k = static_cast<int>(asBits(a.t) - asBits(angleMagic));
    Real80 ratio = Real80{a.t} - angleMagic;
    int row = a.base + k;
    if (static_cast<unsigned>(k + 4) <= 8) [[unlikely]] {
        return angleNearAxis(a.s, a.l, ratio, row);
    }
    Real80 numerator = a.s - a.lHead * ratio;
    if constexpr (!Short) {
        numerator = numerator - (a.l - a.lHead) * ratio;
    }
    Real80 q = numerator / (a.s * ratio + a.l);
    Real80 z = q * q;
    const Real64* angle = tables::atanTable + 2 * row;
    return ((q * z * poly(z, atanSeries) + q) + angle[1]) + angle[0];
}

// Angle of the point (x, y) from 0 to pi, y > 0, the two within a factor 2^12 of each other; y64 and x64 are the
// coordinates rounded to Real64. Whether y or x is the larger is as good as random: no branch.
OKT_INLINE inline AngleStart startUpperAngle(Real80 y, Real64 y64, Real80 x, Real64 x64) {
    bool steep = asBits(y64) > asBits(magnitude(x64));
    int base = steep ? 256 : isNegative(x64) ? 512 : 0;
    Real64 lHead = bits64(steep ? asBits(y64) : asBits(x64));
    return startAngle(base, select(steep, -x, y), select(steep, y, x), lHead);
}

OKT_INLINE inline AngleStart startUpperAngle(Real64 y, Real64 x) {
    bool steep = asBits(y) > asBits(magnitude(x));
    int base = steep ? 256 : isNegative(x) ? 512 : 0;
    Real64 s = bits64(steep ? asBits(x) ^ 0x8000000000000000U : asBits(y)), l = bits64(steep ? asBits(y) : asBits(x));
    return startAngle(base, s, l, l);
}

// A direction of an axis, and on which side of it a small angle lies.
struct Octant {
    int base;
    bool minus;
};

// The direction plus or minus the arctangent of s/l, 0 < s/l <= 2^-12.
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

// Where the ratio is above 2^-13 or so the table's row serves, below it the direction of the axis. l is within the
// range of Real64.
OKT_INLINE inline Real80 angleByRatio(Real80 s, Real80 l, int apart, Octant octant) {
    if (apart <= 12) {
        return finishAngle<false>(startAngle(octant.base, octant.minus ? -s : s, l, static_cast<Real64>(l)));
    }
    return smallAngleInOctant(s, l, octant);
}

// Octant of a direction by its steepness and its side.
OKT_INLINE inline Octant octantOf(bool steep, bool left) {
    return steep ? Octant{256, !left} : Octant{left ? 512 : 0, left};
}

// Every argument of atan2 that is not of two ordinary magnitudes.
[[gnu::noinline, gnu::cold]] inline Real80 atan2Rare(Real80 y, Real80 x) {
    bool negative = isNegative(y), left = isNegative(x);
    if (y != y || x != x) {
        return y * x;
    }
    int ey = exponentOf(y), ex = exponentOf(x);
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
    Real80 a = abs(y), b = abs(x);
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
        // The larger one to [1, 2), which is exact.
        Real80 scale = powerOfTwo80(0x3FFF - exponentOf(steep ? a : b));
        a *= scale;
        b *= scale;
        ey = exponentOf(a);
        ex = exponentOf(b);
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

// Angle of the point (x, y).
template <class T>
OKT_INLINE inline Real80 atan2(T argumentY, T argumentX) {
    std::uint32_t fieldY = signExponent(argumentY), fieldX = signExponent(argumentX);
    int ey = static_cast<int>(fieldY & 0x7FFF), ex = static_cast<int>(fieldX & 0x7FFF);
    // Normal numbers of Real64 in either type, and next to each other.
    constexpr int lowest = 0x3C01, highest = 0x43FE;
    if (ey > lowest && ex > lowest && ey < highest && ex < highest && static_cast<unsigned>(ey - ex + 12) <= 24)
        [[likely]] {
        Real80 angle;
        if constexpr (sizeof(T) == 8) {
            angle = finishAngle<true>(startUpperAngle(magnitude(argumentY), argumentX));
        } else {
            Real80 y = abs(argumentY);
            angle = finishAngle<false>(
                startUpperAngle(y, static_cast<Real64>(y), argumentX, static_cast<Real64>(argumentX)));
        }
        return negateIf(fieldY >> 15 != 0, angle);
    }
    return atan2Rare(argumentY, argumentX);
}

// Arctangent.
template <class T>
inline Real80 atan(T argument) {
    int exponent = exponentOf(argument);
    Real80 x = argument;
    bool negative = isNegative(argument);
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
    Real80 a = abs(x);
    if (exponent >= 0x4040) {
        return negateIf(negative, tableAngle(256) - opaque(tiny()));
    }
    bool steep = a > 1.0;
    int apart = exponent > 0x3FFF ? exponent - 0x3FFF : 0x3FFF - exponent;
    return negateIf(negative,
                    angleByRatio(steep ? Real80{1.0} : a, steep ? a : Real80{1.0}, apart, octantOf(steep, false)));
}

}  // namespace okt::extended
