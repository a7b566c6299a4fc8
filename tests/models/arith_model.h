// Models of the complex routines of the elementwise arithmetic: Abs, Mul, MulByConj and Div.
//
// The routines on Complex32 work in Real64 under the caller's MXCSR, those on Complex64 in Real80 under an x87
// control word of 64-bit precision and round to nearest. The real part of a product is stored before the sources
// of the imaginary part are read, so that in place the new real part takes part: sources are read by value from
// the arrays where the steps read them. In Real80 the NaN of two is chosen by the significand, whatever the order of
// the operands; in Real64 the written order decides, hence the ordered operations.
#pragma once

#include "oktvm_types.h"
#include "tables/inverse_root_starts.h"
#include "tests/models/bits.h"
#include "tests/models/modulus_classes.h"
#include "tests/models/multiplicative_root.h"
#include "tests/models/ordered.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace okt::model {

namespace complexarith {

using Real80 = long double;

inline Real64 negated(Real64 x) { return fromBits(asBits(x) ^ 0x8000000000000000); }

// Modulus ------------------------------------------------------------------------------------------------------

inline Real32 modulusOf(Complex32 z) {
    Real32 special;
    if (modulus::special(z.re, z.im, special)) return special;
    const Real64 x = z.re;
    const Real64 y = z.im;
    if (x == 0.0 && y == 0.0) return 0.0F;
    const Real64 s = x * x + y * y;
    const multiplicative::Root root = multiplicative::root(s);
    return static_cast<Real32>(((root.e2 * root.h) + root.g) * multiplicative::powerOfTwo(root.half));
}

// The 80-bit number with an explicit integer bit.
struct Fields80 {
    std::uint64_t significand;
    std::uint16_t exponent;
};

inline Fields80 fieldsOf(Real80 x) {
    Fields80 fields;
    std::memcpy(&fields.significand, &x, 8);
    std::memcpy(&fields.exponent, reinterpret_cast<const char*>(&x) + 8, 2);
    return fields;
}

inline Real80 fromFields(std::uint64_t significand, int exponent) {
    Real80 x = 0.0L;
    const std::uint16_t field = static_cast<std::uint16_t>(exponent);
    std::memcpy(&x, &significand, 8);
    std::memcpy(reinterpret_cast<char*>(&x) + 8, &field, 2);
    return x;
}

// Keeps the compiler from using a part straight from memory: in a compare with zero denormals-are-zero would act on it,
// and as a factor a signalling NaN would lose to a quiet one, while loaded it turns quiet and its significand counts.
inline Real80 loaded(Real80 part) {
    asm volatile("" : "+t"(part));
    return part;
}

inline Real64 modulusOf(Complex64 z) {
    Real64 special;
    if (modulus::special(z.re, z.im, special)) return special;
    const Real80 x = loaded(z.re);
    const Real80 y = loaded(z.im);
    if (x == 0.0L && y == 0.0L) return 0.0;
    const Real80 s = x * x + y * y;

    const Fields80 fields = fieldsOf(s);
    const int e = (fields.exponent & 0x7FFF) - 16383;
    const int odd = e & 1;
    const Real80 m = fromFields(fields.significand, 0x3FFF);
    const Real80 m2 = m * (odd ? 2.0L : 1.0L);
    const std::uint64_t index = static_cast<std::uint64_t>(odd) * 256 + (fields.significand >> 55 & 0xFF);

    const Real80 t = tables::InverseRootStarts[index];
    Real80 h = 0.5L * t;
    Real80 g = t * m2;
    for (int round = 0; round < 3; ++round) {
        const Real80 r = 0.5L - g * h;
        const Real80 gNew = g + r * g;
        const Real80 hNew = h + r * h;
        g = gNew;
        h = hNew;
    }

    const Real80 c = 134217729.0L * g;  // 2^27 + 1, although the format is wider
    const Real80 u = c - g;
    const Real80 hi = c - u;
    const Real80 lo = g - hi;
    const Real80 d = m2 - hi * hi;
    const Real80 e2 = (((0.0L - 2.0L * hi) - lo) * lo) + d;
    const Real80 scale = fromFields(0x8000000000000000, (e - odd) / 2 + 16383);
    return static_cast<Real64>(((e2 * h) + g) * scale);
}

// Products in Real64 -------------------------------------------------------------------------------------------

struct Wide {
    Real64 re;
    Real64 im;
};

inline Wide widened(const Complex32& z) { return {z.re, z.im}; }

inline Real64 productReal(Wide a, Wide b) { return ordered::sub(ordered::mul(a.re, b.re), ordered::mul(a.im, b.im)); }
inline Real64 productImag(Wide a, Wide b) { return ordered::add(ordered::mul(a.re, b.im), ordered::mul(a.im, b.re)); }
inline Real64 conjugateReal(Wide a, Wide b) { return ordered::add(ordered::mul(a.re, b.re), ordered::mul(a.im, b.im)); }
inline Real64 conjugateImag(Wide a, Wide b) {
    return ordered::add(ordered::mul(negated(a.re), b.im), ordered::mul(a.im, b.re));
}

// Products in Real80 -------------------------------------------------------------------------------------------

// A test on the four parts, made once per element: none is infinite, NaN or zero.
inline bool compensates(const Complex64& a, const Complex64& b) {
    for (const Real64 part : {a.re, a.im, b.re, b.im}) {
        const std::uint64_t magnitude = asBits(part) & 0x7FFFFFFFFFFFFFFF;
        if (magnitude == 0 || magnitude >= 0x7FF0000000000000) return false;
    }
    return true;
}

struct Pair80 {
    Real80 hi;
    Real80 lo;
};

inline Pair80 split(Real80 x) {
    const Real80 t = 8589934593.0L * x;  // 2^33 + 1
    const Real80 u = t - x;
    const Real80 hi = t - u;
    const Real80 lo = x - hi;
    return {hi, lo};
}

inline Pair80 product(Real80 x, Real80 y) {
    const auto [xhi, xlo] = split(x);
    const auto [yhi, ylo] = split(y);
    const Real80 hh = xhi * yhi;
    const Real80 mid = yhi * xlo + xhi * ylo;
    const Real80 P = mid + hh;
    Real80 p = (hh - P) + mid;
    p = p + xlo * ylo;
    return {P, p};
}

inline Pair80 twoSum(Real80 P, Real80 Q) {
    const Real80 s = Q + P;
    const Real80 v = P - s;
    const Real80 w = s + v;
    const Real80 e = (Q + v) + (P - w);
    return {s, e};
}

// a b + c d, or a b - c d with a sign of -1, before the final rounding.
inline Real80 compensated(Real80 a, Real80 b, Real80 sign, Real80 c, Real80 d) {
    const auto [P, p] = product(a, b);
    auto [Q, q] = product(c, d);
    if (sign < 0) {
        Q = Q * -1.0L;
        q = q * -1.0L;
    }
    const auto [s1, e1] = twoSum(P, Q);
    const auto [s2, e2] = twoSum(p, q);
    return ((s1 + s2) + e1) + e2;
}

// The simple path.
inline Real80 plain(Real80 a, Real80 b, Real80 sign, Real80 c, Real80 d) {
    a = loaded(a);
    b = loaded(b);
    c = loaded(c);
    d = loaded(d);
    return sign < 0 ? a * b - c * d : a * b + c * d;
}

}  // namespace complexarith

