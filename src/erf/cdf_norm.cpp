// Phi(x) from L(a) = Phi(-a) with a = |x|: L(a) itself, or 1 - L(a) for a positive x, so that a small result never
// comes from a cancellation. The exponent of (1 + a)^4 is the number of the row of coefficients. The rows from 6 on
// hold the slowly varying L(a) exp(a^2/2), and exp(-x^2/2) is worked apart; polynomial and exponential are
// double-doubles. exp(v) = 2^k · 2^(j/64) · e^r with n = 64 k + j = round(v · 64/ln 2).
//
// An element loop: eight elements that take none of the particular ways are worked side
// by side, by the element's very operations; on Real32 by a shorter formula, where its
// 44 good bits settle the narrowed result. The caller's MXCSR acts on all of it.
//
// Largest errors seen: 0.5001 ulp on Real32, 0.5031 ulp on Real64 at -0x1.73bf3c490ec1fp+3.
//
// GCC: -fschedule-insns -fsched-pressure (0.83)
// GCC: -frename-registers (0.99)
#include "erf/cdf_norm_tables.h"
#include "exports/CdfNorm.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/constant.h"
#include "lanes/double_double.h"
#include "lanes/lookup.h"
#include "lanes/narrowing.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

struct Constants {
    Constant64 one = 1.0;
    Constant64 minusHalf = -0.5;
    Constant64 invLn2x64 = 0x1.71547652b82fep+6;  // 64/ln 2
    Constant64 ln2Over64Hi = 0x1.62e42fefap-7;    // short, so that its product with n is exact
    Constant64 ln2Over64Lo = 0x1.cf79abc9e3b3ap-46;
    Constant64 shift = 0x1.8p+52;
    // e^r = 1 + r + r^2 (a2 + a3 r + ...) on |r| <= ln 2/128, relative error 2^-70.1; a2 is 1/2, the others minimax.
    Constant64 a2 = 0.5;
    Constant64 a3 = 0x1.55555555548f8p-3;
    Constant64 a4 = 0x1.5555555558fccp-5;
    Constant64 a5 = 0x1.111123aaf20d3p-7;
    Constant64 a6 = 0x1.6c16a1c2a3ffdp-10;
    Pattern64 scaleOfN = ~std::uint64_t{63};  // the bits of k
};
constexpr Constants constants;

constexpr Real64 tiny = 0x1.0000000000001p-1022;            // just above 2^-1022
constexpr Real64 startOfSubnormal = -0x1.2c27b05bf1a0bp+5;  // Phi is 2^-1022
constexpr Real64 secondSubnormal = -0x1.2dec104973ddcp+5;   // Phi is 2^-1034

// Where Phi(-x) is half an ulp below 1, and where Phi(x) is half of the smallest subnormal.
template <class T>
constexpr Real64 upperLimit = sizeof(T) == 4 ? 0x1.5ae1p+2 : 0x1.095b059d67c4cp+3;
template <class T>
constexpr Real64 lowerLimit = sizeof(T) == 4 ? -0x1.c57228p+3 : -0x1.33e21dc3f3bd7p+5;

constexpr std::uint32_t tinyHigh = 0x3B900000;  // high word of 2^-70, below which the result is 0.5 + x

constexpr int firstScaledRow = 6;

// (r.hi + r.lo) · 2^(n/64, rounded down): n in the low bits of a pattern.
template <int N>
struct Unscaled {
    DoubleDouble<N> r;
    U64<N> n;
};

// a - c as a pair, and what its powers from the sixth on add to c5.
template <int N>
struct UpperPart {
    DoubleDouble<N> w;
    F64<N> q;
};

template <int N>
[[gnu::always_inline]] inline UpperPart<N> upperPart(F64<N> a, const RowPerLane<N>& c) {
    const auto [w, wl] = twoSum(a, c[0]);
    const auto [c14, c15] = c.pair(22);
    const auto [c12, c13] = c.pair(20);
    const auto [c10, c11] = c.pair(18);
    const auto [c8, c9] = c.pair(16);
    const auto [c6, c7] = c.pair(14);
    F64<N> q = ((((c15 * w + c14) * w + c13) * w + c12) * w + c11) * w + c10;
    q = ((((q * w + c9) * w + c8) * w + c7) * w + c6) * w;
    return {{w, wl}, q};
}

