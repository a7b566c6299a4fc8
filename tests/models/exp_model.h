// Models of the exponential.
#pragma once

#include "explog/exp_tables.h"
#include "explog_support.h"
#include "tables/exp32_table.h"

#include <algorithm>

namespace okt::model {

namespace explog {

// Blocks of eight: where all eight elements lie in the main range, they take the main path; elements of any other block
// and behind the last whole one go one at a time, in order.
template <class T, class InMainRange, class MainPath, class Element>
OktStatus blocksOfEight(const T* src, T* dst, std::int32_t len, const InMainRange& inMainRange,
                        const MainPath& mainPath, const Element& element) {
    OktStatus status = oktStatusOk;
    std::int32_t at = 0;
    for (; len - at >= 8; at += 8) {
        const bool passes = std::all_of(src + at, src + at + 8, inMainRange);
        for (std::int32_t i = at; i < at + 8; ++i) dst[i] = passes ? mainPath(src[i]) : element(src[i], status);
    }
    for (; at < len; ++at) dst[at] = element(src[at], status);
    return status;
}

}  // namespace explog

namespace exp32 {

using namespace explog;

inline constexpr Real32 invLn2x128 = real32(0x4338AA3B);
inline constexpr Real32 shift32 = real32(0x4B300000);
inline constexpr Real32 ln2Over128Hi = real32(0x3BB18000);
inline constexpr Real32 ln2Over128Lo = real32(0xB5DE8083);
inline constexpr std::uint32_t boundLow32 = 0x42AEAC50;
inline constexpr std::uint32_t overflow32 = 0x42B17218;
inline constexpr std::uint32_t underflowZero32 = 0xC2CE8ED1;

// e^x before and apart from its scale.
struct Unscaled {
    Real32 value;
    std::uint32_t scale;  // pattern of 2^k
};

inline Unscaled unscaled(Real32 x) {
    const Real32 scaledX = x * invLn2x128;
    const Real32 t = scaledX + shift32;
    const Real32 m = t - shift32;
    const std::uint32_t j = asBits(t) & 0x7F;
    const std::uint32_t scale = ((asBits(t) >> 7) + 127) << 23;
    const Real32 r = (x - m * ln2Over128Hi) - m * ln2Over128Lo;
    const Real32 hi = tables::Exp32Table[2 * j];
    const Real32 lo = tables::Exp32Table[2 * j + 1];
    const Real32 p = (r * r) * 0.5F + (lo + r);
    return {p * hi + hi, scale};
}

inline Real32 mainPath(Real32 x) {
    const Unscaled y = unscaled(x);
    return y.value * fromBits(y.scale);
}

inline bool inMainRange(Real32 x) { return (asBits(x) & 0x7FFFFFFF) < boundLow32; }

// A subnormal result: e^x = 2^n 2^r in double precision, rounded once by the narrowing.
inline Real32 gradualUnderflow(Real32 x) {
    constexpr Real64 log2e = real64(0x3FF71547652B82FE);
    constexpr Real64 shift = real64(0x4338000000000000);
    constexpr Real64 a0 = real64(0x3FF00000002614FF);
    constexpr Real64 a1 = real64(0x3FE62E430C7E922C);
    constexpr Real64 a2 = real64(0x3FCEBFBDADCB0CA8);
    constexpr Real64 a3 = real64(0x3FAC6AED4B951D00);
    constexpr Real64 a4 = real64(0x3F83B2DBBC0F45AE);
    constexpr Real64 a5 = real64(0x3F55F456A8A729EC);
    constexpr Real64 a6 = real64(0x3F241D33371366F6);

    const Real64 v = static_cast<Real64>(x) * log2e;
    const Real64 t = v + shift;
    const Real64 minusN = shift - t;
    const Real64 r = v + minusN;
    const std::uint64_t biased = lowWord(t) + 0x3FFU;
    const Real64 scale = fromBits(biased << 52);
    const Real64 s = r * r;
    const Real64 even = ((a6 * s + a4) * s + a2) * s;
    const Real64 odd = ((a5 * s + a3) * s + a1) * r + a0;
    return static_cast<Real32>((even + odd) * scale);
}

inline Real32 element(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    const std::uint32_t a = b & 0x7FFFFFFF;
    const bool positive = b == a;

    if (a > 0x7F800000) return x + x;
    if (a == 0x7F800000) return positive ? x : 0.0F;
    if (a < boundLow32) return mainPath(x);
    if (positive && b >= overflow32) {
        status = oktStatusOverflow;
        return opaque(0x1p127F) * opaque(0x1p127F);
    }
    if (positive) {
        const Unscaled y = unscaled(x);
        if (y.scale <= 0x7F000000) return y.value * fromBits(y.scale);
        const Real32 half = y.value * 0x1p127F;
        return half * 2.0F;
    }
    status = oktStatusUnderflow;
    if (b >= underflowZero32) return opaque(0x1p-126F) * opaque(0x1p-126F);
    return gradualUnderflow(x);
}

}  // namespace exp32

inline OktStatus Exp_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return explog::blocksOfEight(src, dst, len, exp32::inMainRange, exp32::mainPath, exp32::element);
}

