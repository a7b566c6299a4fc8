// Models of Sin, Cos, SinCos and Tan on 32f and 64f.
#pragma once

#include "tables/sin_cos_table.h"
#include "tests/models/bits.h"
#include "tests/models/reduction_model.h"
#include "trig/sin_cos_tables.h"
#include "trig/tan_table.h"

#include <immintrin.h>
#include <cmath>

namespace okt::model {

namespace trig {

constexpr std::uint64_t signless64 = 0x7FFFFFFFFFFFFFFF;
constexpr std::uint32_t signless32 = 0x7FFFFFFF;
constexpr std::uint64_t infinity64 = 0x7FF0000000000000;
constexpr std::uint32_t infinity32 = 0x7F800000;

inline std::uint32_t upperAbs(Real64 x) { return std::uint32_t((asBits(x) & signless64) >> 32); }
inline std::uint32_t patternAbs(Real32 x) { return asBits(x) & signless32; }
inline int biasedExponent(Real64 x) { return int((asBits(x) >> 52) & 0x7FF); }
inline Real64 constant(std::uint64_t pattern) { return fromBits(pattern); }
inline Real32 constant32(std::uint32_t pattern) { return fromBits(pattern); }
inline Real32 flipSign(Real32 x, std::uint32_t lowBit) { return fromBits(asBits(x) ^ ((lowBit & 1u) << 31)); }
inline std::int32_t toInteger(Real32 x) { return _mm_cvtss_si32(_mm_set_ss(x)); }

// Elements begin .. end - 1 in blocks; a flagged element sends its whole block, in order, through the element path.
template <class Flagged, class Main, class Element>
void redo(std::int32_t begin, std::int32_t end, std::int32_t block, Flagged flagged, Main main, Element element) {
    for (std::int32_t i = begin; i < end; i += block) {
        bool any = false;
        for (std::int32_t k = 0; k < block; ++k) any = any || flagged(i + k);
        for (std::int32_t k = 0; k < block; ++k) any ? element(i + k) : main(i + k);
    }
}

// Whole blocks, then the rest one element at a time.
template <class Flagged, class Main, class Element>
void redoAll(std::int32_t len, std::int32_t block, Flagged flagged, Main main, Element element) {
    const std::int32_t blocks = len - len % block;
    redo(0, blocks, block, flagged, main, element);
    redo(blocks, len, 1, flagged, main, element);
}

// Blocks run while the count done is below len - 4, so that one to four elements are left.
template <class Flagged, class Main, class Element>
void redoAllButLast(std::int32_t len, Flagged flagged, Main main, Element element) {
    std::int32_t done = 0;
    while (done < len - 4) {
        redo(done, done + 4, 4, flagged, main, element);
        done += 4;
    }
    redo(done, len, 1, flagged, main, element);
}

inline bool outOfRange64(Real64 x) { return upperAbs(x) >= 0x40F60000u; }
inline bool outOfRange32(Real32 x) { return patternAbs(x) > 0x461C4000u; }

inline const Real64 roundShifter = 6755399441055744.0;

struct Reduced {
    Real64 r, rl;
    std::uint32_t k;  // low 32 bits of the shifted quotient
};

// The step is pi/32 or pi/64, `inverse` its reciprocal.
inline Reduced reduceStep(Real64 x, Real64 inverse, Real64 step1, Real64 step2, Real64 step3) {
    const Real64 t = x * inverse + roundShifter;
    const Real64 n = t - roundShifter;
    const Real64 r1 = x - n * step1;
    const Real64 r = r1 - n * step2;
    const Real64 rl = ((r1 - r) - n * step2) - n * step3;
    return {r, rl, std::uint32_t(asBits(t))};
}

inline Reduced reduce32(Real64 x) {
    return reduceStep(x, constant(0x40245F306DC9C883), constant(0x3FB921FB54400000), constant(0x3D90B4611A600000),
                      constant(0x3B63198A2E037073));
}

inline Reduced reduce64(Real64 x) {
    return reduceStep(x, constant(0x40345F306DC9C883), constant(0x3FA921FB54400000), constant(0x3D80B4611A600000),
                      constant(0x3B53198A2E037073));
}

inline const Real64 S1 = constant(0xBFC5555555555555);
inline const Real64 S2 = constant(0x3F81111111111111);
inline const Real64 S3 = constant(0xBF2A01A01A01A01A);
inline const Real64 S4 = constant(0x3EC71DE3A556C734);
inline const Real64 C1 = constant(0xBFE0000000000000);
inline const Real64 C2 = constant(0x3FA5555555555555);
inline const Real64 C3 = constant(0xBF56C16C16C16C17);
inline const Real64 C4 = constant(0x3EFA01A01A01A01A);

// The pieces of sin(B + r + rl) that main path and element path add in different orders.
struct Pieces {
    Real64 e, ps, pc, b, la, lb;
    Real64 mainSum() const { return ((((la + e) + lb) + ps) + pc) + b; }
    Real64 elementSum() const { return ((((ps + pc) + e) + la) + lb) + b; }
};

inline Pieces pieces(const Real64* row, Real64 r, Real64 rl, bool longSeries) {
    const Real64 Ct = row[0], Sh = row[1], Sl = row[2], Ch = row[3];
    const Real64 e = ((Ch + Ct) - Sh * r) * rl + Sl;
    const Real64 z = r * r;
    Real64 sinSeries, cosSeries;
    if (longSeries) {
        sinSeries = ((S4 * z + S3) * z + S2) * z + S1;
        cosSeries = ((C4 * z + C3) * z + C2) * z + C1;
    } else {
        sinSeries = (S3 * z + S2) * z + S1;
        cosSeries = (C3 * z + C2) * z + C1;
    }
    const Real64 ps = ((sinSeries * z) * r) * (Ch + Ct);
    const Real64 pc = (cosSeries * z) * Sh;
    const Real64 a = Sh + Ch * r;
    const Real64 b = a + Ct * r;
    const Real64 la = (Sh - a) + Ch * r;
    const Real64 lb = (a - b) + Ct * r;
    return {e, ps, pc, b, la, lb};
}

inline Real64 sinMain64(Real64 x) {
    const Reduced red = reduce32(x);
    return pieces(tables::sinCosTable + 4 * (red.k & 63u), red.r, red.rl, true).mainSum();
}

inline Real64 cosMain64(Real64 x) {
    const Reduced red = reduce32(x);
    return pieces(tables::cosTable + 4 * (red.k & 63u), red.r, red.rl, true).mainSum();
}

inline Real64 scaledRounding(Real64 x) { return (constant(0x4360000000000000) * x - x) * constant(0x3C80000000000000); }

// Sine and cosine of a finite x by the element path.
inline void sinCosFinite(Real64 x, Real64& sine, Real64& cosine) {
    if (biasedExponent(x) < 771) {
        sine = x == 0.0 ? x : scaledRounding(x);
        cosine = 1.0 - std::fabs(x);
        return;
    }
    Real64 lo = 0.0;
    std::uint32_t q = 0;
    if (biasedExponent(x) >= 1040) {
        Real64 head, tail;
        q = std::uint32_t(reduceQuarterPi(x, head, tail));
        x = head;
        lo = tail;
    }
    const Reduced red = reduce32(x);
    const Real64 rl = red.rl + lo;
    const std::uint32_t sinRow = (q * 16u + red.k) & 63u;
    const std::uint32_t cosRow = (q * 16u + red.k + 16u) & 63u;
    sine = pieces(tables::sinCosElementTable + 4 * sinRow, red.r, rl, true).elementSum();
    cosine = pieces(tables::sinCosElementTable + 4 * cosRow, red.r, rl, true).elementSum();
}

inline void sinCosLane64(Real64 x, Real64& sine, Real64& cosine, OktStatus& status) {
    if ((asBits(x) & signless64) >= infinity64) {
        sine = cosine = x - x;
        if ((asBits(x) & signless64) == infinity64) status = oktStatusDomain;
        return;
    }
    sinCosFinite(x, sine, cosine);
}

inline void sinCosLane32(Real32 x, Real32& sine, Real32& cosine, OktStatus& status) {
    if (patternAbs(x) == infinity32) {
        sine = cosine = constant32(0xFFC00000);
        status = oktStatusDomain;
        return;
    }
    const Real64 wide = x;
    if (patternAbs(x) > infinity32) {
        sine = cosine = Real32(wide * wide);
        return;
    }
    Real64 s, c;
    sinCosFinite(wide, s, c);
    sine = Real32(s);
    cosine = Real32(c);
}

inline Real64 sinElement64(Real64 x, OktStatus& status) {
    Real64 s, c;
    sinCosLane64(x, s, c, status);
    return s;
}

inline Real64 cosElement64(Real64 x, OktStatus& status) {
    Real64 s, c;
    sinCosLane64(x, s, c, status);
    return c;
}

inline Real32 sinElement32(Real32 x, OktStatus& status) {
    Real32 s, c;
    sinCosLane32(x, s, c, status);
    return s;
}

inline Real32 cosElement32(Real32 x, OktStatus& status) {
    Real32 s, c;
    sinCosLane32(x, s, c, status);
    return c;
}

// (-1)^n sin(x - d pi)
inline Real32 sinPolynomial32(Real32 x, std::int32_t n, Real64 d) {
    const Real64 negPi1 = constant(0xC00921FB54440000), pi2 = constant(0x3D968C234C4C6629);
    const Real64 P0 = constant(0x3FF000000089705F), P1 = constant(0xBFC55554AE8BA1BD);
    const Real64 P2 = constant(0x3F8110EE64CD0933), P3 = constant(0xBF29F75E2C166F94);
    const Real64 P4 = constant(0x3EC5E0A329A17541);
    const Real64 r = (Real64(x) + d * negPi1) - d * pi2;
    const Real64 z = r * r;
    const Real64 y = (((P4 * z + P3) * z + P2) * z + P1) * z + P0;
    return flipSign(Real32(y * r), std::uint32_t(n));
}

inline Real32 sinMain32(Real32 x) {
    const std::int32_t n = toInteger(x * constant32(0x3EA2F983));
    return sinPolynomial32(x, n, Real64(n));
}

inline Real32 cosMain32(Real32 x) {
    const std::int32_t n = toInteger((x + constant32(0x3FC90FDB)) * constant32(0x3EA2F983));
    return sinPolynomial32(x, n, Real64(n) - 0.5);
}

inline void sinCosMain32(Real32 x, Real32& sine, Real32& cosine) {
    const Real32 floatShifter = constant32(0x4B400000);
    const Real64 negHalfPi1 = constant(0xBFF921FB54440000), halfPi2 = constant(0x3D868C234C4C6629);
    const Real64 A1 = constant(0xBFC55554527AF340), A2 = constant(0x3F811073AFCE563F);
    const Real64 A3 = constant(0xBF29943E0FBEA90A);
    const Real64 B1 = constant(0xBFE0000000000000), B2 = constant(0x3FA55554A115B568);
    const Real64 B3 = constant(0xBF56C0C33A81BD97), B4 = constant(0x3EF99EB9C49F772E);
    const Real32 product = x * constant32(0x3F22F983);
    const Real32 t = product + floatShifter;
    const Real64 n = Real64(t - floatShifter);
    const Real64 r = (Real64(x) + n * negHalfPi1) - n * halfPi2;
    const Real64 z = r * r;
    const std::uint32_t k = asBits(t) & 0x007FFFFFu;
    const std::uint32_t odd = k & 1u;
    const Real32 s = Real32((((A3 * z + A2) * z + A1) * z + 1.0) * r);
    const Real32 c = Real32((((B4 * z + B3) * z + B2) * z + B1) * z + 1.0);
    sine = flipSign(odd ? c : s, (k - odd) >> 1);
    cosine = flipSign(odd ? s : c, (k + odd) >> 1);
}

inline void sinCosMain64(Real64 x, Real64& sine, Real64& cosine) {
    const Reduced red = reduce64(x);
    const std::uint32_t j = red.k & 127u;
    sine = pieces(tables::sinCosTable128 + 4 * j, red.r, red.rl, false).mainSum();
    cosine = pieces(tables::sinCosTable128 + 4 * ((j + 32u) & 127u), red.r, red.rl, false).mainSum();
}

inline Real32 tanMain32(Real32 x) {
    const Real64 halfPi1 = constant(0x3FF921FB54440000), halfPi2 = constant(0x3D868C234C4C6629);
    const Real64 N1 = constant(0xBFB8867706ED6612);
    const Real64 D1 = constant(0xBFDB76F5E7F08C11), D2 = constant(0x3F83E66EA6AA37F2);
    const std::int32_t n = toInteger(x * constant32(0x3F22F983));
    const Real64 d = n;
    const Real64 r = (Real64(x) - d * halfPi1) - d * halfPi2;
    const Real64 z = r * r;
    const Real64 s = (N1 * r) * z + r;
    const Real64 c = (D2 * z + D1) * z + 1.0;
    const Real64 quotient = (n & 1) ? c / s : s / c;
    return flipSign(Real32(quotient), std::uint32_t(n));
}

// tan(x + lo + q pi/2); x is neither zero nor below 2^-252.
inline Real64 tanRow(Real64 x, Real64 lo, std::uint32_t q) {
    const Real64 tanStep1 = 0.09817477042452083, tanStep2 = 1.6020900947399724e-13;
    const Real64 tanStep3 = 6.601874416867142e-25;
    const Real64 poleStep1 = 0.0981747704247482, poleStep2Neg = -6.716466596861444e-14;
    const Real64 poleStep2Pos = 6.716466596857464e-14, poleStep3 = 3.9801982271943437e-26;
    const Real64 roundShifter16 = 108086391056891904.0;

    const Real64 u = x * constant(0x40245F306DC9C883);
    const Real64 t = roundShifter + u;
    const Real64 n = t - roundShifter;
    const Real64 w = roundShifter16 + u;
    const Real64 m = w - roundShifter16;
    const Real64* T = tables::tanRows + 20 * ((q * 16u + std::uint32_t(asBits(t))) & 31u);

    // Reduction for the polynomial.
    const Real64 a = x - tanStep1 * n;
    const Real64 r = a - tanStep2 * n;
    const Real64 rl = (((a - r) - tanStep2 * n) - n * tanStep3) + lo;

    // Reduction for the reciprocal.
    const Real64 g = poleStep2Neg * m;
    const Real64 b = x - poleStep1 * m;
    const Real64 y = m * poleStep2Pos + b;
    const Real64 v = b - g;
    const Real64 yh = fromBits(asBits(y) & 0xFFFFFFFFFFFC0000u);
    const Real64 R = 1.0 / yh;
    const Real64 e = (((((b - v) - g) - poleStep3 * m) + lo) + (v - yh)) * R;

    const Real64 z = r * r;
    const Real64 z2 = z * z;
    const Real64 z3 = r * z2;
    Real64 A = ((T[5] * r + T[3]) * z + T[7] * z2) + ((T[11] * r + T[9]) + T[13] * z) * z3;
    const Real64 low = ((T[1] * r + T[0]) + (T[4] * r + T[2]) * z) + T[6] * z2;
    const Real64 C = (z2 * z2) * (low + z3 * ((T[10] * r + T[8]) + T[12] * z));
    const Real64 p1 = T[16] * r;
    const Real64 p2 = r * T[17];
    const Real64 s = p1 + p2;
    A = (A + C) + (((p2 + (p1 - s)) + T[15]) + (T[16] + T[17]) * rl);
    const Real64 Rh = fromBits(asBits(R) & asBits(T[19]));
    const Real64 d = yh * Rh;
    const Real64 h = Rh - T[14];
    const Real64 g2 = s - h;
    const Real64 s2 = s - (h + g2);
    A = (A + s2) - (T[18] * R) * ((1.0 - d) - e);
    return g2 + A;
}

inline Real64 tanFinite(Real64 x) {
    if (x == 0.0) return x;
    if (biasedExponent(x) < 771) return scaledRounding(x);
    if ((upperAbs(x) >> 16) >= 0x40C9u) {
        Real64 head, tail;
        const std::uint32_t q = std::uint32_t(reduceQuarterPi(x, head, tail));
        return tanRow(head, tail, q);
    }
    return tanRow(x, 0.0, 0);
}

inline Real64 tanElement64(Real64 x, OktStatus& status) {
    if ((asBits(x) & signless64) >= infinity64) {
        if ((asBits(x) & signless64) == infinity64) status = oktStatusDomain;
        return x - x;
    }
    return tanFinite(x);
}

inline Real32 tanElement32(Real32 x, OktStatus& status) {
    if (patternAbs(x) == infinity32) {
        status = oktStatusDomain;
        return constant32(0xFFC00000);
    }
    const Real64 wide = x;
    if (patternAbs(x) > infinity32) return Real32(wide - wide);
    return Real32(tanFinite(wide));
}

}  // namespace trig

inline OktStatus Sin_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAll(
        len, 4, [&](std::int32_t i) { return trig::outOfRange64(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::sinMain64(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::sinElement64(src[i], status); });
    return status;
}

inline OktStatus Cos_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAll(
        len, 4, [&](std::int32_t i) { return trig::outOfRange64(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::cosMain64(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::cosElement64(src[i], status); });
    return status;
}

inline OktStatus Sin_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAllButLast(
        len, [&](std::int32_t i) { return trig::outOfRange32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::sinMain32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::sinElement32(src[i], status); });
    return status;
}

inline OktStatus Cos_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAllButLast(
        len, [&](std::int32_t i) { return trig::outOfRange32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::cosMain32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::cosElement32(src[i], status); });
    return status;
}

inline OktStatus SinCos_32f(const Real32* src, Real32* dst1, Real32* dst2, std::int32_t len) {
    OktStatus status = oktStatusOk;
    Real32 s, c;
    trig::redoAll(
        len, 4, [&](std::int32_t i) { return trig::outOfRange32(src[i]); },
        [&](std::int32_t i) {
            trig::sinCosMain32(src[i], s, c);
            dst1[i] = s;
            dst2[i] = c;
        },
        [&](std::int32_t i) {
            trig::sinCosLane32(src[i], s, c, status);
            dst1[i] = s;
            dst2[i] = c;
        });
    return status;
}

inline OktStatus SinCos_64f(const Real64* src, Real64* dst1, Real64* dst2, std::int32_t len) {
    OktStatus status = oktStatusOk;
    Real64 s, c;
    trig::redoAll(
        len, 4, [&](std::int32_t i) { return trig::outOfRange64(src[i]); },
        [&](std::int32_t i) {
            trig::sinCosMain64(src[i], s, c);
            dst1[i] = s;
            dst2[i] = c;
        },
        [&](std::int32_t i) {
            trig::sinCosLane64(src[i], s, c, status);
            dst1[i] = s;
            dst2[i] = c;
        });
    return status;
}

inline OktStatus Tan_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAll(
        len, 2, [&](std::int32_t i) { return trig::outOfRange32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::tanMain32(src[i]); },
        [&](std::int32_t i) { dst[i] = trig::tanElement32(src[i], status); });
    return status;
}

// Elements below 2^-252 would make the reciprocal of the main path infinite; they go the element path's way too.
inline OktStatus Tan_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    trig::redoAll(
        len, 2,
        [&](std::int32_t i) { return trig::upperAbs(src[i]) >= 0x40C90000u || trig::biasedExponent(src[i]) < 771; },
        [&](std::int32_t i) { dst[i] = trig::tanRow(src[i], 0.0, 0); },
        [&](std::int32_t i) { dst[i] = trig::tanElement64(src[i], status); });
    return status;
}

}  // namespace okt::model