[[gnu::noinline]] inline OktStatus Abs_32fc(const Complex32* src, Real32* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = complexarith::modulusOf(src[i]);
    return oktStatusOk;
}
[[gnu::noinline]] inline OktStatus Abs_64fc(const Complex64* src, Real64* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = complexarith::modulusOf(src[i]);
    return oktStatusOk;
}

[[gnu::noinline]] inline OktStatus Mul_32fc(const Complex32* src1, const Complex32* src2, Complex32* dst,
                                            std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        dst[i].re = static_cast<Real32>(productReal(widened(src1[i]), widened(src2[i])));
        dst[i].im = static_cast<Real32>(productImag(widened(src1[i]), widened(src2[i])));
    }
    return oktStatusOk;
}
[[gnu::noinline]] inline OktStatus MulByConj_32fc(const Complex32* src1, const Complex32* src2, Complex32* dst,
                                                  std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        dst[i].re = static_cast<Real32>(conjugateReal(widened(src1[i]), widened(src2[i])));
        dst[i].im = static_cast<Real32>(conjugateImag(widened(src1[i]), widened(src2[i])));
    }
    return oktStatusOk;
}
// r is kept although in place the divisor's real part may have changed before the imaginary part is made.
[[gnu::noinline]] inline OktStatus Div_32fc(const Complex32* src1, const Complex32* src2, Complex32* dst,
                                            std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        const Wide b = widened(src2[i]);
        const Real64 imSquared = ordered::mul(b.im, b.im);
        const Real64 d = ordered::add(ordered::mul(b.re, b.re), imSquared);
        const Real64 r = ordered::div(1.0, d);
        dst[i].re = static_cast<Real32>(ordered::mul(conjugateReal(widened(src1[i]), b), r));
        dst[i].im = static_cast<Real32>(ordered::mul(conjugateImag(widened(src1[i]), widened(src2[i])), r));
    }
    return oktStatusOk;
}

