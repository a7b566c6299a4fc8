// Inverse trigonometric and inverse hyperbolic functions, one element.
//
// acos, acosh and asinh stand on A, half the sum of the distances from the points 1 and -1: the angle's cosine or sine
// is a/A, the other part is acosh A, and near the branch cuts both come from A - 1 and A - a without cancellation.
#pragma once

#include "complex/element.h"
#include "extended/atan.h"
#include "extended/ln.h"

namespace okt {

namespace ext {

// The quantities of a point (a, b), a, b > 0.
struct Distances {
    Real80 a, b, m, p, b2, R, S, A, Q;
};

OKT_EXT Distances distances(Real64 a, Real64 b) {
    Distances d;
    d.a = a;
    d.b = b;
    d.m = d.a - 1.0;
    d.p = d.a + 1.0;
    d.b2 = d.b * d.b;
    d.R = sqrt(d.p * d.p + d.b2);
    d.S = sqrt(d.b2 + d.m * d.m);
    d.A = (d.R + d.S) * 0.5;
    d.Q = d.S == d.m ? d.b : d.S - d.m;
    return d;
}

// The root of A^2 - a^2, over b where a is above 1.
OKT_EXT Real80 otherLeg(const Distances& d) {
    if (d.a > 1.0) {
        return sqrt(((d.A + d.a) / (d.R + d.p) + (d.A + d.a) / (d.S + d.m)) * 0.5);
    }
    return sqrt((d.Q + d.b2 / (d.R + d.p)) * (d.A + d.a) * 0.5);
}

// acosh A, begun before the angle and ended after it: of A + sqrt(A^2 - 1) where A is above 1.5.
struct Logarithm {
    bool far;
    Real80Bits sum;
};

OKT_EXT Logarithm startLogarithm(const Distances& d) {
    if (d.A > 1.5) {
        return {true, asBits(d.A + sqrt(d.A * d.A - 1.0))};
    }
    return {false, {}};
}

OKT_EXT Real80 finishLogarithm(const Logarithm& start, const Distances& d) {
    if (start.far) {
        return lnFar(start.sum, 0.0);
    }
    Real80 t1 = d.b2 / (d.p + d.R);
    Real80 t2 = d.a >= 1.0 ? d.m + d.S : d.b2 / d.Q;
    Real80 u = (t1 + t2) * 0.5;
    return log1pExt(sqrt((d.A + 1.0) * u) + u);
}

// What acos and acosh have in common, x and y finite and non-zero.
struct AngleAndLogarithm {
    Real80 angle, logarithm;
};

OKT_EXT AngleAndLogarithm acosParts(Real64 x, Real64 y) {
    Distances d = distances(magnitude(x), magnitude(y));
    Logarithm start = startLogarithm(d);
    Real80 angle;
    if (d.a < 0xA4467381D7DBF488p-64L * d.A) {  // 0.6417
        angle = acosExt(d.a / d.A);
    } else {
        Real80 v = otherLeg(d);
        angle = atan2Ext(d.a > 1.0 ? d.b * v : v, d.a);
    }
    if (isNegative(x)) {
        angle = 0xC90FDAA22168C235p-62L - angle;
    }
    return {angle, finishLogarithm(start, d)};
}

// Real part of acos or imaginary part of acosh where that is 0 or pi, and where it is pi/4 or 3*pi/4.
inline Real64 halfTurn(Real64 x) { return isNegative(x) ? pi64 : 0.0; }
inline Real64 diagonal(Real64 x) { return isNegative(x) ? threeQuarterPi64 : quarterPi64; }

inline bool isBelowOne(Real64 x) { return biasedExponent(x) < 0x3FF; }

// A zero, infinite or NaN part.
inline Complex64 complexAcosSpecial(Real64 x, Real64 y) {
    if (isZero(x)) {
        return {halfPi64, negatedUnlessNaN(narrow(asinhExt(y)))};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return isNaN(x) ? Complex64{squared(x), square} : Complex64{square, isInfinite(x) ? squared(x) : square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return isInfinite(y) ? Complex64{x + 0.0, 0.0 - y} : Complex64{square, square};
    }
    if (isZero(y)) {
        if (isBelowOne(x)) {
            return {narrow(acosExt(x)), negated(y)};
        }
        return {halfTurn(x), withSign(narrow(acoshExt(magnitude(x))), negated(y))};
    }
    if (isInfinite(x)) {
        return {isInfinite(y) ? diagonal(x) : halfTurn(x), withSign(squared(x), negated(y))};
    }
    return {halfPi64, 0.0 - y};
}

inline Complex64 complexAcoshSpecial(Real64 x, Real64 y) {
    if (isNaN(y)) {
        Real64 square = squared(y);
        return {isNaN(x) || isInfinite(x) ? squared(x) : square, square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return isInfinite(y) ? Complex64{squared(y), x + 0.0} : Complex64{square, square};
    }
    if (isZero(y)) {
        if (isBelowOne(x)) {
            return {0.0, withSign(narrow(acosExt(x)), y)};
        }
        return {narrow(acoshExt(magnitude(x))), withSign(halfTurn(x), y)};
    }
    if (isZero(x)) {
        return {narrow(asinhExt(magnitude(y))), narrow(atan2Ext(y, x))};
    }
    if (isInfinite(x)) {
        return {squared(x), withSign(isInfinite(y) ? diagonal(x) : halfTurn(x), y)};
    }
    return {squared(y), withSign(halfPi64, y)};
}

inline Complex64 complexAsinhSpecial(Real64 x, Real64 y) {
    if (isZero(y)) {
        return {narrow(asinhExt(x)), y};
    }
    if (isNaN(y)) {
        Real64 square = squared(y);
        return {isNaN(x) ? squared(x) : isInfinite(x) ? x : square, square};
    }
    if (isNaN(x)) {
        Real64 square = squared(x);
        return {isInfinite(y) ? squared(y) : square, square};
    }
    if (isZero(x)) {
        if (isBelowOne(y)) {
            return {x, narrow(asinExt(y))};
        }
        return {narrow(acoshExt(magnitude(y)) * Real80{withSign(1.0, x)}), withSign(halfPi64, y)};
    }
    if (isInfinite(x)) {
        return {x, withSign(isInfinite(y) ? quarterPi64 : 0.0, y)};
    }
    return {withSign(infinity<Real64>(), x), withSign(halfPi64, y)};
}

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

OKT_EXT SquaredDistances squaredDistances(Real80 x, Real80 y2) {
    Real80 above = 1.0 + x, below = x - 1.0;
    Real80 c = above * above + y2;
    Real80 d = below * below + y2;
    return {c, d, atanhClose * d >= abs(c - d)};
}

inline Real64 atanhRealPartClose(Real80 x, Real80 x2, Real80 y2) {
    return narrow(atanhExt(2.0 * x / (1.0 + x2 + y2)) * 0.5);
}

// The logarithm is 0.029 and more in magnitude, so that the quarter of its Real64 is a matter of the exponent.
OKT_EXT Real64 atanhRealPartApart(Real80Bits quotient) {
    return bits64(asBits(narrow(lnOrdinary(quotient))) - (std::uint64_t{2} << 52));
}

inline Real64 atanhRealPart(Real80 x, Real80 x2, Real80 y2) {
    auto [c, d, close] = squaredDistances(x, y2);
    return close ? atanhRealPartClose(x, x2, y2) : atanhRealPartApart(asBits(c / d));
}

// Imaginary part of atanh of x + iy, finite and non-zero, without its sign: half the angle of the point (d, 2|y|),
// d = 1 - x^2 - y^2.
inline Real64 atanhImaginaryPart(Real80 x, Real80 y, Real80 d) {
    if (abs(d) < atanhClose) {  // close to the unit circle
        return narrow((atan2Ext(y, 1.0 + x) - atan2Ext(-y, 1.0 - x)) * 0.5);
    }
    return narrow(atan2Ext(2.0 * y, d) * 0.5);
}

inline Complex64 complexAtanhSpecial(Real64 x, Real64 y) {
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
        return isFiniteNonzero(x) ? Complex64{square, square} : Complex64{zero, narrow(atanExt(y))};
    }
    if (isInfinite(y)) {
        if (isSubnormal(x)) {
            keepFlags(opaque(0.5) + x);
        }
        return {zero, narrow(atanExt(y))};
    }
    if (isInfinite(x)) {
        if (isSubnormal(y)) {
            keepFlags(opaque(0.5) + y);
        }
        return {zero, halfPiOf(y)};
    }
    if (isZero(x)) {
        return {x, narrow(atanExt(y))};
    }
    // y is a zero
    if (magnitudeBits(x) <= 0x3FF0000000000000U) {
        return {narrow(atanhExt(x)), y};
    }
    Real80 wide = x;
    return {atanhRealPart(wide, wide * wide, 0.0), halfPiOf(y)};
}

}  // namespace ext

inline Complex64 complexAcosKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexAcosSpecial(z.re, z.im));
    }
    auto [angle, logarithm] = ext::acosParts(z.re, z.im);
    Real64 im = narrow(logarithm);
    return closed({narrow(angle), isNegative(z.im) ? im : negated(im)});
}

