// The inverse error function: three routines.
#include "tests/models/erf_inv_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class T>
T inside(Random& random) {
    constexpr int ulp = sizeof(T) == 4 ? -24 : -53;
    switch (random.below(6)) {
        case 0: return ofMagnitude<T>(random, sizeof(T) == 4 ? -24 : -34, -4);
        case 1: {
            const Real64 w = std::ldexp(random.between(1, 2), ulp + static_cast<int>(random.below(-ulp)));
            return static_cast<T>(random.below(2) == 0 ? 1 - w : w - 1);
        }
        default: return static_cast<T>(random.between(-1, 1));
    }
}
template <class T>
T uniform(Random& random) {
    return static_cast<T>(random.between(-0.999, 0.999));
}
template <class T>
T tiny(Random& random) {  // subnormal elements, too
    constexpr int least = sizeof(T) == 4 ? -149 : -1074;
    const Real64 x = std::ldexp(random.between(1, 2), least + static_cast<int>(random.below(-least - 16)));
    return static_cast<T>(random.below(2) == 0 ? x : -x);
}
template <class T>
T special(Random& random) {
    switch (random.below(6)) {
        case 0: return tiny<T>(random);
        case 1: return std::bit_cast<T>(static_cast<PatternOf<T>>(random.bits()));
        case 2: return T(random.below(7)) / 2 - T{1.5};
        case 3: return static_cast<T>(std::bit_cast<Real64>((std::uint64_t{0x3DC00000} << 32) | random.bits() >> 32));
        default: return specialElement<T>(random);
    }
}

template <class T>
void expectInverseModel(const char* name, UnaryRoutine<T> model) {
    for (const Filling<T> filling :
         {Filling<T>{inside<T>, special<T>}, Filling<T>{uniform<T>, uniform<T>}, Filling<T>{inside<T>, tiny<T>}})
        expectModel<T, T>(name, model, filling);
}

TEST(ErfInv, AgreesWithTheModel) {
    expectInverseModel<Real32>("oktsErfInv_32f_A24", model::ErfInv_32f);
    expectInverseModel<Real64>("oktsErfInv_64f_A26", model::ErfInv_64f_A26);
    expectInverseModel<Real64>("oktsErfInv_64f_A53", model::ErfInv_64f);
}

TEST(ErfInv, AgreesWithTheModelAroundEveryThreshold) {
    for (const Real32 filler : {0.3f, -0.95f})
        expectModelAround<Real32>(oktsErfInv_32f_A24, model::ErfInv_32f, filler,
                                  {0x00000002, 0x00800000, 0x00907000, 0x36800000, 0x3E000000, 0x3F600000, 0x3F800000,
                                   0x7F7FFFFD, 0x7F800000, 0x7FC00000});
    for (const Real64 filler : {0.3, -0.95})
        for (const bool fast : {true, false})
            expectModelAround<Real64>(fast ? oktsErfInv_64f_A26 : oktsErfInv_64f_A53,
                                      fast ? model::ErfInv_64f_A26 : model::ErfInv_64f, filler,
                                      {0x0000000000000002, 0x0010000000000000, 0x00120DD750429B6D, 0x3DC0000000000000,
                                       0x3DC0000100000000, 0x3FC0000000000000, 0x3FEC000000000000, 0x3FF0000000000000,
                                       0x7FEFFFFFFFFFFFFD, 0x7FF0000000000000, 0x7FF8000000000000});
}

// The rows of the tables: cells of w = 1 - |x| by its pattern, of x^2, of 1/y and of the fraction of w.
TEST(ErfInv, AgreesWithTheModelAroundEveryRow) {
    for (const std::uint32_t row : {0u, 1u, 2u, 7u, 8u, 15u, 16u, 100u, 200u, 300u, 390u, 422u, 423u}) {
        const Real64 x = 1 - bits64(std::uint64_t{8183 - row} << 49);
        expectModelAround<Real64>(oktsErfInv_64f_A26, model::ErfInv_64f_A26, 0.25, {asBits(x)});
    }
    for (int k = 1; k <= 32; ++k)
        expectModelAround<Real64>(oktsErfInv_64f_A53, model::ErfInv_64f, 0.25,
                                  {asBits(std::sqrt(0.765625 - k * 0.0234375))});
    for (int k = 3; k <= 11; ++k)
        expectModelAround<Real64>(oktsErfInv_64f_A53, model::ErfInv_64f, 0.25,
                                  {asBits(1 - std::exp(-(16.0 / k) * (16.0 / k)))});
    for (const int exponent : {-4, -5, -40})
        for (int i = 0; i < 256; i += 51)
            expectModelAround<Real64>(oktsErfInv_64f_A53, model::ErfInv_64f, 0.25,
                                      {asBits(1 - std::ldexp(1 + i / 256.0, exponent))});
}

