// Elements of the inverse of erf that are outside the domain, or so small that the result may be subnormal.
#pragma once

#include "frame/status_flag.h"
#include "lanes/double_double.h"
#include "lanes/pattern.h"

namespace okt::inverse_erf {
namespace {

// |x| >= 1, infinite or a NaN.
template <class T>
T outsideDomain(T x, OktStatus& status) {
    if (isNaN(x)) return x * x;
    T result;
    if (magnitudeBits(x) == Format<T>::one) {
        result = x / opaque(T{0});
        status = oktStatusSingularity;
    } else {
        result = opaque(infinity<T>()) * opaque(T{0});
        status = oktStatusDomain;
    }
    raiseStatusFlag(status);
    return result;
}

constexpr std::uint32_t oneHigh = 0x3FF00000;
constexpr std::uint32_t tailHigh = 0x3FEC0000;    // 0.875
constexpr std::uint32_t middleHigh = 0x3FC00000;  // 0.125
constexpr std::uint32_t smallHigh = 0x3DC00000;   // 2^-35

// The first coefficient of the series with few bits, and the rest of it: sqrt(pi)/2.
constexpr Real64 slopeShort = 0.88623046875;
constexpr Real64 slopeRest = -0x1.db92c4255618fp-19;

// v as its high 16 bits or so, and the rest: the difference of the rounded products drops the lower bits.
template <int N>
inline DoubleDouble<N> shortSplit(F64<N> v) {
    const F64<N> h = v * F64<N>(103079215105.0) - v * F64<N>(103079215104.0);
    return {h, v - h};
}
// The same by cutting the pattern.
template <int N>
inline DoubleDouble<N> cutSplit(F64<N> v) {
    return maskSplit(v, 0xFFFFFFF000000000);
}

// 0 < |x| < 2^-35.
template <class Split>
inline Real64 erfInvTiny(Real64 x, const Split& split) {
    const F64<1> scaled = F64<1>(x) * F64<1>(0x1p256);
    const auto [xh, xl] = split(scaled);
    const F64<1> p1 = F64<1>(slopeShort) * xh;
    const F64<1> p2 = F64<1>(slopeShort) * xl + F64<1>(slopeRest) * scaled;
    const F64<1> v = p1 + p2;
    if ((highWord(v.raw) & 0x7FFFFFFF) >= 0x10100000) return (v * F64<1>(0x1p-256)).raw;

    // Subnormal: an ulp of t is that of the results. The sum with t has the result in its fraction.
    const Real64 small = opaque(Real64{0x1p-1000});
    keepFlags(small * small);  // underflow
    const F64<1> t = F64<1>(0x1p-766) | signOf(F64<1>(x));
    const F64<1> u = split(v + t).hi;
    const F64<1> g = u + ((p1 - (u - t)) + p2);
    return bits64(asBits(g.raw) & 0x800FFFFFFFFFFFFF);
}

}  // namespace
}  // namespace okt::inverse_erf
