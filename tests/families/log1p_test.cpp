// Natural logarithm of one plus x.
#include "tests/models/log1p_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rounding.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

// Ordinary elements come from every range; arrays of one range alone take courses of their own.
template <class T>
T ordinary(Random& random) {
    switch (random.below(6)) {
        case 0: return ofMagnitude<T>(random, -57, -5);
        case 1: return static_cast<T>(random.between(-0.0713, 0.0713));
        case 2: return -static_cast<T>(1 - std::ldexp(random.unit() + 0.5, -static_cast<int>(random.below(50)) - 1));
        default: return std::abs(ofMagnitude<T>(random, -5, 40));
    }
}
template <class T, int low, int high>
T within(Random& random) {
    return ofMagnitude<T>(random, low, high);
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(random.between(-2, -0.5));
        case 2: return ofMagnitude<T>(random, -126, 127);
        default: return std::abs(ofMagnitude<T>(random, 50, 60));
    }
}

TEST(Log1p, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsLog1p_32f_A24", model::Log1p_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsLog1p_64f_A53", model::Log1p_64f, {ordinary<Real64>, special<Real64>});
}
TEST(Log1p, AgreesWithTheModelInEachRange) {
    expectModel<Real32, Real32>("oktsLog1p_32f_A24", model::Log1p_32f, {within<Real32, -6, -5>, ordinary<Real32>});
    expectModel<Real64, Real64>("oktsLog1p_64f_A53", model::Log1p_64f, {within<Real64, -6, -5>, ordinary<Real64>});
    expectModel<Real32, Real32>("oktsLog1p_32f_A24", model::Log1p_32f, {within<Real32, -13, -7>, special<Real32>});
    expectModel<Real64, Real64>("oktsLog1p_64f_A53", model::Log1p_64f, {within<Real64, -13, -7>, special<Real64>});
    expectModel<Real32, Real32>("oktsLog1p_32f_A24", model::Log1p_32f, {within<Real32, -57, -14>, ordinary<Real32>});
    expectModel<Real64, Real64>("oktsLog1p_64f_A53", model::Log1p_64f, {within<Real64, -57, -14>, ordinary<Real64>});
    expectModel<Real32, Real32>("oktsLog1p_32f_A24", model::Log1p_32f,
                                {within<Real32, -3, -1>, within<Real32, -60, 56>});
    expectModel<Real64, Real64>("oktsLog1p_64f_A53", model::Log1p_64f,
                                {within<Real64, -3, -1>, within<Real64, -60, 56>});
}

TEST(Log1p, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {3.0f, 0x1p-5f, 0x1p-8f, 0x1p-30f})
        expectModelAround<Real32>(oktsLog1p_32f_A24, model::Log1p_32f, filler,
                                  {0x00000002, 0x00800000, 0x23000000, 0x39000000, 0x3C800000, 0x3D920000, 0x3F800000,
                                   0x5B000000, 0x7F800000});
    for (const Real64 filler : {3.0, 0x1p-5, 0x1p-8, 0x1p-30})
        expectModelAround<Real64>(
            oktsLog1p_64f_A53, model::Log1p_64f, filler,
            {0x0000000000000002, 0x0010000000000000, 0x3C60000000000000, 0x3F20000000000000, 0x3F90000000000000,
             0x3FB2400000000000, 0x3FF0000000000000, 0x4360000000000000, 0x7FF0000000000000});
}

TEST(Log1p, AgreesWithTheModelAtEveryTableEntry) {
    for (int i = 0; i < 256; ++i)
        for (const Real64 rest : {0.0, 0x1p-30, 0x1p-9})
            for (const Real64 scale : {0.5, 1.0, 2.0, 0x1p40, 0x1p54, 0x1p55, 0x1p500}) {
                const Real64 x = (1 + i / 256.0 + rest) * scale - (scale < 0x1p54 ? 1 : 0);
                EXPECT_TRUE(sameBits(alone(oktsLog1p_64f_A53, x).value, asBits(alone(model::Log1p_64f, x).value))) << x;
            }
}

TEST(Log1p, SpecialValues32) {
    expectRows<Real32>(oktsLog1p_32f_A24, 2,
                       {
                           {0x00000000, 0x00000000, oktStatusOk},
                           {0x80000000, 0x80000000, oktStatusOk},
                           {0x00000001, 0x00000001, oktStatusOk},
                           {0x807FFFFF, 0x807FFFFF, oktStatusOk},
                           {0x7F800000, 0x7F800000, oktStatusOk},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0xBF800001, 0xFFC00000, oktStatusDomain},
                           {0xBF800000, 0xFF800000, oktStatusSingularity},
                       });
    expectNaNsQuieted<Real32>(oktsLog1p_32f_A24, 2);
}

