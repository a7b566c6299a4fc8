// Approximations of 1/x and 1/sqrt(x) that lie anywhere within the relative error that rcpps and rsqrtps guarantee: at
// an end of the interval of numbers within 1.5·2^-12, or somewhere in it. They depend on the operand and the salt
// alone, have 24 significant bits, and treat particular operands as the instructions do. For builds that test what
// holds for every processor; the interval's ends are had by integer arithmetic, without regard to speed.
#pragma once

#include "lanes/lanes.h"

namespace okt::moved_seeds {

// What the choice depends on besides the operand: the lower end, the upper end, so many steps above the lower end (or
// the upper end, if that comes before), and with every other salt a mixture. `shortSeeds` may be added: then the choice
// is among the numbers of 13 significant bits, as the processors and the table give them.
inline constexpr std::uint32_t lowestSeeds = 0, highestSeeds = 1, stepsAbove = 0x80000000, shortSeeds = 0x40000000;
inline std::uint32_t salt = 2;

struct Interval {
    std::uint32_t first, last;  // patterns
};

__extension__ typedef unsigned __int128 Unsigned128;

// The error's bound as a fraction of 2^13.
inline constexpr std::uint64_t boundIn8192 = 3;

// Numbers R·2^-25 from about 1/2 to about 1: how far apart those of 24 significant bits are, and the pattern of one
// times 2^exponent.
inline int stepsOf(std::uint64_t R) { return R >> 25 != 0 ? 2 : R >> 24 != 0 ? 1 : 0; }
inline std::uint32_t patternOf(std::uint64_t R, int exponent) {
    const int steps = stepsOf(R);
    const auto fraction = static_cast<std::uint32_t>(R >> steps & 0x7FFFFF);
    return (static_cast<std::uint32_t>(125 + exponent + steps) << 23) + fraction;
}
inline Interval intervalOf(std::uint64_t first, std::uint64_t last, int exponent) {
    const std::uint64_t below = (std::uint64_t{1} << stepsOf(first)) - 1;
    return {patternOf((first + below) & ~below, exponent), patternOf(last, exponent)};
}

// x normal; 1/x = 1/m · 2^-e with 1/m in (1/2, 1].
inline Interval recipInterval(std::uint32_t x) {
    const std::uint64_t m = 0x800000 | (x & 0x7FFFFF);  // scaled by 2^23
    const std::uint64_t low = (8192 - boundIn8192) << 35, high = (8192 + boundIn8192) << 35;
    return intervalOf((low + m - 1) / m, high / m, 127 - static_cast<int>(x >> 23));
}

// The largest R with R²·m < bound.
inline std::uint64_t rootBelow(std::uint64_t m, Unsigned128 bound) {
    std::uint64_t R = 0;
    for (int bit = 25; bit >= 0; --bit) {
        const std::uint64_t next = R | std::uint64_t{1} << bit;
        if (Unsigned128{next} * next * m < bound) R = next;
    }
    return R;
}

// x positive and normal; 1/sqrt(x) = 1/sqrt(m) · 2^-(e/2) with m in [1, 4), e even.
inline Interval rsqrtInterval(std::uint32_t x) {
    const int exponent = static_cast<int>(x >> 23) - 127, odd = exponent & 1;
    const std::uint64_t m = std::uint64_t{0x800000 | (x & 0x7FFFFF)} << odd;  // scaled by 2^23
    const auto squared = [](std::uint64_t v) { return Unsigned128{v} * v << 47; };
    const std::uint64_t low = rootBelow(m, squared(8192 - boundIn8192)) + 1;
    const std::uint64_t high = rootBelow(m, squared(8192 + boundIn8192) + 1);
    return intervalOf(low, high, -(exponent - odd) / 2);
}

inline std::uint64_t mixed(std::uint64_t v) {
    v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9;
    v = (v ^ (v >> 27)) * 0x94D049BB133111EB;
    return v ^ (v >> 31);
}

inline std::uint32_t chosen(Interval interval, std::uint32_t x, std::uint32_t operation) {
    const std::uint32_t place = salt & ~shortSeeds, unit = salt & shortSeeds ? 1 << 11 : 1;
    const std::uint32_t first = (interval.first + (unit - 1)) & ~(unit - 1), last = interval.last & ~(unit - 1);
    if (place == lowestSeeds) return first;
    if (place == highestSeeds) return last;
    const std::uint32_t steps = (last - first) / unit;
    if (place >= stepsAbove) return place - stepsAbove < steps ? first + (place - stepsAbove) * unit : last;
    const std::uint64_t random = mixed(mixed(std::uint64_t{salt} << 32 | x) + operation);
    switch (random & 3) {
        case 0: return first;
        case 1: return last;
        default: return first + static_cast<std::uint32_t>((random >> 32) % (steps + 1)) * unit;
    }
}

// Any operand, by its pattern.
inline std::uint32_t recipPattern(std::uint32_t x) {
    const std::uint32_t sign = x & 0x80000000, magnitude = x ^ sign;
    if (magnitude > 0x7F800000) return x | 0x00400000;
    if (magnitude < 0x00800000) return sign | 0x7F800000;
    if (magnitude >= 0x7E800000) return sign;  // of an infinity, or it would be subnormal
    const std::uint32_t approximation = chosen(recipInterval(magnitude), magnitude, 1);
    return sign | (approximation < 0x00800000 ? 0 : approximation);
}
inline std::uint32_t rsqrtPattern(std::uint32_t x) {
    const std::uint32_t sign = x & 0x80000000, magnitude = x ^ sign;
    if (magnitude > 0x7F800000) return x | 0x00400000;
    if (magnitude < 0x00800000) return sign | 0x7F800000;
    if (sign != 0) return 0xFFC00000;
    if (magnitude == 0x7F800000) return 0;
    return chosen(rsqrtInterval(magnitude), magnitude, 2);
}

template <int N>
inline F32<N> laneByLane(F32<N> x, std::uint32_t (*approximation)(std::uint32_t)) {
    alignas(16) std::uint32_t lane[N];
    asBits(x).store(lane);
    for (std::uint32_t& operand : lane) operand = approximation(operand);
    return asReal(U32<N>::load(lane));
}

template <int N>
inline F32<N> recip(F32<N> x) {
    return laneByLane(x, recipPattern);
}
template <int N>
inline F32<N> rsqrt(F32<N> x) {
    return laneByLane(x, rsqrtPattern);
}
template <int N>
inline F32<N> recipOfNormal(F32<N> x) {
    return recip(x);
}
template <int N>
inline F32<N> rsqrtOfNormal(F32<N> x) {
    return rsqrt(x);
}

}  // namespace okt::moved_seeds
