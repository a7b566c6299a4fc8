// Two-argument arctangent and the argument of complex numbers.
#include "tests/models/atan2_model.h"

#include "lanes/lanes.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>
#include <cstdlib>

namespace okt::test {
namespace {

template <class T>
using Routine = OktStatus (*)(const T*, const T*, T*, std::int32_t);

template <class T>
T anyMagnitude(Random& random) {
    return sizeof(T) == 4 ? ofMagnitude<T>(random, -149, 127) : ofMagnitude<T>(random, -1074, 1023);
}

TEST(Atan2, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAtan2_32f_A24", model::Atan2_32f,
                                {ordinaryElement<Real32, -6, 6>, specialElement<Real32>},
                                {ordinaryElement<Real32, -6, 6>, specialElement<Real32>});
    expectModel<Real64, Real64>("oktsAtan2_64f_A53", model::Atan2_64f,
                                {ordinaryElement<Real64, -6, 6>, specialElement<Real64>},
                                {ordinaryElement<Real64, -6, 6>, specialElement<Real64>});
}
TEST(Atan2, AgreesWithTheModelOverAllMagnitudes) {
    expectModel<Real32, Real32>("oktsAtan2_32f_A24", model::Atan2_32f,
                                {ordinaryElement<Real32, -40, 40>, anyMagnitude<Real32>},
                                {ordinaryElement<Real32, -40, 40>, anyMagnitude<Real32>});
    expectModel<Real64, Real64>("oktsAtan2_64f_A53", model::Atan2_64f,
                                {ordinaryElement<Real64, -300, 300>, anyMagnitude<Real64>},
                                {ordinaryElement<Real64, -300, 300>, anyMagnitude<Real64>});
}
// Both on the element path, with ratios about 1 and far away from it.
TEST(Atan2, ElementPathAgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAtan2_32f_A24", model::Atan2_32f,
                                {ordinaryElement<Real32, -149, -126>, anyMagnitude<Real32>},
                                {ordinaryElement<Real32, -149, -100>, anyMagnitude<Real32>});
    expectModel<Real64, Real64>("oktsAtan2_64f_A53", model::Atan2_64f,
                                {ordinaryElement<Real64, 990, 1023>, anyMagnitude<Real64>},
                                {ordinaryElement<Real64, 960, 1023>, anyMagnitude<Real64>});
    expectModel<Real64, Real64>("oktsAtan2_64f_A53", model::Atan2_64f,
                                {ordinaryElement<Real64, -1074, -1010>, anyMagnitude<Real64>},
                                {ordinaryElement<Real64, -1074, -1010>, anyMagnitude<Real64>});
}

template <class Complex>
Complex ordinaryComplex(Random& random) {
    using T = decltype(Complex::re);
    return {ofMagnitude<T>(random, -6, 6), ofMagnitude<T>(random, -6, 6)};
}
template <class Complex>
Complex specialComplex(Random& random) {
    using T = decltype(Complex::re);
    Complex z;
    const T re = specialElement<T>(random), im = random.below(2) == 0 ? specialElement<T>(random) : T{3};
    storeBits(&z.re, asBits(re));
    storeBits(&z.im, asBits(im));
    return z;
}
TEST(Arg, AgreesWithTheModel) {
    expectModel<Complex32, Real32>("oktsArg_32fc_A24", model::Arg_32fc,
                                   {ordinaryComplex<Complex32>, specialComplex<Complex32>});
    expectModel<Complex64, Real64>("oktsArg_64fc_A53", model::Arg_64fc,
                                   {ordinaryComplex<Complex64>, specialComplex<Complex64>});
}

template <class T, class Complex>
void expectArgIsAtan2(OktStatus (*arg)(const Complex*, T*, std::int32_t), Routine<T> atan2) {
    for (std::int32_t len = 1; len <= 80; ++len) {
        const auto count = static_cast<std::size_t>(len);
        const std::vector<T> y = mixedValues<T>(count, 100 + count), x = mixedValues<T>(count, 200 + count);
        std::vector<Complex> z(count);
        for (std::size_t i = 0; i < count; ++i) {
            storeBits(&z[i].re, loadBits(&x[i]));
            storeBits(&z[i].im, loadBits(&y[i]));
        }
        std::vector<T> ofPairs(count), ofParts(count);
        EXPECT_EQ(arg(z.data(), ofPairs.data(), len), oktStatusOk);
        EXPECT_EQ(atan2(y.data(), x.data(), ofParts.data(), len), oktStatusOk);
        EXPECT_EQ(std::memcmp(ofPairs.data(), ofParts.data(), count * sizeof(T)), 0) << len;
    }
}
TEST(Arg, IsAtan2OfTheParts) {
    expectArgIsAtan2<Real32, Complex32>(oktsArg_32fc_A24, oktsAtan2_32f_A24);
    expectArgIsAtan2<Real64, Complex64>(oktsArg_64fc_A53, oktsAtan2_64f_A53);
}

