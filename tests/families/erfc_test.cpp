// The complementary error function.
#include "tests/models/erf_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

namespace okt::test {
namespace {

template <class T>
constexpr Real64 limit = sizeof(T) == 4 ? 10.054194 : 26.5432;

template <class T>
T ordinary(Random& random) {
    if (random.below(3) == 0) return ofMagnitude<T>(random, -60, 3);
    return static_cast<T>(random.between(-limit<T>, limit<T>));
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(random.between(limit<T> - 1, limit<T> + 1));
        case 2: return static_cast<T>(-random.between(3, limit<T> + 1));
        default: return ofMagnitude<T>(random, 2, sizeof(T) == 4 ? 127 : 1023);
    }
}

TEST(Erfc, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsErfc_32f_A24", model::Erfc_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsErfc_64f_A53", model::Erfc_64f, {ordinary<Real64>, special<Real64>});
}

// Every row's first element and the element before it.
TEST(Erfc, AgreesWithTheModelAroundEveryRow) {
    for (std::uint32_t row = 0; row < 24; ++row)
        expectModelAround<Real32>(oktsErfc_32f_A24, model::Erfc_32f, 0.75f, {0x3E600000 + row * 0x200000});
    for (std::uint64_t row = 0; row < 29; ++row)
        expectModelAround<Real64>(oktsErfc_64f_A53, model::Erfc_64f, 0.75,
                                  {0x3FCC000000000000 + row * 0x4000000000000});
}

TEST(Erfc, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {1.0f, -1.0f, 9.5f, 11.0f})
        expectModelAround<Real32>(oktsErfc_32f_A24, model::Erfc_32f, filler,
                                  {0x00000002, 0x00800000, 0x32000000, 0x407547CA, 0x41131CE0, 0x4120DDFB, 0x4120DDFC,
                                   0x7F7FFFFD, 0x7F800000, 0x7FC00000});
    for (const Real64 filler : {1.0, -1.0, 26.6, 28.0})
        expectModelAround<Real64>(oktsErfc_64f_A53, model::Erfc_64f, filler,
                                  {0x0000000000000002, 0x0010000000000000, 0x3C80000000000000, 0x403A8B1200000000,
                                   0x403B39DC00000000, 0x403B39DC41E48BFC, 0x403B39DD00000000, 0x7FEFFFFFFFFFFFFD,
                                   0x7FF0000000000000, 0x7FF0000100000000, 0x7FF8000000000000});
}

TEST(Erfc, SpecialValues32) {
    expectRows<Real32>(oktsErfc_32f_A24, 0.5f,
                       {
                           {0x00000000, 0x3F800000},
                           {0x80000000, 0x3F800000},
                           {0x00000001, 0x3F800000},
                           {0x80000001, 0x3F800000},
                           {0xC0800000, 0x40000000},                      // -4
                           {0x41300000, 0x00000000, oktStatusUnderflow},  // 11
                           {0x7F7FFFFF, 0x00000000, oktStatusUnderflow},
                           {0xFF7FFFFF, 0x40000000},
                           {0x7F800000, 0x00000000},
                           {0xFF800000, 0x40000000},
                       });
    expectNaNsQuieted<Real32>(oktsErfc_32f_A24, 0.5f);
}

TEST(Erfc, SpecialValues64) {
    expectRows<Real64>(oktsErfc_64f_A53, 0.5,
                       {
                           {0x0000000000000000, 0x3FF0000000000000},
                           {0x8000000000000000, 0x3FF0000000000000},
                           {0x0000000000000001, 0x3FF0000000000000},
                           {0x8000000000000001, 0x3FF0000000000000},
                           {0xC018000000000000, 0x4000000000000000},                      // -6
                           {0x403B4CCCCCCCCCCD, 0x0000000000000000, oktStatusUnderflow},  // 27.3
                           {0x7FEFFFFFFFFFFFFF, 0x0000000000000000, oktStatusUnderflow},
                           {0xFFEFFFFFFFFFFFFF, 0x4000000000000000},
                           {0x7FF0000000000000, 0x0000000000000000},
                           {0xFFF0000000000000, 0x4000000000000000},
                       });
    expectNaNsQuieted<Real64>(oktsErfc_64f_A53, 0.5);
}