// The row's polynomial, a pair.
template <int N>
[[gnu::always_inline]] inline DoubleDouble<N> tailPolynomial(UpperPart<N> upper, const RowPerLane<N>& c) {
    const auto [wh, rest] = dekkerSplit(upper.w.hi);
    const F64<N> wm = upper.w.lo + rest;
    const auto [c5, c5lo] = c.pair(12);
    const auto [head, l5] = fastTwoSum(c5, upper.q);
    F64<N> h = head;
    F64<N> m = l5 + c5lo;
    for (int i = 4; i >= 0; --i) {
        const auto [hh, hl] = dekkerSplit(h);
        m = m + hl;
        const F64<N> ph = hh * wh;
        const F64<N> pl = (hh + m) * wm + m * wh;
        const auto [ci, cilo] = c.pair(2 + 2 * i);
        const auto [s, l] = fastTwoSum(ci, ph);
        h = s;
        m = (pl + l) + cilo;
    }
    const F64<N> p = h + m;
    return {p, (h - p) + m};
}

// p · exp(-x^2/2), unscaled.
template <int N>
[[gnu::always_inline]] inline Unscaled<N> timesExp(const Constants& k, F64<N> x, DoubleDouble<N> p) {
    const auto [ph, pRest] = dekkerSplit(p.hi);
    const F64<N> pl = p.lo + pRest;

    const auto [xh, xl] = dekkerSplit(x);
    const F64<N> sh = xh * xh;
    const F64<N> sl = ((xl + xh) + xh) * xl;
    const F64<N> v = F64<N>(k.minusHalf) * sh;
    const F64<N> vl = F64<N>(k.minusHalf) * sl;

    const F64<N> y = F64<N>(k.invLn2x64) * v + F64<N>(k.shift);
    const InMemory<std::uint64_t, N> n(asBits(y));
    const F64<N> nk = y - F64<N>(k.shift);
    const F64<N> r0 = v - F64<N>(k.ln2Over64Hi) * nk;  // exact
    const F64<N> t = (F64<N>(0) - nk) * F64<N>(k.ln2Over64Lo);
    const auto [r1, r2] = twoSum(r0, t);
    const auto [r, r3] = twoSum(r1, vl);
    const F64<N> rl = r2 + r3;

    F64<N> u = ((((F64<N>(k.a6) * r + k.a5) * r + k.a4) * r + k.a3) * r + k.a2) * r;
    u = u * r;

    // r dominates, so el is not the exact rest; it is as good as the accuracy wants.
    const F64<N> e = r + u;
    const F64<N> el = (u - e) + r;
    const auto [eh, em] = dekkerSplit(e);
    const F64<N> lo = (rl + em) + el;

    const auto [powerHi, powerLo] = gatherPairsByLowBits<6, Real64>(tables::cdfPow2, n);
    const F64<N> pth = powerHi * eh;
    const F64<N> ptl = (eh + lo) * powerLo + powerHi * lo;
    const auto [s, l] = twoSum(pth, powerHi);
    const auto [shortS, sm] = dekkerSplit(s);
    const F64<N> mlo = ((l + powerLo) + ptl) + sm;

    return {{ph * shortS, (ph + pl) * mlo + pl * shortS}, asBits(y)};
}

template <int N>
inline F64<N> scaleOf(const Constants& k, U64<N> n) {
    return asReal(((n & U64<N>(k.scaleOfN)) << 46) + asBits(F64<N>(k.one)));
}

template <int N>
inline U32<N> rowNumber(const Constants& k, F64<N> a) {
    F64<N> t = F64<N>(k.one) + a;
    t = t * t;
    t = t * t;
    return (packHighWords(asBits(t)) >> 20) - U32<N>(0x3FF);
}

// 1 - r · scale, where r · scale is small.
template <int N>
inline F64<N> fromOne(const Constants& k, DoubleDouble<N> r, F64<N> scale) {
    const F64<N> minusScale = -scale;
    const auto [s, l] = fastTwoSum(F64<N>(k.one), r.hi * minusScale);
    const auto [s2, l2] = twoSum(s, r.lo * minusScale);
    return s2 + (l + l2);
}

// Phi(x) from r · scale = L(a).
template <int N>
inline F64<N> fromTail(const Constants& k, F64<N> x, DoubleDouble<N> r, F64<N> scale) {
    const Mask64<N> negative = x < F64<N>(0);
    if (all(negative)) return (r.hi + r.lo) * scale;
    return select(negative, (r.hi + r.lo) * scale, fromOne(k, r, scale));
}

// The byte offset of row e: 192 bytes a row.
template <int N>
inline U32<N> rowOffset(U32<N> e) {
    return (e << 7) + (e << 6);
}

template <int N>
inline Mask32<N> isScaled(U32<N> e) {
    return greaterSigned(e, U32<N>(firstScaledRow - 1));
}