// Zeros, infinities and NaNs of y against all classes of x, and the other way round. y stands first.
TEST(Atan2, SpecialValues64) {
    constexpr std::uint64_t s = 0x8000000000000000, inf = 0x7FF0000000000000, pi = 0x400921FB54442D18,
                            half = 0x3FF921FB54442D18, quarter = 0x3FE921FB54442D18, three = 0x4002D97C7F3321D2;
    for (const std::uint64_t sy : {std::uint64_t{0}, s}) {
        expectRows<Real64>(
            oktsAtan2_64f_A53, 2.0,
            {{sy, 0, sy}, {sy, s, pi | sy}, {inf | sy, inf, quarter | sy}, {inf | sy, inf | s, three | sy}});
        // Finite, from the smallest to the largest.
        for (const std::uint64_t v :
             {std::uint64_t{1}, std::uint64_t{0x000FFFFFFFFFFFFF}, std::uint64_t{0x0010000000000000},
              std::uint64_t{0x3FF8000000000000}, std::uint64_t{0x7FEFFFFFFFFFFFFF}}) {
            expectRows<Real64>(oktsAtan2_64f_A53, 2.0,
                               {{sy, v, sy},
                                {sy, v | s, pi | sy},
                                {v | sy, 0, half | sy},
                                {v | sy, s, half | sy},
                                {v | sy, inf, sy},
                                {v | sy, inf | s, pi | sy},
                                {inf | sy, v, half | sy},
                                {inf | sy, v | s, half | sy},
                                {v | sy, v, quarter | sy},
                                {v | sy, v | s, three | sy}});
        }
        expectRows<Real64>(oktsAtan2_64f_A53, 2.0,
                           {{inf | sy, 0, half | sy},
                            {inf | sy, s, half | sy},
                            {sy, inf, sy},
                            {sy, inf | s, pi | sy},
                            {1 | sy, 0x7FEFFFFFFFFFFFFF, sy},
                            {1 | sy, 0xFFEFFFFFFFFFFFFF, pi | sy},
                            {1 | sy, 0x3FF0000000000000, 1 | sy},
                            {0x7FEFFFFFFFFFFFFF | sy, 1, half | sy},
                            {0x7FEFFFFFFFFFFFFF | sy, s | 1, half | sy}});
    }
}

TEST(Atan2, SpecialValues32) {
    constexpr std::uint32_t s = 0x80000000, inf = 0x7F800000, pi = 0x40490FDB, half = 0x3FC90FDB, quarter = 0x3F490FDB,
                            three = 0x4016CBE4;
    for (const std::uint32_t sy : {0u, s}) {
        expectRows<Real32>(
            oktsAtan2_32f_A24, 2.0F,
            {{sy, 0, sy}, {sy, s, pi | sy}, {inf | sy, inf, quarter | sy}, {inf | sy, inf | s, three | sy}});
        for (const std::uint32_t v : {0x00000001u, 0x007FFFFFu, 0x00800000u, 0x3FC00000u, 0x7F7FFFFFu}) {
            expectRows<Real32>(oktsAtan2_32f_A24, 2.0F,
                               {{sy, v, sy},
                                {sy, v | s, pi | sy},
                                {v | sy, 0, half | sy},
                                {v | sy, s, half | sy},
                                {v | sy, inf, sy},
                                {v | sy, inf | s, pi | sy},
                                {inf | sy, v, half | sy},
                                {inf | sy, v | s, half | sy}});
        }
        expectRows<Real32>(oktsAtan2_32f_A24, 2.0F,
                           {{inf | sy, 0, half | sy},
                            {inf | sy, s, half | sy},
                            {sy, inf, sy},
                            {sy, inf | s, pi | sy},
                            {1 | sy, 1, quarter | sy},
                            {1 | sy, s | 1, three | sy},
                            {0x7F7FFFFF | sy, 0x7F7FFFFF, quarter | sy},
                            {1 | sy, 0x7F7FFFFF, sy},
                            {1 | sy, 0xFF7FFFFF, pi | sy},
                            {0x7F7FFFFF | sy, 1, half | sy}});
    }
}

