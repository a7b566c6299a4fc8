// Hyperbolic tangent.
#include "tests/models/hyper_model.h"

#include "hyperbolic_elements.h"
#include "oktvm.h"

#include <cmath>

namespace okt::test {
namespace {

template <class T>
T ordinary(Random& random) {
    if (random.below(3) == 0) return ofMagnitude<T>(random, -40, 5);
    return static_cast<T>(random.between(-12, 12));
}
template <class T>
T special(Random& random) {
    return random.below(2) ? specialElement<T>(random)
                           : ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, sizeof(T) == 4 ? 127 : 1023);
}
constexpr Filling<Real32> elements32{ordinary<Real32>, special<Real32>};
constexpr Filling<Real64> elements64{ordinary<Real64>, special<Real64>};

TEST(Tanh, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsTanh_32f_A24", model::Tanh_32f, elements32);
    expectModel<Real64, Real64>("oktsTanh_64f_A53", model::Tanh_64f, elements64);
}

TEST(Tanh, AgreesWithTheModelAtTheBoundsOfEveryRow) {
    expectModelAround<Real32>(oktsTanh_32f_A24, model::Tanh_32f, 0.5f,
                              {0x41200000, 0x7F800000, 0x00800000, 0x00000002});
    expectModelAround<Real64>(oktsTanh_64f_A53, model::Tanh_64f, 0.5,
                              {0x4034000000000000, 0x7FF0000000000000, 0x0010000000000000, 0x0000000000000002});
    for (std::uint32_t row = 0; row <= 27; ++row)
        expectModelAround<Real32>(oktsTanh_32f_A24, model::Tanh_32f, 2.0f, {0x3DE00000 + row * 0x200000});
    for (std::uint64_t row = 0; row <= 60; ++row)
        expectModelAround<Real64>(oktsTanh_64f_A53, model::Tanh_64f, 2.0, {(0x3FBE0000 + row * 0x20000) << 32});
}

TEST(Tanh, SpecialValues32) {
    expectRows<Real32>(oktsTanh_32f_A24, -2,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x7F800000, 0x3F800000},
                           {0xFF800000, 0xBF800000},
                           {0x41200000, 0x3F800000},  // 10
                           {0xC1200000, 0xBF800000},
                           {0x41200001, 0x3F800000},
                           {0x7F7FFFFF, 0x3F800000},
                           {0xFF7FFFFF, 0xBF800000},
                       });
    expectNaNsQuieted<Real32>(oktsTanh_32f_A24, -2);
}

TEST(Tanh, SpecialValues64) {
    expectRows<Real64>(oktsTanh_64f_A53, -2,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x7FF0000000000000, 0x3FF0000000000000},
                           {0xFFF0000000000000, 0xBFF0000000000000},
                           {0x4034000000000000, 0x3FF0000000000000},  // 20
                           {0xC034000000000000, 0xBFF0000000000000},
                           {0x7FEFFFFFFFFFFFFF, 0x3FF0000000000000},
                           {0xFFEFFFFFFFFFFFFF, 0xBFF0000000000000},
                           {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234},
                           {0xFFF8000000000000, 0xFFF8000000000000},
                           {0x7FF0000000000001, 0x7FF0000000000001},  // signalling ones stay so
                           {0xFFF4123400000000, 0xFFF4123400000000},
                       });
}

TEST(Tanh, SubnormalsComeBackWithinOneUnit) {
    for (std::uint64_t b = 1; b < 0x0010000000000000; b = b * 3 + 1) {
        const auto up = asBits(alone(oktsTanh_64f_A53, bits64(b)).value);
        EXPECT_LE(b < up ? up - b : b - up, 1u) << std::hex << b;
        EXPECT_EQ(asBits(alone(oktsTanh_64f_A53, bits64(b | 1ull << 63)).value), up | 1ull << 63);
    }
    for (std::uint32_t b = 1; b < 0x00800000; b = b * 3 + 1) {
        const auto up = asBits(alone(oktsTanh_32f_A24, bits32(b)).value);
        EXPECT_LE(b < up ? up - b : b - up, 1u) << std::hex << b;
    }
}

TEST(Tanh, NeverLeavesTheUnitInterval) {
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        EXPECT_LE(std::fabs(alone(oktsTanh_32f_A24, static_cast<Real32>(random.between(5, 11))).value), 1.0f);
        EXPECT_LE(std::fabs(alone(oktsTanh_64f_A53, random.between(15, 21)).value), 1.0);
    }
}

TEST(Tanh, NaNsOnReal32AndInfinitiesOnReal64RaiseInvalid) {
    expectFlag<Real32>(oktsTanh_32f_A24, flagInvalid, true, {bits32(0x7FC00000), bits32(0xFFC12345)});
    expectFlag<Real32>(oktsTanh_32f_A24, flagInvalid, false, {0.0F, 1.0F, HUGE_VALF});
    expectFlag<Real64>(oktsTanh_64f_A53, flagInvalid, true, {HUGE_VAL, -HUGE_VAL});
    expectFlag<Real64>(oktsTanh_64f_A53, flagInvalid, false, {bits64(0x7FF8000000000000), 0.0, -1.0, 1e300});
}

TEST(Tanh, FlagsAreThoseOfTheModel) {
    expectModelFlagsByDefault<Real32>(oktsTanh_32f_A24, model::Tanh_32f, elements32);
    expectModelFlagsByDefault<Real64>(oktsTanh_64f_A53, model::Tanh_64f, elements64);
}

}  // namespace
}  // namespace okt::test
