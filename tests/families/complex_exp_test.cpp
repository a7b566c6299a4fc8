// e to the power a + ib.
#include "tests/models/complex_exp_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class Z>
using PartOf = decltype(Z::re);
template <class Z>
using Routine = OktStatus (*)(const Z*, Z*, std::int32_t);

template <class Z>
Z fromPatterns(PatternOf<PartOf<Z>> re, PatternOf<PartOf<Z>> im) {
    const PatternOf<PartOf<Z>> patterns[2] = {re, im};
    Z z;
    std::memcpy(&z, patterns, sizeof z);
    return z;
}

template <class Z>
testing::AssertionResult sameParts(const Z& actual, const Z& expected) {
    const auto re = sameBits(actual.re, asBits(expected.re));
    const auto im = sameBits(actual.im, asBits(expected.im));
    if (re && im) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "real part " << re.message() << ", imaginary part " << im.message();
}

// The element alone, and at every place of an array of whole blocks and a tail.
template <class Z>
void expectEverywhere(Routine<Z> f, Z z, Z filler, Z expected) {
    EXPECT_TRUE(sameParts(alone<Z>(f, z).value, expected)) << std::hex << asBits(z.re) << ' ' << asBits(z.im);
    for (std::int32_t position = 0; position < rowArrayLength; ++position) {
        const auto placed = among<Z>(f, z, filler, rowArrayLength, position);
        EXPECT_TRUE(sameParts(placed.value, expected))
            << std::hex << asBits(z.re) << ' ' << asBits(z.im) << " at " << std::dec << position;
        EXPECT_EQ(placed.status, oktStatusOk);
    }
}

template <class Z, int re, int im>
Z ordinary(Random& random) {
    using T = PartOf<Z>;
    const auto part = [&random](double bound) {
        return random.below(5) == 0 ? ofMagnitude<T>(random, -60, 6) : static_cast<T>(random.between(-bound, bound));
    };
    const T a = part(re);
    return {a, part(im)};
}

// Parts of every class, beyond the bounds, and where results over- and underflow.
template <class T>
T specialPart(Random& random) {
    switch (random.below(5)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(random.between(-800, 800));
        case 2: return ofMagnitude<T>(random, 8, sizeof(T) == 4 ? 127 : 1023);
        case 3: return ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, 8);
        default: return static_cast<T>(random.between(-3000, 3000));
    }
}
template <class Z, int re, int im>
Z special(Random& random) {
    Z z = ordinary<Z, re, im>(random);
    const auto kind = random.below(3);
    const PartOf<Z> a = specialPart<PartOf<Z>>(random), b = specialPart<PartOf<Z>>(random);
    if (kind != 1) std::memcpy(&z.re, &a, sizeof a);
    if (kind != 0) std::memcpy(&z.im, &b, sizeof b);
    return z;
}

constexpr Filling<Complex32> single{ordinary<Complex32, 87, 10000>, special<Complex32, 87, 10000>};
constexpr Filling<Complex32> wide{ordinary<Complex32, 511, 511>, special<Complex32, 511, 511>};
constexpr Filling<Complex64> whole{ordinary<Complex64, 511, 511>, special<Complex64, 511, 511>};

// ---------------------------------------------------------------------------------------------------------------------
// The models

TEST(Exp, ComplexAgreesWithTheModel) {
    expectModel<Complex32, Complex32>("oktsExp_32fc_A11", model::Exp_32fc_A11, single);
    expectModel<Complex32, Complex32>("oktsExp_32fc_A24", model::Exp_32fc_A24, wide);
    expectModel<Complex64, Complex64>("oktsExp_64fc_A53", model::Exp_64fc, whole);
}

// The frame leaves the caller's MXCSR to the block kernels.
TEST(Exp, ComplexAgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Complex32>("oktsExp_32fc_A11", model::Exp_32fc_A11, single);
        expectModel<Complex32, Complex32>("oktsExp_32fc_A24", model::Exp_32fc_A24, wide);
        expectModel<Complex64, Complex64>("oktsExp_64fc_A53", model::Exp_64fc, whole);
    });
}