inline Complex64 complexAcoshKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexAcoshSpecial(z.re, z.im));
    }
    auto [angle, logarithm] = ext::acosParts(z.re, z.im);
    return closed({narrow(logarithm), withSign(narrow(angle), z.im)});
}

inline Complex64 complexAsinhKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexAsinhSpecial(z.re, z.im));
    }
    // The roles of the parts are exchanged.
    ext::Distances d = ext::distances(magnitude(z.im), magnitude(z.re));
    ext::Logarithm start = ext::startLogarithm(d);
    Real80 angle;
    if (d.a <= 0xE666666666666666p-64L * d.A) {  // 0.9
        angle = asinExt(d.a / d.A);
    } else {
        Real80 v = ext::otherLeg(d);
        angle = atan2Ext(d.a, d.a > 1.0 ? d.b * v : v);
    }
    return closed({withSign(narrow(ext::finishLogarithm(start, d)), z.re), withSign(narrow(angle), z.im)});
}

inline Complex64 complexAtanhKernel(Complex64 z) {
    if (!isFiniteNonzero(z.re) || !isFiniteNonzero(z.im)) [[unlikely]] {
        return closed(ext::complexAtanhSpecial(z.re, z.im));
    }
    Real80 x = z.re, y = magnitude(z.im);
    Real80 x2 = x * x, y2 = y * y;
    Real80 d = (1.0 - x2) - y2;
    if (biasedExponent(z.re) < 0x3FF + 500 && biasedExponent(z.im) < 0x3FF + 500) [[likely]] {
        Real64 d64 = narrow(d);
        Real64 y64 = bits64(magnitudeBits(z.im) + (std::uint64_t{1} << 52));  // 2|y| where it is not tiny
        int apart = biasedExponent(y64) - biasedExponent(d64);
        ext::SquaredDistances distances = ext::squaredDistances(x, y2);
        if (!distances.close && magnitudeBits(d64) > asBits(ext::atanhClose) && static_cast<unsigned>(apart + 12) <= 24)
            [[likely]] {
            // Two long chains of operations, both begun with their divisions. No part is subnormal.
            Real80Bits quotient = asBits(distances.c / distances.d);
            ext::AngleStart angle = ext::startUpperAngle(y64, y64, d, d64);
            keepInMemory(angle.t);
            Real64 re = ext::atanhRealPartApart(quotient);
            keepInMemory(re);
            Real64 im = bits64(asBits(narrow(ext::finishAngle<false>(angle))) - (std::uint64_t{1} << 52));
            return {re, withSign(im, z.im)};
        }
    }
    Real64 im = ext::atanhImaginaryPart(x, y, d);
    return closed({ext::atanhRealPart(x, x2, y2), withSign(im, z.im)});
}

inline Complex64 complexAsinKernel(Complex64 z) { return ext::turnedBack(complexAsinhKernel(ext::turned(z))); }

inline Complex64 complexAtanKernel(Complex64 z) { return ext::turnedBack(complexAtanhKernel(ext::turned(z))); }

}  // namespace okt
