// Sine and cosine together.
#include "families/lane_path.h"
#include "models/trig_model.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

// One of the two destinations.
template <class T, OktStatus (*f)(const T*, T*, T*, std::int32_t)>
OktStatus sineOf(const T* src, T* dst, std::int32_t len) {
    std::vector<T> other(static_cast<std::size_t>(len));
    return f(src, dst, other.data(), len);
}
template <class T, OktStatus (*f)(const T*, T*, T*, std::int32_t)>
OktStatus cosineOf(const T* src, T* dst, std::int32_t len) {
    std::vector<T> other(static_cast<std::size_t>(len));
    return f(src, other.data(), dst, len);
}
constexpr OneSource<Real64> sine64 = sineOf<Real64, oktsSinCos_64f_A53>,
                            cosine64 = cosineOf<Real64, oktsSinCos_64f_A53>;
constexpr OneSource<Real32> sine32 = sineOf<Real32, oktsSinCos_32f_A24>,
                            cosine32 = cosineOf<Real32, oktsSinCos_32f_A24>;

TEST(SinCos64, ZeroGivesOneAndKeepsItsSignOnTheLanePathAlone) {
    for (const Real64 zero : {0.0, -0.0}) {
        EXPECT_TRUE(sameBits(alone(sine64, zero).value, 0));
        EXPECT_TRUE(sameBits(among(sine64, zero, 1.0, 17, 5).value, 0));
        EXPECT_TRUE(sameBits(besideHuge(sine64, zero), asBits(zero)));
        EXPECT_TRUE(sameBits(alone(cosine64, zero).value, 0x3FF0000000000000));
        EXPECT_TRUE(sameBits(among(cosine64, zero, 1.0, 17, 5).value, 0x3FF0000000000000));
        EXPECT_TRUE(sameBits(besideHuge(cosine64, zero), 0x3FF0000000000000));
    }
}

TEST(SinCos32, ZeroGivesOneAndKeepsItsSign) {
    for (const Real32 zero : {0.0F, -0.0F}) {
        EXPECT_TRUE(sameBits(alone(sine32, zero).value, asBits(zero)));
        EXPECT_TRUE(sameBits(among(sine32, zero, 1.0F, 17, 5).value, asBits(zero)));
        EXPECT_TRUE(sameBits(besideHuge(sine32, zero), asBits(zero)));
        EXPECT_TRUE(sameBits(alone(cosine32, zero).value, 0x3F800000));
        EXPECT_TRUE(sameBits(among(cosine32, zero, 1.0F, 17, 5).value, 0x3F800000));
        EXPECT_TRUE(sameBits(besideHuge(cosine32, zero), 0x3F800000));
    }
}

