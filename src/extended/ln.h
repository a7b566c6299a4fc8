// ln x and ln(1 + x) in extended precision.
//
// ln(2^n*m) = n*ln 2 - ln c + ln(1 + z), c near 1/m from a table by the top 8 fraction bits, z = m*c - 1.
//
// Largest error seen: 0.51 ulp of the 64-bit significand, of either.
#pragma once

#include "extended/exceptional.h"
#include "extended/ln_tables.h"
#include "extended/pair.h"
#include "extended/polynomial.h"

#include <array>

namespace okt::extended {

// A row of the far branch: the reciprocal c times 2^-31 and 2^-63, for the two halves of a significand as integers, and
// -ln c in two parts.
struct alignas(32) LogRow {
    Real32 recipHigh, recipLow;
    Real64 lnHi, lnLo;
};

inline constexpr auto logRows = [] {
    std::array<LogRow, 256> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = {tables::mantissaRecip[i] * 0x1p-31F, tables::mantissaRecip[i] * 0x1p-63F, tables::lnRecip[2 * i],
                   tables::lnRecip[2 * i + 1]};
    return rows;
}();

// ln((y + rest)*2^extra) for a positive normal y, given by its bits, and a rest that is small beside it, the whole away
// from 1. The upper half of the significand times c is exact, and head terms are multiples of 2^-43 and add up without
// error.
OKT_INLINE inline Real80 lnFar(Real80Bits bits, Real80 rest, int extra = 0) {
    constexpr Real64 ln2Hi = 0x1.62e42ffp-1, ln2Lo = -0x1.718432a1b0e26p-35;
    // (ln(1 + z) - z)/z^2, |z| < 0.00203, relative error of the logarithm 2^-67.0; -1/2 and 1/3, the others fitted.
    static constexpr Real64 series[6] = {-0.5,
                                         0x1.5555555555555p-2,
                                         -0x1.ffffffffdfcddp-3,
                                         0x1.9999999968f2cp-3,
                                         -0x1.5555f7bcd787cp-3,
                                         0x1.2492fd977e254p-3};
    int n = bits.signAndExponent - 0x3FFF;
    const LogRow& row = logRows[bits.significand >> 55 & 255];
    Real80 zh = static_cast<Real80>(static_cast<std::int64_t>(bits.significand >> 32)) * row.recipHigh - 1.0;
    Real80 zl = static_cast<Real80>(static_cast<std::int64_t>(bits.significand & 0xFFFFFFFF)) * row.recipLow;
    if (rest != 0) {
        zl += rest * powerOfTwo80(31 - n) * row.recipHigh;
    }
    Real80 z = zh + zl;
    Real80 e = n + extra;
    Real80 head = (e * ln2Hi + row.lnHi) + zh;
    Real80 low = (e * ln2Lo + row.lnLo) + zl;
    return head + (low + z * z * poly(z, series));
}

// ln(1 + t), |t| <= 1/16, by tiers. The square's half is taken with an exact leading part.
inline Real80 lnNear(Real80 t, int exponent) {
    if (exponent >= 0x3FF1) {
        Real80 h = roundBy(toMultiple31, t);
        Real80 half = h * h * 0.5;
        Real80 rest = (t - h) * (t + h) * 0.5;
        Real80 cubic = t * t * t * poly(t, tables::Log1pWide, tables::Log1p);
        Pair sum = fastTwoSum(t, -half);
        return sum.head + (sum.tail + (cubic - rest));
    }
    if (exponent >= 0x3FE6) {
        return t + t * t * (((0.2 * t - 0.25) * t + tables::Log1pWide[0]) * t - 0.5);
    }
    if (exponent >= 0x3FD9) {
        return t + t * t * (tables::Log1pWide[0] * t - 0.5);
    }
    if (exponent >= 0x3FB4) {
        return t - t * t * 0.5;
    }
    return tinyOdd(t);
}

// Sign, exponent and the top 16 significand bits in one number.
OKT_INLINE inline std::uint32_t keyOf(Real80Bits bits) {
    return static_cast<std::uint32_t>(bits.signAndExponent) << 16 | static_cast<std::uint32_t>(bits.significand >> 48);
}

// From about 0.96875 to 1.0625.
OKT_INLINE inline bool isNearOne(std::uint32_t key) { return key - 0x3FFEF800U <= 0x3FFF8800U - 0x3FFEF800U; }

inline Real80 lnNearOne(Real80 x) {
    Real80 t = x - 1.0;
    return t == 0 ? Real80{0.0} : lnNear(t, exponentOf(t));
}

// ln x of a positive normal x, given by its bits.
OKT_INLINE inline Real80 lnOrdinary(Real80Bits bits) {
    return isNearOne(keyOf(bits)) ? lnNearOne(fromBits(bits)) : lnFar(bits, 0.0);
}

// ln x.
inline Real80 ln(Real80 x) {
    Real80Bits bits = asBits(x);
    std::uint32_t key = keyOf(bits);
    if (isNearOne(key)) {
        return lnNearOne(x);
    }
    if (key < 0x7FFF8000U) {
        if (bits.signAndExponent != 0) {
            return lnFar(bits, 0.0);
        }
        if (bits.significand == 0) {
            return pole(-1.0);
        }
        return lnFar(asBits(x * twoTo75), 0.0, -75);  // a subnormal
    }
    if (x == 0) {
        return pole(-1.0);
    }
    return x == x && x < 0 ? invalid() : x * 1.0;  // a comparison by order would be invalid for a NaN
}

// ln(1 + x).
inline Real80 log1p(Real80 x) {
    int exponent = exponentOf(x);
    if (exponent < 0x3FFB) {
        return lnNear(x, exponent);
    }
    if (exponent == 0x7FFF) {
        return x != x || x > 0 ? x * 1.0 : invalid();
    }
    if (x <= -1.0) {
        return x == -1.0 ? pole(-1.0) : invalid();
    }
    Pair y = exponent < 0x3FFF ? fastTwoSum(1.0, x) : fastTwoSum(x, 1.0);
    return lnFar(asBits(y.head), y.tail);
}

}  // namespace okt::extended
