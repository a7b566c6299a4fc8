// Cube root and its reciprocal.
#include "tests/models/cbrt_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {
namespace {

constexpr Filling<Real32> elements32{ordinaryElement<Real32, -126, 127>, specialElement<Real32>};
constexpr Filling<Real64> elements64{ordinaryElement<Real64, -1022, 1023>, specialElement<Real64>};

TEST(Cbrt, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsCbrt_32f_A24", model::Cbrt_32f, elements32);
    expectModel<Real64, Real64>("oktsCbrt_64f_A53", model::Cbrt_64f, elements64);
}
TEST(InvCbrt, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsInvCbrt_32f_A24", model::InvCbrt_32f, elements32);
    expectModel<Real64, Real64>("oktsInvCbrt_64f_A53", model::InvCbrt_64f, elements64);
}

TEST(Cbrt, SpecialValues32) {
    expectRows<Real32>(oktsCbrt_32f_A24, 5,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0xFF800000},
                           {0xC1000000, 0xC0000000},
                           {0x41000000, 0x40000000},
                           {0x00000004, 0x27000000},  // 2^-147
                       });
    expectNaNsQuieted<Real32>(oktsCbrt_32f_A24, 5);
}

TEST(Cbrt, SpecialValues64) {
    expectRows<Real64>(oktsCbrt_64f_A53, 5,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {0xFFF0000000000000, 0xFFF0000000000000},
                           {0xC020000000000000, 0xC000000000000000},
                       });
    expectNaNsQuieted<Real64>(oktsCbrt_64f_A53, 5);
}

TEST(InvCbrt, SpecialValues32) {
    expectRows<Real32>(oktsInvCbrt_32f_A24, 5,
                       {
                           {0x00000000, 0x7F800000, oktStatusSingularity},
                           {0x80000000, 0xFF800000, oktStatusSingularity},
                           {0x7F800000, 0x00000000},
                           {0xFF800000, 0x80000000},
                           {0xC1000000, 0xBF000000},
                       });
    expectNaNsQuieted<Real32>(oktsInvCbrt_32f_A24, 5);
}

TEST(InvCbrt, SpecialValues64) {
    expectRows<Real64>(oktsInvCbrt_64f_A53, 5,
                       {
                           {0x0000000000000000, 0x7FF0000000000000, oktStatusSingularity},
                           {0x8000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                           {0x7FF0000000000000, 0x0000000000000000},
                           {0xFFF0000000000000, 0x8000000000000000},
                           {0xC020000000000000, 0xBFE0000000000000},
                       });
    expectNaNsQuieted<Real64>(oktsInvCbrt_64f_A53, 5);
}

// Subnormals, the bounds of the range and every remainder of the exponent, both signs.
TEST(Cbrt, StaysAccurateOnBothSidesOfTheRangeBounds) {
    for (const std::uint32_t bound :
         {0x00800000u, 0x7F7FFFFFu, 0x00000002u, 0x00400000u, 0x3F800000u, 0x40000000u, 0x40800000u})
        for (const std::uint32_t pattern : {bound - 1, bound, bound + 1})
            for (const std::uint32_t sign : {0u, 0x80000000u}) {
                const Real32 x = bits32(sign | pattern);
                if (!std::isfinite(x)) continue;
                const long double root = std::cbrt(static_cast<long double>(x));
                const Real32 cube = alone(oktsCbrt_32f_A24, x).value, inverse = alone(oktsInvCbrt_32f_A24, x).value;
                EXPECT_TRUE(withinUlps(cube, root, 0.95L)) << pattern;
                EXPECT_TRUE(withinUlps(inverse, 1 / root, 0.9L)) << pattern;
                EXPECT_TRUE(sameBits(among(oktsCbrt_32f_A24, x, 5.0f, 8, 3).value, asBits(cube)));
                EXPECT_TRUE(sameBits(among(oktsInvCbrt_32f_A24, x, 0.0f, 8, 6).value, asBits(inverse)));
            }
    constexpr std::uint64_t bounds64[] = {0x0010000000000000, 0x7FEFFFFFFFFFFFFF, 0x0000000000000002,
                                          0x0000000100000000, 0x0008000000000000, 0x3FF0000000000000,
                                          0x4000000000000000, 0x4010000000000000};
    for (const std::uint64_t bound : bounds64)
        for (const std::uint64_t pattern : {bound - 1, bound, bound + 1})
            for (const std::uint64_t sign : {std::uint64_t{0}, std::uint64_t{0x8000000000000000}}) {
                const Real64 x = bits64(sign | pattern);
                if (!std::isfinite(x)) continue;
                const long double root = std::cbrt(static_cast<long double>(x));
                const Real64 cube = alone(oktsCbrt_64f_A53, x).value, inverse = alone(oktsInvCbrt_64f_A53, x).value;
                EXPECT_TRUE(withinUlps(cube, root, 0.55L)) << pattern;
                EXPECT_TRUE(withinUlps(inverse, 1 / root, 0.55L)) << pattern;
                EXPECT_TRUE(sameBits(among(oktsCbrt_64f_A53, x, 5.0, 8, 3).value, asBits(cube)));
                EXPECT_TRUE(sameBits(among(oktsInvCbrt_64f_A53, x, 0.0, 8, 6).value, asBits(inverse)));
            }
}

TEST(InvCbrt, RaisesNoFlagForAZero) {
    EXPECT_EQ(flagsAlone(oktsInvCbrt_64f_A53, 0.0), 0u);
    EXPECT_EQ(flagsAlone(oktsInvCbrt_32f_A24, 0.0f) & (flagDivideByZero | flagInvalid), 0u);
    EXPECT_EQ(flagsAlone(oktsCbrt_64f_A53, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(statusOf(oktsInvCbrt_64f_A53, {0.0, 1.0, 2.0, 3.0, 4.0}), oktStatusSingularity);
}

}  // namespace
}  // namespace okt::test