// An element out of the blocks' range is widened under the caller's MXCSR: with denormals-are-zero a
// subnormal part is a zero of its sign in the written steps, also where they would hand it through.
TEST(Exp, ComplexElementsWithSubnormalPartsUnderEveryMxcsr) {
    const Real32 inf = std::numeric_limits<Real32>::infinity(), nan = std::numeric_limits<Real32>::quiet_NaN();
    for (const Real32 subnormal : {bits32(1), bits32(0x80000001), bits32(0x007FFFFF), bits32(0x807FFFFF)})
        for (const Real32 other : {0.0F, -0.0F, 1.0F, 100.0F, -100.0F, 3e38F, -3e38F, inf, -inf, nan, subnormal})
            for (const Complex32 z : {Complex32{subnormal, other}, Complex32{other, subnormal}})
                underEveryMxcsr([&] {
                    EXPECT_TRUE(sameParts(alone<Complex32>(oktsExp_32fc_A11, z).value,
                                          alone<Complex32>(model::Exp_32fc_A11, z).value))
                        << z.re << ' ' << z.im << " under " << std::hex << _mm_getcsr();
                    EXPECT_TRUE(sameParts(alone<Complex32>(oktsExp_32fc_A24, z).value,
                                          alone<Complex32>(model::Exp_32fc_A24, z).value))
                        << z.re << ' ' << z.im << " under " << std::hex << _mm_getcsr();
                });
}

// Thresholds of a part with their neighbours, of both signs, beside several values of the other part.
template <class Z>
void expectModelAround(Routine<Z> f, Routine<Z> model, std::initializer_list<PatternOf<PartOf<Z>>> re,
                       std::initializer_list<PatternOf<PartOf<Z>>> im) {
    using T = PartOf<Z>;
    using Pattern = PatternOf<T>;
    const Pattern sign = Pattern{1} << (8 * sizeof(T) - 1);
    const T others[] = {
        T(0.5), T(-3), T(0), T(-0.0), T(700), std::numeric_limits<T>::infinity(), std::numeric_limits<T>::denorm_min()};
    const Z filler{T(1), T(2)};
    const auto check = [&](Pattern threshold, bool imaginary) {
        for (Pattern step = 0; step < 5; ++step)
            for (const Pattern flip : {Pattern{0}, sign})
                for (const T other : others) {
                    const T x = std::bit_cast<T>(static_cast<Pattern>((threshold - 2 + step) ^ flip));
                    const Z z = imaginary ? Z{other, x} : Z{x, other};
                    expectEverywhere<Z>(f, z, filler, alone<Z>(model, z).value);
                }
    };
    for (const Pattern threshold : re) check(threshold, false);
    for (const Pattern threshold : im) check(threshold, true);
}

TEST(Exp, ComplexAgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Complex32>(
        oktsExp_32fc_A11, model::Exp_32fc_A11,
        {0x42AEAC50, 0x42B17218, 0x45000000, 0x7F7FFFFE, 0x7F800000, 0x7FC00000, 0x00800000, 2},
        {0x461C4000, 0x3FC90FDB, 0x7F7FFFFE, 0x7F800000, 0x7FC00000, 0x00800000, 2});
    expectModelAround<Complex32>(
        oktsExp_32fc_A24, model::Exp_32fc_A24,
        {0x44000000, 0x42B17218, 0x42AEAC50, 0x45000000, 0x7F800000, 0x7FC00000, 0x00800000, 2},
        {0x44000000, 0x3FC90FDB, 0x7F800000, 0x7FC00000, 0x00800000, 2});
    expectModelAround<Complex64>(
        oktsExp_64fc_A53, model::Exp_64fc,
        {0x4080000000000000, 0x40862E42FEFA39F0, 0x40874910D52D3052, 0x40A0000000000000, 0x7FF0000000000000,
         0x7FF8000000000000, 0x0010000000000000, 2},
        {0x4080000000000000, 0x3FF921FB54442D18, 0x7FF0000000000000, 0x7FF8000000000000, 0x0010000000000000, 2});
}

