// Complex logarithms, natural and decimal.
#include "tests/models/complex_log_model.h"
#include "tests/models/complex_special_tables.h"

#include "complex_blocks.h"

#include "complex/ln_element.h"
#include "oktvm.h"

namespace okt::test {
namespace {

constexpr ComplexRoutine<Complex32> lnA11 = oktsLn_32fc_A11, lnA21 = oktsLn_32fc_A21, lnA24 = oktsLn_32fc_A24;
constexpr ComplexRoutine<Complex64> ln64 = oktsLn_64fc_A53;

// Around the unit circle: s = |z|^2 from 0.9 to 1.1, or much closer to 1.
template <class Z>
Z nearUnitCircle(Random& random) {
    const double angle = random.between(-pi, pi);
    const double modulus =
        1 + random.between(-0.05, 0.05) * (random.below(2) == 0 ? 1.0 : std::exp2(-random.between(0, 40)));
    return {static_cast<PartOf<Z>>(modulus * std::cos(angle)), static_cast<PartOf<Z>>(modulus * std::sin(angle))};
}
template <class Z>
Z anyOrNearUnitCircle(Random& random) {
    return random.below(3) == 0 ? usualComplex<Z, -3, 3>(random) : nearUnitCircle<Z>(random);
}

// ---------------------------------------------------------------------------------------------------------------------
// Against models and the written steps

TEST(ComplexLn, A11AgreesWithTheModel) {
    expectModel<Complex32, Complex32>("oktsLn_32fc_A11", model::Ln_32fc_A11,
                                      {usualComplex<Complex32, -126, 127>, unusualComplex<Complex32>});
    expectModel<Complex32, Complex32>("oktsLn_32fc_A11", model::Ln_32fc_A11,
                                      {anyOrNearUnitCircle<Complex32>, unusualComplex<Complex32>});
}

TEST(ComplexLn, A21AgreesWithTheModel) {
    expectModel<Complex32, Complex32>("oktsLn_32fc_A21", model::Ln_32fc_A21,
                                      {usualComplex<Complex32, -127, 127>, unusualComplex<Complex32>});
    expectModel<Complex32, Complex32>("oktsLn_32fc_A21", model::Ln_32fc_A21,
                                      {anyOrNearUnitCircle<Complex32>, unusualComplex<Complex32>});
}

// A21 alone works under the caller's rounding mode and flushing; there a subnormal part can count as a zero.
TEST(ComplexLn, A21AgreesWithTheModelUnderEveryMxcsr) {
    const std::vector<Complex32> usual = manyElements<Complex32>(601, -40, 40, false);
    const std::vector<Complex32> special = manyElements<Complex32>(603, -127, 127, true);
    std::vector<Complex32> circle(601);
    Random random(7);
    for (Complex32& z : circle) z = anyOrNearUnitCircle<Complex32>(random);
    underEveryMxcsr([&] {
        for (const auto& src : {usual, special, circle})
            EXPECT_TRUE(
                sameArrays(src, resultsOf<Complex32>(lnA21, src), resultsOf<Complex32>(model::Ln_32fc_A21, src)));
    });
}

TEST(ComplexLn, A21UnderDenormalsAreZeroTakesASubnormalPartForAZeroOfItsSign) {
    for (const double tiny : {0x1p-149, -0x1p-149, 0x0.fffffep-126, -0x0.fffffep-126})
        for (const double other : {2.0, -2.0}) {
            const auto inBoth = [&](Complex32 z, Complex32 zero) {
                const Complex32 wanted = resultOf(lnA21, zero);
                const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
                std::vector<Complex32> src(placesArrayLength, z);
                for (const Complex32& w : resultsOf<Complex32>(lnA21, src))
                    EXPECT_TRUE(sameElement(w, wanted)) << text(z.re, z.im);
            };
            inBoth(element<Complex32>(other, tiny), element<Complex32>(other, withSignOf(0.0, tiny)));
            inBoth(element<Complex32>(tiny, other), element<Complex32>(withSignOf(0.0, tiny), other));
            inBoth(element<Complex32>(tiny, tiny), element<Complex32>(withSignOf(0.0, tiny), withSignOf(0.0, tiny)));
        }
}

// What the written steps give, rounded to the type.
Complex32 byElement(Complex32 z) {
    const Complex64 w = okt::complex::lnElement({Real64{z.re}, Real64{z.im}});
    return {static_cast<Real32>(w.re), static_cast<Real32>(w.im)};
}
Complex64 byElement(Complex64 z) { return okt::complex::lnElement(z); }

// The written steps are right to half a unit of the last place.
template <class Z>
void expectCloseToElement(ComplexRoutine<Z> f, Z (*ordinary)(Random&)) {
    Random random(11);
    for (std::size_t done = 0; done < elementsToCompare(); done += 1001) {
        std::vector<Z> src(1001);
        for (Z& z : src) z = ordinary(random);
        const auto results = resultsOf<Z>(f, src);
        for (std::size_t i = 0; i < src.size(); ++i) {
            const Z wanted = byElement(src[i]);
            ASSERT_TRUE(withinOne(results[i].re, wanted.re)) << "re " << text(src[i].re, src[i].im);
            ASSERT_TRUE(withinOne(results[i].im, wanted.im)) << "im " << text(src[i].re, src[i].im);
        }
    }
}

TEST(ComplexLn, A24IsCloseToTheWrittenSteps) {
    expectCloseToElement<Complex32>(lnA24, usualComplex<Complex32, -126, 127>);
    expectCloseToElement<Complex32>(lnA24, anyOrNearUnitCircle<Complex32>);
}
TEST(ComplexLn, Complex64IsCloseToTheWrittenSteps) {
    expectCloseToElement<Complex64>(ln64, usualComplex<Complex64, -460, 460>);
    expectCloseToElement<Complex64>(ln64, anyOrNearUnitCircle<Complex64>);
    expectCloseToElement<Complex64>(ln64, usualComplex<Complex64, -1, 0>);
}

// ---------------------------------------------------------------------------------------------------------------------
// Where a routine changes its course

TEST(ComplexLn, LimitsOfTheBlockRoutinesRanges) {
    const std::initializer_list<double> partners = {0.0, 0x1p-149,       0x1p-126,       0x1p-125, 0.6,
                                                    1.0, 0x1.fffffep122, 0x1.fffffep127, inf};
    aroundLimits<Complex32>({0x00000002, 0x01000000, 0x7D000000, 0x7F800000}, partners,
                            [](Complex32 z) { expectModelAtEveryPlace<Complex32>(lnA11, model::Ln_32fc_A11, z); });
    aroundLimits<Complex32>({0x00000002, 0x00800000, 0x7F7FFFFF, 0x7F800000}, partners,
                            [](Complex32 z) { expectModelAtEveryPlace<Complex32>(lnA21, model::Ln_32fc_A21, z); });
}

// Beyond its range an element gets the bits of the written steps, up to there a result close to them.
template <class Z>
void expectElementOutOfRange(ComplexRoutine<Z> f, PartPattern<Z> first, PartPattern<Z> end,
                             std::initializer_list<PartPattern<Z>> limits, std::initializer_list<double> partners) {
    aroundLimits<Z>(limits, partners, [&](Z z) {
        const auto outside = [&](auto part) {
            const auto magnitude = static_cast<PartPattern<Z>>(asBits(part) << 1 >> 1);
            return magnitude < first || magnitude >= end;
        };
        const Z wanted = byElement(z);
        for (std::size_t at = 0; at <= placesArrayLength; ++at) {
            std::vector<Z> src(at == placesArrayLength ? 1 : placesArrayLength, element<Z>(0.75, -1.4375));
            const std::size_t place = at % src.size();
            std::memcpy(&src[place], &z, sizeof z);
            const Z actual = resultsOf<Z>(f, src)[place];
            if (outside(z.re) || outside(z.im)) {
                EXPECT_TRUE(sameElement(actual, wanted)) << text(z.re, z.im) << " at " << at;
            } else {
                EXPECT_TRUE(withinOne(actual.re, wanted.re) && withinOne(actual.im, wanted.im)) << text(z.re, z.im);
            }
        }
    });
}

TEST(ComplexLn, LimitsOfTheRangesOfA24AndComplex64) {
    expectElementOutOfRange<Complex32>(lnA24, 0x00800000, 0x7F800000, {0x00000002, 0x00800000, 0x7F7FFFFD},
                                       {0.0, 0x1p-126, 0.6, 1.0, 0x1.fffffep127});
    expectElementOutOfRange<Complex64>(ln64, 0x23D0000000000000, 0x5C10000000000000,
                                       {0x0000000000000002, 0x0010000000000000, 0x23D0000000000000, 0x5C10000000000000},
                                       {0.0, 0x1p-450, 0.6, 1.0, 0x1.fffffffffffffp449, 0x1p450});
}

// |z|^2 crosses 0.97 and 1.03 between neighbouring numbers, in every octant.
template <class Z, class Check>
void aroundNearBranch(const Check& check) {
    for (const double s : {0.97, 1.03})
        for (const double other : {0x1p-20, 0.25, 0.6875}) {
            const auto part = static_cast<PartOf<Z>>(std::sqrt(s - other * other));
            aroundLimits<Z>({asBits(part)}, {other}, check);
        }
}

TEST(ComplexLn, NearAndFarBranch) {
    aroundNearBranch<Complex32>([](Complex32 z) {
        expectModelAtEveryPlace<Complex32>(lnA11, model::Ln_32fc_A11, z);
        expectModelAtEveryPlace<Complex32>(lnA21, model::Ln_32fc_A21, z);
        const Complex32 w = resultOf(lnA24, z), wanted = byElement(z);
        EXPECT_TRUE(withinOne(w.re, wanted.re) && withinOne(w.im, wanted.im)) << text(z.re, z.im);
    });
    aroundNearBranch<Complex64>([](Complex64 z) {
        const Complex64 w = resultOf(ln64, z), wanted = byElement(z);
        EXPECT_TRUE(withinOne(w.re, wanted.re) && withinOne(w.im, wanted.im)) << text(z.re, z.im);
    });
}

// |z| = 1 as closely as the type has it: the real part is what the squares really add up to.
TEST(ComplexLn, OnTheUnitCircle) {
    // 0.6^2 + 0.8^2 is a little more than 1 with these parts: 2^-55.26.
    const Complex64 w = resultOf(ln64, {0.6, 0.8});
    EXPECT_EQ(w.re, byElement(Complex64{0.6, 0.8}).re);
    EXPECT_GT(std::fabs(w.re), 0x1p-60);
    EXPECT_LT(std::fabs(w.re), 0x1p-53);
    const auto expectElements = [](auto f, auto z) {
        const auto result = resultOf<decltype(z)>(f, z), wanted = byElement(z);
        EXPECT_TRUE(withinOne(result.re, wanted.re)) << text(z.re, z.im);
        EXPECT_TRUE(withinOne(result.im, wanted.im)) << text(z.re, z.im);
    };
    for (const double sign : {1.0, -1.0})
        for (const double a :
             {0.6, 0.8, 0.28, 0.96, 5.0 / 13, 12.0 / 13, 8.0 / 17, 15.0 / 17, 0x1p-20, 0x1.fffffffffffffp-1}) {
            const double b = std::sqrt((1 - a) * (1 + a)) * sign;
            expectElements(ln64, Complex64{a, b});
            expectElements(ln64, Complex64{-b, a});
            expectElements(lnA24, Complex32{static_cast<Real32>(a), static_cast<Real32>(b)});
            expectElements(lnA24, Complex32{static_cast<Real32>(b), static_cast<Real32>(-a)});
        }
}

TEST(ComplexLn, A11OfARealOneIsExact) {
    for (const bool minus : {false, true}) {
        const Complex32 z = element<Complex32>(1.0, signedBy(0.0, minus));
        for (std::size_t len = 1; len < 10; ++len)
            for (const Complex32& w : resultsOf<Complex32>(lnA11, std::vector<Complex32>(len, z))) {
                EXPECT_TRUE(sameBits(w.re, 0x00000000));
                EXPECT_TRUE(sameBits(w.im, minus ? 0x80000000 : 0x00000000));
            }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Special values

constexpr double log10E = 0x1.bcb7b1526e50ep-2;

TEST(ComplexLn, SpecialValues) { expectCells("Ln", logCells<false>); }
TEST(ComplexLog10, SpecialValues) { expectCells("Log10", logCells<true>); }

// pi above the cut and on it from above, -pi below.
TEST(ComplexLn, BothSidesOfTheCut) {
    expectBoth("Ln", -1, 0.0, exactly(0.0), exactly(pi));
    expectBoth("Ln", -1, -0.0, exactly(0.0), exactly(-pi));
    for (const double x : {-0.5, -3.0})
        for (const double sign : {1.0, -1.0}) {
            expectBoth("Ln", x, 0.0 * sign, about(std::log(-x)), about(pi * sign));
            expectBoth("Ln", x, 0x1p-149 * sign, about(std::log(-x)), about(pi * sign));
        }
}
TEST(ComplexLog10, BothSidesOfTheCutAndPowersOfTen) {
    for (const double sign : {1.0, -1.0}) {
        expectBoth("Log10", -1, 0.0 * sign, exactly(0.0), about(pi * log10E * sign));
        expectBoth("Log10", 1, 0.0 * sign, exactly(0.0), zeroWithSign(sign < 0));
        expectBoth("Log10", 1000 * sign, 0.0, about(3), about(sign < 0 ? pi * log10E : 0.0));
        expectBoth("Log10", 0.0, 10 * sign, about(1), about(pi / 2 * log10E * sign));
        expectBoth("Log10", 3, 4 * sign, about(0.69897000433601880479), about(0.9272952180016122324 * log10E * sign));
        expectBoth("Log10", -60, 80 * sign, about(2), about((pi - 0.9272952180016122324) * log10E * sign));
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Properties

// f(conj z) = conj f(z); the angle of -conj z is what is left of pi.
template <class Z>
void expectConjugateSymmetry(ComplexRoutine<Z> f, int low, int high) {
    std::vector<Z> src = manyElements<Z>(4003, low, high, true);
    for (const Z& z : manyElements<Z>(1001, -2, 1, false, 9)) src.push_back(z);
    std::erase_if(src, [](const Z& z) { return z.re != z.re || z.im != z.im; });
    std::vector<Z> mirrored = src;
    const auto flip = [](auto part) {
        return std::bit_cast<PartOf<Z>>(
            static_cast<PartPattern<Z>>(asBits(part) ^ PartPattern<Z>{1} << (8 * sizeof part - 1)));
    };
    for (Z& z : mirrored) z.im = flip(z.im);
    const auto plain = resultsOf<Z>(f, src), mirror = resultsOf<Z>(f, mirrored);
    for (std::size_t i = 0; i < src.size(); ++i) {
        EXPECT_TRUE(sameBits(mirror[i].re, asBits(plain[i].re))) << text(src[i].re, src[i].im);
        EXPECT_TRUE(sameBits(mirror[i].im, asBits(flip(plain[i].im)))) << text(src[i].re, src[i].im);
    }
}
TEST(ComplexLn, ConjugateSymmetry) {
    for (const auto f : {lnA11, lnA21, lnA24}) expectConjugateSymmetry<Complex32>(f, -127, 127);
    expectConjugateSymmetry<Complex64>(ln64, -1023, 1023);
    expectConjugateSymmetry<Complex64>(ln64, -440, 440);
}

TEST(ComplexLog10, IsALoopOverTheElement) { expectElementLoop("Log10", {}, 127); }

TEST(ComplexLn, DenormalsAreZeroInTheGuardedRoutinesOfComplex32) {
    const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
    for (const auto f : {lnA11, lnA24})
        for (const bool minus : {false, true}) {
            const Complex32 w = resultOf(f, element<Complex32>(-2.0, signedBy(0x1p-140, minus)));
            EXPECT_TRUE(sameBits(w.im, minus ? 0xC0490FDB : 0x40490FDB));
            const Complex32 v = resultOf(f, element<Complex32>(2.0, signedBy(0x1p-140, minus)));
            EXPECT_TRUE(sameBits(v.im, minus ? 0x80000000 : 0x00000000));
            EXPECT_EQ(resultOf(f, element<Complex32>(0x1p-140, signedBy(0x1p-140, minus))).re, -inf);
        }
}

TEST(ComplexLn, FlagsOfPackedElementsAreTheModels) {
    Random random(8);
    for (int round = 0; round < 500; ++round) {
        const Complex32 z =
            round % 2 == 0 ? usualComplex<Complex32, -120, 120>(random) : nearUnitCircle<Complex32>(random);
        EXPECT_EQ(flagsOf<Complex32>(lnA11, z), flagsOf<Complex32>(model::Ln_32fc_A11, z)) << patterns(z);
        underEveryMxcsr([&] {
            const std::uint32_t control = _mm_getcsr();
            EXPECT_EQ(flagsOf<Complex32>(lnA21, z, control), flagsOf<Complex32>(model::Ln_32fc_A21, z, control))
                << patterns(z);
        });
    }
}

TEST(ComplexLn, Flags) {
    for (const auto f : {lnA11, lnA21, lnA24}) EXPECT_EQ(flagsOf<Complex32>(f, {1.3F, 2.7F}), flagInexact);
    EXPECT_EQ(flagsOf<Complex64>(ln64, {1.3, 2.7}), flagInexact);
    // Parts of very different size: nothing is lost below the normal numbers on the way.
    EXPECT_EQ(flagsOf<Complex64>(ln64, {0x1p440, 0x1p-440}), flagInexact);
    EXPECT_EQ(flagsOf<Complex64>(ln64, {0x1p-440, 0x1p440}), flagInexact);
    EXPECT_EQ(flagsOf<Complex32>(lnA24, {0x1p120F, 0x1p100F}), flagInexact);
    // A subnormal angle.
    EXPECT_TRUE(flagsOf<Complex64>(ln64, {4.0, 0x1p-1072}) & flagUnderflow);
    EXPECT_TRUE(flagsOf<Complex32>(lnA24, {4.0F, 0x1p-140F}) & flagUnderflow);
    EXPECT_TRUE(flagsOf<Complex32>(lnA21, {4.0F, 0x1p-140F}) & flagUnderflow);
    // Flags that a guard's restore takes back.
    EXPECT_EQ(flagsOf<Complex64>(ln64, {1.3, 2.7}, defaultMxcsr | roundUp), 0U);
    EXPECT_EQ(flagsOf<Complex32>(lnA11, {1.3F, 2.7F}, defaultMxcsr | flushToZero), 0U);
    EXPECT_EQ(flagsOf<Complex32>(lnA21, {1.3F, 2.7F}, defaultMxcsr | roundUp), flagInexact);
    // A11 and A21 put every element through their blocks' steps, in which a NaN is compared and two zeros are divided.
    EXPECT_TRUE(flagsOf<Complex32>(lnA11, element<Complex32>(quietNaN(), 1.0)) & flagInvalid);
    EXPECT_TRUE(flagsOf<Complex32>(lnA21, element<Complex32>(quietNaN(), 1.0)) & flagInvalid);
    EXPECT_TRUE(flagsOf<Complex32>(lnA21, {0.0F, 0.0F}) & flagInvalid);
    // The routines that keep flagged elements out of their arithmetic raise nothing over a quiet NaN, and over a zero
    // what the written steps raise on the x87 unit.
    for (const auto& [re, im] :
         {std::pair{quietNaN(), 1.0}, {1.0, quietNaN()}, {inf, -3.0}, {-inf, inf}, {0.0, -0.0}, {-0.0, 1.0}}) {
        EXPECT_EQ(flagsOf<Complex64>(ln64, element<Complex64>(re, im)) & ~flagInexact, 0U) << text(re, im);
        EXPECT_EQ(flagsOf<Complex32>(lnA24, element<Complex32>(re, im)) & ~flagInexact, 0U) << text(re, im);
    }
    EXPECT_TRUE(flagsOf<Complex64>(ln64, element<Complex64>(signallingNaN(), 1.0)) & flagInvalid);
}

}  // namespace
}  // namespace okt::test
