// The angle of a point with true quotients, arctangents and sums in pairs of Real64, which leave nothing but the last
// rounding.
#include "trig/angle_element.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
#include "trig/atan_pair_table.h"

namespace okt::angle {
namespace {

constexpr Real64 pi = 0x1.921fb54442d18p+1;
constexpr Real64 piTail = 0x1.1a62633145c07p-53;
constexpr Real64 halfPi = 0x1.921fb54442d18p+0;
constexpr Real64 halfPiTail = 0x1.1a62633145c07p-54;

// Constants whose sum is rounded at run time, for the inexact flag.
Real64 summed(Real64 head, Real64 tail) { return opaque(head) + tail; }

// The upper half of the significand.
Real64 split(Real64 v) {
    constexpr Real64 dekkerSplitter = 134217729.0;  // 2^27 + 1
    const Real64 scaled = dekkerSplitter * v;
    return scaled - (scaled - v);
}

// arctan T in two parts: the product is cut as the sum head + low.
struct Parts {
    Real64 head, low;
};

// What a sum s = a + b rounded off, whichever of the two is larger.
Real64 lost(Real64 a, Real64 b, Real64 s) {
    const Real64 rest = a - s;
    return (b + rest) + (a - (s + rest));
}

// (nh + nl)/(dh + dl): 1/dh by a division, cut to its upper half R, and a correction of two terms.
struct Quotient {
    Real64 T, Th, Tl;
};
Quotient quotient(Real64 nh, Real64 nl, Real64 dh, Real64 dl) {
    const Real64 R = split(1.0 / dh);
    const Real64 E = (1.0 - dh * R) - dl * R;
    const Real64 W = (E + 1.0) * E * R;
    const Real64 m = nh * R;
    const Real64 l = nl * R + (nh * W + nl * W);
    const Real64 T = m + l;
    const Real64 Th = split(T);
    return {T, Th, ((m - T) + l) + (T - Th)};
}

// T + T^3·P, the product in two parts.
Parts arctangent(const Quotient& q, Real64 z) {
    // (arctan t - t)/t^3 over t^2 on |t| <= 1/8, relative error of arctan 2^-61.7; fitted.
    constexpr Real64 c6 = -0x1.029bd34239994p-4, c5 = 0x1.3ab7c1048afd1p-4, c4 = -0x1.745be69cca475p-4,
                     c3 = 0x1.c71c6f9b157d3p-4, c2 = -0x1.2492492382a27p-3, c1 = 0x1.99999999991bbp-3,
                     c0 = -0x1.5555555555555p-2;
    const Real64 P = ((((((c6 * z + c5) * z + c4) * z + c3) * z + c2) * z + c1) * z + c0) * z;
    const Real64 Ph = split(P);
    const Real64 Pl = P - Ph;
    const Real64 X = Pl * q.Tl + Ph * q.Tl + Pl * q.Th;
    const Real64 M = Ph * q.Th;
    const Real64 U = q.Th + M;
    const Real64 rest = M - U;
    return {U, (rest + q.Th) + (M - (U + rest)) + q.Tl + X};
}

// Numerator and denominator of the addition theorem exactly in two parts each, then the quotient.
Quotient reduced(Real64 a, Real64 b, Real64 c) {
    const Real64 bh = split(b);
    const Real64 f = -((b - bh) * c);
    const Real64 g0 = bh * c * -1.0;
    const Real64 v = g0 + f;
    const Real64 N = a + v;
    const Real64 Nh = split(N);
    const Real64 rest = a - N;
    const Real64 Nl = ((g0 - v) + f) + ((rest + v) + (a - (N + rest))) + (N - Nh);

    const Real64 ah = split(a);
    const Real64 vl = (a - ah) * c;
    const Real64 vd = ah * c + vl;
    const Real64 D = b + vd;
    const Real64 s = b - D;
    const Real64 Dh = split(D);
    const Real64 Dl = ((ah * c - vd) + vl) + ((b - (D + s)) + (s + vd)) + (D - Dh);
    return quotient(Nh, Nl, Dh, Dl);
}

Real64 generalAngle(Real64 y, Real64 x) {
    const bool negative = isNegative(x);
    const Real64 q = magnitude(y) / magnitude(x);

    // Both by the same power of two: a about 1.
    Real64 a = magnitude(y);
    const int ey = biasedExponent(y);
    int k = ey - 1023;
    if (ey == 0) {
        a = a * 0x1p1022;
        k = -1022;
    } else if (ey >= 2046) {
        a = a * 0x1p-1022;
        k = 1022;
    } else {
        a = bits64((asBits(a) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    }
    const Real64 b = magnitude(x) * powerOfTwo<Real64>(-k);

    Parts angle;
    if (q < 0.125) {
        const Real64 ah = split(a), bh = split(b);
        const Quotient t = quotient(ah, a - ah, bh, b - bh);
        angle = arctangent(t, q * q);
    } else {
        // The centre has the exponent of q and a significand of 1.25 or 1.75.
        const std::uint32_t word = highWord(q);
        const Real64 c = fromWords((word & 0x7FF00000) | ((word & 0x00080000) + 0x40000), 0);
        std::uint32_t i = (word - 0x3FC00000) >> 19;
        if (i > 113) i = 113;
        const Real64 A = tables::atanPairTable[2 * i], A2 = tables::atanPairTable[2 * i + 1];

        const Quotient t = reduced(a, b, c);
        angle = arctangent(t, t.T * t.T);
        const Real64 V = angle.head + A;
        angle.low = angle.low + lost(angle.head, A, V) + A2;
        angle.head = V;
    }

    const Real64 base = negative ? pi : 0.0, baseTail = negative ? piTail : 0.0;
    const Real64 U = negative ? -angle.head : angle.head;
    const Real64 low = negative ? -angle.low : angle.low;
    const Real64 S = U + base;
    const Real64 rest = U - S;
    const Real64 e2 = (base + rest) + (U - (S + rest));
    return withSign(((low + e2) + baseTail) + S, y);
}

// y/x so small that the angle is the quotient; the square makes it inexact. Whether the result is subnormal is decided
// by the quotient as it will be stored.
template <class T>
Real64 smallAngle(Real64 y, Real64 x) {
    const Real64 q = magnitude(y) / magnitude(x);
    const T stored = static_cast<T>(q);
    Real64 angle;
    if (biasedExponent(stored) == 0)
        angle = static_cast<Real64>(stored + stored * stored);
    else
        angle = q * (1.0 + q);
    return withSign(angle, y);
}

// T is the element type.
template <class T>
[[gnu::noinline, gnu::cold]] Real64 elementAngle(Real64 y, Real64 x) {
    const bool negative = isNegative(x);

    if (isNaN(y) || isNaN(x)) return addOrdered(y, x);  // y's if both are
    if (isInfinite(y)) {
        if (isFinite(x)) return withSign(summed(halfPi, halfPiTail), y);
        return withSign(negative ? summed(0x1.2d97c7f3321d2p+1, 0x1.a79394c9e8a0ap-54)
                                 : summed(0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55),
                        y);
    }
    if (isInfinite(x)) return withSign(negative ? summed(pi, piTail) : 0.0, y);
    if (isZero(y)) return negative ? withSign(summed(pi, piTail), y) : y;
    if (isZero(x)) return withSign(summed(halfPi, halfPiTail), y);

    const int d = biasedExponent(y) - biasedExponent(x);
    if (d < -53) return negative ? withSign(summed(pi, piTail), y) : smallAngle<T>(y, x);
    if (d >= 74) return withSign(summed(halfPi, halfPiTail), y);
    if (d >= 54) return withSign((halfPiTail - x / magnitude(y)) + halfPi, y);
    return generalAngle(y, x);
}

}  // namespace

Real64 ofElement(Real64 y, Real64 x) { return elementAngle<Real64>(y, x); }
Real32 ofElement(Real32 y, Real32 x) { return static_cast<Real32>(elementAngle<Real32>(y, x)); }

}  // namespace okt::angle