// Whether an element in [9.19455, 10.054194] warns depends on its place and on its neighbour; its value does not.
TEST(Erfc, ASubnormalResultWarnsOutsideOfOrdinaryPairsOnly) {
    const auto run = [](std::vector<Real32> src) {
        std::vector<Real32> dst(src.size());
        const OktStatus status = oktsErfc_32f_A24(src.data(), dst.data(), static_cast<std::int32_t>(src.size()));
        for (std::size_t i = 0; i < src.size(); ++i) EXPECT_TRUE(src[i] != 9.5f || sameBits(dst[i], 0x00006912)) << i;
        return status;
    };
    EXPECT_EQ(run({9.5f}), oktStatusUnderflow);
    EXPECT_EQ(run({9.5f, 1}), oktStatusOk);
    EXPECT_EQ(run({1, 9.5f}), oktStatusOk);
    EXPECT_EQ(run({9.5f, -11}), oktStatusUnderflow);
    EXPECT_EQ(run({-11, 9.5f}), oktStatusUnderflow);
    EXPECT_EQ(run({1, 9.5f, -11, 1}), oktStatusOk);  // the neighbour of the other pair does not matter
    EXPECT_EQ(run({1, 1, 9.5f}), oktStatusUnderflow);
    EXPECT_EQ(run({9.5f, 1, 1}), oktStatusOk);
    for (std::size_t position = 0; position < 16; ++position) {
        std::vector<Real32> src(17, 1.0f);
        src[position] = 9.5f;
        EXPECT_EQ(run(src), oktStatusOk);
        src[position ^ 1] = -11;
        EXPECT_EQ(run(src), oktStatusUnderflow);
        src[position ^ 1] = 1;
        src[position ^ 2] = -11;
        EXPECT_EQ(run(src), oktStatusOk);
    }
}

// erfc(-3.8325067) is just below the middle between 2 and the Real32 below, which the element path does not look at.
TEST(Erfc, TheFirstTwoDependsOnThePath) {
    const Real32 first = bits32(0xC07547CA);
    EXPECT_TRUE(sameBits(alone(oktsErfc_32f_A24, first).value, 0x40000000));
    for (std::int32_t position = 0; position < 12; ++position)
        EXPECT_TRUE(sameBits(among(oktsErfc_32f_A24, first, 1.0f, 12, position).value, 0x3FFFFFFF));
    EXPECT_TRUE(sameBits(among(oktsErfc_32f_A24, first, 1.0f, 13, 12).value, 0x40000000));
    EXPECT_TRUE(sameBits(among(oktsErfc_32f_A24, first, 11.0f, 12, 3).value, 0x40000000));
}

// On Real64 the ordinary pairs end below the first underflow.
TEST(Erfc, SubnormalResultsOfReal64) {
    const auto result = alone(oktsErfc_64f_A53, 26.9);
    EXPECT_GT(result.value, 0x1.0p-1074);
    EXPECT_LT(result.value, 0x1.0p-1022);
    EXPECT_EQ(result.status, oktStatusOk);
    const auto last = alone(oktsErfc_64f_A53, bits64(0x403B39DC41E48BFC));
    EXPECT_EQ(last.status, oktStatusOk);
    EXPECT_EQ(alone(oktsErfc_64f_A53, bits64(0x403B39DC41E48BFD)).status, oktStatusUnderflow);
    EXPECT_EQ(statusOf(oktsErfc_64f_A53, {1, 27.3, 2, 3, 26.9, -28}), oktStatusUnderflow);
    EXPECT_EQ(statusOf(oktsErfc_64f_A53, {1, -27.3, 2, 3, 26.9, -28}), oktStatusOk);
}

TEST(Erfc, FlagsAreTheModels) {
    expectModelFlagsAlone<Real32>(oktsErfc_32f_A24, model::Erfc_32f, {ordinary<Real32>, special<Real32>});
    expectModelFlagsAlone<Real64>(oktsErfc_64f_A53, model::Erfc_64f, {ordinary<Real64>, special<Real64>});
}

}  // namespace
}  // namespace okt::test
