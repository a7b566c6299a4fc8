// Cosine and sine of a real number as the parts of a complex one.
#include "tests/models/complex_exp_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cstring>

namespace okt::test {
namespace {

template <class T>
using ComplexOf = std::conditional_t<sizeof(T) == 4, Complex32, Complex64>;
template <class T>
using Routine = OktStatus (*)(const T*, ComplexOf<T>*, std::int32_t);

template <class Z>
testing::AssertionResult sameParts(const Z& actual, const Z& expected) {
    const auto re = sameBits(actual.re, asBits(expected.re));
    const auto im = sameBits(actual.im, asBits(expected.im));
    if (re && im) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "real part " << re.message() << ", imaginary part " << im.message();
}

// The element alone, and at every place of an array of whole blocks and a tail.
template <class T>
void expectEverywhere(Routine<T> f, T x, ComplexOf<T> expected) {
    using Z = ComplexOf<T>;
    EXPECT_TRUE(sameParts(alone<Z>(f, x).value, expected)) << std::hex << asBits(x);
    for (std::int32_t position = 0; position < rowArrayLength; ++position) {
        const auto placed = among<Z>(f, x, T(3), rowArrayLength, position);
        EXPECT_TRUE(sameParts(placed.value, expected)) << std::hex << asBits(x) << " at " << std::dec << position;
        EXPECT_EQ(placed.status, oktStatusOk);
    }
}

template <class T>
T ordinary(Random& random) {
    if (random.below(4) == 0) return ofMagnitude<T>(random, -100, 16);
    return static_cast<T>(random.between(-131072, 131072));
}
template <class T>
T special(Random& random) {
    switch (random.below(4)) {
        case 0: return specialElement<T>(random);
        case 1: return ofMagnitude<T>(random, 17, 40);
        case 2: return ofMagnitude<T>(random, 17, sizeof(T) == 4 ? 127 : 1023);
        default: return ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, sizeof(T) == 4 ? -100 : -200);
    }
}

TEST(CIS, AgreesWithTheModel) {
    expectModel<Real32, Complex32>("oktsCIS_32fc_A24", model::CIS_32fc, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Complex64>("oktsCIS_64fc_A53", model::CIS_64fc, {ordinary<Real64>, special<Real64>});
}

TEST(CIS, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Complex32>("oktsCIS_32fc_A24", model::CIS_32fc, {ordinary<Real32>, special<Real32>});
        expectModel<Real64, Complex64>("oktsCIS_64fc_A53", model::CIS_64fc, {ordinary<Real64>, special<Real64>});
    });
}

template <class T>
void expectModelAround(Routine<T> f, Routine<T> model, std::initializer_list<PatternOf<T>> thresholds) {
    const PatternOf<T> sign = PatternOf<T>{1} << (8 * sizeof(T) - 1);
    for (const PatternOf<T> threshold : thresholds)
        for (PatternOf<T> step = 0; step < 5; ++step)
            for (const PatternOf<T> flip : {PatternOf<T>{0}, sign}) {
                const T x = std::bit_cast<T>(static_cast<PatternOf<T>>((threshold - 2 + step) ^ flip));
                expectEverywhere<T>(f, x, alone<ComplexOf<T>>(model, x).value);
            }
}

TEST(CIS, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsCIS_32fc_A24, model::CIS_32fc,
                              {0x48000000, 0x4E800000, 0x4B000000, 0x7F7FFFFE, 0x7F800000, 0x7FC00000, 0x00800000, 2});
    expectModelAround<Real64>(oktsCIS_64fc_A53, model::CIS_64fc,
                              {0x4100000000000000, 0x3030000000000000, 0x4160000000000000, 0x41D0000000000000,
                               0x7FEFFFFFFFFFFFFE, 0x7FF0000000000000, 0x7FF8000000000000, 0x0010000000000000, 2});
}

