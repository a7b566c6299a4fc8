// Which path an element takes, read off neighbours whose result
// differs between the block's main path and the element path.
#pragma once

#include "lanes/lanes.h"
#include "support/element.h"
#include "support/inputs.h"
#include "support/model_check.h"

#include <cstdlib>
#include <vector>

namespace okt::test {

template <class T>
using OneSource = OktStatus (*)(const T*, T*, std::int32_t);

// The results of an array of `filler` with x at one place.
template <class T>
std::vector<T> resultsWith(OneSource<T> f, T x, T filler, std::int32_t len, std::int32_t position) {
    std::vector<T> src(static_cast<std::size_t>(len), filler), dst(src.size());
    storeBits(&src[static_cast<std::size_t>(position)], asBits(x));
    f(src.data(), dst.data(), len);
    return dst;
}

inline constexpr std::int32_t pathArrayLength = 17;  // four blocks of four and a tail, for every loop of these families

// An element's result when its block takes the element path: huge neighbours see to that.
template <class T>
T besideHuge(OneSource<T> f, T x, std::int32_t position = 1) {
    return among(f, x, T{1e6}, pathArrayLength, position).value;
}

// A value whose results on the two paths differ.
template <class T>
struct Telltale {
    T x, main, element;
    explicit Telltale(OneSource<T> f) {
        Random random(3);
        for (int i = 0; i < 100000; ++i) {
            x = static_cast<T>(random.between(0.5, 3.0));
            main = among(f, x, x, pathArrayLength, 0).value;
            element = besideHuge(f, x);
            if (asBits(main) != asBits(element)) return;
        }
        std::abort();  // the paths never differ: no use for this function
    }
};

// The elements from `first` to `last` take the element path when
// x stands at `position` of an array of `len`, and no others.
template <class T>
testing::AssertionResult takesElementPath(OneSource<T> f, const Telltale<T>& telltale, T x, std::int32_t len,
                                          std::int32_t position, std::int32_t first, std::int32_t last) {
    const std::vector<T> results = resultsWith(f, x, telltale.x, len, position);
    for (std::int32_t i = 0; i < len; ++i) {
        if (i == position) continue;
        const T expected = i >= first && i <= last ? telltale.element : telltale.main;
        if (asBits(results[static_cast<std::size_t>(i)]) != asBits(expected))
            return testing::AssertionFailure()
                   << "element " << i << " of " << len << " with " << std::hexfloat << x << " at " << position;
    }
    return testing::AssertionSuccess();
}

// x at any place of the blocks of Block sends its own block through the element path, or none.
template <int Block, class T>
void expectPath(OneSource<T> f, T x, bool element) {
    const Telltale<T> telltale(f);
    for (std::int32_t position = 0; position < pathArrayLength; ++position) {
        const bool inBlock = element && position < pathArrayLength / Block * Block;
        const std::int32_t first = position / Block * Block;
        EXPECT_TRUE(takesElementPath(f, telltale, x, pathArrayLength, position, inBlock ? first : 0,
                                     inBlock ? first + Block - 1 : -1));
    }
}

// Many blocks are worked side by side; still only the one that holds a huge element leaves the main path. The loop has
// blocks of four up to `blocksEnd`.
template <class T>
void expectHugeSendsItsBlockAlone(OneSource<T> f, std::int32_t len, std::int32_t blocksEnd) {
    const Telltale<T> telltale(f);
    for (std::int32_t position = 0; position < blocksEnd; ++position) {
        const std::int32_t first = position / 4 * 4;
        EXPECT_TRUE(takesElementPath(f, telltale, T{1e6}, len, position, first, first + 3)) << position;
    }
}

template <class T>
T nextUp(T x) {
    return std::bit_cast<T>(asBits(x) + 1);
}
template <class T>
T nextDown(T x) {
    return std::bit_cast<T>(asBits(x) - 1);
}

// Elements for the comparison with the model: huge and special ones, and those next to a threshold.
template <class T>
T unusualElement(Random& random) {
    switch (random.below(4)) {
        case 0: return specialValues<T>()[random.below(specialValues<T>().size())];
        case 1: return ofMagnitude<T>(random, 12, sizeof(T) == 4 ? 127 : 1023);
        case 2: return ofMagnitude<T>(random, sizeof(T) == 4 ? -126 : -1022, -20);
        default: {
            static constexpr double thresholds[] = {10000.0, 12800.0, 90112.0, 0x1p17, 0x1p23, 0x1p30};
            const T x = static_cast<T>(thresholds[random.below(6)]);
            const T near = std::bit_cast<T>(static_cast<Unsigned<T>>(asBits(x) + random.below(5) - 2));
            return random.below(2) == 0 ? near : -near;
        }
    }
}

// Blocks of huge elements of one kind, which are worked side by side, and blocks in which one element is another.
template <class T, class Model>
void expectModelOfHugeElements(std::string_view name, Model model) {
    constexpr int top = sizeof(T) == 4 ? 127 : 1023;
    for (const auto ordinary : {ordinaryElement<T, 17, 22>, ordinaryElement<T, 23, 29>, ordinaryElement<T, 30, top>})
        expectModel<T, T>(name, model, {ordinary, unusualElement<T>});
}

}  // namespace okt::test
