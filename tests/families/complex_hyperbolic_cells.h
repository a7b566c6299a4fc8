// Special values of the complex hyperbolic functions, class by class. The circular functions are quarter turns of them.
#pragma once

#include "families/complex_cells.h"

#include <array>

namespace okt::test {

// |x| from 2^11 on, and from 2^9 on.
inline Values coshExtreme(bool single) { return both({2048.0, 3000.0, 0x1p80, largestNumber(single)}); }
inline Values tanhExtreme(bool single) { return joined(both({512.0, 1000.0, 2047.0}), coshExtreme(single)); }
// What lies between and is not zero.
inline Values moderate(bool single) {
    return joined(subnormal(single), both({smallestNormal(single), 0x1p-60, 0.375, 1.0, 3.0, 20.0}));
}
inline Values normalMagnitude(bool single) { return joined(normalBelowOne(single), oneAndMoreFinite(single)); }

inline constexpr bool differ(double x, double y) { return (asBits(x) ^ asBits(y)) >> 63 != 0; }

// Odd functions of a number that may be tiny; the C library's tangent near its zeros does not matter here.
inline double tangent(double y) { return std::fabs(y) < 0x1p-30 ? y : sine(y) / cosine(y); }
inline double hyperbolicSine(double x) { return std::fabs(x) < 0x1p-30 ? x : std::sinh(x); }

// The real hyperbolic cosine is that of the magnitude, a NaN's too.
inline double unsignedNaN(double x) { return bits64(asBits(x) & 0x7FFFFFFFFFFFFFFF); }

inline constexpr auto coshCells = std::to_array<Cell>({
    {zero, zero, [](double, double) { return exactly(1.0); },
     [](double x, double y) { return zeroWithSign(differ(x, y)); }},
    {zero, finiteNonzero, [](double, double y) { return about(cosine(y)); },
     [](double x, double y) { return zeroWithSign(differ(x, sine(y))); }},
    {zero, infinite, [](double, double) { return aNaN(); },
     [](double x, double y) { return zeroWithSign(differ(x, y)); }},
    // The zero opposite to x, whatever the NaN is.
    {zero, nan, [](double, double y) { return quietOf(y); }, [](double x, double) { return exactly(flipped(x)); }},
    {moderate, zero, [](double x, double) { return about(std::cosh(x)); },
     [](double x, double y) { return zeroWithSign(differ(x, y)); }},
    {coshExtreme, zero, [](double, double) { return exactly(inf); },
     [](double x, double y) { return zeroWithSign(differ(x, y)); }},
    {moderate, finiteNonzero, [](double x, double y) { return about(std::cosh(x) * cosine(y)); },
     [](double x, double y) { return about(hyperbolicSine(x) * sine(y)); }},
    {coshExtreme, finiteNonzero, [](double, double y) { return infinityWithSign(negative(cosine(y))); },
     [](double x, double y) { return infinityWithSign(differ(x, sine(y))); }},
    {finiteNonzero, infinite, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {finiteNonzero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {infinite, zero, [](double, double) { return exactly(inf); },
     [](double x, double y) { return zeroWithSign(differ(x, y)); }},
    {infinite, belowOneNonzero, [](double, double) { return exactly(inf); },
     [](double x, double y) { return infinityWithSign(differ(x, y)); }},
    {infinite, oneAndMoreFinite, [](double, double y) { return infinityWithSign(negative(cosine(y))); },
     [](double x, double y) { return infinityWithSign(differ(x, sine(y))); }},
    {infinite, infinite, [](double, double) { return exactly(inf); }, [](double, double) { return aNaN(); }},
    {infinite, nan, [](double, double) { return exactly(inf); }, [](double, double y) { return quietOf(y); }},
    {nan, zero, [](double x, double) { return quietOf(unsignedNaN(x)); }, [](double, double y) { return exactly(y); }},
    {nan, finiteNonzero, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, infinite, [](double x, double) { return quietOf(unsignedNaN(x)); }, [](double, double) { return aNaN(); }},
    {nan, nan, [](double x, double) { return quietOf(unsignedNaN(x)); }, [](double, double y) { return quietOf(y); }},
});

inline constexpr auto sinhCells = std::to_array<Cell>({
    {zero, zero, [](double x, double) { return exactly(x); }, [](double, double y) { return exactly(y); }},
    {zero, subnormal, [](double x, double) { return exactly(x); }, [](double, double y) { return exactly(y); }},
    {zero, finiteNonzero, [](double x, double y) { return zeroWithSign(differ(x, cosine(y))); },
     [](double, double y) { return about(sine(y)); }},
    {zero, infinite, [](double x, double) { return exactly(x); }, [](double, double) { return aNaN(); }},
    {zero, nan, [](double x, double) { return exactly(x); }, [](double, double y) { return quietOf(y); }},
    {moderate, zero, [](double x, double) { return about(hyperbolicSine(x)); },
     [](double, double y) { return exactly(y); }},
    {coshExtreme, zero, [](double x, double) { return infinityWithSign(negative(x)); },
     [](double, double y) { return exactly(y); }},
    {moderate, finiteNonzero, [](double x, double y) { return about(hyperbolicSine(x) * cosine(y)); },
     [](double x, double y) { return about(std::cosh(x) * sine(y)); }},
    {coshExtreme, finiteNonzero, [](double x, double y) { return infinityWithSign(differ(x, cosine(y))); },
     [](double, double y) { return infinityWithSign(negative(sine(y))); }},
    {finiteNonzero, infinite, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {finiteNonzero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {infinite, zero, [](double x, double) { return exactly(x); }, [](double, double y) { return exactly(y); }},
    {infinite, belowOneNonzero, [](double x, double) { return exactly(x); },
     [](double, double y) { return infinityWithSign(negative(y)); }},
    {infinite, oneAndMoreFinite, [](double x, double y) { return infinityWithSign(differ(x, cosine(y))); },
     [](double, double y) { return infinityWithSign(negative(sine(y))); }},
    {infinite, infinite, [](double x, double) { return exactly(x); }, [](double, double) { return aNaN(); }},
    {infinite, nan, [](double x, double) { return exactly(x); }, [](double, double y) { return quietOf(y); }},
    {nan, zero, [](double x, double) { return quietOf(x); }, [](double, double y) { return exactly(y); }},
    {nan, finiteNonzero, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, infinite, [](double x, double) { return quietOf(x); }, [](double, double) { return aNaN(); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
});

// sinh x cosh x and sin y cos y over sinh^2 x + cos^2 y.
inline double tanhRe(double x, double y) {
    const double s = hyperbolicSine(x), c = cosine(y);
    return s * std::cosh(x) / (s * s + c * c);
}
inline double tanhIm(double x, double y) {
    const double s = hyperbolicSine(x), c = cosine(y);
    return sine(y) * (c / (s * s + c * c));
}

inline constexpr auto tanhCells = std::to_array<Cell>({
    {zero, zero, [](double x, double) { return exactly(x); }, [](double, double y) { return exactly(y); }},
    {zero, finiteNonzero, [](double x, double) { return exactly(x); },
     [](double, double y) { return about(tangent(y)); }},
    {zero, infinite, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {zero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {moderate, finite, [](double x, double y) { return about(tanhRe(x, y)); },
     [](double x, double y) { return about(tanhIm(x, y)); }},
    {tanhExtreme, zero, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return exactly(y); }},
    {tanhExtreme, subnormal, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {tanhExtreme, normalMagnitude, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(differ(sine(y), cosine(y))); }},
    {finiteNonzero, infinite, [](double, double) { return aNaN(); }, [](double, double) { return aNaN(); }},
    {finiteNonzero, nan, [](double, double y) { return quietOf(y); }, [](double, double y) { return quietOf(y); }},
    {infinite, zero, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {infinite, belowOneNonzero, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {infinite, oneAndMoreFinite, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(differ(sine(y), cosine(y))); }},
    {infinite, infinite, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {infinite, nan, [](double x, double) { return exactly(withSignOf(1.0, x)); },
     [](double, double) { return exactly(0.0); }},
    {nan, zero, [](double x, double) { return quietOf(x); },
     [](double, double y) { return zeroWithSign(negative(y)); }},
    {nan, finiteNonzero, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, infinite, [](double x, double) { return quietOf(x); }, [](double x, double) { return quietOf(x); }},
    {nan, nan, [](double x, double) { return quietOf(x); }, [](double, double y) { return quietOf(y); }},
});

}  // namespace okt::test
