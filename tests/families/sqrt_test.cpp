// Square root and its reciprocal.
#include "tests/models/sqrt_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

constexpr Real32 inf32 = std::numeric_limits<Real32>::infinity();
constexpr Real64 inf64 = std::numeric_limits<Real64>::infinity();

template <class T, int low, int high>
T positiveElement(Random& random) {
    return std::abs(ofMagnitude<T>(random, low, high));
}
template <class T>
T zeroOrSpecialElement(Random& random) {
    return random.below(2) ? T{0} : specialElement<T>(random);
}

constexpr Filling<Real32> elements32{positiveElement<Real32, -126, 127>, specialElement<Real32>};
constexpr Filling<Real64> elements64{positiveElement<Real64, -1022, 1023>, specialElement<Real64>};
constexpr Filling<Real32> withZeros32{positiveElement<Real32, -126, 127>, zeroOrSpecialElement<Real32>};
constexpr Filling<Real64> withZeros64{positiveElement<Real64, -1022, 1023>, zeroOrSpecialElement<Real64>};

TEST(Sqrt, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsSqrt_32f_A24", model::Sqrt_32f, elements32);
    expectModel<Real64, Real64>("oktsSqrt_64f_A53", model::Sqrt_64f, elements64);
    expectModel<Real32, Real32>("oktsSqrt_32f_A24", model::Sqrt_32f, withZeros32);
    expectModel<Real64, Real64>("oktsSqrt_64f_A53", model::Sqrt_64f, withZeros64);
}
TEST(InvSqrt, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsInvSqrt_32f_A24", model::InvSqrt_32f, elements32);
    expectModel<Real64, Real64>("oktsInvSqrt_64f_A53", model::InvSqrt_64f, elements64);
    expectModel<Real32, Real32>("oktsInvSqrt_32f_A24", model::InvSqrt_32f, withZeros32);
    expectModel<Real64, Real64>("oktsInvSqrt_64f_A53", model::InvSqrt_64f, withZeros64);
}

TEST(Sqrt, SpecialValues32) {
    expectRows<Real32>(oktsSqrt_32f_A24, 4,
                       {
                           {0x00000000, 0x00000000, oktStatusOk},
                           {0x80000000, 0x80000000, oktStatusOk},
                           {0x7F800000, 0x7F800000, oktStatusOk},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0xBF800000, 0xFFC00000, oktStatusDomain},
                           {0x80000001, 0xFFC00000, oktStatusDomain},
                           {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0x00000001, 0x1A3504F3, oktStatusOk},
                           {0x40800000, 0x40000000, oktStatusOk},
                       });
    expectNaNsQuieted<Real32>(oktsSqrt_32f_A24, 4);
}

TEST(Sqrt, SpecialValues64) {
    expectRows<Real64>(oktsSqrt_64f_A53, 4,
                       {
                           {0x0000000000000000, 0x0000000000000000, oktStatusOk},
                           {0x8000000000000000, 0x8000000000000000, oktStatusOk},
                           {0x7FF0000000000000, 0x7FF0000000000000, oktStatusOk},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x8000000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0x800FFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                           {0x4010000000000000, 0x4000000000000000, oktStatusOk},
                       });
    expectNaNsQuieted<Real64>(oktsSqrt_64f_A53, 4);
    EXPECT_NEAR(alone(oktsSqrt_64f_A53, bits64(1)).value / 2.2227587494850775e-162, 1.0, 2e-16);
}

TEST(InvSqrt, SpecialValues32) {
    expectRows<Real32>(oktsInvSqrt_32f_A24, 4,
                       {
                           {0x00000000, 0x7F800000, oktStatusSingularity},
                           {0x80000000, 0xFF800000, oktStatusSingularity},
                           {0x7F800000, 0x00000000, oktStatusOk},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0xBF800000, 0xFFC00000, oktStatusDomain},
                           {0x80000001, 0xFFC00000, oktStatusDomain},
                           {0x00000002, 0x64800000, oktStatusOk},
                           {0x00000001, 0x64B504F3, oktStatusOk},
                       });
    expectNaNsQuieted<Real32>(oktsInvSqrt_32f_A24, 4);
}

