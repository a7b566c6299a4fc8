// e to the power x, minus 1.
#include "tests/models/expm1_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rounding.h"

#include <limits>

namespace okt::test {
namespace {

template <class T>
T ordinary(Random& random) {
    switch (random.below(4)) {
        case 0: return ofMagnitude<T>(random, -60, 0);
        case 1: return ofMagnitude<T>(random, -12, -4);
        default: return static_cast<T>(random.between(-36.5, 36.5));
    }
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(random.between(-90, 90));
        case 2: return static_cast<T>(random.between(-800, 800));
        default: return ofMagnitude<T>(random, -100, 20);
    }
}

TEST(Expm1, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsExpm1_32f_A24", model::Expm1_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsExpm1_64f_A53", model::Expm1_64f, {ordinary<Real64>, special<Real64>});
}

TEST(Expm1, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsExpm1_32f_A24, model::Expm1_32f, 3.0f,
                              {0x00000002, 0x00800000, 0x23000000, 0x3B800000, 0x3F800000, 0x4211C470, 0x4220CF68,
                               0x42242F88, 0x42242F90, 0x422C3790, 0x42AD4968, 0x42B17218, 0x44317218, 0x7F800000});
    for (const Real64 filler : {3.0, 0x1p-30})
        expectModelAround<Real64>(
            oktsExpm1_64f_A53, model::Expm1_64f, filler,
            {0x0000000000000002, 0x0010000000000000, 0x3C60000000000000, 0x3F70000000000000, 0x3FF0000000000000,
             0x4042388E00000000, 0x404419EC00000000, 0x404419ED00000000, 0x404586F100000000, 0x404586F200000000,
             0x4055A92D00000000, 0x4043687A9F1AF2B1, 0x40862E42FEFA39EF, 0x7FF0000000000000});
}

TEST(Expm1, SpecialValues32) {
    expectRows<Real32>(oktsExpm1_32f_A24, 2,
                       {
                           {0x00000000, 0x00000000, oktStatusOk},
                           {0x80000000, 0x80000000, oktStatusOk},
                           {0x00000001, 0x00000001, oktStatusOk},
                           {0x807FFFFF, 0x807FFFFF, oktStatusOk},
                           {0x1E3CE508, 0x1E3CE508, oktStatusOk},  // 1e-20
                           {0x7F800000, 0x7F800000, oktStatusOk},
                           {0xFF800000, 0xBF800000, oktStatusOk},
                           {0xC2C80000, 0xBF800000, oktStatusOk},
                           {0x42C80000, 0x7F800000, oktStatusOk},        // 100: past Real32, within the warning's limit
                           {0x447A0000, 0x7F800000, oktStatusOverflow},  // 1000
                           {0x7F7FFFFF, 0x7F800000, oktStatusOverflow},
                           {0xFF7FFFFF, 0xBF800000, oktStatusOk},
                       });
    expectNaNsQuieted<Real32>(oktsExpm1_32f_A24, 2);
}

TEST(Expm1, SpecialValues64) {
    expectRows<Real64>(oktsExpm1_64f_A53, 2,
                       {
                           {0x0000000000000000, 0x0000000000000000, oktStatusOk},
                           {0x8000000000000000, 0x8000000000000000, oktStatusOk},
                           {0x0000000000000001, 0x0000000000000001, oktStatusOk},
                           {0x800FFFFFFFFFFFFF, 0x800FFFFFFFFFFFFF, oktStatusOk},
                           {0x3BC79CA10C924223, 0x3BC79CA10C924223, oktStatusOk},  // 1e-20
                           {0x7FF0000000000000, 0x7FF0000000000000, oktStatusOk},
                           {0xFFF0000000000000, 0xBFF0000000000000, oktStatusOk},
                           {0xC059000000000000, 0xBFF0000000000000, oktStatusOk},
                           {0x408F400000000000, 0x7FF0000000000000, oktStatusOverflow},  // 1000
                           {0x40862E42FEFA39F0, 0x7FF0000000000000, oktStatusOverflow},
                           {0x7FEFFFFFFFFFFFFF, 0x7FF0000000000000, oktStatusOverflow},
                           {0xFFEFFFFFFFFFFFFF, 0xBFF0000000000000, oktStatusOk},
                           {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234, oktStatusOk},
                           {0x7FF0000000000001, 0x7FF0000000000001, oktStatusOk},
                           {0xFFF4123400000000, 0xFFF4123400000000, oktStatusOk},
                       });
}

