// Models of the exponential minus one: one routine in double precision, with a small difference by element type.
#pragma once

#include "explog/expm1_tables.h"
#include "explog_support.h"

namespace okt::model {

namespace expm1 {

using namespace explog;

inline constexpr Real64 log2e128 = real64(0x40671547652B82FE);
inline constexpr Real64 shifter = real64(0x4338000000000000);
inline constexpr Real64 ln2Head = real64(0x3F762E4200000000);
inline constexpr Real64 ln2Tail = real64(0x3E2FDF473DE6AF28);
inline constexpr Real64 splitAdd = real64(0x41F0000000100000);
inline constexpr Real64 splitSub = real64(0x41F0000000000000);
inline constexpr Real64 c3 = real64(0x3FC5555555555405);
inline constexpr Real64 c4 = real64(0x3FA555555555541D);
inline constexpr Real64 c5 = real64(0x3F8111116887CD7C);
inline constexpr Real64 c6 = real64(0x3F56C16C87372663);
inline constexpr Real64 huge = real64(0x7E70000000000000);
inline constexpr Real64 tiny = real64(0x0170000000000000);
inline constexpr std::uint64_t plusLimit = 0x40862E42FEFA39EF;

// e^x = 2^e (th + tl) (Eh + El).
struct Parts {
    std::int32_t e;
    Real64 Eh, El, th, tl;
};

template <bool isReal32>
Parts parts(Real64 x) {
    const Real64 w = x * log2e128 + shifter;
    const std::int32_t n = asSigned(lowWord(w));
    const Real64 kd = w - shifter;

    const Real64 h = x - ln2Head * kd;
    const Real64 t = ln2Tail * kd;
    const Real64 r = h - t;
    const Real64 rl = isReal32 ? 0.0 : (h - r) - t;
    const Real64 u = isReal32 ? r : r + rl;

    const std::uint32_t index = static_cast<std::uint32_t>(n) & 0x7F;
    const std::int32_t j = index < 64 ? static_cast<std::int32_t>(index) : static_cast<std::int32_t>(index) - 128;
    const std::int32_t e = (n - j) >> 7;

    const Real64 sum = opaque(r + splitAdd);
    const Real64 Eh = sum - splitSub;

    const Real64 v = u * u;
    const Real64 odd = u * (c3 + c5 * v);
    const Real64 even = v * (c4 + c6 * v);
    Real64 El;
    if (isReal32) {
        const Real64 q = v * ((0.5 + odd) + even);
        El = ((r + 1.0) - Eh) + q;
    } else {
        const Real64 q = v * (odd + even) + 0.5 * v;
        const Real64 base = (r - (Eh - 1.0)) + rl;
        El = base + q;
    }
    return {e, Eh, El, tables::expm1Table[2 * index + 1], tables::expm1Table[2 * index]};
}

inline Real64 smallScale(std::int32_t e) {
    return static_cast<Real64>(fromBits((static_cast<std::uint32_t>(e) << 23) + 0x3F800000U));
}

template <bool isReal32>
Real64 bigPath(Real64 x, OktStatus& status) {
    const std::uint64_t magnitude = asBits(x) & 0x7FFFFFFFFFFFFFFF;
    const bool minus = magnitude != asBits(x);
    if (!minus && magnitude <= plusLimit) {
        const Parts p = parts<isReal32>(x);
        const Real64 y = (p.Eh + p.El) * p.th + (p.Eh + p.El) * p.tl;
        const Real64 scale = fromBits(static_cast<std::uint64_t>(p.e + 511) << 52);
        return (y * scale) * 0x1p512;
    }
    if (magnitude > 0x7FF0000000000000) return x;
    if (magnitude == 0x7FF0000000000000) return minus ? -1.0 : x;
    if (!minus) {
        status = oktStatusOverflow;
        return opaque(huge) * opaque(huge);
    }
    return opaque(-1.0) + tiny;
}

template <bool isReal32>
Real64 element(Real64 x, OktStatus& status) {
    const std::uint32_t ix = highMagnitude(x);

    if (ix >= 0x4055A92D) return bigPath<isReal32>(x, status);

    if (asSigned(highWord(x)) > 0x404419EC) {
        const Parts p = parts<isReal32>(x);
        return ((p.El + p.Eh) * p.th + (p.Eh + p.El) * p.tl) * smallScale(p.e);
    }

    if (ix >= 0x3F700000) {
        const Parts p = parts<isReal32>(x);
        const Real64 s = smallScale(p.e);
        const Real64 A = (p.th * p.Eh) * s;
        const Real64 B = ((p.Eh + p.El) * p.tl + p.th * p.El) * s;
        if (ix >= 0x4042388E && ix <= 0x404586F1) return A + (B - 1.0);
        const Real64 z = A - 1.0;
        const Real64 c = (1.0 + z) - A;
        return z + (B - c);
    }

    if (ix >= 0x3C600000) {
        const Real64 v = x * x;
        const Real64 odd = x * (c3 + c5 * v);
        const Real64 even = v * (c4 + c6 * v);
        return x + v * ((0.5 + odd) + even);
    }

    if ((ix | lowWord(x)) == 0) return x;
    return x + opaque(tiny) * opaque(tiny);
}

template <class Real>
OktStatus loop(const Real* src, Real* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) {
        const Real x = src[at];
        OktStatus warning = oktStatusOk;
        dst[at] = static_cast<Real>(element<sizeof(Real) == 4>(opaque(static_cast<Real64>(x)), warning));
        if (warning != oktStatusOk) {
            status = warning;
            raiseFlag(warning);
        }
    }
    return status;
}

}  // namespace expm1

inline OktStatus Expm1_32f(const Real32* src, Real32* dst, std::int32_t len) { return expm1::loop(src, dst, len); }

inline OktStatus Expm1_64f(const Real64* src, Real64* dst, std::int32_t len) { return expm1::loop(src, dst, len); }

}  // namespace okt::model
