// e to the power x.
#include "tests/models/exp_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

// Ordinary elements lie in the main range; special ones are those outside it, and every class of values.
template <class T>
T ordinary(Random& random) {
    if (random.below(4) == 0) return ofMagnitude<T>(random, -40, 0);
    const double bound = sizeof(T) == 4 ? 87.3 : 708.3;
    return static_cast<T>(random.between(-bound, bound));
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(sizeof(T) == 4 ? random.between(-104.5, -87) : random.between(-746, -708));
        case 2: return static_cast<T>(sizeof(T) == 4 ? random.between(87, 89) : random.between(708, 710));
        default: return ofMagnitude<T>(random, -3, sizeof(T) == 4 ? 20 : 1023);
    }
}

TEST(Exp, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsExp_32f_A24", model::Exp_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsExp_64f_A53", model::Exp_64f, {ordinary<Real64>, special<Real64>});
}

TEST(Exp, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(
        oktsExp_32f_A24, model::Exp_32f, 0.75f,
        {0x42AEAC50, 0x42B17218, 0x42CE8ED1, 0x7F800000, 0x00800000, 0x00000002, 0x42B00F34, 0x3F800000, 0x42CFF1B5});
    expectModelAround<Real64>(
        oktsExp_64f_A53, model::Exp_64f, 0.75,
        {0x4086232B00000000, 0x40874910D52D3052, 0x4086232BDD7ABCD3, 0x40862E42FEFA39F0, 0x40862E37E7D8BA72,
         0x7FF0000000000000, 0x0010000000000000, 0x0000000000000002, 0x3FF0000000000000});
}

TEST(Exp, SpecialValues32) {
    expectRows<Real32>(oktsExp_32f_A24, -2,
                       {
                           {0x00000000, 0x3F800000, oktStatusOk},
                           {0x80000000, 0x3F800000, oktStatusOk},
                           {0x00000001, 0x3F800000, oktStatusOk},
                           {0x807FFFFF, 0x3F800000, oktStatusOk},
                           {0x7F800000, 0x7F800000, oktStatusOk},
                           {0xFF800000, 0x00000000, oktStatusOk},
                           {0x42B17218, 0x7F800000, oktStatusOverflow},
                           {0x7F7FFFFF, 0x7F800000, oktStatusOverflow},
                           {0xC2CE8ED1, 0x00000000, oktStatusUnderflow},
                           {0xC2CE8ED0, 0x00000001, oktStatusUnderflow},
                           {0xFF7FFFFF, 0x00000000, oktStatusUnderflow},
                       });
    expectNaNsQuieted<Real32>(oktsExp_32f_A24, -2);
}

TEST(Exp, SpecialValues64) {
    expectRows<Real64>(oktsExp_64f_A53, -2,
                       {
                           {0x0000000000000000, 0x3FF0000000000000, oktStatusOk},
                           {0x8000000000000000, 0x3FF0000000000000, oktStatusOk},
                           {0x0000000000000001, 0x3FF0000000000000, oktStatusOk},
                           {0x800FFFFFFFFFFFFF, 0x3FF0000000000000, oktStatusOk},
                           {0x7FF0000000000000, 0x7FF0000000000000, oktStatusOk},
                           {0xFFF0000000000000, 0x0000000000000000, oktStatusOk},
                           {0x7FF8ABCDE0001234, 0xFFFFFFFFFFFFFFFF, oktStatusOk},
                           {0xFFF8000000000000, 0xFFFFFFFFFFFFFFFF, oktStatusOk},
                           {0x7FF0000000000001, 0xFFFFFFFFFFFFFFFF, oktStatusOk},
                           {0xFFF4123400000000, 0xFFFFFFFFFFFFFFFF, oktStatusOk},
                           {0x40862E42FEFA39F0, 0x7FF0000000000000, oktStatusOverflow},
                           {0x7FEFFFFFFFFFFFFF, 0x7FF0000000000000, oktStatusOverflow},
                           {0xC0874910D52D3052, 0x0000000000000000, oktStatusUnderflow},
                           {0xC0874910D52D3051, 0x0000000000000001, oktStatusUnderflow},
                           {0xFFEFFFFFFFFFFFFF, 0x0000000000000000, oktStatusUnderflow},
                       });
}

