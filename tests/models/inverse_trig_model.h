// Models of Asin, Acos and Atan on 32f and 64f.
#pragma once

#include "tests/models/approximations.h"
#include "tests/models/bits.h"
#include "trig/atan_tables.h"

#include <immintrin.h>
#include <initializer_list>

namespace okt::model {

namespace inverse_trig {

inline Real32 packedRoot(Real32 x) { return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(x))); }

inline Real64 real64(std::uint64_t pattern) { return fromBits(pattern); }
inline Real32 real32(std::uint32_t pattern) { return fromBits(pattern); }

inline std::uint32_t signBit(Real32 x) { return asBits(x) & 0x80000000u; }
inline std::uint64_t signBit(Real64 x) { return asBits(x) & 0x8000000000000000u; }
inline Real32 magnitude(Real32 x) { return fromBits(asBits(x) & 0x7FFFFFFFu); }
inline Real64 magnitude(Real64 x) { return fromBits(asBits(x) & 0x7FFFFFFFFFFFFFFFu); }
inline Real32 orBits(Real32 x, std::uint32_t bits) { return fromBits(asBits(x) | bits); }
inline Real64 orBits(Real64 x, std::uint64_t bits) { return fromBits(asBits(x) | bits); }
inline Real32 clearLow16(Real32 x) { return fromBits(asBits(x) & 0xFFFF0000u); }
inline Real64 clearLowWord(Real64 x) { return fromBits(asBits(x) & 0xFFFFFFFF00000000u); }

// Q with asin u = u + u Q, z = u^2.
inline Real32 asinPolynomial32(Real32 z) {
    const Real32 R4 = real32(0x3D2D33ED), R3 = real32(0x3CC589DB), R2 = real32(0x3D3A4C23);
    const Real32 R1 = real32(0x3D998079), R0 = real32(0x3E2AAAE6);
    const Real32 w = z * z;
    const Real32 p = (R4 * w + R2) * w + R0;
    const Real32 q = (R3 * w + R1) * w;
    return p * z + q;
}

// (1 - a)/2 by the exponent field.
inline Real32 halfOfRest32(Real32 a) { return fromBits(asBits(1.0f - a) - 0x00800000u); }

inline Real32 asin32(Real32 x, OktStatus& status) {
    const std::uint32_t sign = signBit(x);
    const Real32 a = magnitude(x);

    // Patches.
    if (!(a * a < 1.0f)) {
        if (a != a) return x;
        if (a == 1.0f) return orBits(real32(0x3FC90FDB), sign);
        if (a > 1.0f) {
            status = oktStatusDomain;
            return real32(0xFFC00000);
        }
    }

    const bool big = !(a < 0.5f);
    const Real32 h = big ? halfOfRest32(a) : 0.0f;
    const Real32 z = big ? h : a * a;
    const Real32 Q = asinPolynomial32(z);
    Real32 u = a, uh = a, c = 0.0f, L = 0.0f, H = 0.0f, f = 1.0f;
    if (big) {
        const Real32 g = approximateInverseRoot(h);
        const Real32 hg = h * g;
        const Real32 s = (hg * -0.5f) * (hg * g - 3.0f);
        u = s;
        uh = clearLow16(s);
        c = (h - uh * uh) / (u + uh);
        L = real32(0x33222168);
        H = real32(0x3F490FDA);
        f = -2.0f;
    }
    const Real32 result = ((Q * u + (c - L)) - (H * 0.5f - uh)) * f + H;
    return orBits(result, sign);
}

inline Real32 acos32(Real32 x, OktStatus& status) {
    const bool negative = signBit(x) != 0;
    const Real32 a = magnitude(x);

    // Patches.
    if (!(a * a < 1.0f)) {
        if (a != a) return x;
        if (a == 1.0f) return negative ? real32(0x40490FDB) : 0.0f;
        if (a > 1.0f) {
            status = oktStatusDomain;
            return real32(0xFFC00000);
        }
    }

    const bool big = !(a < 0.5f);
    const Real32 h = big ? halfOfRest32(a) : 0.0f;
    const Real32 z = big ? h : a * a;
    const Real32 Q = asinPolynomial32(z);
    Real32 u = a, uh = a, c = 0.0f;
    if (big) {
        u = packedRoot(h);
        uh = clearLow16(u);
        const Real32 d = -uh - u;
        const Real32 n = uh * uh - h;
        const Real32 r = approximateInverse(d);
        c = (n * r) * (2.0f - d * r);
    }
    const Real32 halfPiHead = real32(0x3FC90FDA), halfPiTail = real32(0x33A22168);
    Real32 f, H, L;
    if (big && !negative) {
        f = 2.0f;
        H = 0.0f;
        L = 0.0f;
    } else if (big) {
        f = -2.0f;
        H = real32(0x40490FDA);
        L = halfPiTail;
    } else if (!negative) {
        f = -1.0f;
        H = halfPiHead;
        L = halfPiTail;
    } else {
        f = 1.0f;
        H = halfPiHead;
        L = -halfPiTail;
    }
    return ((Q * u + (c - L)) + uh) * f + H;
}

