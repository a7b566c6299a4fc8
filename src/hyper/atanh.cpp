// Inverse hyperbolic tangent.
//
// Real32, wholly in Real32: up to 0.75 an odd polynomial in t = (a - c)/(1 - a c) around the point c = 0 or 0.6875, and
// from there on half the logarithm of (1 + a)/(1 - a) = 1 + 2a/(1 - a).
// Real64: half the logarithm of (1 + a)/(1 - a) as head and tail by one division; below 0.0625 an odd polynomial.
// Every element takes the same steps, in lanes and alone.
//
// Largest errors: Real32 0.9294 ulp at 0x1.80b1f4p-1 (0.9244 at 0x1.33463ep-1 in the polynomial's part; all elements
// tried); Real64 0.515 ulp seen.
//
// GCC: -fschedule-insns -fsched-pressure (0.96)
#include "exports/Atanh.h"
#include "hyper/inverse_hyper.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// (atanh t - t)/t^3 in t^2 on |t| <= 0.6, relative error of atanh 2^-26.9; fitted. Highest term first.
constexpr Real32 centralPolynomial[] = {0x1.2c5a7cp-2F, -0x1.7cc586p-4F, 0x1.3134dap-3F, 0x1.9c7da6p-4F,
                                        0x1.269014p-3F, 0x1.998354p-3F,  0x1.55558p-2F};
// ln(1 + f)/2f on 1/sqrt 2 <= 1 + f < sqrt 2, relative error 2^-27.1; fitted. Highest term first.
constexpr Real32 logarithmPolynomial[] = {
    -0x1.3d27e4p-5F, 0x1.0c3a2ap-4F,  -0x1.102bfp-4F, 0x1.21e816p-4F,  -0x1.53fb58p-4F,
    0x1.99a97cp-4F,  -0x1.000518p-3F, 0x1.555548p-3F, -0x1.fffff6p-3F, 0.5F};
constexpr Real32 atanhCentre = 0.6875f;
constexpr Real32 atanhHead = 0x1.afb7d8p-1F;  // atanh 0.6875
constexpr Real32 atanhTail = -0x1.f9a104p-27F;
constexpr Real32 halfLn2Head = 0x1.62e4p-2F;
constexpr Real32 halfLn2Tail = 0x1.7f7d1cp-21F;
constexpr std::uint32_t atanhLimit1 = 0x3F19999A;  // 0.6
constexpr std::uint32_t atanhLimit2 = 0x3F400000;  // 0.75
constexpr std::uint32_t one32 = 0x3F800000;
constexpr std::uint32_t logCarry = 0x004AFB0D;  // carries a significand above 1.4142 into the exponent's lowest bit

template <std::size_t terms, class V>
inline V horner(const Real32 (&coefficients)[terms], V x) {
    V sum = V(coefficients[0]) * x + V(coefficients[1]);
    for (std::size_t i = 2; i < terms; ++i) sum = sum * x + V(coefficients[i]);
    return sum;
}

// For a below 0.75.
template <int N>
inline F32<N> atanhCentral(F32<N> a) {
    const auto mid = greaterSigned(asBits(a), U32<N>(atanhLimit1));
    const F32<N> c = zeroUnless(mid, F32<N>(atanhCentre));
    const F32<N> t = (c - a) / (a * c - F32<N>(1.0f));
    const F32<N> z = t * t;
    const F32<N> p = horner(centralPolynomial, z);
    return ((p * z) * t + t) + zeroUnless(mid, F32<N>(atanhTail)) + zeroUnless(mid, F32<N>(atanhHead));
}

// For a from 0.75 on, below 1.
template <int N>
inline F32<N> atanhLogarithm(F32<N> a) {
    const F32<N> doubled = asReal(asBits(a) + U32<N>(0x00800000));
    const F32<N> y = doubled / (F32<N>(1.0f) - a) + F32<N>(1.0f);
    const U32<N> exponent = asBits(y) & U32<N>(0x7F800000);
    const U32<N> m = asBits(y) & U32<N>(0x007FFFFF);
    const U32<N> carry = (m + U32<N>(logCarry)) & U32<N>(0x00800000);
    const F32<N> k = toReal32(shiftRightSigned((exponent - U32<N>(one32)) + carry, 23));
    const F32<N> f = asReal(m | (carry ^ U32<N>(one32))) - F32<N>(1.0f);
    const F32<N> q = horner(logarithmPolynomial, f);
    return (q * f + k * F32<N>(halfLn2Tail)) + k * F32<N>(halfLn2Head);
}

template <int N>
inline F32<N> atanhSteps(F32<N> x) {
    const F32<N> a = abs(x);
    const F32<N> central = atanhCentral(a), logarithm = atanhLogarithm(a);
    return select(greaterSigned(U32<N>(atanhLimit2), asBits(a)), central, logarithm) | signOf(x);
}

template <int N>
inline bool anyOutside(F32<N> x) {
    return any(greaterSigned(asBits(abs(x)), U32<N>(one32 - 1)));
}

