#include "values.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

namespace okt::tool {
namespace {

std::uint64_t bits64(const std::string& text) {
    std::uint64_t bits = 0xDEAD;
    EXPECT_EQ(parseElement(text, ElementType::Real64, &bits), "") << text;
    return bits;
}

std::uint32_t bits32(const std::string& text) {
    std::uint32_t bits = 0xDEAD;
    EXPECT_EQ(parseElement(text, ElementType::Real32, &bits), "") << text;
    return bits;
}

std::string refusal(const std::string& text, ElementType type) {
    unsigned char sink[16];
    return parseElement(text, type, sink);
}

TEST(Values, DecimalNumbersAreRoundedOnceToTheElementType) {
    EXPECT_EQ(bits64("1"), 0x3FF0000000000000u);
    EXPECT_EQ(bits64(" -0.1\t"), 0xBFB999999999999Au);
    EXPECT_EQ(bits64("+2.5e-3"), std::bit_cast<std::uint64_t>(2.5e-3));
    EXPECT_EQ(bits64(".5"), 0x3FE0000000000000u);
    EXPECT_EQ(bits64("-0"), 0x8000000000000000u);
    EXPECT_EQ(bits32("0.1"), 0x3DCCCCCDu);
    // Between two Real32 values, just above the middle: rounding to Real64 first would go down to 1.
    EXPECT_EQ(bits32("1.00000005960464477540"), 0x3F800001u);
}

TEST(Values, TooSmallNumbersBecomeTheNearestSubnormalOrZero) {
    EXPECT_EQ(bits64("4e-324"), 1u);
    EXPECT_EQ(bits64("1e-400"), 0u);
    EXPECT_EQ(bits64("-1e-400"), 0x8000000000000000u);
    EXPECT_EQ(bits32("1e-45"), 1u);
}

TEST(Values, HexadecimalNumbersAndBitPatternsAreToldApart) {
    EXPECT_EQ(bits64("0x1.8p3"), std::bit_cast<std::uint64_t>(12.0));
    EXPECT_EQ(bits64("-0x1p-1074"), 0x8000000000000001u);
    EXPECT_EQ(bits64("0x7FF0000000000001"), 0x7FF0000000000001u);
    EXPECT_EQ(bits32("0x7fa00001"), 0x7FA00001u);
    EXPECT_NE(refusal("0x7FA00001", ElementType::Real64), "");
    EXPECT_NE(refusal("0x7FF0000000000001", ElementType::Real32), "");
    EXPECT_NE(refusal("-0x3FF0000000000000", ElementType::Real64), "");
}

TEST(Values, InfinitiesAndNaNsInAnyCase) {
    EXPECT_EQ(bits64("inf"), 0x7FF0000000000000u);
    EXPECT_EQ(bits64("-Infinity"), 0xFFF0000000000000u);
    EXPECT_EQ(bits64("NaN"), 0x7FF8000000000000u);
    EXPECT_EQ(bits32("-nan"), 0xFFC00000u);
}

TEST(Values, WhatIsNoNumberIsRefused) {
    for (const char* text :
         {"", "  ", "x", "1x", "1 2", "--1", "+-1", "1e", "0x", "0xp1", "0x1.8q3", "infin", "nan(1)", "e5", "."})
        EXPECT_NE(refusal(text, ElementType::Real64), "") << "'" << text << "'";
    EXPECT_NE(refusal("1e400", ElementType::Real64), "");
    EXPECT_NE(refusal("-1e39", ElementType::Real32), "");
    EXPECT_NE(refusal("1,2", ElementType::Real64), "");
}

TEST(Values, ComplexElementsArePairs) {
    Complex64 z{};
    EXPECT_EQ(parseElement("3, -4", ElementType::Complex64, &z), "");
    EXPECT_EQ(z.re, 3);
    EXPECT_EQ(z.im, -4);
    Complex32 c{};
    EXPECT_EQ(parseElement("0x3F800000,inf", ElementType::Complex32, &c), "");
    EXPECT_EQ(c.re, 1);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(c.im), 0x7F800000u);
    for (const char* text : {"3", "3,", ",4", "1,2,3", "1;2"})
        EXPECT_NE(refusal(text, ElementType::Complex64), "") << "'" << text << "'";
}

TEST(Values, WhatIsWrittenIsReadBackToTheSameBits) {
    std::mt19937_64 random(1);
    const std::uint64_t special[] = {0,
                                     0x8000000000000000,
                                     1,
                                     0x000FFFFFFFFFFFFF,
                                     0x7FEFFFFFFFFFFFFF,
                                     0x7FF0000000000000,
                                     0xFFF0000000000000,
                                     0x7FF8000000000000,
                                     0xFFF8000000000000,
                                     0x7FF0000000000001,
                                     0xFFFFFFFFFFFFFFFF};
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = i < 11 ? special[i] : random();
        EXPECT_EQ(bits64(formatElement(&bits, ElementType::Real64)), bits);
        EXPECT_EQ(bits64(formatPattern(&bits, ElementType::Real64)), bits);
        const auto narrow = static_cast<std::uint32_t>(bits >> 32);
        EXPECT_EQ(bits32(formatElement(&narrow, ElementType::Real32)), narrow);
        std::uint64_t pair = 0;
        EXPECT_EQ(parseElement(formatElement(&bits, ElementType::Complex32), ElementType::Complex32, &pair), "");
        EXPECT_EQ(pair, bits);
    }
}

TEST(Values, NumbersAreWrittenAsShortAsPossible) {
    const double tenth = 0.1;
    const float third = 1.0f / 3;
    EXPECT_EQ(formatElement(&tenth, ElementType::Real64), "0.1");
    EXPECT_EQ(formatElement(&third, ElementType::Real32), "0.33333334");
    EXPECT_EQ(formatPattern(&third, ElementType::Real32), "0x3EAAAAAB");
}

}  // namespace
}  // namespace okt::tool