TEST(Expm1, OnlyAnElementBeyondTheRangeOfReal64Warns) {
    EXPECT_EQ(statusOf(oktsExpm1_32f_A24, {1, 800, 100, 2}), oktStatusOverflow);
    EXPECT_EQ(statusOf(oktsExpm1_32f_A24, {1, 100, 700, -800, 2}), oktStatusOk);
    EXPECT_EQ(statusOf(oktsExpm1_64f_A53, {1, 710, 100, 2}), oktStatusOverflow);
    EXPECT_EQ(statusOf(oktsExpm1_64f_A53, {1, 709, 100, -800, 2}), oktStatusOk);
}

TEST(Expm1, AnElementThatGivesItselfRaisesUnderflowUnlessItIsZero) {
    for (const std::uint32_t flag : {flagUnderflow, flagInexact}) {
        expectFlag<Real32>(oktsExpm1_32f_A24, flag, true, {0x1p-58F, -0x1p-100F, 0x1p-149F});
        expectFlag<Real64>(oktsExpm1_64f_A53, flag, true, {0x1p-58, -0x1p-1000, 0x1p-1074});
        expectFlag<Real64>(oktsExpm1_64f_A53, flag, false, {0.0, -0.0});
    }
    expectFlag<Real64>(oktsExpm1_64f_A53, flagUnderflow, false, {0x1p-57, -0x1p-57});
}

TEST(Expm1, Flags) {
    const auto flags32 = [](std::uint32_t b) { return flagsAlone(oktsExpm1_32f_A24, bits32(b)); };
    const auto flags64 = [](std::uint64_t b) { return flagsAlone(oktsExpm1_64f_A53, bits64(b)); };
    for (const std::uint32_t silent : {0x00000000u, 0x80000000u, 0x7F800000u, 0xFF800000u, 0x7FC00001u})
        EXPECT_EQ(flags32(silent), 0u) << std::hex << silent;
    EXPECT_EQ(flags32(0x7F800001), flagInvalid);
    EXPECT_EQ(flags32(0x42C80000), flagOverflow | flagInexact);
    EXPECT_EQ(flags32(0x447A0000), flagOverflow | flagInexact);
    EXPECT_EQ(flags32(0xC2C80000), flagInexact);
    EXPECT_EQ(flags32(0x3F800000), flagInexact);
    for (const std::uint64_t silent :
         {std::uint64_t{0}, std::uint64_t{0x8000000000000000}, std::uint64_t{0x7FF0000000000000},
          std::uint64_t{0xFFF0000000000000}, std::uint64_t{0x7FF8000000000001}, std::uint64_t{0x7FF0000000000001}})
        EXPECT_EQ(flags64(silent), 0u) << std::hex << silent;
    EXPECT_EQ(flags64(0x408F400000000000), flagOverflow | flagInexact);
    EXPECT_EQ(flags64(0xC059000000000000), flagInexact);
    EXPECT_EQ(flags64(0x3FF0000000000000), flagInexact);
    EXPECT_EQ(flags64(0x3BC79CA10C924223), flagUnderflow | flagInexact);
}

// The caller's rounding and flushing act on the arithmetic, in blocks as on single elements.
TEST(Expm1, AgreesWithTheModelUnderEveryControlState) {
    Random random(3);
    for (int round = 0; round < 20; ++round) {
        std::vector<Real32> src32(29);
        for (Real32& x : src32) x = random.below(16) ? ordinary<Real32>(random) : special<Real32>(random);
        expectModelUnderEveryControlState<Real32>(oktsExpm1_32f_A24, model::Expm1_32f, src32);
        std::vector<Real64> src64(29);
        for (Real64& x : src64) x = random.below(16) ? ordinary<Real64>(random) : special<Real64>(random);
        expectModelUnderEveryControlState<Real64>(oktsExpm1_64f_A53, model::Expm1_64f, src64);
    }
}

}  // namespace
}  // namespace okt::test
