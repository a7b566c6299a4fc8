// Tangent.
#include "families/circular_checks.h"
#include "models/trig_model.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

TEST(Tan64, ZeroKeepsItsSign) {
    for (const Real64 zero : {0.0, -0.0}) {
        EXPECT_TRUE(sameBits(alone(oktsTan_64f_A53, zero).value, asBits(zero)));
        EXPECT_TRUE(sameBits(among(oktsTan_64f_A53, zero, 1.0, 17, 5).value, asBits(zero)));
        EXPECT_TRUE(sameBits(besideHuge(oktsTan_64f_A53, zero), asBits(zero)));
    }
}

TEST(Tan32, ZeroLosesItsSignOnTheMainPathAndKeepsItOnTheElementPath) {
    for (const Real32 zero : {0.0F, -0.0F}) {
        EXPECT_TRUE(sameBits(alone(oktsTan_32f_A24, zero).value, 0));
        EXPECT_TRUE(sameBits(among(oktsTan_32f_A24, zero, 1.0F, 17, 5).value, 0));
        EXPECT_TRUE(sameBits(besideHuge(oktsTan_32f_A24, zero), asBits(zero)));
    }
}

TEST(Tan64, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsTan_64f_A53);
}

TEST(Tan32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsTan_32f_A24);
}

TEST(Tan64, DoublesNextToHalfPiAreLargeWithTheRightSign) {
    expectRows<Real64>(oktsTan_64f_A53, 1.0,
                       {{0x3FF921FB54442D18, 0x434D02967C31CDB5},
                        {0x3FF921FB54442D19, 0xC33617A15494767A},
                        {0xBFF921FB54442D18, 0xC34D02967C31CDB5},
                        {0xBFF921FB54442D19, 0x433617A15494767A}});
}

TEST(Tan32, RangeTestSendsBothElementsToTheElementPathAbove10000) { expectElementPathAbove10000<2>(oktsTan_32f_A24); }

TEST(Tan32, LastElementGoesAlone) {
    const Telltale<Real32> telltale(oktsTan_32f_A24);
    EXPECT_TRUE(takesElementPath(oktsTan_32f_A24, telltale, 1e6F, 5, 4, 4, 4));
    EXPECT_TRUE(takesElementPath(oktsTan_32f_A24, telltale, 1e6F, 5, 3, 2, 3));
    EXPECT_TRUE(takesElementPath(oktsTan_32f_A24, telltale, 1e6F, 6, 5, 4, 5));
    EXPECT_TRUE(takesElementPath(oktsTan_32f_A24, telltale, 1e6F, 7, 3, 2, 3));
}

// From 12800 up the reduction comes first, also where the main path's steps would still work.
TEST(Tan64, AgreesWithTheModelAroundItsThresholds) {
    for (const Real64 threshold : {12800.0, 0x1p-252, 0x1p17, 0x1p23, 0x1p30, bits64(0x000400000003FFFF), 0x1p-1022})
        for (int step = -3; step <= 3; ++step)
            for (const std::uint64_t sign : {std::uint64_t{0}, std::uint64_t{1} << 63}) {
                const Real64 x = bits64((asBits(threshold) + static_cast<std::uint64_t>(std::int64_t{step})) | sign);
                Real64 expected;
                const OktStatus status = model::Tan_64f(&x, &expected, 1);
                const auto single = alone(oktsTan_64f_A53, x);
                EXPECT_TRUE(sameBits(single.value, asBits(expected))) << std::hexfloat << x;
                EXPECT_EQ(single.status, status);
                EXPECT_TRUE(sameBits(among(oktsTan_64f_A53, x, 1.0, 9, 3).value, asBits(expected)))
                    << std::hexfloat << x;
            }
}

TEST(Tan64, TinyElementsComeBackAsTheyAreAndInexact) {
    for (const Real64 x : {0x1p-1074, -0x1p-1074, 0x1.8p-1023, 0x1p-1022, 0x1.23456789p-700, -0x1.fffffffffffffp-253}) {
        EXPECT_TRUE(sameBits(alone(oktsTan_64f_A53, x).value, asBits(x)));
        EXPECT_TRUE(sameBits(among(oktsTan_64f_A53, x, 1.0, 9, 4).value, asBits(x)));
    }
    EXPECT_TRUE(flagsAlone(oktsTan_64f_A53, 0x1.8p-300) & flagInexact);
}

TEST(Tan64, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsTan_64f_A53);
    EXPECT_EQ(flagsAlone(oktsTan_64f_A53, 0.0), 0u);
    EXPECT_EQ(flagsAlone(oktsTan_64f_A53, -0x1p-100), flagInexact);
}

TEST(Tan32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsTan_32f_A24);
}

// The reduction gives quadrant 1 instead of 2 there: the cotangent instead of the tangent.
TEST(Tan64, IsAQuarterTurnOffAtTheRecordedArgument) {
    const Real64 residue = bits64(0xBFC69CB7E4AF8478);
    EXPECT_NEAR(alone(oktsTan_64f_A53, bits64(0x57B003E068000000)).value, -1 / std::tan(residue), 1e-14);
}

TEST(Tan64, AgreesWithThePlainModel) {
    expectModel<Real64, Real64>("oktsTan_64f_A53", model::Tan_64f,
                                {ordinaryElement<Real64, -6, 13>, unusualElement<Real64>});
}
TEST(Tan32, AgreesWithThePlainModel) {
    expectModel<Real32, Real32>("oktsTan_32f_A24", model::Tan_32f,
                                {ordinaryElement<Real32, -6, 13>, unusualElement<Real32>});
}

TEST(Tan64, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real64>("oktsTan_64f_A53", model::Tan_64f);
}
TEST(Tan32, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real32>("oktsTan_32f_A24", model::Tan_32f);
}

}  // namespace
}  // namespace okt::test
