// e^x = 2^k · 2^(j/M) · e^r with n = M k + j = round(x · M/ln 2) and r = x - n · ln 2/M; M = 128 on
// Real32, 64 on Real64. n comes from adding 1.5·2^p, which leaves it in the low bits of the sum; 2^(j/M)
// is a table's pair hi, lo. Real32: 1 + r + r^2/2. Real64: a polynomial of degree 5 close to e^r.
//
// Largest errors, on Real32 of all elements, on Real64 of those seen:
//   Real32  0.5683 ulp at 0x1.3bef32p+6; subnormal results 0.5137 ulp at -0x1.5db9dap+6; 1.0 ulp where the smallest
//           subnormals are given as zero, below -103.27893829345703
//   Real64  0.5265 ulp at -0x1.ee85d2881e58p-5; subnormal results 0.7563 ulp
//
// GCC: -fschedule-insns -fsched-pressure (1.00)
#include "exports/Exp.h"
#include "explog/exp_tables.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "tables/power_pairs32.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Constants32 {
    Constant32 invLn2x128 = 0x1.715476p+7F;  // 128/ln 2
    Constant32 shift32 = 0x1.6p+23F;         // an integer multiple of 128 whose unit in the last place is 1
    Constant32 ln2Over128Hi = 0x1.63p-8F;    // nine bits, so that its product with n is exact
    Constant32 ln2Over128Lo = -0x1.bd0106p-20F;
    Constant32 half = 0.5F;  // e^r = 1 + r + r^2/2 on |r| <= ln 2/256, relative error 2^-28.1; Taylor
};
constexpr Constants32 constants32;

constexpr std::uint32_t boundLow32 = 0x42AEAC50;       // 87.3365478515625, the main path's bound on the magnitude
constexpr std::uint32_t overflow32 = 0x42B17218;       // 88.72283935546875
constexpr std::uint32_t underflowZero32 = 0xC2CE8ED1;  // -103.27893829345703

// x = n · ln 2/128 + r.
template <int N>
using Multiple32 = InMemory<std::uint32_t, N>;

template <int N>
inline F32<N> reduce(const Constants32& c, F32<N> x, Multiple32<N>& n) {
    n.put(asBits(x * c.invLn2x128 + c.shift32));
    const F32<N> m = asReal(U32<N>(n)) - c.shift32;
    return (x - m * c.ln2Over128Hi) - m * c.ln2Over128Lo;
}

// e^x without the scale 2^k; the low seven bits of n are j, those above are k.
template <int N>
inline F32<N> unscaled(const Constants32& c, F32<N> r, const Multiple32<N>& n) {
    const auto [hi, lo] = gatherPairsByLowBits<8, Real32>(powerPairs32.pairs, n);
    const F32<N> p = (r * r) * c.half + (lo + r);
    return p * hi + hi;
}

// For a normal result: the product with 2^k is exact, so k may be added to the exponent field as an integer.
template <int N>
inline F32<N> scaled(F32<N> u, const Multiple32<N>& n) {
    const U32<N> k = (U32<N>(n) & U32<N>(~127u)) << 16;
    return asReal(asBits(u) + k);
}

// Subnormal results in Real64, so that narrowing is the only rounding: 2^v = 2^n · 2^r with v = x · log2 e.
Real32 expSubnormal(Real32 x) {
    constexpr Real64 log2e = 0x1.71547652b82fep+0;
    constexpr Real64 shift = 0x1.8p+52;
    // 2^r on |r| <= 1/2, relative error 2^-29.0; minimax.
    constexpr Real64 a0 = 0x1.00000002614ffp+0;
    constexpr Real64 a1 = 0x1.62e430c7e922cp-1;
    constexpr Real64 a2 = 0x1.ebfbdadcb0ca8p-3;
    constexpr Real64 a3 = 0x1.c6aed4b951dp-5;
    constexpr Real64 a4 = 0x1.3b2dbbc0f45aep-7;
    constexpr Real64 a5 = 0x1.5f456a8a729ecp-10;
    constexpr Real64 a6 = 0x1.41d33371366f6p-13;

    const Real64 v = static_cast<Real64>(x) * log2e;
    const Real64 t = v + shift;
    const Real64 r = v - (t - shift);
    const Real64 scale = bits64((asBits(t) + 0x3FF) << 52);
    const Real64 s = r * r;
    const Real64 even = ((a6 * s + a4) * s + a2) * s;
    const Real64 odd = ((a5 * s + a3) * s + a1) * r + a0;
    return static_cast<Real32>((even + odd) * scale);
}

