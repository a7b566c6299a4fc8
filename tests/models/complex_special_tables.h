// Special values of the complex exponential, logarithms and square root and of CIS, class by class.
//
// The cells of the exponential hold for elements that no block computes; a zero beside a small number has its sign from
// the block's formula.
#pragma once

#include "families/complex_cells.h"

#include <array>

namespace okt::test {

// --- exponential --------------------------------------------------------------------------------------------------

// |a| from 2^11 on: the exponential is infinite or zero whatever the imaginary part is.
inline Values expExtreme(bool single) { return both({2048.0, 3000.0, 0x1p80, largestNumber(single)}); }
inline double expLimit(double a) { return negative(a) ? 0.0 : inf; }
inline Expected limitTimesCosine(double a, double b) { return exactly(signedBy(expLimit(a), negative(cosine(b)))); }
inline Expected limitTimesSine(double a, double b) { return exactly(signedBy(expLimit(a), negative(sine(b)))); }

inline constexpr auto expCells = std::to_array<Cell>({
    {expExtreme, zero, [](double a, double) { return exactly(expLimit(a)); },
     [](double, double b) { return exactly(b); }},
    {expExtreme, finiteNonzero, limitTimesCosine, limitTimesSine},
    {infinite, zero, [](double a, double) { return exactly(expLimit(a)); },
     [](double, double b) { return exactly(b); }},
    {infinite, finiteNonzero, limitTimesCosine, limitTimesSine},
    {infinite, infinite, [](double a, double) { return exactly(expLimit(a)); },
     [](double a, double b) { return negative(a) ? zeroWithSign(negative(b)) : aNaN(); }},
    {infinite, nan, [](double a, double) { return exactly(expLimit(a)); },
     [](double a, double b) { return negative(a) ? exactly(0.0) : quietOf(b); }},
    {nan, zero, [](double a, double) { return quietOf(a); }, [](double, double b) { return exactly(b); }},
    {nan, finiteNonzero, [](double a, double) { return quietOf(a); }, [](double a, double) { return quietOf(a); }},
    {nan, infinite, [](double a, double) { return quietOf(a); }, [](double a, double) { return quietOf(a); }},
    {nan, nan, [](double a, double) { return quietOf(a); }, [](double, double) { return aNaN(); }},
    {zero, huge, [](double, double b) { return about(cosine(b)); }, [](double, double b) { return about(sine(b)); }},
    {finite, infinite, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {finite, nan, [](double, double b) { return quietOf(b); }, [](double, double b) { return quietOf(b); }},
});

// --- CIS ----------------------------------------------------------------------------------------------------------

struct RealCell {
    Class x;
    Expected (*re)(double);
    Expected (*im)(double);
};

inline Values belowSingle(bool single) { return single ? Values{} : both({0x1p-1074, 0x1p-1022, 0x1p-300, 0x1p-253}); }

inline constexpr auto cisCells = std::to_array<RealCell>({
    {zero, [](double) { return exactly(1.0); }, [](double x) { return exactly(x); }},
    {subnormal, [](double) { return exactly(1.0); }, [](double x) { return exactly(x); }},
    {belowSingle, [](double) { return exactly(1.0); }, [](double x) { return exactly(x); }},
    {infinite, [](double) { return aNaN(); }, [](double) { return aNaN(); }},
    {nan, [](double x) { return quietOf(x); }, [](double x) { return quietOf(x); }},
    {huge, [](double x) { return about(cosine(x)); }, [](double x) { return about(sine(x)); }},
});

// --- logarithms ---------------------------------------------------------------------------------------------------

// atan2(b, a) where one of the two is a zero or infinite.
inline double axisAngle(double a, double b) {
    const bool steepA = std::isinf(a), flatB = b == 0, steepB = std::isinf(b);
    const double left = negative(a) ? pi : 0.0;
    double angle = pi / 2;                           // a is small beside b
    if (flatB || (steepA && !steepB)) angle = left;  // b is small beside a, or both are zeros
    if (steepA && steepB) angle = negative(a) ? 0x1.2d97c7f3321d2p1 : pi / 4;
    return withSignOf(angle, b);
}

template <bool decimal>
Expected angleOf(double a, double b) {
    const double angle = axisAngle(a, b);
    return decimal ? about(angle * 0x1.bcb7b1526e50ep-2) : exactly(angle);
}
template <bool decimal>
Expected logOf(double magnitude) {
    return about(decimal ? std::log10(magnitude) : std::log(magnitude));
}

inline Values finiteOrInfiniteClass(bool single) { return joined(finite(single), infinite(single)); }

template <bool decimal>
inline constexpr auto logCells = std::to_array<Cell>({
    {infinite, finiteOrInfiniteClass, [](double, double) { return exactly(inf); }, angleOf<decimal>},
    {finite, infinite, [](double, double) { return exactly(inf); }, angleOf<decimal>},
    {nan, finite, [](double a, double) { return quietOf(a); }, [](double a, double) { return quietOf(a); }},
    {nan, infinite, [](double, double) { return exactly(inf); }, [](double a, double) { return quietOf(a); }},
    {finite, nan, [](double, double b) { return quietOf(b); }, [](double, double b) { return quietOf(b); }},
    {infinite, nan, [](double, double) { return exactly(inf); }, [](double, double b) { return quietOf(b); }},
    {nan, nan, [](double, double) { return aNaN(); }, [](double a, double) { return quietOf(a); }},
    {zero, zero, [](double, double) { return exactly(-inf); }, angleOf<decimal>},
    {zero, finiteNonzero, [](double, double b) { return logOf<decimal>(std::fabs(b)); }, angleOf<decimal>},
    {finiteNonzero, zero, [](double a, double) { return logOf<decimal>(std::fabs(a)); }, angleOf<decimal>},
});

// --- square root --------------------------------------------------------------------------------------------------

inline Values positiveFinite(bool single) {
    Values values = finiteNonzero(single);
    std::erase_if(values, [](double v) { return v < 0; });
    return values;
}
inline Values negativeFinite(bool single) {
    Values values = finiteNonzero(single);
    std::erase_if(values, [](double v) { return v > 0; });
    return values;
}
inline Values anyClass(bool single) { return joined(finiteOrInfiniteClass(single), nan(single)); }
// The root of half of b.
inline double halfRoot(double b) { return std::sqrt(std::fabs(b)) * 0x1.6a09e667f3bcdp-1; }

inline constexpr auto sqrtCells = std::to_array<Cell>({
    {anyClass, infinite, [](double, double) { return exactly(inf); }, [](double, double y) { return exactly(y); }},
    {infinite, nan, [](double x, double y) { return negative(x) ? quietOf(y) : exactly(inf); },
     [](double x, double y) { return negative(x) ? exactly(inf) : quietOf(y); }},
    {nan, finite, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {finite, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {nan, nan, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {infinite, finite, [](double x, double) { return exactly(negative(x) ? 0.0 : inf); },
     [](double x, double y) { return exactly(withSignOf(negative(x) ? inf : 0.0, y)); }},
    {zero, finite, [](double, double y) { return about(halfRoot(y)); },
     [](double, double y) { return about(withSignOf(halfRoot(y), y)); }},
    {negativeFinite, zero, [](double, double) { return exactly(0.0); },
     [](double x, double y) { return about(withSignOf(std::sqrt(-x), y)); }},
    {positiveFinite, zero, [](double x, double) { return about(std::sqrt(x)); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
});

}  // namespace okt::test