TEST(CIS, SpecialValues32) {
    struct Value {
        std::uint32_t x, re, im;
    };
    const Value values[] = {
        {0x00000000, 0x3F800000, 0x00000000}, {0x80000000, 0x3F800000, 0x80000000},  // zeros keep their sign
        {0x00000001, 0x3F800000, 0x00000001}, {0x807FFFFF, 0x3F800000, 0x807FFFFF},
        {0x0D800000, 0x3F800000, 0x0D800000}, {0x8D800000, 0x3F800000, 0x8D800000},
        {0x7F800000, 0xFFC00000, 0xFFC00000}, {0xFF800000, 0xFFC00000, 0xFFC00000},
        {0x7FC54321, 0x7FC54321, 0x7FC54321}, {0xFFC54321, 0xFFC54321, 0xFFC54321},
        {0x7F800001, 0x7FC00001, 0x7FC00001}, {0xFFA12345, 0xFFE12345, 0xFFE12345},
    };
    for (const Routine<Real32> f : {oktsCIS_32fc_A11, oktsCIS_32fc_A21, oktsCIS_32fc_A24})
        for (const Value& v : values) expectEverywhere<Real32>(f, bits32(v.x), {bits32(v.re), bits32(v.im)});
}

TEST(CIS, SpecialValues64) {
    struct Value {
        std::uint64_t x, re, im;
    };
    constexpr std::uint64_t one = 0x3FF0000000000000, nan = 0xFFF8000000000000;
    const Value values[] = {
        {0x0000000000000000, one, 0x0000000000000000},
        {0x8000000000000000, one, 0x8000000000000000},
        {0x0000000000000001, one, 0x0000000000000001},
        {0x800FFFFFFFFFFFFF, one, 0x800FFFFFFFFFFFFF},
        {0x0010000000000000, one, 0x0010000000000000},
        {0x302FFFFFFFFFFFFF, one, 0x302FFFFFFFFFFFFF},
        {0xB030000000000000, one, 0xB030000000000000},
        {0x7FF0000000000000, nan, nan},
        {0xFFF0000000000000, nan, nan},
        {0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234, 0x7FF8ABCDE0001234},
        {0xFFF8000000000001, 0xFFF8000000000001, 0xFFF8000000000001},
        {0x7FF0000000000001, 0x7FF8000000000001, 0x7FF8000000000001},
        {0xFFF4123400000000, 0xFFFC123400000000, 0xFFFC123400000000},
    };
    for (const Routine<Real64> f : {oktsCIS_64fc_A26, oktsCIS_64fc_A50, oktsCIS_64fc_A53})
        for (const Value& v : values) expectEverywhere<Real64>(f, bits64(v.x), {bits64(v.re), bits64(v.im)});
}

TEST(CIS, Parity) {
    Random random(3);
    for (int round = 0; round < 20000; ++round) {
        const Real64 x = random.below(3) == 0 ? special<Real64>(random) : ordinary<Real64>(random);
        if (x != x || x - x != 0) continue;
        const Complex64 up = alone<Complex64>(oktsCIS_64fc_A53, x).value,
                        down = alone<Complex64>(oktsCIS_64fc_A53, -x).value;
        EXPECT_EQ(up.re, down.re) << x;
        EXPECT_EQ(up.im, -down.im) << x;
    }
}

// The frame leaves denormals-are-zero in force: a subnormal is read as a zero, but is not one by its pattern.
TEST(CIS, SubnormalsReadAsZeros) {
    const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
    const auto at32 = [](std::uint32_t x) { return alone<Complex32>(oktsCIS_32fc_A24, bits32(x)).value; };
    const auto at64 = [](std::uint64_t x) { return alone<Complex64>(oktsCIS_64fc_A53, bits64(x)).value; };
    EXPECT_TRUE(sameParts(at32(0x00000001), {1.0f, 0.0f}));
    EXPECT_TRUE(sameParts(at32(0x807FFFFF), {1.0f, -0.0f}));
    EXPECT_TRUE(sameParts(at64(0x0000000000000001), {1.0, 0.0}));
    EXPECT_TRUE(sameParts(at64(0x800FFFFFFFFFFFFF), {1.0, 0.0}));
    EXPECT_TRUE(sameParts(at64(0x8000000000000000), {1.0, -0.0}));
}