TEST(Log1p, SpecialValues64) {
    expectRows<Real64>(oktsLog1p_64f_A53, 2,
                       {
                           {0x0000000000000000, 0x0000000000000000, oktStatusOk},
                           {0x8000000000000000, 0x8000000000000000, oktStatusOk},
                           {0x0000000000000001, 0x0000000000000001, oktStatusOk},
                           {0x800FFFFFFFFFFFFF, 0x800FFFFFFFFFFFFF, oktStatusOk},
                           {0x7FF0000000000000, 0x7FF0000000000000, oktStatusOk},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF00000010C6F7A, 0xFFF8000000000000, oktStatusDomain},  // -1.000000001
                           {0xBFF0000000000000, 0xFFF0000000000000, oktStatusSingularity},
                           {0xBFEFFFFFFFFFFFFF, 0xC0425E4F7B2737FA, oktStatusOk},  // -53 ln 2
                       });
    expectNaNsQuieted<Real64>(oktsLog1p_64f_A53, 2);
}

TEST(Log1p, AnElementThatGivesItselfRaisesUnderflowUnlessItIsZero) {
    for (const std::uint32_t flag : {flagUnderflow, flagInexact}) {
        expectFlag<Real32>(oktsLog1p_32f_A24, flag, true, {0x1p-58F, -0x1p-100F, 0x1p-149F});
        expectFlag<Real64>(oktsLog1p_64f_A53, flag, true, {0x1p-58, -0x1p-1000, 0x1p-1074});
        expectFlag<Real64>(oktsLog1p_64f_A53, flag, false, {0.0, -0.0});
    }
    expectFlag<Real64>(oktsLog1p_64f_A53, flagUnderflow, false, {0x1p-57, -0x1p-57});
}

TEST(Log1p, Flags) {
    const auto flags32 = [](std::uint32_t b) { return flagsAlone(oktsLog1p_32f_A24, bits32(b)); };
    const auto flags64 = [](std::uint64_t b) { return flagsAlone(oktsLog1p_64f_A53, bits64(b)); };
    for (const std::uint32_t silent : {0x00000000u, 0x80000000u, 0x7F800000u, 0x7FC00001u})
        EXPECT_EQ(flags32(silent), 0u) << std::hex << silent;
    EXPECT_EQ(flags32(0x7F800001), flagInvalid);
    EXPECT_EQ(flags32(0xFF800000), flagInvalid);
    EXPECT_EQ(flags32(0xBF800001), flagInvalid);
    EXPECT_EQ(flags32(0xBF800000), flagDivideByZero);
    EXPECT_EQ(flags32(0x3F800000), flagInexact);
    for (const std::uint64_t silent : {std::uint64_t{0}, std::uint64_t{0x8000000000000000},
                                       std::uint64_t{0x7FF0000000000000}, std::uint64_t{0x7FF8000000000001}})
        EXPECT_EQ(flags64(silent), 0u) << std::hex << silent;
    EXPECT_EQ(flags64(0x7FF0000000000001), flagInvalid);
    EXPECT_EQ(flags64(0xFFF0000000000000), flagInvalid);
    EXPECT_EQ(flags64(0xC000000000000000), flagInvalid);
    EXPECT_EQ(flags64(0xBFF0000000000000), flagDivideByZero);
    EXPECT_EQ(flags64(0x3FF0000000000000), flagInexact);
    EXPECT_EQ(flags64(0x3BC79CA10C924223), flagUnderflow | flagInexact);
}

TEST(Log1p, AgreesWithTheModelUnderEveryControlState) {
    Random random(3);
    for (int round = 0; round < 20; ++round) {
        std::vector<Real32> src32(29);
        for (Real32& x : src32) x = random.below(16) ? ordinary<Real32>(random) : special<Real32>(random);
        expectModelUnderEveryControlState<Real32>(oktsLog1p_32f_A24, model::Log1p_32f, src32);
        std::vector<Real64> src64(29);
        for (Real64& x : src64) x = random.below(16) ? ordinary<Real64>(random) : special<Real64>(random);
        expectModelUnderEveryControlState<Real64>(oktsLog1p_64f_A53, model::Log1p_64f, src64);
    }
}

}  // namespace
}  // namespace okt::test
