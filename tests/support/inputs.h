// Test inputs: deterministic, a mixture that meets every class of element.
#pragma once

#include "lanes/bits.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace okt::test {

// A small deterministic generator (splitmix64), so that inputs are the same everywhere.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t bits() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }
    std::uint64_t below(std::uint64_t n) { return bits() % n; }
    double unit() { return static_cast<double>(bits() >> 11) * 0x1p-53; }  // in [0, 1)
    double between(double low, double high) { return low + (high - low) * unit(); }

private:
    std::uint64_t state_;
};

// One value of every class, both signs: zeros, subnormals, bounds of the normal range, infinities, quiet and signalling
// NaNs with payloads, and some plain numbers.
template <class T>
const std::vector<T>& specialValues();

// A value with an exponent between the two binary orders, of either sign.
template <class T>
T ofMagnitude(Random& random, int lowest, int highest);

// The mixture: mostly ordinary values of all useful sizes, some arbitrary patterns, some special values.
template <class T>
T mixedValue(Random& random);

// `count` parts of the mixture; for complex arrays, twice as many as elements.
template <class T>
std::vector<T> mixedValues(std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<T> values(count);
    for (T& value : values) storeBits(&value, asBits(mixedValue<T>(random)));
    return values;
}

}  // namespace okt::test