// What Asin and Acos on 64f share: u = uh + l is a, or minus the root of q = 2(1 - a) above 1/2.
struct Halved {
    bool big;
    Real64 uh, l, u, S;
};

inline Halved halved64(Real64 a) {
    const bool big = 0.5 < a;
    const Real64 w0 = big ? (1.0 - a) * 0.5 : 0.0;
    const Real64 z = big ? w0 : a * a;
    const Real64 q = 4.0 * w0;

    Real64 uh = a, l = 0.0;
    if (big) {
        // Reciprocal root of q.
        const std::uint32_t top = (std::uint32_t(asBits(q) >> 29) & 0x00FFFFFFu) ^ 0x00800000u;
        const Real32 r = approximateInverseRoot(fromBits(top + 0x3F800000u));
        const std::uint32_t upperQ = std::uint32_t(asBits(q) >> 32);
        const std::uint32_t upperY = (asBits(r) >> 3) + 0x57F00000u - (((upperQ - 0x00100000u) & 0xFFE00000u) >> 1);
        const Real64 y = fromBits(std::uint64_t{upperY} << 32);

        const Real64 qh = clearLowWord(q);
        const Real64 ql = q - qh;
        const Real64 e = ((qh * y) * y - 1.0) + (ql * y) * y;
        const Real64 series = (((-0.24609375 * e + 0.2734375) * e - 0.3125) * e + 0.375) * e - 0.5;
        const Real64 g = (series * e) * -y;
        uh = -(qh * y);
        l = g * q - ql * y;
    }
    const Real64 u = uh + l;

    const std::uint64_t even[] = {0x3FA0D60D1986AEC6, 0x3F96825C16316F03, 0x3F8622CB270118B0, 0x3F8CA247EB6664E5,
                                  0x3F96E8BE19F6199D, 0x3FA6DB6DB724FE19, 0x3FC5555555555579};
    const std::uint64_t odd[] = {0xBF95E9019191BE85, 0x3F6D768B20A865AC, 0x3F8755BDEFC292C9,
                                 0x3F91C49BD43E63F7, 0x3F9F1C71A7CEDD43, 0x3FB333333332DC42};
    const Real64 z2 = z * z;
    Real64 E = real64(even[0]);
    for (int k = 1; k < 7; ++k) E = E * z2 + real64(even[k]);
    E = E * z;
    Real64 O = real64(odd[0]);
    for (int k = 1; k < 6; ++k) O = O * z2 + real64(odd[k]);
    O = O * z2;
    return {big, uh, l, u, E + O};
}

inline Real64 asin64(Real64 x, OktStatus& status) {
    const std::uint64_t sign = signBit(x);
    const Real64 a = magnitude(x);
    if (a == 1.0) return orBits(real64(0x3FF921FB54442D18), sign);
    if (a > 1.0) {
        status = oktStatusDomain;
        return real64(0xFFF8000000000000);
    }
    const Halved v = halved64(a);
    const Real64 c = v.big ? real64(0x3FE921FB54442D18) : 0.0;
    const Real64 lo = v.big ? real64(0x3C91A62633145C07) : 0.0;
    const Real64 result = ((v.S * v.u + (v.l + lo)) + (v.uh + c)) + c;
    return orBits(result, sign);
}

inline Real64 acos64(Real64 x, OktStatus& status) {
    const std::uint64_t sign = signBit(x);
    const Real64 a = magnitude(x);
    if (a == 1.0) return sign ? real64(0x400921FB54442D18) : 0.0;
    if (a > 1.0) {
        status = oktStatusDomain;
        return real64(0xFFF8000000000000);
    }
    const Halved v = halved64(a);
    Real64 hi = 0.0, lo = 0.0;
    if (!v.big) {
        hi = real64(0x3FF921FB54442D18);
        lo = fromBits(std::uint64_t{0xBC91A62633145C07} ^ sign);
    } else if (sign) {
        hi = real64(0x400921FB54442D18);
        lo = real64(0x3CA1A62633145C07);
    }
    Real64 A = ((v.l + lo) + v.S * v.u) + v.uh;
    A = fromBits(asBits(A) ^ sign ^ std::uint64_t{0x8000000000000000});
    return hi + A;
}

