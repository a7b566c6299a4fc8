// Classes, signs and exponents of single elements, against <cmath>, and quiet about it.
#include "lanes/pattern.h"
#include "lanes/opaque.h"

#include "support/control_state.h"
#include "support/inputs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class T>
class Patterns : public testing::Test {
protected:
    // Special values of all classes and arbitrary patterns.
    static std::vector<T> values() {
        std::vector<T> all = specialValues<T>();
        Random random(5);
        for (int i = 0; i < 2000; ++i) all.push_back(asReal(static_cast<Unsigned<T>>(random.bits())));
        return all;
    }
};
using Types = testing::Types<Real32, Real64>;
TYPED_TEST_SUITE(Patterns, Types);

TYPED_TEST(Patterns, ClassesAreThoseOfTheLibraryOfC) {
    bool seen[5] = {};
    for (const TypeParam x : this->values()) {
        SCOPED_TRACE(asBits(x));
        const int c = std::fpclassify(x);
        seen[c == FP_ZERO ? 0 : c == FP_SUBNORMAL ? 1 : c == FP_NORMAL ? 2 : c == FP_INFINITE ? 3 : 4] = true;
        EXPECT_EQ(isZero(x), c == FP_ZERO);
        EXPECT_EQ(isSubnormal(x), c == FP_SUBNORMAL);
        EXPECT_EQ(isInfinite(x), c == FP_INFINITE);
        EXPECT_EQ(isNaN(x), c == FP_NAN);
        EXPECT_EQ(isFinite(x), c != FP_INFINITE && c != FP_NAN);
        EXPECT_EQ(isFiniteNonzero(x), c == FP_SUBNORMAL || c == FP_NORMAL);
        EXPECT_EQ(isNegative(x), std::signbit(x));
    }
    for (const bool each : seen) EXPECT_TRUE(each);
}

TYPED_TEST(Patterns, SignsAndMagnitudesMoveBitsAlone) {
    using Word = Unsigned<TypeParam>;
    constexpr Word top = Word{1} << (8 * sizeof(TypeParam) - 1);
    for (const TypeParam x : this->values()) {
        const Word pattern = asBits(x);
        EXPECT_EQ(signBit(x), pattern & top);
        EXPECT_EQ(magnitudeBits(x), pattern & (top - 1));
        EXPECT_EQ(asBits(magnitude(x)), pattern & (top - 1));
        EXPECT_EQ(asBits(negated(x)), pattern ^ top);
        EXPECT_EQ(asBits(withSign(x, TypeParam{1})), pattern & (top - 1));
        EXPECT_EQ(asBits(withSign(x, -std::numeric_limits<TypeParam>::quiet_NaN())), pattern | top);
    }
}

TYPED_TEST(Patterns, ExponentsAndPowersOfTwo) {
    constexpr int bias = std::numeric_limits<TypeParam>::max_exponent - 1;
    for (int k = 1 - bias; k <= bias; ++k) {
        const TypeParam power = powerOfTwo<TypeParam>(k);
        EXPECT_EQ(power, std::ldexp(TypeParam{1}, k));
        EXPECT_EQ(biasedExponent(power), k + bias);
        EXPECT_EQ(biasedExponent(-power), k + bias);
    }
    EXPECT_EQ(biasedExponent(TypeParam{0}), 0);
    EXPECT_EQ(biasedExponent(std::numeric_limits<TypeParam>::denorm_min()), 0);
    EXPECT_EQ(biasedExponent(-std::numeric_limits<TypeParam>::infinity()), 2 * bias + 1);
    EXPECT_EQ(biasedExponent(std::numeric_limits<TypeParam>::quiet_NaN()), 2 * bias + 1);
}

TYPED_TEST(Patterns, TheFormatIsThatOfTheType) {
    using F = Format<TypeParam>;
    using Limits = std::numeric_limits<TypeParam>;
    EXPECT_EQ(F::fractionBits, Limits::digits - 1);
    EXPECT_EQ(F::bias, Limits::max_exponent - 1);
    EXPECT_EQ(asReal(F::one), TypeParam{1});
    EXPECT_EQ(F::hidden, F::fraction + 1);
    EXPECT_EQ(asReal(F::sign | F::infinity), -Limits::infinity());
    const volatile TypeParam zero = 0;
    EXPECT_EQ(asBits(static_cast<TypeParam>(zero / zero)), F::nan);
    EXPECT_EQ(asBits(Limits::signaling_NaN()) & F::quiet, 0u);
    EXPECT_EQ(infinity<TypeParam>(), Limits::infinity());
    EXPECT_EQ(largestFinite<TypeParam>(), Limits::max());
    EXPECT_EQ(smallestNormal<TypeParam>(), Limits::min());
}

TYPED_TEST(Patterns, NoFlagIsRaised) {
    const auto values = this->values();
    const ScopedControlState scope({defaultMxcsr, 0x037F});
    int classes = 0;
    for (const TypeParam& x : values) {
        const TypeParam y = opaque(x);
        classes += isZero(y) + isSubnormal(y) + isFinite(y) + isFiniteNonzero(y) + isInfinite(y) + isNaN(y);
        classes += isNegative(y) + biasedExponent(y);
        keepFlags(magnitude(y));
        keepFlags(negated(y));
        keepFlags(withSign(y, y));
    }
    keepFlags(classes);
    EXPECT_EQ(controlState().mxcsr, defaultMxcsr);
}

}  // namespace
}  // namespace okt::test
