// The powers 2/3 and 3/2.
#include "tests/models/fixed_power_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

constexpr Filling<Real32> elements32{ordinaryElement<Real32, -126, 127>, specialElement<Real32>};
constexpr Filling<Real64> elements64{ordinaryElement<Real64, -1022, 1023>, specialElement<Real64>};

template <class T, int low, int high>
T positiveElement(Random& random) {
    return std::abs(ofMagnitude<T>(random, low, high));
}
constexpr Filling<Real32> positive32{positiveElement<Real32, -126, 85>, specialElement<Real32>};
constexpr Filling<Real64> positive64{positiveElement<Real64, -740, 682>, specialElement<Real64>};

TEST(Pow2o3, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsPow2o3_32f_A24", model::Pow2o3_32f, elements32);
        expectModel<Real64, Real64>("oktsPow2o3_64f_A53", model::Pow2o3_64f, elements64);
    });
}
TEST(Pow3o2, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsPow3o2_32f_A24", model::Pow3o2_32f, positive32);
        expectModel<Real64, Real64>("oktsPow3o2_64f_A53", model::Pow3o2_64f, positive64);
    });
    expectModel<Real64, Real64>("oktsPow3o2_64f_A53", model::Pow3o2_64f, elements64);
}

TEST(Pow2o3, RaisesTheFlagsOfTheModel) {
    expectModelFlags(oktsPow2o3_32f_A24, model::Pow2o3_32f);
    expectModelFlags(oktsPow2o3_64f_A53, model::Pow2o3_64f);
}
TEST(Pow3o2, RaisesTheFlagsOfTheModel) {
    expectModelFlags(oktsPow3o2_32f_A24, model::Pow3o2_32f);
    expectModelFlags(oktsPow3o2_64f_A53, model::Pow3o2_64f);
}

TEST(Pow2o3, SpecialValues) {
    expectRows<Real32>(oktsPow2o3_32f_A24, 5,
                       {
                           {asBits(-8.0f), asBits(4.0f)},
                           {asBits(8.0f), asBits(4.0f)},
                           {asBits(-1.0f), asBits(1.0f)},
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x00000000},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0x7F800000},
                           {0x00000004, asBits(0x1p-98f)},
                           {0x80000004, asBits(0x1p-98f)},
                           {0x7F7FFFFF, 0x6A214517},  // a little less than 2^(256/3)
                       });
    expectNaNsQuieted<Real32>(oktsPow2o3_32f_A24, 5);
    expectRows<Real64>(oktsPow2o3_64f_A53, 5,
                       {
                           {asBits(-8.0), asBits(4.0)},
                           {0x8000000000000000, 0x0000000000000000},
                           {0xFFF0000000000000, 0x7FF0000000000000},
                           {0x7FF0000000000001, 0x7FF8000000000001},
                           {0x0000000000000001, asBits(0x1p-716)},
                           {0x8000000000000001, asBits(0x1p-716)},
                       });
}

TEST(Pow3o2, SpecialValues) {
    expectRows<Real32>(oktsPow3o2_32f_A24, 5,
                       {
                           {asBits(4.0f), asBits(8.0f)},
                           {asBits(-1.0f), 0xFFC00000, oktStatusDomain},
                           {0x80000001, 0xFFC00000, oktStatusDomain},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x7F800000, 0x7F800000},
                           {asBits(3e38f), 0x7F800000},
                           {0x00000001, 0x00000000},
                       });
    expectNaNsQuieted<Real32>(oktsPow3o2_32f_A24, 5);
    expectRows<Real64>(oktsPow3o2_64f_A53, 5,
                       {
                           {asBits(4.0), asBits(8.0)},
                           {asBits(-1.0), 0xFFF8000000000000, oktStatusDomain},
                           {0x8000000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {asBits(1e300), 0x7FF0000000000000},
                           {0x0000000000000001, 0x0000000000000000},
                           {asBits(0x1p-700), asBits(0x1p-1050)},
                       });
    expectNaNsQuieted<Real64>(oktsPow3o2_64f_A53, 5);
}

