// Models of Ceil, Floor, Trunc, Round, Rint, NearbyInt and Modf. They run under the caller's MXCSR.
//
// k is the unbiased exponent of an element; the mask for k keeps sign, exponent and the integer bits of the
// significand. The functions are kept out of line, so that nothing of them moves across a change of MXCSR.
#pragma once

#include "oktvm_types.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"

namespace okt::model {

namespace rounding {

inline constexpr std::uint32_t sign32 = 0x80000000;
inline constexpr std::uint64_t sign64 = 0x8000000000000000;

inline bool negative(Real32 x) { return (asBits(x) & sign32) != 0; }
inline bool negative(Real64 x) { return (asBits(x) & sign64) != 0; }

// The constants with a value for either sign of the element.
template <class T>
T ceilSmall(T x) {
    return negative(x) ? T(-0.0) : T(1.0);
}
template <class T>
T floorSmall(T x) {
    return negative(x) ? T(-1.0) : T(0.0);
}
template <class T>
T signedZero(T x) {
    return negative(x) ? T(-0.0) : T(0.0);
}
template <class T>
T signedOne(T x) {
    return negative(x) ? T(-1.0) : T(1.0);
}

// All bits from bit 23 - k upward.
inline std::uint32_t mask32(std::uint32_t k) { return 0xFFFFFFFFU << (23 - k); }

// The same by halves: up to k = 20 the high half is cut and the low half cleared, from 21 on the low half is cut.
inline std::uint64_t mask64(std::uint32_t k) {
    std::uint32_t high = 0xFFFFFFFF;
    std::uint32_t low = 0;
    if (k <= 20) {
        high = 0xFFFFFFFFU << (20 - k);
    } else {
        low = 0xFFFFFFFFU << (52 - k);
    }
    return std::uint64_t{high} << 32 | low;
}

// What 1.0 is taken from the exponent: below the limit the element lies in [1, 2^23) or [1, 2^52), and below
// 1.0 the difference is negative as a signed number.
inline std::uint32_t aboveOne(Real32 x) { return (asBits(x) & ~sign32) - 0x3F800000U; }
inline std::uint32_t aboveOne(Real64 x) {
    return static_cast<std::uint32_t>((asBits(x) & ~sign64) >> 32) - 0x3FF00000U;
}
inline constexpr std::uint32_t limit32 = 0x0B800000;
inline constexpr std::uint32_t limit64 = 0x3400000;

inline bool belowOne(std::uint32_t u) { return static_cast<std::int32_t>(u) < 0; }

// A signalling NaN comes out quiet; everything else is unchanged.
inline Real64 timesOne(Real64 x) { return ordered::mul(x, 1.0); }

enum class Towards { plusInfinity, minusInfinity };

inline Real32 ceilFloor(Real32 x, Towards direction) {
    const bool ceil = direction == Towards::plusInfinity;
    const std::uint32_t e = (asBits(x) & ~sign32) >> 23;
    if (e >= 150) return x;
    if (e == 149) {
        if ((asBits(x) & 1) == 0) return x;
        return ceil ? ordered::add(x, 0.5F) : ordered::sub(x, 0.5F);
    }
    if (e >= 127) {
        const Real32 shift = 12582912.0F;  // 1.5 * 2^23
        const Real32 t = ordered::sub(ordered::add(x, shift), shift);
        if (ceil) return x > t ? ordered::add(t, 1.0F) : t;
        return t > x ? ordered::sub(t, 1.0F) : t;
    }
    if ((asBits(x) & ~sign32) == 0) return x;
    return ceil ? ceilSmall(x) : floorSmall(x);
}

inline Real64 ceilFloor(Real64 x, Towards direction) {
    const bool ceil = direction == Towards::plusInfinity;
    const std::uint32_t u = aboveOne(x);
    if (u < limit64) {
        const std::uint32_t k = u >> 20;
        std::uint64_t kept = asBits(x) & mask64(k);
        const std::uint64_t f = asBits(x) & ~mask64(k);
        if (f != 0 && negative(x) != ceil) kept += std::uint64_t{1} << (52 - k);  // carries into the exponent
        return fromBits(kept);
    }
    if (belowOne(u)) {
        if ((asBits(x) & ~sign64) == 0) return x;
        return ceil ? ceilSmall(x) : floorSmall(x);
    }
    if (u < 0x40000000) return x;
    return timesOne(x);
}

inline Real32 trunc(Real32 x) {
    const std::uint32_t u = aboveOne(x);
    if (u < limit32) return fromBits(asBits(x) & mask32(u >> 23));
    if (belowOne(u)) return signedZero(x);
    return x;
}

inline Real64 trunc(Real64 x) {
    const std::uint32_t u = aboveOne(x);
    if (u < limit64) return fromBits(asBits(x) & mask64(u >> 20));
    if (belowOne(u)) return signedZero(x);
    return timesOne(x);
}

inline Real32 round(Real32 x) {
    const std::uint32_t u = aboveOne(x);
    if (u < limit32) {
        const std::uint32_t k = u >> 23;
        const Real32 t = fromBits(asBits(x) & mask32(k));
        const bool firstFractionBit = (asBits(x) >> (22 - k) & 1) != 0;
        return firstFractionBit ? ordered::add(t, signedOne(x)) : t;
    }
    if (!belowOne(u)) return x;
    const bool halfOrMore = static_cast<std::int32_t>(u) >= static_cast<std::int32_t>(0xFF800000);
    return halfOrMore ? signedOne(x) : signedZero(x);
}

inline Real64 round(Real64 x) {
    const std::uint32_t u = aboveOne(x);
    if (u < limit64) {
        const std::uint32_t k = u >> 20;
        const Real64 t = fromBits(asBits(x) & mask64(k));
        const bool firstFractionBit = (asBits(x) >> (51 - k) & 1) != 0;
        return firstFractionBit ? ordered::add(t, signedOne(x)) : t;
    }
    if (!belowOne(u)) return timesOne(x);
    const bool halfOrMore = static_cast<std::int32_t>(u) >= static_cast<std::int32_t>(0xFFF00000);
    return halfOrMore ? signedOne(x) : signedZero(x);
}

// The rounding mode in force, found by arithmetic: 0 to nearest, 1 down, 2 up, 3 towards zero.
inline int probeMode() {
    const Real64 B = fromBits(std::uint64_t{0x4330000000000000});  // 2^52
    const Real64 p = ordered::sub(ordered::add(1.25, B), B);
    const Real64 q = ordered::add(ordered::sub(-0.5, B), B);
    const Real64 r = ordered::add(ordered::sub(-0.75, B), B);
    return -static_cast<std::int32_t>(ordered::add(ordered::add(p, q), r)) & 3;
}

template <class T, class Bits>
T rintElement(T x, int mode, int fractionBits, std::uint32_t bias, Bits mask) {
    // Called with |x| of 1 or more and a fraction: the mask is that of x.
    const Bits pattern = asBits(x);
    const T t = fromBits(pattern & mask);
    const Bits fraction = pattern & ~mask;
    const std::uint32_t e = static_cast<std::uint32_t>(pattern << 1 >> (fractionBits + 1));
    const std::uint32_t k = e - bias;
    if (mode == 3) return t;
    if (mode == 1) return !negative(t) || fraction == 0 ? t : ordered::sub(t, T(1.0));
    if (mode == 2) return negative(t) || fraction == 0 ? t : ordered::add(t, T(1.0));
    const Bits first = Bits{1} << (static_cast<std::uint32_t>(fractionBits) - 1 - k);
    if ((fraction & first) == 0) return t;
    if ((fraction & ~first) != 0) return ordered::add(t, signedOne(x));
    const bool lowestIntegerBit = (pattern & first << 1) != 0;
    return lowestIntegerBit ? ordered::add(t, signedOne(x)) : t;
}

template <class T>
T rintBelowOne(T x, int mode, bool zero, bool aboveHalf) {
    if (mode == 3) return signedZero(x);
    if (mode == 1) return zero ? x : floorSmall(x);
    if (mode == 2) return zero ? x : ceilSmall(x);
    return aboveHalf ? signedOne(x) : signedZero(x);
}

inline Real32 rint(Real32 x, int mode) {
    const std::uint32_t e = (asBits(x) & ~sign32) >> 23;
    const std::uint32_t significand = asBits(x) & 0x007FFFFF;
    if (e >= 150) return x;
    if (e >= 127) return rintElement(x, mode, 23, 127, mask32(e - 127));
    return rintBelowOne(x, mode, e == 0 && significand == 0, e == 126 && significand != 0);
}

inline Real64 rint(Real64 x, int mode) {
    const std::uint32_t e = static_cast<std::uint32_t>((asBits(x) & ~sign64) >> 52);
    const std::uint64_t significand = asBits(x) & 0x000FFFFFFFFFFFFF;
    if (e >= 1075) return timesOne(x);
    if (e >= 1023) return rintElement(x, mode, 52, 1023, mask64(e - 1023));
    return rintBelowOne(x, mode, e == 0 && significand == 0, e == 1022 && significand != 0);
}

template <class T, class Function>
OktStatus each(const T* src, T* dst, std::int32_t len, Function function) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = function(src[i]);
    return oktStatusOk;
}

// The integer part is stored first and read back; x itself is read once, so that dst1 may be the source.
template <class T>
void modfElement(T x, T* dst1, T* dst2, bool hasInteger, auto mask, auto magnitude, auto infinity, auto one) {
    if (hasInteger) {
        *dst1 = fromBits(asBits(x) & mask);
        const bool noFraction = (asBits(x) & ~mask) == 0;
        *dst2 = noFraction ? signedZero(x) : ordered::sub(x, *dst1);
    } else if (magnitude > infinity) {
        const T quiet = ordered::add(x, x);
        *dst1 = quiet;
        *dst2 = quiet;
    } else if (magnitude > one) {
        *dst1 = x;
        *dst2 = signedZero(x);
    } else {
        *dst1 = signedZero(x);
        *dst2 = x;
    }
}

}  // namespace rounding

