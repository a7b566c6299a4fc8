// Real quotients and reciprocals.
#include "tests/models/division_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <limits>

namespace okt::test {
namespace {

constexpr Real32 inf32 = std::numeric_limits<Real32>::infinity();
constexpr Real64 inf64 = std::numeric_limits<Real64>::infinity();
const Real32 nan32 = bits32(0x7FC54321);
const Real64 nan64 = bits64(0x7FF8ABCDE0001234);

constexpr Filling<Real32> elements32{ordinaryElement<Real32, -60, 60>, specialElement<Real32>};
constexpr Filling<Real64> elements64{ordinaryElement<Real64, -500, 500>, specialElement<Real64>};

TEST(Div, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsDiv_32f_A24", model::Div_32f, elements32, elements32);
        expectModel<Real64, Real64>("oktsDiv_64f_A53", model::Div_64f, elements64, elements64);
    });
}
TEST(Inv, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsInv_32f_A24", model::Inv_32f, elements32);
        expectModel<Real64, Real64>("oktsInv_64f_A53", model::Inv_64f, elements64);
    });
}

TEST(Div, RaisesTheFlagsOfTheModel) {
    expectModelFlags(oktsDiv_32f_A24, model::Div_32f);
    expectModelFlags(oktsDiv_64f_A53, model::Div_64f);
    expectModelFlags(oktsInv_32f_A24, model::Inv_32f);
    expectModelFlags(oktsInv_64f_A53, model::Inv_64f);
}

TEST(Div, SpecialValues32) {
    constexpr std::uint32_t one = 0x3F800000, minusOne = 0xBF800000, inf = 0x7F800000, nan = 0x7FC54321, zero = 0,
                            minusZero = 0x80000000;
    expectRows<Real32>(oktsDiv_32f_A24, 3,
                       {
                           {one, zero, inf, oktStatusSingularity},
                           {minusOne, zero, 0xFF800000, oktStatusSingularity},
                           {one, minusZero, 0xFF800000, oktStatusSingularity},
                           {minusOne, minusZero, inf, oktStatusSingularity},
                           {0x00000001, zero, inf, oktStatusSingularity},
                           {zero, zero, 0xFFC00000, oktStatusSingularity},
                           {minusZero, zero, 0xFFC00000, oktStatusSingularity},
                           {inf, zero, inf},
                           {inf, minusZero, 0xFF800000},
                           {nan, zero, nan},
                           {zero, nan, nan},
                           {0x7F800001, 0x7FC54321, 0x7FC00001},  // of two NaNs the dividend's
                           {0x7FC54321, 0xFF812345, 0x7FC54321},
                           {one, inf, zero},
                           {one, 0xFF800000, minusZero},
                           {inf, inf, 0xFFC00000},
                           {one, 0x00000001, inf},
                           {one, 0x40400000, 0x3EAAAAAB},
                       });
}

TEST(Div, SpecialValues64) {
    constexpr std::uint64_t one = 0x3FF0000000000000, minusOne = 0xBFF0000000000000, inf = 0x7FF0000000000000,
                            minusInf = 0xFFF0000000000000, zero = 0, minusZero = 0x8000000000000000;
    expectRows<Real64>(oktsDiv_64f_A53, 3,
                       {
                           {one, zero, inf, oktStatusSingularity},
                           {minusOne, zero, minusInf, oktStatusSingularity},
                           {one, minusZero, minusInf, oktStatusSingularity},
                           {zero, zero, 0xFFF8000000000000, oktStatusSingularity},
                           {inf, zero, inf},
                           {0x7FF8ABCDE0001234, zero, 0x7FF8ABCDE0001234},
                           {zero, 0x7FF0000000000001, 0x7FF8000000000001},
                           {0x7FF0000000000001, 0x7FF8ABCDE0001234, 0x7FF8000000000001},
                           {one, inf, zero},
                           {one, 0x0000000000000001, inf},
                           {one, 0x000FFFFFFFFFFFFF, 0x7FD0000000000001},
                           {one, 0x0010000000000000, 0x7FD0000000000000},
                       });
}

