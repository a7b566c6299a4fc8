// Models of the complex logarithm's block routines for Complex32, the fast one and the middle one.
#pragma once

#include "complex/ln_tables.h"
#include "complex_support.h"
#include "tests/models/approximations.h"

#include <algorithm>
#include <cmath>

namespace okt::model {

namespace complex_log {

using namespace complex;

inline constexpr Real64 nearBound = real64(0x3F9EB851EB851EB8);
inline constexpr Real32 halfPi = real32(0x3FC90FDB);
inline constexpr Real32 pi = real32(0x40490FDB);

struct Squares {
    Real64 a, b, sum;
};

inline Squares squares(Complex32 z) {
    const Real64 a = static_cast<Real64>(z.re);
    const Real64 b = static_cast<Real64>(z.im);
    return {a * a, b * b, a * a + b * b};
}

inline bool isFar(const Squares& s) { return std::fabs(s.sum - 1.0) > nearBound; }

inline Real64 aboveOne(const Squares& s) { return (std::max(s.a, s.b) - 1.0) + std::min(s.a, s.b); }

inline std::uint32_t signBit(Real32 x) { return asBits(x) & 0x80000000U; }

// --- fast ---------------------------------------------------------------------------------------------------------

inline bool fastFlag(Real32 x) { return magnitude(x) < 0x01000000U || magnitude(x) >= 0x7D000000U; }

inline Real32 fastReal(Complex32 z) {
    const Squares s = squares(z);
    if (!isFar(s)) {
        const Real32 w = static_cast<Real32>(aboveOne(s));
        const Real32 L = (real32(0xBF0009DB) * w + real32(0x3F8004ED)) * w;
        return 0.5F * L;
    }
    const std::uint32_t h = highWord(s.sum);
    const std::uint32_t mant = h & 0x000FFFFFU;
    const std::uint32_t bit = (mant + 0x00095F61U) & 0x00100000U;
    const Real32 f = fromBits((mant ^ (bit ^ 0x07F00000U)) << 3);
    const Real32 u = f - 1.0F;
    const Real32 shifted = fromBits((((h & 0x7FF00000U) + bit) >> 20) | 0x4B000000U);
    const Real32 exponentTerm = (shifted - real32(0x4B0003FF)) * real32(0x3F317218);
    Real32 L = real32(0x3E3623C0) * u + real32(0xBE8B912B);
    L = L * u + real32(0x3EAC4F2A);
    L = L * u + real32(0xBEFFACF8);
    L = L * u + real32(0x3F7FFD83);
    L = L * u + exponentTerm;
    return 0.5F * L;
}

inline Real32 fastImaginary(Complex32 z) {
    const Real32 A = std::fabs(z.re);
    const Real32 B = std::fabs(z.im);
    const bool flat = B <= A;
    const Real32 den = flat ? A : B;
    const Real32 num = flat ? B : -A;
    const Real32 base = flat ? 0.0F : halfPi;
    const Real32 rcp = approximateInverse(den);
    const Real32 t = num * ((2.0F - den * rcp) * rcp);
    const Real32 w = t * t;
    const Real32 y = w * w;
    const Real32 odd = (real32(0xBD324820) * y + real32(0xBEA6A8A3)) * w;
    const Real32 even = y * real32(0x3E1E481B) + real32(0x3F7FF145);
    Real32 v = (odd + even) * t + base;
    v = fromBits(asBits(v) | signBit(z.re));
    if (z.re <= 0.0F) v = v + pi;
    return fromBits(asBits(v) | signBit(z.im));
}

inline Complex32 fastElement(Complex32 z) {
    if (fastFlag(z.re) || fastFlag(z.im)) return throughElement<okt::complex::lnElement>(z);
    return {fastReal(z), fastImaginary(z)};
}

// --- middle -------------------------------------------------------------------------------------------------------

// A subnormal under denormals-are-zero counts as the zero of its sign.
inline Real32 zeroed(Real32 x) { return opaque(x) == 0.0F ? fromBits(signBit(x)) : x; }

inline bool middleFlag(Real32 x) { return magnitude(x) == 0 || magnitude(x) > 0x7F7FFFFFU; }

inline Real32 middleReal(Complex32 z) {
    const Squares s = squares(z);
    if (!isFar(s)) {
        const Real64 w = aboveOne(s);
        Real64 L = real64(0xBFD002F5040E29D7) * w + real64(0x3FD5584A45EEEF6F);
        L = L * w + real64(0xBFDFFFFFD7F0886A);
        L = L * w + real64(0x3FEFFFFFF513801B);
        L = L * w;
        return static_cast<Real32>(L * 0.5);
    }
    const std::uint32_t h = highWord(s.sum);
    const std::uint32_t index = (((h & 0xFF800U) + 0x800U) & 0x1FF000U) >> 12;
    const Real64* row = &tables::LnComplex32Table[4 * index];
    const Real64 c = row[0], hi = row[2], lo = row[3];
    const Real64 m = fromBits((asBits(s.sum) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 mh = fromBits(asBits(m) & 0x7FFFFFFF00000000);
    const Real64 ml = m - mh;
    const Real64 A = mh * c - 1.0;
    const Real64 B = ml * c;
    const Real64 e = static_cast<Real64>(static_cast<std::int32_t>(h >> 20) - 1023);
    const Real64 S = hi + real64(0x3FE62E42FEFA3800) * e;
    const Real64 Q = lo + real64(0x3D2EF35793C76730) * e;
    const Real64 r = A + B;
    Real64 T = S + A;
    Real64 rest = B;
    if (S == 0.0) {
        T = T + B;
        rest = 0.0;
    }
    const Real64 r2 = r * r;
    const Real64 odd = (0.20000104 * r2 + 0.33333333) * r;
    const Real64 even = (-0.16666771 * r2 - 0.25) * r2 - 0.5;
    const Real64 L = ((r2 * (odd + even) + Q) + rest) + T;
    return static_cast<Real32>(L * 0.5);
}

inline Real32 middleImaginary(Complex32 z) {
    const Real32 A = std::fabs(z.re);
    const Real32 B = std::fabs(z.im);
    const bool steep = A < B;
    const Real32 quotient = std::min(A, B) / std::max(A, B);
    const Real32 t = steep ? -quotient : quotient;
    const Real32 w = t * t;
    const Real32 y = w * w;
    const Real32 P = ((real32(0xBC833940) * y + real32(0xBD9990ED)) * y + real32(0xBE117070)) * y + real32(0xBEAAAA52);
    const Real32 Q = ((real32(0x3B39E4AE) * y + real32(0x3D2E8DBC)) * y + real32(0x3DD9DFAF)) * y + real32(0x3E4CB946);
    const Real32 atan = ((w * P + Q * y) + 1.0F) * t;
    const Real32 quarter = (atan + (steep ? halfPi : 0.0F)) * std::copysign(1.0F, z.re);
    const Real32 half = quarter + (signBit(z.re) != 0 ? pi : 0.0F);
    return half * std::copysign(1.0F, z.im);
}

inline Complex32 middleElement(Complex32 source) {
    const Complex32 z{zeroed(source.re), zeroed(source.im)};
    if (middleFlag(z.re) || middleFlag(z.im)) return throughElement<okt::complex::lnElement>(z);
    return {middleReal(z), middleImaginary(z)};
}

}  // namespace complex_log

inline OktStatus Ln_32fc_A11(const Complex32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_log::fastElement, src, dst, len);
}

inline OktStatus Ln_32fc_A21(const Complex32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_log::middleElement, src, dst, len);
}

}  // namespace okt::model
