// Special values of the complex inverse functions, class by class.
#pragma once

#include "families/complex_cells.h"

#include <array>

namespace okt::test {

// Magnitude 1 and more, infinities among them.
inline Values oneAndMoreOrInfinite(bool single) { return joined(oneAndMoreFinite(single), infinite(single)); }
inline Values aboveOneFinite(bool single) { return joined(both({aboveOne(single), 1.625, 2.0, 25.0}), huge(single)); }
inline Values atMostOne(bool single) { return joined(belowOneNonzero(single), both({1.0})); }
inline Values notZero(bool single) { return joined(finiteNonzero(single), infinite(single)); }
inline Values notNaN(bool single) { return joined(finite(single), infinite(single)); }
inline Values any(bool single) { return joined(notNaN(single), nan(single)); }
inline Values finiteOrInfinite(bool single) { return joined(finiteNonzero(single), infinite(single)); }

// Real functions in the range of the classes; tiny and huge arguments by their leading terms.
inline double inverseSineH(double x) {
    const double a = std::fabs(x);
    const double value = a < 0x1p-28 ? a : a > 0x1p28 ? std::log(a) + std::log(2.0) : std::asinh(a);
    return withSignOf(value, x);
}
inline double inverseCosineH(double a) {
    // Next to 1 the root of twice the distance.
    return a > 0x1p28 ? std::log(a) + std::log(2.0) : a - 1 < 0x1p-20 ? std::sqrt(2 * (a - 1)) : std::acosh(a);
}
inline double arcSine(double x) { return std::fabs(x) < 0x1p-28 ? x : std::asin(x); }
inline double arcTangent(double x) { return std::fabs(x) < 0x1p-28 ? x : std::atan(x); }
// 0 or pi, and the diagonals.
inline double straight(double x) { return negative(x) ? pi : 0.0; }
inline double oblique(double x) { return negative(x) ? 0x1.2d97c7f3321d2p1 : 0x1.921fb54442d18p-1; }

inline constexpr auto acosCells = std::to_array<Cell>({
    {zero, nan, [](double, double) { return exactly(0x1.921fb54442d18p0); }, [](double, double) { return aNaN(); }},
    {zero, notNaN, [](double, double) { return exactly(0x1.921fb54442d18p0); },
     [](double, double y) { return about(flipped(inverseSineH(y))); }},
    {finiteNonzero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {nan, finite, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
    {infinite, nan, [](double, double y) { return quietOf(y); }, [](double, double) { return exactly(inf); }},
    {belowOneNonzero, zero, [](double x, double) { return about(std::acos(x)); },
     [](double, double y) { return zeroWithSign(!negative(y)); }},
    {oneAndMoreOrInfinite, zero, [](double x, double) { return exactly(straight(x)); },
     [](double x, double y) { return about(signedBy(inverseCosineH(std::fabs(x)), !negative(y))); }},
    {infinite, finiteNonzero, [](double x, double) { return exactly(straight(x)); },
     [](double, double y) { return infinityWithSign(!negative(y)); }},
    {infinite, infinite, [](double x, double) { return exactly(oblique(x)); },
     [](double, double y) { return infinityWithSign(!negative(y)); }},
    {finiteNonzero, infinite, [](double, double) { return exactly(0x1.921fb54442d18p0); },
     [](double, double y) { return infinityWithSign(!negative(y)); }},
    {nan, infinite, [](double x, double) { return quietOf(x); },
     [](double, double y) { return infinityWithSign(!negative(y)); }},
});

inline Values belowOneOrZero(bool single) { return joined(zero(single), belowOneNonzero(single)); }

inline constexpr auto acoshCells = std::to_array<Cell>({
    {belowOneOrZero, zero, [](double, double) { return exactly(0.0); },
     [](double x, double y) { return about(withSignOf(std::acos(x), y)); }},
    {oneAndMoreOrInfinite, zero, [](double x, double) { return about(inverseCosineH(std::fabs(x))); },
     [](double x, double y) { return exactly(withSignOf(straight(x), y)); }},
    {zero, finiteOrInfinite, [](double, double y) { return about(inverseSineH(std::fabs(y))); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {finite, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {nan, finite, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
    {infinite, finiteNonzero, [](double, double) { return exactly(inf); },
     [](double x, double y) { return exactly(withSignOf(straight(x), y)); }},
    {infinite, infinite, [](double, double) { return exactly(inf); },
     [](double x, double y) { return exactly(withSignOf(oblique(x), y)); }},
    {infinite, nan, [](double, double) { return exactly(inf); }, [](double, double y) { return quietOf(y); }},
    {finiteNonzero, infinite, [](double, double) { return exactly(inf); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {nan, infinite, [](double, double) { return exactly(inf); }, [](double x, double) { return quietOf(x); }},
});

inline constexpr auto asinhCells = std::to_array<Cell>({
    {notNaN, zero, [](double x, double) { return about(inverseSineH(x)); },
     [](double, double y) { return exactly(y); }},
    {nan, zero, [](double x, double) { return quietOf(x); }, [](double, double y) { return exactly(y); }},
    {zero, belowOneNonzero, [](double x, double) { return exactly(x); },
     [](double, double y) { return about(arcSine(y)); }},
    {zero, oneAndMoreOrInfinite, [](double x, double y) { return about(withSignOf(inverseCosineH(std::fabs(y)), x)); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
    {nan, finiteNonzero, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {finite, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {infinite, finiteNonzero, [](double x, double) { return exactly(x); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {infinite, infinite, [](double x, double) { return exactly(x); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p-1, y)); }},
    {infinite, nan, [](double x, double) { return exactly(x); }, [](double, double y) { return quietOf(y); }},
    {finiteNonzero, infinite, [](double x, double) { return infinityWithSign(negative(x)); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {nan, infinite, [](double, double) { return exactly(inf); }, [](double x, double) { return quietOf(x); }},
});

// Beyond 1 the real part of the inverse tangent on the axis: half the logarithm of (x + 1)/(x - 1).
inline double inverseTangentH(double x) {
    const double a = std::fabs(x);
    if (a < 0x1p-28) return x;
    if (a > 0x1p28) return 1 / x;
    if (a == 1) return withSignOf(inf, x);
    return withSignOf(a < 1 ? 0.5 * std::log1p(2 * a / (1 - a)) : 0.5 * std::log1p(2 / (a - 1)), x);
}

inline constexpr auto atanhCells = std::to_array<Cell>({
    {zero, finite, [](double x, double) { return exactly(x); }, [](double, double y) { return about(arcTangent(y)); }},
    {atMostOne, zero, [](double x, double) { return about(inverseTangentH(x)); },
     [](double, double y) { return exactly(y); }},
    {aboveOneFinite, zero, [](double x, double) { return about(inverseTangentH(x)); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {notNaN, infinite, [](double x, double) { return zeroWithSign(negative(x)); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {finiteNonzero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {zeroOrInfinite, nan, [](double x, double) { return zeroWithSign(negative(x)); },
     [](double, double y) { return quietOf(y); }},
    {infinite, finite, [](double x, double) { return zeroWithSign(negative(x)); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {nan, finite, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, infinite, [](double, double) { return exactly(0.0); },
     [](double, double y) { return exactly(withSignOf(0x1.921fb54442d18p0, y)); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
});

}  // namespace okt::test