// Elements without anything particular, results that are normal numbers in Real64.
template <int N>
inline F64<N> cdfNorm(const Constants& k, F64<N> x) {
    const F64<N> a = abs(x);
    const U32<N> e = rowNumber(k, a);
    const InMemory<std::uint32_t, N> offset(rowOffset(e));
    const RowPerLane<N> c(tables::cdfRows, offset.lane);
    DoubleDouble<N> r = tailPolynomial(upperPart(a, c), c);
    F64<N> scale(k.one);
    const Mask64<N> scaled = widen(isScaled(e));
    if (any(scaled)) {
        const auto product = timesExp(k, x, r);
        r.hi = select(scaled, product.r.hi, r.hi);
        r.lo = select(scaled, product.r.lo, r.lo);
        scale = select(scaled, scaleOf(k, product.n), scale);
    }
    return fromTail(k, x, r, scale);
}

// lowerLimit <= x < startOfSubnormal: worked at 2^200 times the size.
Real64 subnormalCdfNorm(Real64 x) {
    const F64x1 a(-x);
    const U32<1> e = rowNumber(constants, a);
    const InMemory<std::uint32_t, 1> offset(rowOffset(e));
    const RowPerLane<1> c(tables::cdfRows, offset.lane);
    const auto [r, n] = timesExp(constants, F64x1(x), tailPolynomial(upperPart(a, c), c));
    const auto k = static_cast<std::int32_t>(static_cast<std::uint32_t>(n.raw)) >> 6;
    const F64x1 scale(bits64(static_cast<std::uint64_t>((k + 1023 + 200) & 0x7FF) << 52));
    const F64x1 rh = r.hi * scale;
    const F64x1 rl = r.lo * scale;
    if (x < secondSubnormal) {
        const Real64 t = ((rh + rl) * F64x1(0x1p-200)).raw;
        return t + t * t;  // the square rounds away, and raises underflow
    }
    const auto [s, lo] = fastTwoSum(rh, rl);
    const auto [sh, sm] = dekkerSplit(s);
    return (sh * F64x1(0x1p-200) + (lo + sm) * F64x1(0x1p-200)).raw;
}

// A finite element, in Real64 for both types. False: the result has underflowed.
template <class T>
bool cdfNormFinite(Real64 x, Real64& result) {
    if (biasedExponent(x) < static_cast<int>(tinyHigh >> 20)) {
        result = 0.5 + x;
    } else if (x > upperLimit<T>) {
        result = 1.0 - opaque(tiny);  // inexact
    } else if (x < lowerLimit<T>) {
        result = opaque(tiny) * tiny;  // +0, raises underflow
        return false;
    } else if (sizeof(T) == 8 && x < startOfSubnormal) {
        result = subnormalCdfNorm(x);
    } else {
        result = cdfNorm(constants, F64x1(x)).raw;
    }
    return true;
}

