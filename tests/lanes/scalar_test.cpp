// What src/lanes has for single values: Real80 by its fields, elements in memory, control registers, values that the
// compiler is kept from knowing.
#include "lanes/control_state.h"
#include "lanes/opaque.h"
#include "lanes/pattern.h"
#include "lanes/real80.h"
#include "lanes/types.h"
#include "support/control_state.h"
#include "support/inputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace okt::test {
namespace {

std::vector<Real80Bits> patterns() {
    std::vector<Real80Bits> all;
    for (const std::uint16_t sign : std::initializer_list<std::uint16_t>{0, 0x8000}) {
        const auto with = [&](int exponent) { return static_cast<std::uint16_t>(sign | exponent); };
        all.push_back({0, with(0)});                        // zero
        all.push_back({1, with(0)});                        // the smallest subnormal
        all.push_back({0x8000000000000000, with(0x7FFF)});  // infinity
        all.push_back({0xC000000000001234, with(0x7FFF)});  // a NaN
        Random random(3);
        for (int i = 0; i < 500; ++i)
            all.push_back({random.bits() | 0x8000000000000000, with(1 + static_cast<int>(random.below(0x7FFE)))});
    }
    return all;
}

bool operator==(Real80Bits a, Real80Bits b) {
    return a.significand == b.significand && a.signAndExponent == b.signAndExponent;
}

TEST(Real80Fields, AreReadAndWritten) {
    for (const Real80Bits bits : patterns()) EXPECT_TRUE(asBits(fromBits(bits)) == bits) << bits.significand;
    EXPECT_TRUE(asBits(Real80{1}) == (Real80Bits{0x8000000000000000, 0x3FFF}));
    EXPECT_TRUE(asBits(Real80{-1.5L}) == (Real80Bits{0xC000000000000000, 0xBFFF}));
    EXPECT_EQ(fromBits({0xC000000000000000, 0x4000}), 3);
}

TEST(Real80Fields, SignificandAsANumber) {
    for (const Real80Bits bits : patterns()) {
        if (bits.significand >> 63 == 0) continue;
        const Real80Bits one{bits.significand, 0x3FFF};
        EXPECT_TRUE(asBits(significandOf(bits)) == one) << bits.significand;
    }
}

TEST(Real80Operations, MagnitudeAndChoice) {
    for (const Real80Bits bits : patterns()) {
        const Real80 x = fromBits(bits);
        const Real80Bits without{bits.significand, static_cast<std::uint16_t>(bits.signAndExponent & 0x7FFF)};
        EXPECT_TRUE(asBits(abs(x)) == without) << bits.significand;
        EXPECT_TRUE(asBits(select(opaque(true), x, Real80{2})) == bits) << bits.significand;
        EXPECT_TRUE(asBits(select(opaque(false), Real80{2}, x)) == bits) << bits.significand;
    }
}

// Correctly rounded: no other number's square is nearer.
TEST(Real80Operations, Root) {
    Random random(5);
    for (int i = 0; i < 1000; ++i) {
        const std::uint64_t n = random.bits() >> 32;
        EXPECT_EQ(sqrt(static_cast<Real80>(n) * static_cast<Real80>(n)), static_cast<Real80>(n));
    }
    EXPECT_TRUE(asBits(sqrt(Real80{2})) == (Real80Bits{0xB504F333F9DE6484, 0x3FFF}));
    EXPECT_TRUE(asBits(sqrt(Real80{-0.0L})) == (Real80Bits{0, 0x8000}));
    EXPECT_EQ(sqrt(std::numeric_limits<Real80>::infinity()), std::numeric_limits<Real80>::infinity());
    EXPECT_TRUE(std::isnan(sqrt(opaque(Real80{-1}))));
}

// --- Words and elements ---

TEST(Words, OfReal64) {
    EXPECT_EQ(highWord(bits64(0x123456789ABCDEF0)), 0x12345678u);
    EXPECT_EQ(lowWord(bits64(0x123456789ABCDEF0)), 0x9ABCDEF0u);
    EXPECT_EQ(asBits(fromWords(0x12345678, 0x9ABCDEF0)), 0x123456789ABCDEF0u);
}

TEST(Elements, AreReadAndWrittenAtAnyAddress) {
    for (const std::size_t shift : {0u, 1u, 3u, 7u}) {
        unsigned char bytes[16] = {};
        auto* const x = reinterpret_cast<Real64*>(bytes + shift);
        auto* const y = reinterpret_cast<Real32*>(bytes + shift);
        storeElement(x, 1.5);
        EXPECT_EQ(loadElement(x), 1.5);
        EXPECT_EQ(loadBits(x), 0x3FF8000000000000u);
        storeBits(x, 0x7FF0000000000001);  // a signalling NaN stays one
        EXPECT_EQ(loadBits(x), 0x7FF0000000000001u);
        storeElement(y, 2.5f);
        EXPECT_EQ(loadElement(y), 2.5f);
        storeBits(y, 0x7F800001u);
        EXPECT_EQ(loadBits(y), 0x7F800001u);
    }
}

// --- Control registers ---

TEST(ControlRegisters, AreReadAndWritten) {
    const ScopedControlState scope({});
    writeMxcsr(defaultMxcsr | roundUp | flushToZero);
    EXPECT_EQ(controlState().mxcsr, defaultMxcsr | roundUp | flushToZero);
    EXPECT_EQ(readMxcsr(), defaultMxcsr | roundUp | flushToZero);
    std::uint16_t word = 0;
    loadX87Control(0x027F);
    storeX87Control(word);
    EXPECT_EQ(word, 0x027F);
    EXPECT_EQ(controlState().x87, 0x027F);
}

TEST(ControlRegisters, TellTheFlagsOfTheX87Unit) {
    const ScopedControlState scope({});
    asm volatile("fnclex");
    EXPECT_EQ(readX87Status() & 0x3F, 0);
    keepFlags(opaque(Real80{1}) / opaque(Real80{3}));
    EXPECT_EQ(readX87Status() & 0x3F, 0x20);
}

// The lower lanes stay, and with registers of 128 bits there are no upper ones.
TEST(ControlRegisters, UpperLanesAreCleared) {
    alignas(registerBytes) Real64 lane[registerLanes<Real64>];
    std::fill(std::begin(lane), std::end(lane), 1.5);
#if defined(__AVX__)
    asm volatile("vmovapd %0, %%ymm5" : : "m"(lane) : "xmm5");
    clearUpperLanes();
    asm volatile("vmovapd %%ymm5, %0" : "=m"(lane) : : "xmm5");
    EXPECT_EQ(lane[2], 0);
    EXPECT_EQ(lane[3], 0);
#else
    clearUpperLanes();
#endif
    EXPECT_EQ(lane[0], 1.5);
    EXPECT_EQ(lane[1], 1.5);
}

// --- What the compiler is kept from knowing ---

TEST(Opaque, OperationsAreDoneForTheirFlagsWhereTheyStand) {
    EXPECT_EQ(flagsRaised([] { keepFlags(opaque(Real64{1}) / opaque(Real64{0})); }), 0x04u);
    EXPECT_EQ(flagsRaised([] { keepFlags(opaque(Real32{1}) / opaque(Real32{3})); }), 0x20u);
    EXPECT_EQ(opaque(7), 7);
    EXPECT_EQ(opaque(Real80{7}), 7);
}

TEST(Opaque, MemoryKeepsItsValues) {
    int a = 1, b[2] = {2, 3}, c = 4, d = 5, e = 6;
    keepInMemory(a);
    keepInMemory(a, b);
    keepInMemory(a, b, c);
    keepInMemory(a, b, c, d, e);
    forgetMemory();
    EXPECT_EQ(a + b[0] + b[1] + c + d + e, 21);
}

}  // namespace
}  // namespace okt::test
