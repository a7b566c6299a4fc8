// The double-double primitives: exact where they say so, on one lane and on several.
#include "lanes/double_double.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace okt::test {
namespace {

class DoubleDoublePrimitives : public testing::Test {
protected:
    // Sizes within 2^±30 of one another, either sign.
    Real64 draw() {
        const Real64 magnitude =
            std::ldexp(1.0 + static_cast<Real64>(random_() >> 12) * 0x1p-52, static_cast<int>(random_() % 61) - 30);
        return random_() % 2 ? magnitude : -magnitude;
    }
    std::mt19937_64 random_{7};
};

// A rest within half an ulp of the head, which is what a rounded operation leaves.
void expectNormalised(Real64 hi, Real64 lo) { EXPECT_EQ(hi + lo, hi); }

TEST_F(DoubleDoublePrimitives, SumsHoldTheirRoundingError) {
    for (int i = 0; i < 20000; ++i) {
        const Real64 a = draw(), b = draw();
        const auto s = twoSum(F64x1(a), F64x1(b));
        EXPECT_EQ(s.hi.raw, a + b);
        expectNormalised(s.hi.raw, s.lo.raw);
        // The rest is right when taking the head off in the other order leaves it.
        const Real64 big = std::fabs(a) >= std::fabs(b) ? a : b, little = big == a ? b : a;
        EXPECT_EQ(s.lo.raw, little - (s.hi.raw - big));
        const auto f = fastTwoSum(F64x1(big), F64x1(little));
        EXPECT_EQ(f.hi.raw, s.hi.raw);
        EXPECT_EQ(f.lo.raw, s.lo.raw);
    }
}

TEST_F(DoubleDoublePrimitives, SplitsAreShortAndExact) {
    const auto expectShort = [](Real64 high, int bits) {
        int exponent;
        const Real64 scaled = std::ldexp(std::frexp(high, &exponent), bits);
        EXPECT_EQ(scaled, std::trunc(scaled));
    };
    for (int i = 0; i < 20000; ++i) {
        const Real64 v = draw();
        for (const auto& [splitter, bits] : {std::pair{splitter26, 26}, {splitter21, 21}, {splitter10, 10}}) {
            const auto [h, l] = dekkerSplit(F64x1(v), splitter);
            EXPECT_EQ(h.raw + l.raw, v);
            EXPECT_LE(std::fabs(l.raw), std::ldexp(std::fabs(v), -bits));
            expectShort(h.raw, bits);
        }
        const auto [h, l] = maskSplit(F64x1(v));
        EXPECT_EQ(h.raw + l.raw, v);
        EXPECT_LE(std::fabs(h.raw), std::fabs(v));
        expectShort(h.raw, 26);
    }
}

TEST_F(DoubleDoublePrimitives, ProductsHoldTheirRoundingError) {
    for (int i = 0; i < 20000; ++i) {
        const Real64 a = draw(), b = draw();
        const auto p = exactProduct(F64x1(a), F64x1(b));
        EXPECT_EQ(p.hi.raw, a * b);
#if !defined(_WIN32)  // the fma of mingw's C library rounds twice
        EXPECT_EQ(p.lo.raw, std::fma(a, b, -(a * b)));
#endif
    }
}

TEST_F(DoubleDoublePrimitives, LanesAgreeWithOneLane) {
    for (int i = 0; i < 2000; ++i) {
        Real64 a[4], b[4];
        for (int j = 0; j < 4; ++j) {
            a[j] = draw();
            b[j] = draw();
        }
        const auto sum = twoSum(F64x4::load(a), F64x4::load(b));
        const auto fast = fastTwoSum(F64x2::load(a), F64x2::load(b));
        const auto split = dekkerSplit(F64x4::load(a));
        const auto product = exactProduct(F64x4::load(a), F64x4::load(b));
        for (int j = 0; j < 4; ++j) {
            const auto one = twoSum(F64x1(a[j]), F64x1(b[j]));
            EXPECT_EQ(sum.hi[j], one.hi.raw);
            EXPECT_EQ(sum.lo[j], one.lo.raw);
            if (j < 2) {
                const auto oneFast = fastTwoSum(F64x1(a[j]), F64x1(b[j]));
                EXPECT_EQ(fast.hi[j], oneFast.hi.raw);
                EXPECT_EQ(fast.lo[j], oneFast.lo.raw);
            }
            EXPECT_EQ(split.hi[j], dekkerSplit(F64x1(a[j])).hi.raw);
            EXPECT_EQ(split.lo[j], dekkerSplit(F64x1(a[j])).lo.raw);
            EXPECT_EQ(product.hi[j], exactProduct(F64x1(a[j]), F64x1(b[j])).hi.raw);
            EXPECT_EQ(product.lo[j], exactProduct(F64x1(a[j]), F64x1(b[j])).lo.raw);
        }
    }
}

}  // namespace
}  // namespace okt::test
