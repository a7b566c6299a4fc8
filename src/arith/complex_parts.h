// What the complex products and quotients share. Each formula is written once and runs on several kinds of parts:
// Ordered<V> (Real64 lanes, for Complex32), Real80 (Complex64 with a zero, an infinity or a NaN in it), Split
// (all other Complex64), on which a product is exact and a sum of two products is compensated, and Measured, which is
// Real80 with a bound of the error.
#pragma once

#include "frame/inexact.h"
#include "lanes/lanes.h"
#include "lanes/lookup.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
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
inline auto timesRe(ComplexOf<R> a, ComplexOf<R> b) {
    return a.re * b.re - a.im * b.im;
}
template <class R>
inline auto timesIm(ComplexOf<R> a, ComplexOf<R> b) {
    return a.re * b.im + a.im * b.re;
}
template <class R>
inline auto timesConjRe(ComplexOf<R> a, ComplexOf<R> b) {
    return a.re * b.re + a.im * b.im;
}
template <class R>
inline auto timesConjIm(ComplexOf<R> a, ComplexOf<R> b) {
    return a.im * b.re - a.re * b.im;
}
template <class R>  // the same value with a flipped sign in place of the difference, which a NaN can tell apart
inline auto timesConjImFlipped(ComplexOf<R> a, ComplexOf<R> b) {
    return (-a.re) * b.im + a.im * b.re;
}

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
    const auto [re, im] = loadInterleavedWidened<4>(reinterpret_cast<const Real32*>(from));
    return {{re}, {im}};
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
            storeInterleavedNarrowed(reinterpret_cast<Real32*>(dst + i), part.re(a, b).raw, part.im(a, b).raw);
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
inline Real80 operator-(Product x, Product y) {
    return joined(twoDifference(x.value, y.value), twoDifference(x.rest, y.rest));
}

// Loaded before they are used: as a memory operand of a product a signalling NaN would lose to
// a quiet one, while loaded it turns quiet and the larger significand of the two comes through.
inline ComplexOf<Real80> extended(ComplexOf<Real64> z) { return {opaque<Real80>(z.re), opaque<Real80>(z.im)}; }
inline ComplexOf<Split> split(ComplexOf<Real64> z) { return {Split(z.re), Split(z.im)}; }

// Elements with a zero, an infinity or a NaN take plain extended arithmetic.
inline bool needsSimplePath(ComplexOf<Real64> a, ComplexOf<Real64> b) {
    return !isFiniteNonzero(a.re) || !isFiniteNonzero(a.im) || !isFiniteNonzero(b.re) || !isFiniteNonzero(b.im);
}

