// Hypotenuse.
#include "tests/models/hypot_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

constexpr Filling<Real32> elements32{ordinaryElement<Real32, -60, 60>, specialElement<Real32>};
constexpr Filling<Real32> wide32{ordinaryElement<Real32, -126, 127>, specialElement<Real32>};
constexpr Filling<Real64> elements64{ordinaryElement<Real64, -400, 400>, specialElement<Real64>};
constexpr Filling<Real64> wide64{ordinaryElement<Real64, -1022, 1023>, specialElement<Real64>};

TEST(Hypot, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsHypot_32f_A24", model::Hypot_32f, elements32, elements32);
        expectModel<Real64, Real64>("oktsHypot_64f_A53", model::Hypot_64f, elements64, elements64);
    });
    expectModel<Real32, Real32>("oktsHypot_32f_A24", model::Hypot_32f, wide32, wide32);
    expectModel<Real64, Real64>("oktsHypot_64f_A53", model::Hypot_64f, wide64, wide64);
}

TEST(Hypot, RaisesTheFlagsOfTheModel) {
    expectModelFlags(oktsHypot_32f_A24, model::Hypot_32f);
    expectModelFlags(oktsHypot_64f_A53, model::Hypot_64f);
}

TEST(Hypot, OnReal32TheSumOfSquaresRaisesTheFlagsOfAReal32) {
    const auto flags = [](Real32 x, Real32 y) {
        Real32 result;
        return flagsRaised([&] { oktsHypot_32f_A24(&x, &y, &result, 1); }) & (flagOverflow | flagUnderflow);
    };
    EXPECT_EQ(flags(1e20F, 1e20F), flagOverflow);
    EXPECT_EQ(flags(0x1p64F, 0.0F), flagOverflow);
    EXPECT_EQ(flags(0x1.fffffep63F, 0.0F), 0u);
    EXPECT_EQ(flags(0x1p-63F, 0.0F), 0u);
    EXPECT_EQ(flags(0x1.fffffep-64F, 0.0F), flagUnderflow);
    EXPECT_EQ(flags(1e-20F, -1e-20F), flagUnderflow);
}

// Roots at and beside a Real32 or a midpoint between two, where the processor's root
// must not stand in for the steps: multiples of Pythagorean triples, one source
// zero, and second sources that lift the first by half a unit in the last place.
TEST(Hypot, RootsBesideARoundingBoundaryAreThoseOfTheModel) {
    Random random(17);
    std::vector<Real32> src1, src2;
    for (int i = 0; i < 2000; ++i) {
        const auto scale = static_cast<Real32>(1 + random.below(1u << 20));
        src1.push_back(3 * scale);
        src2.push_back(4 * scale);
        src1.push_back(ofMagnitude<Real32>(random, -60, 60));
        src2.push_back(0.0f);
        const Real32 x = std::abs(ofMagnitude<Real32>(random, 0, 0));
        for (const double units : {0.5, 1.0, 1.5}) {
            const double sum = static_cast<double>(x) + units * 0x1p-23;
            const auto y = static_cast<Real32>(std::sqrt((sum - x) * (sum + x)));
            for (int step = -4; step <= 4; ++step) {
                src1.push_back(x);
                src2.push_back(bits32(asBits(y) + static_cast<std::uint32_t>(step)));
            }
        }
    }
    std::vector<Real32> expected(src1.size()), actual(src1.size());
    underEveryMxcsr([&] {
        model::Hypot_32f(src1.data(), src2.data(), expected.data(), static_cast<std::int32_t>(src1.size()));
        oktsHypot_32f_A24(src1.data(), src2.data(), actual.data(), static_cast<std::int32_t>(src1.size()));
        for (std::size_t i = 0; i < src1.size(); ++i)
            ASSERT_TRUE(sameBits(actual[i], asBits(expected[i]))) << src1[i] << ' ' << src2[i];
        // A block whose roots are all exact raises inexact only where the steps do.
        for (const Real32 axis : {1.0f, 2.0f, 4.0f, 3.0f, 16.0f, 0x1p-20f}) {
            std::vector<Real32> x(4, axis), y(4, 0.0f), dst(4);
            const std::uint32_t control = _mm_getcsr();
            EXPECT_EQ(flagsRaised([&] { oktsHypot_32f_A24(x.data(), y.data(), dst.data(), 4); }, control),
                      flagsRaised([&] { model::Hypot_32f(x.data(), y.data(), dst.data(), 4); }, control))
                << axis;
        }
    });
}