[[gnu::noinline]] inline OktStatus Mul_64fc(const Complex64* src1, const Complex64* src2, Complex64* dst,
                                            std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        const auto combine = compensates(src1[i], src2[i]) ? compensated : plain;
        const Complex64* a = src1 + i;
        const Complex64* b = src2 + i;
        dst[i].re = static_cast<Real64>(combine(a->re, b->re, -1, a->im, b->im));
        dst[i].im = static_cast<Real64>(combine(a->re, b->im, +1, a->im, b->re));
    }
    return oktStatusOk;
}
[[gnu::noinline]] inline OktStatus MulByConj_64fc(const Complex64* src1, const Complex64* src2, Complex64* dst,
                                                  std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        const auto combine = compensates(src1[i], src2[i]) ? compensated : plain;
        const Complex64* a = src1 + i;
        const Complex64* b = src2 + i;
        dst[i].re = static_cast<Real64>(combine(a->re, b->re, +1, a->im, b->im));
        dst[i].im = static_cast<Real64>(combine(a->im, b->re, -1, a->re, b->im));
    }
    return oktStatusOk;
}
// The compensated path finishes both parts before it stores; the simple one stores the imaginary part first and
// reads the sources of the real part after that.
[[gnu::noinline]] inline OktStatus Div_64fc(const Complex64* src1, const Complex64* src2, Complex64* dst,
                                            std::int32_t len) {
    using namespace complexarith;
    for (std::int32_t i = 0; i < len; ++i) {
        const Complex64* a = src1 + i;
        const Complex64* b = src2 + i;
        const Real80 bRe = loaded(b->re);
        const Real80 bIm = loaded(b->im);
        const Real80 d = bIm * bIm + bRe * bRe;
        const Real80 r = 1.0L / d;
        if (compensates(*a, *b)) {
            const Real80 re = compensated(a->re, b->re, +1, a->im, b->im) * r;
            const Real80 im = compensated(a->im, b->re, -1, a->re, b->im) * r;
            dst[i].re = static_cast<Real64>(re);
            dst[i].im = static_cast<Real64>(im);
        } else {
            dst[i].im = static_cast<Real64>(plain(a->im, b->re, -1, a->re, b->im) * r);
            dst[i].re = static_cast<Real64>(r * plain(a->re, b->re, +1, a->im, b->im));
        }
    }
    return oktStatusOk;
}

}  // namespace okt::model