template <class T>
[[gnu::noinline]] T cdfNormElement(T x, OktStatus& status) {
    if (isNaN(x)) return x * x;
    if (isInfinite(x)) return isNegative(x) ? T{0} : T{1};
    Real64 result;
    if (!cdfNormFinite<T>(static_cast<Real64>(x), result)) {
        status = oktStatusUnderflow;
        raiseStatusFlag(status);
    }
    return static_cast<T>(result);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32 by the shorter formula: L(a) = G(a) exp(-x^2/2) in plain Real64, G by sixteen polynomials a binade of 1 + a.
// The relative error is below 2^-44.

struct ShortConstants {
    Constant64 one = 1.0;
    Constant64 minusHalf = -0.5;
    Constant64 n = -0x1.71547652b82fep+5;  // -32/ln 2
    Constant64 shift = 0x1.8p+52;
    Constant64 ln2Over64Hi = 0x1.62e42fefap-7;
    Constant64 ln2Over64Lo = 0x1.cf79abc9e3b3ap-46;
    // The same on |r| <= ln 2/64, which r reaches when n is not the nearest, relative error 2^-51.6; fitted.
    Constant64 a2 = 0x1.fffffffff57e9p-2;
    Constant64 a3 = 0x1.555555554953bp-3;
    Constant64 a4 = 0x1.5555accc1f4b7p-5;
    Constant64 a5 = 0x1.11115c09302fp-7;
    Pattern64 scaleOfN = ~std::uint64_t{63};
    Pattern64 rowStart = 0xFFFF000000000000;
    Pattern32 upperWordOfOne = 0x3FF00000;
    Pattern32 rowBits = 0x0FC0;
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 upperLimit = 0x40AD7080;
    Pattern32 furtherDown = 0x414E6666 - 0x40AD7080;  // to -12.9, where the result is still normal
    NarrowingMargin margin{1 << 11};
};
constexpr ShortConstants shortConstants;

// 2^(j/64), four times over, as the low byte of n numbers an entry.
struct ShortPowers {
    alignas(64) Real64 entry[256];
    constexpr ShortPowers() : entry() {
        for (int i = 0; i < 256; ++i) entry[i] = tables::cdfPow2[2 * (i % 64)] + tables::cdfPow2[2 * (i % 64) + 1];
    }
};
constexpr ShortPowers shortPowers;

template <int N>
inline F64<N> cdfNormShort(const ShortConstants& k, F64<N> x) {
    const F64<N> t = abs(x) + k.one;
    const InMemory<std::uint32_t, N> offset(((packHighWords(asBits(t)) - k.upperWordOfOne) >> 10) & k.rowBits);
    const RowPerLane<N> row(tables::cdfShortRows, offset.lane);
    const F64<N> d = t - (t & U64<N>(k.rowStart));

    const F64<N> square = x * x;
    const F64<N> y = square * k.n + k.shift;
    const InMemory<std::uint64_t, N> n(asBits(y));
    const F64<N> nk = y - k.shift;
    const F64<N> r = (square * k.minusHalf - nk * k.ln2Over64Hi) - nk * k.ln2Over64Lo;
    const F64<N> e = (((r * k.a5 + k.a4) * r + k.a3) * r + k.a2) * (r * r) + r;

    const auto [c6, c7] = row.pair(6);
    const auto [c4, c5] = row.pair(4);
    const auto [c2, c3] = row.pair(2);
    const auto [c0, c1] = row.pair(0);
    const F64<N> g = ((((((c7 * d + c6) * d + c5) * d + c4) * d + c3) * d + c2) * d + c1) * d + c0;

    const F64<N> power = gatherElementsByLowBits<8>(shortPowers.entry, n);
    const F64<N> product = (e * power + power) * g;
    const F64<N> tail = asReal(asBits(product) + ((U64<N>(n) & k.scaleOfN) << 46));
    return select(x < F64<N>(0), tail, F64<N>(k.one) - tail);
}

// Works eight elements, or nothing where one of them is out of range or not settled.
inline bool shortBlock(const ShortConstants& k, const Real32* from, Real32* to) {
    const F32<8> x = F32<8>::load(from);
    const U32<8> bits = asBits(x);
    const U32<8> limit = U32<8>(k.upperLimit) + (shiftRightSigned(bits, 31) & k.furtherDown);
    if (any(greaterSigned(bits & k.magnitude, limit))) [[unlikely]]
        return false;
    const F64<8> result = cdfNormShort(k, widen(x));
    if (!k.margin.settlesAll(result)) [[unlikely]]
        return false;
    narrow(result).store(to);
    return true;
}

void cdfNorm32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const ShortConstants& k = inMemory(shortConstants);
    const auto tryBlock = [&k](const Real32* from, Real32* to) OKT_INLINE { return shortBlock(k, from, to); };
    packedElementLoop<8>(src, dst, len, tryBlock, cdfNormElement<Real32>, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64.

// Elements that can be worked side by side: 2^-70 <= |x|, and x between the limits. The lower one
// is -35, as the formula for positive elements, which is worked for all lanes, must not underflow.
inline bool allOrdinary(F64<8> x) {
    const U32<8> bits = packHighWords(asBits(x));
    const U32<8> magnitude = bits & U32<8>(0x7FFFFFFF);
    constexpr std::uint32_t upper = 0x402095AF, lower = 0x40417FFF;
    const U32<8> limit = U32<8>(upper) + (shiftRightSigned(bits, 31) & U32<8>(lower - upper));
    return !any(greaterSigned(U32<8>(tinyHigh), magnitude) | greaterSigned(magnitude, limit));
}

// A chunk of ordinary elements, up to 16 blocks, by loops of short steps, so that the processor
// has many chains at hand; the exponential is worked for those elements alone that need it.
constexpr std::int32_t chunkLength = 128;
constexpr int block = 8;

struct Chunk {
    alignas(16) std::uint32_t offset[chunkLength];
    alignas(16) Real64 w[chunkLength];
    alignas(16) Real64 wl[chunkLength];
    alignas(16) Real64 q[chunkLength];
    alignas(16) Real64 hi[chunkLength];
    alignas(16) Real64 lo[chunkLength];
    alignas(16) Real64 scale[chunkLength];
    std::uint8_t scaled[chunkLength + block];  // places
};

[[gnu::noinline]] int findRows(const Constants& k, const Real64* x, int count, Chunk& chunk) {
    int scaledCount = 0;
    for (int i = 0; i < count; i += block) {
        const U32<block> e = rowNumber(k, abs(F64<block>::load(x + i)));
        rowOffset(e).store(chunk.offset + i);
        F64<block>(k.one).store(chunk.scale + i);
        for (int lane = 0, bits = laneBits(isScaled(e)); lane < block; ++lane) {
            chunk.scaled[scaledCount] = static_cast<std::uint8_t>(i + lane);
            scaledCount += bits >> lane & 1;
        }
    }
    return scaledCount;
}

[[gnu::noinline]] void upperParts(const Real64* x, int count, Chunk& chunk) {
    for (int i = 0; i < count; i += block) {
        const RowPerLane<block> c(tables::cdfRows, chunk.offset + i);
        const auto [w, q] = upperPart(abs(F64<block>::load(x + i)), c);
        w.hi.store(chunk.w + i);
        w.lo.store(chunk.wl + i);
        q.store(chunk.q + i);
    }
}

[[gnu::noinline]] void tails(int count, Chunk& chunk) {
    for (int i = 0; i < count; i += block) {
        const RowPerLane<block> c(tables::cdfRows, chunk.offset + i);
        const UpperPart<block> upper{{F64<block>::load(chunk.w + i), F64<block>::load(chunk.wl + i)},
                                     F64<block>::load(chunk.q + i)};
        const auto [hi, lo] = tailPolynomial(upper, c);
        hi.store(chunk.hi + i);
        lo.store(chunk.lo + i);
    }
}

[[gnu::noinline]] void scaleTails(const Constants& k, const Real64* x, int count, Chunk& chunk) {
    for (int i = 0; i < block; ++i) chunk.scaled[count + i] = chunk.scaled[count - 1];
    for (int i = 0; i < count; i += block) {
        const std::uint8_t* place = chunk.scaled + i;
        const DoubleDouble<block> r{gatherElementsAtPlaces<block>(chunk.hi, place),
                                    gatherElementsAtPlaces<block>(chunk.lo, place)};
        const auto product = timesExp(k, gatherElementsAtPlaces<block>(x, place), r);
        scatterElementsToPlaces<block>(chunk.hi, place, product.r.hi);
        scatterElementsToPlaces<block>(chunk.lo, place, product.r.lo);
        scatterElementsToPlaces<block>(chunk.scale, place, scaleOf(k, product.n));
    }
}

[[gnu::noinline]] void finishTails(const Constants& k, const Real64* x, int count, const Chunk& chunk, Real64* dst) {
    for (int i = 0; i < count; i += block) {
        const DoubleDouble<block> r{F64<block>::load(chunk.hi + i), F64<block>::load(chunk.lo + i)};
        fromTail(k, F64<block>::load(x + i), r, F64<block>::load(chunk.scale + i)).store(dst + i);
    }
}

bool cdfNormChunk(const Constants& k, const Real64* src, int count, Real64* dst) {
    bool ordinary = true;
    for (int i = 0; i < count; i += block) ordinary &= allOrdinary(F64<block>::load(src + i));
    if (!ordinary) [[unlikely]]
        return false;
    Chunk chunk;
    const int scaled = findRows(k, src, count, chunk);
    upperParts(src, count, chunk);
    tails(count, chunk);
    if (scaled != 0) scaleTails(k, src, scaled, chunk);
    finishTails(k, src, count, chunk, dst);
    return true;
}

void cdfNorm64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants& k = inMemory(constants);
    const auto tryBlock = [&k](const Real64* from, Real64* to) OKT_INLINE {
        const F64<8> x = F64<8>::load(from);
        if (!allOrdinary(x)) [[unlikely]]
            return false;
        cdfNorm(k, x).store(to);
        return true;
    };
    const auto blocks = [&](std::int32_t from, std::int32_t count) {
        packedElementLoop<8>(src + from, dst + from, count, tryBlock, cdfNormElement<Real64>, status);
    };
    std::int32_t i = 0;
    if (!smearsForward(src, dst, len, chunkLength)) [[likely]]
        for (std::int32_t count; i <= len - 2 * block; i += count) {
            count = len - i < chunkLength ? (len - i) / block * block : chunkLength;
            if (!cdfNormChunk(k, src + i, count, dst + i)) [[unlikely]]
                blocks(i, count);
        }
    blocks(i, len - i);
}

}  // namespace

OKT_EXPORT(CdfNorm, 32f, cdfNorm32)
OKT_EXPORT(CdfNorm, 64f, cdfNorm64)

}  // namespace okt
