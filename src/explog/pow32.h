// x^y on Real32: y ln x in Real64 and e to this power in Real32.
//
// ln x = E ln 2 + ln(mc) + ln(1 + r), where mc is the significand rounded to eight fraction bits, its logarithm and
// reciprocal a table's, and the last term r + s2 r^2 + s3 r^3. The exponential is that of Exp: 2^(j/128) from a table,
// 1 + r + r^2/2. Outside the main range the exponential is one of Real64, so that last bits may differ.
#pragma once

#include "explog/pow_tables.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "tables/power_pairs32.h"

namespace okt::power {
namespace {

struct Constants32 {
    // ln(1 + r) = r + s2 r^2 + s3 r^3 on |r| <= 2^-9, relative error 2^-28.9; fitted, next to -1/2 and 1/3.
    Constant64 s2 = -0x1.fffffffffcaaep-2;
    Constant64 s3 = 0x1.55555555512c8p-2;
    Constant64 ln2 = 0x1.62e42fefa39efp-1;
    Constant64 invLn2x128 = 0x1.71547652b82fep+7;  // 128/ln 2
    Constant64 shift = 0x1.8p+52;                  // the sum's low bits hold an integer
    Constant64 ln2Over128 = 0x1.62e42fefa39efp-8;
    Constant32 half = 0.5F;
    Pattern32 fraction = 0x007FFFFF;
    Pattern32 one = 0x3F800000;
    Pattern32 halfStep = 0x00004000;  // half a unit of the eighth fraction bit
    Pattern32 rounded = 0x00FF8000;   // eight fraction bits and the carry out of them
    Pattern32 tableOffset = 0x00001FF0;
    Pattern32 bias = 127;
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 scaleOfN = ~127u;  // the bits of k
};
constexpr Constants32 constants32;

// High word of the main path's bound on |y ln x|, about 87.334.
constexpr std::uint32_t mainBoundHigh32 = 0x4055D55C;
// High word of 708.396: beyond it the result is zero or infinite.
constexpr std::uint32_t elementBoundHigh32 = 0x4086232B;

// ln x for x = 2^exponent (mc + difference), where offset leads to the table's entry for mc.
template <int N>
inline F64<N> lnFrom(const Constants32& c, F64<N> difference, F64<N> exponent,
                     const InMemory<std::uint32_t, N>& offset) {
    const auto [ln1p, rcp] = gatherPairsAt<1>(tables::PowLn32, offset);
    const F64<N> r = difference * rcp;
    const F64<N> q = ((c.s3 * r + c.s2) * r) * r;
    return (q + r) + (exponent * c.ln2 + ln1p);
}

// ln x for normal positive x. The significand's difference to mc is exact in Real32 already.
template <int N>
inline F64<N> ln(const Constants32& c, F32<N> x) {
    const U32<N> fraction = asBits(x) & c.fraction;
    const U32<N> roundedUp = fraction + c.halfStep;
    const F32<N> mc = asReal((roundedUp & c.rounded) + c.one);
    const F32<N> m = asReal(fraction | c.one);
    const F64<N> exponent = toReal64((asBits(x) >> 23) - c.bias);
    return lnFrom(c, widen(m - mc), exponent, InMemory<std::uint32_t, N>((roundedUp >> 11) & c.tableOffset));
}

// w = n · ln 2/128 + r for |w| within the main bound.
template <int N>
using Multiple32 = InMemory<std::uint32_t, N>;

template <int N>
inline F32<N> reduce(const Constants32& c, F64<N> w, Multiple32<N>& n) {
    const F64<N> t = w * c.invLn2x128 + c.shift;
    n.put(packLowWords(asBits(t)));
    return narrow(w - (t - c.shift) * c.ln2Over128);
}

// e^w. The result is normal, so that the exact product with 2^k is an addition to the exponent field.
template <int N>
inline F32<N> expMain(const Constants32& c, F32<N> r, const Multiple32<N>& n) {
    const auto [hi, lo] = gatherPairsByLowBits<8, Real32>(powerPairs32.pairs, n);
    const F32<N> p = (r * r) * c.half + (r + lo);
    const U32<N> k = (U32<N>(n) & c.scaleOfN) << 16;
    return asReal(asBits(p * hi + hi) + k);
}

// The exponents of a call: an array, or one number for all elements, widened ahead of the loop and known to be finite.
struct ExponentArray32 {
    static constexpr bool vary = true;
    const Real32* src;
    Real32 at(std::ptrdiff_t i) const { return loadElement(src + i); }
    template <int N>
    F64<N> wide(std::ptrdiff_t i) const {
        return widen(F32<N>::load(src + i));
    }
};
struct OneExponent32 {
    static constexpr bool vary = false;
    Real32 y;
    Constant64 widened;
    explicit OneExponent32(Real32 exponent) : y(exponent), widened(exponent) {}
    static bool serves(Real32 y) { return isFinite(y); }
    Real32 at(std::ptrdiff_t) const { return y; }
    template <int N>
    F64<N> wide(std::ptrdiff_t) const {
        return widened;
    }
};

// N powers from element i on up to the reduced argument of the exponential, or false when one is outside the main
// range. Bases and exponents are tested before there is arithmetic on them, infinite exponents with the NaNs, and the
// exponential waits for the test of its argument: an element that takes another course raises no flags here.
template <int N, class Exponents>
OKT_INLINE inline bool beginMain(const Constants32& c, const Real32* src, const Exponents& y, std::ptrdiff_t i,
                                 F32<N>& r, Multiple32<N>& n) {
    const F32<N> x = F32<N>::load(src + i);
    Mask32<N> unfit = outside(asBits(x), 0x00800000, 0x7F7FFFFF);
    if constexpr (Exponents::vary)
        unfit = unfit | greaterSigned(asBits(F32<N>::load(y.src + i)) & c.magnitude, U32<N>(0x7F7FFFFF));
    if (any(unfit)) [[unlikely]]
        return false;
    const F64<N> w = y.template wide<N>(i) * ln(c, x);
    if (any(greaterSigned(packHighWords(asBits(w)) & c.magnitude, U32<N>(mainBoundHigh32)))) [[unlikely]]
        return false;
    r = reduce(c, w, n);
    return true;
}

template <int N, class Exponents>
inline bool tryMain(const Constants32& c, const Real32* src, const Exponents& y, Real32* dst, std::ptrdiff_t i) {
    F32<N> r;
    Multiple32<N> n;
    if (!beginMain<N>(c, src, y, i, r, n)) [[unlikely]]
        return false;
    expMain(c, r, n).store(dst + i);
    return true;
}

// ln a for normal positive a with all the bits of a Real64.
inline Real64 lnOfWide(Real64 a) {
    const std::uint32_t high = highWord(a);
    const Real64 m = bits64((asBits(a) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    // The bits that are set below the rounding place settle every tie.
    const Real64 rounder = 0x1p44;  // its unit in the last place is 2^-8
    const Real64 mc = (bits64(asBits(m) | 0x000003FF00000000) + rounder) - rounder;
    const std::uint32_t offset = ((high & 0x000FFFFF) + 0x800) >> 12 << 4;
    const F64x1 exponent(static_cast<std::int32_t>(high >> 20) - 1023);
    return lnFrom(constants32, F64x1(m - mc), exponent, InMemory<std::uint32_t, 1>(offset)).raw;
}

// e^w, degree three, in Real64.
inline Real64 expOfWide(Real64 w) {
    const Real64 shift = constants32.shift.lane[0];
    const Real64 t = w * constants32.invLn2x128.lane[0] + shift;
    const Real64 r = w - (t - shift) * constants32.ln2Over128.lane[0];
    const auto n = static_cast<std::int32_t>(lowWord(t));
    const std::uint64_t exponentField = static_cast<std::uint32_t>((n >> 7) * 0x100000 + 0x3FF00000);
    const Real64 g = bits64(tables::PowExpMant[n & 127] | exponentField << 32);
    // e^r on |r| <= ln 2/256, relative error 2^-38.6; Taylor.
    constexpr Real64 sixth = 0x1.5555555555555p-3;
    return (((sixth * r + 0.5) * r) * r + r) * g + g;
}

// sign · |x|^y for finite operands other than zero. Rounded to Real32 once, by the conversion, whose flags are all that
// an overflow or underflow leaves.
inline Real32 generalPower(Real32 x, Real32 y, Real64 sign) {
    constexpr Real64 expOf23 = 0x1.226af33b1fdc1p+33;  // e^23, to make normal numbers of subnormal ones
    const std::uint32_t magnitude = magnitudeBits(x);
    const Real64 wide = bits32(magnitude);
    const Real64 lnX = magnitude < 0x00800000 ? lnOfWide(wide * expOf23) - 23.0 : lnOfWide(wide);
    const Real64 w = y * lnX;
    if ((highWord(w) & 0x7FFFFFFF) <= elementBoundHigh32) return static_cast<Real32>(expOfWide(w) * sign);
    const Real64 huge = 0x1.000007f8p+1017;
    return static_cast<Real32>(opaque(w < 0 ? 0.0 : huge) * sign);
}

}  // namespace
}  // namespace okt::power