inline Real32 atan32(Real32 x) {
    const std::uint32_t sign = signBit(x);
    const Real32 a = magnitude(x);
    const std::uint32_t pattern = asBits(a);
    Real32 numerator, denominator, head, tail;
    if (pattern > 0x40128F5Cu) {
        numerator = -1.0f;
        denominator = a;
        head = real32(0x3FC80000);
        tail = real32(0x3C07ED51);
    } else if (pattern > 0x3F3851ECu) {
        numerator = a - 1.0f;
        denominator = 1.0f * a + 1.0f;
        head = real32(0x3F400000);
        tail = real32(0x3D10FDAA);
    } else if (pattern > 0x3EE00000u) {
        numerator = a - 0.53125f;
        denominator = 0.53125f * a + 1.0f;
        head = real32(0x3EF80000);
        tail = real32(0x3B81BA17);
    } else {
        numerator = a;
        denominator = 1.0f;
        head = 0.0f;
        tail = 0.0f;
    }
    const Real32 Q4 = real32(0xBD6E4E11), Q3 = real32(0x3DD6D79A), Q2 = real32(0xBE11B5D2);
    const Real32 Q1 = real32(0x3E4CC6DC), Q0 = real32(0xBEAAAAA1);
    const Real32 t = numerator / denominator;
    const Real32 z = t * t;
    const Real32 p = (((Q4 * z + Q3) * z + Q2) * z + Q1) * z + Q0;
    const Real32 result = (((p * z) * t + tail) + t) + head;
    return orBits(result, sign);
}

inline Real64 atan64(Real64 x) {
    const std::uint64_t sign = signBit(x);
    const Real64 a = magnitude(x);
    const std::uint32_t upper = std::uint32_t(asBits(a) >> 32);
    int interval = 4;
    for (const std::uint32_t limit : {0x3FDC0000u, 0x3FE60000u, 0x3FF30000u, 0x40038000u}) interval -= upper > limit;
    const std::uint64_t mask = tables::atanMask[interval];
    const Real64 c = tables::atanScale[interval];
    const Real64 numerator = fromBits(asBits(a) & mask) - c;
    const Real64 denominator = c * a + fromBits(asBits(1.0) & mask);
    const Real64 t = numerator / denominator;
    const Real64 z = t * t;
    const Real64 w = z * z;

    const Real64 D5 = real64(0xBF90A0140B247B6E), D4 = real64(0xBFA9785816AC714D), D3 = real64(0xBFB10D58403897A0);
    const Real64 D2 = real64(0xBFB745CDAE905490), D1 = real64(0xBFC2492491FDFC9C), D0 = real64(0xBFD5555555555509);
    const Real64 E4 = real64(0x3FA2AD8F0C29B3CB), E3 = real64(0x3FADDD7216B6A1B8), E2 = real64(0x3FB3B0F1459B9FD4);
    const Real64 E1 = real64(0x3FBC71C6FD40E520), E0 = real64(0x3FC999999998E492);
    const Real64 u = (((((D5 * w + D4) * w + D3) * w + D2) * w + D1) * w + D0) * z;
    const Real64 v = ((((E4 * w + E3) * w + E2) * w + E1) * w + E0) * w;
    const Real64 result = (((u + v) * t + tables::atanTail[interval]) + t) + tables::atanHead[interval];
    return orBits(result, sign);
}

}  // namespace inverse_trig

// Blocks, passes of two and single elements go through the same steps: the position is not visible.

inline OktStatus Asin_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::asin32(src[i], status);
    return status;
}

inline OktStatus Acos_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::acos32(src[i], status);
    return status;
}

inline OktStatus Asin_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::asin64(src[i], status);
    return status;
}

inline OktStatus Acos_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::acos64(src[i], status);
    return status;
}

inline OktStatus Atan_32f(const Real32* src, Real32* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::atan32(src[i]);
    return oktStatusOk;
}

inline OktStatus Atan_64f(const Real64* src, Real64* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = inverse_trig::atan64(src[i]);
    return oktStatusOk;
}

}  // namespace okt::model
