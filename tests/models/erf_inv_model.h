// Models of the inverse error function: single precision, the fast double-precision grade and the accurate ones.
#pragma once

#include "erf/erf_inv_tables.h"
#include "tests/models/erf_support.h"

namespace okt::model {

namespace erfinv {

using namespace okt::model::erf;

template <class Real>
Real outside(Real x, Real one, OktStatus& status) {
    if (x != x) return x * x;
    if (x == one || x == -one) {
        warn(status, oktStatusSingularity);
        return x / unknown(Real{0});
    }
    warn(status, oktStatusDomain);
    return unknown(static_cast<Real>(__builtin_inf())) * unknown(Real{0});
}

inline constexpr Real64 middleNumerator32[7] = {1.2397566172219774, -11.891018087093427, 40.30868893509604,
                                                -58.26529300766244, 34.39795285063038,   -6.541173409811038,
                                                0.17961450959744676};
inline constexpr Real64 middleDenominator32[7] = {1.0,
                                                  -10.452694338280539,
                                                  39.66120929452019,
                                                  -66.93599804137493,
                                                  49.63692733458368,
                                                  -13.78918983644795,
                                                  0.9112468451579203};
inline constexpr Real64 small32[5] = {0.8862269254528556, 0.23201366622277247, 0.12755633460153998, 0.08652369094055386,
                                      0.06702456814866439};
inline constexpr Real64 tailNumerator32[6] = {-0.019528882051019682, 1.0181780043977067, 1.9810173395506179,
                                              3.7483407134268534,    2.1681898444588947, 0.2343178069097516};
inline constexpr Real64 tailDenominator32[6] = {
    1.0, 2.6710280674656595, 4.062442914921245, 4.199278077180345, 2.173006700172145, 0.23425474066153762};

inline Real32 element32(Real32 source, OktStatus& status) {
    const std::uint32_t bits = asBits(source) & 0x7FFFFFFFU;
    const Real64 x = source;
    if (bits >= 0x3F800000U) return outside(source, 1.0F, status);
    if (bits >= 0x3F600000U) {
        const Real64 minusLn2 = pattern64(0xBFE62E42FEFA39EF);
        const Real64 c2 = 0.5, c3 = 0.3333332815664372, c4 = 0.2499999410336998;
        const Real64 c5 = 0.2001825695263497, c6 = 0.16684320900397767;
        const Real64 sign = isNegative(x) ? -1.0 : 1.0;
        const Real64 w = 1.0 - magnitude(x);
        const Real64 m = significandOf(w);
        const int i = topFractionBits(m, 4);
        const Real64 z = 1.0 + tables::erfInvLog32[2 * i] * m;
        const Real64 a = exponentOf(w) * minusLn2 + tables::erfInvLog32[2 * i + 1];
        const Real64 q = ((((c6 * z + c5) * z + c4) * z + c3) * z + c2) * z * z + z;
        const Real64 y = __builtin_sqrt(a + q);
        return static_cast<Real32>((horner(tailNumerator32, y) * (sign * y)) / horner(tailDenominator32, y));
    }
    if (bits >= 0x3E000000U) {
        const Real64 s = x * x - 0.765625;
        return static_cast<Real32>((horner(middleNumerator32, s) * x) / horner(middleDenominator32, s));
    }
    if (bits >= 0x36800000U) return static_cast<Real32>(horner(small32, x * x) * x);
    if (bits == 0) return source;
    return static_cast<Real32>(x * pattern64(0x3FEC5BF891B4EF6B));
}

// By clearing the 36 low bits.
inline Real64 cleared36(Real64 v) { return pattern64(asBits(v) >> 36 << 36); }

// By a pair of neighbouring constants: 17 bits are left.
inline Real64 shortPart(Real64 v) { return v * 103079215105.0 - v * 103079215104.0; }

// |x| below 2^-35. A subnormal result is rounded on its own grid, at 2^-766 in the raised scale.
template <class Cut>
Real64 tiny(Real64 x, Cut cut) {
    const Real64 raised = x * powerOfTwo(256);
    const Real64 xh = cut(raised);
    const Real64 xl = raised - xh;
    const Real64 p1 = 0.88623046875 * xh;
    const Real64 p2 = 0.88623046875 * xl + -3.543297241986351e-06 * raised;
    const Real64 v = p1 + p2;
    if (highMagnitude(v) >= 0x10100000U) return v * powerOfTwo(-256);
    forFlags(unknown(powerOfTwo(-1000)) * unknown(powerOfTwo(-1000)));
    const Real64 t = orSign(powerOfTwo(-766), x);
    const Real64 u = cut(v + t);
    const Real64 g = u + ((p1 - (u - t)) + p2);
    return pattern64(asBits(g) & 0x800FFFFFFFFFFFFFULL);
}

inline Real64 elementA26(Real64 x, OktStatus& status) {
    const std::uint32_t high = highMagnitude(x);
    if (high >= 0x3FF00000U) return outside(x, 1.0, status);
    if (high >= 0x3DC00000U) {
        const Real64 w = 1.0 - magnitude(x);
        const auto row = 8183 - static_cast<int>(asBits(w) >> 49);
        const Real64 t = w - pattern64(asBits(w) & asBits(1.875));
        const Real64* c = tables::erfInvPieces + 6 * (row + 1);
        if (high > 0x3DC00000U) return ((((c[4] * t + c[3]) * t + c[2]) * t + c[1]) * t + c[0]) * x;
        return ((c[4] * t + c[3]) * (t * t * t) + ((c[2] * t + c[1]) * t + c[0])) * x;
    }
    return x == 0.0 ? x : tiny(x, cleared36);
}

// x in [2^-35, 0.125).
inline Real64 nearZero(Real64 x) {
    const Real64 a = 0.88623046875, b = 0.23201370239257812, c = 0.12755584716796875, low0 = -3.543297241986351e-06;
    const Real64 rest[9] = {0.0,
                            -3.5857923631577856e-08,
                            3.2813762943220793e-07,
                            0.0865521292414006,
                            0.06495961779365295,
                            0.051731273083680945,
                            0.04283768367207295,
                            0.03640535287477883,
                            0.033731236049930925};
    const Real64 xh = shortPart(x);
    const Real64 xl = x - xh;
    const Real64 s1 = xh * xh;
    const Real64 s2 = xh * xl + xl * x;
    const Real64 s = s1 + s2;
    const Real64 sh = shortPart(s);
    const Real64 sl = (s1 - sh) + s2;
    Real64 p = rest[8];
    for (int k = 7; k >= 1; --k) p = p * s + rest[k];
    p = p * s;
    const Real64 linear = b * sh;
    const Real64 square = c * sh * sh;
    const Real64 low = ((c * (sl * (sh + s)) + b * sl) + p) + low0;
    const Real64 total = a + (linear + (square + low));
    const Real64 top = shortPart(total);
    const Real64 remaining = (((a - top) + linear) + square) + low;
    return xh * top + (xl * top + x * remaining);
}

// c0 + c1 t + c2 t^2 with c0 = hi + lo and short c1, c2; t = th + tl; `plain` is the rest of the polynomial.
// Gives a short high part and the rest.
inline Pair leadingTerms(Real64 hi, Real64 lo, Real64 c1, Real64 c2, Real64 th, Real64 tl, Real64 plain) {
    const Real64 t = th + tl;
    const Real64 linear = c1 * th;
    const Real64 square = c2 * th * th;
    const Real64 low = ((c2 * (tl * (th + t)) + c1 * tl) + plain) + lo;
    const Real64 total = hi + (linear + (square + low));
    const Real64 top = shortPart(total);
    return {top, (((hi - top) + linear) + square) + low};
}

// x in [0.125, 0.875).
inline Real64 middle(Real64 x) {
    const Real64 xh = shortPart(x);
    const Real64 xl = x - xh;
    const Real64 s1 = xh * xh - 0.765625;
    const Real64 low = xh * xl + xl * x;
    int k = static_cast<int>(s1 * -42.666666666666664);
    if (k == 32) k = 31;
    const Real64 v1 = s1 + k * 0.0234375;
    const Real64 v = v1 + low;
    const Real64 vh = shortPart(v);
    const Real64 vl = (v1 - vh) + low;
    const Real64* b = tables::erfInvMiddle + 16 * k;
    Real64 p = b[12];
    for (int i = 11; i >= 1; --i) p = p * v + b[i];
    p = p * v;
    const auto [top, rest] = leadingTerms(b[13], b[0], b[14], b[15], vh, vl, p);
    return xh * top + (xl * top + x * rest);
}

// |x| in [0.875, 1).
inline Real64 tail(Real64 x) {
    const Real64 minusLn2Hi = pattern64(0xBFE62E42FEE00000);
    const Real64 minusLn2Lo = pattern64(0xBDEA39EF35793C76);
    const Real64 c2 = 0.5, c3 = 0.33333333333145093, c4 = 0.2499999999965227;
    const Real64 c5 = 0.20000103714740713, c6 = 0.1666678766814359;
    const Real64 sign = isNegative(x) ? -1.0 : 1.0;

    const Real64 w = 1.0 - magnitude(x);
    const Real64 m = significandOf(w);
    const Real64* row = tables::erfInvLog + 4 * topFractionBits(m, 8);
    const Real64 mh = shortPart(m);
    const Real64 ml = m - mh;
    const Real64 z1 = 1.0 + mh * row[0];
    const Real64 z2 = ml * row[0];
    const Real64 a = exponentOf(w) * minusLn2Hi + row[1];
    const Real64 b = exponentOf(w) * minusLn2Lo + row[2];
    const Real64 z = z1 + z2;
    const Real64 q = ((((c6 * z + c5) * z + c4) * z + c3) * z + c2) * z * z + z2;

    const Real64 wHigh = shortPart(a + z1);
    const Real64 wLow = ((a + z1) - wHigh) + (b + q);
    const Real64 total = wHigh + wLow;
    const Real64 r = 1.0 / __builtin_sqrt(total);
    const Real64 rh = shortPart(r);
    const Real64 rl = r - rh;
    const Real64 defect = (1.0 - rh * rh * wHigh) - (rh * rh * wLow + (rh * rl + rl * r) * total);
    const Real64 rl2 = rl + (defect * r) * 0.5;
    const Real64 yh = wHigh * rh * sign;
    const Real64 yl = (wLow * rh + total * rl2) * sign;

    const int k = static_cast<int>(16.0 * rh);
    const Real64 t1 = rh - k * 0.0625;
    const Real64 t = t1 + rl2;
    const Real64 th = shortPart(t);
    const Real64 tl = (t1 - th) + rl2;
    const Real64* c = tables::erfInvTail + 18 * (k - 2);
    Real64 p = c[14];
    for (int i = 13; i >= 1; --i) p = p * t + c[i];
    p = p * t;
    const auto [top, rest] = leadingTerms(c[15], c[0], c[16], c[17], th, tl, p);
    return yh * top + (yl * top + (yh + yl) * rest);
}

inline Real64 elementA50(Real64 x, OktStatus& status) {
    const std::uint32_t high = highMagnitude(x);
    if (high >= 0x3FF00000U) return outside(x, 1.0, status);
    if (high >= 0x3FEC0000U) return tail(x);
    if (high >= 0x3FC00000U) return middle(x);
    if (high >= 0x3DC00000U) return nearZero(x);
    return x == 0.0 ? x : tiny(x, shortPart);
}

template <class Real, class Element>
OktStatus array(const Real* src, Real* dst, std::int32_t len, Element element) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = element(src[i], status);
    return status;
}

}  // namespace erfinv

inline OktStatus ErfInv_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return erfinv::array(src, dst, len, erfinv::element32);
}
inline OktStatus ErfInv_64f_A26(const Real64* src, Real64* dst, std::int32_t len) {
    return erfinv::array(src, dst, len, erfinv::elementA26);
}
// Grades A50 and A53.
inline OktStatus ErfInv_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return erfinv::array(src, dst, len, erfinv::elementA50);
}

}  // namespace okt::model
