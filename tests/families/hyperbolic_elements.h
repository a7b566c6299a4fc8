// What the tests of the hyperbolic functions share.
#pragma once

#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"
#include "support/thresholds.h"

namespace okt::test {

// An array of ordinary elements with special ones strewn in.
template <class T>
std::vector<T> strewn(Random& random, std::size_t count, const Filling<T>& filling, std::uint64_t oneIn) {
    std::vector<T> values(count);
    for (T& value : values) {
        const T x = random.below(oneIn) == 0 ? filling.special(random) : filling.ordinary(random);
        storeBits(&value, asBits(x));
    }
    return values;
}

// The flags left in MXCSR by a function of the MXCSR frame, called with its control bits clear, are those of its model:
// for elements alone, and for arrays worked in blocks, in which no lane may raise more than its own steps do.
template <class T>
void expectModelFlagsByDefault(UnaryRoutine<T> f, UnaryRoutine<T> model, std::type_identity_t<Filling<T>> filling) {
    Random random(77);
    for (int round = 0; round < 4000; ++round) {
        const std::size_t len = round % 2 == 0 ? 1 : 1 + random.below(20);
        std::vector<T> src(len, T{0}), dst(len);  // zeros raise nothing
        storeBits(&src[random.below(len)], asBits(round % 3 == 0 ? filling.ordinary(random) : filling.special(random)));
        const auto count = static_cast<std::int32_t>(len);
        const auto actual = flagsRaised([&] { f(src.data(), dst.data(), count); });
        const auto expected = flagsRaised([&] { model(src.data(), dst.data(), count); });
        EXPECT_EQ(actual, expected) << patternsOf(src);
    }
}

}  // namespace okt::test
