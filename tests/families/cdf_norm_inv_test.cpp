// The normal quantile.
#include "families/quantile_cases.h"

#include "oktvm.h"

namespace okt::test {
namespace {

const QuantileCase<Real32> quantile32 = {"oktsCdfNormInv_32f_A24", oktsCdfNormInv_32f_A24, model::CdfNormInv_32f, 1};
const QuantileCase<Real64> quantile64 = {"oktsCdfNormInv_64f_A53", oktsCdfNormInv_64f_A53, model::CdfNormInv_64f, 1};

TEST(CdfNormInv, AgreesWithTheModel) {
    expectQuantileModel(quantile32);
    expectQuantileModel(quantile64);
}

TEST(CdfNormInv, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {0.3f, 0.001f})
        expectModelAround<Real32>(oktsCdfNormInv_32f_A24, model::CdfNormInv_32f, filler,
                                  {0x00000002, 0x00800000, 0x3D800000, 0x3EE00000, 0x3F000000, 0x3F100000, 0x3F700000,
                                   0x3F800000, 0x3FC00000, 0x7F7FFFFD, 0x7F800000, 0x7FC00000});
    for (const Real64 filler : {0.3, 0.001})
        expectModelAround<Real64>(
            oktsCdfNormInv_64f_A53, model::CdfNormInv_64f, filler,
            {0x0000000000000002, 0x0008000000000000, 0x0010000000000000, 0x0020000000000000, 0x3C90000000000000,
             0x3FB0000000000000, 0x3FDC000000000000, 0x3FE0000000000000, 0x3FE2000000000000, 0x3FEE000000000000,
             0x3FF0000000000000, 0x7FEFFFFFFFFFFFFD, 0x7FF0000000000000, 0x7FF8000000000000});
}

TEST(CdfNormInv, SpecialValues32) {
    for (const Real32 filler : {0.3f, 0.001f, 0.5f}) {
        expectRows<Real32>(oktsCdfNormInv_32f_A24, filler,
                           {
                               {0x3F000000, 0x00000000},
                               {0x00000000, 0xFF800000, oktStatusSingularity},
                               {0x80000000, 0xFF800000, oktStatusSingularity},
                               {0x3F800000, 0x7F800000, oktStatusSingularity},
                               {0x3FC00000, 0xFFC00000, oktStatusDomain},
                               {0x3F800001, 0xFFC00000, oktStatusDomain},
                               {0xBF000000, 0xFFC00000, oktStatusDomain},
                               {0x80000001, 0xFFC00000, oktStatusDomain},
                               {0x7F7FFFFF, 0xFFC00000, oktStatusDomain},
                               {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                               {0x7F800000, 0xFFC00000, oktStatusDomain},
                               {0xFF800000, 0xFFC00000, oktStatusDomain},
                           });
        expectNaNsQuieted<Real32>(oktsCdfNormInv_32f_A24, filler);
    }
}

TEST(CdfNormInv, SpecialValues64) {
    for (const Real64 filler : {0.3, 0.001, 0.5}) {
        expectRows<Real64>(oktsCdfNormInv_64f_A53, filler,
                           {
                               {0x3FE0000000000000, 0x0000000000000000},
                               {0x0000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                               {0x8000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                               {0x3FF0000000000000, 0x7FF0000000000000, oktStatusSingularity},
                               {0x3FF8000000000000, 0xFFF8000000000000, oktStatusDomain},
                               {0x3FF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                               {0xBFE0000000000000, 0xFFF8000000000000, oktStatusDomain},
                               {0x8000000000000001, 0xFFF8000000000000, oktStatusDomain},
                               {0x7FEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                               {0xFFEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                               {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                               {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           });
        expectNaNsQuieted<Real64>(oktsCdfNormInv_64f_A53, filler);
    }
}

TEST(CdfNormInv, TheSmallestElements) {
    EXPECT_NEAR(alone(oktsCdfNormInv_64f_A53, bits64(1)).value, -38.467405617144346, 1e-13);
    EXPECT_EQ(alone(oktsCdfNormInv_64f_A53, bits64(1)).status, oktStatusOk);
    EXPECT_NEAR(alone(oktsCdfNormInv_32f_A24, bits32(1)).value, -14.121427, 1e-5);
    EXPECT_EQ(alone(oktsCdfNormInv_32f_A24, bits32(1)).status, oktStatusOk);
}

TEST(CdfNormInv, IsOddAboutItsCentre) {
    expectOddAboutTheCentre(quantile32);
    expectOddAboutTheCentre(quantile64);
}

TEST(CdfNormInv, Flags) {
    expectQuantileFlags(quantile32);
    expectQuantileFlags(quantile64);
    EXPECT_EQ(flagsAlone(oktsCdfNormInv_64f_A53, bits64(1)), flagDenormal | flagInexact);
    EXPECT_EQ(flagsAlone(oktsCdfNormInv_32f_A24, bits32(1)), flagDenormal | flagInexact);
}

TEST(CdfNormInv, UnderEveryMxcsr) {
    expectQuantileUnderEveryMxcsr(quantile32);
    expectQuantileUnderEveryMxcsr(quantile64);
}

// Phi and its inverse undo each other up to the error of p = Phi(x), over the density, and the rounding of the result;
// near 1 the roundings of p are coarse, in the lower tail p may be subnormal. The mean value theorem wants the smallest
// density between the two points.
template <class T>
void expectUndone(UnaryRoutine<T> phi, UnaryRoutine<T> inverse, T x) {
    const T p = alone(phi, x).value;
    if (p == 1 || p == 0) return;
    const T back = alone(inverse, p).value;
    const Real64 far = std::max(std::abs(Real64{x}), std::abs(Real64{back}));
    // 1/density is sqrt(2 pi) exp(x^2/2): in two factors, so that it is finite where the density is subnormal.
    const Real64 half = std::exp(far * far / 4);
    const Real64 ofP = ulpOf(p) * half * 2.5066282746310002 * half;
    EXPECT_LE(std::abs(Real64{back} - Real64{x}), 0.51 * ofP + 0.51 * Real64{ulpOf(back)}) << x;
}

TEST(CdfNormInv, UndoesCdfNorm) {
    Random random(6);
    for (int i = 0; i < 60000; ++i) {
        const Real64 x = i % 3 == 0 ? random.between(-38.46, -37.5) : random.between(-38.4, 8.2);
        expectUndone<Real64>(oktsCdfNorm_64f_A53, oktsCdfNormInv_64f_A53, x);
        expectUndone<Real32>(oktsCdfNorm_32f_A24, oktsCdfNormInv_32f_A24,
                             static_cast<Real32>(random.between(-14.1, 5.1)));
    }
}

}  // namespace
}  // namespace okt::test