// A NaN comes out quiet with sign and payload, y's where both are NaNs, whatever the other one is.
TEST(Atan2, NaNs) {
    for (const Real64 special : {0.0, 1.0, HUGE_VAL, 0x1p-1074}) {
        const std::uint64_t other = asBits(special);
        expectRows<Real64>(oktsAtan2_64f_A53, 2.0,
                           {{0x7FF8ABCDE0001234, other, 0x7FF8ABCDE0001234},
                            {0xFFF4123400000000, other, 0xFFFC123400000000},
                            {other, 0xFFF8ABCDE0001234, 0xFFF8ABCDE0001234},
                            {other, 0x7FF0000000000001, 0x7FF8000000000001}});
    }
    expectRows<Real64>(oktsAtan2_64f_A53, 2.0,
                       {{0x7FF8000000000001, 0xFFF8000000000002, 0x7FF8000000000001},
                        {0xFFF8000000000002, 0x7FF0000000000001, 0xFFF8000000000002},
                        {0x7FF0000000000003, 0xFFF8000000000002, 0x7FF8000000000003}});
    for (const std::uint32_t other : {0x00000000u, 0x3F800000u, 0x7F800000u, 0x00000001u}) {
        expectRows<Real32>(oktsAtan2_32f_A24, 2.0F,
                           {{0x7FC54321, other, 0x7FC54321},
                            {0xFFA12345, other, 0xFFE12345},
                            {other, 0xFFC54321, 0xFFC54321},
                            {other, 0x7F800001, 0x7FC00001}});
    }
    expectRows<Real32>(oktsAtan2_32f_A24, 2.0F,
                       {{0x7FC00001, 0xFFC00002, 0x7FC00001}, {0xFFC00002, 0x7F800001, 0xFFC00002}});
}

// All pairs of the bounds of the element path's cases with their neighbours, of all signs, alone and in a block.
template <class T>
void expectModelOnPairs(Routine<T> f, Routine<T> model, const std::vector<T>& magnitudes) {
    constexpr std::int32_t len = 20;
    for (const T y : magnitudes)
        for (const T x : magnitudes)
            for (int signs = 0; signs < 4; ++signs) {
                const T sy = (signs & 1) != 0 ? -y : y, sx = (signs & 2) != 0 ? -x : x;
                EXPECT_TRUE(sameBits(alone(f, sy, sx).value, asBits(alone(model, sy, sx).value)))
                    << std::hexfloat << sy << ' ' << sx;
                std::vector<T> src1(len, T{2}), src2(len, T{3}), actual(len), expected(len);
                src1[1] = sy;
                src2[1] = sx;
                f(src1.data(), src2.data(), actual.data(), len);
                model(src1.data(), src2.data(), expected.data(), len);
                EXPECT_EQ(std::memcmp(actual.data(), expected.data(), len * sizeof(T)), 0)
                    << std::hexfloat << sy << ' ' << sx;
            }
}
template <class T>
void appendAround(std::vector<T>& values, T value) {
    for (int step = -1; step <= 1; ++step)
        values.push_back(std::bit_cast<T>(static_cast<Unsigned<T>>(asBits(value) + static_cast<Unsigned<T>>(step))));
}
TEST(Atan2, ThresholdsOfTheRangeTestAndOfTheElementPath64) {
    std::vector<Real64> values;
    for (const Real64 v : {bits64(1), 0x1p-1022, 0x1p-1021, 0x1p-1020, 0x1p-969, 0x1p-968, 0x1p-967, 0x1p-948, 0x1p-947,
                           0x1p-946, 0x1p993, 0x1p992, 0x1p939, 0x1p919, 0x1p1023, 0x1p969, 0x1p1022, 1.0})
        appendAround(values, v);
    expectModelOnPairs<Real64>(oktsAtan2_64f_A53, model::Atan2_64f, values);
}
TEST(Atan2, ThresholdsOfTheRangeTestAndOfTheElementPath32) {
    std::vector<Real32> values;
    for (const Real32 v : {bits32(1), 0x1p-126F, 0x1p-125F, 0x1p-124F, 0x1p-96F, 0x1p-73F, 0x1p-72F, 0x1p-52F, 0x1p-51F,
                           bits32(0x7D000000), 0x1p120F, 0x1p126F, 0x1p127F, 1.0F})
        appendAround(values, v);
    expectModelOnPairs<Real32>(oktsAtan2_32f_A24, model::Atan2_32f, values);
}
// Ratios at the limits of the intervals and regions, main and element path.
TEST(Atan2, LimitsOfTheIntervals) {
    for (const Real64 limit : {0.4375, 0.6875, 1.1875, 2.4375, 0.125, 0.1875, 0.25, 1.5, 0.375, 0.72, 1.75, 2.6875})
        for (const Real64 x : {1.0, 1.7, 0x1.fffffep0}) {
            std::vector<Real64> ys, wides{x, x * 0x1p-1021, x * 0x1p1000};
            for (const Real64 scale : {1.0, 0x1p-1021, 0x1p1000}) appendAround(ys, limit * x * scale);
            appendAround(ys, fromWords(highWord(limit * x) + 1, 0));
            wides.insert(wides.end(), ys.begin(), ys.end());
            expectModelOnPairs<Real64>(oktsAtan2_64f_A53, model::Atan2_64f, wides);

            const auto single = static_cast<Real32>(x);
            std::vector<Real32> values{single, single * 0x1p-130F, single * 0x1p124F};
            for (const Real32 scale : {1.0F, 0x1p-130F, 0x1p124F})
                appendAround(values, static_cast<Real32>(limit) * single * scale);
            expectModelOnPairs<Real32>(oktsAtan2_32f_A24, model::Atan2_32f, values);
        }
}

