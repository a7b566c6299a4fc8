// e^x - 1, in Real64 for both types.
//
// From 2^-8 on: e^x = 2^e · 2^(j/128) · e^r with 128 e + j = round(x · 128/ln 2); e^r = Eh + El, where
// Eh, 1 + r to 20 fraction bits, meets the table's head th, of 33 significant bits, in the exact product
// A = th · Eh; the rest is summed in B, and the 1 is subtracted from A + B with the error of the
// difference carried along. Above 40.2 the 1 does not matter any more; below 2^-8 a polynomial in x does.
//
// Real32 drops the correction of r and narrows the result once. It keeps the Real64 limit of the overflow warning.
//
// Largest errors seen:
//   Real32  0.5001 ulp
//   Real64  0.5048 ulp; 1.933 ulp above 40.2, where the parts are summed without compensation
//
// GCC: -fschedule-insns -fsched-pressure (0.92)
#include "exports/Expm1.h"
#include "explog/expm1_tables.h"
#include "explog/packed_element_loop.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

struct Constants {
    Constant64 log2e128 = 0x1.71547652b82fep+7;  // 128/ln 2
    Constant64 shifter = 0x1.8p+52;
    Constant64 ln2Head = 0x1.62e42p-8;  // ln 2/128
    Constant64 ln2Tail = 0x1.fdf473de6af28p-29;
    Constant64 splitAdd = 0x1.00000001p+32;  // 2^32 + 1
    Constant64 splitSub = 0x1p32;
    Constant64 one = 1.0;
    Constant64 half = 0.5;
    // e^r - 1 = r + r^2/2 + r^3 (c3 + c4 r + ...) on |r| <= 2^-8, relative error 2^-61.7; fitted.
    Constant64 c3 = 0x1.5555555555405p-3;
    Constant64 c4 = 0x1.555555555541dp-5;
    Constant64 c5 = 0x1.111116887cd7cp-7;
    Constant64 c6 = 0x1.6c16c87372663p-10;
    Pattern64 roundJ = 64;  // j runs from -64 to 63, so 128 e is the nearest multiple
    Pattern64 scaleBits = ~std::uint64_t{127};
    Pattern64 unit = 0x3FF0000000000000;
    // Ordinary magnitudes, 2^-57 to 36.44183349609375, and the least one of the
    // main path, 2^-8: as Real32 patterns and as upper words of Real64 patterns.
    Pattern32 magnitude = 0x7FFFFFFF;
    WordRange ordinary32{0x23000000, 0x4211C470};
    WordRange ordinary64{0x3C600000, 0x4042388E};
    Pattern32 mainFirst32 = 0x3B800000;
    Pattern32 mainFirst64 = 0x3F700000;
};
constexpr Constants constants;

constexpr Real64 limit = 0x1.62e42fefa39efp+9;  // 709.782712893384, above it e^x overflows
constexpr Real64 huge = 0x1p999;
constexpr Real64 tiny = 0x1p-1000;

// e^r = eh + el; the low bits of w hold 128 e + j.
template <int N>
struct Reduced {
    F64<N> eh, el;
    InMemory<std::uint64_t, N> w;
};

// Corrected: with what the rounding of r lost.
template <bool corrected, int N>
inline Reduced<N> reduce(const Constants& c, F64<N> x) {
    const F64<N> shifted = x * c.log2e128 + c.shifter;
    const InMemory<std::uint64_t, N> w(asBits(shifted));
    const F64<N> kd = shifted - c.shifter;
    const F64<N> h = x - kd * c.ln2Head;
    const F64<N> t = kd * c.ln2Tail;
    const F64<N> r = h - t;
    const F64<N> eh = (r + c.splitAdd) - c.splitSub;
    if constexpr (corrected) {
        const F64<N> rl = (h - r) - t;
        const F64<N> u = r + rl;
        const F64<N> v = u * u;
        const F64<N> rest = v * (u * (v * c.c5 + c.c3) + v * (v * c.c6 + c.c4));
        return {eh, ((r - (eh - c.one)) + rl) + (rest + v * c.half), w};
    } else {
        const F64<N> v = r * r;
        const F64<N> q = v * ((r * (v * c.c5 + c.c3) + c.half) + v * (v * c.c6 + c.c4));
        return {eh, ((r + c.one) - eh) + q, w};
    }
}

// e^x = a + b
template <int N>
struct Parts {
    F64<N> a, b;
};

template <bool corrected, int N>
inline Parts<N> expParts(const Constants& c, F64<N> x) {
    const auto [eh, el, w] = reduce<corrected>(c, x);
    const auto [tl, th] = gatherPairsByLowBits<7, Real64>(tables::expm1Table, w);
    const F64<N> s = asReal((((U64<N>(w) + c.roundJ) & c.scaleBits) << 45) + c.unit);
    return {(th * eh) * s, ((eh + el) * tl + th * el) * s};
}

