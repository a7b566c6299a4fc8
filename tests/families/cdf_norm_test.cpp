// The normal distribution function.
#include "tests/models/normal_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class T>
constexpr Real64 lower = sizeof(T) == 4 ? -14.2 : -38.5;
template <class T>
constexpr Real64 upper = sizeof(T) == 4 ? 5.5 : 8.4;

// Two elements in three are such that four of them are worked side by side.
template <class T>
T ordinary(Random& random) {
    if (random.below(3) == 0) return ofMagnitude<T>(random, -60, 2);
    return static_cast<T>(random.between(-5.4, 5.4));
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(random.between(lower<T>, upper<T>));
        case 2: return ofMagnitude<T>(random, -75, -60);
        default: return ofMagnitude<T>(random, 2, sizeof(T) == 4 ? 127 : 1023);
    }
}

TEST(CdfNorm, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsCdfNorm_32f_A24", model::CdfNorm_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsCdfNorm_64f_A53", model::CdfNorm_64f, {ordinary<Real64>, special<Real64>});
}

TEST(CdfNorm, AgreesWithTheModelInTheLowerTail) {
    const auto tail32 = [](Random& random) { return static_cast<Real32>(random.between(-14.2, -1)); };
    const auto tail64 = [](Random& random) { return random.between(-38.5, -1); };
    expectModel<Real32, Real32>("oktsCdfNorm_32f_A24", model::CdfNorm_32f, {tail32, tail32});
    expectModel<Real64, Real64>("oktsCdfNorm_64f_A53", model::CdfNorm_64f, {tail64, tail64});
}

// The first elements of the rows, which the rounding of (1 + a)^4 decides.
TEST(CdfNorm, AgreesWithTheModelAroundEveryRow) {
    for (int row = 1; row < 22; ++row) {
        const Real64 first = std::exp2(row / 4.0) - 1;
        expectModelAround<Real32>(oktsCdfNorm_32f_A24, model::CdfNorm_32f, 0.75f, {asBits(static_cast<Real32>(first))});
        expectModelAround<Real64>(oktsCdfNorm_64f_A53, model::CdfNorm_64f, 0.75, {asBits(first)});
    }
}

TEST(CdfNorm, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {1.0f, -3.0f})
        expectModelAround<Real32>(oktsCdfNorm_32f_A24, model::CdfNorm_32f, filler,
                                  {0x00000002, 0x00800000, 0x1C800000, 0x40AD7080, 0x4162B914, 0x41532DB0, 0x7F7FFFFD,
                                   0x7F800000, 0x7FC00000});
    for (const Real64 filler : {1.0, -3.0})
        expectModelAround<Real64>(oktsCdfNorm_64f_A53, model::CdfNorm_64f, filler,
                                  {0x0000000000000002, 0x0010000000000000, 0x3B90000000000000, 0x402095B000000000,
                                   0x402095B059D67C4C, 0x4041800000000000, 0x4042C27B05BF1A0B, 0x4042DEC104973DDC,
                                   0x40433E21DC3F3BD7, 0x7FEFFFFFFFFFFFFD, 0x7FF0000000000000, 0x7FF8000000000000});
}

TEST(CdfNorm, SpecialValues32) {
    expectRows<Real32>(oktsCdfNorm_32f_A24, 0.5f,
                       {
                           {0x00000000, 0x3F000000},
                           {0x80000000, 0x3F000000},
                           {0x00000001, 0x3F000000},
                           {0x807FFFFF, 0x3F000000},
                           {0x1C7FFFFF, 0x3F000000},
                           {0x40AD7081, 0x3F800000},
                           {0xC162B915, 0x00000000, oktStatusUnderflow},
                           {0x7F7FFFFF, 0x3F800000},
                           {0xFF7FFFFF, 0x00000000, oktStatusUnderflow},
                           {0x7F800000, 0x3F800000},
                           {0xFF800000, 0x00000000},
                       });
    expectNaNsQuieted<Real32>(oktsCdfNorm_32f_A24, 0.5f);
}

