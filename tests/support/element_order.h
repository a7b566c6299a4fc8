// Element loops on arrays that overlap.
#pragma once

#include "support/thresholds.h"

namespace okt::test {

// Expects of arrays with elements from low to high what one element after the other gives, wherever the destination
// stands: elements that are worked together, or set aside and stored late, must not show it.
template <class T>
void expectElementOrder(UnaryRoutine<T> f, Real64 low, Real64 high) {
    constexpr std::int32_t len = 700;
    for (const std::int32_t shift : {-300, -9, -1, 0, 1, 2, 7, 8, 9, 31, 100, 127, 128, 129, 255, 256, 257, 300}) {
        Random random(8);
        std::vector<T> shifted(1300), expected;
        for (T& x : shifted) x = static_cast<T>(random.between(low, high));
        expected = shifted;
        f(shifted.data() + 300, shifted.data() + 300 + shift, len);
        for (std::int32_t i = 0; i < len; ++i) {
            const auto at = static_cast<std::size_t>(300 + i);
            expected[at + static_cast<std::size_t>(shift)] = alone(f, expected[at]).value;
        }
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_TRUE(sameBits(shifted[i], asBits(expected[i]))) << "shift " << shift << ", element " << i;
    }
}

}  // namespace okt::test
