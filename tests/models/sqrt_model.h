// Models of real Sqrt and InvSqrt: an approximate reciprocal root, refined by one series.
// They run under round to nearest with subnormals honoured.
#pragma once

#include "oktvm_types.h"
#include "tests/models/approximations.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"

#include <emmintrin.h>
#include <cstdint>

namespace okt::model {

namespace squareroot {

inline constexpr std::uint32_t splitMask32 = 0xFFFF8000;
inline constexpr std::uint64_t splitMask64 = 0xFFFFFFFF00000000;

// Positive, normal and finite.
inline bool inRange(Real32 x) {
    const auto bits = asBits(x);
    return bits >= 0x00800000 && bits <= 0x7F7FFFFF;
}
inline bool inRange(Real64 x) {
    const auto high = static_cast<std::uint32_t>(asBits(x) >> 32);
    return high >= 0x00100000 && high <= 0x7FEFFFFF;
}

inline bool isNaN(Real32 x) { return (asBits(x) & 0x7FFFFFFF) > 0x7F800000; }
inline bool isNaN(Real64 x) { return (asBits(x) & 0x7FFFFFFFFFFFFFFF) > 0x7FF0000000000000; }
inline bool isPlusInfinity(Real32 x) { return asBits(x) == 0x7F800000; }
inline bool isPlusInfinity(Real64 x) { return asBits(x) == 0x7FF0000000000000; }
inline bool isZero(Real32 x) { return (asBits(x) & 0x7FFFFFFF) == 0; }
inline bool isZero(Real64 x) { return (asBits(x) & 0x7FFFFFFFFFFFFFFF) == 0; }
inline bool isNegative(Real32 x) { return asBits(x) >> 31 != 0; }
inline bool isNegative(Real64 x) { return asBits(x) >> 63 != 0; }

// (1 + e)^(-1/2) - 1.
inline Real32 series32(Real32 e) {
    const Real32 A = fromBits(0xBEA00000U);  // -0.3125
    const Real32 B = fromBits(0x3EC00000U);  // 0.375
    const Real32 C = fromBits(0xBF000000U);  // -0.5
    return ((A * e + B) * e + C) * e;
}
inline Real64 series64(Real64 e) {
    const Real64 A = fromBits(std::uint64_t{0xBFCF800000000000});  // -0.24609375
    const Real64 B = fromBits(std::uint64_t{0x3FD1800000000000});  // 0.2734375
    const Real64 C = fromBits(std::uint64_t{0xBFD4000000000000});  // -0.3125
    const Real64 D = fromBits(std::uint64_t{0x3FD8000000000000});  // 0.375
    const Real64 E = fromBits(std::uint64_t{0xBFE0000000000000});  // -0.5
    return ((((A * e + B) * e + C) * e + D) * e + E) * e;
}

inline Real32 sqrtSteps32(Real32 x) {
    const std::uint32_t s = asBits(x) & 0x80000000;
    Real32 y = fromBits(asBits(approximateInverseRoot(x)) & splitMask32);
    if (x == 0.0F) y = 0.0F;
    const Real32 xh = fromBits(asBits(x) & splitMask32);
    const Real32 xl = x - xh;
    const Real32 g = xh * y;
    const Real32 q = y * y;
    const Real32 e = (xh * q - 1.0F) + (xl * q);
    const Real32 p = series32(e);
    const Real32 root = ((p * y) * x + xl * y) + g;
    return fromBits(asBits(root) | s);
}

// 1/sqrt(x) to twelve bits for a positive, normal x, with a low word of zero.
inline Real64 seed64(Real64 x) {
    const std::uint32_t top = static_cast<std::uint32_t>(asBits(x) >> 29) & 0x00FFFFFF;
    const Real32 f = fromBits((top ^ 0x00800000U) + 0x3F800000U);
    const Real32 r = approximateInverseRoot(f);
    const std::uint32_t xHigh = static_cast<std::uint32_t>(asBits(x) >> 32);
    const std::uint32_t yHigh = (asBits(r) >> 3) + 0x57F00000U - (((xHigh - 0x00100000U) & 0xFFE00000U) >> 1);
    return fromBits(std::uint64_t{yHigh} << 32);
}

struct Refined {
    Real64 y;
    Real64 p;
};

// Steps 1 to 5 of the Real64 square root, and those of the inverse root, which differ in a zero's xl alone.
inline Refined refine64(Real64 x) {
    // A high word of 0x00000000 or 0x80000000: among the elements that come here, the zeros alone.
    const bool zeroHigh = (asBits(x) >> 32 & 0x7FFFFFFF) == 0;
    const Real64 y = zeroHigh ? 0.0 : seed64(x);
    const Real64 xh = fromBits(asBits(x) & splitMask64);
    const Real64 xl = fromBits(asBits(x - xh) | (asBits(x) & 0x8000000000000000));
    const Real64 q = y * y;
    const Real64 e = (xh * q - 1.0) + (xl * q);
    return {y, series64(e)};
}

// Step 6, on an x that need not be the one that gave y and p.
inline Real64 rootOf64(Real64 x, Refined refined) {
    const Real64 y = refined.y;
    const Real64 p = refined.p;
    const Real64 xh = fromBits(asBits(x) & splitMask64);
    const Real64 xl = fromBits(asBits(x - xh) | (asBits(x) & 0x8000000000000000));
    return ((p * y) * x + xl * y) + xh * y;
}

inline Real32 sqrtElement(Real32 x, OktStatus& status) {
    const Real32 subnormalUp = fromBits(0x4C800000U);    // 2^26
    const Real32 subnormalDown = fromBits(0x39000000U);  // 2^-13
    if (inRange(x)) return sqrtSteps32(x) * 1.0F;
    if (isZero(x) || isPlusInfinity(x)) return x;
    if (isNaN(x)) return ordered::mul(x, 1.0F);
    if (isNegative(x)) {
        status = oktStatusDomain;
        return fromBits(0xFFC00000U);
    }
    return sqrtSteps32(x * subnormalUp) * subnormalDown;
}

inline Real64 sqrtElement(Real64 x, OktStatus& status) {
    const Real64 subnormalUp = fromBits(std::uint64_t{0x4350000000000000});    // 2^54
    const Real64 subnormalDown = fromBits(std::uint64_t{0x41A0000000000000});  // 2^27, as y is that much too small
    if (inRange(x)) return rootOf64(x, refine64(x)) * 1.0;
    if (isPlusInfinity(x) || isZero(x)) return x;
    if (isNaN(x)) return ordered::mul(x, 1.0);
    if (isNegative(x)) {
        status = oktStatusDomain;
        return fromBits(std::uint64_t{0xFFF8000000000000});
    }
    return rootOf64(x, refine64(x * subnormalUp)) * subnormalDown;
}

inline Real32 invSqrtSteps32(Real32 x) {
    const Real32 y = fromBits(asBits(approximateInverseRoot(x)) & splitMask32);
    const Real32 q = y * y;
    const Real32 e = x * q - 1.0F;
    const Real32 p = series32(e);
    return p * y + y;
}

// What every lane of a flagged block gets, an ordinary one too.
inline Real32 invSqrtFixed32(Real32 x) {
    if (x == 0.0F) return fromBits((asBits(x) & 0x80000000U) | 0x7F800000U);
    if (isPlusInfinity(x)) return 0.0F;
    const Real64 wide = x;
    const __m128d lane = _mm_set_sd(wide);
    const Real64 t = ordered::div(_mm_cvtsd_f64(_mm_sqrt_sd(lane, lane)), wide);
    return static_cast<Real32>(t);
}

// A block of four, or a tail element as a block of one: within it all zeros store their warning before all negatives.
inline void invSqrtBlock32(const Real32* src, Real32* dst, int lanes, OktStatus& status) {
    Real32 x[4];
    bool flagged = false;
    for (int lane = 0; lane < lanes; ++lane) {
        x[lane] = src[lane];
        flagged = flagged || !inRange(x[lane]);
    }
    for (int lane = 0; lane < lanes; ++lane) dst[lane] = flagged ? invSqrtFixed32(x[lane]) : invSqrtSteps32(x[lane]);
    for (int lane = 0; lane < lanes; ++lane) {
        if (x[lane] == 0.0F) status = oktStatusSingularity;
    }
    for (int lane = 0; lane < lanes; ++lane) {
        if (x[lane] < 0.0F) status = oktStatusDomain;
    }
}

inline Real64 invSqrtSteps64(Real64 x) {
    const Refined refined = refine64(x);
    return refined.p * refined.y + refined.y;
}

inline Real64 invSqrtElement(Real64 x, OktStatus& status) {
    const Real64 subnormalUp = fromBits(std::uint64_t{0x4350000000000000});    // 2^54
    const Real64 subnormalDown = fromBits(std::uint64_t{0x41A0000000000000});  // 2^27
    if (inRange(x)) return invSqrtSteps64(x) * 1.0;
    if (isPlusInfinity(x)) return 0.0;
    if (isNaN(x)) return ordered::mul(x, 1.0);
    if (isZero(x)) {
        status = oktStatusSingularity;
        return fromBits((asBits(x) & 0x8000000000000000) | 0x7FF0000000000000);
    }
    if (isNegative(x)) {
        status = oktStatusDomain;
        return fromBits(std::uint64_t{0xFFF8000000000000});
    }
    return invSqrtSteps64(x * subnormalUp) * subnormalDown;
}

}  // namespace squareroot

// Blocks of four, redone by element when a lane is neither a zero nor in range. A zero in a block takes the main
// steps, one in the tail the element routine.
[[gnu::noinline]] inline OktStatus Sqrt_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t blocks = len - len % 4;
    for (std::int32_t i = 0; i < blocks; i += 4) {
        bool flagged = false;
        for (int lane = 0; lane < 4; ++lane) {
            const Real32 x = src[i + lane];
            flagged = flagged || !(squareroot::inRange(x) || squareroot::isZero(x));
        }
        for (int lane = 0; lane < 4; ++lane) {
            const Real32 x = src[i + lane];
            dst[i + lane] = flagged ? squareroot::sqrtElement(x, status) : squareroot::sqrtSteps32(x);
        }
    }
    for (std::int32_t i = blocks; i < len; ++i) dst[i] = squareroot::sqrtElement(src[i], status);
    return status;
}