// ---------------------------------------------------------------------------------------------------------------------
// Special values: one table for both types, by Real64 patterns whose values and payloads fit Real32

struct Cell {
    std::uint64_t a, b, re, im;
};

constexpr std::uint64_t zero = 0, minusZero = 0x8000000000000000, one = 0x3FF0000000000000, two = 0x4000000000000000,
                        minusTwo = 0xC000000000000000, five = 0x4014000000000000, inf = 0x7FF0000000000000,
                        minusInf = 0xFFF0000000000000, large = 0x40A7700000000000 /* 3000 */,
                        minusLarge = 0xC0A7700000000000, defaultNaN = 0xFFF8000000000000, quiet = 0x7FF8ABCDE0000000,
                        signalling = 0xFFF4123420000000, quieted = 0xFFFC123420000000, other = 0x7FF8000020000000;
constexpr std::uint64_t tiny = 1, minusTiny = 0x8000000000000001;  // the smallest subnormal of either type

constexpr Cell cells[] = {
    // a infinite
    {inf, zero, inf, zero},
    {inf, minusZero, inf, minusZero},
    {inf, one, inf, inf},
    {inf, two, minusInf, inf},
    {inf, minusTwo, minusInf, minusInf},
    {inf, five, inf, minusInf},
    {inf, tiny, inf, inf},
    {inf, minusTiny, inf, minusInf},
    {inf, inf, inf, defaultNaN},
    {inf, minusInf, inf, defaultNaN},
    {inf, quiet, inf, quiet},
    {inf, signalling, inf, quieted},
    {minusInf, zero, zero, zero},
    {minusInf, minusZero, zero, minusZero},
    {minusInf, one, zero, zero},
    {minusInf, two, minusZero, zero},
    {minusInf, minusTwo, minusZero, minusZero},
    {minusInf, five, zero, minusZero},
    {minusInf, tiny, zero, zero},
    {minusInf, minusTiny, zero, minusZero},
    {minusInf, inf, zero, zero},
    {minusInf, minusInf, zero, minusZero},
    {minusInf, quiet, zero, zero},
    {minusInf, signalling, zero, zero},
    // a a NaN
    {quiet, zero, quiet, zero},
    {quiet, minusZero, quiet, minusZero},
    {signalling, zero, quieted, zero},
    {signalling, minusZero, quieted, minusZero},
    {quiet, one, quiet, quiet},
    {quiet, minusTwo, quiet, quiet},
    {quiet, tiny, quiet, quiet},
    {signalling, two, quieted, quieted},
    {signalling, minusTiny, quieted, quieted},
    {quiet, inf, quiet, quiet},
    {quiet, minusInf, quiet, quiet},
    {signalling, inf, quieted, quieted},
    {quiet, other, quiet, other},
    {other, signalling, other, quieted},
    // a finite, b not
    {zero, inf, defaultNaN, defaultNaN},
    {minusZero, minusInf, defaultNaN, defaultNaN},
    {zero, quiet, quiet, quiet},
    {minusZero, signalling, quieted, quieted},
    {one, inf, defaultNaN, defaultNaN},
    {minusTwo, minusInf, defaultNaN, defaultNaN},
    {tiny, inf, defaultNaN, defaultNaN},
    {minusTiny, quiet, quiet, quiet},
    {two, quiet, quiet, quiet},
    {large, signalling, quieted, quieted},
    {minusLarge, inf, defaultNaN, defaultNaN},
    // results beyond every type
    {large, one, inf, inf},
    {large, two, minusInf, inf},
    {large, minusTwo, minusInf, minusInf},
    {large, five, inf, minusInf},
    {large, tiny, inf, inf},
    {large, minusTiny, inf, minusInf},
    {large, zero, inf, zero},
    {large, minusZero, inf, minusZero},
    {minusLarge, one, zero, zero},
    {minusLarge, two, minusZero, zero},
    {minusLarge, minusTwo, minusZero, minusZero},
    {minusLarge, five, zero, minusZero},
    {minusLarge, tiny, zero, zero},
    {minusLarge, minusTiny, zero, minusZero},
    {minusLarge, zero, zero, zero},
    {minusLarge, minusZero, zero, minusZero},
};

