// What acos, acosh and asinh have in common: A, half the sum of the distances from the branch points 1 and -1. The
// angle's cosine or sine is a/A, the other part is acosh A, and near the branch cuts both come from A - 1 and A - a
// without cancellation.
#pragma once

#include "complex/element.h"
#include "extended/asin_acos.h"
#include "extended/atan.h"
#include "extended/ln.h"

namespace okt::complex {

// The quantities of a point (a, b), a, b > 0.
struct Distances {
    Real80 a, b, m, p, b2, R, S, A, Q;
};

OKT_INLINE inline Distances distances(Real64 a, Real64 b) {
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
OKT_INLINE inline Real80 otherLeg(const Distances& d) {
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

OKT_INLINE inline Logarithm startLogarithm(const Distances& d) {
    if (d.A > 1.5) {
        return {true, asBits(d.A + sqrt(d.A * d.A - 1.0))};
    }
    return {false, {}};
}

OKT_INLINE inline Real80 finishLogarithm(const Logarithm& start, const Distances& d) {
    if (start.far) {
        return extended::lnFar(start.sum, 0.0);
    }
    Real80 t1 = d.b2 / (d.p + d.R);
    Real80 t2 = d.a >= 1.0 ? d.m + d.S : d.b2 / d.Q;
    Real80 u = (t1 + t2) * 0.5;
    return extended::log1p(sqrt((d.A + 1.0) * u) + u);
}

// What acos and acosh have in common, x and y finite and non-zero.
struct AngleAndLogarithm {
    Real80 angle, logarithm;
};

OKT_INLINE inline AngleAndLogarithm acosParts(Real64 x, Real64 y) {
    Distances d = distances(magnitude(x), magnitude(y));
    Logarithm start = startLogarithm(d);
    Real80 angle;
    if (d.a < 0xA4467381D7DBF488p-64L * d.A) {  // 0.6417
        angle = extended::acos(d.a / d.A);
    } else {
        Real80 v = otherLeg(d);
        angle = extended::atan2(d.a > 1.0 ? d.b * v : v, d.a);
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

}  // namespace okt::complex