[[gnu::noinline]] inline OktStatus Sqrt_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t blocks = len - len % 2;
    for (std::int32_t i = 0; i < blocks; i += 2) {
        bool flagged = false;
        for (int lane = 0; lane < 2; ++lane) {
            const Real64 x = src[i + lane];
            flagged = flagged || !(squareroot::inRange(x) || x == 0.0);
        }
        for (int lane = 0; lane < 2; ++lane) {
            const Real64 x = src[i + lane];
            dst[i + lane] =
                flagged ? squareroot::sqrtElement(x, status) : squareroot::rootOf64(x, squareroot::refine64(x));
        }
    }
    for (std::int32_t i = blocks; i < len; ++i) dst[i] = squareroot::sqrtElement(src[i], status);
    return status;
}

[[gnu::noinline]] inline OktStatus InvSqrt_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t blocks = len - len % 4;
    for (std::int32_t i = 0; i < blocks; i += 4) squareroot::invSqrtBlock32(src + i, dst + i, 4, status);
    for (std::int32_t i = blocks; i < len; ++i) squareroot::invSqrtBlock32(src + i, dst + i, 1, status);
    return status;
}

// Whether a pair is redone makes no difference here: an element in range takes the same steps either way.
[[gnu::noinline]] inline OktStatus InvSqrt_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = squareroot::invSqrtElement(src[i], status);
    return status;
}

}  // namespace okt::model
