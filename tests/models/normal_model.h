// Model of the normal distribution function.
#pragma once

#include "erf/cdf_norm_tables.h"
#include "tests/models/erf_support.h"

namespace okt::model {

namespace cdf {

using namespace okt::model::erf;

template <class Real>
struct Limits;
template <>
struct Limits<Real32> {
    static constexpr Real64 upper = 5.41998291015625, underflow = -14.170185089111328;
};
template <>
struct Limits<Real64> {
    static constexpr Real64 upper = 8.292361075813595, underflow = -38.485408335567335;
};

// exp(-x^2/2) as (hi + lo) 2^(n/64), hi with 26 bits.
struct Exponential {
    Real64 hi, lo;
    std::int32_t n;
};

inline Exponential gauss(Real64 x) {
    const Real64 k64OverLn2 = pattern64(0x40571547652B82FE);
    const Real64 ln2Over64Hi = pattern64(0x3F862E42FEFA0000);
    const Real64 ln2Over64Lo = pattern64(0x3D1CF79ABC9E3B3A);
    const Real64 shifter = 6755399441055744.0;

    const auto [xh, xl] = split(x);
    const Real64 sh = xh * xh;
    const Real64 sl = ((xl + xh) + xh) * xl;
    const Real64 v = -0.5 * sh;
    const Real64 vl = -0.5 * sl;

    const Real64 y = k64OverLn2 * v + shifter;
    const auto n = static_cast<std::int32_t>(static_cast<std::uint32_t>(asBits(y)));
    const Real64 nk = y - shifter;

    const Real64 r0 = v - ln2Over64Hi * nk;
    const Real64 t = (0.0 - nk) * ln2Over64Lo;
    const auto [r1, r2] = twoSum(r0, t);
    const auto [r, r3] = twoSum(r1, vl);
    const Real64 rl = r2 + r3;

    const Real64 a2 = 0.5;
    const Real64 a3 = pattern64(0x3FC55555555548F8);
    const Real64 a4 = pattern64(0x3FA5555555558FCC);
    const Real64 a5 = pattern64(0x3F8111123AAF20D3);
    const Real64 a6 = pattern64(0x3F56C16A1C2A3FFD);
    Real64 u = ((((a6 * r + a5) * r + a4) * r + a3) * r + a2) * r;
    u = u * r;

    const Real64 e = r + u;
    const Real64 el = (u - e) + r;
    const auto [eh, em] = split(e);
    const Real64 lo = (rl + em) + el;

    const std::int32_t j = n & 63;
    const Real64 tableHi = tables::cdfPow2[2 * j];
    const Real64 tableLo = tables::cdfPow2[2 * j + 1];
    const Real64 pth = tableHi * eh;
    const Real64 ptl = (eh + lo) * tableLo + tableHi * lo;
    const auto [s, l] = twoSum(pth, tableHi);
    const Real64 rest = (l + tableLo) + ptl;
    const auto [hi, middle] = split(s);
    return {hi, rest + middle, n};
}

// Phi(-a) or, from row 6 on, Phi(-a) exp(a^2/2) as a pair.
inline Pair rowValue(const Real64* row, Real64 a) {
    const Real64* pairs = row + 2;
    const Real64* plain = row + 14 - 6;  // plain[6] to plain[15]
    const auto [w, wl] = twoSum(a, row[0]);
    Real64 q = plain[15];
    for (int i = 14; i >= 6; --i) q = q * w + plain[i];
    q = q * w;
    auto [wh, wm] = split(w);
    wm = wl + wm;
    auto [h, l] = fastTwoSum(pairs[10], q);
    Real64 m = l + pairs[11];
    for (int i = 4; i >= 0; --i) {
        const auto [hh, hl] = split(h);
        m = m + hl;
        const Real64 ph = hh * wh;
        const Real64 pl = (hh + m) * wm + m * wh;
        const auto [s, sl] = fastTwoSum(pairs[2 * i], ph);
        h = s;
        m = (pl + sl) + pairs[2 * i + 1];
    }
    const Real64 p = h + m;
    return {p, (h - p) + m};
}

template <class Real>
Real element(Real source, OktStatus& status) {
    const Real64 tiny = unknown(pattern64(0x0010000000000001));
    const Real64 x = source;
    if (x != x) return source * source;
    if (magnitude(x) == pattern64(0x7FF0000000000000)) return isNegative(x) ? Real{0} : Real{1};
    if (highMagnitude(x) >> 20 < 0x3B9) return static_cast<Real>(0.5 + x);
    if (x > Limits<Real>::upper) return static_cast<Real>(1.0 - tiny);
    if (x < Limits<Real>::underflow) {
        warn(status, oktStatusUnderflow);
        return static_cast<Real>(tiny * tiny);
    }

    const Real64 a = magnitude(x);
    Real64 t = 1.0 + a;
    t = t * t;
    t = t * t;
    const std::int32_t e = exponentOf(t);
    const auto [p, pLo] = rowValue(tables::cdfRows + 24 * e, a);

    Real64 rh = p;
    Real64 rl = pLo;
    Real64 scale = 1.0;
    std::int32_t exponent = 0;
    if (e >= 6) {
        auto [ph, pl] = split(p);
        pl = pLo + pl;
        const Exponential g = gauss(x);
        rh = ph * g.hi;
        rl = (ph + pl) * g.lo + pl * g.hi;
        exponent = g.n >> 6;
        scale = powerOfTwo(exponent);
    }

    if (!isNegative(x)) {
        rh = rh * -scale;
        rl = rl * -scale;
        const auto [s, l] = fastTwoSum(1.0, rh);
        const auto [s2, l2] = twoSum(s, rl);
        return static_cast<Real>(s2 + (l + l2));
    }
    const Real64 subnormalFrom = pattern64(0xC042C27B05BF1A0B);
    if (sizeof(Real) == 4 || x >= subnormalFrom) return static_cast<Real>((rh + rl) * scale);

    const Real64 deepFrom = pattern64(0xC042DEC104973DDC);
    const Real64 back = pattern64(0x3370000000000000);
    const Real64 raised = powerOfTwo(exponent + 200);
    rh = rh * raised;
    rl = rl * raised;
    if (x < deepFrom) {
        const Real64 small = (rh + rl) * back;
        return static_cast<Real>(small + small * small);
    }
    const Real64 s = rh + rl;
    const Real64 lo = (rh - s) + rl;
    const auto [sh, sm] = split(s);
    return static_cast<Real>(sh * back + (lo + sm) * back);
}

template <class Real>
OktStatus array(const Real* src, Real* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = element(src[i], status);
    return status;
}

}  // namespace cdf

inline OktStatus CdfNorm_32f(const Real32* src, Real32* dst, std::int32_t len) { return cdf::array(src, dst, len); }
inline OktStatus CdfNorm_64f(const Real64* src, Real64* dst, std::int32_t len) { return cdf::array(src, dst, len); }

}  // namespace okt::model
