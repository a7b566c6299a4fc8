// Models of the logarithm of one plus: one routine in double precision for both element types.
#pragma once

#include "explog/log1p_tables.h"
#include "explog_support.h"

namespace okt::model {

namespace log1p {

using namespace explog;

inline constexpr Real64 ln2Head = real64(0x3FE62E42FEE00000);
inline constexpr Real64 ln2Tail = real64(0x3DEA39EF35793C76);
inline constexpr Real64 round = real64(0x41F0000000000000);
inline constexpr Real64 split = real64(0x41F0000000100000);
inline constexpr Real64 tiny = real64(0x0170000000000000);

// x = head + rest, the head with the lower word of its pattern zero.
struct Halves {
    Real64 head, rest;
};

inline Halves wordHalves(Real64 x) {
    const Real64 head = cleared(x, 32);
    return {head, x - head};
}

inline Real64 dekkerHead(Real64 x) { return x * split - x * round; }

// e ln 2 - ln(recip_i) + ln(1 + hi + lo2).
inline Real64 commonEnd(std::int32_t e, std::uint32_t i, Real64 hi, Real64 lo2) {
    constexpr Real64 g2 = real64(0xBFE0000000000000);
    constexpr Real64 g3 = real64(0x3FD555555554D0DF);
    constexpr Real64 g4 = real64(0xBFCFFFFFFFFE169D);
    constexpr Real64 g5 = real64(0x3FC999A24CDB6ABC);
    constexpr Real64 g6 = real64(0xBFC5555F7BD1FCD4);

    const Real64 low = tables::log1pLogs[2 * i];
    const Real64 high = tables::log1pLogs[2 * i + 1];
    const Real64 u = hi + lo2;
    const Real64 v = u * u;
    const Real64 even = (g6 * v + g4) * v + g2;
    const Real64 odd = (g5 * v + g3) * u;
    const Real64 q = (even + odd) * v + lo2;
    const Real64 exponent = static_cast<Real64>(e);
    const Real64 rl = (ln2Tail * exponent + low) + q;
    const Real64 rh = (ln2Head * exponent + high) + hi;
    return rh + rl;
}

// x >= 2^55: the one is dropped.
inline Real64 withoutOne(Real64 x) {
    const std::uint32_t ix = highMagnitude(x);
    const std::int32_t e = static_cast<std::int32_t>(ix >> 20) - 1023;
    const std::uint32_t i = (ix >> 12) & 0xFF;
    const Real64 m = fromBits((asBits(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Halves mParts = wordHalves(m);
    const Real64 r = static_cast<Real64>(tables::log1pRecip[i]);
    const Real64 hi = mParts.head * r - 1.0;
    const Real64 lo2 = mParts.rest * r;
    return commonEnd(e, i, hi, lo2);
}

// 0.0712890625 <= |x| < 2^55: 1 + x scaled by a reciprocal without its rounding.
inline Real64 withOne(Real64 x) {
    const Real64 t = opaque(1.0 + x);
    const std::uint32_t ht = highWord(t);
    const std::int32_t e = static_cast<std::int32_t>(ht >> 20) - 1023;
    const std::uint32_t i = (ht >> 12) & 0xFF;
    const Real64 s = fromBits(static_cast<std::uint64_t>(0x7FE00000U - (ht & 0x7FF00000U)) << 32);
    const Halves xParts = wordHalves(x);
    const Real64 rs = static_cast<Real64>(tables::log1pRecip[i]) * s;
    const Real64 a = rs - 1.0;
    const Real64 c = xParts.head * rs + a;
    const Real64 d = xParts.rest * rs;
    const Real64 shifted = opaque((c + d) + round);
    const Real64 hi = shifted - round;
    const Real64 lo2 = (c - hi) + d;
    return commonEnd(e, i, hi, lo2);
}

// 2^-6 <= |x| < 0.0712890625: x + x^2 (-1/2 + x/3 - ...) with the product in two pieces.
inline Real64 splitTaylor(Real64 x) {
    constexpr Real64 odd[6] = {real64(0x3FB3FFB2AC7A39A4), real64(0x3FB74544A220006F), real64(0x3FBC71C7998FE202),
                               real64(0x3FC24924922CA0F5), real64(0x3FC9999999999FC9), real64(0x3E75555555453A31)};
    constexpr Real64 even[6] = {real64(0xBFB29D524F0060E0), real64(0xBFB554A46FBCEC87), real64(0xBFB9999A57DF52CC),
                                real64(0xBFBFFFFFFF91931E), real64(0xBFC55555555565F1), real64(0xBFCFFFFFFFFFFFFE)};
    constexpr Real64 third = real64(0x3FD5555500000000);

    const Real64 v = x * x;
    const Real64 xh = dekkerHead(x);
    const Real64 xl = x - xh;

    Real64 E = even[0];
    Real64 O = odd[0];
    for (int i = 1; i < 6; ++i) {
        E = E * v + even[i];
        O = O * v + odd[i];
    }
    E = E * v;
    O = O * x;

    const Real64 Q = (E + O) + third * xl;
    const Real64 a = -0.5 + third * xh;
    const Real64 d = (x + xh) * xl;
    const Real64 b = a + Q;
    const Real64 bh = dekkerHead(b);
    const Real64 bl = (a + Q) - bh;
    const Real64 square = xh * xh;
    const Real64 w = square + d;
    const Real64 wh = dekkerHead(w);
    const Real64 wl = (square - wh) + d;
    const Real64 low = xl + (bl * v + wl * bh);
    const Real64 high = xh + bh * wh;
    return low + high;
}

// 2^-13 <= |x| < 2^-6: x - x^2/2 in two pieces and a short series.
inline Real64 splitSquare(Real64 x) {
    constexpr Real64 odd[4] = {real64(0x3FBC756A566CE20D), real64(0x3FC2492478D1D116), real64(0x3FC99999999A2B21),
                               real64(0x3FD5555555555555)};
    constexpr Real64 even[4] = {real64(0xBFB99D9A03A0403E), real64(0xBFBFFFFFB94B8A57), real64(0xBFC5555555566AD6),
                                real64(0xBFCFFFFFFFFFFFFC)};

    const Real64 v = x * x;
    Real64 O = odd[0];
    Real64 E = even[0];
    for (int i = 1; i < 4; ++i) {
        O = O * v + odd[i];
        E = E * v + even[i];
    }
    const Real64 S = v * (x * O + v * E);
    const Halves xParts = wordHalves(x);
    const Real64 xh = xParts.head;
    const Real64 xl = xParts.rest;
    const Halves square = wordHalves(xh * xh);
    const Real64 low = -0.5 * (((xh + xl) + xh) * xl + square.rest) + (S + xl);
    const Real64 high = xh - 0.5 * square.head;
    return low + high;
}

// 2^-57 <= |x| < 2^-13.
inline Real64 shortSeries(Real64 x) {
    constexpr Real64 t2 = real64(0xBFE0000000000000);
    constexpr Real64 t3 = real64(0x3FD5555555555555);
    constexpr Real64 t4 = real64(0xBFD0000003555556);
    constexpr Real64 t5 = real64(0x3FC99999A199B4B4);
    const Real64 v = x * x;
    return x + x * (v * (t3 + t5 * v) + x * (t2 + t4 * v));
}

inline Real64 element(Real64 x, OktStatus& warning) {
    const std::uint32_t hx = highWord(x);
    const std::uint32_t ix = highMagnitude(x);

    if (ix >= 0x7FF00000) {
        if (asBits(x) == 0x7FF0000000000000) return x;
        if (asBits(x) != 0xFFF0000000000000) return opaque(x) * 1.0;
    }
    if (hx >= 0xBFF00000) {
        if (asBits(x) == asBits(-1.0)) {
            warning = oktStatusSingularity;
            return opaque(-1.0) / opaque(0.0);
        }
        warning = oktStatusDomain;
        return opaque(real64(0x7FF0000000000000)) * opaque(0.0);
    }
    if (ix >= 0x43600000) return withoutOne(x);
    if (ix >= 0x3FB24000) return withOne(x);
    if (ix >= 0x3F900000) return splitTaylor(x);
    if (ix >= 0x3F200000) return splitSquare(x);
    if (ix >= 0x3C600000) return shortSeries(x);
    if ((ix | lowWord(x)) == 0) return x;
    return x - opaque(tiny) * opaque(tiny);
}

template <class Real>
OktStatus loop(const Real* src, Real* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) {
        const Real x = src[at];
        OktStatus warning = oktStatusOk;
        dst[at] = static_cast<Real>(element(opaque(static_cast<Real64>(x)), warning));
        if (warning != oktStatusOk) {
            status = warning;
            raiseFlag(warning);
        }
    }
    return status;
}

}  // namespace log1p

inline OktStatus Log1p_32f(const Real32* src, Real32* dst, std::int32_t len) { return log1p::loop(src, dst, len); }

inline OktStatus Log1p_64f(const Real64* src, Real64* dst, std::int32_t len) { return log1p::loop(src, dst, len); }

}  // namespace okt::model
