// Decimal logarithm: the steps of log_steps.h, on Real32 a variant of them.
//
// On Real32 e steps up in the middle of the binade, so that it is 0 on both sides of 1; on Real64 it does so at the
// powers of two, where the table's last entry cancels e · log10 2 exactly.
//
// Largest errors: Real32 0.7493 ulp at 0x1.01d8bep+0, of all elements; Real64 0.5737 ulp at 0x1.0010ebcb5ba7cp+0, of
// those seen.
//
// GCC: -fschedule-insns -fsched-pressure (0.99)
#include "exports/Log10.h"
#include "explog/log_steps.h"
#include "explog/log_tables.h"

namespace okt::logarithm {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Log10Constants32 {
    WordRange normal{0x00800000, 0x7F800000};
    Constant32 log2Hi = 0x1.4p-2F;  // log10 2
    Constant32 log2Lo = -0x1.77d95ep-7F;
    Constant32 origin = 0x1.bcp-2F;  // K
    // log10(1 + r/K) = r + r (d1 + d2 r + ...) on -0.0042 < r < 0.0017, relative error 2^-29.3; d1, which is
    // (log10 e)/K - 1, and d2 are Taylor's, the others fitted.
    Constant32 d1 = 0x1.a7a6ccp-10F;
    Constant32 d2 = -0x1.27af2ep+0F;
    Constant32 d3 = 0x1.c6a13ep+0F;
    Constant32 d4 = -0x1.8931dp+1F;
    Constant32 zero = 0.0F;
    Pattern32 significand = 0x007FFFFF;
    Pattern32 unit = 0x3F800000;
    Pattern32 mantissaHigh = 0xFFFF8000;
    Pattern32 exponentOffset = 0x3F3F8000;  // e steps up at m = 1.49609375
    Pattern32 indexBits = 0x007F8000;       // the leading eight bits, rounded to seven
    Pattern32 indexRound = 0x00008000;
    Pattern32 rowBits = 0x00FF0000;
};
constexpr Log10Constants32 log10Constants32;

template <int N>
inline U32<N> log10Row32(const Log10Constants32& k, U32<N> b) {
    return (((b & k.indexBits) + k.indexRound) & k.rowBits) >> 12;
}

template <int N>
OKT_INLINE inline Sums<F32<N>> log10Main32(const Log10Constants32& k, U32<N> b, const RowOffset<N>& offset) {
    const F32<N> e = toReal32(shiftRightSigned(b - k.exponentOffset, 23));
    const U32<N> m = (b & k.significand) | k.unit;
    const F32<N> mh = asReal(m & k.mantissaHigh);
    const F32<N> ml = asReal(m) - mh;
    const auto [c, again, hi, lo] = gatherRowsAt<Real32>(tables::Log10Table32, offset);
    const F32<N> a = mh * c - k.origin;
    const F32<N> b1 = ml * c;
    const F32<N> r = b1 + a;
    const F32<N> t = a + (e * k.log2Hi + hi);
    const F32<N> q = e * k.log2Lo + lo;
    const Mask32<N> nearOne = q == k.zero;
    const F32<N> poly = r * (r * (r * (r * k.d4 + k.d3) + k.d2) + k.d1);
    return {(poly + q) + zeroIf(nearOne, b1), t + zeroUnless(nearOne, b1)};
}

Sums<F32x1> log10Single32(Real32 x) {
    const U32<1> b(asBits(x));
    return log10Main32(log10Constants32, b, RowOffset<1>(log10Row32(log10Constants32, b)));
}

[[gnu::noinline, gnu::cold]] Real32 log10Element32(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    if (b - 0x00800000 < 0x7F000000) return log10Single32(x).total().raw;
    if (isZero(x)) {
        status = oktStatusSingularity;
        return minusInf32;
    }
    if (isNaN(x)) {
        keepFlags(opaque(x) * opaque(Real32{1}));  // invalid for a signalling NaN, which stays one
        return x;
    }
    if (isNegative(x)) {
        status = oktStatusDomain;
        return asReal(Format<Real32>::nan);
    }
    if (isInfinite(x)) return x;
    const Real32 scaled = x * Real32{0x1p23f};
    const auto sums = log10Single32(scaled);
    return (sums.small.raw - 0x1.bb1dbcp+2F) + sums.large.raw;  // 23 log10 2
}

OKT_INLINE inline bool locate(const Log10Constants32& k, F32<8> x, RowOffset<8>& offset) {
    if (!k.normal.holdsAll(asBits(x))) [[unlikely]]
        return false;
    offset.put(log10Row32(k, asBits(x)));
    return true;
}
OKT_INLINE inline F32<8> logarithmAt(const Log10Constants32& k, F32<8> x, const RowOffset<8>& offset) {
    return log10Main32(k, asBits(x), offset).total();
}

void log10_32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    logarithm<Real32, RowOffset<8>>(src, dst, len, log10Constants32, log10Element32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

constexpr LogColumns64<513> log10Columns64(tables::Log10Table64);

struct Log10Constants64 : CommonConstants64 {
    Constant64 log2Hi = 0x1.34413509f78p-2;  // log10 2
    Constant64 log2Lo = 0x1.fef311f12b358p-46;
    Constant64 origin = 0x1.bcp-2;  // K
    // log10(1 + r/K) = r + r (f1 + f2 r + ...) on -0.00047 < r < 0.00043, relative error 2^-54.2; f1 is
    // (log10 e)/K - 1, the others minimax on |r| <= K/1024.
    Constant64 f1 = 0x1.a7a6cbf2e4108p-10;
    Constant64 f2 = -0x1.27af2dc77af28p+0;
    Constant64 f3 = 0x1.c6a02dc962e0fp+0;
    Constant64 f4 = -0x1.8930aac7d7c5p+1;
    Constant64 f5 = 0x1.6aba0f9751ec1p+2;
    Pattern64 mantissaHigh = 0x7FFFFFFF80000000;
    Pattern32 exponentOffset = 0x3FF00000;

    static constexpr const LogColumns64<513>& columns = log10Columns64;
    static constexpr Real64 scaledBy52 = 0x1.f4e9f6303263ep+3;  // 52 log10 2
    template <int N>
    F64<N> polynomial(F64<N> r) const {
        return r * (r * (r * (r * (r * f5 + f4) + f3) + f2) + f1);
    }
};

}  // namespace

OKT_EXPORT(Log10, 32f, log10_32)
OKT_EXPORT(Log10, 64f, log64<Log10Constants64>)

}  // namespace okt::logarithm
