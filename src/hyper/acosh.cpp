// Inverse hyperbolic cosine: ln(x + sqrt(x^2 - 1)), the sum and the root as head and tail; below 1.0625,
// with t = x - 1, sqrt(2t) times a polynomial in t, from 2^28 on ln x + ln 2. Real32 in Real64, with the
// root and the logarithm of one length. Every element takes the same steps, in lanes and alone.
//
// Largest errors seen: Real32 0.5002 ulp; Real64 0.515 ulp.
//
// GCC: -fschedule-insns -fsched-pressure (0.99)
#include "exports/Acosh.h"
#include "hyper/inverse_hyper.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

using namespace inverse_hyper;

constexpr Real64 smallLimit = 1.0625;

// (acosh(1 + t)/sqrt(2t) - 1)/t in t on t <= 1/16, relative error of acosh 2^-63.2; fitted. The constant term -1/12 is
// divided where it is used, in the caller's rounding mode.
constexpr Real64 c2 = 0x1.3333333333147p-6;
constexpr Real64 c3 = -0x1.6db6db6d6156fp-8;
constexpr Real64 c4 = 0x1.f1c71bfecd52dp-10;
constexpr Real64 c5 = -0x1.6e8b7818c0c1dp-11;
constexpr Real64 c6 = 0x1.1c45756012e6ap-12;
constexpr Real64 c7 = -0x1.c73d6f559c80fp-14;
constexpr Real64 c8 = 0x1.50e16464bfb1bp-15;

template <class V>
inline V acoshSeries(V t) {
    const V w = t * t;
    const V low = (V(c3) + V(c4) * t) * w + (V(-1.0 / 12) + V(c2) * t);
    const V high = (V(c7) + V(c8) * t) * w + (V(c5) + V(c6) * t);
    return (high * (w * w) + low) * t;
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

template <class V>
inline V acoshSteps32(V x) {
    const auto small = x < V(smallLimit);
    V result = lnShort(x + sqrt(x * x - V(1.0)));
    if (any(small)) [[unlikely]] {
        // Other lanes enter the series as zeros: the powers of a large neighbour would overflow.
        const V t = zeroUnless(small, x - V(1.0));
        const V root = sqrt(t + t);
        result = select(small, root + root * acoshSeries(t), result);
    }
    return result;
}

Real32 acoshElement32(Real32 x, OktStatus& status) {
    using F = Format<Real32>;
    if (isNaN(x) || asBits(x) == F::infinity) return x + x;  // a NaN, quieted; +Inf
    if (isNegative(x) || asBits(x) < F::one) return outsideDomain<Real32>(status);
    if (asBits(x) == F::one) return 0;
    return narrow(acoshSteps32(widen(F32<1>(x)))).raw;
}

void acosh32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const auto tryBlock = [](const Real32* from, Real32* to) {
        const F32<8> x = F32<8>::load(from);
        const U32<8> b = asBits(x);
        if (!all(greaterSigned(b, U32<8>(0x3F800000)) & greaterSigned(U32<8>(0x7F800000), b))) [[unlikely]]
            return false;
        narrow(acoshSteps32(widen(x))).store(to);
        return true;
    };
    packedElementLoop<8>(src, dst, len, tryBlock, acoshElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

template <class V>
inline V acoshSmall(V x) {
    const V t = x - V(1.0);  // exact
    const V doubled = t + t;
    const V root = sqrt(doubled);
    const V head = root & Bits<V>(upperWordMask);
    const V tail = root - head;
    const V error = ((doubled - head * head) - tail * (root + head)) / (root + root);
    return root + (error + root * acoshSeries(t));
}

// ln of the argument that stands for x, or the series where x is close to 1.
template <class V>
inline V acoshFrom(V x, V logarithm) {
    const auto small = x < V(smallLimit);
    return any(small) ? select(small, acoshSmall(x), logarithm) : logarithm;
}

constexpr std::uint32_t huge64 = 0x41B00000;  // upper word of 2^28

Real64 acoshElement64(Real64 x, OktStatus& status) {
    using F = Format<Real64>;
    if (isNaN(x) || asBits(x) == F::infinity) return x + x;
    if (isNegative(x) || asBits(x) < F::one) return outsideDomain<Real64>(status);
    if (asBits(x) == F::one) return 0;
    if (highWord(x) >= huge64) return lnOfDouble(x).raw;
    return acoshFrom(F64<1>(x), lnOf(plusRoot<-1>(F64<1>(x)))).raw;
}

// Above 1 and below 2^28. NaNs are sorted out by their bits, before a comparison could raise a flag.
template <int N>
inline bool allInRange(F64<N> x) {
    const U32<N> b = packHighWords(asBits(x));
    return all(greaterSigned(b, U32<N>(0x3FEFFFFF)) & greaterSigned(U32<N>(huge64), b)) && all(x > F64<N>(1.0));
}

bool acoshChunk(const Real64* src, Real64* dst) {
    alignas(16) Real64 head[chunk], tail[chunk];
    for (std::int32_t i = 0; i < chunk; i += 4) {
        const F64<4> x = F64<4>::load(src + i);
        if (!allInRange(x)) [[unlikely]]
            return false;
        const auto argument = plusRoot<-1>(x);
        argument.head.store(head + i);
        argument.tail.store(tail + i);
    }
    for (std::int32_t i = 0; i < chunk; i += 4) {
        const F64<4> logarithm = lnOf<F64<4>>({F64<4>::load(head + i), F64<4>::load(tail + i)});
        acoshFrom(F64<4>::load(src + i), logarithm).store(dst + i);
    }
    return true;
}

bool acoshBlock(const Real64* src, Real64* dst) {
    const F64<4> x = F64<4>::load(src);
    if (!allInRange(x)) [[unlikely]]
        return false;
    acoshFrom(x, lnOf(plusRoot<-1>(x))).store(dst);
    return true;
}

void acosh64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    chunkedElementLoop(src, dst, len, acoshChunk, acoshBlock, acoshElement64, status);
}

}  // namespace

OKT_EXPORT(Acosh, 32f, acosh32)
OKT_EXPORT(Acosh, 64f, acosh64)

}  // namespace okt