TEST(ErfInv, SpecialValues32) {
    for (const Real32 filler : {0.3f, -0.95f, 0.0f}) {
        expectRows<Real32>(oktsErfInv_32f_A24, filler,
                           {
                               {0x00000000, 0x00000000},
                               {0x80000000, 0x80000000},
                               {0x3F800000, 0x7F800000, oktStatusSingularity},
                               {0xBF800000, 0xFF800000, oktStatusSingularity},
                               {0x3FC00000, 0xFFC00000, oktStatusDomain},
                               {0xBF800001, 0xFFC00000, oktStatusDomain},
                               {0x7F7FFFFF, 0xFFC00000, oktStatusDomain},
                               {0x7F800000, 0xFFC00000, oktStatusDomain},
                               {0xFF800000, 0xFFC00000, oktStatusDomain},
                               {0x00000001, 0x00000001},
                               {0x80000002, 0x80000002},
                           });
        expectNaNsQuieted<Real32>(oktsErfInv_32f_A24, filler);
    }
}

TEST(ErfInv, SpecialValues64) {
    for (const auto f : {oktsErfInv_64f_A26, oktsErfInv_64f_A53})
        for (const Real64 filler : {0.3, -0.95, 0.0}) {
            expectRows<Real64>(f, filler,
                               {
                                   {0x0000000000000000, 0x0000000000000000},
                                   {0x8000000000000000, 0x8000000000000000},
                                   {0x3FF0000000000000, 0x7FF0000000000000, oktStatusSingularity},
                                   {0xBFF0000000000000, 0xFFF0000000000000, oktStatusSingularity},
                                   {0x3FF8000000000000, 0xFFF8000000000000, oktStatusDomain},
                                   {0xBFF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                                   {0x7FEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                                   {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                                   {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                                   {0x0000000000000001, 0x0000000000000001},
                                   {0x8000000000000002, 0x8000000000000002},
                                   {0x000FFFFFFFFFFFFF, 0x000E2DFC48DA77B4},  // sqrt(pi)/2 of it, to nearest
                               });
            expectNaNsQuieted<Real64>(f, filler);
        }
}

// The last cell of the table: w = 2^-53.
TEST(ErfInv, TheLargestElement) {
    const Real64 x = 1 - 0x1p-53;
    EXPECT_NEAR(alone(oktsErfInv_64f_A53, x).value, 5.8635847487551676, 4e-15);
    EXPECT_NEAR(alone(oktsErfInv_64f_A26, x).value, 5.8635847480311085, 1e-12);
    EXPECT_NEAR(alone(oktsErfInv_32f_A24, 1 - 0x1p-24f).value, 3.8325067, 1e-6);
}

// The fast routine works elements whose upper word is that of 2^-35 by themselves, with the polynomial grouped anew.
TEST(ErfInv, TheFirstElementsOfTheFastRoutine) {
    for (const std::uint32_t low : {0u, 1u, 0x80000000u, 0xFFFFFFFFu})
        for (std::int32_t len = 1; len <= 16; ++len)
            for (std::int32_t at = 0; at < len; ++at) {
                const Real64 x = fromWords(0x3DC00000, low);
                const auto placed = among(oktsErfInv_64f_A26, x, 0.5, len, at);
                EXPECT_TRUE(sameBits(placed.value, asBits(alone(model::ErfInv_64f_A26, x).value)));
                EXPECT_EQ(placed.status, oktStatusOk);
            }
}

template <class T>
void expectInverseFlags(UnaryRoutine<T> f, UnaryRoutine<T> model) {
    EXPECT_EQ(flagsAlone(f, T{1}), flagDivideByZero);
    EXPECT_EQ(flagsAlone(f, T{-1}), flagDivideByZero);
    EXPECT_EQ(flagsAlone(f, T{2}), flagInvalid);
    EXPECT_EQ(flagsAlone(f, std::numeric_limits<T>::infinity()), flagInvalid);
    EXPECT_EQ(flagsAlone(f, std::numeric_limits<T>::quiet_NaN()), 0u);
    EXPECT_EQ(flagsAlone(f, T{0}), 0u);
    EXPECT_EQ(flagsAlone(f, static_cast<T>(0.3)), flagInexact);
    EXPECT_EQ(flagsAlone(f, std::numeric_limits<T>::min()), flagUnderflow | flagInexact);
    EXPECT_EQ(flagsAlone(f, std::numeric_limits<T>::denorm_min()), flagUnderflow | flagDenormal | flagInexact);
    for (std::size_t count = 1; count < 40; ++count) {
        const std::vector<T> src(count, T{0});
        EXPECT_EQ(flagsRaised([&] { EXPECT_EQ(statusOf<T>(f, src), oktStatusOk); }), 0u) << count;
    }
    expectModelFlags<T>(f, model);
}

TEST(ErfInv, Flags) {
    expectInverseFlags<Real32>(oktsErfInv_32f_A24, model::ErfInv_32f);
    expectInverseFlags<Real64>(oktsErfInv_64f_A26, model::ErfInv_64f_A26);
    expectInverseFlags<Real64>(oktsErfInv_64f_A53, model::ErfInv_64f);
}

template <class T>
void expectModelUnderEveryMxcsr(UnaryRoutine<T> f, UnaryRoutine<T> model) {
    Random random(11);
    std::vector<T> src(700), dst(700), expected(700);
    for (std::size_t i = 0; i < 700; ++i) {
        const T x = i % 40 == 0 ? special<T>(random) : i % 9 == 0 ? tiny<T>(random) : inside<T>(random);
        storeBits(&src[i], loadBits(&x));
    }
    underEveryMxcsr([&] {
        EXPECT_EQ(f(src.data(), dst.data(), 700), model(src.data(), expected.data(), 700));
        for (std::size_t i = 0; i < 700; ++i)
            EXPECT_TRUE(sameBits(dst[i], asBits(expected[i]))) << std::hex << asBits(src[i]);
    });
}

TEST(ErfInv, AgreesWithTheModelUnderEveryMxcsr) {
    expectModelUnderEveryMxcsr<Real32>(oktsErfInv_32f_A24, model::ErfInv_32f);
    expectModelUnderEveryMxcsr<Real64>(oktsErfInv_64f_A26, model::ErfInv_64f_A26);
    expectModelUnderEveryMxcsr<Real64>(oktsErfInv_64f_A53, model::ErfInv_64f);
}

TEST(ErfInv, IsOdd) {
    Random random(5);
    for (int i = 0; i < 20000; ++i) {
        const Real64 x = inside<Real64>(random);
        for (const auto f : {oktsErfInv_64f_A26, oktsErfInv_64f_A53}) EXPECT_EQ(alone(f, -x).value, -alone(f, x).value);
        const auto x32 = inside<Real32>(random);
        EXPECT_EQ(alone(oktsErfInv_32f_A24, -x32).value, -alone(oktsErfInv_32f_A24, x32).value) << x32;
    }
}

template <class T>
Real64 ulpOf(T x) {
    const T magnitude = std::abs(x);
    return static_cast<Real64>(std::nextafter(magnitude, std::numeric_limits<T>::infinity())) - magnitude;
}

// erf and its inverse undo each other up to the error of e = erf(x) in ulps, over the slope, and
// that of the result. The mean value theorem wants the smallest slope between the two points.
template <class T>
void expectUndone(UnaryRoutine<T> erf, UnaryRoutine<T> inverse, T x, Real64 ulpsOfE, Real64 relative) {
    constexpr Real64 halfRootPi = 0.88622692545275801;
    const T e = alone(erf, x).value;
    if (std::abs(e) == 1) return;
    const Real64 back = alone(inverse, e).value;
    const Real64 far = std::max(std::abs(Real64{x}), std::abs(back));
    const Real64 ofE = ulpsOfE * ulpOf(e) * halfRootPi * std::exp(far * far);
    EXPECT_LE(std::abs(back - Real64{x}), ofE + 0.51 * ulpOf(static_cast<T>(back)) + relative * far) << x;
}

TEST(ErfInv, UndoesErf) {
    Random random(6);
    for (int i = 0; i < 60000; ++i) {
        const Real64 x = i % 3 == 0   ? tiny<Real64>(random)
                         : i % 3 == 1 ? random.between(-1, 1)
                                      : random.between(-5.8, 5.8);
        const Real64 ulpsOfE = std::abs(x) < 0x1p-1017 ? 1.21 : 0.81;
        expectUndone<Real64>(oktsErf_64f_A53, oktsErfInv_64f_A53, x, ulpsOfE, 0);
        expectUndone<Real64>(oktsErf_64f_A53, oktsErfInv_64f_A26, x, ulpsOfE, 2.42e-9);
        const Real32 x32 = i % 2 == 0 ? static_cast<Real32>(random.between(-3.8, 3.8)) : tiny<Real32>(random);
        expectUndone<Real32>(oktsErf_32f_A24, oktsErfInv_32f_A24, x32, 0.52, 0);
    }
}

}  // namespace
}  // namespace okt::test
