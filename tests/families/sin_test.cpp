// Sine.
#include "families/circular_checks.h"
#include "models/trig_model.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

TEST(Sin64, ZeroLosesItsSignOnTheMainPathAndKeepsItOnTheElementPath) {
    for (const Real64 zero : {0.0, -0.0}) {
        EXPECT_TRUE(sameBits(alone(oktsSin_64f_A53, zero).value, 0));
        EXPECT_TRUE(sameBits(among(oktsSin_64f_A53, zero, 1.0, 17, 5).value, 0));
        EXPECT_TRUE(sameBits(besideHuge(oktsSin_64f_A53, zero), asBits(zero)));
    }
}

TEST(Sin32, ZeroKeepsItsSignOnAllPaths) {
    for (const Real32 zero : {0.0F, -0.0F}) {
        EXPECT_TRUE(sameBits(alone(oktsSin_32f_A24, zero).value, asBits(zero)));
        EXPECT_TRUE(sameBits(among(oktsSin_32f_A24, zero, 1.0F, 17, 5).value, asBits(zero)));
        EXPECT_TRUE(sameBits(besideHuge(oktsSin_32f_A24, zero), asBits(zero)));
    }
}

TEST(Sin64, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsSin_64f_A53);
}

TEST(Sin32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsSin_32f_A24);
}

TEST(Sin64, RangeTestSendsTheWholeBlockToTheElementPathFrom90112Up) { expectElementPathFrom90112Up(oktsSin_64f_A53); }

TEST(Sin32, RangeTestSendsTheWholeBlockToTheElementPathAbove10000) { expectElementPathAbove10000<4>(oktsSin_32f_A24); }

TEST(Sin32, LastOneToFourElementsAreATail) {
    const Telltale<Real32> telltale(oktsSin_32f_A24);
    const Real32 huge = 1e6F;
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 8, 1, 0, 3));  // one block
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 8, 5, 5, 5));  // and a tail of four
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 4, 1, 1, 1));  // no block at all
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 5, 1, 0, 3));
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 12, 5, 4, 7));
    EXPECT_TRUE(takesElementPath(oktsSin_32f_A24, telltale, huge, 12, 8, 8, 8));
}

TEST(Sin64, TailTakesTheElementPathElementByElement) {
    const Telltale<Real64> telltale(oktsSin_64f_A53);
    EXPECT_TRUE(takesElementPath(oktsSin_64f_A53, telltale, 1e6, 8, 5, 4, 7));
    EXPECT_TRUE(takesElementPath(oktsSin_64f_A53, telltale, 1e6, 7, 5, 5, 5));
    EXPECT_TRUE(takesElementPath(oktsSin_64f_A53, telltale, 1e6, 3, 1, 1, 1));
}

TEST(Sin64, TinyElementsOfTheElementPathComeBackAsTheyAreAndInexact) {
    for (const Real64 x : {0x1p-1074, -0x1p-1074, 0x1.8p-1023, 0x1p-1022, 0x1.23456789p-700, -0x1.fffffffffffffp-253}) {
        EXPECT_TRUE(sameBits(besideHuge(oktsSin_64f_A53, x), asBits(x)));
        EXPECT_TRUE(sameBits(alone(oktsSin_64f_A53, x).value, asBits(x)));
    }
    const Real64 block[4] = {0x1.8p-300, 0x1p20, 0x1p20, 0x1p20};
    Real64 results[4];
    EXPECT_TRUE(flagsRaised([&] { oktsSin_64f_A53(block, results, 4); }) & flagInexact);
}

TEST(Sin64, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsSin_64f_A53);
}

TEST(Sin32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsSin_32f_A24);
}

// The element path takes element by element, so that a result stored on the next argument becomes that argument.
TEST(Sin64, BlockOfHugeElementsIsReadInOrder) {
    Real64 values[5] = {1e300, 1e300, 1e300, 1e300, 1e300}, expected[5] = {1e300};
    for (int i = 0; i < 4; ++i) expected[i + 1] = besideHuge(oktsSin_64f_A53, expected[i]);
    EXPECT_EQ(oktsSin_64f_A53(values, values + 1, 4), oktStatusOk);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(sameBits(values[i], asBits(expected[i]))) << i;
}

// The reduction gives quadrant 1 instead of 2 there.
TEST(Sin64, IsAQuarterTurnOffAtTheRecordedArgument) {
    const Real64 residue = bits64(0xBFC69CB7E4AF8478);
    EXPECT_NEAR(alone(oktsSin_64f_A53, bits64(0x57B003E068000000)).value, std::cos(residue), 1e-15);
}

TEST(Sin64, AgreesWithThePlainModel) {
    expectModel<Real64, Real64>("oktsSin_64f_A53", model::Sin_64f,
                                {ordinaryElement<Real64, -6, 15>, unusualElement<Real64>});
}
TEST(Sin32, AgreesWithThePlainModel) {
    expectModel<Real32, Real32>("oktsSin_32f_A24", model::Sin_32f,
                                {ordinaryElement<Real32, -6, 12>, unusualElement<Real32>});
}

TEST(Sin64, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real64>("oktsSin_64f_A53", model::Sin_64f);
}
TEST(Sin32, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real32>("oktsSin_32f_A24", model::Sin_32f);
}

TEST(Sin64, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    expectHugeSendsItsBlockAlone<Real64>(oktsSin_64f_A53, 100, 100);
}
TEST(Sin32, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    expectHugeSendsItsBlockAlone<Real32>(oktsSin_32f_A24, 100, 96);
}

}  // namespace
}  // namespace okt::test