// With significands of at most 31 bits every split is exact and without a low piece, and so is
// every product: compensated arithmetic then comes to plain extended arithmetic, in its flags, too.
inline bool hasShortParts(ComplexOf<Real64> a, ComplexOf<Real64> b) {
    return ((asBits(a.re) | asBits(a.im) | asBits(b.re) | asBits(b.im)) & 0x3FFFFF) == 0;
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex64 without compensation, where that is seen to give the same bits.
//
// Let S be |x| + |y| for the two products of a part t = x + y, and u = 2^-64. Compensated arithmetic makes t with
// an error of 3 u |t| before anything follows: the products and both sums are exact as pairs, and three more sums
// are rounded. Plain extended arithmetic makes it with u S + u |t|. So the compensated value lies within e = u S
// + 4 u |t| <= 5 u S of the plain one (terms of u^2 come on top), and when both ends, taken through the same
// monotone steps, are rounded to the same Real64, that is the part. Otherwise the element is worked as written.
//
// Only "inexact" can tell the two ways apart: the range test keeps over- and underflow away, and all parts are loaded
// either way. The plain one is therefore taken while that flag stands.

// A part, a product or a sum of products in plain arithmetic, and S.
struct Measured {
    Real80 value, size;
    explicit Measured(Real80 part) : value(part), size(0) {}
    Measured(Real80 v, Real80 s) : value(v), size(s) {}
    // Never so small that an end could come near the limits of Real64.
    Real80 margin() const { return (size + 4 * abs(value)) * (0x1p-64L * (1 + 0x1p-30L)) + 0x1p-500L; }
    friend Measured operator*(Measured x, Measured y) {
        const Real80 product = x.value * y.value;
        return {product, abs(product)};
    }
    friend Measured operator+(Measured x, Measured y) { return {x.value + y.value, x.size + y.size}; }
    friend Measured operator-(Measured x, Measured y) { return {x.value - y.value, x.size + y.size}; }
};

// For four elements, the upper word of the larger part without its sign; the lower half of it is any.
inline U32x4 largerParts(const Complex64* z) {
    const auto* patterns = reinterpret_cast<const std::uint64_t*>(z);
    const U64<4> upper{asLongs(packHighWords(U64<4>::load(patterns))),
                       asLongs(packHighWords(U64<4>::load(patterns + 4)))};
    const U32x4 magnitude(0x7FFFFFFF);
    return maxHighHalves(packLowWords(upper) & magnitude, packHighWords(upper) & magnitude);
}

// Four elements of both sources, by their patterns: the larger part of a factor stands for it.
class FourProducts {
public:
    FourProducts(const Complex64* a, const Complex64* b)
        : aRoom_(U32x4(highWordOf(200)) - largerParts(a)),
          bRoom_(U32x4(highWordOf(200)) - largerParts(b)),
          productRoom_(U32x4(2 * highWordOf(200) - highWordOf(-400) - highWordOf(0)) - aRoom_ - bRoom_) {}

    // A bit for each element with a factor that is 2^200 or more, an infinity or a NaN, or with a
    // product below 2^-400: beyond that, a value on the plain way may come near the limits of Real64.
    int outOfRange() const { return laneBits(negativeLanes(aRoom_ | bRoom_ | productRoom_)); }

    // The margins e. A sum of patterns is a product but for a factor that mantissas and missing lower halves make; with
    // 60.375 taken off the exponents it is at least 10.2 u times the product, and S is at most twice the product.
    F64x4 margins() const { return asReal(withHighWords(productRoom_ + U32x4(highWordOf(-400) - 0x03C60000))); }

private:
    static constexpr std::uint32_t highWordOf(int exponent) {
        return static_cast<std::uint32_t>(1023 + exponent) << 20;
    }

    U32x4 aRoom_, bRoom_, productRoom_;  // the distances of patterns to those bounds
};

inline ComplexOf<Real80> extendedParts(const Complex64* z) {
    const auto parts = loadParts(z);
    return {parts.re, parts.im};
}
// Parts are read anew behind this, as operands in memory: GCC would keep them on the register stack, in whose order it
// puts them at some cost.
inline void forgetParts() {
#if !defined(__clang__)
    forgetMemory();
#endif
}

template <class Formulas>
inline ComplexOf<Real64> rounded(const Formulas& formulas, Real80 re, Real80 im) {
    return {static_cast<Real64>(formulas.finish(re)), static_cast<Real64>(formulas.finish(im))};
}

// Stores the lower ends, and says whether they are the upper ones, too.
inline bool storeEnds(Complex64* to, ComplexOf<Real64> low, ComplexOf<Real64> high) {
    storeReal(to, low.re);
    storeImaginary(to, low.im);
    forgetParts();
    const auto stored = loadParts(to);
    if (asBits(stored.re) != asBits(high.re) || asBits(stored.im) != asBits(high.im)) [[unlikely]]
        return false;
    return true;
}

// These store a result and say whether it is settled.
// Formulas<R>(b) has the two formulas re(a, b) and im(a, b), and finish(part) for what follows them.
template <template <class> class Formulas>
inline bool tryPlain(const Complex64* src1, const Complex64* src2, Complex64* dst, Real80 margin) {
    const Formulas<Real80> formulas(extendedParts(src2));
    forgetParts();
    const Real80 re = formulas.re(extendedParts(src1), extendedParts(src2));
    forgetParts();
    const Real80 im = formulas.im(extendedParts(src1), extendedParts(src2));
    return storeEnds(dst, rounded(formulas, re - margin, im - margin), rounded(formulas, re + margin, im + margin));
}

// The same with the margin that the element itself has.
template <template <class> class Formulas>
[[gnu::noinline]] bool tryMeasured(const Complex64* src1, const Complex64* src2, Complex64* dst) {
    const auto a = loadParts(src1), b = loadParts(src2);
    const ComplexOf<Measured> x{Measured(a.re), Measured(a.im)}, y{Measured(b.re), Measured(b.im)};
    const Formulas<Real80> formulas(ComplexOf<Real80>{b.re, b.im});
    const Measured re = formulas.re(x, y), im = formulas.im(x, y);
    return storeEnds(dst, rounded(formulas, re.value - re.margin(), im.value - im.margin()),
                     rounded(formulas, re.value + re.margin(), im.value + im.margin()));
}

// The elements `first` to 3 of four.
template <template <class> class Formulas, class AsWritten>
inline void plainFour(const Complex64* src1, const Complex64* src2, Complex64* dst, int first,
                      const AsWritten& asWritten) {
    const FourProducts products(src1, src2);
    const int outOfRange = products.outOfRange();
    if (outOfRange != 0) [[unlikely]] {
        for (int k = first; k < 4; ++k)
            if ((outOfRange >> k & 1) != 0 || !tryMeasured<Formulas>(src1 + k, src2 + k, dst + k))
                asWritten(src1 + k, src2 + k, dst + k);
        return;
    }
    const InMemory<Real64, 4> margins(products.margins());
    for (int k = first; k < 4; ++k) {
        if (tryPlain<Formulas>(src1 + k, src2 + k, dst + k, margins.lane[k])) [[likely]]
            continue;
        if (!tryMeasured<Formulas>(src1 + k, src2 + k, dst + k)) asWritten(src1 + k, src2 + k, dst + k);
    }
}

// Loop over elements that `asWritten(src1, src2, dst)` works as written, saying whether it compensated.
template <template <class> class Formulas, class AsWritten>
inline void complexLoop64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len,
                          const AsWritten& asWritten) {
    std::int32_t i = 0;
    if (len >= 4 && !interferes(src1, dst, 4) && !interferes(src2, dst, 4)) {
        bool inexact = x87InexactStands();
        for (; i < len && !inexact; ++i)
            if (asWritten(src1 + i, src2 + i, dst + i)) inexact = x87InexactStands();
        for (; i <= len - 4; i += 4) plainFour<Formulas>(src1 + i, src2 + i, dst + i, 0, asWritten);
        if (i < len) {
            const std::int32_t last = len - 4;
            plainFour<Formulas>(src1 + last, src2 + last, dst + last, i - last, asWritten);
        }
        return;
    }
    for (; i < len; ++i) asWritten(src1 + i, src2 + i, dst + i);
}

