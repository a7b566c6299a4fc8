// Inverse hyperbolic sine: ln(a + sqrt(a^2 + 1)) for a = |x|, the sum and the root as head and tail; below 0.125 an odd
// polynomial, from 2^28 on ln a + ln 2. Real32 in Real64, with the root and the logarithm of one length.
// Every element takes the same steps, in lanes and alone.
//
// Largest errors seen: Real32 0.5003 ulp; Real64 0.515 ulp.
//
// GCC: -fschedule-insns -fsched-pressure (0.99)
#include "exports/Asinh.h"
#include "hyper/inverse_hyper.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

using namespace inverse_hyper;

constexpr Real64 smallLimit = 0.125;

// (asinh a - a)/a^3 in a^2 on a <= 1/8, relative error of asinh 2^-60.8; fitted.
constexpr Real64 c0 = -0x1.555555555551bp-3;
constexpr Real64 c1 = 0x1.333333330facp-4;
constexpr Real64 c2 = -0x1.6db6dafab4472p-5;
constexpr Real64 c3 = 0x1.f1c671225ed56p-6;
constexpr Real64 c4 = -0x1.6e4b04cd3b907p-6;
constexpr Real64 c5 = 0x1.10437f0a10cfbp-6;

template <class V>
inline V asinhSmall(V a) {
    const V z = a * a;
    const V w = z * z;
    const V p = ((V(c5) * z + V(c4)) * w + (V(c3) * z + V(c2))) * w + (V(c1) * z + V(c0));
    return a + (a * z) * p;
}

// ln of the argument that stands for a, or the polynomial where a is small; with the sign of x. Beside lanes so large
// that powers of theirs overflow, small ones go through the polynomial with zeros for neighbours.
template <bool besideHuge, class V>
inline V asinhFrom(V x, V logarithm) {
    const V a = abs(x);
    const auto small = a < V(smallLimit);
    if (any(small)) [[unlikely]]
        logarithm = select(small, asinhSmall(besideHuge ? zeroUnless(small, a) : a), logarithm);
    return logarithm | signOf(x);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

constexpr std::uint32_t tiny32 = 0x23000000;  // 2^-57
constexpr std::uint32_t huge32 = 0x66800000;  // 2^78, the largest power of two whose 13th power is finite in Real64

template <bool besideHuge, class V>
inline V asinhSteps32(V x) {
    const V a = abs(x);
    return asinhFrom<besideHuge>(x, lnShort(a + sqrt(a * a + V(1.0))));
}

Real32 asinhElement32(Real32 x, OktStatus&) {
    if (!isFinite(x)) return x + x;  // an infinity or a NaN, quieted
    if (magnitudeBits(x) < tiny32) return x;
    return narrow(asinhSteps32<false>(widen(F32<1>(x)))).raw;
}

// Lanes from 2^-57 to below the limit; false where one lies outside.
template <std::uint32_t limit>
bool asinhBlock32(const Real32* src, Real32* dst) {
    const F32<8> x = F32<8>::load(src);
    const U32<8> a = asBits(abs(x));
    if (any(greaterSigned(U32<8>(tiny32), a) | greaterSigned(a, U32<8>(limit - 1)))) [[unlikely]]
        return false;
    narrow(asinhSteps32<(limit > huge32)>(widen(x))).store(dst);
    return true;
}

[[gnu::noinline]] bool asinhBlockWithHuge32(const Real32* src, Real32* dst) {
    return asinhBlock32<Format<Real32>::infinity>(src, dst);
}

void asinh32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const auto tryBlock = [](const Real32* from, Real32* to) {
        return asinhBlock32<huge32>(from, to) || asinhBlockWithHuge32(from, to);
    };
    packedElementLoop<8>(src, dst, len, tryBlock, asinhElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

constexpr std::uint32_t tiny64 = 0x3C600000;  // upper word of 2^-57
constexpr std::uint32_t huge64 = 0x41B00000;  // of 2^28

Real64 asinhElement64(Real64 x, OktStatus&) {
    const std::uint32_t a = highWord(x) & 0x7FFFFFFF;
    if (!isFinite(x)) return x + x;
    if (a < tiny64) return x;
    const F64<1> magnitude = abs(F64<1>(x));
    if (a >= huge64) return (lnOfDouble(magnitude) | signOf(F64<1>(x))).raw;
    return asinhFrom<false>(F64<1>(x), lnOf(plusRoot<1>(magnitude))).raw;
}

template <int N>
inline bool anyOutOfRange(F64<N> x) {
    const U32<N> a = packHighWords(asBits(abs(x)));
    return any(greaterSigned(U32<N>(tiny64), a) | greaterSigned(a, U32<N>(huge64 - 1)));
}

bool asinhChunk(const Real64* src, Real64* dst) {
    alignas(16) Real64 head[chunk], tail[chunk];
    for (std::int32_t i = 0; i < chunk; i += 4) {
        const F64<4> x = F64<4>::load(src + i);
        if (anyOutOfRange(x)) [[unlikely]]
            return false;
        const auto argument = plusRoot<1>(abs(x));
        argument.head.store(head + i);
        argument.tail.store(tail + i);
    }
    for (std::int32_t i = 0; i < chunk; i += 4) {
        const F64<4> logarithm = lnOf<F64<4>>({F64<4>::load(head + i), F64<4>::load(tail + i)});
        asinhFrom<false>(F64<4>::load(src + i), logarithm).store(dst + i);
    }
    return true;
}

bool asinhBlock(const Real64* src, Real64* dst) {
    const F64<4> x = F64<4>::load(src);
    if (anyOutOfRange(x)) [[unlikely]]
        return false;
    asinhFrom<false>(x, lnOf(plusRoot<1>(abs(x)))).store(dst);
    return true;
}

void asinh64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    chunkedElementLoop(src, dst, len, asinhChunk, asinhBlock, asinhElement64, status);
}

}  // namespace

OKT_EXPORT(Asinh, 32f, asinh32)
OKT_EXPORT(Asinh, 64f, asinh64)

}  // namespace okt
