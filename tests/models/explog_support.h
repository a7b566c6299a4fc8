// What the models of the exponentials, logarithms and powers share: words of a pattern, arithmetic that is done for
// its flags, and literals of patterns.
#pragma once

#include "bits.h"

namespace okt::model::explog {

constexpr Real32 real32(std::uint32_t pattern) { return fromBits(pattern); }

constexpr Real64 real64(std::uint64_t pattern) { return fromBits(pattern); }

constexpr std::uint32_t highWord(Real64 x) { return static_cast<std::uint32_t>(asBits(x) >> 32); }

constexpr std::uint32_t lowWord(Real64 x) { return static_cast<std::uint32_t>(asBits(x)); }

constexpr std::uint32_t highMagnitude(Real64 x) { return highWord(x) & 0x7FFFFFFFU; }

constexpr std::int32_t asSigned(std::uint32_t word) { return static_cast<std::int32_t>(word); }

// x with the lowest `count` bits of its pattern cleared.
constexpr Real64 cleared(Real64 x, int count) { return fromBits(asBits(x) >> count << count); }

// 2^k for a k whose biased exponent lies in the field.
constexpr Real64 powerOfTwo(std::int32_t k) { return fromBits(static_cast<std::uint64_t>(k + 1023) << 52); }

// A value the compiler cannot see through: what is computed from it is computed at run time, with its flags.
template <class T>
T opaque(T value) {
    volatile T cell = value;
    return cell;
}

// Does the arithmetic for its flags alone.
template <class T>
void dropped(T value) {
    volatile T cell = value;
    static_cast<void>(cell);
}

// The exception that goes with a warning.
inline void raiseFlag(OktStatus warning) {
    switch (warning) {
        case oktStatusOverflow: dropped(opaque(real64(0x7FEFFFFFFFFFFFFF)) * opaque(real64(0x7FEFFFFFFFFFFFFF))); break;
        case oktStatusUnderflow:
            dropped(opaque(real64(0x0010000000000001)) * opaque(real64(0x0010000000000001)));
            break;
        case oktStatusSingularity: dropped(opaque(1.0) / opaque(0.0)); break;
        case oktStatusDomain: dropped(opaque(0.0) / opaque(0.0)); break;
        default: break;
    }
}

}  // namespace okt::model::explog