// The formulas of a product as the loop takes them: nothing is made ahead of them, and nothing follows.
template <class Formulas>
struct ProductBy {
    template <class R>
    struct Of : Formulas {
        explicit Of(ComplexOf<R>) {}
        static R finish(R part) { return part; }
    };
};

// A complex product. The path is chosen once an element.
template <class Formulas>
inline void complexProduct64(const Complex64* src1, const Complex64* src2, Complex64* dst, std::int32_t len,
                             OktStatus&) {
    const bool sourcesChange = interferes(src1, dst, 1) || interferes(src2, dst, 1);
    const auto asWritten = [=](const Complex64* from1, const Complex64* from2, Complex64* to)
        __attribute__((noinline)) {
        const auto a = loadParts(from1);
        const auto b = loadParts(from2);
        const auto storeParts = [&](auto convert) {
            auto x = convert(a);
            auto y = convert(b);
            storeReal(to, static_cast<Real64>(Formulas::re(x, y)));
            if (sourcesChange) [[unlikely]] {
                x = convert(loadParts(from1));
                y = convert(loadParts(from2));
            }
            storeImaginary(to, static_cast<Real64>(Formulas::im(x, y)));
        };
        // In place a short source may change into a long one.
        const bool compensates = !needsSimplePath(a, b) && (sourcesChange || !hasShortParts(a, b));
        if (compensates)
            storeParts(split);
        else
            storeParts(extended);
        return compensates;
    };
    complexLoop64<ProductBy<Formulas>::template Of>(src1, src2, dst, len, asWritten);
}

}  // namespace okt
