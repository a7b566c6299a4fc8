// Natural and decimal logarithm.
#include "tests/models/log_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

#include <cmath>

namespace okt::test {
namespace {

// Ordinary elements are positive normal numbers, many of them next to 1; special ones are of every class.
template <class T>
T ordinary(Random& random) {
    constexpr int lowest = sizeof(T) == 4 ? -126 : -1022;
    switch (random.below(4)) {
        case 0: return std::abs(ofMagnitude<T>(random, lowest, -lowest));
        case 1: return static_cast<T>(random.between(0.98, 1.02));
        case 2: return T{1} + ofMagnitude<T>(random, sizeof(T) == 4 ? -23 : -52, -8);
        default: return static_cast<T>(random.between(0.4, 4.1));
    }
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0:
            return std::abs(ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, -100)) *
                   std::numeric_limits<T>::epsilon();
        case 1: return -ordinary<T>(random);
        default: return specialElement<T>(random);
    }
}

TEST(Ln, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsLn_32f_A24", model::Ln_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsLn_64f_A53", model::Ln_64f, {ordinary<Real64>, special<Real64>});
}
TEST(Log10, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsLog10_32f_A24", model::Log10_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsLog10_64f_A53", model::Log10_64f, {ordinary<Real64>, special<Real64>});
}

TEST(Ln, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsLn_32f_A24, model::Ln_32f, 3.0f,
                              {0x00000002, 0x00400000, 0x00800000, 0x7F800000, 0x3F800000, 0x3F7E0000, 0x3F820000,
                               0x3FC00000, 0x3F810000, 0x3F7F0000, 0x40000000});
    expectModelAround<Real64>(
        oktsLn_64f_A53, model::Ln_64f, 3.0,
        {0x0000000000000002, 0x0008000000000000, 0x0010000000000000, 0x7FF0000000000000, 0x3FF0000000000000,
         0x3FF7FC0000000000, 0x3FF0040000000000, 0x3FEFFC0000000000, 0x4000000000000000});
}
TEST(Log10, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(
        oktsLog10_32f_A24, model::Log10_32f, 3.0f,
        {0x00000002, 0x00400000, 0x00800000, 0x7F800000, 0x3F800000, 0x3FBF8000, 0x3F808000, 0x3F7F8000, 0x40000000});
    expectModelAround<Real64>(
        oktsLog10_64f_A53, model::Log10_64f, 3.0,
        {0x0000000000000002, 0x0008000000000000, 0x0010000000000000, 0x7FF0000000000000, 0x3FF0000000000000,
         0x3FF7FC0000000000, 0x3FF0040000000000, 0x3FEFFC0000000000, 0x4000000000000000});
}

// Every leading part of the significand, with what rounds it to the next table entry, in the binades next to 1.
TEST(Ln, AgreesWithTheModelAtEveryTableEntry) {
    for (std::uint32_t exponent : {125u, 126u, 127u, 128u})
        for (std::uint32_t leading = 0; leading < 128; ++leading)
            for (std::uint32_t rest : {0x0000u, 0x0001u, 0x7FFFu, 0xFFFFu}) {
                const Real32 x = bits32(exponent << 23 | leading << 16 | rest);
                EXPECT_TRUE(sameBits(alone(oktsLn_32f_A24, x).value, asBits(alone(model::Ln_32f, x).value))) << x;
            }
    for (std::uint64_t exponent : {1021u, 1022u, 1023u, 1024u})
        for (std::uint64_t leading = 0; leading < 1024; ++leading)
            for (std::uint64_t rest : {0x0u, 0x1u, 0x3FFFFFFFu}) {
                const Real64 x = bits64(exponent << 52 | leading << 42 | rest << 12);
                EXPECT_TRUE(sameBits(alone(oktsLn_64f_A53, x).value, asBits(alone(model::Ln_64f, x).value))) << x;
            }
}
TEST(Log10, AgreesWithTheModelAtEveryTableEntry) {
    for (std::uint32_t exponent : {125u, 126u, 127u, 128u})
        for (std::uint32_t leading = 0; leading < 256; ++leading)
            for (std::uint32_t rest : {0x0000u, 0x0001u, 0x3FFFu, 0x7FFFu}) {
                const Real32 x = bits32(exponent << 23 | leading << 15 | rest);
                EXPECT_TRUE(sameBits(alone(oktsLog10_32f_A24, x).value, asBits(alone(model::Log10_32f, x).value))) << x;
            }
    for (std::uint64_t exponent : {1021u, 1022u, 1023u, 1024u})
        for (std::uint64_t leading = 0; leading < 1024; ++leading)
            for (std::uint64_t rest : {0x0u, 0x1u, 0x3FFFFFFFu}) {
                const Real64 x = bits64(exponent << 52 | leading << 42 | rest << 12);
                EXPECT_TRUE(sameBits(alone(oktsLog10_64f_A53, x).value, asBits(alone(model::Log10_64f, x).value))) << x;
            }
}

