// Models of erf and erfc.
#pragma once

#include "erf/erf_tables.h"
#include "tests/models/erf_support.h"

namespace okt::model {

namespace erf {

inline std::uint32_t magnitudeBits(Real32 x) { return asBits(x) & 0x7FFFFFFFU; }

// (word AND mask) - base, kept within [0, limit], shifted right.
inline int rowOf(std::uint32_t word, std::uint32_t mask, std::int32_t base, std::int32_t limit, int shift) {
    std::int32_t a = static_cast<std::int32_t>(word & mask) - base;
    if (a < 0) a = 0;
    if (a > limit) a = limit;
    return a >> shift;
}

// High part of 26 significant bits.
inline Real64 wide(Real64 x) { return pattern64(asBits(x) & 0xFFFFFFFFF8000000ULL); }

// c[0] + c[1] x + ... + c[6] x^6.
inline Real64 degree6(const Real64* c, Real64 x) {
    return ((((((c[6] * x + c[5]) * x + c[4]) * x + c[3]) * x + c[2]) * x + c[1]) * x + c[0]);
}

// Last steps of the Real64 polynomials: value + valueLo + t (slope + slopeLo + a) as a pair.
inline Pair lastTwo(Real64 a, Real64 t, Real64 slope, Real64 slopeLo, Real64 value, Real64 valueLo) {
    const Real64 s = slope + a;
    const Real64 d = a - s;
    const Real64 l = ((d + slope) - ((s + d) - a)) + slopeLo;
    const Real64 sh = wide(s);
    const Real64 l2 = l + (s - sh);
    const Real64 th = wide(t);
    const Real64 tl = t - th;
    const Real64 p = sh * th;
    const Real64 low = ((l2 * tl) + (tl * sh)) + (th * l2);
    const Real64 h = value + p;
    const Real64 d2 = p - h;
    const Real64 e = (p - (h + d2)) + (d2 + value);
    return {h, (e + low) + valueLo};
}

inline Real32 erf32(Real32 source) {
    const Real64 x = source;
    if (magnitudeBits(source) > 0x7F800000U) {
        const volatile Real64 widened = x;  // a conversion there and back that the compiler does not take for none
        return static_cast<Real32>(widened);
    }
    if (magnitudeBits(source) == 0x7F800000U) return static_cast<Real32>(orSign(1.0, x));
    const int row = rowOf(asBits(source), 0x7FE00000U, 0x3DE00000, 0x2A00000, 21);
    Real64 t = magnitude(x);
    if (t > 4.0) t = 0.0;
    const Real64 p = degree6(tables::erfRows32 + 8 * row, t);
    return static_cast<Real32>(orSign(p, x));
}

inline Real64 erfMain(Real64 x) {
    const auto high = static_cast<std::uint32_t>(asBits(x) >> 32);
    const Real64* c = tables::erfRows64 + 16 * rowOf(high, 0x7FFE0000U, 0x3FBE0000, 0x5A0000, 17);
    const Real64 t = magnitude(x) + c[12];
    Real64 a = c[11];
    for (int k = 10; k >= 3; --k) a = a * t + c[k];
    a = a * t;
    const Real64 s = c[2] + a;
    const Real64 d = a - s;
    const Real64 l = (d + c[2]) - ((s + d) - a);
    const Real64 sh = wide(s);
    const Real64 l2 = l + (s - sh);
    const Real64 th = wide(t);
    const Real64 tl = t - th;
    const Real64 p = sh * th;
    const Real64 low = ((l2 * tl) + (tl * sh)) + (th * l2);
    const Real64 h = c[1] + p;
    const Real64 d2 = p - h;
    const Real64 e = (p - (h + d2)) + (d2 + c[1]);
    return orSign(h + ((e + low) + c[0]), x);
}

inline Real64 erfTiny(Real64 x) {
    const Real64 c = pattern64(0x3FF20DD750429B6D);
    const Real64 cHi = pattern64(0x3FF20DD750000000);
    const Real64 cLo = pattern64(0x3E10A6DB446B8EA4);
    const std::uint64_t bits = asBits(magnitude(x));
    if (bits >= 0x0010000000000000U) return erfMain(x);
    if (bits < 0x0000010000000000U) return x * c;
    const Real64 y = x * powerOfTwo(200);
    const Real64 yh = wide(y);
    const Real64 yl = y - yh;
    const Real64 a = cHi * yh;
    const Real64 b = yh * cLo + yl * c;
    const Real64 ah = wide(a);
    const Real64 al = a - ah;
    return ah * powerOfTwo(-200) + (b + al) * powerOfTwo(-200);
}

inline Real32 erfcMain32(Real32 source) {
    const Real64 x = source;
    const Real64 log2e128 = pattern64(0x40671547652B82FE);
    const Real64 roundShift = pattern64(0xC338000000000000);
    const Real64 ln2Over128 = pattern64(0x3F762E42FEFA39EF);
    const Real64 c3 = pattern64(0x3FC5555555555555);  // 1/6
    const Real64 c4 = pattern64(0x3FA5555555555555);  // 1/24

    const Real64 t = magnitude(x);
    const Real64 u = -(t * t);
    const Real64 v = log2e128 * u - roundShift;
    const Real64 m = v + roundShift;
    const Real64 r = u - m * ln2Over128;
    const int j = static_cast<int>(asBits(v) & 127);
    const std::uint64_t scale = (asBits(v) << 45 & 0xFFF0000000000000ULL) + 0x3FF0000000000000ULL;
    const Real64 s = orSign(pattern64(scale), x);
    const Real64 q = (((c4 * r + c3) * r + 0.5) * r + 1.0) * r + 1.0;
    const Real64 e = (q * s) * tables::pow2Fraction32[j];

    const Real64* c = tables::erfcRows32 + 8 * rowOf(asBits(source), 0x7FE00000U, 0x3E600000, 0x7FFFFFFF, 21);
    const Real64 z = t - c[7];
    const Real64 f = degree6(c, z);
    const Real64 base = isNegative(x) ? 2.0 : 0.0;
    return static_cast<Real32>(base + f * e);
}

inline Real32 erfcElement32(Real32 x, OktStatus& status) {
    const std::uint32_t bits = magnitudeBits(x);
    const bool negative = asBits(x) >> 31 != 0;
    if (bits > 0x7F800000U) return x * 2.0F;
    if (!negative && bits >= 0x41131CE0U && bits < 0x7F800000U) status = oktStatusUnderflow;
    if (negative && bits >= 0x407547CAU) return 2.0F;
    if (!negative && bits >= 0x4120DDFCU) return 0.0F;
    const bool replaced = bits > 0x4120DDFBU || bits < 0x32000000U;
    return erfcMain32(replaced ? 0.0F : x);
}

inline Real64 erfcMain64(Real64 x) {
    const Real64 log2e128 = pattern64(0x40671547652B82FE);
    const Real64 roundShift = pattern64(0xC338000000000000);
    const Real64 ln2Hi = pattern64(0x3F762E4300000000);
    const Real64 ln2Lo = pattern64(0xBDB05C610CA86C39);
    const Real64 c3 = pattern64(0x3FC5555555555555);  // 1/6
    const Real64 c4 = pattern64(0x3FA5555555555555);  // 1/24
    const Real64 c5 = pattern64(0x3F81111111111111);  // 1/120

    const Real64 t = magnitude(x);
    const Real64 th = wide(t);
    const Real64 tl = t - th;
    const Real64 uHi = -(th * th);
    const Real64 uLo = 2.0 * (-th * tl) - tl * tl;
    const Real64 uh = wide(uHi);
    const Real64 ul = (uHi - uh) + uLo;

    const Real64 v = log2e128 * uh - roundShift;
    const Real64 m = v + roundShift;
    const Real64 r = ((uh - m * ln2Hi) - m * ln2Lo) + ul;
    const int j = static_cast<int>(asBits(v) & 127);
    const Real64 tableHi = tables::pow2Fraction64[2 * j];
    const Real64 tableLo = tables::pow2Fraction64[2 * j + 1];
    const std::uint64_t raised = (asBits(v) << 45 & 0xFFF0000000000000ULL) + 0x4990000000000000ULL;
    const Real64 s = orSign(pattern64(raised), x) * pattern64(0x3650000000000000);
    const Real64 p = ((((c5 * r + c4) * r + c3) * r + 0.5) * r + 1.0) * r;
    const Real64 eLo = p * (tableHi + tableLo) + tableLo;

    const auto high = static_cast<std::uint32_t>(asBits(x) >> 32);
    const int row = rowOf(high, 0x7FFC0000U, 0x3FCC0000, 0x7FFFFFFF, 18);
    const Real64* c = tables::erfcRows64 + 16 * row;
    const Real64 z = t - tables::erfcCentres64[2 * row];
    Real64 a = c[15];
    for (int k = 14; k >= 4; --k) a = a * z + c[k];
    a = a * z;
    const auto [fh, fRest] = lastTwo(a, z, c[3], c[2], c[1], c[0]);
    const Real64 fTop = wide(fh);
    const Real64 fl = fRest + (fh - fTop);
    Real64 hi = fTop * tableHi;
    Real64 lo = ((fl * eLo) + (fTop * eLo)) + fl * tableHi;
    hi = hi * s;
    lo = lo * s;
    const Real64 base = isNegative(x) ? 2.0 : 0.0;
    const Real64 sum = base + hi;
    return (lo + ((base - sum) + hi)) + sum;
}

inline Real64 erfcElement64(Real64 x, OktStatus& status) {
    const std::uint32_t high = highMagnitude(x);
    const std::uint64_t bits = asBits(magnitude(x));
    if (bits > 0x7FF0000000000000U) return x * x;
    if (!isNegative(x) && bits > 0x403B39DC41E48BFCU && bits < 0x7FF0000000000000U) status = oktStatusUnderflow;
    if (!isNegative(x) && high >= 0x403B39DDU) return 0.0;
    if (isNegative(x) && high >= 0x403B39DCU) return 2.0;
    const bool replaced = high > 0x403B39DCU || high < 0x3C800000U;
    return erfcMain64(replaced ? 0.0 : x);
}

// Pairs for which `plain` holds take the main path, the other ones and a last single element the element path.
template <class Real, class Plain, class Main, class Element>
OktStatus pairs(const Real* src, Real* dst, std::int32_t len, Plain plain, Main main, Element element) {
    OktStatus status = oktStatusOk;
    std::int32_t i = 0;
    for (; i + 2 <= len; i += 2) {
        const Real x[2] = {src[i], src[i + 1]};
        const bool isPlain = plain(x[0]) && plain(x[1]);
        for (int lane = 0; lane < 2; ++lane) dst[i + lane] = isPlain ? main(x[lane]) : element(x[lane], status);
    }
    if (i < len) dst[i] = element(src[i], status);
    return status;
}

}  // namespace erf

inline OktStatus Erf_32f(const Real32* src, Real32* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = erf::erf32(src[i]);
    return oktStatusOk;
}

inline OktStatus Erf_64f(const Real64* src, Real64* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) {
        const std::uint64_t bits = asBits(src[i]) & 0x7FFFFFFFFFFFFFFFULL;
        if (bits > 0x7FF0000000000000U) {
            const std::uint64_t pattern = asBits(src[i]);  // also a signalling NaN as it is
            __builtin_memcpy(dst + i, &pattern, sizeof pattern);
        } else if (bits == 0x7FF0000000000000U) {
            dst[i] = erf::orSign(1.0, src[i]);
        } else if (bits >> 32 < 0x00800000U) {
            dst[i] = erf::erfTiny(src[i]);
        } else {
            dst[i] = erf::erfMain(src[i]);
        }
    }
    return oktStatusOk;
}

inline OktStatus Erfc_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return erf::pairs(
        src, dst, len, [](Real32 x) { return erf::magnitudeBits(x) <= 0x4120DDFBU; }, erf::erfcMain32,
        erf::erfcElement32);
}

inline OktStatus Erfc_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return erf::pairs(
        src, dst, len, [](Real64 x) { return erf::highMagnitude(x) < 0x403A8B12U; }, erf::erfcMain64,
        erf::erfcElement64);
}

}  // namespace okt::model
