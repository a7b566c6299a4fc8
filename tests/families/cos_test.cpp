// Cosine.
#include "families/lane_path.h"
#include "models/trig_model.h"
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
    expectRows<Real64>(oktsCos_64f_A53, 1.0,
                       {{0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                        {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                        {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234},
                        {0xFFF8ABCDE0001234, 0xFFF8ABCDE0001234},
                        {0x7FF0000000000001, 0x7FF8000000000001},
                        {0xFFF4123400000000, 0xFFFC123400000000}});
}

TEST(Cos32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    expectRows<Real32>(oktsCos_32f_A24, 1.0F,
                       {{0x7F800000, 0xFFC00000, oktStatusDomain},
                        {0xFF800000, 0xFFC00000, oktStatusDomain},
                        {0x7FC54321, 0x7FC54321},
                        {0xFFC54321, 0xFFC54321},
                        {0x7F800001, 0x7FC00001},
                        {0xFFA12345, 0xFFE12345}});
}

TEST(Cos64, RangeTestSendsTheWholeBlockToTheLanePathFrom90112Up) {
    for (const Real64 sign : {1.0, -1.0}) {
        expectPath<4>(oktsCos_64f_A53, sign * nextDown(90112.0), false);
        expectPath<4>(oktsCos_64f_A53, sign * 90112.0, true);
        expectPath<4>(oktsCos_64f_A53, sign * nextUp(90112.0), true);
        expectPath<4>(oktsCos_64f_A53, sign * HUGE_VAL, true);
    }
    expectPath<4>(oktsCos_64f_A53, bits64(0x7FF8000000000000), true);
    for (const Real64 x : {0.0, 0x1p-1074, 0x1p-1022, 0x1p-300}) expectPath<4>(oktsCos_64f_A53, x, false);
}

TEST(Cos32, RangeTestSendsTheWholeBlockToTheLanePathAbove10000) {
    for (const Real32 sign : {1.0F, -1.0F}) {
        expectPath<4>(oktsCos_32f_A24, sign * nextDown(10000.0F), false);
        expectPath<4>(oktsCos_32f_A24, sign * 10000.0F, false);
        expectPath<4>(oktsCos_32f_A24, sign * nextUp(10000.0F), true);
        expectPath<4>(oktsCos_32f_A24, sign * HUGE_VALF, true);
    }
    expectPath<4>(oktsCos_32f_A24, bits32(0x7FC00000), true);
}

TEST(Cos32, LastOneToFourElementsAreATail) {
    const Telltale<Real32> telltale(oktsCos_32f_A24);
    const Real32 huge = 1e6F;
    EXPECT_TRUE(takesLanePath(oktsCos_32f_A24, telltale, huge, 8, 1, 0, 3));
    EXPECT_TRUE(takesLanePath(oktsCos_32f_A24, telltale, huge, 8, 5, 5, 5));
    EXPECT_TRUE(takesLanePath(oktsCos_32f_A24, telltale, huge, 4, 1, 1, 1));
    EXPECT_TRUE(takesLanePath(oktsCos_32f_A24, telltale, huge, 5, 1, 0, 3));
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
    EXPECT_EQ(flagsAlone(oktsCos_64f_A53, HUGE_VAL), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsCos_64f_A53, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsCos_64f_A53, bits64(0x7FF8000000000001)), 0u);
    for (const Real64 x : {1.0, 1e5, 1e300, -1e22}) EXPECT_EQ(flagsAlone(oktsCos_64f_A53, x), flagInexact);
}

TEST(Cos32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    EXPECT_EQ(flagsAlone(oktsCos_32f_A24, HUGE_VALF), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsCos_32f_A24, bits32(0x7F800001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsCos_32f_A24, bits32(0x7FC00001)), 0u);
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

TEST(Cos64, HugeElementAmongManyBlocksSendsItsOwnToTheLanePath) {
    expectHugeSendsItsBlockAlone<Real64>(oktsCos_64f_A53, 100, 100);
}
TEST(Cos32, HugeElementAmongManyBlocksSendsItsOwnToTheLanePath) {
    expectHugeSendsItsBlockAlone<Real32>(oktsCos_32f_A24, 100, 96);
}

}  // namespace
}  // namespace okt::test