[[gnu::noinline]] inline OktStatus Ceil_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return rounding::each(src, dst, len,
                          [](Real32 x) { return rounding::ceilFloor(x, rounding::Towards::plusInfinity); });
}
[[gnu::noinline]] inline OktStatus Ceil_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return rounding::each(src, dst, len,
                          [](Real64 x) { return rounding::ceilFloor(x, rounding::Towards::plusInfinity); });
}
[[gnu::noinline]] inline OktStatus Floor_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return rounding::each(src, dst, len,
                          [](Real32 x) { return rounding::ceilFloor(x, rounding::Towards::minusInfinity); });
}
[[gnu::noinline]] inline OktStatus Floor_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return rounding::each(src, dst, len,
                          [](Real64 x) { return rounding::ceilFloor(x, rounding::Towards::minusInfinity); });
}
[[gnu::noinline]] inline OktStatus Trunc_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return rounding::each(src, dst, len, [](Real32 x) { return rounding::trunc(x); });
}
[[gnu::noinline]] inline OktStatus Trunc_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return rounding::each(src, dst, len, [](Real64 x) { return rounding::trunc(x); });
}
[[gnu::noinline]] inline OktStatus Round_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return rounding::each(src, dst, len, [](Real32 x) { return rounding::round(x); });
}
[[gnu::noinline]] inline OktStatus Round_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return rounding::each(src, dst, len, [](Real64 x) { return rounding::round(x); });
}