std::initializer_list<Row<Real32>> commonRows32() {
    static constexpr std::initializer_list<Row<Real32>> rows = {
        {0x00000000, 0xFF800000, oktStatusSingularity}, {0x80000000, 0xFF800000, oktStatusSingularity},
        {0x7F800000, 0x7F800000, oktStatusOk},          {0x3F800000, 0x00000000, oktStatusOk},
        {0x7FC00000, 0x7FC00000, oktStatusOk},          {0xFFC54321, 0xFFC54321, oktStatusOk},
        {0x7F800001, 0x7F800001, oktStatusOk},          {0xFFA12345, 0xFFA12345, oktStatusOk},
    };
    return rows;
}
std::initializer_list<Row<Real64>> commonRows64() {
    static constexpr std::initializer_list<Row<Real64>> rows = {
        {0x0000000000000000, 0xFFF0000000000000, oktStatusSingularity},
        {0x8000000000000000, 0xFFF0000000000000, oktStatusSingularity},
        {0x7FF0000000000000, 0x7FF0000000000000, oktStatusOk},
        {0x3FF0000000000000, 0x0000000000000000, oktStatusOk},
        {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234, oktStatusOk},
        {0xFFF8000000000000, 0xFFF8000000000000, oktStatusOk},
        {0x7FF0000000000001, 0x7FF0000000000001, oktStatusOk},
        {0xFFF4123400000000, 0xFFF4123400000000, oktStatusOk},
        {0x8000000000000001, 0xFFF8000000000000, oktStatusDomain},
        {0xBFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
        {0xFFEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
        {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
    };
    return rows;
}

TEST(Ln, SpecialValues) {
    expectRows<Real32>(oktsLn_32f_A24, 5, commonRows32());
    expectRows<Real32>(oktsLn_32f_A24, 5,
                       {
                           {0x80000001, 0x7FFC0000, oktStatusDomain},
                           {0xBF800000, 0x7FFC0000, oktStatusDomain},
                           {0xFF7FFFFF, 0x7FFC0000, oktStatusDomain},
                           {0xFF800000, 0x7FFC0000, oktStatusDomain},
                           {0x00000001, 0xC2CE8ED0, oktStatusOk},  // -149 ln 2
                       });
    expectRows<Real64>(oktsLn_64f_A53, 5, commonRows64());
    expectRows<Real64>(oktsLn_64f_A53, 5, {{0x0000000000000001, 0xC0874385446D71C3, oktStatusOk}});  // -1074 ln 2
}
TEST(Log10, SpecialValues) {
    expectRows<Real32>(oktsLog10_32f_A24, 5, commonRows32());
    expectRows<Real32>(oktsLog10_32f_A24, 5,
                       {
                           {0x80000001, 0xFFC00000, oktStatusDomain},
                           {0xBF800000, 0xFFC00000, oktStatusDomain},
                           {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0x00000001, 0xC23369F4, oktStatusOk},  // -149 log10 2
                       });
    expectRows<Real64>(oktsLog10_64f_A53, 5, commonRows64());
    expectRows<Real64>(oktsLog10_64f_A53, 5, {{0x0000000000000001, 0xC07434E6420F4374, oktStatusOk}});  // -1074 log10 2
}

// Just below 1 the result is close to x - 1 and keeps its relative accuracy.
TEST(Ln, KeepsRelativeAccuracyNextToOne) {
    for (int i = 1; i < 2000; ++i) {
        const double d = i * 0x1p-24;
        EXPECT_NEAR(alone(oktsLn_32f_A24, static_cast<Real32>(1 - d)).value / std::log1p(-d), 1, 2e-7);
        const double d64 = i * 0x1p-53;
        EXPECT_NEAR(alone(oktsLn_64f_A53, 1 - d64).value / std::log1p(-d64), 1, 4e-16);
        EXPECT_NEAR(alone(oktsLog10_32f_A24, static_cast<Real32>(1 - d)).value / (std::log1p(-d) / std::log(10.0)), 1,
                    2e-7);
        EXPECT_NEAR(alone(oktsLog10_64f_A53, 1 - d64).value / (std::log1p(-d64) / std::log(10.0)), 1, 4e-16);
    }
}

template <class T>
void expectNoFlags(UnaryRoutine<T> f, std::initializer_list<PatternOf<T>> patterns) {
    for (const auto pattern : patterns) EXPECT_EQ(flagsAlone(f, std::bit_cast<T>(pattern)), 0u) << std::hex << pattern;
}

TEST(Ln, Flags) {
    expectNoFlags<Real32>(oktsLn_32f_A24, {0, 0x80000000, 0xBF800000, 0xFF800000, 0x7F800000, 0x7FC00000, 0xFFC00001,
                                           0x7F800001, 0xFFA00000, 0x3F800000});
    expectNoFlags<Real64>(oktsLn_64f_A53,
                          {0, 0x8000000000000000, 0xBFF0000000000000, 0xFFF0000000000000, 0x7FF0000000000000,
                           0x7FF8000000000000, 0xFFF8000000000001, 0x3FF0000000000000});
    EXPECT_EQ(flagsAlone(oktsLn_64f_A53, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsLn_64f_A53, bits64(0xFFF4000000000000)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsLn_64f_A53, 3.0), flagInexact);
    EXPECT_EQ(flagsAlone(oktsLn_32f_A24, 3.0f), flagInexact);
}
TEST(Log10, Flags) {
    expectNoFlags<Real32>(oktsLog10_32f_A24,
                          {0, 0x80000000, 0xBF800000, 0xFF800000, 0x7F800000, 0x7FC00000, 0xFFC00001, 0x3F800000});
    expectNoFlags<Real64>(oktsLog10_64f_A53, {0, 0x8000000000000000, 0xBFF0000000000000, 0xFFF0000000000000,
                                              0x7FF0000000000000, 0x7FF8000000000000, 0xFFF8000000000001});
    EXPECT_EQ(flagsAlone(oktsLog10_32f_A24, bits32(0x7F800001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsLog10_32f_A24, bits32(0xFFA00000)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsLog10_64f_A53, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsLog10_64f_A53, bits64(0xFFF4000000000000)), flagInvalid);
}

}  // namespace
}  // namespace okt::test
