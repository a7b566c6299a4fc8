// Complex square root.
#include "tests/models/complex_special_tables.h"
#include "tests/models/complex_sqrt_model.h"

#include "complex_blocks.h"
#include "oktvm.h"

namespace okt::test {
namespace {

constexpr ComplexRoutine<Complex32> sqrt32 = oktsSqrt_32fc_A24;
constexpr ComplexRoutine<Complex64> sqrt64 = oktsSqrt_64fc_A53;

TEST(ComplexSqrt, AgreesWithTheModel) {
    expectModel<Complex32, Complex32>("oktsSqrt_32fc_A24", model::Sqrt_32fc,
                                      {usualComplex<Complex32, -126, 127>, unusualComplex<Complex32>});
    expectModel<Complex32, Complex32>("oktsSqrt_32fc_A11", model::Sqrt_32fc,
                                      {usualComplex<Complex32, -3, 3>, unusualComplex<Complex32>});
}

TEST(ComplexSqrt, AgreesWithTheModelUnderEveryMxcsr) {
    const std::vector<Complex32> usual = manyElements<Complex32>(601, -40, 40, false);
    const std::vector<Complex32> special = manyElements<Complex32>(603, -126, 127, true);
    underEveryMxcsr([&] {
        for (const auto& src : {usual, special})
            EXPECT_TRUE(
                sameArrays(src, resultsOf<Complex32>(sqrt32, src), resultsOf<Complex32>(model::Sqrt_32fc, src)));
    });
}

// What the packed steps do to the largest and smallest numbers, and the limits of the range, on which the paths differ
// in last bits.
TEST(ComplexSqrt, LimitsOfThePackedRange) {
    aroundLimits<Complex32>({0x00000000, 0x00000002, 0x007FFFFF, 0x00800000, 0x7F7FFFFF, 0x7F800000, 0x7FC00000},
                            {0.0, 0x1p-149, 0x1p-126, 0x1.8p-126, 0.3, 1.0, 0x1.fffffep127, inf},
                            [](Complex32 z) { expectModelAtEveryPlace<Complex32>(sqrt32, model::Sqrt_32fc, z); });
}

TEST(ComplexSqrt, SpecialValues) { expectCells("Sqrt", sqrtCells); }

TEST(ComplexSqrt, ExactRoots) {
    expectBoth("Sqrt", -4, 0.0, exactly(0.0), exactly(2));
    expectBoth("Sqrt", -4, -0.0, exactly(0.0), exactly(-2));
    expectBoth("Sqrt", 4, 0.0, exactly(2), exactly(0.0));
    expectBoth("Sqrt", 4, -0.0, exactly(2), exactly(-0.0));
    expectBoth("Sqrt", -0.0, -0.0, exactly(0.0), exactly(-0.0));
    expectBoth("Sqrt", 0.0, 0.0, exactly(0.0), exactly(0.0));
    expectBoth("Sqrt", 0.0, 2, exactly(1), exactly(1));
    expectBoth("Sqrt", 0.0, -8, exactly(2), exactly(-2));
    // (2 + i)^2, (1 + 2i)^2 and their like
    for (const double sign : {1.0, -1.0}) {
        expectBoth("Sqrt", 3, 4 * sign, exactly(2), exactly(sign));
        expectBoth("Sqrt", -3, 4 * sign, exactly(1), exactly(2 * sign));
        expectBoth("Sqrt", 5, 12 * sign, exactly(3), exactly(2 * sign));
        expectBoth("Sqrt", -5, 12 * sign, exactly(2), exactly(3 * sign));
    }
}

// Next to the cut the root keeps to its side.
TEST(ComplexSqrt, BothSidesOfTheCut) {
    for (const double tiny : {0x1p-126, 0x1p-120, 0x1p-149})
        for (const double sign : {1.0, -1.0}) {
            expectBoth("Sqrt", -4, tiny * sign, about(tiny * 0.25), about(2 * sign));
            expectBoth("Sqrt", 4, tiny * sign, about(2), about(tiny * 0.25 * sign));
        }
}

// Nothing overflows or underflows on the way.
TEST(ComplexSqrt, ExtremeMagnitudes) {
    expectElement<Complex64>("Sqrt", 0x1.8p1022, 0x1p1023, about(0x1.6a09e667f3bcdp511), about(0x1.6a09e667f3bcdp510));
    expectElement<Complex64>("Sqrt", -0x0.cp-1060, 0x1p-1060, about(0x1p-531), about(0x1p-530));
    expectElement<Complex32>("Sqrt", 0x0.cp126, 0x1p126, about(0x1p63), about(0x1p62));
}

TEST(ComplexSqrt, Symmetries) {
    expectSymmetry("Sqrt", {});
    expectSameInEveryRoundingMode("Sqrt", -30, 30);
}

TEST(ComplexSqrt, FlagsOfPackedElementsAreTheModels) {
    for (const Complex32& z : manyElements<Complex32>(500, -125, 127, false, 6))
        underEveryMxcsr([&] {
            const std::uint32_t control = _mm_getcsr();
            EXPECT_EQ(flagsOf<Complex32>(sqrt32, z, control), flagsOf<Complex32>(model::Sqrt_32fc, z, control))
                << patterns(z);
        });
}

TEST(ComplexSqrt, Flags) {
    // A subnormal part of a result raises underflow, an exact one too.
    EXPECT_TRUE(flagsOf<Complex64>(sqrt64, {4.0, 0x1p-1072}) & flagUnderflow);
    EXPECT_TRUE(flagsOf<Complex32>(sqrt32, {4.0F, 0x1p-147F}) & flagUnderflow);
    EXPECT_FALSE(flagsOf<Complex64>(sqrt64, {4.0, 0x1p-1000}) & flagUnderflow);
    EXPECT_EQ(flagsOf<Complex64>(sqrt64, {-4.0, 0.0}), 0U);
    EXPECT_EQ(flagsOf<Complex64>(sqrt64, {-inf, 3.0}), 0U);
    EXPECT_EQ(flagsOf<Complex32>(sqrt32, {1.3F, 2.7F}), flagInexact);
    // The packed steps see flagged elements, too: the root of a zero meets an infinite reciprocal.
    EXPECT_TRUE(flagsOf<Complex32>(sqrt32, {0.0F, 0.0F}) & flagInvalid);
    EXPECT_EQ(flagsOf<Complex64>(sqrt64, {0.0, 0.0}), 0U);
    EXPECT_TRUE(flagsOf<Complex64>(sqrt64, element<Complex64>(1.0, signallingNaN())) & flagInvalid);
}

}  // namespace
}  // namespace okt::test
