// Arcsine: a polynomial up to 1/2, beyond that pi/2 - 2·arcsin(sqrt((1 - |x|)/2)), see half_angle.h. The root comes
// from a 12-bit approximation of its reciprocal (lanes/seeds.h), by one Newton step (Real32) or a series of five terms
// (Real64); no result depends on its neighbours.
//
// Errors in ulp, all largest next to 1/2, with every approximation whose own error is within 1.5·2^-12:
//   Real32  The step leaves up to 2.0e-7 of the root and its roundings 1.8e-7; the division makes up for it but in the
//           polynomial's factor, to 0.3. The largest error of all elements with all approximations is 1.0296 at
//           0x3F000E57, with those of 13 bits 0.9961 at 0x3F0006CC.
//   Real64  The last two sums 0.5 and 0.25, the polynomial and its roundings 0.22, the root 0.003 if the approximation
//           has up to 16 significant bits: below 0.98 (seen 0.8565). With more bits the root's residual is rounded, up
//           to 0.52 more: below 1.50 (seen 1.3682).
//
// GCC: -fschedule-insns -fsched-pressure (0.96)
// GCC: -frename-registers (1.00)
#include "exports/Asin.h"
#include "lanes/pattern.h"
#include "lanes/seeds.h"
#include "trig/half_angle.h"

namespace okt {
namespace {

struct Constants32 {
    half_angle::Polynomial32 polynomial;
    Constant32 one = 1.0F;
    Constant32 half = 0.5F;
    Constant32 minusHalf = -0.5F;
    Constant32 three = 3.0F;
    Constant32 quarterPiHead32 = 0x1.921fb4p-1F;
    Constant32 quarterPiTail32 = 0x1.4442dp-25F;
    Constant32 halfOfHead = 0.5F * 0x1.921fb4p-1F;  // exact
    Pattern32 oneOrMinusTwo = asBits(1.0F) ^ asBits(-2.0F);
};
constexpr Constants32 constants32;

// pi/2 at the ends; NaNs as they are.
constexpr half_angle::Patch<std::uint32_t> patch32{0x3FC90FDB, 0xBFC90FDB, Format<Real32>::nan, 0, 0};

template <int N>
inline half_angle::Outcome32<N> arcsine(const Constants32& k, F32<N> x) {
    const F32<N> a = abs(x);
    const F32<N> squared = a * a;
    const Mask32<N> small = a < F32<N>(k.half);  // a NaN is not
    const F32<N> h = zeroIf(small, asReal(asBits(k.one - a) - U32<N>(half_angle::halved32)));
    const F32<N> z = h | zeroUnless(small, squared);

    // The small lanes' part in this is void.
    const F32<N> g = rsqrtSeed(h);
    const F32<N> hg = h * g;
    const F32<N> s = withFlags(hg * k.minusHalf * (hg * g - k.three));
    const F32<N> u = select(small, a, s);
    const F32<N> uh = select(small, a, s & U32<N>(half_angle::rootHeadMask32));
    const F32<N> c = zeroIf(small, withFlags((h - uh * uh) / (u + uh)));

    const F32<N> Q = half_angle::excess(k.polynomial, z);
    const F32<N> L = zeroIf(small, F32<N>(k.quarterPiTail32));
    const F32<N> H = zeroIf(small, F32<N>(k.quarterPiHead32));
    const F32<N> halfH = zeroIf(small, F32<N>(k.halfOfHead));
    const F32<N> f = F32<N>(k.one) ^ zeroIf(small, asReal(U32<N>(k.oneOrMinusTwo)));
    const F32<N> result = ((((Q * u + (c - L)) - (halfH - uh)) * f) + H) | signOf(x);
    return {result, half_angle::beyondOne(squared)};
}

void asin32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    const auto kernel = [&k]<int N>(F32<N> x) OKT_INLINE { return arcsine(k, x); };
    half_angle::blocks<8>(src, dst, len, kernel, patch32, status);
}

struct Constants64 {
    half_angle::Constants64 shared;
    Constant64 quarterPi = 0x1.921fb54442d18p-1;
    Constant64 quarterPiTail = 0x1.1a62633145c07p-54;
};
constexpr Constants64 constants64;

constexpr half_angle::Patch<std::uint64_t> patch64{0x3FF921FB54442D18, 0xBFF921FB54442D18, Format<Real64>::nan,
                                                   Format<Real64>::quiet, 0};

template <int N>
inline half_angle::Outcome64<N> arcsine(const Constants64& k, F64<N> x) {
    const F64<N> a = abs(x);
    const auto [big, uh, l, Su] = half_angle::reduced(k.shared, a);
    const F64<N> c = zeroUnless(big, F64<N>(k.quarterPi));
    const F64<N> lo = zeroUnless(big, F64<N>(k.quarterPiTail));
    return {(((Su + (l + lo)) + (uh + c)) + c) | signOf(x), half_angle::reachesOne(a)};
}

void asin64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    const auto kernel = [&k]<int N>(F64<N> x) OKT_INLINE { return arcsine(k, x); };
    half_angle::blocks<4>(src, dst, len, kernel, patch64, status);
}

}  // namespace

OKT_EXPORT(Asin, 32f, asin32)
OKT_EXPORT(Asin, 64f, asin64)

}  // namespace okt
