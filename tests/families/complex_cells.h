// Complex functions of one element at a time: tables of special values, both element types, every grade name.
//
// A table gives classes of the parts and what comes out. Its numbers are Real64; for Complex32 they are converted part
// by part, a NaN by its bits, so that a signalling one stays signalling and payloads are kept.
#pragma once

#include "registry.h"
#include "support/element.h"
#include "support/flags.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace okt::test {

inline constexpr double inf = std::numeric_limits<double>::infinity();
inline constexpr double pi = 0x1.921fb54442d18p+1;

// ---------------------------------------------------------------------------------------------------------------------
// Numbers

inline double quietNaN() { return bits64(0x7FF8123000000000); }
inline double negativeNaN() { return bits64(0xFFF8456000000000); }
inline double signallingNaN() { return bits64(0x7FF4000020000000); }
inline double negativeSignallingNaN() { return bits64(0xFFF2468000000000); }

inline bool isNaNPattern(double x) { return asBits(x) << 1 > 0xFFE0000000000000; }
inline bool negative(double x) { return asBits(x) >> 63 != 0; }
inline double flipped(double x) { return bits64(asBits(x) ^ 0x8000000000000000); }
inline double signedBy(double magnitude, bool minus) { return minus ? flipped(magnitude) : magnitude; }
inline double withSignOf(double magnitude, double sign) { return signedBy(magnitude, negative(sign)); }
inline double quieted(double nan) { return bits64(asBits(nan) | 0x0008000000000000); }