TEST(Inv, SpecialValues) {
    expectRows<Real32>(oktsInv_32f_A24, 3,
                       {
                           {0x00000000, 0x7F800000, oktStatusSingularity},
                           {0x80000000, 0xFF800000, oktStatusSingularity},
                           {0x7F800000, 0x00000000},
                           {0xFF800000, 0x80000000},
                           {0x00000001, 0x7F800000},
                           {0x80000001, 0xFF800000},
                           {0x40000000, 0x3F000000},
                       });
    expectNaNsQuieted<Real32>(oktsInv_32f_A24, 3);
    expectRows<Real64>(oktsInv_64f_A53, 3,
                       {
                           {0x0000000000000000, 0x7FF0000000000000, oktStatusSingularity},
                           {0x8000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                           {0x7FF0000000000000, 0x0000000000000000},
                           {0xFFF0000000000000, 0x8000000000000000},
                           {0xFFF0000000000001, 0xFFF8000000000001},
                           {0x0000000000000001, 0x7FF0000000000000},
                           {0x8000000100000000, 0xFFF0000000000000},
                           {0x4000000000000000, 0x3FE0000000000000},
                       });
}

TEST(Div, UnderDenormalsAreZeroASubnormalDivisorWarnsOnReal64Alone) {
    std::vector<Real32> x(9, 1.0f), y(9, bits32(1)), dst(9);
    std::vector<Real64> u(9, 1.0), v(9, bits64(1)), quotient(9);
    OktStatus of32, of64, inverse32, inverse64;
    {
        const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
        of32 = oktsDiv_32f_A24(x.data(), y.data(), dst.data(), 9);
        of64 = oktsDiv_64f_A53(u.data(), v.data(), quotient.data(), 9);
        inverse32 = oktsInv_32f_A24(y.data(), x.data(), 9);
        inverse64 = oktsInv_64f_A53(v.data(), u.data(), 9);
    }
    EXPECT_EQ(of32, oktStatusOk);
    EXPECT_EQ(of64, oktStatusSingularity);
    EXPECT_EQ(inverse32, oktStatusOk);
    EXPECT_EQ(inverse64, oktStatusOk);
    EXPECT_EQ(dst[8], inf32);
    EXPECT_EQ(quotient[8], inf64);
    EXPECT_EQ(oktsDiv_64f_A53(u.data(), v.data(), quotient.data(), 9), oktStatusOk);
}

template <class T>
std::uint32_t flagsOfDiv(OktStatus (*f)(const T*, const T*, T*, std::int32_t), T x, T y, std::int32_t len) {
    const auto n = static_cast<std::size_t>(len);
    std::vector<T> src1(n, T{1}), src2(n, T{2}), dst(n);
    std::memcpy(&src1[0], &x, sizeof x);
    std::memcpy(&src2[0], &y, sizeof y);
    return flagsRaised([&] { f(src1.data(), src2.data(), dst.data(), len); });
}

// The same flags in a block as alone.
TEST(Div, Flags) {
    for (const std::int32_t len : {1, 8, 11}) {
        EXPECT_EQ(flagsOfDiv(oktsDiv_32f_A24, 1.0f, 0.0f, len), flagDivideByZero);
        EXPECT_EQ(flagsOfDiv(oktsDiv_32f_A24, 0.0f, 0.0f, len), flagInvalid | flagDivideByZero);
        EXPECT_EQ(flagsOfDiv(oktsDiv_32f_A24, inf32, 0.0f, len), 0u);
        EXPECT_EQ(flagsOfDiv(oktsDiv_32f_A24, nan32, 0.0f, len), 0u);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 1.0, 0.0, len), flagDivideByZero);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 0.0, 0.0, len), flagInvalid | flagDivideByZero);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, nan64, 0.0, len), 0u);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, nan64, bits64(1), len), 0u);  // no comparison beside a NaN
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 1.0, nan64, len), 0u);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 1.0, bits64(0x7FF0000000000001), len), flagInvalid);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 1.0, 3.0, len), flagInexact);
        EXPECT_EQ(flagsOfDiv(oktsDiv_64f_A53, 1.0, 4.0, len), 0u);
    }
    EXPECT_EQ(flagsAlone(oktsInv_32f_A24, 0.0f), flagDivideByZero);
    EXPECT_EQ(flagsAlone(oktsInv_64f_A53, -0.0), flagDivideByZero);
    EXPECT_EQ(flagsAlone(oktsInv_64f_A53, inf64), 0u);
    EXPECT_EQ(flagsAlone(oktsInv_32f_A24, bits32(1)), flagOverflow | flagInexact | flagDenormal);
}

}  // namespace
}  // namespace okt::test
