// Cosine.
#include "families/circular_checks.h"
#include "models/trig_model.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

TEST(Cos64, ZeroIsExactlyOneOnAllPaths) {
    for (const Real64 zero : {0.0, -0.0}) {
        EXPECT_TRUE(sameBits(alone(oktsCos_64f_A53, zero).value, 0x3FF0000000000000));
        EXPECT_TRUE(sameBits(among(oktsCos_64f_A53, zero, 1.0, 17, 5).value, 0x3FF0000000000000));
        EXPECT_TRUE(sameBits(besideHuge(oktsCos_64f_A53, zero), 0x3FF0000000000000));
    }
}

// The polynomial at a quarter turn, narrowed, gives one as well.
TEST(Cos32, ZeroIsOneOnAllPaths) {
    for (const Real32 zero : {0.0F, -0.0F}) {
        EXPECT_TRUE(sameBits(alone(oktsCos_32f_A24, zero).value, 0x3F800000));
        EXPECT_TRUE(sameBits(among(oktsCos_32f_A24, zero, 1.0F, 17, 5).value, 0x3F800000));
        EXPECT_TRUE(sameBits(besideHuge(oktsCos_32f_A24, zero), 0x3F800000));
    }
}

TEST(Cos64, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsCos_64f_A53);
}

TEST(Cos32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectInfinitiesAreNaNAndDomainAndNaNsQuiet(oktsCos_32f_A24);
}

TEST(Cos64, RangeTestSendsTheWholeBlockToTheElementPathFrom90112Up) { expectElementPathFrom90112Up(oktsCos_64f_A53); }

TEST(Cos32, RangeTestSendsTheWholeBlockToTheElementPathAbove10000) { expectElementPathAbove10000<4>(oktsCos_32f_A24); }

TEST(Cos32, LastOneToFourElementsAreATail) {
    const Telltale<Real32> telltale(oktsCos_32f_A24);
    const Real32 huge = 1e6F;
    EXPECT_TRUE(takesElementPath(oktsCos_32f_A24, telltale, huge, 8, 1, 0, 3));
    EXPECT_TRUE(takesElementPath(oktsCos_32f_A24, telltale, huge, 8, 5, 5, 5));
    EXPECT_TRUE(takesElementPath(oktsCos_32f_A24, telltale, huge, 4, 1, 1, 1));
    EXPECT_TRUE(takesElementPath(oktsCos_32f_A24, telltale, huge, 5, 1, 0, 3));
}

TEST(Cos64, TinyElementsGiveOneAndInexact) {
    for (const Real64 x : {0x1p-1074, -0x1p-1074, 0x1p-1022, 0x1.23456789p-700, -0x1.fffffffffffffp-253, 0x1p-252}) {
        EXPECT_TRUE(sameBits(besideHuge(oktsCos_64f_A53, x), 0x3FF0000000000000));
        EXPECT_TRUE(sameBits(alone(oktsCos_64f_A53, x).value, 0x3FF0000000000000));
    }
    const Real64 block[4] = {0x1p-300, 0x1p20, 0x1p20, 0x1p20};
    Real64 results[4];
    EXPECT_TRUE(flagsRaised([&] { oktsCos_64f_A53(block, results, 4); }) & flagInexact);
}

TEST(Cos64, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsCos_64f_A53);
}

TEST(Cos32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    expectInvalidOfInfinitiesAndSignallingNaNsAlone(oktsCos_32f_A24);
}

// The reduction gives quadrant 1 instead of 2 there.
TEST(Cos64, IsAQuarterTurnOffAtTheRecordedArgument) {
    const Real64 residue = bits64(0xBFC69CB7E4AF8478);
    EXPECT_NEAR(alone(oktsCos_64f_A53, bits64(0x57B003E068000000)).value, -std::sin(residue), 1e-15);
}

TEST(Cos64, AgreesWithThePlainModel) {
    expectModel<Real64, Real64>("oktsCos_64f_A53", model::Cos_64f,
                                {ordinaryElement<Real64, -6, 15>, unusualElement<Real64>});
}
TEST(Cos32, AgreesWithThePlainModel) {
    expectModel<Real32, Real32>("oktsCos_32f_A24", model::Cos_32f,
                                {ordinaryElement<Real32, -6, 12>, unusualElement<Real32>});
}

TEST(Cos64, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real64>("oktsCos_64f_A53", model::Cos_64f);
}
TEST(Cos32, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real32>("oktsCos_32f_A24", model::Cos_32f);
}

TEST(Cos64, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    expectHugeSendsItsBlockAlone<Real64>(oktsCos_64f_A53, 100, 100);
}
TEST(Cos32, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    expectHugeSendsItsBlockAlone<Real32>(oktsCos_32f_A24, 100, 96);
}

}  // namespace
}  // namespace okt::test
