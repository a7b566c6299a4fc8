// Models of 2 to the power x: one element after the other.
#pragma once

#include "bits.h"
#include "oktvm.h"

namespace okt::model {

namespace exp2 {

// 2^r for |r| <= 1/2.
inline Real64 fraction(Real64 r) {
    constexpr Real64 lastTermFirst[] = {0x1.816193166d0f9p-40, 0x1.c3bd650fc2986p-36,
                                        0x1.e8cac7351bb25p-32, 0x1.e4cf5158b8ecap-28,
                                        0x1.b5253d395e7c4p-24, 0x1.62c0223a5c824p-20,
                                        0x1.ffcbfc588b0c7p-17, 0x1.430912f86c787p-13,
                                        0x1.5d87fe78a6731p-10, 0x1.3b2ab6fba4e77p-7,
                                        0x1.c6b08d704a0c0p-5,  0x1.ebfbdff82c58fp-3,
                                        0x1.62e42fefa39efp-1,  1.0};
    Real64 sum = 0;
    for (const Real64 term : lastTermFirst) sum = sum * r + term;
    return sum;
}

inline Real64 wholePower(std::int32_t n) { return fromBits(static_cast<std::uint64_t>(1023 + n) << 52); }

inline Real64 power(Real64 x) {
    const Real64 rounded = (x + 0x1.8p52) - 0x1.8p52;
    const auto n = static_cast<std::int32_t>(rounded);
    const Real64 scaled = fraction(x - rounded) * wholePower(n / 2);
    return scaled * wholePower(n - n / 2);
}

struct Thresholds {
    Real64 overflow, normal, zero;
};

template <class T>
OktStatus array(const T* src, T* dst, std::int32_t len, T infinity, Thresholds at) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) {
        const T x = src[i];
        const auto pattern = asBits(x), magnitude = pattern << 1;
        if (magnitude > asBits(infinity) << 1) {
            dst[i] = x + x;
        } else if (magnitude == asBits(infinity) << 1) {
            dst[i] = pattern == asBits(infinity) ? infinity : T{0};
        } else if (x >= at.overflow) {
            status = oktStatusOverflow;
            dst[i] = infinity;
        } else {
            if (x < at.normal) status = oktStatusUnderflow;
            dst[i] = x < at.zero ? T{0} : static_cast<T>(power(x));
        }
    }
    return status;
}

}  // namespace exp2

inline OktStatus Exp2_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return exp2::array(src, dst, len, fromBits(std::uint32_t{0x7F800000}), {128, -126, -151});
}
inline OktStatus Exp2_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return exp2::array(src, dst, len, fromBits(std::uint64_t{0x7FF0000000000000}), {1024, -1022, -1076});
}

}  // namespace okt::model
