// Models of Atan2 on 32f and 64f and of Arg on 32fc and 64fc.
#pragma once

#include "tests/models/approximations.h"
#include "tests/models/bits.h"
#include "trig/atan_pair_table.h"
#include "trig/atan_tables.h"

#include <initializer_list>

namespace okt::model {

namespace atan2 {

inline std::uint64_t signBit(Real64 v) { return asBits(v) & 0x8000000000000000u; }
inline std::uint32_t signBit(Real32 v) { return asBits(v) & 0x80000000u; }
inline Real64 magnitude(Real64 v) { return fromBits(asBits(v) & 0x7FFFFFFFFFFFFFFFu); }
inline Real32 magnitude(Real32 v) { return fromBits(asBits(v) & 0x7FFFFFFFu); }
inline std::uint32_t upperWord(Real64 v) { return std::uint32_t(asBits(v) >> 32); }
inline Real64 orSign(Real64 v, std::uint64_t sign) { return fromBits(asBits(v) | sign); }
inline Real32 orSign(Real32 v, std::uint32_t sign) { return fromBits(asBits(v) | sign); }
inline Real64 xorSign(Real64 v, std::uint64_t sign) { return fromBits(asBits(v) ^ sign); }
inline Real32 xorSign(Real32 v, std::uint32_t sign) { return fromBits(asBits(v) ^ sign); }
inline int biasedExponent(Real64 v) { return int((asBits(v) >> 52) & 0x7FF); }
inline bool isNaN(Real64 v) { return asBits(magnitude(v)) > 0x7FF0000000000000u; }
inline bool isInfinite(Real64 v) { return asBits(magnitude(v)) == 0x7FF0000000000000u; }
inline bool isZero(Real64 v) { return asBits(magnitude(v)) == 0; }
inline Real64 quiet(Real64 v) { return fromBits(asBits(v) | std::uint64_t{0x0008000000000000}); }
inline Real64 splitMasked(Real64 v) { return fromBits(asBits(v) & 0xFFFFFFFFF8000000u); }

// The high half of v.
inline Real64 split(Real64 v) {
    const Real64 S = 134217729.0;
    return (S * v) - ((S * v) - v);
}

inline Real64 halfPi() { return 1.5707963267948966 + 6.123233995736766e-17; }
inline Real64 wholePi() { return 3.141592653589793 + 1.2246467991473532e-16; }

// ((((c6 z + c5) z + ...) z + c0) z
inline Real64 elementPolynomial(Real64 z) {
    const Real64 c[] = {-0.06313688776899645, 0.07683539769703819, -0.0909079559611586, 0.11111110301985087,
                        -0.1428571428262597,  0.19999999999994408, -0.3333333333333333};
    Real64 p = c[0];
    for (int k = 1; k < 7; ++k) p = p * z + c[k];
    return p * z;
}

struct Quotient {
    Real64 T, Th, Tl;
};

// (nh + nl)/(dh + dl) with the four parts given, R near 1/dh.
inline Quotient divide(Real64 nh, Real64 nl, Real64 dh, Real64 dl) {
    const Real64 R = split(1.0 / dh);
    const Real64 E = (1.0 - dh * R) - dl * R;
    const Real64 W = ((E + 1.0) * E) * R;
    const Real64 m = nh * R;
    const Real64 l = nl * R + (nh * W + nl * W);
    const Real64 T = m + l;
    const Real64 Th = split(T);
    const Real64 Tl = ((m - T) + l) + (T - Th);
    return {T, Th, Tl};
}

// The general case of the element path: y and x finite, neither zero, exponents at most 53 apart.
inline Real64 general(Real64 y, Real64 x) {
    const bool negative = signBit(x) != 0;
    const Real64 base = negative ? 3.141592653589793 : 0.0;
    const Real64 baseTail = negative ? 1.2246467991473532e-16 : 0.0;
    const int ey = biasedExponent(y);
    Real64 a = magnitude(y), b = magnitude(x);
    const Real64 q = a / b;

    int k;
    if (ey == 0) {
        a = a * fromBits(std::uint64_t{1023 + 1022} << 52);
        k = -1022;
    } else if (ey >= 2046) {
        a = a * fromBits(std::uint64_t{1023 - 1022} << 52);
        k = 1022;
    } else {
        a = fromBits((asBits(a) & 0x000FFFFFFFFFFFFFu) | std::uint64_t{0x3FF0000000000000});
        k = ey - 1023;
    }
    b = b * fromBits(std::uint64_t(1023 - k) << 52);

    const bool table = !(q < 0.125);
    Real64 z, tableHead = 0.0, tableTail = 0.0;
    Quotient t;
    if (!table) {
        const Real64 ah = split(a);
        const Real64 al = a - ah;
        const Real64 bh = split(b);
        const Real64 bl = b - bh;
        t = divide(ah, al, bh, bl);
        z = q * q;
    } else {
        const std::uint32_t uq = upperWord(q);
        const std::uint32_t uc = (uq & 0x7FF00000u) | ((uq & 0x00080000u) + 0x00040000u);
        const Real64 c = fromBits(std::uint64_t{uc} << 32);
        std::uint32_t i = (uq - 0x3FC00000u) >> 19;
        if (i > 113u) i = 113u;
        tableHead = tables::atanPairTable[2 * i];
        tableTail = tables::atanPairTable[2 * i + 1];

        // Numerator a - b c.
        const Real64 bh = split(b);
        const Real64 f = -((b - bh) * c);
        const Real64 g0 = (bh * c) * -1.0;
        Real64 v = g0 + f;
        const Real64 N = a + v;
        const Real64 Nh = split(N);
        const Real64 Nl = (((g0 - v) + f) + (((a - N) + v) + (a - (N + (a - N))))) + (N - Nh);

        // Denominator b + a c.
        const Real64 ah = split(a);
        v = ah * c + (a - ah) * c;
        const Real64 D = b + v;
        const Real64 s = b - D;
        const Real64 Dh = split(D);
        const Real64 Dl = (((ah * c - v) + (a - ah) * c) + ((b - (D + s)) + (s + v))) + (D - Dh);

        t = divide(Nh, Nl, Dh, Dl);
        z = t.T * t.T;
    }
    const Real64 P = elementPolynomial(z);

    // Product.
    const Real64 Ph = split(P);
    const Real64 Pl = P - Ph;
    const Real64 X = (Pl * t.Tl + Ph * t.Tl) + Pl * t.Th;
    const Real64 M = Ph * t.Th;
    Real64 U = t.Th + M;
    Real64 low = ((((M - U) + t.Th) + (M - (U + (M - U)))) + t.Tl) + X;

    if (table) {
        const Real64 A = tableHead;
        const Real64 V = U + A;
        low = (low + (((U - V) + A) + (U - (V + (U - V))))) + tableTail;
        U = V;
    }

    // Base.
    U = orSign(U, signBit(x));
    low = xorSign(low, signBit(x));
    const Real64 S = U + base;
    const Real64 e2 = (base + (U - S)) + (U - (S + (U - S)));
    const Real64 result = ((low + e2) + baseTail) + S;
    return orSign(result, signBit(y));
}

// `single` when the operands came from Real32.
inline Real64 elementAngle(Real64 y, Real64 x, bool single) {
    const std::uint64_t sy = signBit(y);
    const bool negative = signBit(x) != 0;
    // The sum y + x keeps the payload of its first NaN operand.
    if (isNaN(y)) return quiet(y);
    if (isNaN(x)) return quiet(x);
    if (isInfinite(y)) {
        if (!isInfinite(x)) return orSign(halfPi(), sy);
        if (!negative) return orSign(0.7853981633974483 + 3.061616997868383e-17, sy);
        return orSign(2.356194490192345 + 9.184850993605148e-17, sy);
    }
    if (isInfinite(x)) return orSign(negative ? wholePi() : 0.0, sy);
    if (isZero(y)) return negative ? orSign(wholePi(), sy) : y;
    if (isZero(x)) return orSign(halfPi(), sy);

    const int d = biasedExponent(y) - biasedExponent(x);
    if (d < -53) {
        if (negative) return orSign(wholePi(), sy);
        const Real64 q = magnitude(y) / magnitude(x);
        Real64 result;
        if (single) {
            const Real32 narrow = Real32(q);
            if ((asBits(narrow) & 0x7F800000u) == 0)
                result = q + Real64(narrow * narrow);
            else
                result = q * (1.0 + q);
        } else {
            result = biasedExponent(q) == 0 ? q + q * q : q * (1.0 + q);
        }
        return orSign(result, sy);
    }
    if (d >= 74) return orSign(halfPi(), sy);
    if (d >= 54) return orSign((6.123233995736766e-17 - x / magnitude(y)) + 1.5707963267948966, sy);
    return general(y, x);
}

inline Real64 atan2Element64(Real64 y, Real64 x) { return elementAngle(y, x, false); }
inline Real32 atan2Element32(Real32 y, Real32 x) { return Real32(elementAngle(Real64(y), Real64(x), true)); }

inline bool inRange64(Real64 v) {
    const std::int32_t shifted = std::int32_t(upperWord(magnitude(v)) - 0x80300000u);
    return shifted < std::int32_t(0xFDD00000u);
}

inline Real64 atan2Main64(Real64 y, Real64 x) {
    const Real64 a = magnitude(y), b = magnitude(x);
    const Real64 a1 = splitMasked(a), b1 = splitMasked(b);
    const Real64 a2 = a - a1, b2 = b - b1;

    int interval = 4;
    for (const Real64 limit : {0.4375, 1.1875, 2.4375, 0.6875}) interval -= upperWord(a) > upperWord(limit * b);
    const Real64 c = tables::atanScale[interval];
    const std::uint64_t mask = tables::atanMask[interval];
    const Real64 head = tables::atanHead[interval], tail = tables::atanTail[interval];

    const Real64 n1 = fromBits(asBits(a1) & mask) - b1 * c;
    const Real64 n2 = fromBits(asBits(a2) & mask) - b2 * c;
    Real64 s = n1 + n2;
    Real64 l = n2 - (s - n1);
    const Real64 nh = splitMasked(s);
    const Real64 nl = l + (s - nh);

    const Real64 d1 = fromBits(asBits(b1) & mask) + a1 * c;
    const Real64 d2 = fromBits(asBits(b2) & mask) + a2 * c;
    s = d1 + d2;
    l = d2 + (d1 - s);
    const Real64 dh = splitMasked(s);
    const Real64 dl = l + (s - dh);

    // Reciprocal of dh from its leading bits; upper and lower words are worked apart.
    const std::uint32_t leading = std::uint32_t(asBits(dh) >> 29) & 0x007FFFFFu;
    const std::uint64_t seed = std::uint64_t{asBits(approximateInverse(fromBits(leading | 0x3F800000u)))} << 29;
    const std::uint32_t upper = (0x7FE00000u - (upperWord(dh) & 0x7FF00000u)) + std::uint32_t(seed >> 32) - 0x07F00000u;
    const Real64 r = fromBits(std::uint64_t{upper} << 32 | (seed & 0xFFFFFFFFu));

    const Real64 e = (dh * r - 1.0) + dl * r;
    const Real64 g = ((((((e - 1.0) * e + 1.0) * e - 1.0) * e + 1.0) * e - 1.0) * e) * r;
    const Real64 th = r * nh;
    const Real64 tl = (g * nh + g * nl) + r * nl;
    const Real64 t = tl + th;

    const std::uint64_t G[] = {0x3F8BE4FBE6733718, 0x3FA6AD5558FE19C9, 0x3FAE12F1EDF7C393,
                               0x3FB3B132B731E73A, 0x3FBC71C719F99F96, 0x3FC9999999998F43};
    const std::uint64_t H[] = {0xBFA04CD71F92185E, 0xBFAA9E755CA13D23, 0xBFB1108D326C68ED,
                               0xBFB745D119677A4F, 0xBFC2492492441A21, 0xBFD5555555555552};
    const Real64 z = t * t;
    const Real64 w = z * z;
    Real64 P = fromBits(G[0]), Q = fromBits(H[0]);
    for (int k = 1; k < 6; ++k) {
        P = P * w + fromBits(G[k]);
        Q = Q * w + fromBits(H[k]);
    }
    P = P * w;
    Q = Q * z;
    const Real64 u = (P + Q) * t;

    const std::uint64_t sx = signBit(x);
    const Real64 pi1 = sx ? fromBits(std::uint64_t{0x400921FB54442D18}) : 0.0;
    const Real64 pi2 = sx ? xorSign(fromBits(std::uint64_t{0x3CA1A64000000000}), sx) : 0.0;
    const Real64 A = ((u + ((tl + tail) + pi2)) + th) + head;
    return orSign(xorSign(A, sx) + pi1, signBit(y));
}

inline bool inBlockRange32(Real32 v) {
    const std::uint32_t pattern = asBits(magnitude(v));
    return pattern > 0x01000000u && pattern < 0x7D000000u;
}

// Alone, the lower limit itself is in range.
inline bool inElementRange32(Real32 v) {
    const std::uint32_t pattern = asBits(magnitude(v));
    return pattern >= 0x01000000u && pattern < 0x7D000000u;
}

inline Real32 atan2Main32(Real32 y, Real32 x) {
    const Real32 a = magnitude(y), b = magnitude(x);
    Real32 numerator, denominator, head, tail;
    if (asBits(a) < asBits(0.375f * b)) {
        numerator = a;
        denominator = b;
        head = 0.0f;
        tail = 0.0f;
    } else if (asBits(a) < asBits(fromBits(0x3F3851ECu) * b)) {
        numerator = a - 0.5f * b;
        denominator = b + 0.5f * a;
        head = fromBits(0x3EED6338u);
        tail = fromBits(0x31AC3768u);
    } else if (asBits(a) < asBits(1.75f * b)) {
        numerator = a - 1.0f * b;
        denominator = b + 1.0f * a;
        head = fromBits(0x3F490FD8u);
        tail = fromBits(0x34288858u);
    } else if (asBits(a) > asBits(2.6875f * b)) {
        numerator = -b;
        denominator = a;
        head = fromBits(0x3FC90FD8u);
        tail = fromBits(0x34A88858u);
    } else {
        numerator = a - 2.0f * b;
        denominator = b + 2.0f * a;
        head = fromBits(0x3F8DB710u);
        tail = fromBits(0xB4DA2880u);
    }

    const Real64 N = numerator, D = denominator;
    const Real64 r = approximateInverse(denominator);
    const Real64 v = r * D;
    const Real64 t = (((v * v + ((2.0 - v) - v)) * (2.0 - v)) * r) * N;
    const Real64 cut = fromBits(asBits(t) & 0xFFFFFFFFE0000000u);
    const Real32 th = Real32(cut);
    const Real32 tl = Real32(t - cut) + tail;

    const Real32 z = th * th;
    const Real32 w = z * z;
    const Real32 P = (fromBits(0x3DAE1329u) * w + fromBits(0x3E4CAA3Bu)) * w;
    const Real32 Q = (fromBits(0xBE0F4E4Eu) * w + fromBits(0xBEAAAA6Cu)) * z;
    const Real32 u = (P + Q) * th;

    const std::uint32_t sx = signBit(x);
    const Real32 pi1 = sx ? fromBits(0x40490FE0u) : 0.0f;
    const Real32 pi2 = sx ? fromBits(0xB5ABBBD3u) : 0.0f;
    const Real32 A = ((u + (tl + xorSign(pi2, sx))) + th) + head;
    return orSign(orSign(A, sx) + pi1, signBit(y));
}

// Blocks of two up to the greatest multiple of 16, the rest one at a time; a failing operand sends its block away.
template <class Operands>
void angles64(Operands operands, Real64* dst, std::int32_t len) {
    const std::int32_t blocks = std::int32_t(std::uint32_t(len) & 0xFFFFFFF0u);
    for (std::int32_t i = 0; i < len;) {
        const std::int32_t count = i < blocks ? 2 : 1;
        bool inRange = true;
        for (std::int32_t k = 0; k < count; ++k) {
            const auto [y, x] = operands(i + k);
            inRange = inRange && inRange64(y) && inRange64(x);
        }
        for (std::int32_t k = 0; k < count; ++k) {
            const auto [y, x] = operands(i + k);
            dst[i + k] = inRange ? atan2Main64(y, x) : atan2Element64(y, x);
        }
        i += count;
    }
}

// The bound of the blocks of four keeps bit 2 of the count and clears bit 3.
template <class Operands>
void angles32(Operands operands, Real32* dst, std::int32_t len) {
    const std::int32_t blocks = std::int32_t(std::uint32_t(len) & 0xFFFFFFF4u);
    for (std::int32_t i = 0; i < len;) {
        const bool block = i < blocks;
        const std::int32_t count = block ? 4 : 1;
        bool inRange = true;
        for (std::int32_t k = 0; k < count; ++k) {
            const auto [y, x] = operands(i + k);
            inRange = inRange &&
                      (block ? inBlockRange32(y) && inBlockRange32(x) : inElementRange32(y) && inElementRange32(x));
        }
        for (std::int32_t k = 0; k < count; ++k) {
            const auto [y, x] = operands(i + k);
            dst[i + k] = inRange ? atan2Main32(y, x) : atan2Element32(y, x);
        }
        i += count;
    }
}

template <class Real>
struct Point {
    Real y, x;
};

}  // namespace atan2

inline OktStatus Atan2_32f(const Real32* src1, const Real32* src2, Real32* dst, std::int32_t len) {
    atan2::angles32([&](std::int32_t i) { return atan2::Point<Real32>{src1[i], src2[i]}; }, dst, len);
    return oktStatusOk;
}

inline OktStatus Atan2_64f(const Real64* src1, const Real64* src2, Real64* dst, std::int32_t len) {
    atan2::angles64([&](std::int32_t i) { return atan2::Point<Real64>{src1[i], src2[i]}; }, dst, len);
    return oktStatusOk;
}

inline OktStatus Arg_32fc(const Complex32* src, Real32* dst, std::int32_t len) {
    atan2::angles32([&](std::int32_t i) { return atan2::Point<Real32>{src[i].im, src[i].re}; }, dst, len);
    return oktStatusOk;
}

inline OktStatus Arg_64fc(const Complex64* src, Real64* dst, std::int32_t len) {
    atan2::angles64([&](std::int32_t i) { return atan2::Point<Real64>{src[i].im, src[i].re}; }, dst, len);
    return oktStatusOk;
}

}  // namespace okt::model