[[gnu::noinline, gnu::cold]] Real32 expElement32(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    const bool negative = isNegative(x);
    if (isNaN(x)) return x + x;  // quieted, sign and payload kept
    if (isInfinite(x)) return negative ? Real32{0} : x;
    Multiple32<1> n;
    const auto unscaledPower = [&] { return unscaled(constants32, reduce(constants32, F32x1(x), n), n); };
    if (magnitudeBits(x) < boundLow32) return scaled(unscaledPower(), n).raw;
    if (!negative) {
        if (b >= overflow32) {
            status = oktStatusOverflow;
            const Real32 huge = opaque(0x1p127F);
            return huge * huge;  // +Inf, raises overflow
        }
        const Real32 u = unscaledPower().raw;
        const std::uint32_t scale = ((n.lane[0] >> 7) + 127) << 23;
        if (scale <= 0x7F000000) return u * bits32(scale);
        return u * 0x1p127F * Real32{2};  // 2^128 is no Real32
    }
    status = oktStatusUnderflow;
    if (b >= underflowZero32) {
        const Real32 tiny = opaque(0x1p-126F);
        return tiny * tiny;  // +0, raises underflow
    }
    return expSubnormal(x);
}

void exp32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32* const c = &inMemory(constants32);
    const auto begin = [=](std::ptrdiff_t i, F32<8>& r, Multiple32<8>& n) OKT_INLINE {
        const F32<8> x = F32<8>::load(src + i);
        const U32<8> magnitude = asBits(x) & U32<8>(0x7FFFFFFF);
        if (any(greaterSigned(magnitude, U32<8>(boundLow32 - 1)))) [[unlikely]]
            return false;
        r = reduce(*c, x, n);
        return true;
    };
    const auto finish = [=](std::ptrdiff_t i, F32<8> r, const Multiple32<8>& n) OKT_INLINE {
        const F32<8> u = unscaled(*c, r, n);
        scaled(u, n).store(dst + i);
    };
    redoBlockAhead<8, F32<8>, Multiple32<8>>(src, dst, len, begin, finish, expElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    Constant64 invLn2x64 = 0x1.71547652b82fep+6;  // 64/ln 2
    Constant64 shift64 = 0x1.8p+52;
    Constant64 ln2Over64Hi = 0x1.62e42fefp-7;  // short, so that its product with n is exact
    Constant64 ln2Over64Lo = 0x1.473de6af278edp-40;
    // e^r = 1 + r + r^2 (c2 + c3 r + ...) on |r| <= ln 2/128, absolute error 2^-59.2; minimax on |r| <= 0.0055.
    Constant64 c2 = 0x1.fffffffffd97cp-2;
    Constant64 c3 = 0x1.55555555542a1p-3;
    Constant64 c4 = 0x1.555574bc3a1bep-5;
    Constant64 c5 = 0x1.1111276409c2cp-7;
    Pattern64 scaleOfN = ~std::uint64_t{63};  // the bits of k
};
constexpr Constants64 constants64;

// The table's columns, four times over: the low byte of n, with two bits of k in it, numbers an entry.
struct PowerColumns64 {
    alignas(64) Real64 hi[256], lo[256];
    constexpr PowerColumns64() : hi(), lo() {
        for (int i = 0; i < 256; ++i) {
            hi[i] = tables::Exp64Table[2 * (i % 64)];
            lo[i] = tables::Exp64Table[2 * (i % 64) + 1];
        }
    }
};
constexpr PowerColumns64 powerColumns64;

