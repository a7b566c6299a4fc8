// atanh z, the written steps on one element: ln|(1 + z)/(1 - z)|/2 and half the angle of (1 + z)*conj(1 - z).
#pragma once

#include "complex/element.h"
#include "extended/atan.h"
#include "extended/inverse_hyper.h"

namespace okt::complex {

// pi/2 with the sign of y, and the inexact flag.
inline Real64 halfPiOf(Real64 y) {
    keepFlags(opaque(halfPi64) + smallestNormal<Real64>());
    return withSign(halfPi64, y);
}

inline constexpr Real64 atanhClose = 0x1.eb851eb851eb8p-6;  // 0.03

// The real part of atanh, x finite and non-zero, comes from the squared distances c and d from -1 and 1: half the real
// function where they are close, elsewhere a quarter of the logarithm of their quotient.
struct SquaredDistances {
    Real80 c, d;
    bool close;
};

OKT_INLINE inline SquaredDistances squaredDistances(Real80 x, Real80 y2) {
    Real80 above = 1.0 + x, below = x - 1.0;
    Real80 c = above * above + y2;
    Real80 d = below * below + y2;
    return {c, d, atanhClose * d >= abs(c - d)};
}

inline Real64 atanhRealPartClose(Real80 x, Real80 x2, Real80 y2) {
    return narrow(extended::atanh(2.0 * x / (1.0 + x2 + y2)) * 0.5);
}

// The logarithm is 0.029 and more in magnitude, so that the quarter of its Real64 is a matter of the exponent.
OKT_INLINE inline Real64 atanhRealPartApart(Real80Bits quotient) {
    return bits64(asBits(narrow(extended::lnOrdinary(quotient))) - (std::uint64_t{2} << 52));
}

inline Real64 atanhRealPart(Real80 x, Real80 x2, Real80 y2) {
    auto [c, d, close] = squaredDistances(x, y2);
    return close ? atanhRealPartClose(x, x2, y2) : atanhRealPartApart(asBits(c / d));
}

// Imaginary part of atanh of x + iy, finite and non-zero, without its sign: half the angle of the point (d, 2|y|),
// d = 1 - x^2 - y^2.
inline Real64 atanhImaginaryPart(Real80 x, Real80 y, Real80 d) {
    if (abs(d) < atanhClose) {  // close to the unit circle
        return narrow((extended::atan2(y, 1.0 + x) - extended::atan2(-y, 1.0 - x)) * 0.5);
    }
    return narrow(extended::atan2(2.0 * y, d) * 0.5);
}

// A zero, infinite or NaN part.
inline Complex64 atanhSpecial(Real64 x, Real64 y) {
    Real64 zero = withSign(0.0, x);
    if (isNaN(x)) {
        Real64 square = squared(x);
        if (isInfinite(y)) {
            return {0.0, halfPiOf(y)};
        }
        Real64 fourth = square * square;
        return {fourth, isNaN(y) ? squared(y) : fourth};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return isFiniteNonzero(x) ? Complex64{square, square} : Complex64{zero, narrow(extended::atan(y))};
    }
    if (isInfinite(y)) {
        if (isSubnormal(x)) {
            keepFlags(opaque(0.5) + x);
        }
        return {zero, narrow(extended::atan(y))};
    }
    if (isInfinite(x)) {
        if (isSubnormal(y)) {
            keepFlags(opaque(0.5) + y);
        }
        return {zero, halfPiOf(y)};
    }
    if (isZero(x)) {
        return {x, narrow(extended::atan(y))};
    }
    // y is a zero
    if (magnitudeBits(x) <= 0x3FF0000000000000U) {
        return {narrow(extended::atanh(x)), y};
    }
    Real80 wide = x;
    return {atanhRealPart(wide, wide * wide, 0.0), halfPiOf(y)};
}

inline Complex64 atanhElement(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(atanhSpecial(z.re, z.im));
    }
    Real80 x = z.re, y = magnitude(z.im);
    Real80 x2 = x * x, y2 = y * y;
    Real80 d = (1.0 - x2) - y2;
    if (biasedExponent(z.re) < 0x3FF + 500 && biasedExponent(z.im) < 0x3FF + 500) [[likely]] {
        Real64 d64 = narrow(d);
        Real64 y64 = bits64(magnitudeBits(z.im) + (std::uint64_t{1} << 52));  // 2|y| where it is not tiny
        int apart = biasedExponent(y64) - biasedExponent(d64);
        SquaredDistances distances = squaredDistances(x, y2);
        if (!distances.close && magnitudeBits(d64) > asBits(atanhClose) && static_cast<unsigned>(apart + 12) <= 24)
            [[likely]] {
            // Two long chains of operations, both begun with their divisions. No part is subnormal.
            Real80Bits quotient = asBits(distances.c / distances.d);
            extended::AngleStart angle = extended::startUpperAngle(y64, y64, d, d64);
            keepInMemory(angle.t);
            Real64 re = atanhRealPartApart(quotient);
            keepInMemory(re);
            Real64 im = bits64(asBits(narrow(extended::finishAngle<false>(angle))) - (std::uint64_t{1} << 52));
            return {re, withSign(im, z.im)};
        }
    }
    Real64 im = atanhImaginaryPart(x, y, d);
    return closed({atanhRealPart(x, x2, y2), withSign(im, z.im)});
}

}  // namespace okt::complex
