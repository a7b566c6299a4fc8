// Hyperbolic sine, from e^a/2 and e^-a/2 (a = |x|) as powers 2^(n/64)/2 and 2^(-n/64)/2 and a rest r:
// sinh = (E+ - E-) cosh r + (E+ + E-) sinh r.
//
// Real32: in Real80, n by the narrowing of a sum to Real32; x itself below 0.0003.
// Real64: the powers as head and tail; three orders of the last sums by the size of a, an odd polynomial at the bottom.
// A second pass makes the results above 708.4018, which are infinite up to 710.4704 without a warning.
// Every element takes the same steps, in lanes and alone.
//
// Largest errors seen: Real32 0.5003 ulp; Real64 0.7682 ulp at 0x1.44014964ac9eap-1.
#include "exports/Sinh.h"
#include "frame/status_flag.h"
#include "hyper/sinh_cosh.h"
#include "lanes/pattern.h"

#include <limits>

namespace okt {
namespace {

using namespace sinh_cosh;

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// cosh and sinh of f ln 2: even and odd part of 2^f = k0 + l1 f + k2 f^2 + l3 f^3 on |f| <= 1/128, absolute error
// 2^-37.7; minimax.
constexpr Real64 k0 = 0x1.fffffffff626bp-1;
constexpr Real64 k2 = 0x1.ebfc2ec2dedaep-3;
constexpr Real64 l1 = 0x1.62e42fef9e28ep-1;
constexpr Real64 l3 = 0x1.c6b0cef9b9f1ep-5;
constexpr std::uint32_t tiny32 = 0x399D4952;  // 0.0003

inline Real32 sinhSteps32(Real32 x) {
    const auto [f, plus, minus] = reduced(x);
    const Real80 z = f * f;
    const Real80 even = k2 * z + k0;
    const Real80 odd = (l3 * z + l1) * f;
    return static_cast<Real32>(even * (plus - minus) + odd * (plus + minus));
}

inline void sinhPatch32(Real32 x, Real32& result, OktStatus& status) {
    const std::uint32_t a = magnitudeBits(x);
    if (a >= tiny32 && a < overflowLimit32) [[likely]]
        return;
    if (a < tiny32) {
        result = x;
    } else if (isNaN(x)) {
        result = x + x;
    } else {
        result = withSign(infinity<Real32>(), x);
        if (isInfinite(x)) return;
        status = oktStatusOverflow;
        raiseStatusFlag(status);
    }
}

void sinh32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    patchedLoop(src, dst, len, sinhSteps32, sinhPatch32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

constexpr std::uint32_t smallLimit64 = 0x3FA1EB85;   // upper word of 0.035
constexpr std::uint32_t middleLimit64 = 0x3FCFACFC;  // of 0.2475

struct SinhConstants {
    // (sinh a - a)/a^3 in a^2 on a <= 0.035, absolute error of sinh 2^-69.3; minimax.
    Constant64 y1 = 0x1.5555555555583p-3;
    Constant64 y2 = 0x1.1111110e18ca7p-7;
    Constant64 y3 = 0x1.a01db8c52595ap-13;
};
constexpr SinhConstants sinhConstants;

template <int N>
[[gnu::noinline, gnu::cold]] void sinhSecondPass(const F64<N>& x, Real64* dst, OktStatus& status) {
    for (int i = 0; i < N; ++i) {
        const F64<1> a = abs(F64<1>(x[i]));
        if (highWord(a.raw) < secondPass64) continue;
        const std::uint64_t sign = asBits(x[i]) >> 63 << 63;
        storeBits(dst + i, secondPass(a.raw, bits64(loadBits(dst + i) & ~sign), status) | sign);
    }
}

// a + a^3 p(a^2) where a is small. The other lanes are worked as zeros, so that they raise nothing.
template <int N>
inline F64<N> withSmall(F64<N> a, F64<N> result) {
    const auto small = greaterSignedHigh(U64<N>(std::uint64_t{smallLimit64} << 32), asBits(a));
    const F64<N> s = zeroUnless(small, a);
    const F64<N> w = s * s;
    const SinhConstants& c = sinhConstants;
    return select(small, s + (((c.y3 * w + c.y2) * w + c.y1) * w) * s, result);
}

template <int N>
[[gnu::always_inline]] inline void sinhLanes(const Constants64& c, const Real64* src, Real64* dst, OktStatus& status) {
    const F64<N> x = F64<N>::load(src);
    const F64<N> a = asReal(asBits(x) & c.magnitude);
    const auto [r, A, a2, B, b2] = reduced(c, a);
    const F64<N> s = A + a2;
    const F64<N> d = B + b2;
    const F64<N> z = r * r;
    const F64<N> p = (((z * c.w4 + c.w2) * z) * r) * (s + d);
    const F64<N> q = ((z * c.w3 + c.w1) * z) * (s - d);
    const F64<N> rest = (((q + p) + r * (s + d)) - b2) + a2;

    // By the size of a: the small difference first, or not.
    const auto middle = greaterSignedHigh(U64<N>(std::uint64_t{middleLimit64} << 32), asBits(a));
    F64<N> result = select(middle, rest + (A - B), (rest - B) + A);
    const U32<N> upper = packHighWords(asBits(a));
    if (any(greaterSigned(U32<N>(smallLimit64), upper))) [[unlikely]]
        result = withSmall(a, result);
    (result | signOf(x)).store(dst);
    if (any(greaterSigned(upper, U32<N>(secondPass64 - 1)))) [[unlikely]]
        sinhSecondPass(x, dst, status);
}

void sinh64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& c = inMemory(constants64);
    std::int32_t i = 0;
    for (; i <= len - 4; i += 4) sinhLanes<4>(c, src + i, dst + i, status);
    for (; i < len; ++i) sinhLanes<1>(c, src + i, dst + i, status);
}

}  // namespace

OKT_EXPORT(Sinh, 32f, sinh32)
OKT_EXPORT(Sinh, 64f, sinh64)

}  // namespace okt