TEST(Hypot, SpecialValues) {
    constexpr std::uint32_t inf = 0x7F800000, minusInf = 0xFF800000, nan = 0x7FC54321, one = 0x3F800000;
    expectRows<Real32>(oktsHypot_32f_A24, 3,
                       {
                           {asBits(3.0f), asBits(4.0f), asBits(5.0f)},
                           {0, 0, 0},
                           {0x80000000, 0, 0},
                           {0x80000000, 0x80000000, 0},
                           {inf, nan, inf},
                           {nan, minusInf, inf},
                           {minusInf, one, inf},
                           {one, minusInf, inf},
                           {inf, inf, inf},
                           {nan, 0x7FE11111, nan},
                           {0x7F800001, nan, 0x7FC00001},
                           {nan, 0x7F800001, nan},
                           {nan, one, nan},
                           {0, nan, nan},
                           {0x7F7FFFFF, 0x7F7FFFFF, inf},
                           {0x00000001, 0x00000001, 0x00000001},
                           {0x00000001, 0x00000000, 0x00000001},
                           {0x00000003, 0x80000004, 0x00000005},
                       });
    constexpr std::uint64_t inf64 = 0x7FF0000000000000, nan64 = 0x7FF8ABCDE0001234;
    expectRows<Real64>(oktsHypot_64f_A53, 3,
                       {
                           {asBits(3.0), asBits(4.0), asBits(5.0)},
                           {0, 0x8000000000000000, 0},
                           {0xFFF0000000000000, nan64, inf64},
                           {nan64, inf64, inf64},
                           {nan64, 0x7FF8000000000077, nan64},
                           {0xFFF0000000000001, nan64, 0xFFF8000000000001},
                           {asBits(1e-300), asBits(1.0), asBits(1.0)},
                           {asBits(1e200), asBits(1.0), asBits(0x1p512)},
                           {0x7FEFFFFFFFFFFFFF, 0x7FEFFFFFFFFFFFFF, asBits(0x1p512)},
                           {0x0000000000000001, 0, 0x0000000000000001},
                           {0x0000000000000003, 0x0000000000000004, 0x0000000000000005},
                       });
    EXPECT_NEAR(alone(oktsHypot_64f_A53, 1e-300, 1e-300).value / 1.4142135623730951e-300, 1.0, 3e-16);
}

// Where the larger biased exponent is 500 to 511 nothing is scaled: results of sources too small to be squared stand
// near 2^-511.
TEST(Hypot, TheBandBelowTheScalingBound) {
    EXPECT_NEAR(alone(oktsHypot_64f_A53, 1e-157, 0.0).value / 1.0548e-154, 1.0, 1e-4);
    const auto withExponent = [](std::uint64_t biased) { return bits64(biased << 52); };
    EXPECT_EQ(alone(oktsHypot_64f_A53, withExponent(499), 0.0).value, withExponent(499));
    for (std::uint64_t biased = 500; biased <= 511; ++biased) {
        const Real64 result = alone(oktsHypot_64f_A53, withExponent(biased), 0.0).value;
        EXPECT_GE(result, 0x1p-512) << biased;
        EXPECT_LE(result, 0x1p-510) << biased;
        EXPECT_TRUE(sameBits(alone(oktsHypot_64f_A53, 0.0, withExponent(biased)).value, asBits(result)));
    }
    EXPECT_EQ(alone(oktsHypot_64f_A53, withExponent(512), 0.0).value, withExponent(512));
}

TEST(Hypot, TheBandAboveTheOverflowOfTheSquares) {
    const Real64 single = 1.3407807929942597e154;  // 2^512, whose square is the first to overflow
    EXPECT_EQ(alone(oktsHypot_64f_A53, single, 0.0).value, 0x1p512);
    EXPECT_LT(alone(oktsHypot_64f_A53, std::nextafter(single, 0.0), 0.0).value, 0x1p512 * (1 + 0x1p-52));
    for (const Real64 x : {9.4807519081091775e153, 1e154, 1e200, 1e308})
        EXPECT_EQ(alone(oktsHypot_64f_A53, x, x).value, 0x1p512) << x;
    const Real64 below = 9.48075190810917e153;
    EXPECT_NEAR(alone(oktsHypot_64f_A53, below, below).value / 0x1p512, 1.0, 1e-14);
    EXPECT_EQ(alone(oktsHypot_64f_A53, 1e200, 1.0).status, oktStatusOk);
}

}  // namespace
}  // namespace okt::test