// Puts right the results of the first lanes that are not inside (-1, 1), in order.
template <int N>
[[gnu::noinline, gnu::cold]] void atanhSpecial(const F32<N>& x, int count, Real32* dst, OktStatus& status) {
    alignas(16) std::uint32_t pattern[N];
    asBits(x).store(pattern);
    for (int i = 0; i < count; ++i) {
        const std::uint32_t b = pattern[i], a = b & ~Format<Real32>::sign;
        if (a < one32) continue;
        if (a > Format<Real32>::infinity) {
            storeBits(dst + i, b);  // a NaN, as it is
        } else if (a == one32) {
            storeBits(dst + i, (b ^ a) | Format<Real32>::infinity);
            status = oktStatusSingularity;
        } else {
            storeBits(dst + i, Format<Real32>::nan);
            status = oktStatusDomain;
        }
    }
}

// Every element takes both parts of the steps, which raise their flags, those of
// 1 and beyond too; the special results replace theirs. An element alone stands
// in all lanes of a register, where no compiler drops the part that is not used.
void atanh32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - 8; i += 8) {
        const F32<8> x = F32<8>::load(src + i);
        atanhSteps(x).store(dst + i);
        if (anyOutside(x)) [[unlikely]]
            atanhSpecial(x, 8, dst + i, status);
    }
    for (; i < len; ++i) {
        const F32<4> x(loadElement(src + i));
        storeElement(dst + i, atanhSteps(x)[0]);
        if (anyOutside(x)) [[unlikely]]
            atanhSpecial(x, 1, dst + i, status);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

using namespace inverse_hyper;

constexpr Real64 smallLimit = 0.0625;
constexpr std::uint32_t tiny64 = 0x3C600000;  // upper word of 2^-57
constexpr std::uint64_t one64 = 0x3FF0000000000000;

// (atanh a - a)/a^3 in a^2 on a <= 1/16, relative error of atanh 2^-62.4; fitted.
constexpr Real64 c0 = 0x1.5555555555575p-2;
constexpr Real64 c1 = 0x1.99999999617f9p-3;
constexpr Real64 c2 = 0x1.24924a261c82p-3;
constexpr Real64 c3 = 0x1.c7186a4ccaf82p-4;
constexpr Real64 c4 = 0x1.7805c0c359672p-4;

template <class V>
inline V atanhSmall(V a) {
    const V z = a * a;
    const V w = z * z;
    const V p = ((V(c4) * z + V(c3)) * w + (V(c2) * z + V(c1))) * z + V(c0);
    return a + (a * z) * p;
}

// With 1 + a = n + aTail and 1 - a = d + dTail: c (1 + a)/(1 - a) - 1 = ((c n - d)
// + (c aTail - dTail))/d to first order in the tails; c n and c n - d are exact.
template <class V>
inline V atanhMain(V a) {
    const V aHead = a & Bits<V>(upperWordMask);
    const V aTail = a - aHead;
    const V n = aHead + V(1.0);
    const V d = V(1.0) - a;
    const V dTail = (V(1.0) - d) - a;
    const V g = V(1.0) / d;
    const auto [k, c, log, logTail] = logRow<V>(n * g);
    const V f = ((c * n - d) + (c * aTail - dTail)) * g;
    const V s = k * V(ln2Head) + log;
    return V(0.5) * (s + (f + ((k * V(ln2Tail) + logTail) + logCurve<V>(f))));
}

template <class V>
inline V atanhSteps64(V x) {
    const V a = abs(x);
    const auto small = a < V(smallLimit);
    V result = atanhMain(a);
    if (any(small)) [[unlikely]]
        result = select(small, atanhSmall(a), result);
    return result | signOf(x);
}

Real64 atanhElement64(Real64 x, OktStatus& status) {
    const std::uint64_t a = magnitudeBits(x);
    if (isNaN(x)) return x + x;  // quieted
    if (a > one64) return outsideDomain<Real64>(status);
    if (a == one64) {
        status = oktStatusSingularity;
        raiseStatusFlag(status);
        return x / opaque(Real64{0});  // an infinity with the sign of x
    }
    if (a >> 32 < tiny64) return x;
    return atanhSteps64(F64<1>(x)).raw;
}

void atanh64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const auto tryBlock = [](const Real64* from, Real64* to) {
        const F64<4> x = F64<4>::load(from);
        const U32<4> a = packHighWords(asBits(abs(x)));
        if (any(greaterSigned(U32<4>(tiny64), a) | greaterSigned(a, U32<4>(0x3FEFFFFF)))) [[unlikely]]
            return false;
        atanhSteps64(x).store(to);
        return true;
    };
    packedElementLoop<4>(src, dst, len, tryBlock, atanhElement64, status);
}

}  // namespace

OKT_EXPORT(Atanh, 32f, atanh32)
OKT_EXPORT(Atanh, 64f, atanh64)

}  // namespace okt