// Packed work must not be told from the element loop: flags are those of the model under every MXCSR.
template <class T>
void expectModelFlags(Routine<T> f, Routine<T> model) {
    Random random(31);
    std::vector<ComplexOf<T>> dst(12);
    for (const std::int32_t len : {12, 1})
        for (int round = 0; round < 300; ++round) {
            std::vector<T> src(static_cast<std::size_t>(len));
            for (T& x : src) {
                const T value = round % 3 == 0 || random.below(8) != 0 ? ordinary<T>(random) : special<T>(random);
                std::memcpy(&x, &value, sizeof x);
            }
            underEveryMxcsr([&] {
                const std::uint32_t control = _mm_getcsr();
                const std::uint32_t expected = flagsRaised([&] { model(src.data(), dst.data(), len); }, control);
                const std::uint32_t actual = flagsRaised([&] { f(src.data(), dst.data(), len); }, control);
                ASSERT_EQ(actual, expected) << patternsOf(src) << std::hex << "MXCSR " << control;
            });
        }
}

TEST(CIS, RaisesTheFlagsOfTheModel) {
    expectModelFlags<Real32>(oktsCIS_32fc_A24, model::CIS_32fc);
    expectModelFlags<Real64>(oktsCIS_64fc_A53, model::CIS_64fc);
}

TEST(CIS, Flags) {
    const auto flags32 = [](std::uint32_t x) { return flagsAlone<Complex32>(oktsCIS_32fc_A24, bits32(x)); };
    const auto flags64 = [](std::uint64_t x) { return flagsAlone<Complex64>(oktsCIS_64fc_A53, bits64(x)); };
    EXPECT_EQ(flags64(0x7FF0000000000000), flagInvalid);
    EXPECT_EQ(flags64(0x7FF8000000000000), 0u);
    EXPECT_EQ(flags64(0x7FF0000000000001), flagInvalid);
    EXPECT_EQ(flags64(0), 0u);
    EXPECT_EQ(flags64(0x3030000000000000 - 1), flagInexact);
    EXPECT_EQ(flags64(1), flagInexact | flagDenormal);
    EXPECT_EQ(flags64(0x3FF0000000000000), flagInexact);
    EXPECT_EQ(flags32(0x7F800000), flagInvalid);
    EXPECT_EQ(flags32(0xFFC00000), 0u);
    EXPECT_EQ(flags32(0x80000000), 0u);
}

// Arrays that share memory: an ascending loop reads what it has written.
template <class T>
void expectAscendingLoop(Routine<T> f) {
    constexpr std::int32_t len = 13, room = 64;
    Random random(4);
    T start[room];
    for (T& x : start) x = ordinary<T>(random);
    for (int to = 0; to <= 26; ++to)
        for (int from = 0; from <= 26; ++from) {
            T actual[room], expected[room];
            std::memcpy(actual, start, sizeof start);
            std::memcpy(expected, start, sizeof start);
            f(actual + from, reinterpret_cast<ComplexOf<T>*>(actual + to), len);
            for (std::int32_t i = 0; i < len; ++i) {
                const ComplexOf<T> z = alone<ComplexOf<T>>(f, expected[from + i]).value;
                std::memcpy(expected + to + 2 * i, &z, sizeof z);
            }
            EXPECT_EQ(std::memcmp(actual, expected, sizeof actual), 0) << from << ' ' << to;
        }
}

TEST(CIS, SharedArrays) {
    expectAscendingLoop<Real32>(oktsCIS_32fc_A24);
    expectAscendingLoop<Real64>(oktsCIS_64fc_A53);
}

}  // namespace
}  // namespace okt::test