// Elements whose main and element results differ show which path they took.
template <class T>
struct Telltale {
    T y, x, main, element;
    explicit Telltale(Routine<T> f) {
        Random random(3);
        for (int i = 0; i < 100000; ++i) {
            y = static_cast<T>(random.between(0.5, 3.0));
            x = static_cast<T>(random.between(0.5, 3.0));
            main = alone(f, y, x).value;
            const std::vector<T> src1{y, T{0}, y, y, y, y, y, y, y, y, y, y, y, y, y, y}, src2(16, x);
            std::vector<T> dst(16);
            f(src1.data(), src2.data(), dst.data(), 16);
            element = dst[0];
            if (asBits(main) != asBits(element)) return;
        }
        std::abort();  // the paths never differ
    }
};
template <class T>
void expectBlocks(Routine<T> f, std::int32_t block, std::int32_t (*blocksEnd)(std::int32_t)) {
    const Telltale<T> telltale(f);
    for (std::int32_t len = 1; len <= 36; ++len) {
        for (std::int32_t position = 0; position < len; ++position) {
            std::vector<T> src1(static_cast<std::size_t>(len), telltale.y), src2(src1.size(), telltale.x),
                dst(src1.size());
            (position % 2 == 0 ? src1 : src2)[static_cast<std::size_t>(position)] = T{0};
            f(src1.data(), src2.data(), dst.data(), len);
            const bool inBlock = position < blocksEnd(len);
            for (std::int32_t i = 0; i < len; ++i) {
                if (i == position) continue;
                const bool element = inBlock && i / block == position / block;
                EXPECT_TRUE(
                    sameBits(dst[static_cast<std::size_t>(i)], asBits(element ? telltale.element : telltale.main)))
                    << "element " << i << " of " << len << ", zero at " << position;
            }
        }
    }
}
TEST(Atan2, BlocksOfTwoUpToAMultipleOfSixteenOnReal64) {
    expectBlocks<Real64>(oktsAtan2_64f_A53, 2, [](std::int32_t len) { return len / 16 * 16; });
}
TEST(Atan2, BlocksOfFourWhileBitTwoAndTheBitsAboveThreeAllowOnReal32) {
    expectBlocks<Real32>(oktsAtan2_32f_A24, 4, [](std::int32_t len) { return len / 16 * 16 + (len & 4); });
}

// The lower bound itself passes alone and fails in a block.
TEST(Atan2, LowestMagnitudeOfTheSingleElementSteps) {
    const Telltale<Real32> telltale(oktsAtan2_32f_A24);
    const Real32 scale = 0x1p-125F;
    bool differs = false;
    Random random(9);
    for (int i = 0; i < 2000; ++i) {
        const auto y = static_cast<Real32>(random.between(1, 2)) * scale;
        const Real32 alike = alone(oktsAtan2_32f_A24, y, scale).value;
        std::vector<Real32> src1(16, y), src2(16, scale), dst(16);
        oktsAtan2_32f_A24(src1.data(), src2.data(), dst.data(), 16);
        for (const Real32 result : dst) ASSERT_EQ(asBits(result), asBits(dst[0]));
        differs |= asBits(alike) != asBits(dst[0]);
    }
    EXPECT_TRUE(differs);
}

