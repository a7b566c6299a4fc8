// Natural logarithm: the steps of log_steps.h, on Real32 a variant of them.
//
// On Real64 e steps up in the middle of the binade, so that it is 0 on both sides of 1; on Real32 it does so at the
// powers of two, where the table's last entry cancels e · ln 2 exactly.
//
// Largest errors: Real32 0.5661 ulp at 0x1.f9ffd2p-1, of all elements; Real64 0.5631 ulp at 0x1.ffe11ded25f67p-1, of
// those seen.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Ln.h"
#include "explog/log_steps.h"
#include "explog/log_tables.h"

namespace okt::logarithm {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct LnConstants32 {
    WordRange normal{0x00800000, 0x7F800000};
    Constant32 ln2Hi = 0x1.62ep-1F;
    Constant32 ln2Lo = 0x1.0bfbe8p-15F;
    Constant32 one = 1.0F;
    // ln(1 + r) = r + r^2 (a2 + a3 r + a4 r^2) on -0.0092 < r < 0.0094, relative error 2^-29.2; Taylor.
    Constant32 a2 = -0.5F;
    Constant32 a3 = 0x1.555556p-2F;
    Constant32 a4 = -0.25F;
    Pattern32 significand = 0x007FFFFF;
    Pattern32 unit = 0x3F800000;
    Pattern32 mantissaHigh = 0x7FFFC000;
    Pattern32 indexBits = 0x007F0000;  // the leading seven bits, rounded to six
    Pattern32 indexRound = 0x00010000;
    Pattern32 rowBits = 0x00FE0000;
    Pattern32 nearOneOffset = 0x407E0000;
    Pattern32 nearOneBound = 0x7FFC0000;
};
constexpr LnConstants32 lnConstants32;

template <int N>
inline U32<N> lnRow32(const LnConstants32& k, U32<N> b) {
    return (((b & k.indexBits) + k.indexRound) & k.rowBits) >> 13;
}

// b is the pattern of a normal number and e its exponent, less
// what it was scaled by; nearOne comes from the true pattern.
template <int N>
OKT_INLINE inline F32<N> lnMain32(const LnConstants32& k, U32<N> b, const RowOffset<N>& offset, F32<N> e,
                                  Mask32<N> nearOne) {
    const U32<N> m = (b & k.significand) | k.unit;
    const F32<N> mh = asReal(m & k.mantissaHigh);
    const F32<N> ml = asReal(m) - mh;
    const auto [hi, lo, c, zero] = gatherRowsAt<Real32>(tables::Ln32Table, offset);
    const F32<N> a = mh * c - k.one;
    const F32<N> b1 = ml * c;
    const F32<N> r = a + b1;
    const F32<N> t = (e * k.ln2Hi + hi) + a;
    const F32<N> q = e * k.ln2Lo + lo;
    const F32<N> poly = (r * r) * (r * (r * k.a4 + k.a3) + k.a2);
    return ((poly + q) + zeroIf(nearOne, b1)) + (t + zeroUnless(nearOne, b1));
}

template <int N>
inline F32<N> exponent32(U32<N> b) {
    return toReal32((b >> 23) - U32<N>(127));
}

// 0.9921875 < x < 1.015625
template <int N>
inline Mask32<N> lnNearOne(const LnConstants32& k, U32<N> b) {
    return greaterSigned(b + k.nearOneOffset, U32<N>(k.nearOneBound));
}

Real32 lnSingle32(std::uint32_t b, F32x1 e, Mask32<1> nearOne) {
    const RowOffset<1> offset(lnRow32(lnConstants32, U32<1>(b)));
    return lnMain32(lnConstants32, U32<1>(b), offset, e, nearOne).raw;
}

[[gnu::noinline, gnu::cold]] Real32 lnElement32(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    if (b - 0x00800000 < 0x7F000000) return lnSingle32(b, exponent32(U32<1>(b)), lnNearOne(lnConstants32, U32<1>(b)));
    if (isZero(x)) {
        status = oktStatusSingularity;
        return minusInf32;
    }
    if (b < 0x00800000) {
        const int top = 31 - std::countl_zero(b);
        const auto exponent = static_cast<std::uint32_t>(top + 1);
        const std::uint32_t scaled = ((b << (23 - top)) ^ 0x00800000) | exponent << 23;  // 2^23 x
        const F32x1 e = toReal32(U32<1>((scaled >> 23) - (127 + 23)));
        return lnSingle32(scaled, e, Mask32<1>{false});
    }
    if (isNaN(x) || b == Format<Real32>::infinity) return x;  // untouched: a signalling NaN stays one
    status = oktStatusDomain;
    return bits32(0x7FFC0000);
}

OKT_INLINE inline bool locate(const LnConstants32& k, F32<8> x, RowOffset<8>& offset) {
    if (!k.normal.holdsAll(asBits(x))) [[unlikely]]
        return false;
    offset.put(lnRow32(k, asBits(x)));
    return true;
}
OKT_INLINE inline F32<8> logarithmAt(const LnConstants32& k, F32<8> x, const RowOffset<8>& offset) {
    const U32<8> b = asBits(x);
    return lnMain32(k, b, offset, exponent32(b), lnNearOne(k, b));
}

void ln32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    logarithm<Real32, RowOffset<8>>(src, dst, len, lnConstants32, lnElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

constexpr LogColumns64<513> lnColumns64(tables::Ln64Table);

struct LnConstants64 : CommonConstants64 {
    Constant64 log2Hi = 0x1.62e42fefa38p-1;  // ln 2
    Constant64 log2Lo = 0x1.ef35793c7673p-45;
    Constant64 origin = 1.0;
    // ln(1 + r) = r + r^2 (b2 + b3 r + ...) on |r| <= 2^-10, relative error 2^-56.5; minimax.
    Constant64 b2 = -0x1.ffffffffffca9p-2;
    Constant64 b3 = 0x1.555555555512ap-2;
    Constant64 b4 = -0x1.00000d588d052p-2;
    Constant64 b5 = 0x1.9999b39037e04p-3;
    Pattern64 mantissaHigh = 0x7FFFFFFF00000000;
    Pattern32 exponentOffset = 0x3FE7FC00;  // e steps up at m = 1.4990234375

    static constexpr const LogColumns64<513>& columns = lnColumns64;
    static constexpr Real64 scaledBy52 = 0x1.205966f2b4f12p+5;  // 52 ln 2
    template <int N>
    F64<N> polynomial(F64<N> r) const {
        return r * (r * (r * (r * (r * b5 + b4) + b3) + b2));
    }
};

}  // namespace

OKT_EXPORT(Ln, 32f, ln32)
OKT_EXPORT(Ln, 64f, log64<LnConstants64>)

}  // namespace okt::logarithm