TEST(Pow3o2, InvalidIsRaisedForANegativeElement) {
    EXPECT_EQ(flagsAlone(oktsPow3o2_32f_A24, -1.0f), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsPow3o2_64f_A53, -2.0), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsPow3o2_64f_A53, -0.0), 0u);
    EXPECT_EQ(flagsAlone(oktsPow2o3_64f_A53, -8.0) & flagInvalid, 0u);
}

// A subnormal compares equal to zero then, and a zero is stored as it is.
TEST(Pow3o2, UnderDenormalsAreZeroASubnormalComesOutUnchanged) {
    const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
    expectRows<Real32>(
        oktsPow3o2_32f_A24, 5,
        {{0x00000001, 0x00000001}, {0x80012345, 0x80012345}, {asBits(-1.0f), 0xFFC00000, oktStatusDomain}});
    expectRows<Real64>(oktsPow3o2_64f_A53, 5,
                       {{0x0000000000000001, 0x0000000000000001}, {0x800FFFFFFFFFFFFF, 0x800FFFFFFFFFFFFF}});
    expectRows<Real32>(oktsPow2o3_32f_A24, 5, {{0x80012345, 0x00000000}});
    expectRows<Real64>(oktsPow2o3_64f_A53, 5, {{0x000FFFFFFFFFFFFF, 0x0000000000000000}});
}

// Both sides of the range bounds and of powers of two, with all remainders of the exponent.
TEST(FixedPowers, StayAccurateOnBothSidesOfTheRangeBounds) {
    for (const std::uint32_t bound :
         {0x00800000u, 0x7F7FFFFEu, 0x00000002u, 0x00400000u, 0x3F800000u, 0x40000000u, 0x40800000u})
        for (const std::uint32_t pattern : {bound - 1, bound, bound + 1}) {
            const Real32 x = bits32(pattern);
            const auto root = std::cbrt(static_cast<long double>(x));
            EXPECT_TRUE(withinUlps(alone(oktsPow2o3_32f_A24, x).value, root * root, 0.5001L)) << pattern;
            EXPECT_TRUE(
                sameBits(among(oktsPow2o3_32f_A24, -x, 5.0f, 8, 3).value, asBits(alone(oktsPow2o3_32f_A24, x).value)));
            const auto power = static_cast<long double>(x) * std::sqrt(static_cast<long double>(x));
            if (power > 0x1p-126L && power < 0x1p127L) {
                EXPECT_TRUE(withinUlps(alone(oktsPow3o2_32f_A24, x).value, power, 0.5001L)) << pattern;
            }
            EXPECT_TRUE(
                sameBits(among(oktsPow3o2_32f_A24, x, 5.0f, 8, 3).value, asBits(alone(oktsPow3o2_32f_A24, x).value)));
        }
    constexpr std::uint64_t bounds64[] = {0x0010000000000000, 0x7FEFFFFFFFFFFFFE, 0x0000000000000002,
                                          0x0008000000000000, 0x3FF0000000000000, 0x4000000000000000,
                                          0x4010000000000000, 0x6000000000000000};
    for (const std::uint64_t bound : bounds64)
        for (const std::uint64_t pattern : {bound - 1, bound, bound + 1}) {
            const Real64 x = bits64(pattern);
            const auto root = std::cbrt(static_cast<long double>(x));
            EXPECT_TRUE(withinUlps(alone(oktsPow2o3_64f_A53, x).value, root * root, 0.505L)) << pattern;
            EXPECT_TRUE(
                sameBits(among(oktsPow2o3_64f_A53, -x, 5.0, 8, 3).value, asBits(alone(oktsPow2o3_64f_A53, x).value)));
            const auto power = static_cast<long double>(x) * std::sqrt(static_cast<long double>(x));
            if (power > 0x1p-1022L && power < 0x1p1023L) {
                EXPECT_TRUE(withinUlps(alone(oktsPow3o2_64f_A53, x).value, power, 0.51L)) << pattern;
            }
            EXPECT_TRUE(
                sameBits(among(oktsPow3o2_64f_A53, x, 5.0, 8, 3).value, asBits(alone(oktsPow3o2_64f_A53, x).value)));
        }
}

}  // namespace
}  // namespace okt::test