constexpr std::uint32_t boundHigh64 = 0x4086232B;           // high word of 708.39599609375
constexpr Real64 zeroBound64 = -0x1.74910d52d3052p+9;       // ln 2^-1075
constexpr Real64 subnormalBound64 = -0x1.6232bdd7abcd3p+9;  // ln 2^-1022
constexpr Real64 overflow64 = 0x1.62e42fefa39fp+9;
constexpr Real64 topBinade64 = 0x1.62e37e7d8ba72p+9;  // 1024 ln 2 - ln 2/128: k is 1024 from here on

// x = n · ln 2/64 + r.
template <int N>
using Multiple64 = InMemory<std::uint64_t, N>;

template <int N>
inline F64<N> reduce(const Constants64& c, F64<N> x, Multiple64<N>& n) {
    n.put(asBits(x * c.invLn2x64 + c.shift64));
    const F64<N> m = asReal(U64<N>(n)) - c.shift64;
    return (x - m * c.ln2Over64Hi) - m * c.ln2Over64Lo;
}

// e^x without the scale 2^k; the low six bits of n are j, those above are k.
template <int N>
inline F64<N> unscaled(const Constants64& c, F64<N> r, const Multiple64<N>& n) {
    const F64<N> q = ((r * c.c5 + c.c4) * r + c.c3) * r + c.c2;
    const F64<N> p = r + q * (r * r);
    const F64<N> hi = gatherElementsByLowBits<8>(powerColumns64.hi, n);
    const F64<N> lo = gatherElementsByLowBits<8>(powerColumns64.lo, n);
    return (p * (hi + lo) + lo) + hi;
}

template <int N>
inline F64<N> scaled(const Constants64& c, F64<N> u, const Multiple64<N>& n) {
    return asReal(asBits(u) + ((U64<N>(n) & c.scaleOfN) << 46));
}

// The k of the element's power of two.
std::int32_t exponentOf(const Multiple64<1>& n) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(n.lane[0])) >> 6;
}

// No operation touches a NaN or a value whose result is zero or infinite: no flag is raised for them.
[[gnu::noinline, gnu::cold]] Real64 expElement64(Real64 x, OktStatus& status) {
    if (isNaN(x)) return bits64(~std::uint64_t{0});
    if (isInfinite(x)) return isNegative(x) ? Real64{0} : x;
    if (x <= zeroBound64) {
        status = oktStatusUnderflow;
        return 0;
    }
    if (x >= overflow64) {
        status = oktStatusOverflow;
        return infinity<Real64>();
    }
    Multiple64<1> n;
    const F64x1 r = reduce(constants64, F64x1(x), n);
    const Real64 u = unscaled(constants64, r, n).raw;
    if (x <= subnormalBound64) {
        status = oktStatusUnderflow;
        return (u * powerOfTwo<Real64>(exponentOf(n) + 1022)) *
               smallestNormal<Real64>();  // rounded once, by the last factor 2^-1022
    }
    if (x >= topBinade64) return (u * 0x1p1023) * Real64{2};  // 2^1024 is no Real64
    return u * powerOfTwo<Real64>(exponentOf(n));
}

void exp64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& c = inMemory(constants64);
    const auto tryBlock = [&c](const Real64* from, Real64* to) {
        const F64<8> x = F64<8>::load(from);
        const U32<8> high = packHighWords(asBits(x)) & U32<8>(0x7FFFFFFF);
        if (any(greaterSigned(high, U32<8>(boundHigh64 - 1)))) [[unlikely]]
            return false;
        Multiple64<8> n;
        const F64<8> r = reduce(c, x, n);
        scaled(c, unscaled(c, r, n), n).store(to);
        return true;
    };
    redoBlock<8>(src, dst, len, tryBlock, expElement64, status);
}

}  // namespace

OKT_EXPORT(Exp, 32f, exp32)
OKT_EXPORT(Exp, 64f, exp64)

}  // namespace okt
