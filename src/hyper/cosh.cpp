// Hyperbolic cosine, from e^a/2 and e^-a/2 (a = |x|) as powers 2^(n/64)/2 and 2^(-n/64)/2 and a rest r:
// cosh = (E+ + E-) cosh r + (E+ - E-) sinh r.
//
// Real32: in Real80, n by the narrowing of a sum to Real32. Real64: the powers as head and tail. A
// second pass makes the results above 708.4018, which are infinite up to 710.4704 without a warning.
// Every element takes the same steps, in lanes and alone.
//
// Largest errors seen: Real32 0.6106 ulp at 0x1.049cdep+6; Real64 0.7566 ulp.
#include "exports/Cosh.h"
#include "frame/status_flag.h"
#include "hyper/sinh_cosh.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

using namespace sinh_cosh;

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// cosh and sinh of f ln 2: even and odd part of 2^f = k0 + l1 f + k2 f^2 on |f| <= 1/128, relative error 2^-27.1;
// minimax.
constexpr Real64 k0 = 0x1.000000001d8cp+0;
constexpr Real64 k2 = 0x1.ebfba4e02d234p-3;
constexpr Real64 l1 = 0x1.62e48530b053p-1;

inline Real32 coshSteps32(Real32 x) {
    const auto [f, plus, minus] = reduced(x);
    const Real80 even = k2 * f * f + k0;
    const Real80 odd = l1 * f;
    return static_cast<Real32>(even * (plus + minus) + odd * (plus - minus));
}

inline void coshPatch32(Real32 x, Real32& result, OktStatus& status) {
    constexpr std::uint32_t leastNormal = Format<Real32>::hidden;
    const std::uint32_t a = magnitudeBits(x);
    if (a >= leastNormal && a < overflowLimit32) [[likely]]
        return;
    if (a < leastNormal) {
        result = 1;
    } else if (isNaN(x)) {
        result = x + x;
    } else {
        result = infinity<Real32>();
        if (isInfinite(x)) return;
        status = oktStatusOverflow;
        raiseStatusFlag(status);
    }
}

void cosh32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    patchedLoop(src, dst, len, coshSteps32, coshPatch32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

template <int N>
[[gnu::noinline, gnu::cold]] void coshSecondPass(const F64<N>& a, Real64* dst, OktStatus& status) {
    for (int i = 0; i < N; ++i)
        if (highWord(a[i]) >= secondPass64) storeBits(dst + i, secondPass(a[i], loadElement(dst + i), status));
}

template <int N>
[[gnu::always_inline]] inline void coshLanes(const Constants64& c, const Real64* src, Real64* dst, OktStatus& status) {
    const F64<N> x = F64<N>::load(src);
    const F64<N> a = asReal(asBits(x) & c.magnitude);
    const auto [r, A, a2, B, b2] = reduced(c, a);
    const F64<N> s = A + a2;
    const F64<N> d = B + b2;
    const F64<N> z = r * r;
    const F64<N> p = (((z * c.w4 + c.w2) * z) * r) * (s - d);
    const F64<N> q = ((z * c.w3 + c.w1) * z) * (s + d);
    (((((q + p) + r * (s - d)) + b2) + a2) + B + A).store(dst);
    if (any(greaterSigned(packHighWords(asBits(a)), U32<N>(secondPass64 - 1)))) [[unlikely]]
        coshSecondPass(a, dst, status);
}

void cosh64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& c = inMemory(constants64);
    std::int32_t i = 0;
    for (; i <= len - 4; i += 4) coshLanes<4>(c, src + i, dst + i, status);
    for (; i < len; ++i) coshLanes<1>(c, src + i, dst + i, status);
}

}  // namespace

OKT_EXPORT(Cosh, 32f, cosh32)
OKT_EXPORT(Cosh, 64f, cosh64)

}  // namespace okt
