// Arcsine and arccosine.
#include "tests/models/inverse_trig_model.h"

#include "lanes/lanes.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"
#include "support/thresholds.h"

#include <cmath>

namespace okt::test {
namespace {

template <class T>
T inDomain(Random& random) {
    return random.below(4) == 0 ? ofMagnitude<T>(random, -40, -1) : static_cast<T>(random.between(-1, 1));
}

template <class T>
T outsideOrSpecial(Random& random) {
    switch (random.below(4)) {
        case 0: return mixedValue<T>(random);
        case 1: {
            const T one = random.below(2) == 0 ? T{1} : T{-1};
            return std::bit_cast<T>(static_cast<Unsigned<T>>(asBits(one) + random.below(9) - 4));
        }
        default: return specialElement<T>(random);
    }
}

TEST(Asin, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAsin_32f_A24", model::Asin_32f, {inDomain<Real32>, outsideOrSpecial<Real32>});
    expectModel<Real64, Real64>("oktsAsin_64f_A53", model::Asin_64f, {inDomain<Real64>, outsideOrSpecial<Real64>});
}
TEST(Acos, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAcos_32f_A24", model::Acos_32f, {inDomain<Real32>, outsideOrSpecial<Real32>});
    expectModel<Real64, Real64>("oktsAcos_64f_A53", model::Acos_64f, {inDomain<Real64>, outsideOrSpecial<Real64>});
}

// On Real32 a NaN comes through bit for bit, a signalling one too; on Real64 it comes out quiet, from Acos with its
// sign inverted.
TEST(Asin, SpecialValues32) {
    expectRows<Real32>(oktsAsin_32f_A24, 0.3F,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x00000001},
                           {0x80000001, 0x80000001},
                           {0x3F800000, 0x3FC90FDB},
                           {0xBF800000, 0xBFC90FDB},
                           {0x3F800001, 0xFFC00000, oktStatusDomain},
                           {0xBF800001, 0xFFC00000, oktStatusDomain},
                           {0x7F7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0x7F800000, 0xFFC00000, oktStatusDomain},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0x7FC54321, 0x7FC54321},
                           {0xFFC54321, 0xFFC54321},
                           {0x7F800001, 0x7F800001},
                           {0xFFA12345, 0xFFA12345},
                       });
}
TEST(Acos, SpecialValues32) {
    expectRows<Real32>(oktsAcos_32f_A24, 0.3F,
                       {
                           {0x00000000, 0x3FC90FDB},
                           {0x80000000, 0x3FC90FDB},
                           {0x00000001, 0x3FC90FDB},
                           {0x3F800000, 0x00000000},
                           {0xBF800000, 0x40490FDB},
                           {0x3F800001, 0xFFC00000, oktStatusDomain},
                           {0xBF800001, 0xFFC00000, oktStatusDomain},
                           {0xFF7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0x7F800000, 0xFFC00000, oktStatusDomain},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0x7FC54321, 0x7FC54321},
                           {0xFFC54321, 0xFFC54321},
                           {0x7F800001, 0x7F800001},
                           {0xFFA12345, 0xFFA12345},
                       });
}
TEST(Asin, SpecialValues64) {
    expectRows<Real64>(oktsAsin_64f_A53, 0.3,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x0000000000000001, 0x0000000000000001},
                           {0x8000000000000001, 0x8000000000000001},
                           {0x3FF0000000000000, 0x3FF921FB54442D18},
                           {0xBFF0000000000000, 0xBFF921FB54442D18},
                           {0x3FF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                           {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                       });
    expectNaNsQuieted<Real64>(oktsAsin_64f_A53, 0.3);
}
TEST(Acos, SpecialValues64) {
    expectRows<Real64>(oktsAcos_64f_A53, 0.3,
                       {
                           {0x0000000000000000, 0x3FF921FB54442D18},
                           {0x8000000000000000, 0x3FF921FB54442D18},
                           {0x0000000000000001, 0x3FF921FB54442D18},
                           {0x3FF0000000000000, 0x0000000000000000},
                           {0xBFF0000000000000, 0x400921FB54442D18},
                           {0x3FF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0x7FEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                           {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x7FF8ABCDE0001234, 0xFFF8ABCDE0001234},
                           {0xFFF8ABCDE0001234, 0x7FF8ABCDE0001234},
                           {0x7FF0000000000001, 0xFFF8000000000001},
                           {0xFFF4123400000000, 0x7FFC123400000000},
                       });
}

// 1/2 belongs to the upper class on Real32 and to the lower one on Real64; the value below 1 is no special case.
TEST(AsinAcos, ClassLimitsAndTheirNeighbours) {
    expectModelAround<Real32>(oktsAsin_32f_A24, model::Asin_32f, 0.3F,
                              {0x3F000000, 0x3F800000, 0x3F7FFFFE, 0x00800000});
    expectModelAround<Real32>(oktsAcos_32f_A24, model::Acos_32f, 0.3F,
                              {0x3F000000, 0x3F800000, 0x3F7FFFFE, 0x00800000});
    expectModelAround<Real64>(oktsAsin_64f_A53, model::Asin_64f, 0.3,
                              {0x3FE0000000000000, 0x3FF0000000000000, 0x3FF0000100000000, 0x0010000000000000});
    expectModelAround<Real64>(oktsAcos_64f_A53, model::Acos_64f, 0.3,
                              {0x3FE0000000000000, 0x3FF0000000000000, 0x3FF0000100000000, 0x0010000000000000});
}

TEST(AsinAcos, OrdinaryElementsOnReal64RaiseNothingButInexact) {
    for (const Real64 x : {0.1, -0.3, 0.5, 0.6, -0.9, 0x1.fffffffffffffp-1, 1.0, -1.0}) {
        EXPECT_EQ(flagsAlone(oktsAsin_64f_A53, x) & ~flagInexact, 0u) << x;
        EXPECT_EQ(flagsAlone(oktsAcos_64f_A53, x) & ~flagInexact, 0u) << x;
    }
    EXPECT_EQ(flagsAlone(oktsAsin_64f_A53, 0.0), 0u);
    EXPECT_EQ(flagsAlone(oktsAcos_64f_A53, 0.0), flagInexact);
}

// The void half of the arithmetic is worked in the tail, too.
TEST(AsinAcos, AloneAnElementRaisesTheFlagsOfABlock) {
    for (const auto f : {oktsAsin_32f_A24, oktsAcos_32f_A24})
        for (const Real32 x : {0.0F, -0.0F, 0x1p-126F, 0.25F, -0.3F, 0.5F, -0.75F, 0.9F, 1.0F}) {
            const Real32 block[4] = {x, x, x, x};
            Real32 results[4];
            EXPECT_EQ(flagsAlone(f, x), flagsRaised([&] { f(block, results, 4); })) << x;
        }
    EXPECT_EQ(flagsAlone(oktsAsin_32f_A24, 0.25F), flagInvalid | flagInexact);  // 0 times the root's infinite seed
}

// On Real32 a zero meets the infinite approximation of its reciprocal or reciprocal root, in a half of the arithmetic
// that is void or not.
TEST(AsinAcos, TheInvalidFlagTellsNothing) {
    const Real32 nan32 = bits32(0x7FC00000);
    const Real64 nan64 = bits64(0x7FF8000000000000);
    expectFlag<Real32>(oktsAcos_32f_A24, flagInvalid, true,
                       {0.0F, -0.0F, 0x1p-149F, -0x1.fffff8p-128F, 1.0F, -1.0F, 1.5F, -HUGE_VALF, nan32});
    expectFlag<Real32>(oktsAcos_32f_A24, flagInvalid, false, {0x1p-127F, 0x1p-20F, 0.25F, -0.75F});
    expectFlag<Real32>(oktsAsin_32f_A24, flagInvalid, true,
                       {0.0F, 0x1p-149F, -0.25F, 0x1.fffffep-2F, 1.0F, -1.0F, nan32});
    expectFlag<Real32>(oktsAsin_32f_A24, flagInvalid, false, {0.5F, -0.75F, 1.5F});
    for (const auto f : {oktsAsin_64f_A53, oktsAcos_64f_A53}) {
        expectFlag<Real64>(f, flagInvalid, true, {nan64, HUGE_VAL, 2.0});
        expectFlag<Real64>(f, flagInvalid, false, {0.0, 0.25, -1.0, 1.125});
    }
}

}  // namespace
}  // namespace okt::test
