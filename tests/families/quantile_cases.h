// Tests that the normal quantile and the inverse of erfc share: functions on 0 to `end` that are odd about its middle.
#pragma once

#include "tests/models/quantile_model.h"

#include "support/flags.h"
#include "support/model_check.h"
#include "support/thresholds.h"

#include <cmath>
#include <limits>

namespace okt::test {

template <class T>
struct QuantileCase {
    const char* name;
    UnaryRoutine<T> f, model;
    T end;
};

template <class T>
T ulpOf(T x) {
    const T magnitude = std::abs(x);
    return std::nextafter(magnitude, std::numeric_limits<T>::infinity()) - magnitude;
}

namespace quantile {

// The domain's elements: of all sizes, close to the end, close to the middle; for an end of 1, twice that for 2.
template <class T>
T inside(Random& random) {
    constexpr int least = sizeof(T) == 4 ? -149 : -1074, ulp = sizeof(T) == 4 ? -24 : -53;
    switch (random.below(6)) {
        case 0: return static_cast<T>(std::ldexp(random.between(1, 2), least + static_cast<int>(random.below(-least))));
        case 1: return static_cast<T>(1 - std::ldexp(random.between(1, 2), ulp + static_cast<int>(random.below(-ulp))));
        case 2: return static_cast<T>(0.5 + std::abs(ofMagnitude<T>(random, ulp, -3)));
        case 3: return static_cast<T>(0.5 - std::abs(ofMagnitude<T>(random, ulp - 1, -3)));
        default: return static_cast<T>(random.between(0.0625, 0.9375));
    }
}
template <class T>
T middle(Random& random) {
    return static_cast<T>(random.unit());
}
template <class T>
T lowerTail(Random& random) {
    constexpr int least = sizeof(T) == 4 ? -126 : -1022;
    return static_cast<T>(std::ldexp(random.between(1, 2), least + static_cast<int>(random.below(-least - 3))));
}
template <class T>
T outside(Random& random) {
    switch (random.below(5)) {
        case 0: return static_cast<T>(random.between(-2, 3));
        case 1: return std::bit_cast<T>(static_cast<PatternOf<T>>(random.bits()));
        case 2: return T(random.below(7)) / 2 - 1;
        default: return specialElement<T>(random);
    }
}
template <class T, T (*one)(Random&)>
T twice(Random& random) {
    return one(random) * 2;
}

template <class T>
std::vector<T> mixture(T end, std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<T> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        const T value = i % 29 == 0 ? outside<T>(random) : i % 5 == 0 ? lowerTail<T>(random) : inside<T>(random);
        storeBits(&values[i], i % 29 == 0 ? loadBits(&value) : asBits(static_cast<T>(value * end)));
    }
    return values;
}

}  // namespace quantile

template <class T>
void expectQuantileModel(const QuantileCase<T>& c) {
    using namespace quantile;
    const Filling<T> ofOne[] = {{inside<T>, outside<T>}, {middle<T>, middle<T>}, {lowerTail<T>, inside<T>}};
    const Filling<T> ofTwo[] = {{twice<T, inside<T>>, outside<T>},
                                {twice<T, middle<T>>, twice<T, middle<T>>},
                                {twice<T, lowerTail<T>>, twice<T, inside<T>>}};
    for (const Filling<T>& filling : c.end == 1 ? ofOne : ofTwo) expectModel<T, T>(c.name, c.model, filling);
}

// The upper half is the mirror image of the lower one where the difference from the end is exact.
template <class T>
void expectOddAboutTheCentre(const QuantileCase<T>& c) {
    Random random(5);
    const Real64 last = sizeof(T) == 4 ? c.end - 0.01 : c.end;
    for (int i = 0; i < 20000; ++i) {
        const T upper = static_cast<T>(random.between(c.end / 2, last));
        EXPECT_EQ(alone(c.f, upper).value, -alone(c.f, static_cast<T>(c.end - upper)).value) << upper;
    }
}

template <class T>
void expectQuantileFlags(const QuantileCase<T>& c) {
    const T centre = c.end / 2;
    EXPECT_EQ(flagsAlone(c.f, T{0}), flagDivideByZero);
    EXPECT_EQ(flagsAlone(c.f, -T{0}), flagDivideByZero);
    EXPECT_EQ(flagsAlone(c.f, c.end), flagDivideByZero);
    EXPECT_EQ(flagsAlone(c.f, T{3}), flagInvalid);
    EXPECT_EQ(flagsAlone(c.f, -T{1}), flagInvalid);
    EXPECT_EQ(flagsAlone(c.f, std::numeric_limits<T>::infinity()), flagInvalid);
    EXPECT_EQ(flagsAlone(c.f, std::numeric_limits<T>::quiet_NaN()), 0u);
    EXPECT_EQ(flagsAlone(c.f, centre), 0u);
    EXPECT_EQ(flagsAlone(c.f, static_cast<T>(centre / 2)), flagInexact);
    EXPECT_EQ(flagsAlone(c.f, std::numeric_limits<T>::min()), flagInexact);
    // The middle is exact in any company of its like.
    for (std::size_t count = 1; count < 40; ++count) {
        const std::vector<T> src(count, centre);
        EXPECT_EQ(flagsRaised([&] { EXPECT_EQ(statusOf<T>(c.f, src), oktStatusOk); }), 0u) << count;
    }
    expectModelFlags<T>(c.f, c.model);
}

// The frame leaves the caller's MXCSR in force. On Real32 every operation is settled. On Real64 the pairs are no longer
// exact under another rounding, so that results may move in the last places; but an element's result stays the same
// whether it is worked alone or in company.
template <class T>
void expectQuantileUnderEveryMxcsr(const QuantileCase<T>& c) {
    constexpr std::size_t count = 900;
    const std::vector<T> src = quantile::mixture<T>(c.end, count, 12);
    std::vector<T> dst(count), expected(count);
    underEveryMxcsr([&] {
        EXPECT_EQ(c.f(src.data(), dst.data(), static_cast<std::int32_t>(count)),
                  c.model(src.data(), expected.data(), static_cast<std::int32_t>(count)));
        for (std::size_t i = 0; i < count; ++i) {
            T single;
            c.f(&src[i], &single, 1);
            EXPECT_TRUE(sameBits(dst[i], asBits(single))) << std::hex << asBits(src[i]);
            if (sizeof(T) == 4 || !std::isfinite(expected[i]))
                EXPECT_TRUE(sameBits(dst[i], asBits(expected[i]))) << std::hex << asBits(src[i]);
            else
                EXPECT_LE(std::abs(dst[i] - expected[i]), 2 * ulpOf(expected[i])) << std::hex << asBits(src[i]);
        }
    });
}

}  // namespace okt::test