// A part of the type R. NaNs go by their bits; only payloads of 23 bits occur.
template <class R>
R toPart(double x) {
    if constexpr (sizeof(R) == 8) {
        return x;
    } else {
        if (!isNaNPattern(x)) return static_cast<R>(x);
        const std::uint64_t bits = asBits(x);
        return bits32(static_cast<std::uint32_t>(bits >> 63 << 31 | 0x7F800000 | (bits >> 29 & 0x007FFFFF)));
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Classes of a part

using Values = std::vector<double>;
using Class = Values (*)(bool single);

inline Values both(Values values) {
    Values result;
    for (const double v : values) {
        result.push_back(v);
        result.push_back(flipped(v));
    }
    return result;
}
inline Values joined(Values a, const Values& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline double smallestSubnormal(bool single) { return single ? 0x1p-149 : 0x1p-1074; }
inline double largestSubnormal(bool single) { return single ? 0x0.fffffep-126 : 0x0.fffffffffffffp-1022; }
inline double smallestNormal(bool single) { return single ? 0x1p-126 : 0x1p-1022; }
inline double largestNumber(bool single) { return single ? 0x1.fffffep127 : 0x1.fffffffffffffp1023; }
// The neighbour of 1 below.
inline double belowOne(bool single) { return single ? 0x0.ffffffp0 : 0x0.fffffffffffff8p0; }
inline double aboveOne(bool single) { return single ? 0x1.000002p0 : 0x1.0000000000001p0; }

inline Values zero(bool) { return {0.0, -0.0}; }
inline Values infinite(bool) { return {inf, -inf}; }
inline Values nan(bool) { return {quietNaN(), negativeNaN(), signallingNaN(), negativeSignallingNaN()}; }
inline Values subnormal(bool single) { return both({smallestSubnormal(single), largestSubnormal(single)}); }
// Magnitude below 1, zero and subnormals apart.
inline Values normalBelowOne(bool single) { return both({smallestNormal(single), 0x1p-60, 0.375, belowOne(single)}); }
inline Values oneAndMore(bool single) { return both({1.0, aboveOne(single), 1.625, 2.0, 3.0, 4.5, 25.0}); }
inline Values huge(bool single) { return both({0x1p80, largestNumber(single)}); }

inline Values belowOneNonzero(bool single) { return joined(subnormal(single), normalBelowOne(single)); }
inline Values oneAndMoreFinite(bool single) { return joined(oneAndMore(single), huge(single)); }
inline Values finiteNonzero(bool single) { return joined(belowOneNonzero(single), oneAndMoreFinite(single)); }
inline Values finite(bool single) { return joined(zero(single), finiteNonzero(single)); }
inline Values infiniteOrNaN(bool single) { return joined(infinite(single), nan(single)); }
inline Values zeroOrInfinite(bool single) { return joined(zero(single), infinite(single)); }

// Sine and cosine for the elements of these classes; those of the large ones by value, as C libraries differ there.
inline double sine(double x) {
    const double a = std::fabs(x);
    double s = a < 0x1p-30 ? a : std::sin(a);
    if (a == 0x1p80) s = -0x1.b7727fa80ca37p-1;
    if (a == 0x1.fffffep127) s = -0x1.0b33665089575p-1;
    if (a == 0x1.fffffffffffffp1023) s = 0x1.452fc98b34e97p-8;
    return negative(x) ? flipped(s) : s;
}
inline double cosine(double x) {
    const double a = std::fabs(x);
    if (a == 0x1p80) return 0x1.06bc5dfae2da3p-1;
    if (a == 0x1.fffffep127) return 0x1.b4bf2c79bdfcep-1;
    if (a == 0x1.fffffffffffffp1023) return -0x1.fffe62ecfab75p-1;
    return std::cos(a);
}

// ---------------------------------------------------------------------------------------------------------------------
// What is expected of a part

struct Expected {
    enum Kind { exact, close, someNaN } kind;
    double value;
};

// This very value, its sign included; a NaN bit for bit.
inline Expected exactly(double value) { return {Expected::exact, value}; }
// This value but for a few last places; the sign counts.
inline Expected about(double value) { return {Expected::close, value}; }
// The quiet NaN that the given one becomes.
inline Expected quietOf(double value) { return {Expected::exact, quieted(value)}; }
inline Expected aNaN() { return {Expected::someNaN, 0}; }
inline Expected zeroWithSign(bool minus) { return exactly(signedBy(0.0, minus)); }
inline Expected infinityWithSign(bool minus) { return exactly(signedBy(inf, minus)); }

template <class R>
testing::AssertionResult matches(R actual, const Expected& expected) {
    if (expected.kind == Expected::someNaN) {
        if (isNaNPattern(double{actual})) return testing::AssertionSuccess();
        return testing::AssertionFailure() << actual << " instead of a NaN";
    }
    const R wanted = toPart<R>(expected.value);
    if (expected.kind == Expected::exact || wanted == 0 || std::isinf(wanted)) return sameBits(actual, asBits(wanted));
    // Two units of the last place or so of Real32, some hundred of Real64: more is not asked of a table of cases.
    const double tolerance = sizeof(R) == 4 ? 0x1p-22 : 0x1p-44;
    const double allowed = std::fabs(double{wanted}) * tolerance + double{std::numeric_limits<R>::denorm_min()};
    if (std::fabs(double{actual} - double{wanted}) <= allowed) return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hexfloat << actual << " instead of about " << wanted;
}

// ---------------------------------------------------------------------------------------------------------------------
// Tables

using PartRule = Expected (*)(double x, double y);

struct Cell {
    Class x, y;
    PartRule re, im;
};

template <class Z>
struct PartsOf;
template <>
struct PartsOf<Complex32> {
    using Part = Real32;
    static constexpr std::string_view type = "32fc";
    static constexpr bool single = true;
};
template <>
struct PartsOf<Complex64> {
    using Part = Real64;
    static constexpr std::string_view type = "64fc";
    static constexpr bool single = false;
};

template <class Z>
Z element(double re, double im) {
    using R = typename PartsOf<Z>::Part;
    Z z;
    storeBits(&z.re, asBits(toPart<R>(re)));
    storeBits(&z.im, asBits(toPart<R>(im)));
    return z;
}

inline std::string text(double re, double im) {
    char buffer[120];
    std::snprintf(buffer, sizeof buffer, "(%a 0x%016llX, %a 0x%016llX)", re,
                  static_cast<unsigned long long>(asBits(re)), im, static_cast<unsigned long long>(asBits(im)));
    return buffer;
}

// All built names of a family and type.
template <class Z>
std::vector<const Export*> grades(std::string_view family) {
    std::vector<const Export*> found;
    for (const Export& f : exports())
        if (f.family == family && f.type == PartsOf<Z>::type) found.push_back(&f);
    EXPECT_EQ(found.size(), 3U) << family;
    return found;
}

template <class Z>
std::vector<Z> callArray(const Export& f, const std::vector<Z>& src) {
    std::vector<Z> dst(src.size());
    EXPECT_EQ(f.call({src.data(), nullptr, nullptr, dst.data(), nullptr, static_cast<std::int32_t>(src.size())}),
              oktStatusOk);
    return dst;
}
template <class Z>
Z callOne(const Export& f, Z z) {
    Z result;
    EXPECT_EQ(f.call({&z, nullptr, nullptr, &result, nullptr, 1}), oktStatusOk);
    return result;
}
template <class Z>
Z callOne(std::string_view family, double re, double im) {
    return callOne(*grades<Z>(family).back(), element<Z>(re, im));
}

// One element alone and at the start, in the middle and at the end of an array, through every grade name.
template <class Z>
void expectElement(std::string_view family, double x, double y, const Expected& re, const Expected& im) {
    const Z z = element<Z>(x, y), filler = element<Z>(0.75, 0.4375);
    for (const Export* f : grades<Z>(family)) {
        const Z single = callOne(*f, z);
        EXPECT_TRUE(matches(single.re, re)) << f->name << text(x, y) << " re";
        EXPECT_TRUE(matches(single.im, im)) << f->name << text(x, y) << " im";
        for (const std::size_t at : {0U, 3U, 6U}) {
            std::vector<Z> src(7, filler);
            std::memcpy(&src[at], &z, sizeof z);
            const Z placed = callArray(*f, src)[at];
            EXPECT_EQ(std::memcmp(&placed, &single, sizeof single), 0) << f->name << text(x, y) << " at " << at;
        }
    }
}

template <class Z>
void expectCells(std::string_view family, std::span<const Cell> cells) {
    for (const Cell& cell : cells)
        for (const double x : cell.x(PartsOf<Z>::single))
            for (const double y : cell.y(PartsOf<Z>::single))
                expectElement<Z>(family, x, y, cell.re(x, y), cell.im(x, y));
}

inline void expectCells(std::string_view family, std::span<const Cell> cells) {
    expectCells<Complex32>(family, cells);
    expectCells<Complex64>(family, cells);
}

// The same element by element for both types.
inline void expectBoth(std::string_view family, double x, double y, const Expected& re, const Expected& im) {
    expectElement<Complex32>(family, x, y, re, im);
    expectElement<Complex64>(family, x, y, re, im);
}

// What the quarter turns make of the tables: f(z) = g(iz), or -i g(iz). A NaN keeps its sign.
inline double turnedSign(double x) { return isNaNPattern(x) ? x : flipped(x); }
inline Expected turnedSign(const Expected& e) { return {e.kind, turnedSign(e.value)}; }

// Expects of f at (x, y) what the cells give for (-y, x), turned back if asked for.
template <class Z>
void expectTurnedCells(std::string_view family, std::span<const Cell> cells, bool back) {
    for (const Cell& cell : cells)
        for (const double u : cell.x(PartsOf<Z>::single))
            for (const double v : cell.y(PartsOf<Z>::single)) {
                const Expected re = cell.re(u, v), im = cell.im(u, v);
                const double x = v, y = turnedSign(u);
                expectElement<Z>(family, x, y, back ? im : re, back ? turnedSign(re) : im);
            }
}
inline void expectTurnedCells(std::string_view family, std::span<const Cell> cells, bool back) {
    expectTurnedCells<Complex32>(family, cells, back);
    expectTurnedCells<Complex64>(family, cells, back);
}

// ---------------------------------------------------------------------------------------------------------------------
// Flags

struct RaisedFlags {
    std::uint32_t mxcsr;  // by operations of SSE
    std::uint32_t x87;    // by operations of the x87 unit
    std::uint32_t either() const { return mxcsr | x87; }
};

template <class Z>
RaisedFlags flagsRaisedBy(std::string_view family, double x, double y) {
    const Export& f = *grades<Z>(family).back();
    const Z z = element<Z>(x, y);
    Z result;
    const ScopedControlState scope({defaultMxcsr, 0x037F});
    asm volatile("fnclex");
    f.call({&z, nullptr, nullptr, &result, nullptr, 1});
    std::uint16_t word;
    asm volatile("fnstsw %0" : "=m"(word));
    return {controlState().mxcsr & stickyFlags, word & 0x3FU};
}

// ---------------------------------------------------------------------------------------------------------------------
// Properties over many elements

// Parts of all sizes up to 2^highest, with zeros, infinities and NaNs among them where specials is set.
template <class Z>
std::vector<Z> manyElements(std::size_t count, int lowest, int highest, bool specials, std::uint64_t seed = 1) {
    using R = typename PartsOf<Z>::Part;
    Random random(seed);
    std::vector<Z> values(count);
    const auto part = [&](R* to) {
        const bool special = specials && random.below(5) == 0;
        storeBits(to, asBits(special ? specialValues<R>()[random.below(specialValues<R>().size())]
                                     : ofMagnitude<R>(random, lowest, highest)));
    };
    for (Z& z : values) {
        part(&z.re);
        part(&z.im);
    }
    return values;
}

template <class Z>
bool sameElement(const Z& a, const Z& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// f(conj z) = conj f(z), and with odd (or even) set f(-z) = -f(z) (or f(z)), bit by bit, where no part is a NaN. With
// nearly set the last place may differ.
struct Symmetry {
    bool odd = false, even = false, nearly = false;
};

template <class Z>
void expectSymmetry(std::string_view family, Symmetry symmetry) {
    const auto turned = [](auto r, bool turn) {
        if (turn) {
            if constexpr (sizeof r == 4)
                return bits32(asBits(r) ^ 0x80000000U);
            else
                return bits64(asBits(r) ^ 0x8000000000000000U);
        }
        return r;
    };
    const auto agree = [&](auto a, auto b) {
        return (a != a && b != b) || asBits(a) == asBits(b) || (symmetry.nearly && asBits(a) - asBits(b) + 1 <= 2);
    };
    const Export& f = *grades<Z>(family).back();
    std::vector<Z> src = manyElements<Z>(3000, -20, 8, true);
    for (const Z& z :
         manyElements<Z>(2000, PartsOf<Z>::single ? -127 : -1023, PartsOf<Z>::single ? 127 : 1023, false, 2))
        src.push_back(z);
    std::erase_if(src, [](const Z& z) { return z.re != z.re || z.im != z.im; });
    const std::vector<Z> plain = callArray(f, src);
    struct Image {
        bool re, im;        // signs turned in the argument
        bool outRe, outIm;  // and in the result
    };
    std::vector<Image> images = {{false, true, false, true}};
    if (symmetry.odd) images.push_back({true, true, true, true});
    if (symmetry.even) images.push_back({true, true, false, false});
    for (const Image& image : images) {
        std::vector<Z> mirrored = src;
        for (Z& z : mirrored) z = {turned(z.re, image.re), turned(z.im, image.im)};
        const std::vector<Z> result = callArray(f, mirrored);
        for (std::size_t i = 0; i < src.size(); ++i) {
            EXPECT_TRUE(agree(result[i].re, turned(plain[i].re, image.outRe)))
                << family << text(src[i].re, src[i].im) << " re";
            EXPECT_TRUE(agree(result[i].im, turned(plain[i].im, image.outIm)))
                << family << text(src[i].re, src[i].im) << " im";
        }
    }
}
inline void expectSymmetry(std::string_view family, Symmetry symmetry) {
    expectSymmetry<Complex32>(family, symmetry);
    expectSymmetry<Complex64>(family, symmetry);
}

// A Complex32 result is the Complex64 result of the widened element, narrowed under the caller's rounding mode.
inline void expectNarrowedResults(std::string_view family, int lowest, int highest) {
    const Export &narrow = *grades<Complex32>(family).back(), &wide = *grades<Complex64>(family).back();
    const std::vector<Complex32> src = manyElements<Complex32>(1000, lowest, highest, true, 4);
    const auto len = static_cast<std::int32_t>(src.size());
    for (const std::uint32_t rounding : {roundNearest, roundDown, roundUp, roundTowardsZero}) {
        const ScopedControlState scope({defaultMxcsr | rounding, 0x037F});
        std::vector<Complex64> widened(src.size()), wideResult(src.size());
        for (std::size_t i = 0; i < src.size(); ++i)
            widened[i] = {_mm_cvtsd_f64(_mm_cvtss_sd(_mm_setzero_pd(), _mm_load_ss(&src[i].re))),
                          _mm_cvtsd_f64(_mm_cvtss_sd(_mm_setzero_pd(), _mm_load_ss(&src[i].im)))};
        std::vector<Complex32> result(src.size());
        narrow.call({src.data(), nullptr, nullptr, result.data(), nullptr, len});
        wide.call({widened.data(), nullptr, nullptr, wideResult.data(), nullptr, len});
        for (std::size_t i = 0; i < src.size(); ++i) {
            const auto narrowed = [](double x) { return _mm_cvtss_f32(_mm_cvtsd_ss(_mm_setzero_ps(), _mm_set_sd(x))); };
            EXPECT_TRUE(sameBits(result[i].re, asBits(narrowed(wideResult[i].re))))
                << family << text(src[i].re, src[i].im);
            EXPECT_TRUE(sameBits(result[i].im, asBits(narrowed(wideResult[i].im))))
                << family << text(src[i].re, src[i].im);
        }
    }
}

// Ordinary Complex64 elements give the same bits in every rounding mode of the caller: nothing but x87 arithmetic is in
// them.
inline void expectSameInEveryRoundingMode(std::string_view family, int lowest, int highest) {
    const Export& f = *grades<Complex64>(family).back();
    const std::vector<Complex64> src = manyElements<Complex64>(1000, lowest, highest, false, 5);
    const std::vector<Complex64> usual = callArray(f, src);
    inEveryRoundingMode([&] {
        const std::vector<Complex64> result = callArray(f, src);
        for (std::size_t i = 0; i < src.size(); ++i)
            EXPECT_TRUE(sameElement(result[i], usual[i])) << family << text(src[i].re, src[i].im);
    });
}

// All that holds for each of these functions. The orders are those of parts with finite results.
inline void expectElementLoop(std::string_view family, Symmetry symmetry, int highest) {
    expectSymmetry(family, symmetry);
    expectNarrowedResults(family, -127, highest);
    expectSameInEveryRoundingMode(family, -30, highest);
    // The caller's MXCSR sees nothing of an ordinary element.
    EXPECT_EQ(flagsRaisedBy<Complex64>(family, 0.75, 0.4375).mxcsr, 0U) << family;
    EXPECT_EQ(flagsRaisedBy<Complex64>(family, -5.5, 3.25).mxcsr, 0U) << family;
}

}  // namespace okt::test
