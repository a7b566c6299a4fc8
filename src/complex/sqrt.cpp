// Principal square root of complex elements.
//
// Complex32 is packed. With v = (|z| + |x|)/2, the root's part along the axis on whose side z lies is sqrt(v), the
// other one is |y|/(2 sqrt(v)), the imaginary part with the sign of y. Both come from y = 1/sqrt(v), an
// approximation (lanes/seeds.h) refined by one step of third order in Real64. An element with a part that is zero, not
// above the smallest normal number, infinite or NaN goes through the written steps; its neighbours do not. Complex64
// goes through the written steps one element at a time.
//
// The step leaves at most 1.63e-9 of any approximation within its error of 1.5·2^-12, 0.0273 ulp of Complex32, whose
// errors are below 0.528 ulp therefore. Largest errors seen, real and imaginary part, in ulp:
//   Complex32  0.5271, 0.5271
//   Complex64  0.5004 at (-0x1.6a3d0b9273289p+987, 0x1.ab7a6d01eee44p-201), 0.5007 at (0x1.05feafcd5127ap+0,
//              0x1.c3cec9d5617d2p-28)
//
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (1.03)
#include "exports/Sqrt.h"
#include "complex/block_loop.h"
#include "complex/element_loop.h"
#include "complex/single_elements.h"
#include "complex/sqrt_element.h"
#include "lanes/constant.h"
#include "lanes/seeds.h"

namespace okt::complex {
namespace {

constexpr std::uint64_t onHighWord(std::uint32_t word) { return std::uint64_t{word} << 32; }

struct Constants {
    Pattern32 magnitude = 0x7FFFFFFF;
    Pattern32 rangeOffset = 0x00800000;
    Pattern32 rangeBound = 0x01000000;
    Pattern64 halving = onHighWord(0x00100000);

    // Seed: the significand and the lowest bit of the exponent make a Real32 in [1/2, 2); the rest of the exponent is
    // halved and turned round.
    Pattern64 significand = 0x001FFFFFFFFFFFFF;
    Pattern64 exponent32 = onHighWord(0x07E00000);
    Pattern64 exponent = 0x3FF0000000000000;
    Pattern64 seedBias = 0x57F0000000000000;

    // (1 + d)^(-1/2) = 1 + d·(c0 + c1·d) on |d| < 1/1365, twice the seed's error, relative error 2^-29.1; fitted.
    Constant64 one = 1.0;
    Constant64 half = 0.5;
    Constant64 c0 = -0x1.000050002fb02p-1;
    Constant64 c1 = 0x1.80011800e700dp-2;
};
constexpr Constants constants;

// A part whose magnitude does not lie strictly between the smallest normal number and infinity.
template <int N>
inline Mask32<N> outOfRange(const Constants& k, F32<N> part) {
    const U32<N> shifted = (asBits(part) & U32<N>(k.magnitude)) + U32<N>(k.rangeOffset);
    return ~greaterSigned(shifted, U32<N>(k.rangeBound));
}

template <int N>
inline F64<N> inverseRoot(const Constants& k, F64<N> v) {
    const U64<N> bits = asBits(v);
    const U64<N> f = ((bits & U64<N>(k.significand)) + U64<N>(k.exponent32)) >> 29;
    const U64<N> halved = ((bits >> 1) & U64<N>(k.exponent)) - U64<N>(k.seedBias);
    const F64<N> y = asReal((rsqrtSeedLow(f) << 29) - halved);
    const F64<N> d = v * y * y - F64<N>(k.one);
    return y + y * d * (F64<N>(k.c0) + F64<N>(k.c1) * d);
}

template <int N>
struct Started {
    F32<N> re, im;
    F64<N> v;  // (|z| + |re|)/2
};

template <int N>
inline Started<N> start(const Constants& k, const Complex32* src) {
    const auto [re, im] = loadInterleaved<N>(partsOf(src));
    const F64<N> X = widen(re), Y = widen(im);
    const F64<N> a = sqrt(X * X + Y * Y) + abs(X);
    return {re, im, asReal(asBits(a) - U64<N>(k.halving))};
}

template <int N>
inline void finish(const Constants& k, const Started<N>& z, const Complex32* src, Complex32* dst) {
    const F64<N> y = inverseRoot(k, z.v);
    const F64<N> h = F64<N>(k.half) * widen(abs(z.im));
    const F32<N> along = narrow(z.v * y), across = narrow(y * h);
    const Mask32<N> left = z.re < F32<N>(0.0F);
    storeBlock(src, dst, select(left, across, along), select(left, along, across) | signOf(z.im),
               outOfRange(k, z.re) | outOfRange(k, z.im), singleSqrt);
}

// Every element goes through the packed steps, a flagged one too: the flags that it raises there count.
// A block is begun while its predecessor is finished, since a block is one long chain of operations.
void sqrtc32(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const Constants& k = inMemory(constants);
    std::int32_t i = 0;
    if (len >= N) {
        Started<N> present = start<N>(k, src);
        for (; i < len - (2 * N - 1); i += N) {
            const Started<N> next = start<N>(k, src + i + N);
            finish(k, present, src + i, dst + i);
            present = next;
        }
        finish(k, present, src + i, dst + i);
        i += N;
    }
    if (i < len)
        paddedBlock<N>(src + i, dst + i, len - i,
                       [&k](const Complex32* from, Complex32* to) { finish(k, start<N>(k, from), from, to); });
}

}  // namespace

OKT_EXPORT(Sqrt, 32fc, sqrtc32)
OKT_EXPORT(Sqrt, 64fc, elementLoop<sqrtElement>)

}  // namespace okt::complex