TEST(SinCos64, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    for (const auto f : {sine64, cosine64})
        expectRows<Real64>(f, 1.0,
                           {{0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                            {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                            {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234},
                            {0xFFF8ABCDE0001234, 0xFFF8ABCDE0001234},
                            {0x7FF0000000000001, 0x7FF8000000000001},
                            {0xFFF4123400000000, 0xFFFC123400000000}});
}

TEST(SinCos32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    for (const auto f : {sine32, cosine32})
        expectRows<Real32>(f, 1.0F,
                           {{0x7F800000, 0xFFC00000, oktStatusDomain},
                            {0xFF800000, 0xFFC00000, oktStatusDomain},
                            {0x7FC54321, 0x7FC54321},
                            {0xFFC54321, 0xFFC54321},
                            {0x7F800001, 0x7FC00001},
                            {0xFFA12345, 0xFFE12345}});
}

TEST(SinCos64, RangeTestSendsTheWholeBlockToTheLanePathFrom90112Up) {
    for (const auto f : {sine64, cosine64}) {
        for (const Real64 sign : {1.0, -1.0}) {
            expectPath<4>(f, sign * nextDown(90112.0), false);
            expectPath<4>(f, sign * 90112.0, true);
            expectPath<4>(f, sign * nextUp(90112.0), true);
            expectPath<4>(f, sign * HUGE_VAL, true);
        }
        expectPath<4>(f, bits64(0x7FF8000000000000), true);
        expectPath<4>(f, 0x1p-1074, false);
    }
}

TEST(SinCos32, RangeTestSendsTheWholeBlockToTheLanePathAbove10000) {
    for (const auto f : {sine32, cosine32}) {
        for (const Real32 sign : {1.0F, -1.0F}) {
            expectPath<4>(f, sign * nextDown(10000.0F), false);
            expectPath<4>(f, sign * 10000.0F, false);
            expectPath<4>(f, sign * nextUp(10000.0F), true);
            expectPath<4>(f, sign * HUGE_VALF, true);
        }
        expectPath<4>(f, bits32(0x7FC00000), true);
    }
}

TEST(SinCos32, AWholeLastBlockIsABlock) {
    const Telltale<Real32> telltale(sine32);
    EXPECT_TRUE(takesLanePath(sine32, telltale, 1e6F, 4, 1, 0, 3));
    EXPECT_TRUE(takesLanePath(sine32, telltale, 1e6F, 8, 5, 4, 7));
    EXPECT_TRUE(takesLanePath(sine32, telltale, 1e6F, 7, 5, 5, 5));
}

TEST(SinCos64, TinyElementsOfTheLanePathComeBackAsTheyAre) {
    for (const Real64 x : {0x1p-1074, -0x1p-1074, 0x1p-1022, 0x1.23456789p-700, -0x1.fffffffffffffp-253}) {
        EXPECT_TRUE(sameBits(besideHuge(sine64, x), asBits(x)));
        EXPECT_TRUE(sameBits(besideHuge(cosine64, x), 0x3FF0000000000000));
    }
}

// On the lane path the sine and the cosine are those of the functions of their own.
TEST(SinCos64, LanePathGivesTheSineAndCosineOfTheSingleFunctions) {
    Random random(11);
    for (int i = 0; i < 2000; ++i) {
        const Real64 x = ofMagnitude<Real64>(random, 17, 1023);
        ASSERT_EQ(asBits(alone(sine64, x).value), asBits(alone(oktsSin_64f_A53, x).value));
        ASSERT_EQ(asBits(alone(cosine64, x).value), asBits(alone(oktsCos_64f_A53, x).value));
    }
}

TEST(SinCos64, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    EXPECT_EQ(flagsAlone(sine64, HUGE_VAL), flagInvalid);
    EXPECT_EQ(flagsAlone(sine64, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(sine64, bits64(0x7FF8000000000001)), 0u);
    for (const Real64 x : {1.0, 1e5, 1e300}) EXPECT_EQ(flagsAlone(sine64, x), flagInexact);
}

TEST(SinCos32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) {
    EXPECT_EQ(flagsAlone(sine32, HUGE_VALF), flagInvalid);
    EXPECT_EQ(flagsAlone(sine32, bits32(0x7F800001)), flagInvalid);
    EXPECT_EQ(flagsAlone(sine32, bits32(0x7FC00001)), 0u);
}

TEST(SinCos64, IsAQuarterTurnOffAtTheRecordedArgument) {
    const Real64 residue = bits64(0xBFC69CB7E4AF8478), x = bits64(0x57B003E068000000);
    EXPECT_NEAR(alone(sine64, x).value, std::cos(residue), 1e-15);
    EXPECT_NEAR(alone(cosine64, x).value, -std::sin(residue), 1e-15);
}

TEST(SinCos64, AgreesWithThePlainModel) {
    expectModel<Real64, Real64>("oktsSinCos_64f_A53", model::SinCos_64f,
                                {ordinaryElement<Real64, -6, 15>, unusualElement<Real64>});
}
TEST(SinCos32, AgreesWithThePlainModel) {
    expectModel<Real32, Real32>("oktsSinCos_32f_A24", model::SinCos_32f,
                                {ordinaryElement<Real32, -6, 12>, unusualElement<Real32>});
}

TEST(SinCos64, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real64>("oktsSinCos_64f_A53", model::SinCos_64f);
}
TEST(SinCos32, HugeElementsAgreeWithThePlainModel) {
    expectModelOfHugeElements<Real32>("oktsSinCos_32f_A24", model::SinCos_32f);
}

TEST(SinCos64, HugeElementAmongManyBlocksSendsItsOwnToTheLanePath) {
    for (const auto f : {sine64, cosine64}) expectHugeSendsItsBlockAlone<Real64>(f, 100, 100);
}
TEST(SinCos32, HugeElementAmongManyBlocksSendsItsOwnToTheLanePath) {
    for (const auto f : {sine32, cosine32}) expectHugeSendsItsBlockAlone<Real32>(f, 100, 100);
}

}  // namespace
}  // namespace okt::test
