// Hyperbolic sine and cosine.
#include "tests/models/hyper_model.h"

#include "hyperbolic_elements.h"
#include "oktvm.h"

#include <cmath>

namespace okt::test {
namespace {

template <class T>
T ordinary(Random& random) {
    switch (random.below(4)) {
        case 0: return ofMagnitude<T>(random, -40, 3);
        case 1: return static_cast<T>(random.between(-0.3, 0.3));
        case 2: return static_cast<T>(random.between(-10, 10));
        default: return static_cast<T>(sizeof(T) == 4 ? random.between(-89.4, 89.4) : random.between(-708.4, 708.4));
    }
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return static_cast<T>(sizeof(T) == 4 ? random.between(89, 90) : random.between(708, 711));
        case 2: return static_cast<T>(sizeof(T) == 4 ? random.between(-90, -89) : -random.between(710.47, 710.476));
        default: return ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, sizeof(T) == 4 ? 127 : 1023);
    }
}
constexpr Filling<Real32> elements32{ordinary<Real32>, special<Real32>};
constexpr Filling<Real64> elements64{ordinary<Real64>, special<Real64>};

TEST(Sinh, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsSinh_32f_A24", model::Sinh_32f, elements32);
    expectModel<Real64, Real64>("oktsSinh_64f_A53", model::Sinh_64f, elements64);
}
TEST(Cosh, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsCosh_32f_A24", model::Cosh_32f, elements32);
    expectModel<Real64, Real64>("oktsCosh_64f_A53", model::Cosh_64f, elements64);
}

const std::initializer_list<std::uint32_t> thresholds32 = {0x42B2D4FD, 0x399D4952, 0x00800000, 0x7F800000, 0x00000002};
const std::initializer_list<std::uint64_t> thresholds64 = {0x3FCFACFC00000000, 0x3FA1EB8500000000, 0x4086233600000000,
                                                           0x40862336F49C3C50, 0x408633C378987900, 0x408633CE8FB9F87E,
                                                           0x7FF0000000000000, 0x0010000000000000, 0x0000000000000002};

TEST(Sinh, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsSinh_32f_A24, model::Sinh_32f, 0.5f, thresholds32);
    expectModelAround<Real64>(oktsSinh_64f_A53, model::Sinh_64f, 0.5, thresholds64);
}
TEST(Cosh, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsCosh_32f_A24, model::Cosh_32f, 0.5f, thresholds32);
    expectModelAround<Real64>(oktsCosh_64f_A53, model::Cosh_64f, 0.5, thresholds64);
}

TEST(Sinh, SpecialValues32) {
    expectRows<Real32>(oktsSinh_32f_A24, 2,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x00000001},
                           {0x807FFFFF, 0x807FFFFF},
                           {0x399D4951, 0x399D4951},  // the last below 0.0003
                           {0xB99D4951, 0xB99D4951},
                           {0x42B2D4FD, 0x7F800000, oktStatusOverflow},
                           {0xC2B2D4FD, 0xFF800000, oktStatusOverflow},
                           {0x7F7FFFFF, 0x7F800000, oktStatusOverflow},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0xFF800000},
                       });
    expectNaNsQuieted<Real32>(oktsSinh_32f_A24, 2);
    const auto below = alone(oktsSinh_32f_A24, bits32(0x42B2D4FC));
    EXPECT_TRUE(std::isfinite(below.value));
    EXPECT_EQ(below.status, oktStatusOk);
}

TEST(Cosh, SpecialValues32) {
    expectRows<Real32>(oktsCosh_32f_A24, 2,
                       {
                           {0x00000000, 0x3F800000},
                           {0x80000000, 0x3F800000},
                           {0x00000001, 0x3F800000},
                           {0x807FFFFF, 0x3F800000},
                           {0x42B2D4FD, 0x7F800000, oktStatusOverflow},
                           {0xC2B2D4FD, 0x7F800000, oktStatusOverflow},
                           {0xFF7FFFFF, 0x7F800000, oktStatusOverflow},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0x7F800000},
                       });
    expectNaNsQuieted<Real32>(oktsCosh_32f_A24, 2);
}

