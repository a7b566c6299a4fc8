// The error function.
#include "tests/models/erf_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

namespace okt::test {
namespace {

template <class T>
T ordinary(Random& random) {
    if (random.below(3) == 0) return ofMagnitude<T>(random, -30, 4);
    return static_cast<T>(random.between(-6.5, 6.5));
}
template <class T>
T special(Random& random) {
    switch (random.below(3)) {
        case 0: return specialElement<T>(random);
        case 1: return ofMagnitude<T>(random, sizeof(T) == 4 ? -149 : -1074, sizeof(T) == 4 ? -120 : -1010);
        default: return ofMagnitude<T>(random, 2, sizeof(T) == 4 ? 127 : 1023);
    }
}

TEST(Erf, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsErf_32f_A24", model::Erf_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsErf_64f_A53", model::Erf_64f, {ordinary<Real64>, special<Real64>});
}

// Every row's first element and the element before it.
TEST(Erf, AgreesWithTheModelAroundEveryRow) {
    for (std::uint32_t row = 0; row < 24; ++row)
        expectModelAround<Real32>(oktsErf_32f_A24, model::Erf_32f, 0.75f, {0x3DE00000 + row * 0x200000});
    for (std::uint64_t row = 0; row < 48; ++row)
        expectModelAround<Real64>(oktsErf_64f_A53, model::Erf_64f, 0.75, {0x3FBE000000000000 + row * 0x2000000000000});
}

TEST(Erf, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsErf_32f_A24, model::Erf_32f, -0.75f,
                              {0x00000002, 0x00800000, 0x32000000, 0x40800000, 0x7F7FFFFD, 0x7F800000, 0x7FC00000});
    expectModelAround<Real64>(
        oktsErf_64f_A53, model::Erf_64f, -0.75,
        {0x0000000000000002, 0x0000010000000000, 0x0010000000000000, 0x0080000000000000, 0x4018000000000000,
         0x7FEFFFFFFFFFFFFD, 0x7FF0000000000000, 0x7FF0000100000000, 0x7FF8000000000000});
}

TEST(Erf, SpecialValues32) {
    expectRows<Real32>(oktsErf_32f_A24, 0.5f,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x00000001},  // 1.128 times it, rounded
                           {0x80000001, 0x80000001},
                           {0x40800000, 0x3F800000},  // 4
                           {0xC0800000, 0xBF800000},
                           {0x7149F2CA, 0x3F800000},  // 1e30
                           {0xF149F2CA, 0xBF800000},
                           {0x7F7FFFFF, 0x3F800000},
                           {0x7F800000, 0x3F800000},
                           {0xFF800000, 0xBF800000},
                       });
    expectNaNsQuieted<Real32>(oktsErf_32f_A24, 0.5f);
}

TEST(Erf, SpecialValues64) {
    expectRows<Real64>(oktsErf_64f_A53, 0.5,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x0000000000000001, 0x0000000000000001},
                           {0x8000000000000001, 0x8000000000000001},
                           {0x0000000000000008, 0x0000000000000009},
                           {0x4018000000000000, 0x3FF0000000000000},  // 6
                           {0xC018000000000000, 0xBFF0000000000000},
                           {0x7FEFFFFFFFFFFFFF, 0x3FF0000000000000},
                           {0xFFEFFFFFFFFFFFFF, 0xBFF0000000000000},
                           {0x7FF0000000000000, 0x3FF0000000000000},
                           {0xFFF0000000000000, 0xBFF0000000000000},
                           {0x7FF0000000000001, 0x7FF0000000000001},  // a signalling NaN stays one
                           {0xFFF4000012345678, 0xFFF4000012345678},
                           {0x7FF8000000000000, 0x7FF8000000000000},
                           {0xFFFABCDEF0123456, 0xFFFABCDEF0123456},
                       });
}

// The correctly rounded product with 2/sqrt(pi) on the subnormal grid.
TEST(Erf, SubnormalsAreRoundedOnce) {
    Random random(3);
    constexpr std::uint64_t slope = 0x20DD750429B6D11A;  // (2/sqrt(pi) - 1) 2^64
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t pattern = 0x0000010000000000 + random.bits() % 0x000DBF0000000000;
        // The product in 2^-64 parts of the smallest subnormal, by 32-bit halves.
        const std::uint64_t low =
            (pattern & 0xFFFFFFFF) * (slope >> 32) + ((pattern & 0xFFFFFFFF) * (slope & 0xFFFFFFFF) >> 32);
        const std::uint64_t mid = (pattern >> 32) * (slope & 0xFFFFFFFF) + (low & 0xFFFFFFFF);
        const std::uint64_t whole = pattern + (pattern >> 32) * (slope >> 32) + (low >> 32) + (mid >> 32);
        const std::uint64_t fraction = mid & 0xFFFFFFFF;
        if (fraction > 0x7FF00000 && fraction < 0x80100000) continue;  // too close to the middle for this precision
        const Real64 result = alone(oktsErf_64f_A53, std::bit_cast<Real64>(pattern)).value;
        EXPECT_EQ(asBits(result), whole + (fraction >> 31)) << std::hex << pattern;
    }
}

TEST(Erf, FlagsAreTheModels) {
    expectModelFlagsAlone<Real32>(oktsErf_32f_A24, model::Erf_32f, {ordinary<Real32>, special<Real32>});
    expectModelFlagsAlone<Real64>(oktsErf_64f_A53, model::Erf_64f, {ordinary<Real64>, special<Real64>});
}

}  // namespace
}  // namespace okt::test
