// Arccosine: pi/2 - arcsin x up to 1/2, beyond that 2·arcsin(sqrt((1 - x)/2)), and pi less that for negative x, see
// half_angle.h. The root's rest is had with a 12-bit reciprocal (Real32, lanes/seeds.h); on Real64 the root itself
// comes from an approximation of its reciprocal by a series of five terms. No result depends on its neighbours.
//
// Errors in ulp with every approximation whose own error is within 1.5·2^-12:
//   Real32  One step leaves 1.3e-7 of the root's rest, which itself is below 2^-7 of the root. The largest error of all
//           elements with all approximations is 0.7963 at -0x1.1141d8p-1.
//   Real64  Below 1/2 two sums 0.75 and the polynomial 0.07: below 0.82 (seen 0.7784). Above 1/2 one sum 0.5, the
//           polynomial 0.2, the root 0.003 if the approximation has up to 16 significant bits: below 0.71 (seen
//           0.6670). With more bits the root's residual is rounded, up to 0.5 more: below 1.21 (seen 1.1275).
//
// GCC: -fschedule-insns -fsched-pressure (0.97)
// GCC: -frename-registers (1.00)
#include "exports/Acos.h"
#include "lanes/pattern.h"
#include "lanes/seeds.h"
#include "trig/half_angle.h"

namespace okt {
namespace {

struct Constants32 {
    half_angle::Polynomial32 polynomial;
    Constant32 one = 1.0F;
    Constant32 half = 0.5F;
    Constant32 two = 2.0F;
    Constant32 halfPiHead32 = 0x1.921fb4p+0F;
    Constant32 piHead32 = 0x1.921fb4p+1F;
    Constant32 halfPiTail32 = 0x1.4442dp-24F;
    Pattern32 minusOneOrTwo = asBits(-1.0F) ^ asBits(2.0F);
};
constexpr Constants32 constants32;

// 0 and pi at the ends; NaNs as they are.
constexpr half_angle::Patch<std::uint32_t> patch32{0, 0x40490FDB, Format<Real32>::nan, 0, 0};

template <int N>
inline half_angle::Outcome32<N> arccosine(const Constants32& k, F32<N> x) {
    const F32<N> a = abs(x);
    const F32<N> sx = signOf(x);
    const F32<N> squared = a * a;
    const Mask32<N> small = a < F32<N>(k.half);  // a NaN is not
    const F32<N> h = zeroIf(small, asReal(asBits(k.one - a) - U32<N>(half_angle::halved32)));
    const F32<N> z = h | zeroUnless(small, squared);

    // The small lanes' part in this is void.
    const F32<N> s = withFlags(sqrt(h));
    const F32<N> u = select(small, a, s);
    const F32<N> uh = select(small, a, s & U32<N>(half_angle::rootHeadMask32));
    const F32<N> d = -uh - u;
    const F32<N> n = uh * uh - h;
    const F32<N> r = recipSeed(d);
    const F32<N> c = zeroIf(small, withFlags(n * r * (k.two - d * r)));

    // Factor, head and tail: 2, 0, 0 and -2, pi for big lanes of either sign; -1, pi/2 and 1, pi/2 for small ones.
    const Mask32<N> negative = greaterSigned(U32<N>(0), asBits(x));
    const F32<N> tail = k.halfPiTail32;
    const F32<N> f = (F32<N>(-1.0F) ^ zeroIf(small, asReal(U32<N>(k.minusOneOrTwo)))) ^ sx;
    const F32<N> H = select(small, F32<N>(k.halfPiHead32), zeroUnless(negative, F32<N>(k.piHead32)));
    const F32<N> L = select(small, tail ^ sx, zeroUnless(negative, tail));
    const F32<N> Q = half_angle::excess(k.polynomial, z);
    return {((Q * u + (c - L)) + uh) * f + H, half_angle::beyondOne(squared)};
}

void acos32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    const auto kernel = [&k]<int N>(F32<N> x) OKT_INLINE { return arccosine(k, x); };
    half_angle::blocks<8>(src, dst, len, kernel, patch32, status);
}

struct Constants64 {
    half_angle::Constants64 shared;
    Constant64 pi = 0x1.921fb54442d18p+1;
    Constant64 halfPi = 0x1.921fb54442d18p+0;
    Constant64 piTail = 0x1.1a62633145c07p-53;
    Constant64 halfPiTailNegative = -0x1.1a62633145c07p-54;
};
constexpr Constants64 constants64;

constexpr half_angle::Patch<std::uint64_t> patch64{0, 0x400921FB54442D18, Format<Real64>::nan, Format<Real64>::quiet,
                                                   Format<Real64>::sign};

template <int N>
inline half_angle::Outcome64<N> arccosine(const Constants64& k, F64<N> x) {
    const F64<N> a = abs(x);
    const F64<N> sx = signOf(x);
    const auto [big, uh, l, Su] = half_angle::reduced(k.shared, a);
    const Mask64<N> negative = greaterSignedHigh(U64<N>(0), asBits(x));
    const F64<N> hi = select(big, zeroUnless(negative, F64<N>(k.pi)), F64<N>(k.halfPi));
    const F64<N> lo = select(big, zeroUnless(negative, F64<N>(k.piTail)), F64<N>(k.halfPiTailNegative) ^ sx);
    const F64<N> A = ((l + lo) + Su) + uh;
    return {hi + -(A ^ sx), half_angle::reachesOne(a)};
}

void acos64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    const auto kernel = [&k]<int N>(F64<N> x) OKT_INLINE { return arccosine(k, x); };
    half_angle::blocks<4>(src, dst, len, kernel, patch64, status);
}

}  // namespace

OKT_EXPORT(Acos, 32f, acos32)
OKT_EXPORT(Acos, 64f, acos64)

}  // namespace okt