std::uint64_t as64(std::uint64_t pattern) { return pattern; }

std::uint32_t as32(std::uint64_t pattern) {
    const auto sign = static_cast<std::uint32_t>(pattern >> 32) & 0x80000000;
    const std::uint64_t magnitude = pattern & ~minusZero;
    if (magnitude <= 1) return sign | static_cast<std::uint32_t>(magnitude);
    const auto fraction = static_cast<std::uint32_t>(magnitude >> 29) & 0x7FFFFF;
    const auto exponent = static_cast<std::uint32_t>(magnitude >> 52);
    return sign | (exponent == 0x7FF ? 0xFF : exponent - 1023 + 127) << 23 | fraction;
}

template <class Z, class Convert>
void expectCells(std::initializer_list<Routine<Z>> routines, const Convert& convert) {
    const Z filler{PartOf<Z>(1), PartOf<Z>(-2)};
    for (const Cell& cell : cells)
        for (const Routine<Z> f : routines)
            expectEverywhere<Z>(f, fromPatterns<Z>(convert(cell.a), convert(cell.b)), filler,
                                fromPatterns<Z>(convert(cell.re), convert(cell.im)));
}

TEST(Exp, ComplexSpecialValues) {
    expectCells<Complex32>({oktsExp_32fc_A11, oktsExp_32fc_A21, oktsExp_32fc_A24}, as32);
    expectCells<Complex64>({oktsExp_64fc_A26, oktsExp_64fc_A50, oktsExp_64fc_A53}, as64);
}

