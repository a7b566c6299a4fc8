// Models of Hypot. They run under the caller's MXCSR.
#pragma once

#include "oktvm_types.h"
#include "tests/models/bits.h"
#include "tests/models/modulus_classes.h"
#include "tests/models/multiplicative_root.h"

#include <cstdint>

namespace okt::model {

namespace hypotenuse {

inline Real32 element(Real32 x, Real32 y) {
    Real32 special;
    if (modulus::special(x, y, special)) return special;
    if (x == 0.0F && y == 0.0F) return 0.0F;

    const Real64 wideX = x;
    const Real64 wideY = y;
    Real64 s = wideX * wideX + wideY * wideY;
    int k = 0;
    if ((asBits(static_cast<Real32>(s)) & 0x7F800000) == 0) {
        s = s * fromBits(std::uint64_t{0x4C70000000000000});  // 2^200
        k = 100;
    }
    const multiplicative::Root root = multiplicative::root(s);
    const Real64 scale = multiplicative::powerOfTwo(root.half - k);
    return static_cast<Real32>(((root.e2 * root.h) + root.g) * scale);
}

// With the larger biased exponent in 500 to 511 nothing is scaled although s may be subnormal, and an infinite s
// gives 2^512: both are the function's settled behaviour.
inline Real64 element(Real64 x, Real64 y) {
    Real64 special;
    if (modulus::special(x, y, special)) return special;
    if (x == 0.0 && y == 0.0) return 0.0;

    Real64 s = x * x + y * y;
    int k = 0;
    const auto biasedExponent = [](Real64 v) { return asBits(v) >> 52 & 0x7FF; };
    if (biasedExponent(x) < 500 && biasedExponent(y) < 500) {
        const Real64 smallScale = fromBits(std::uint64_t{0x7E70000000000000});  // 2^1000
        const Real64 scaledX = x * smallScale;
        const Real64 scaledY = y * smallScale;
        s = scaledX * scaledX + scaledY * scaledY;
        k = 1000;
    }
    const multiplicative::Root root = multiplicative::root(s);
    const Real64 s1 = multiplicative::powerOfTwo(root.half);
    const Real64 s2 = multiplicative::powerOfTwo(-k);
    return (((root.e2 * root.h) + root.g) * s1) * s2;
}

}  // namespace hypotenuse

[[gnu::noinline]] inline OktStatus Hypot_32f(const Real32* src1, const Real32* src2, Real32* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = hypotenuse::element(src1[i], src2[i]);
    return oktStatusOk;
}
[[gnu::noinline]] inline OktStatus Hypot_64f(const Real64* src1, const Real64* src2, Real64* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = hypotenuse::element(src1[i], src2[i]);
    return oktStatusOk;
}

}  // namespace okt::model
