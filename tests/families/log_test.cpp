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

// Every leading part of the significand, of so many bits, with what rounds it to the next table entry, in the binades
// next to 1.
template <class T>
void expectModelAtEveryTableEntry(UnaryRoutine<T> f, UnaryRoutine<T> model, int leadingBits,
                                  std::initializer_list<PatternOf<T>> rests) {
    constexpr int fractionBits = std::numeric_limits<T>::digits - 1;
    const PatternOf<T> one = asBits(T{1}) >> fractionBits;
    for (PatternOf<T> exponent = one - 2; exponent <= one + 1; ++exponent)
        for (PatternOf<T> leading = 0; leading < PatternOf<T>{1} << leadingBits; ++leading)
            for (const PatternOf<T> rest : rests) {
                const T x = std::bit_cast<T>(static_cast<PatternOf<T>>(exponent << fractionBits |
                                                                       leading << (fractionBits - leadingBits) | rest));
                EXPECT_TRUE(sameBits(alone(f, x).value, asBits(alone(model, x).value))) << x;
            }
}
TEST(Ln, AgreesWithTheModelAtEveryTableEntry) {
    expectModelAtEveryTableEntry<Real32>(oktsLn_32f_A24, model::Ln_32f, 7, {0x0000, 0x0001, 0x7FFF, 0xFFFF});
    expectModelAtEveryTableEntry<Real64>(oktsLn_64f_A53, model::Ln_64f, 10, {0x0, 0x1000, 0x3FFFFFFF000});
}
TEST(Log10, AgreesWithTheModelAtEveryTableEntry) {
    expectModelAtEveryTableEntry<Real32>(oktsLog10_32f_A24, model::Log10_32f, 8, {0x0000, 0x0001, 0x3FFF, 0x7FFF});
    expectModelAtEveryTableEntry<Real64>(oktsLog10_64f_A53, model::Log10_64f, 10, {0x0, 0x1000, 0x3FFFFFFF000});
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