// The block kernels compute the imaginary part of a real argument; the written steps hand its zero on.
TEST(Exp, ComplexImaginaryZeros) {
    const auto imaginary = [](auto f, auto z) { return asBits(alone<decltype(z)>(f, z).value.im); };
    for (const float a : {1.0f, -3.0f, 0.0f}) {
        EXPECT_EQ(imaginary(oktsExp_32fc_A11, Complex32{a, 0.0f}), 0x00000000u);
        EXPECT_EQ(imaginary(oktsExp_32fc_A11, Complex32{a, -0.0f}), 0x80000000u);
        EXPECT_EQ(imaginary(oktsExp_32fc_A24, Complex32{a, 0.0f}), 0x00000000u);
        EXPECT_EQ(imaginary(oktsExp_32fc_A24, Complex32{a, -0.0f}), 0x00000000u);
        EXPECT_EQ(imaginary(oktsExp_64fc_A53, Complex64{a, 0.0}), zero);
        EXPECT_EQ(imaginary(oktsExp_64fc_A53, Complex64{a, -0.0}), zero);
    }
    for (const float a : {88.0f, -95.0f}) {
        EXPECT_EQ(imaginary(oktsExp_32fc_A11, Complex32{a, 0.0f}), 0x00000000u);
        EXPECT_EQ(imaginary(oktsExp_32fc_A11, Complex32{a, -0.0f}), 0x80000000u);
    }
    for (const double a : {512.0, -600.0}) {
        EXPECT_EQ(imaginary(oktsExp_32fc_A24, Complex32{static_cast<float>(a), -0.0f}), 0x80000000u);
        EXPECT_EQ(imaginary(oktsExp_64fc_A53, Complex64{a, -0.0}), minusZero);
        EXPECT_EQ(imaginary(oktsExp_64fc_A53, Complex64{a, 0.0}), zero);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Which path an element takes

// The written steps round the exact value to Real64 and then to Real32, which tells them from the single block kernel.
TEST(Exp, ComplexBoundsOfTheSingleBlockKernelAreInRange) {
    // e^87.3365478515625 by the block kernel, and one Real32 further by the written steps.
    const auto at = [](std::uint32_t re, std::uint32_t im) {
        return alone<Complex32>(oktsExp_32fc_A11, fromPatterns<Complex32>(re, im)).value;
    };
    const auto exactly = [](std::uint32_t re, std::uint32_t im) {
        const double a = bits32(re), b = bits32(im), e = std::exp(a);
        return Complex32{static_cast<float>(e * std::cos(b)), static_cast<float>(e * std::sin(b))};
    };
    int different = 0;
    for (std::uint32_t i = 0; i < 64; ++i) {
        const std::uint32_t im = 0x3F800000 + 0x8000 * i;
        different += at(0x42AEAC50, im).re != exactly(0x42AEAC50, im).re;
        EXPECT_TRUE(sameParts(at(0x42AEAC51, im), exactly(0x42AEAC51, im))) << i;
    }
    EXPECT_GT(different, 10);
    different = 0;
    for (std::uint32_t i = 0; i < 64; ++i) {
        const std::uint32_t re = 0x3F800000 + 0x8000 * i;
        different += at(re, 0x461C4000).re != exactly(re, 0x461C4000).re;
        EXPECT_TRUE(sameParts(at(re, 0x461C4001), exactly(re, 0x461C4001))) << i;
    }
    EXPECT_GT(different, 10);
}

TEST(Exp, ComplexConjugates) {
    Random random(11);
    for (int round = 0; round < 20000; ++round) {
        const Complex32 z = single.ordinary(random);
        const Complex64 w = whole.ordinary(random);
        for (const Routine<Complex32> f : {oktsExp_32fc_A11, oktsExp_32fc_A24}) {
            const Complex32 up = alone<Complex32>(f, z).value, down = alone<Complex32>(f, Complex32{z.re, -z.im}).value;
            EXPECT_EQ(up.re, down.re) << z.re << ' ' << z.im;
            EXPECT_EQ(up.im, -down.im) << z.re << ' ' << z.im;
        }
        const Complex64 up = alone<Complex64>(oktsExp_64fc_A53, w).value;
        const Complex64 down = alone<Complex64>(oktsExp_64fc_A53, Complex64{w.re, -w.im}).value;
        EXPECT_EQ(up.re, down.re) << w.re << ' ' << w.im;
        EXPECT_EQ(up.im, -down.im) << w.re << ' ' << w.im;
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Flags

TEST(Exp, ComplexSubnormalPartsRaiseUnderflow) {
    const auto raised32 = [](Routine<Complex32> f, float a, float b) {
        return flagsAlone<Complex32>(f, Complex32{a, b}) & flagUnderflow;
    };
    const auto raised64 = [](double a, double b) {
        return flagsAlone<Complex64>(oktsExp_64fc_A53, Complex64{a, b}) & flagUnderflow;
    };
    for (const Routine<Complex32> f : {oktsExp_32fc_A11, oktsExp_32fc_A24}) {
        EXPECT_NE(raised32(f, -90.0f, 1.0f), 0u);   // both parts
        EXPECT_NE(raised32(f, -80.0f, 1e-6f), 0u);  // the imaginary part, in the block
        EXPECT_NE(raised32(f, -1.0f, 1e-40f), 0u);
        EXPECT_EQ(raised32(f, -80.0f, 1.0f), 0u);
    }
    EXPECT_NE(raised32(oktsExp_32fc_A11, -88.0f, 1.0f), 0u);
    EXPECT_NE(raised64(-710.0, 1.0), 0u);
    EXPECT_NE(raised64(-700.0, 1e-5), 0u);
    EXPECT_EQ(raised64(-700.0, 1.0), 0u);
    EXPECT_EQ(raised64(-400.0, 1.0), 0u);
}

// In range, the flags are those of the steps one by one, under every MXCSR.
template <class Z>
void expectModelFlags(Routine<Z> f, Routine<Z> model, std::type_identity_t<Filling<Z>> filling) {
    using T = PartOf<Z>;
    Random random(31);
    Z src[9], dst[9];
    for (const std::int32_t len : {9, 1})
        for (int round = 0; round < 300; ++round) {
            for (Z& z : src) {
                z = filling.ordinary(random);
                if (round % 4 == 0) {  // subnormals and the smallest normal numbers
                    const PatternOf<T> pattern = static_cast<PatternOf<T>>(random.bits()) >> (sizeof(T) == 4 ? 7 : 10);
                    z.im = std::bit_cast<T>(pattern);
                }
            }
            underEveryMxcsr([&] {
                const std::uint32_t control = _mm_getcsr();
                const std::uint32_t expected = flagsRaised([&] { model(src, dst, len); }, control);
                const std::uint32_t actual = flagsRaised([&] { f(src, dst, len); }, control);
                ASSERT_EQ(actual, expected)
                    << std::hex << asBits(src[0].re) << ' ' << asBits(src[0].im) << " MXCSR " << control;
            });
        }
}

TEST(Exp, ComplexBlocksRaiseTheFlagsOfTheModel) {
    expectModelFlags<Complex32>(oktsExp_32fc_A11, model::Exp_32fc_A11, single);
    expectModelFlags<Complex32>(oktsExp_32fc_A24, model::Exp_32fc_A24, wide);
    expectModelFlags<Complex64>(oktsExp_64fc_A53, model::Exp_64fc, whole);
}

TEST(Exp, ComplexQuietNaNsAndInfinitiesBesideOrdinaryPartsRaiseNothingInTheKernelsInReal64) {
    const double nan = bits64(quiet), infinity = bits64(inf);
    for (const Complex64 z : {Complex64{nan, 1.0}, Complex64{1.0, nan}, Complex64{nan, nan}, Complex64{infinity, 1.0},
                              Complex64{-infinity, infinity}}) {
        EXPECT_EQ(flagsAlone<Complex64>(oktsExp_64fc_A53, z) & flagInvalid, 0u) << z.re << ' ' << z.im;
        const Complex32 narrow{static_cast<float>(z.re), static_cast<float>(z.im)};
        EXPECT_EQ(flagsAlone<Complex32>(oktsExp_32fc_A24, narrow) & flagInvalid, 0u) << z.re << ' ' << z.im;
    }
}

// The block's steps see the element before it is computed once more.
TEST(Exp, ComplexElementsBeyondTheBlocksRangeInSinglePrecisionLeaveTheFlagsOfItsSteps) {
    const auto flags = [](auto f, Complex32 z) { return flagsAlone<Complex32>(f, z) & (flagOverflow | flagInvalid); };
    for (const auto f : {oktsExp_32fc_A11, oktsExp_32fc_A21}) {
        EXPECT_EQ(flags(f, {1.0F, 1e24F}), flagOverflow);
        EXPECT_EQ(flags(f, {1.0F, 20000.0F}), 0u);
        EXPECT_EQ(flags(f, {HUGE_VALF, 1.0F}), flagInvalid);
        EXPECT_EQ(flags(f, {-HUGE_VALF, 0.0F}), flagInvalid);
    }
    EXPECT_EQ(flags(oktsExp_32fc_A24, {1.0F, 1e24F}), 0u);
    EXPECT_EQ(flags(oktsExp_32fc_A24, {HUGE_VALF, 1.0F}), 0u);
}

}  // namespace
}  // namespace okt::test