TEST(Atan2, Flags) {
    const auto flags = []<class T>(Routine<T> f, T y, T x) {
        T result;
        return flagsRaised([&] { f(&y, &x, &result, 1); });
    };
    const Real64 inf = HUGE_VAL, nan = bits64(0x7FF8000000000000), signalling = bits64(0x7FF0000000000001);
    for (const Real64 y : {0.0, -0.0}) {
        EXPECT_EQ(flags(oktsAtan2_64f_A53, y, 1.0), 0u);
        EXPECT_EQ(flags(oktsAtan2_64f_A53, y, inf), 0u);
        EXPECT_EQ(flags(oktsAtan2_64f_A53, y, -1.0), flagInexact);
        EXPECT_EQ(flags(oktsAtan2_64f_A53, 1.0, y), flagInexact);
    }
    for (const Real64 x : {inf, -inf, 1.0}) EXPECT_EQ(flags(oktsAtan2_64f_A53, inf, x), flagInexact);
    EXPECT_EQ(flags(oktsAtan2_64f_A53, nan, 1.0), 0u);
    EXPECT_EQ(flags(oktsAtan2_64f_A53, 1.0, nan), 0u);
    EXPECT_EQ(flags(oktsAtan2_64f_A53, 1.0, signalling), flagInvalid);
    EXPECT_EQ(flags(oktsAtan2_64f_A53, signalling, nan), flagInvalid);
    EXPECT_EQ(flags(oktsAtan2_32f_A24, bits32(0x7F800001), 1.0F), flagInvalid);
    EXPECT_EQ(flags(oktsAtan2_32f_A24, bits32(0x7FC00001), 1.0F), 0u);
    EXPECT_EQ(flags(oktsAtan2_64f_A53, 1.5, 2.5), flagInexact);
    EXPECT_EQ(flags(oktsAtan2_32f_A24, 1.5F, -2.5F), flagInexact);

    // What the range test keeps out of a block raises nothing there.
    for (const Real64 special : {inf, -inf, nan, 0.0}) {
        std::vector<Real64> src1(16, 1.5), src2(16, 2.5), dst(16);
        src1[3] = special;
        src2[9] = special;
        EXPECT_EQ(flagsRaised([&] { oktsAtan2_64f_A53(src1.data(), src2.data(), dst.data(), 16); }), flagInexact);
        std::vector<Real32> single1(16, 1.5F), single2(16, 2.5F), single(16);
        single1[3] = static_cast<Real32>(special);
        single2[9] = static_cast<Real32>(special);
        EXPECT_EQ(flagsRaised([&] { oktsAtan2_32f_A24(single1.data(), single2.data(), single.data(), 16); }),
                  flagInexact);
    }
}

TEST(Atan2, UnderflowingQuotientGivesAResultNearZeroWithoutAWarning) {
    for (const std::int32_t len : {1, 20}) {
        std::vector<Real64> y(20, 0x1.8p-1000), x(20, 0x1p60), dst(20);
        EXPECT_EQ(oktsAtan2_64f_A53(y.data(), x.data(), dst.data(), len), oktStatusOk);
        EXPECT_EQ(dst[0], 0x1.8p-1060);
        std::vector<Real32> y32(20, 0x1.8p-100F), x32(20, 0x1p60F), dst32(20, -1.0F);
        EXPECT_EQ(oktsAtan2_32f_A24(y32.data(), x32.data(), dst32.data(), len), oktStatusOk);
        EXPECT_EQ(dst32[0], 0.0F);
    }
}

TEST(Arg, OfANegativeRealHasTheSignOfTheImaginaryZero) {
    for (const std::int32_t len : {1, 20}) {
        for (const Real64 zero : {0.0, -0.0}) {
            const std::vector<Complex64> z(20, {-2.5, zero});
            const std::vector<Complex32> z32(20, {-2.5F, static_cast<Real32>(zero)});
            std::vector<Real64> dst(20);
            std::vector<Real32> dst32(20);
            oktsArg_64fc_A53(z.data(), dst.data(), len);
            oktsArg_32fc_A24(z32.data(), dst32.data(), len);
            EXPECT_TRUE(sameBits(dst[0], 0x400921FB54442D18 | asBits(zero)));
            EXPECT_TRUE(sameBits(dst32[0], 0x40490FDB | asBits(static_cast<Real32>(zero))));
        }
    }
}

}  // namespace
}  // namespace okt::test