TEST(CdfNorm, SpecialValues64) {
    expectRows<Real64>(oktsCdfNorm_64f_A53, 0.5,
                       {
                           {0x0000000000000000, 0x3FE0000000000000},
                           {0x8000000000000000, 0x3FE0000000000000},
                           {0x0000000000000001, 0x3FE0000000000000},
                           {0x800FFFFFFFFFFFFF, 0x3FE0000000000000},
                           {0xBB8FFFFFFFFFFFFF, 0x3FE0000000000000},
                           {0x402095B059D67C4D, 0x3FF0000000000000},
                           {0xC0433E21DC3F3BD8, 0x0000000000000000, oktStatusUnderflow},
                           {0x7FEFFFFFFFFFFFFF, 0x3FF0000000000000},
                           {0xFFEFFFFFFFFFFFFF, 0x0000000000000000, oktStatusUnderflow},
                           {0x7FF0000000000000, 0x3FF0000000000000},
                           {0xFFF0000000000000, 0x0000000000000000},
                       });
    expectNaNsQuieted<Real64>(oktsCdfNorm_64f_A53, 0.5);
}

TEST(CdfNorm, TheLimitsThemselvesTakeTheMainPath) {
    const auto least = alone(oktsCdfNorm_64f_A53, bits64(0xC0433E21DC3F3BD7));
    EXPECT_EQ(least.status, oktStatusOk);
    EXPECT_LE(asBits(least.value), 1u);
    const auto greatest = alone(oktsCdfNorm_64f_A53, bits64(0x402095B059D67C4C));
    EXPECT_EQ(greatest.status, oktStatusOk);
    EXPECT_GE(asBits(greatest.value), 0x3FEFFFFFFFFFFFFFu);
    const auto subnormal = alone(oktsCdfNorm_64f_A53, -37.6);
    EXPECT_EQ(subnormal.status, oktStatusOk);
    EXPECT_GT(subnormal.value, 0);
    EXPECT_LT(subnormal.value, std::numeric_limits<Real64>::min());
}

TEST(CdfNorm, Flags) {
    EXPECT_EQ(flagsAlone(oktsCdfNorm_64f_A53, 9.0), flagInexact);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_64f_A53, -39.0), flagUnderflow | flagInexact);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_64f_A53, -38.0),
              flagUnderflow | flagDenormal | flagInexact);  // subnormal parts added
    EXPECT_EQ(flagsAlone(oktsCdfNorm_64f_A53, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_64f_A53, bits64(0xFFF0000000000000)), 0u);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_32f_A24, 6.0f), flagInexact);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_32f_A24, -15.0f), flagUnderflow | flagInexact);
    EXPECT_EQ(flagsAlone(oktsCdfNorm_32f_A24, bits32(0x7F800001)), flagInvalid);
    expectModelFlags<Real32>(oktsCdfNorm_32f_A24, model::CdfNorm_32f);
    expectModelFlags<Real64>(oktsCdfNorm_64f_A53, model::CdfNorm_64f);
}

// The frame leaves the caller's MXCSR in force, on the work side by side as on single elements.
TEST(CdfNorm, AgreesWithTheModelUnderEveryMxcsr) {
    Random random(11);
    std::vector<Real64> src(400), dst(400), expected(400);
    std::vector<Real32> src32(400), dst32(400), expected32(400);
    for (std::size_t i = 0; i < 400; ++i) {
        src[i] = i % 40 == 0 ? special<Real64>(random) : ordinary<Real64>(random);
        src32[i] = i % 40 == 0 ? special<Real32>(random) : ordinary<Real32>(random);
    }
    underEveryMxcsr([&] {
        EXPECT_EQ(oktsCdfNorm_64f_A53(src.data(), dst.data(), 400),
                  model::CdfNorm_64f(src.data(), expected.data(), 400));
        EXPECT_EQ(oktsCdfNorm_32f_A24(src32.data(), dst32.data(), 400),
                  model::CdfNorm_32f(src32.data(), expected32.data(), 400));
        for (std::size_t i = 0; i < 400; ++i) {
            EXPECT_TRUE(sameBits(dst[i], asBits(expected[i]))) << std::hex << asBits(src[i]);
            EXPECT_TRUE(sameBits(dst32[i], asBits(expected32[i]))) << std::hex << asBits(src32[i]);
        }
    });
}

}  // namespace
}  // namespace okt::test