TEST(InvSqrt, SpecialValues64) {
    expectRows<Real64>(oktsInvSqrt_64f_A53, 4,
                       {
                           {0x0000000000000000, 0x7FF0000000000000, oktStatusSingularity},
                           {0x8000000000000000, 0xFFF0000000000000, oktStatusSingularity},
                           {0x7FF0000000000000, 0x0000000000000000, oktStatusOk},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x800FFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                       });
    expectNaNsQuieted<Real64>(oktsInvSqrt_64f_A53, 4);
    const Real64 ofSmallest = alone(oktsInvSqrt_64f_A53, bits64(1)).value;
    EXPECT_NEAR(ofSmallest / 4.4989137945431964e161, 1.0, 2e-16);
}

// Both sides of every bound of the main range, alone and in a block, within an ulp of the true root.
TEST(Sqrt, StaysAccurateOnBothSidesOfTheRangeBounds) {
    for (const std::uint32_t bound : {0x00800000u, 0x7F7FFFFFu, 0x00000002u, 0x00400000u, 0x3F800000u})
        for (const std::uint32_t pattern : {bound - 1, bound, bound + 1}) {
            const Real32 x = bits32(pattern);
            if (std::isinf(x)) continue;
            const double root = std::sqrt(static_cast<double>(x));
            const auto near = [](double got, double wanted, double limit) {
                return std::abs(got - wanted) <= limit * wanted;
            };
            EXPECT_TRUE(near(alone(oktsSqrt_32f_A24, x).value, root, 0x1p-23)) << pattern;
            EXPECT_TRUE(near(among(oktsSqrt_32f_A24, x, 4.0f, 8, 3).value, root, 0x1p-23)) << pattern;
            EXPECT_TRUE(near(alone(oktsInvSqrt_32f_A24, x).value, 1 / root, 0x1p-23)) << pattern;
            EXPECT_TRUE(near(among(oktsInvSqrt_32f_A24, x, 4.0f, 8, 3).value, 1 / root, 0x1p-23)) << pattern;
        }
    constexpr std::uint64_t bounds64[] = {0x0010000000000000, 0x7FEFFFFFFFFFFFFF, 0x0000000000000002,
                                          0x0000000100000000, 0x000FFFFF00000000, 0x0008000000000000,
                                          0x00100000FFFFFFFF, 0x3FF0000000000000};
    for (const std::uint64_t bound : bounds64)
        for (const std::uint64_t pattern : {bound - 1, bound, bound + 1}) {
            const Real64 x = bits64(pattern);
            if (std::isinf(x)) continue;
            const double root = std::sqrt(x), inverse = static_cast<double>(1 / std::sqrt(static_cast<long double>(x)));
            const auto near = [](double got, double wanted) { return std::abs(got - wanted) <= 0x1p-52 * wanted; };
            EXPECT_TRUE(near(alone(oktsSqrt_64f_A53, x).value, root)) << pattern;
            EXPECT_TRUE(near(among(oktsSqrt_64f_A53, x, 4.0, 8, 3).value, root)) << pattern;
            EXPECT_TRUE(near(alone(oktsInvSqrt_64f_A53, x).value, inverse)) << pattern;
            EXPECT_TRUE(near(among(oktsInvSqrt_64f_A53, x, 4.0, 8, 3).value, inverse)) << pattern;
        }
}

