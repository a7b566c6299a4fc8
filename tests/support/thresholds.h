// Elements at and next to the places where a routine changes its course, compared with the model.
#pragma once

#include "support/rows.h"

namespace okt::test {

template <class T>
using UnaryRoutine = OktStatus (*)(const T*, T*, std::int32_t);

// Every given pattern with the two patterns on either side of it, of both signs: alone, and at every place of an array
// whose other elements are `filler`.
template <class T>
void expectModelAround(UnaryRoutine<T> f, UnaryRoutine<T> model, std::type_identity_t<T> filler,
                       std::initializer_list<PatternOf<T>> thresholds) {
    using Pattern = PatternOf<T>;
    const Pattern sign = Pattern{1} << (8 * sizeof(T) - 1);
    for (const Pattern threshold : thresholds) {
        for (Pattern step = 0; step < 5; ++step) {
            for (const Pattern flip : {Pattern{0}, sign}) {
                const T x = std::bit_cast<T>(static_cast<Pattern>(((threshold & ~sign) - 2 + step) ^ flip));
                const auto single = alone(f, x);
                const auto expected = alone(model, x);
                EXPECT_TRUE(sameBits(single.value, asBits(expected.value))) << std::hex << asBits(x);
                EXPECT_EQ(single.status, expected.status) << std::hex << asBits(x);
                for (std::int32_t position = 0; position < rowArrayLength; ++position) {
                    const auto placed = among(f, x, filler, rowArrayLength, position);
                    const auto modelled = among(model, x, filler, rowArrayLength, position);
                    EXPECT_TRUE(sameBits(placed.value, asBits(modelled.value)))
                        << std::hex << asBits(x) << " at " << std::dec << position;
                    EXPECT_EQ(placed.status, modelled.status)
                        << std::hex << asBits(x) << " at " << std::dec << position;
                }
            }
        }
    }
}

}  // namespace okt::test