TEST(Exp, ResultsNextToTheOverflowAreFinite) {
    for (std::uint32_t b = 0x42B17217; b > 0x42B17117; --b) {
        const auto result = alone(oktsExp_32f_A24, bits32(b));
        EXPECT_TRUE(std::isfinite(result.value)) << std::hex << b;
        EXPECT_EQ(result.status, oktStatusOk);
    }
    const auto top = alone(oktsExp_64f_A53, bits64(0x40862E42FEFA39EF));
    EXPECT_TRUE(std::isfinite(top.value));
    EXPECT_GT(top.value, 0x1.fffffffffp+1023);
    EXPECT_EQ(top.status, oktStatusOk);
}

TEST(Exp, TheBoundOfTheMainPathIsSubnormalBelowAndNormalAbove) {
    const auto below = alone(oktsExp_32f_A24, -87.3365478515625f);
    EXPECT_EQ(below.status, oktStatusUnderflow);
    EXPECT_LT(below.value, std::numeric_limits<Real32>::min());
    EXPECT_GT(below.value, 0.0f);
    const auto above = alone(oktsExp_32f_A24, 87.3365478515625f);
    EXPECT_EQ(above.status, oktStatusOk);
    EXPECT_TRUE(std::isnormal(above.value));
}

TEST(Exp, Flags32) {
    const auto flags = [](std::uint32_t b) { return flagsAlone(oktsExp_32f_A24, bits32(b)); };
    EXPECT_EQ(flags(0x7FC00000), 0u);
    EXPECT_EQ(flags(0x7FA00000), flagInvalid);
    EXPECT_EQ(flags(0x7F800000), 0u);
    EXPECT_EQ(flags(0xFF800000), 0u);
    EXPECT_EQ(flags(0x00000000), 0u);
    EXPECT_EQ(flags(0x42B17218), flagOverflow | flagInexact);
    EXPECT_EQ(flags(0x7F7FFFFF), flagOverflow | flagInexact);
    EXPECT_EQ(flags(0xC2CE8ED1), flagUnderflow | flagInexact);
    EXPECT_EQ(flags(0xFF7FFFFF), flagUnderflow | flagInexact);
    EXPECT_EQ(flags(0x42B17217) & ~flagInexact, 0u);  // k = 128
    EXPECT_EQ(flags(0x3F800000), flagInexact);
}

TEST(Exp, Flags64) {
    const auto flags = [](std::uint64_t b) { return flagsAlone(oktsExp_64f_A53, bits64(b)); };
    for (const std::uint64_t silent : std::initializer_list<std::uint64_t>{
             0x0000000000000000u, 0x7FF0000000000000u, 0xFFF0000000000000u, 0x7FF8000000000000u, 0x7FF0000000000001u,
             0xFFF4000000000000u, 0x40862E42FEFA39F0u, 0x7FEFFFFFFFFFFFFFu, 0xC0874910D52D3052u, 0xFFEFFFFFFFFFFFFFu}) {
        EXPECT_EQ(flags(silent), 0u) << std::hex << silent;
        // In a block of zeros, too.
        for (std::size_t position = 0; position < 8; ++position) {
            std::vector<Real64> src(8), dst(8);
            src[position] = bits64(silent);
            EXPECT_EQ(flagsRaised([&] { oktsExp_64f_A53(src.data(), dst.data(), 8); }), 0u) << std::hex << silent;
        }
    }
    EXPECT_EQ(flags(0xC086232BDD7ABCD4), flagUnderflow | flagInexact);
    EXPECT_EQ(flags(0x40862E42FEFA39EF), flagInexact);
}

}  // namespace
}  // namespace okt::test