// High words that a comparison as Real32 under denormals-are-zero would take for zeros.
TEST(Sqrt, TellsSmallNumbersFromZerosByTheirBits) {
    constexpr std::uint64_t patterns[] = {0x0010000000000000, 0x0023456789ABCDEF, 0x007FFFFF00000000,
                                          0x0000000100000000, 0x000FFFFFFFFFFFFF};
    for (const std::uint64_t pattern : patterns) {
        const Real64 x = bits64(pattern);
        const auto inBlock = among(oktsSqrt_64f_A53, x, 0.0, 8, 2);
        EXPECT_TRUE(sameBits(inBlock.value, asBits(alone(oktsSqrt_64f_A53, x).value)));
        EXPECT_GT(inBlock.value, 1e-162);
    }
}

TEST(InvSqrt, InABlockOnReal32ANegativeElementBeatsAZero) {
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {-1, 0, 1, 1}), oktStatusDomain);
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {0, -1, 1, 1}), oktStatusDomain);
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {1, 1, 1, 1, -1, 1, 1, 0}), oktStatusDomain);
    // Between blocks, and in the tail, the later one decides.
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {-1, 1, 1, 1, 1, 0, 1, 1}), oktStatusSingularity);
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {-1, 0}), oktStatusSingularity);
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {0, -1}), oktStatusDomain);
    EXPECT_EQ(statusOf<Real32>(oktsInvSqrt_32f_A24, {1, 1, 1, 1, -1, 0}), oktStatusSingularity);
}

TEST(InvSqrt, AFlaggedBlockOnReal32IsReplacedWhole) {
    Random random(7);
    int differences = 0;
    for (int i = 0; i < 1000; ++i) {
        const Real32 x = positiveElement<Real32, -4, 4>(random);
        const auto correct = static_cast<Real32>(std::sqrt(static_cast<double>(x)) / static_cast<double>(x));
        for (const std::int32_t position : {0, 1, 2}) {
            std::vector<Real32> src{1, 1, 1, 0}, dst(4);
            src[static_cast<std::size_t>(position)] = x;
            oktsInvSqrt_32f_A24(src.data(), dst.data(), 4);
            EXPECT_TRUE(sameBits(dst[static_cast<std::size_t>(position)], asBits(correct)));
        }
        differences += asBits(alone(oktsInvSqrt_32f_A24, x).value) != asBits(correct);
    }
    EXPECT_GT(differences, 0);  // the series alone does not round every element correctly
}

TEST(Sqrt, NegativeElementsRaiseNoFlag) {
    EXPECT_EQ(flagsAlone(oktsSqrt_32f_A24, -1.0f), 0u);
    EXPECT_EQ(flagsAlone(oktsSqrt_32f_A24, -inf32), 0u);
    EXPECT_EQ(flagsAlone(oktsSqrt_32f_A24, bits32(0x80000001)), 0u);
    EXPECT_EQ(flagsAlone(oktsSqrt_64f_A53, -1.0), 0u);
    EXPECT_EQ(flagsAlone(oktsSqrt_64f_A53, -inf64), 0u);
    EXPECT_EQ(flagsAlone(oktsInvSqrt_64f_A53, -1.0), 0u);
    EXPECT_EQ(flagsAlone(oktsInvSqrt_64f_A53, 0.0), 0u);
    EXPECT_EQ(flagsAlone(oktsInvSqrt_32f_A24, -1.0f), flagInvalid);  // a real root
    EXPECT_EQ(flagsAlone(oktsSqrt_32f_A24, bits32(0x7F800001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsSqrt_64f_A53, bits64(0xFFF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(oktsSqrt_64f_A53, bits64(0x7FF8000000000001)), 0u);
}

TEST(InvSqrt, SpecialElementsRaiseInvalidOnReal32Alone) {
    expectFlag<Real32>(oktsInvSqrt_32f_A24, flagInvalid, true, {0.0F, -0.0F, inf32, -1.0F, -inf32});
    expectFlag<Real32>(oktsInvSqrt_32f_A24, flagInvalid, false, {0x1p-149F, 2.0F});
    expectFlag<Real64>(oktsInvSqrt_64f_A53, flagInvalid | flagDivideByZero, false, {0.0, -0.0, inf64, -1.0, -inf64});
}

}  // namespace
}  // namespace okt::test
