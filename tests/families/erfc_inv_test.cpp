// The inverse of the complementary error function.
#include "families/quantile_cases.h"
#include "oktvm.h"

namespace okt::test {
namespace {

const QuantileCase<Real32> inverse32 = {"oktsErfcInv_32f_A24", oktsErfcInv_32f_A24, model::ErfcInv_32f, 2};
const QuantileCase<Real64> inverse64 = {"oktsErfcInv_64f_A53", oktsErfcInv_64f_A53, model::ErfcInv_64f, 2};

TEST(ErfcInv, AgreesWithTheModel) {
    expectQuantileModel(inverse32);
    expectQuantileModel(inverse64);
}

TEST(ErfcInv, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {0.6f, 0.001f})
        expectModelAround<Real32>(oktsErfcInv_32f_A24, model::ErfcInv_32f, filler,
                                  {0x00000002, 0x00800000, 0x3E000000, 0x3F600000, 0x3F800000, 0x3F900000, 0x3FF00000,
                                   0x40000000, 0x40400000, 0x7F7FFFFD, 0x7F800000, 0x7FC00000});
    for (const Real64 filler : {0.6, 0.001})
        expectModelAround<Real64>(
            oktsErfcInv_64f_A53, model::ErfcInv_64f, filler,
            {0x0000000000000002, 0x0008000000000000, 0x0010000000000000, 0x0020000000000000, 0x3CA0000000000000,
             0x3FC0000000000000, 0x3FEC000000000000, 0x3FF0000000000000, 0x3FF2000000000000, 0x3FFE000000000000,
             0x4000000000000000, 0x7FEFFFFFFFFFFFFD, 0x7FF0000000000000, 0x7FF8000000000000});
}

TEST(ErfcInv, SpecialValues32) {
    for (const Real32 filler : {0.6f, 0.001f, 1.0f}) {
        expectRows<Real32>(oktsErfcInv_32f_A24, filler,
                           {
                               {0x3F800000, 0x00000000},
                               {0x00000000, 0x7F800000, oktStatusSingularity},
                               {0x80000000, 0x7F800000, oktStatusSingularity},
                               {0x40000000, 0xFF800000, oktStatusSingularity},
                               {0x40000001, 0xFFC00000, oktStatusDomain},
                               {0x80000001, 0xFFC00000, oktStatusDomain},
                               {0xBF800000, 0xFFC00000, oktStatusDomain},
                               {0x7F7FFFFF, 0xFFC00000, oktStatusDomain},
                               {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                               {0x7F800000, 0xFFC00000, oktStatusDomain},
                               {0xFF800000, 0xFFC00000, oktStatusDomain},
                           });
        expectNaNsQuieted<Real32>(oktsErfcInv_32f_A24, filler);
    }
}

TEST(ErfcInv, SpecialValues64) {
    for (const Real64 filler : {0.6, 0.001, 1.0}) {
        expectRows<Real64>(oktsErfcInv_64f_A53, filler,
                           {
                               {0x3FF0000000000000, 0x0000000000000000},
                               {0x0000000000000000, 0x7FF0000000000000, oktStatusSingularity},
                               {0x8000000000000000, 0x7FF0000000000000, oktStatusSingularity},
                               {0x4000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                               {0x4000000000000001, 0xFFF8000000000000, oktStatusDomain},
                               {0x8000000000000001, 0xFFF8000000000000, oktStatusDomain},
                               {0xBFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                               {0x7FEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                               {0xFFEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                               {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                               {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           });
        expectNaNsQuieted<Real64>(oktsErfcInv_64f_A53, filler);
    }
}

TEST(ErfcInv, TheEndsOfTheDomain) {
    EXPECT_NEAR(alone(oktsErfcInv_64f_A53, bits64(1)).value, 27.213293210812949, 1e-13);
    EXPECT_EQ(alone(oktsErfcInv_64f_A53, bits64(1)).status, oktStatusOk);
    // 2 - 2^-52: the tail mass 2^-52 belongs to the near row.
    EXPECT_EQ(alone(oktsErfcInv_64f_A53, 0x1.fffffffffffffp+0).value, -alone(oktsErfcInv_64f_A53, 0x1p-52).value);
    EXPECT_NEAR(alone(oktsErfcInv_64f_A53, 0x1p-52).value, 5.8050186831934533, 1e-14);
}

TEST(ErfcInv, IsOddAboutItsCentre) {
    expectOddAboutTheCentre(inverse32);
    expectOddAboutTheCentre(inverse64);
}

TEST(ErfcInv, Flags) {
    expectQuantileFlags(inverse32);
    expectQuantileFlags(inverse64);
    EXPECT_EQ(flagsAlone(oktsErfcInv_64f_A53, bits64(1)), flagDenormal | flagInexact);
    EXPECT_EQ(flagsAlone(oktsErfcInv_32f_A24, bits32(1)), flagDenormal | flagInexact);
}

TEST(ErfcInv, UnderEveryMxcsr) {
    expectQuantileUnderEveryMxcsr(inverse32);
    expectQuantileUnderEveryMxcsr(inverse64);
}

}  // namespace
}  // namespace okt::test