template <int N>
inline F64<N> minusOne(const Constants& c, Parts<N> e) {
    const F64<N> z = e.a - c.one;
    const F64<N> lost = (z + c.one) - e.a;
    return z + (e.b - lost);
}

template <int N>
inline F64<N> polynomial(const Constants& c, F64<N> x) {
    const F64<N> v = x * x;
    return x + v * ((x * (v * c.c5 + c.c3) + c.half) + v * (v * c.c6 + c.c4));
}

// 86.64 and more in magnitude, infinities and NaNs.
template <bool corrected>
Real64 bigElement(Real64 x, OktStatus& warning) {
    const bool negative = isNegative(x);
    if (!negative && magnitudeBits(x) <= asBits(limit)) {
        const auto [eh, el, w] = reduce<corrected>(constants, F64x1(x));
        const auto [tl, th] = gatherPairsByLowBits<7, Real64>(tables::expm1Table, w);
        const auto e = static_cast<std::int32_t>(static_cast<std::uint32_t>(w.lane[0]) + 64) >> 7;
        const F64x1 sum = (eh + el) * th + (eh + el) * tl;
        const auto scale = powerOfTwo<Real64>(e - 512);  // in two steps, as e may be 1024
        return (sum.raw * scale) * Real64{0x1p512};
    }
    if (isNaN(x)) return x;  // as it stands
    if (isInfinite(x)) return negative ? Real64{-1} : x;
    if (negative) return opaque(Real64{-1}) + tiny;
    warning = oktStatusOverflow;
    return opaque(huge) * opaque(huge);
}

template <bool corrected>
[[gnu::noinline]] Real64 expm1Element(Real64 x, OktStatus& warning) {
    const std::uint32_t ix = highWord(x) & 0x7FFFFFFF;
    if (ix >= 0x4055A92D) return bigElement<corrected>(x, warning);
    if (static_cast<std::int32_t>(highWord(x)) > 0x404419EC) {
        const auto [eh, el, w] = reduce<corrected>(constants, F64x1(x));
        const auto [tl, th] = gatherPairsByLowBits<7, Real64>(tables::expm1Table, w);
        const F64x1 s = asReal((((U64<1>(w) + constants.roundJ) & constants.scaleBits) << 45) + constants.unit);
        return (((el + eh) * th + (eh + el) * tl) * s).raw;
    }
    if (ix >= 0x3F700000) {
        const auto parts = expParts<corrected>(constants, F64x1(x));
        // From 36.4 to 43.1 the 1 is of the size of b.
        if (ix >= 0x4042388E && ix <= 0x404586F1) return (parts.a + (parts.b - constants.one)).raw;
        return minusOne(constants, parts).raw;
    }
    if (ix >= 0x3C600000) return polynomial(constants, F64x1(x)).raw;
    if (isZero(x)) return x;
    return x + opaque(tiny) * opaque(tiny);  // x, inexact and underflow
}

// Ordinary lanes, of which the `small` ones take the polynomial. Either course
// is inexact and raises nothing else, so that the lanes may go through both.
template <bool corrected, int N>
inline F64<N> ordinary(const Constants& c, F64<N> x, Mask64<N> small, bool anySmall) {
    const F64<N> result = minusOne(c, expParts<corrected>(c, x));
    if (anySmall) [[unlikely]]
        return select(small, polynomial(c, x), result);
    return result;
}

void expm1_32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants& c = inMemory(constants);
    const auto tryBlock = [&c](const Real32* from, Real32* to) {
        const F32<8> x = F32<8>::load(from);
        const U32<8> magnitude = asBits(x) & c.magnitude;
        if (!c.ordinary32.holdsAll(magnitude)) [[unlikely]]
            return false;
        const F64<8> wide = widen(x);
        const Mask32<8> small = greaterSigned(U32<8>(c.mainFirst32), magnitude);
        narrow(ordinary<false>(c, wide, widen(small), any(small))).store(to);
        return true;
    };
    const auto element = [](Real32 x, OktStatus& warning) {
        return static_cast<Real32>(expm1Element<false>(static_cast<Real64>(x), warning));
    };
    packedWarningLoop<8>(src, dst, len, tryBlock, element, status);
}

void expm1_64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants& c = inMemory(constants);
    const auto tryBlock = [&c](const Real64* from, Real64* to) {
        const F64<8> x = F64<8>::load(from);
        const U32<8> high = packHighWords(asBits(x)) & c.magnitude;
        if (!c.ordinary64.holdsAll(high)) [[unlikely]]
            return false;
        const Mask32<8> small = greaterSigned(U32<8>(c.mainFirst64), high);
        ordinary<true>(c, x, widen(small), any(small)).store(to);
        return true;
    };
    packedWarningLoop<8>(src, dst, len, tryBlock, expm1Element<true>, status);
}

}  // namespace

OKT_EXPORT(Expm1, 32f, expm1_32)
OKT_EXPORT(Expm1, 64f, expm1_64)

}  // namespace okt
