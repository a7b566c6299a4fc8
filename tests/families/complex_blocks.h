// The block routines of complex functions: elements at any place of an array, and around the limits of a routine's
// range.
#pragma once

#include "complex_cells.h"

#include "support/flags.h"
#include "support/model_check.h"

#include <initializer_list>

namespace okt::test {

template <class Z>
using ComplexRoutine = OktStatus (*)(const Z*, Z*, std::int32_t);
template <class Z>
using PartOf = decltype(Z::re);
template <class Z>
using PartPattern = decltype(asBits(PartOf<Z>{}));

inline constexpr std::size_t placesArrayLength = 13;  // whole blocks and a tail

template <class Z>
std::string patterns(const Z& z) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "(0x%llX, 0x%llX)", static_cast<unsigned long long>(asBits(z.re)),
                  static_cast<unsigned long long>(asBits(z.im)));
    return buffer;
}

template <class Z>
testing::AssertionResult sameArrays(const std::vector<Z>& src, const std::vector<Z>& actual,
                                    const std::vector<Z>& expected) {
    for (std::size_t i = 0; i < src.size(); ++i)
        if (!sameElement(actual[i], expected[i]))
            return testing::AssertionFailure()
                   << "element " << i << " of " << src.size() << ": " << patterns(src[i]) << " to "
                   << patterns(actual[i]) << " instead of " << patterns(expected[i]);
    return testing::AssertionSuccess();
}

template <class Z>
std::vector<Z> resultsOf(ComplexRoutine<Z> f, const std::vector<std::type_identity_t<Z>>& src) {
    std::vector<Z> dst(src.size());
    EXPECT_EQ(f(src.data(), dst.data(), static_cast<std::int32_t>(src.size())), oktStatusOk);
    return dst;
}
template <class Z>
Z resultOf(ComplexRoutine<Z> f, std::type_identity_t<Z> z) {
    return resultsOf<Z>(f, {z})[0];
}

// What the model gives for z, alone and at every place of an array; fillers on the main path.
template <class Z>
void expectModelAtEveryPlace(ComplexRoutine<Z> f, ComplexRoutine<Z> model, std::type_identity_t<Z> z) {
    std::vector<Z> src = {z};
    EXPECT_TRUE(sameArrays(src, resultsOf<Z>(f, src), resultsOf<Z>(model, src)));
    for (std::size_t at = 0; at < placesArrayLength; ++at) {
        src.assign(placesArrayLength, element<Z>(0.75, -1.4375));
        std::memcpy(&src[at], &z, sizeof z);
        EXPECT_TRUE(sameArrays(src, resultsOf<Z>(f, src), resultsOf<Z>(model, src)));
    }
}

// Calls check(z) for all z of which one part has a given magnitude or one of the two next to it on either side, and the
// other one a magnitude of `partners`; all signs.
template <class Z, class Check>
void aroundLimits(std::initializer_list<PartPattern<Z>> limits, std::initializer_list<double> partners,
                  const Check& check) {
    using Pattern = PartPattern<Z>;
    const int topBit = 8 * sizeof(Pattern) - 1;
    for (const Pattern limit : limits)
        for (int step = -2; step <= 2; ++step)
            for (const double partner : partners)
                for (unsigned signs = 0; signs < 4; ++signs)
                    for (const bool swapped : {false, true}) {
                        const auto magnitude = static_cast<Pattern>(limit + static_cast<Pattern>(step));
                        if (magnitude >> topBit != 0) continue;
                        const auto first = static_cast<Pattern>(magnitude | Pattern{signs & 1} << topBit);
                        const auto second = static_cast<Pattern>(asBits(static_cast<PartOf<Z>>(partner)) |
                                                                 Pattern{signs >> 1} << topBit);
                        Z z;
                        storeBits(&z.re, swapped ? second : first);
                        storeBits(&z.im, swapped ? first : second);
                        check(z);
                    }
}

// Elements for the comparison with a model: one or both parts special, or arbitrary patterns.
template <class Z>
Z unusualComplex(Random& random) {
    using R = PartOf<Z>;
    Z z;
    const auto part = [&](R* to, bool special) {
        storeBits(to, asBits(special ? specialElement<R>(random) : mixedValue<R>(random)));
    };
    const auto kind = random.below(4);
    part(&z.re, kind == 1 || kind == 3);
    part(&z.im, kind >= 2);
    return z;
}
template <class Z, int low, int high>
Z usualComplex(Random& random) {
    return {ofMagnitude<PartOf<Z>>(random, low, high), ofMagnitude<PartOf<Z>>(random, low, high)};
}

template <class Z>
std::uint32_t flagsOf(ComplexRoutine<Z> f, Z z, std::uint32_t control = defaultMxcsr) {
    Z result;
    return flagsRaised([&] { f(&z, &result, 1); }, control);
}

// Numbers apart by one in their order, or equal.
template <class R>
bool withinOne(R a, R b) {
    return asBits(a) == asBits(b) || asBits(a) - asBits(b) + 1 <= 2;
}

}  // namespace okt::test