namespace exp64 {

using namespace explog;

inline constexpr Real64 invLn2x64 = real64(0x40571547652B82FE);
inline constexpr Real64 shift64 = real64(0x4338000000000000);
inline constexpr Real64 ln2Over64Hi = real64(0x3F862E42FEF00000);
inline constexpr Real64 ln2Over64Lo = real64(0x3D7473DE6AF278ED);
inline constexpr Real64 c2 = real64(0x3FDFFFFFFFFFD97C);
inline constexpr Real64 c3 = real64(0x3FC55555555542A1);
inline constexpr Real64 c4 = real64(0x3FA555574BC3A1BE);
inline constexpr Real64 c5 = real64(0x3F81111276409C2C);
inline constexpr std::uint32_t scaleBias = 0xFFC0;
inline constexpr std::uint64_t exponentMask = 0x7FF0000000000000;
inline constexpr std::uint32_t boundHigh64 = 0x4086232B;

struct Unscaled {
    Real64 value;
    Real64 t;  // the shifted quotient; its low bits hold n
};

inline Unscaled unscaled(Real64 x) {
    const Real64 scaledX = x * invLn2x64;
    const Real64 t = scaledX + shift64;
    const Real64 m = t - shift64;
    const Real64 r = (x - ln2Over64Hi * m) - ln2Over64Lo * m;
    const std::uint64_t j = ((asBits(t) << 4) & 0x3F0) / 16;
    const Real64 q = ((c5 * r + c4) * r + c3) * r + c2;
    const Real64 p = r + q * (r * r);
    const Real64 hi = tables::Exp64Table[2 * j];
    const Real64 lo = tables::Exp64Table[2 * j + 1];
    const Real64 u = (p * (hi + lo) + lo) + hi;
    return {u, t};
}

// The exponent field of 2^k after `biases` biases were added to n = 64k + j.
inline std::uint64_t exponentField(Real64 t, std::uint32_t biases) {
    const std::uint64_t low = lowWord(t) + biases * scaleBias;
    return (low << 46) & exponentMask;
}

inline Real64 mainPath(Real64 x) {
    const Unscaled y = unscaled(x);
    return y.value * fromBits(exponentField(y.t, 1));
}

inline bool inMainRange(Real64 x) { return highMagnitude(x) < boundHigh64; }

inline Real64 element(Real64 x, OktStatus& status) {
    const std::uint64_t magnitude = asBits(x) & 0x7FFFFFFFFFFFFFFF;
    if (magnitude > 0x7FF0000000000000) return fromBits(std::uint64_t{0xFFFFFFFFFFFFFFFF});
    if (magnitude == 0x7FF0000000000000) return magnitude == asBits(x) ? x : 0.0;
    if (x <= real64(0xC0874910D52D3052)) {
        status = oktStatusUnderflow;
        return 0.0;
    }
    if (x <= real64(0xC086232BDD7ABCD3)) {
        status = oktStatusUnderflow;
        const Unscaled y = unscaled(x);
        const std::uint64_t factor = exponentField(y.t, 2) - 0x0010000000000000;
        return (y.value * fromBits(factor)) * 0x1p-1022;
    }
    if (x >= real64(0x40862E42FEFA39F0)) {
        status = oktStatusOverflow;
        return real64(0x7FF0000000000000);
    }
    if (x >= real64(0x40862E37E7D8BA72)) {
        const Real64 half = unscaled(x).value * 0x1p1023;
        return half * 2.0;
    }
    return mainPath(x);
}

}  // namespace exp64

inline OktStatus Exp_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return explog::blocksOfEight(src, dst, len, exp64::inMainRange, exp64::mainPath, exp64::element);
}

}  // namespace okt::model
