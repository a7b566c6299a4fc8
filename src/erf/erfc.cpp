// erfc |x| is exp(-x^2) times a polynomial in |x| minus the centre of its interval; four intervals an octave, found by
// the bits of |x| as in erf. For a negative x the result is 2 minus that.
// exp(u) = 2^k · 2^(j/128) · e^r with n = 128 k + j = round(u · 128/ln 2): table and short series.
// Real32 works in Real64. Real64 has x^2, the table's powers, the slope of the polynomial and the last products in two
// parts each, and scales by 2^k in two factors.
//
// Elements go in pairs. Past the limit of its type, or as the last element of an odd length, an element sees tests that
// a pair of smaller elements does not see: whether Real32 warns between 9.19455 and 10.054194, and whether it rounds
// -3.8325067 to 2 or to the number below, depends on the neighbour.
//
// Largest errors seen:
//   Real32  0.5263 ulp at 0x1.19f382p+2
//   Real64  0.561 ulp at 0x1.f5b9296736935p-3; 0.749 ulp in [26.5, 26.54], 0.999 ulp in the subnormal results
//
// GCC: -fschedule-insns -fsched-pressure (0.85)
#include "exports/Erfc.h"
#include "erf/erf_tables.h"
#include "erf/split_step.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// Pairs of elements: main(x) where plain(x) holds for both, element(x, status) for both otherwise and for a last single
// element. `tryBlock(src, dst)` works Block elements by main if all of them are plain, and stores nothing otherwise.
template <int Block, class T, class TryBlock, class Plain, class Main, class Element>
inline void pairLoop(const T* src, T* dst, std::int32_t len, const TryBlock& tryBlock, const Plain& plain,
                     const Main& main, const Element& element, OktStatus& status) {
    std::int32_t i = 0;
    const auto workPair = [&](std::int32_t j) {
        const T first = loadElement(src + j), second = loadElement(src + j + 1);
        const bool isPlain = plain(first) && plain(second);
        storeElement(dst + j, isPlain ? main(first) : element(first, status));
        storeElement(dst + j + 1, isPlain ? main(second) : element(second, status));
    };
    for (; i <= len - Block; i += Block) {
        if (tryBlock(src + i, dst + i)) [[likely]]
            continue;
        for (std::int32_t j = i; j < i + Block; j += 2) workPair(j);
    }
    for (; i <= len - 2; i += 2) workPair(i);
    if (i < len) storeElement(dst + i, element(loadElement(src + i), status));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Constants32 {
    Constant64 log2e128 = 0x1.71547652b82fep+7;  // 128/ln 2
    Constant64 roundShift = -0x1.8p+52;
    Constant64 ln2Over128 = 0x1.62e42fefa39efp-8;
    // e^r on |r| <= ln 2/256, relative error 2^-49.5; Taylor.
    Constant64 inv24 = 0x1.5555555555555p-5;
    Constant64 inv6 = 0x1.5555555555555p-3;
    Constant64 half = 0.5;
    Constant64 one = 1.0;
    Constant64 two = 2.0;
    Pattern64 sign = std::uint64_t{0x8000000000000000};
    Pattern64 exponentField = std::uint64_t{0xFFF0000000000000};
};
constexpr Constants32 constants32;

constexpr std::uint32_t limit32 = 0x4120DDFB;      // 10.054194: the largest magnitude of an ordinary pair
constexpr std::uint32_t tiny32 = 0x32000000;       // 2^-27, below which the element path gives 1
constexpr std::uint32_t two32 = 0x407547CA;        // 3.8325067: from its negative down the element path gives 2
constexpr std::uint32_t underflow32 = 0x41131CE0;  // 9.19455: from here on results are subnormal or 0

// The byte offset of the element's row.
template <int N>
inline U32<N> rowOffset(F32<N> x) {
    const U32<N> bits = asBits(x) & U32<N>(0x7FE00000);
    return clampHighHalves(bits - U32<N>(0x3E600000), 22u << 5) >> 15;  // 64 bytes a row
}

// For a Real32 in wide form.
template <int N>
inline F64<N> erfcOfRow(const Constants32& k, F64<N> wide, const std::uint32_t* offset) {
    const F64<N> sign = wide & U64<N>(k.sign);
    const F64<N> t = asReal(asBits(wide) ^ asBits(sign));

    const F64<N> u = -(t * t);
    const F64<N> v = u * k.log2e128 - k.roundShift;
    const InMemory<std::uint64_t, N> n(asBits(v));
    const F64<N> m = v + k.roundShift;
    const F64<N> r = u - m * k.ln2Over128;
    const U64<N> exponent = ((asBits(v) << 45) & U64<N>(k.exponentField)) + asBits(F64<N>(k.one));
    const F64<N> s = asReal(exponent) | sign;
    const F64<N> q = (((r * k.inv24 + k.inv6) * r + k.half) * r + k.one) * r + k.one;
    const F64<N> e = (q * s) * gatherElementsByLowBits<7>(tables::pow2Fraction32, n);

    const RowPerLane<N> c(tables::erfcRows32, offset);
    const auto [c6, centre] = c.pair(6);
    const auto [c4, c5] = c.pair(4);
    const auto [c2, c3] = c.pair(2);
    const auto [c0, c1] = c.pair(0);
    const F64<N> z = t - centre;
    const F64<N> f = (((((c6 * z + c5) * z + c4) * z + c3) * z + c2) * z + c1) * z + c0;

    const F64<N> base = asReal(asBits(sign) >> 1);  // the pattern of 2 for a negative x, else 0
    return base + f * e;
}

// Register after register: more of them at a time do not find room for their columns.
inline F32<4> erfc(const Constants32& k, F32<4> x) {
    const InMemory<std::uint32_t, 4> offset(rowOffset(x));
    const F64<4> wide = widen(x);
    return narrow(F64<4>(erfcOfRow(k, wide.lowHalf(), offset.lane), erfcOfRow(k, wide.highHalf(), offset.lane + 2)));
}
inline F32<1> erfc(const Constants32& k, F32<1> x) {
    const std::uint32_t offset = rowOffset(x).raw;
    return narrow(erfcOfRow(k, widen(x), &offset));
}

bool plain32(Real32 x) { return magnitudeBits(x) <= limit32; }

[[gnu::noinline, gnu::cold]] Real32 erfcElement32(Real32 x, OktStatus& status) {
    const std::uint32_t magnitude = magnitudeBits(x);
    const bool negative = isNegative(x);
    if (isNaN(x)) return x * Real32{2};  // quieted
    if (negative && magnitude >= two32) return 2;
    if (!negative && magnitude >= underflow32 && isFinite(x)) status = oktStatusUnderflow;
    if (magnitude > limit32) return 0;
    return erfc(constants32, F32x1(magnitude < tiny32 ? 0 : x)).raw;
}

void erfc32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    const auto tryBlock = [&k](const Real32* from, Real32* to) OKT_INLINE {
        const F32<4> x = F32<4>::load(from);
        if (any(greaterSigned(asBits(x) & U32<4>(0x7FFFFFFF), U32<4>(limit32)))) [[unlikely]]
            return false;
        erfc(k, x).store(to);
        return true;
    };
    const auto main = [&k](Real32 x) { return erfc(k, F32x1(x)).raw; };
    pairLoop<4>(src, dst, len, tryBlock, plain32, main, erfcElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    Constant64 log2e128 = 0x1.71547652b82fep+7;  // 128/ln 2
    Constant64 roundShift = -0x1.8p+52;
    Constant64 ln2Over128Hi = 0x1.62e43p-8;
    Constant64 ln2Over128Lo = -0x1.05c610ca86c39p-36;
    // e^r on |r| <= ln 2/256, relative error 2^-60.6; Taylor.
    Constant64 inv120 = 0x1.1111111111111p-7;
    Constant64 inv24 = 0x1.5555555555555p-5;
    Constant64 inv6 = 0x1.5555555555555p-3;
    Constant64 half = 0.5;
    Constant64 one = 1.0;
    Constant64 two = 2.0;
    Constant64 scaleDown = 0x1p-154;
    Pattern64 scaleUp = std::uint64_t{0x4990000000000000};  // 2^154 over 1
    Pattern64 sign = std::uint64_t{0x8000000000000000};
    Pattern64 exponentField = std::uint64_t{0xFFF0000000000000};
};
constexpr Constants64 constants64;

constexpr std::uint32_t limitHigh64 = 0x403A8B12;          // 26.5432: from here on no ordinary pair
constexpr std::uint32_t lastHigh64 = 0x403B39DC;           // 27.2261
constexpr std::uint32_t tinyHigh64 = 0x3C800000;           // 2^-55, below which the element path gives 1
constexpr std::uint64_t underflow64 = 0x403B39DC41E48BFC;  // 27.226017111108362, above which the result is 0

// The number of the element's row, times 2^18.
template <int N>
inline U32<N> rowNumber(F64<N> x) {
    const U32<N> bits = packHighWords(asBits(x)) & U32<N>(0x7FFC0000);
    return clampHighHalves(bits - U32<N>(0x3FCC0000), 27u << 2);
}

// `offset` and `centreOffset`: the byte offsets of the row, 128 bytes each, and of its centre, 16 bytes each.
template <int N>
inline F64<N> erfcOfRow(const Constants64& k, F64<N> x, const std::uint32_t* offset,
                        const std::uint32_t* centreOffset) {
    const F64<N> sign = x & U64<N>(k.sign);
    const F64<N> t = x ^ sign;

    // -x^2 = u, of which the high part is short.
    const auto [th, tl] = maskSplit(t);
    const F64<N> minusTh = asReal(asBits(th) | U64<N>(k.sign));
    const F64<N> uHi = minusTh * th;
    const F64<N> uLo = F64<N>(k.two) * (minusTh * tl) - tl * tl;
    const auto [uh, rest] = maskSplit(uHi);
    const F64<N> ul = rest + uLo;

    const F64<N> v = uh * k.log2e128 - k.roundShift;
    const InMemory<std::uint64_t, N> n(asBits(v));
    const F64<N> m = v + k.roundShift;
    const F64<N> r = ((uh - m * k.ln2Over128Hi) - m * k.ln2Over128Lo) + ul;

    // 2^k in two factors, the first of which is a normal number for the smallest results too.
    const U64<N> exponent = ((asBits(v) << 45) & U64<N>(k.exponentField)) + U64<N>(k.scaleUp);
    const F64<N> s = (asReal(exponent) | sign) * F64<N>(k.scaleDown);

    const F64<N> p = ((((r * k.inv120 + k.inv24) * r + k.inv6) * r + k.half) * r + k.one) * r;
    const auto [powerHi, powerLo] = gatherPairsByLowBits<7, Real64>(tables::pow2Fraction64, n);
    const F64<N> expLo = p * (powerHi + powerLo) + powerLo;

    const RowPerLane<N> c(tables::erfcRows64, offset);
    const F64<N> z = t - RowPerLane<N>(tables::erfcCentres64, centreOffset)[0];
    const auto [c14, c15] = c.pair(14);
    const auto [c12, c13] = c.pair(12);
    const auto [c10, c11] = c.pair(10);
    const auto [c8, c9] = c.pair(8);
    const auto [c6, c7] = c.pair(6);
    const auto [c4, c5] = c.pair(4);
    const auto [c2, c3] = c.pair(2);
    const auto [c0, c1] = c.pair(0);
    F64<N> a = (((((c15 * z + c14) * z + c13) * z + c12) * z + c11) * z + c10) * z + c9;
    a = (((((a * z + c8) * z + c7) * z + c6) * z + c5) * z + c4) * z;
    const auto [slope, slopeRest] = twoSum(a, c3);
    const auto [fh, fl] = splitStep<N>({slope, slopeRest + c2}, z, c1, c0);

    const auto [fShort, fRest] = maskSplit(fh);
    const F64<N> fLo = fl + fRest;
    const F64<N> hi = (fShort * powerHi) * s;
    const F64<N> lo = (((fLo * expLo) + (fShort * expLo)) + fLo * powerHi) * s;

    const F64<N> base = asReal(asBits(sign) >> 1);  // the pattern of 2 for a negative x, else 0
    const F64<N> sum = base + hi;
    return (lo + ((base - sum) + hi)) + sum;
}

template <int N>
inline F64<N> erfc(const Constants64& k, F64<N> x) {
    const U32<N> row = rowNumber(x);
    const InMemory<std::uint32_t, N> offset(row >> 11), centreOffset(row >> 14);
    return erfcOfRow(k, x, offset.lane, centreOffset.lane);
}

bool plain64(Real64 x) { return (highWord(x) & 0x7FFFFFFF) < limitHigh64; }

[[gnu::noinline, gnu::cold]] Real64 erfcElement64(Real64 x, OktStatus& status) {
    const std::uint32_t high = highWord(x) & 0x7FFFFFFF;
    const bool negative = isNegative(x);
    if (isNaN(x)) return x * x;  // quieted
    if (negative && high >= lastHigh64) return 2;
    if (!negative && magnitudeBits(x) > underflow64 && isFinite(x)) status = oktStatusUnderflow;
    if (high > lastHigh64) return 0;
    return erfc(constants64, F64x1(high < tinyHigh64 ? 0 : x)).raw;
}

void erfc64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    const auto tryBlock = [&k](const Real64* from, Real64* to) OKT_INLINE {
        const F64<8> x = F64<8>::load(from);
        const U32<8> high = packHighWords(asBits(x)) & U32<8>(0x7FFFFFFF);
        if (any(greaterSigned(high, U32<8>(limitHigh64 - 1)))) [[unlikely]]
            return false;
        erfc(k, x).store(to);
        return true;
    };
    const auto main = [&k](Real64 x) { return erfc(k, F64x1(x)).raw; };
    pairLoop<8>(src, dst, len, tryBlock, plain64, main, erfcElement64, status);
}

}  // namespace

OKT_EXPORT(Erfc, 32f, erfc32)
OKT_EXPORT(Erfc, 64f, erfc64)

}  // namespace okt
