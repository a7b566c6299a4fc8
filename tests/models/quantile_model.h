// Models of the normal quantile and of the inverse of erfc: one routine with two ways in and out.
#pragma once

#include "erf/quantile_tables.h"
#include "tests/models/erf_support.h"

namespace okt::model {

namespace quantile {

using namespace okt::model::erf;

inline constexpr Pair seriesPairs[9] = {
    {0.886226925452758, -3.8332919812157375e-17},   {0.2320136665346545, -1.2109724793986283e-18},
    {0.12755617530559818, 2.6932826951855787e-18},  {0.0865521292414006, 5.3829105528752144e-18},
    {0.06495961779365295, 6.173933310229921e-20},   {0.051731273083680945, -2.2242512320521565e-18},
    {0.04283768367207295, -3.2052209418105908e-18}, {0.03640535287477883, -7.743440446784187e-19},
    {0.033731236049930925, -3.344281377853773e-18},
};
inline constexpr Pair middleNumerator[11] = {
    {1.2397566172220378, 9.352370023398099e-17},  {-20.636275809146454, -1.2081421313357034e-15},
    {141.73956705027214, -6.053317710932726e-15}, {-520.5564941869616, -3.7902441946002304e-14},
    {1108.7954980651432, 2.435826302641561e-14},  {-1392.3849174795268, -1.4997447757109094e-14},
    {1005.1478089800004, 5.5853192072116487e-14}, {-389.7095153679463, -2.54432685833488e-14},
    {71.03065413765944, 5.8123168143423814e-15},  {-4.617904322703956, -2.377953500635408e-16},
    {0.04713474343599728, 3.082263494300143e-18},
};
inline constexpr Pair middleDenominator[11] = {
    {1.0, 0.0},
    {-17.50670606979832, 5.891506382159018e-16},
    {127.55184959089254, -1.3980483879859926e-15},
    {-502.4388203190141, 5.968047966493524e-15},
    {1164.7731572234024, 3.709533929410378e-14},
    {-1624.1177644283844, 6.760559961873022e-14},
    {1339.6254722712079, -5.418339401153821e-14},
    {-619.9221276983031, -4.866183927587615e-14},
    {145.1907725843825, 2.1101289976214795e-15},
    {-14.10998848682359, 8.581266791633685e-16},
    {0.3557053881252071, 1.0675794366948005e-17},
};
inline constexpr Pair tailNumerator0[12] = {
    {-5.839739322128422e-05, 1.742804033463758e-21}, {0.8868050437275852, -3.694685982377649e-17},
    {2.9302479116560387, 5.597114239809448e-17},     {6.448787792216457, 6.154710740049124e-17},
    {9.362325911338496, 6.626190074225319e-16},      {9.896178023349787, -2.316651880983526e-17},
    {7.429911601212078, -1.5523513709134236e-16},    {3.4911342406316543, 1.2823146548987466e-16},
    {0.9483218379467928, 4.900165629463605e-17},     {0.12465558125517977, -2.1462203544044758e-18},
    {0.0064485781568118265, 1.0549260827794658e-19}, {9.29017776505533e-05, 6.184199479243381e-21},
};
inline constexpr Pair tailDenominator0[12] = {
    {1.0, 0.0},
    {3.3091104205939383, 3.7272692415195797e-17},
    {7.771848808721214, -2.0512457427569886e-16},
    {12.216113748734934, 2.09525688547992e-16},
    {14.66095946056114, -6.009139003047892e-16},
    {12.977153206341134, 5.195217817689384e-16},
    {8.508105499677786, 1.24065211335145e-16},
    {3.6809551072391598, 1.6713486165818718e-16},
    {0.9615028782392243, -3.0341770430280365e-17},
    {0.1249206124642317, 5.690545408340104e-18},
    {0.006448918454877269, -3.1930026498809e-19},
    {9.290079926455094e-05, -6.7560603192621534e-21},
};
inline constexpr Pair tailNumerator1[12] = {
    {0.04491236418585928, 3.627845891140854e-19},     {0.654271843421605, -1.9366717565653495e-17},
    {2.064599545056116, -2.037800395510143e-16},      {1.7644506095680803, -3.654295629320021e-17},
    {2.2215687640840924, 1.608682021954641e-16},      {1.182341617417255, 1.0573929837243894e-16},
    {0.2497465156003653, 9.59642275588532e-19},       {0.023520568338860057, 8.3916391366322635e-19},
    {0.0010310180511501827, 8.022969512843284e-20},   {2.050890780883156e-05, 4.692911195479425e-22},
    {1.6547394284765373e-07, -7.855812383390245e-24}, {3.938557206417735e-10, 1.3026535314511455e-26},
};
inline constexpr Pair tailDenominator1[12] = {
    {1.0, -1e-120},
    {1.717988654125873, -5.443121264970869e-17},
    {3.2870076168388858, 1.7131758902394635e-16},
    {2.8408522102451514, 1.5489699287891103e-16},
    {2.544636340503929, 3.443353269296628e-17},
    {1.2215294232401996, 5.0023888558165125e-17},
    {0.2518540962946422, -2.2817317583266946e-17},
    {0.023570948721111748, -1.1268159178277772e-18},
    {0.001031507653087143, -3.1383850713037555e-20},
    {2.0510380210273295e-05, -1.3899165049874828e-21},
    {1.65474195079671e-07, -1.5496755375475885e-24},
    {3.938555875763264e-10, -4.7200135937544375e-27},
};
inline constexpr Real64 centralNumerator[2][7] = {
    {0.8862269254528556, 0.23201366622277247, 0.12755633460153998, 0.08652369094055386, 0.06702456814866439, 0.0, 0.0},
    {1.2397566172219774, -11.891018087093427, 40.30868893509604, -58.26529300766244, 34.39795285063038,
     -6.541173409811038, 0.17961450959744676},
};
inline constexpr Real64 centralDenominator[2][7] = {
    {1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0},
    {1.0, -10.452694338280539, 39.66120929452019, -66.93599804137493, 49.63692733458368, -13.78918983644795,
     0.9112468451579203},
};
inline constexpr Real64 tailNumerator32[7] = {-0.6450464672369585, 44.691295572380426, 92.93161977843073,
                                              164.33735062464936,  127.03817107734285, 24.893836758717732,
                                              1.0000462738424927};
inline constexpr Real64 tailDenominator32[7] = {45.919189451305975,
                                                116.47524058138094,
                                                194.821520191325,
                                                200.8678561199943,
                                                129.43615693639939,
                                                24.902128134969256,
                                                1.0};

// The two functions. central: t = 2p - 1 or 1 - v and its rest; tailMass: u and whether the result is negative.
struct Quantile {
    static constexpr bool scaled = true;
    static constexpr Real64 end = 1.0;
    static Real64 central(Real64 p) { return 2.0 * p - 1.0; }
    static Real64 centralRest(Real64 p, Real64 t) { return 2.0 * p - (t + 1.0); }
    static bool negative(Real64 p) { return p < 0.5; }
    static Real64 tailMass32(Real64 p) { return negative(p) ? 2.0 * p : 2.0 * (1.0 - p); }
    static Real64 tailMass64(Real64 p) { return negative(p) ? 2.0 * p : 2.0 - 2.0 * p; }
    static constexpr Real64 zeroAt = 0.5;
};

struct ErfcInverse {
    static constexpr bool scaled = false;
    static constexpr Real64 end = 2.0;
    static Real64 central(Real64 v) { return 1.0 - v; }
    static Real64 centralRest(Real64 v, Real64 t) { return (1.0 - t) - v; }
    static bool negative(Real64 v) { return v > 1.0; }
    static Real64 tailMass32(Real64 v) { return negative(v) ? 2.0 - v : v; }
    static Real64 tailMass64(Real64 v) { return tailMass32(v); }
    static constexpr Real64 zeroAt = 1.0;
};

// Square root of -ln u in plain double arithmetic.
inline Real64 rootOfLog32(Real64 u) {
    const Real64 ln2 = pattern64(0x3FE62E42FEFA39EF);
    const Real64 l2 = -0.5;
    const Real64 l3 = pattern64(0x3FD555551DBFC1DD);
    const Real64 l4 = pattern64(0xBFCFFFFF815EEF03);
    const Real64 l5 = pattern64(0x3FC99F951AAC2647);
    const Real64 l6 = pattern64(0xBFC55B1E471DAADD);
    const Real64 r1 = 0.5;
    const Real64 r2 = pattern64(0xBFBFFFFFE05C4FFB);
    const Real64 r3 = pattern64(0x3FAFFFFF941190D0);
    const Real64 r4 = pattern64(0xBFA4036CAD71ED67);
    const Real64 r5 = pattern64(0x3F9C07909E448B69);

    const int i = topFractionBits(u, 4);
    const Real64 z = tables::recip32[i] * significandOf(u) - 1.0;
    const Real64 q = ((((l6 * z + l5) * z + l4) * z + l3) * z + l2) * z * z;
    const Real64 logarithm = ((exponentOf(u) * ln2 + q) + z) + tables::logMid32[i];
    const Real64 w = 0.0 - logarithm;

    const std::int32_t e = exponentOf(w);
    const auto h = static_cast<std::int32_t>(static_cast<std::uint32_t>(e) >> 1);
    const std::int32_t odd = e - 2 * h;
    const Real64 w2 = pattern64((asBits(w) & 0x000FFFFFFFFFFFFFULL) | asBits(powerOfTwo(odd)));
    const int k = 16 * odd + topFractionBits(w2, 4);
    const Real64 v = powerOfTwo(h) * tables::sqrtMid32[k];
    const Real64 y = tables::recip32[k] * w2 - 1.0;
    return v * (1.0 + ((((r5 * y + r4) * y + r3) * y + r2) * y + r1) * y);
}

template <class F>
Real32 finite32(Real64 p) {
    const Real64 sqrt2 = pattern64(0x3FF6A09E667F3BCD);
    const Real64 t = F::central(p);
    const Real64 a = magnitude(t);
    if (a < 0.875) {
        const int row = a < 0.125 ? 0 : 1;
        const Real64 s = row == 0 ? (a + 0.0) * (a + -0.0) : (a + 0.875) * (a + -0.875);
        const Real64 n = horner(centralNumerator[row], s);
        const Real64 d = horner(centralDenominator[row], s);
        if (F::scaled) return static_cast<Real32>(((n * t) * sqrt2) / d);
        return static_cast<Real32>((n * t) / d);
    }
    const Real64 y = rootOfLog32(F::tailMass32(p));
    const Real64 n = horner(tailNumerator32, y);
    const Real64 d = horner(tailDenominator32, y);
    const Real64 signedRoot = F::negative(p) ? -y : y;
    if (F::scaled) return static_cast<Real32>(((n * signedRoot) * sqrt2) / d);
    return static_cast<Real32>((n * signedRoot) / d);
}

inline Pair product(Pair a, Pair b) {
    const auto [p, e] = exactProduct(a.hi, b.hi);
    return {p, e + (a.hi * b.lo + a.lo * b.hi)};
}

template <int N>
Pair hornerPair(const Pair (&c)[N], Pair s) {
    Pair sum = c[N - 1];
    for (int k = N - 2; k >= 0; --k) {
        const auto [p, lo] = product(sum, s);
        const auto [hi, l] = twoSum(c[k].hi, p);
        sum = {hi, (lo + c[k].lo) + l};
    }
    return sum;
}

// -ln u as a pair.
inline Pair minusLog64(Real64 u) {
    const Real64 ln2Hi = pattern64(0x3FE62E4300000000);
    const Real64 ln2Lo = pattern64(0xBE205C610CA86C39);
    const Real64 l3 = pattern64(0x3FD55555555516C2);
    const Real64 l4 = pattern64(0xBFCFFFFFFFFF71AB);
    const Real64 l5 = pattern64(0x3FC9999FF151CD6B);
    const Real64 l6 = pattern64(0xBFC5555B76AD7FA4);

    std::int32_t n = exponentOf(u);
    if (n == -1023) {
        u = pattern64(asBits(u) | 0x3FF0000000000000ULL) - 1.0;
        n = exponentOf(u) - 1022;
    }
    const Real64 m = significandOf(u);
    const int i = topFractionBits(m, 8);
    const Real64 r = tables::recip64[i];
    const auto [mh, ml] = tableSplit(m);
    const Real64 z0 = mh * r - 1.0;
    const Real64 z1 = ml * r;
    const Real64 z = z0 + z1;
    auto [zh, zl] = tableSplit(z);
    zl = zl + ((z0 - z) + z1);
    const Real64 square = z * z;
    const Real64 q = (((l6 * z + l5) * z + l4) * square + (l3 * z - 0.5)) * square;
    const Real64 a = n * ln2Hi + tables::logRecip64[2 * i];
    const Real64 b = n * ln2Lo + tables::logRecip64[2 * i + 1];
    const auto [h, l] = fastTwoSum(a, zh);
    Real64 lo = (zl + q) + b;
    lo = l + lo;
    return {-h, -lo};
}

inline Pair root64(Pair w) {
    const Real64 r2 = -0.125;
    const Real64 r3 = pattern64(0x3FAFFFFFFFFFBC81);
    const Real64 r4 = pattern64(0xBFA3FFFFFFFF44CD);
    const Real64 r5 = pattern64(0x3F9C00061EB82F5C);
    const Real64 r6 = pattern64(0xBF95000812C497D6);

    const std::int32_t e = exponentOf(w.hi);
    const auto h = static_cast<std::int32_t>(static_cast<std::uint32_t>(e) >> 1);
    const std::int32_t odd = e - 2 * h;
    const Real64 scale = powerOfTwo(h);
    const Real64 halfScale = powerOfTwo(h - 1);
    const Real64 wh = w.hi * powerOfTwo(-2 * h);
    const Real64 wl = w.lo * powerOfTwo(-2 * h);
    const int i = 256 * odd + topFractionBits(wh, 8);
    const Real64 r = tables::recip64[i];
    const auto [mh, ml] = tableSplit(wh);
    const Real64 z0 = mh * r - 1.0;
    const Real64 z1 = ml * r + wl * r;
    const Real64 z = z0 + z1;
    auto [zh, zl] = tableSplit(z);
    zl = zl + ((z0 - z) + z1);
    const Real64 p = (z * z) * (r2 + z * (r3 + z * (r4 + z * (r5 + z * r6))));

    const Real64 tableHi = tables::sqrtRecip64[2 * i];
    const Real64 tableLo = tables::sqrtRecip64[2 * i + 1];
    const auto [f, l] = fastTwoSum(scale, halfScale * zh);
    const Real64 fLo = l + (halfScale * zl + scale * p);
    const auto [f1, f2] = tableSplit(f);
    const Real64 hi = tableHi * f1;
    const Real64 lo = tableHi * f2 + (tableHi * fLo + tableLo * (f + fLo));
    return fastTwoSum(hi, lo);
}

// The last product with sqrt(2), where the function has it, and the one rounding to Real64.
template <class F>
Real64 finish(Pair value) {
    if (F::scaled) {
        const Pair sqrt2 = {pattern64(0x3FF6A09E667F3BCD), pattern64(0xBC9BDD3413B26456)};
        value = product(value, sqrt2);
    }
    return value.hi + value.lo;
}

inline Pair quotient(Pair numerator, Pair d) {
    const Real64 q = 1.0 / d.hi;
    const auto [p, e] = exactProduct(d.hi, q);
    const Real64 c = -q * ((p - 1.0) + (e + d.lo * q));
    return product(numerator, {q, c});
}

template <class F>
Real64 finite64(Real64 p) {
    const Real64 t = F::central(p);
    const Real64 a = magnitude(t);
    if (a < 0.875) {
        const Real64 tLo = F::centralRest(p, t);
        if (a < 0.125) {
            if (p == F::zeroAt) return 0.0;
            auto [s, sLo] = exactProduct(t, t);
            sLo = sLo + 2.0 * t * tLo;
            return finish<F>(product(hornerPair(seriesPairs, {s, sLo}), {t, tLo}));
        }
        const auto [upper, upperRest] = twoSum(t, 0.875);
        const auto [lower, lowerRest] = twoSum(t, -0.875);
        const Pair s = product({upper, upperRest + tLo}, {lower, lowerRest + tLo});
        const Pair n = product(hornerPair(middleNumerator, s), {t, tLo});
        return finish<F>(quotient(n, hornerPair(middleDenominator, s)));
    }
    const Real64 u = F::tailMass64(p);
    const bool deep = asBits(u) >> 52 < 0x3CA;
    const Pair y = root64(minusLog64(u));
    const Pair numerator = hornerPair(deep ? tailNumerator1 : tailNumerator0, y);
    const Pair denominator = hornerPair(deep ? tailDenominator1 : tailDenominator0, y);
    Pair n = product(numerator, y);
    const Real64 sign = F::negative(p) ? -1.0 : 1.0;
    n = {n.hi * sign, n.lo * sign};
    return finish<F>(quotient(n, denominator));
}

template <class F, class Real>
Real element(Real source, OktStatus& status) {
    const Real64 p = source;
    if (p != p) return source * source;
    const bool infinite = magnitude(p) == pattern64(0x7FF0000000000000);
    if (p == 0.0 || p == F::end) {
        warn(status, oktStatusSingularity);
        return static_cast<Real>(F::central(p) / unknown(0.0));
    }
    if (infinite || p < 0.0 || p > F::end) {
        warn(status, oktStatusDomain);
        return static_cast<Real>(unknown(0.0) / unknown(0.0));
    }
    if constexpr (sizeof(Real) == 4) {
        return finite32<F>(p);
    } else {
        return finite64<F>(p);
    }
}

template <class F, class Real>
OktStatus array(const Real* src, Real* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = element<F>(src[i], status);
    return status;
}

}  // namespace quantile

inline OktStatus CdfNormInv_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return quantile::array<quantile::Quantile>(src, dst, len);
}
inline OktStatus CdfNormInv_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return quantile::array<quantile::Quantile>(src, dst, len);
}
inline OktStatus ErfcInv_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return quantile::array<quantile::ErfcInverse>(src, dst, len);
}
inline OktStatus ErfcInv_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return quantile::array<quantile::ErfcInverse>(src, dst, len);
}

}  // namespace okt::model