TEST(Sinh, SpecialValues64) {
    expectRows<Real64>(oktsSinh_64f_A53, 2,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x0000000000000001, 0x0000000000000001},
                           {0x8000000000000001, 0x8000000000000001},
                           {0x40862336F49C3C50, 0x7FF0000000000000},  // an infinity without a warning
                           {0xC0862336F49C3C50, 0xFFF0000000000000},
                           {0x408633C3789878FF, 0x7FF0000000000000},
                           {0x408633CE8FB9F87E, 0x7FF0000000000000, oktStatusOverflow},
                           {0xC08633CE8FB9F87E, 0xFFF0000000000000, oktStatusOverflow},
                           {0x7FEFFFFFFFFFFFFF, 0x7FF0000000000000, oktStatusOverflow},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {0xFFF0000000000000, 0xFFF0000000000000},
                           {0x7FF8ABCDE0001234, 0xFFFFFFFFFFFFFFFF},
                           {0xFFF4123400000000, 0xFFFFFFFFFFFFFFFF},
                       });
}

TEST(Cosh, SpecialValues64) {
    expectRows<Real64>(oktsCosh_64f_A53, 2,
                       {
                           {0x0000000000000000, 0x3FF0000000000000},
                           {0x8000000000000000, 0x3FF0000000000000},
                           {0x8000000000000001, 0x3FF0000000000000},
                           {0x40862336F49C3C50, 0x7FF0000000000000},
                           {0xC0862336F49C3C50, 0x7FF0000000000000},
                           {0xC08633C3789878FF, 0x7FF0000000000000},
                           {0x408633CE8FB9F87E, 0x7FF0000000000000, oktStatusOverflow},
                           {0xFFEFFFFFFFFFFFFF, 0x7FF0000000000000, oktStatusOverflow},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {0xFFF0000000000000, 0x7FF0000000000000},
                           {0x7FF8ABCDE0001234, 0xFFFFFFFFFFFFFFFF},
                           {0x7FF0000000000001, 0xFFFFFFFFFFFFFFFF},
                       });
}

TEST(SinhCosh, OnlyTheLastRangeBeforeTheOverflowIsFiniteAgain) {
    for (const auto f : {oktsSinh_64f_A53, oktsCosh_64f_A53}) {
        for (const std::uint64_t b : {0x40862336F49C3C4Full, 0x408633C378987900ull, 0x408633CE8FB9F87Dull}) {
            const auto result = alone(f, bits64(b));
            EXPECT_TRUE(std::isfinite(result.value)) << std::hex << b;
            EXPECT_GT(result.value, 0x1p1020);
            EXPECT_EQ(result.status, oktStatusOk);
        }
        Random random(9);
        for (int i = 0; i < 2000; ++i) {
            const auto result = alone(f, random.between(708.402, 710.4704));
            EXPECT_TRUE(std::isinf(result.value));
            EXPECT_EQ(result.status, oktStatusOk);
        }
    }
}

TEST(Sinh, FlagsAreThoseOfTheModel) {
    expectModelFlagsByDefault<Real32>(oktsSinh_32f_A24, model::Sinh_32f, elements32);
    expectModelFlagsByDefault<Real64>(oktsSinh_64f_A53, model::Sinh_64f, elements64);
}
TEST(Cosh, FlagsAreThoseOfTheModel) {
    expectModelFlagsByDefault<Real32>(oktsCosh_32f_A24, model::Cosh_32f, elements32);
    expectModelFlagsByDefault<Real64>(oktsCosh_64f_A53, model::Cosh_64f, elements64);
}

TEST(SinhCosh, OnReal64TheFlagsOfInfiniteResultsTellNothing) {
    for (const auto f : {oktsSinh_64f_A53, oktsCosh_64f_A53}) {
        expectFlag<Real64>(f, flagInvalid, true, {HUGE_VAL, -HUGE_VAL});
        expectFlag<Real64>(f, flagOverflow, true, {708.5, -708.5});
        expectFlag<Real64>(f, flagOverflow, false, {1000.0, -1e30, 700.0});
    }
    for (const auto f : {oktsSinh_32f_A24, oktsCosh_32f_A24}) {
        expectFlag<Real32>(f, flagOverflow, true, {90.0F, -90.0F, 1e30F});
        expectFlag<Real32>(f, flagOverflow, false, {89.0F, HUGE_VALF});
        expectFlag<Real32>(f, flagInvalid, false, {90.0F, HUGE_VALF, -HUGE_VALF});
    }
}

}  // namespace
}  // namespace okt::test
