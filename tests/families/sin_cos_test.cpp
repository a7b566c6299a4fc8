// Sine and cosine together.
#include "families/circular_checks.h"
#include "models/trig_model.h"
#include "oktvm.h"
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

TEST(SinCos64, ZeroGivesOneAndKeepsItsSignOnTheElementPathAlone) {
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
    for (const auto f : {sine64, cosine64}) expectInfinitiesAreNaNAndDomainAndNaNsQuiet(f);
}

TEST(SinCos32, InfinitiesAreNaNAndDomainAndNaNsComeBackQuiet) {
    for (const auto f : {sine32, cosine32}) expectInfinitiesAreNaNAndDomainAndNaNsQuiet(f);
}

TEST(SinCos64, RangeTestSendsTheWholeBlockToTheElementPathFrom90112Up) {
    for (const auto f : {sine64, cosine64}) expectElementPathFrom90112Up(f);
}

TEST(SinCos32, RangeTestSendsTheWholeBlockToTheElementPathAbove10000) {
    for (const auto f : {sine32, cosine32}) expectElementPathAbove10000<4>(f);
}

TEST(SinCos32, AWholeLastBlockIsABlock) {
    const Telltale<Real32> telltale(sine32);
    EXPECT_TRUE(takesElementPath(sine32, telltale, 1e6F, 4, 1, 0, 3));
    EXPECT_TRUE(takesElementPath(sine32, telltale, 1e6F, 8, 5, 4, 7));
    EXPECT_TRUE(takesElementPath(sine32, telltale, 1e6F, 7, 5, 5, 5));
}

TEST(SinCos64, TinyElementsOfTheElementPathComeBackAsTheyAre) {
    for (const Real64 x : {0x1p-1074, -0x1p-1074, 0x1p-1022, 0x1.23456789p-700, -0x1.fffffffffffffp-253}) {
        EXPECT_TRUE(sameBits(besideHuge(sine64, x), asBits(x)));
        EXPECT_TRUE(sameBits(besideHuge(cosine64, x), 0x3FF0000000000000));
    }
}

// On the element path the sine and the cosine are those of the functions of their own.
TEST(SinCos64, ElementPathGivesTheSineAndCosineOfTheSingleFunctions) {
    Random random(11);
    for (int i = 0; i < 2000; ++i) {
        const Real64 x = ofMagnitude<Real64>(random, 17, 1023);
        ASSERT_EQ(asBits(alone(sine64, x).value), asBits(alone(oktsSin_64f_A53, x).value));
        ASSERT_EQ(asBits(alone(cosine64, x).value), asBits(alone(oktsCos_64f_A53, x).value));
    }
}

TEST(SinCos64, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) { expectInvalidOfInfinitiesAndSignallingNaNsAlone(sine64); }

TEST(SinCos32, OnlyInfinitiesAndSignallingNaNsRaiseInvalid) { expectInvalidOfInfinitiesAndSignallingNaNsAlone(sine32); }

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

TEST(SinCos64, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    for (const auto f : {sine64, cosine64}) expectHugeSendsItsBlockAlone<Real64>(f, 100, 100);
}
TEST(SinCos32, HugeElementAmongManyBlocksSendsItsOwnToTheElementPath) {
    for (const auto f : {sine32, cosine32}) expectHugeSendsItsBlockAlone<Real32>(f, 100, 100);
}

}  // namespace
}  // namespace okt::test