[[gnu::noinline]] inline OktStatus Rint_32f(const Real32* src, Real32* dst, std::int32_t len) {
    const int mode = rounding::probeMode();
    return rounding::each(src, dst, len, [mode](Real32 x) { return rounding::rint(x, mode); });
}
[[gnu::noinline]] inline OktStatus Rint_64f(const Real64* src, Real64* dst, std::int32_t len) {
    const int mode = rounding::probeMode();
    return rounding::each(src, dst, len, [mode](Real64 x) { return rounding::rint(x, mode); });
}
[[gnu::noinline]] inline OktStatus NearbyInt_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return Rint_32f(src, dst, len);
}
[[gnu::noinline]] inline OktStatus NearbyInt_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return Rint_64f(src, dst, len);
}

[[gnu::noinline]] inline OktStatus Modf_32f(const Real32* src, Real32* dst1, Real32* dst2, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) {
        const Real32 x = src[i];
        const std::uint32_t u = rounding::aboveOne(x);
        const bool hasInteger = u < rounding::limit32;
        const std::uint32_t mask = hasInteger ? rounding::mask32(u >> 23) : 0;
        rounding::modfElement(x, dst1 + i, dst2 + i, hasInteger, mask, asBits(x) & ~rounding::sign32, 0x7F800000U,
                              0x3F800000U);
    }
    return oktStatusOk;
}
[[gnu::noinline]] inline OktStatus Modf_64f(const Real64* src, Real64* dst1, Real64* dst2, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) {
        const Real64 x = src[i];
        const std::uint32_t u = rounding::aboveOne(x);
        const bool hasInteger = u < rounding::limit64;
        const std::uint64_t mask = hasInteger ? rounding::mask64(u >> 20) : 0;
        rounding::modfElement(x, dst1 + i, dst2 + i, hasInteger, mask, asBits(x) & ~rounding::sign64,
                              std::uint64_t{0x7FF0000000000000}, std::uint64_t{0x3FF0000000000000});
    }
    return oktStatusOk;
}

}  // namespace okt::model
