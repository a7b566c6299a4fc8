// Models of the complex exponential and of CIS.
#pragma once

#include "complex/exp_tables.h"
#include "complex_support.h"
#include "reduction_model.h"
#include "tables/exp32_table.h"
#include "tables/sin_cos_table.h"

namespace okt::model {

namespace complex_exp32 {

using namespace complex;

inline constexpr std::uint32_t boundRe = 0x42AEAC50;
inline constexpr std::uint32_t boundIm = 0x461C4000;
inline constexpr Real32 invLn2x128 = real32(0x4338AA3B);
inline constexpr Real32 shift32 = real32(0x4B300000);
inline constexpr Real32 ln2Over128Hi = real32(0x3BB18000);
inline constexpr Real32 ln2Over128Lo = real32(0xB5DE8083);
inline constexpr Real32 twoOverPi = real32(0x3F22F983);
inline constexpr Real32 shiftIm = real32(0x4B400000);
inline constexpr Real32 halfPi1 = real32(0x3FC90000);
inline constexpr Real32 halfPi2 = real32(0x39FDA000);
inline constexpr Real32 halfPi3 = real32(0x33A22000);
inline constexpr Real32 halfPi4 = real32(0x2C34611A);
inline constexpr Real32 s3 = real32(0xBE2AAAA3), s5 = real32(0x3C08839D), s7 = real32(0xB94CA1F0);
inline constexpr Real32 c2 = real32(0xBF000000), c4 = real32(0x3D2AAAA5);
inline constexpr Real32 c6 = real32(0xBAB6061A), c8 = real32(0x37CCF5CE);

inline Real32 realExp(Real32 x) {
    const Real32 t = x * invLn2x128 + shift32;
    const Real32 m = t - shift32;
    const std::uint32_t j = asBits(t) & 0x7F;
    const Real32 scale = fromBits(((asBits(t) >> 7) + 127) << 23);
    const Real32 r = (x - m * ln2Over128Hi) - m * ln2Over128Lo;
    const Real32 hi = tables::Exp32Table[2 * j];
    const Real32 lo = tables::Exp32Table[2 * j + 1];
    const Real32 p = (r * r) * 0.5F + (lo + r);
    return (p * hi + hi) * scale;
}

inline Real32 negatedByBit1(Real32 x, std::uint32_t word) { return fromBits(asBits(x) ^ ((word & 2U) << 30)); }

inline Complex32 packed(Complex32 z) {
    const Real32 E = realExp(z.re);
    const Real32 b = z.im;
    const Real32 u = b * twoOverPi + shiftIm;
    const std::uint32_t q = asBits(u) & 0x007FFFFFU;
    const Real32 m = u - shiftIm;
    const Real32 r0 = ((b - m * halfPi1) - m * halfPi2) - m * halfPi3;
    const Real32 w = r0 * r0;
    const Real32 r = r0 - m * halfPi4;
    const Real32 s = (((s7 * w + s5) * w + s3) * w + 1.0F) * r;
    const Real32 c = (((c8 * w + c6) * w + c4) * w + c2) * w + 1.0F;
    const std::uint32_t odd = q & 1U;
    const Real32 re = negatedByBit1(odd != 0 ? s : c, q + odd);
    const Real32 im = negatedByBit1(odd != 0 ? c : s, q - odd);
    return {re * E, im * E};
}

inline bool flagged(Complex32 z) { return magnitude(z.re) > boundRe || magnitude(z.im) > boundIm; }

inline Complex32 element(Complex32 z) { return flagged(z) ? throughElement<okt::complex::expElement>(z) : packed(z); }

}  // namespace complex_exp32

namespace complex_exp64 {

using namespace complex;

inline constexpr Real64 bound = 512.0;
inline constexpr Real64 invLn2x64 = real64(0x40571547652B82FE);
inline constexpr Real64 shift64 = real64(0x4338000000000000);
inline constexpr Real64 thirtyTwoOverPi = real64(0x40245F306DC9C883);
inline constexpr Real64 stepPi1 = real64(0x3FB921FB54400000);
inline constexpr Real64 stepPi2 = real64(0x3D90B4611A600000);
inline constexpr Real64 stepPi3 = real64(0x3B63198A2E037073);
inline constexpr Real64 S1 = real64(0xBFC5555555555555), S2 = real64(0x3F81111111111111);
inline constexpr Real64 S3 = real64(0xBF2A01A01A01A01A), S4 = real64(0x3EC71DE3A556C734);
inline constexpr Real64 C1 = real64(0xBFE0000000000000), C2 = real64(0x3FA5555555555555);
inline constexpr Real64 C3 = real64(0xBF56C16C16C16C17), C4 = real64(0x3EFA01A01A01A01A);
inline constexpr Real64 L1 = real64(0x3F862E42FEFA0000), L2 = real64(0x3D1CF79ABC9E3B3A);
inline constexpr Real64 e3 = real64(0x3FC55555555548F8), e4 = real64(0x3FA5555555558FCC);
inline constexpr Real64 e5 = real64(0x3F8111123AAF20D3), e6 = real64(0x3F56C16A1C2A3FFD);
inline constexpr std::uint64_t splitMask = 0xFFFFFFFFF8000000;
inline constexpr std::uint64_t upperMask = 0xFFFFFFFF00000000;

inline Real64 masked(Real64 x, std::uint64_t mask) { return fromBits(asBits(x) & mask); }

inline bool passes(Real64 x) { return masked(x, 0x7FFFFFFFFFFFFFFF) < bound; }

// The argument of e^a: a = (64k + j)*ln 2/64 + rho.
struct RealPart {
    Real64 rho;
    std::uint64_t j;
    Real64 scale;  // 2^k
};

inline RealPart reduced(Real64 a) {
    const Real64 t = a * invLn2x64 + shift64;
    const Real64 m = t - shift64;
    const Real64 rho = (a - L1 * m) - L2 * m;
    const std::uint64_t exponent = ((asBits(t) >> 6) + 0x3FF) & 0x7FF;
    return {rho, asBits(t) & 63U, fromBits(exponent << 52)};
}

// The argument of cos b + i*sin b: b = n*pi/32 + r + l; z = r^2, sp and cp are sin r - r and cos r - 1.
struct Angle {
    std::uint64_t n;
    Real64 r, l, sp, cp;
};

inline Angle reducedAngle(Real64 b, Real64 tail, bool isLong) {
    const Real64 t = b * thirtyTwoOverPi + shift64;
    const Real64 m = t - shift64;
    const Real64 r1 = b - stepPi1 * m;
    const Real64 r = r1 - stepPi2 * m;
    const Real64 l = (((r1 - r) - stepPi2 * m) - stepPi3 * m) + tail;
    const Real64 z = r * r;
    const Real64 sine = isLong ? ((S4 * z + S3) * z + S2) * z + S1 : (S3 * z + S2) * z + S1;
    const Real64 cosine = isLong ? ((C4 * z + C3) * z + C2) * z + C1 : (C3 * z + C2) * z + C1;
    return {asBits(t), r, l, (sine * z) * r, cosine * z};
}

// One function value as main + low, from the row of its number.
struct Pair {
    Real64 main, low;
};

inline Pair fromRow(std::uint64_t number, const Angle& angle) {
    const Real64* row = &tables::sinCosTable[4 * (number & 63U)];
    const Real64 cosTail = row[0], sinHead = row[1], sinTail = row[2], cosHead = row[3];
    const Real64 r = angle.r;
    const Real64 first = sinHead + cosHead * r;
    const Real64 main = first + cosTail * r;
    const Real64 firstError = (sinHead - first) + cosHead * r;
    const Real64 secondError = (first - main) + cosTail * r;
    const Real64 cosine = cosTail + cosHead;
    Real64 low = angle.l * (cosine - r * sinHead) + sinTail;
    low = low + firstError;
    low = low + secondError;
    low = low + angle.sp * cosine;
    low = low + angle.cp * sinHead;
    return {main, low};
}

// The double-precision kernel for Complex32.
inline Complex32 packedShort(Complex32 z) {
    const RealPart part = reduced(static_cast<Real64>(z.re));
    const Real64 rho = part.rho;
    const Real64 P = ((real64(0x3FC5555555555555) * rho + 0.5) * rho) * rho + rho;
    const Real64 hi = tables::ExpComplexTable[2 * part.j];
    const Real64 lo = tables::ExpComplexTable[2 * part.j + 1];
    const Real64 E = hi + (lo + P) * hi;
    const Angle angle = reducedAngle(static_cast<Real64>(z.im), 0.0, false);
    const Pair sine = fromRow(angle.n, angle);
    const Pair cosine = fromRow(angle.n + 16, angle);
    const Real64 re = ((cosine.main + cosine.low) * E) * part.scale;
    const Real64 im = ((sine.main + sine.low) * E) * part.scale;
    return {static_cast<Real32>(re), static_cast<Real32>(im)};
}

inline Complex32 elementShort(Complex32 z) {
    const bool inRange = passes(static_cast<Real64>(z.re)) && passes(static_cast<Real64>(z.im));
    return inRange ? packedShort(z) : throughElement<okt::complex::expElement>(z);
}

// The double-length kernel for Complex64.
inline Complex64 packedLong(Complex64 z) {
    const RealPart part = reduced(z.re);
    const Real64 rho = part.rho;
    const Real64 P = ((((((e6 * rho + e5) * rho + e4) * rho + e3) * rho + 0.5) * rho) * rho) + rho;
    const Real64 hi = tables::ExpComplexTable[2 * part.j];
    const Real64 lo = tables::ExpComplexTable[2 * part.j + 1];
    const Real64 addend = (P + lo) * hi;
    const Real64 E = hi + addend;
    const Real64 residual = (hi - E) + addend;
    const Real64 Eh = masked(E, splitMask);
    const Real64 El = (E - Eh) + residual;

    const Angle angle = reducedAngle(z.im, 0.0, true);
    const Pair sine = fromRow(angle.n, angle);
    const Pair cosine = fromRow(angle.n + 16, angle);

    const Real64 C = cosine.main + cosine.low;
    const Real64 Ch = masked(C, splitMask);
    const Real64 Cl = (C - Ch) + (cosine.low - (C - cosine.main));

    const Real64 main = sine.main * 0x1p100;
    const Real64 low = sine.low * 0x1p100;
    const Real64 S = main + low;
    const Real64 Sh = masked(S, splitMask);
    const Real64 Sl = (low - (S - main)) - (Sh - S);

    const Real64 re = (Eh * Ch + (Eh * Cl + (Ch * El + Cl * El))) * part.scale;

    const Real64 X = Eh * Sh;
    const Real64 Xh = masked(X, upperMask);
    const Real64 Y = (Eh * Sl + (Sh * El + El * Sl)) - (Xh - X);
    const Real64 scale = part.scale * 0x1p-100;
    return {re, Xh * scale + Y * scale};
}

inline Complex64 element(Complex64 z) {
    return passes(z.re) && passes(z.im) ? packedLong(z) : okt::complex::expElement(z);
}

inline Complex64 cis(Real64 x) {
    const int exponent = static_cast<int>((asBits(x) >> 52) & 0x7FF);
    const Real64 magnitude = masked(x, 0x7FFFFFFFFFFFFFFF);
    if (exponent == 0x7FF) {
        const Real64 nan = asBits(magnitude) == 0x7FF0000000000000 ? x * opaque(0.0) : x * x;
        return {nan, nan};
    }
    if (exponent < 0x303) {
        if (asBits(magnitude) == 0) return {1.0, x};
        return {1.0 - magnitude, ((x * 0x1p55) - x) * 0x1p-55};
    }
    Real64 head = x;
    Real64 tail = 0.0;
    int quadrant = 0;
    if (exponent >= 0x410) quadrant = reduceQuarterPi(x, head, tail);
    Angle angle = reducedAngle(head, tail, true);
    angle.n += 16U * static_cast<std::uint64_t>(quadrant);
    const Pair sine = fromRow(angle.n, angle);
    const Pair cosine = fromRow(angle.n + 16, angle);
    return {cosine.main + cosine.low, sine.main + sine.low};
}

inline Complex32 cis32(Real32 x) {
    const Complex64 value = cis(opaque(static_cast<Real64>(x)));  // a conversion there and back must not fall away
    return {static_cast<Real32>(value.re), static_cast<Real32>(value.im)};
}

}  // namespace complex_exp64

inline OktStatus Exp_32fc_A11(const Complex32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_exp32::element, src, dst, len);
}

inline OktStatus Exp_32fc_A24(const Complex32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_exp64::elementShort, src, dst, len);
}

inline OktStatus Exp_64fc(const Complex64* src, Complex64* dst, std::int32_t len) {
    return complex::each(complex_exp64::element, src, dst, len);
}

inline OktStatus CIS_32fc(const Real32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_exp64::cis32, src, dst, len);
}

inline OktStatus CIS_64fc(const Real64* src, Complex64* dst, std::int32_t len) {
    return complex::each(complex_exp64::cis, src, dst, len);
}

}  // namespace okt::model
