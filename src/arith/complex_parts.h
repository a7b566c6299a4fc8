// What the complex products and quotients share. Each formula is written once and runs on three kinds of parts:
// Ordered<V> (Real64 lanes, for Complex32), Real80 (Complex64 with a zero, an infinity or a NaN in it) and Split
// (all other Complex64), on which a product is exact and a sum of two products is compensated.
#pragma once

#include "frame/frame.h"
#include "lanes/lanes.h"
#include "lanes/ordered.h"
#include "lanes/real80.h"

#include <cstdint>

namespace okt {

template <class R>
struct ComplexOf {
    R re, im;
};

template <class Z>
inline auto loadParts(const Z* from) {
    using Part = decltype(from->re);
    const auto* part = reinterpret_cast<const Part*>(from);
    return ComplexOf<Part>{loadElement(part), loadElement(part + 1)};
}
inline void storeReal(Complex32* to, Real32 re) { storeElement(reinterpret_cast<Real32*>(to), re); }
inline void storeReal(Complex64* to, Real64 re) { storeElement(reinterpret_cast<Real64*>(to), re); }
inline void storeImaginary(Complex32* to, Real32 im) { storeElement(reinterpret_cast<Real32*>(to) + 1, im); }
inline void storeImaginary(Complex64* to, Real64 im) { storeElement(reinterpret_cast<Real64*>(to) + 1, im); }

// ---------------------------------------------------------------------------------------------------------------------
// The formulas.

template <class R>
inline auto timesRe(ComplexOf<R> a, ComplexOf<R> b) { return a.re * b.re - a.im * b.im; }
template <class R>
inline auto timesIm(ComplexOf<R> a, ComplexOf<R> b) { return a.re * b.im + a.im * b.re; }
template <class R>
inline auto timesConjRe(ComplexOf<R> a, ComplexOf<R> b) { return a.re * b.re + a.im * b.im; }
template <class R>
inline auto timesConjIm(ComplexOf<R> a, ComplexOf<R> b) { return a.im * b.re - a.re * b.im; }
template <class R>  // the same value with a flipped sign in place of the difference, which a NaN can tell apart
inline auto timesConjImFlipped(ComplexOf<R> a, ComplexOf<R> b) { return (-a.re) * b.im + a.im * b.re; }

// ---------------------------------------------------------------------------------------------------------------------
// Complex32: Real64 lanes with the order of operands kept.

template <class V>
struct Ordered {
    V raw;
    friend Ordered operator*(Ordered a, Ordered b) { return {mulOrdered(a.raw, b.raw)}; }
    friend Ordered operator+(Ordered a, Ordered b) { return {addOrdered(a.raw, b.raw)}; }
    friend Ordered operator-(Ordered a, Ordered b) { return {a.raw - b.raw}; }
    friend Ordered operator/(Ordered a, Ordered b) { return {a.raw / b.raw}; }
    friend Ordered operator-(Ordered a) { return {-a.raw}; }
};

inline ComplexOf<Ordered<F64x1>> widened(const Complex32* from) {
    const auto z = loadParts(from);
    return {{widen(F32x1(z.re))}, {widen(F32x1(z.im))}};
}
inline ComplexOf<Ordered<F64x4>> widenedFour(const Complex32* from) {
    const auto [re, im] = loadInterleaved(reinterpret_cast<const Real32*>(from));
    return {{widen(re)}, {widen(im)}};
}

// The real part of a result is stored before the sources of its imaginary part are read. That shows only when the
// destination starts less than `elements` above a source or less than one element below it.
template <class Z>
inline bool interferes(const Z* src, const Z* dst, int elements) {
    const auto above = reinterpret_cast<std::intptr_t>(dst) - reinterpret_cast<std::intptr_t>(src);
    const auto size = static_cast<std::intptr_t>(sizeof(Z));
    return above > -size && above < elements * size;
}

// `parts(b)` gives the two formulas re(a, b) and im(a, b) for an element, made once before its first store. Four
// elements are worked side by side where nothing interferes.
template <class Parts>
inline void complexLoop32(const Complex32* src1, const Complex32* src2, Complex32* dst, std::int32_t len,
                          const Parts& parts) {
    std::int32_t i = 0;
    if (!interferes(src1, dst, 4) && !interferes(src2, dst, 4)) {
        for (; i <= len - 4; i += 4) {
            const auto a = widenedFour(src1 + i);
            const auto b = widenedFour(src2 + i);
            const auto part = parts(b);
            storeInterleaved(reinterpret_cast<Real32*>(dst + i), narrow(part.re(a, b).raw), narrow(part.im(a, b).raw));
        }
    }
    for (; i < len; ++i) {
        const auto part = parts(widened(src2 + i));
        storeReal(dst + i, narrow(part.re(widened(src1 + i), widened(src2 + i)).raw).raw);
        storeImaginary(dst + i, narrow(part.im(widened(src1 + i), widened(src2 + i)).raw).raw);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex64: Real80 arithmetic, whose 15-bit exponent leaves no intermediate overflow or underflow.

// A value cut in two, so that products of the pieces are exact.
struct Split {
    Real80 hi, lo;

    explicit Split(Real64 part) {
        constexpr Real80 wideSplitConstant = 8589934593.0L;  // 2^33 + 1
        const Real80 x = part;
        const Real80 t = wideSplitConstant * x;
        const Real80 u = t - x;
        hi = t - u;
        lo = x - hi;
    }
};

// An unrounded product.
struct Product {
    Real80 value, rest;
};

inline Product operator*(Split x, Split y) {
    const Real80 hh = x.hi * y.hi;
    const Real80 mid = y.hi * x.lo + x.hi * y.lo;
    const Real80 value = mid + hh;
    return {value, ((hh - value) + mid) + x.lo * y.lo};
}

inline Product twoSum(Real80 p, Real80 q) {
    const Real80 sum = q + p;
    const Real80 v = p - sum;
    const Real80 w = sum + v;
    return {sum, (q + v) + (p - w)};
}

// The same with -q for q; not a negation, which would turn the sign of a NaN.
inline Product twoDifference(Real80 p, Real80 q) {
    const Real80 difference = p - q;
    const Real80 v = p - difference;
    const Real80 w = difference + v;
    return {difference, (v - q) + (p - w)};
}

// The sum and the difference of two products, good to the last bit also where they cancel.
inline Real80 joined(Product high, Product low) { return ((high.value + low.value) + high.rest) + low.rest; }
inline Real80 operator+(Product x, Product y) { return joined(twoSum(x.value, y.value), twoSum(x.rest, y.rest)); }
inline Real80 operator-(Product x, Product y) { return joined(twoDifference(x.value, y.value), twoDifference(x.rest, y.rest)); }

// Loaded before they are used: as a memory operand of a product a signalling NaN would lose to a quiet one, while loaded it
// turns quiet and the larger significand of the two comes through.
inline ComplexOf<Real80> extended(ComplexOf<Real64> z) { return {opaque<Real80>(z.re), opaque<Real80>(z.im)}; }
inline ComplexOf<Split> split(ComplexOf<Real64> z) { return {Split(z.re), Split(z.im)}; }

inline bool isZeroOrNotFinite(Real64 x) {
    const std::uint64_t magnitude = asBits(x) & 0x7FFFFFFFFFFFFFFF;
    return magnitude - 1 >= 0x7FEFFFFFFFFFFFFF;  // a zero wraps around
}

// Elements with such a part take plain extended arithmetic.
inline bool needsSimplePath(ComplexOf<Real64> a, ComplexOf<Real64> b) {
    return isZeroOrNotFinite(a.re) || isZeroOrNotFinite(a.im) || isZeroOrNotFinite(b.re) || isZeroOrNotFinite(b.im);
}

// A complex product by the formulas re(a, b) and im(a, b). The path is chosen once an element.
template <class Re, class Im>
inline OktStatus complexProduct64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len,
                                  const Re& re, const Im& im) {
    return x87Frame<64>(len, src1, src2, dst, [=](OktStatus&) {
        const bool sourcesChange = interferes(src1, dst, 1) || interferes(src2, dst, 1);
        for (std::int32_t i = 0; i < len; ++i) {
            const auto a = loadParts(src1 + i);
            const auto b = loadParts(src2 + i);
            const auto storeParts = [&](auto convert) {
                auto x = convert(a);
                auto y = convert(b);
                storeReal(dst + i, static_cast<Real64>(re(x, y)));
                if (sourcesChange) [[unlikely]] {
                    x = convert(loadParts(src1 + i));
                    y = convert(loadParts(src2 + i));
                }
                storeImaginary(dst + i, static_cast<Real64>(im(x, y)));
            };
            if (needsSimplePath(a, b)) [[unlikely]]
                storeParts(extended);
            else
                storeParts(split);
        }
    });
}

}  // namespace okt
