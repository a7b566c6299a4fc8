// erf |x| is a polynomial for every interval that the exponent and the first bits of the fraction tell apart: two bits
// on Real32, three on Real64. The row of coefficients is found from these bits by a subtraction, clamped at both ends;
// the last row is the constant 1. The sign of x is put on the result. Real32: degree 6 in |x|, in Real64. Real64:
// degree 10 about the interval's middle, the last steps in split parts.
//
// Largest errors seen:
//   Real32  0.5119 ulp at 0x1.0b122p+1
//   Real64  0.796 ulp at 0x1.16a1abd3ba013p+2 in [4, 4.5), 0.64 ulp elsewhere; 1.2043 ulp at -0x1.8694697e94ec1p-1021,
//           next to the subnormal numbers
//
// GCC: -fschedule-insns -fsched-pressure (0.90)
#include "exports/Erf.h"
#include "erf/erf_tables.h"
#include "erf/split_step.h"
#include "frame/loops.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// From 4 on any finite argument serves in the last row. An infinity is replaced by 0; a NaN passes through the
// polynomial and comes out quiet.
template <int N>
inline F32<N> erf(F32<N> x) {
    const U32<N> bits = asBits(x);
    const U32<N> row = clampHighHalves((bits & U32<N>(0x7FE00000)) - U32<N>(0x3DE00000), 0x02A0);
    const InMemory<std::uint32_t, N> offset(row >> 15);  // 64 bytes a row
    const RowPerLane<N> c(tables::erfRows32, offset.lane);

    const U32<N> magnitude = bits & U32<N>(0x7FFFFFFF);
    const F64<N> t = widen(zeroIf(magnitude == U32<N>(Format<Real32>::infinity), asReal(magnitude)));

    const auto [c4, c5] = c.pair(4);
    const auto [c2, c3] = c.pair(2);
    const auto [c0, c1] = c.pair(0);
    const F64<N> p = (((((c[6] * t + c5) * t + c4) * t + c3) * t + c2) * t + c1) * t + c0;
    return narrow(p) | signOf(x);
}

void erf32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    redoBlock<4>(
        src, dst, len,
        [](const Real32* from, Real32* to) {
            erf(F32<4>::load(from)).store(to);
            return true;
        },
        [](Real32 x, OktStatus&) { return erf(F32x1(x)).raw; }, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

// The byte offset of the element's row.
template <int N>
inline U32<N> rowOffset(F64<N> x) {
    const U32<N> bits = packHighWords(asBits(x)) & U32<N>(0x7FFE0000);
    return clampHighHalves(bits - U32<N>(0x3FBE0000), 0x005A) >> 10;  // 128 bytes a row
}

template <int N>
inline F64<N> erfOfRow(F64<N> x, const std::uint32_t* offset) {
    const RowPerLane<N> c(tables::erfRows64, offset);
    const F64<N> t = abs(x) + c[12];
    const auto [c10, c11] = c.pair(10);
    const auto [c8, c9] = c.pair(8);
    const auto [c6, c7] = c.pair(6);
    const auto [c4, c5] = c.pair(4);
    const auto [c2, c3] = c.pair(2);
    const auto [c0, c1] = c.pair(0);
    const F64<N> a = ((((((((c11 * t + c10) * t + c9) * t + c8) * t + c7) * t + c6) * t + c5) * t + c4) * t + c3) * t;
    const auto [head, low] = splitStep(twoSum(a, c2), t, c1, c0);
    return (head + low) | signOf(x);
}

// Register after register: more of them at a time do not find room for their columns.
inline F64<4> erf(F64<4> x) {
    const InMemory<std::uint32_t, 4> offset(rowOffset(x));
    return {erfOfRow(x.lowHalf(), offset.lane), erfOfRow(x.highHalf(), offset.lane + 2)};
}
inline F64<1> erf(F64<1> x) {
    const std::uint32_t offset = rowOffset(x).raw;
    return erfOfRow(x, &offset);
}

constexpr std::uint32_t leastMain64 = 0x00800000;  // high words of the main path: from here on,
constexpr std::uint32_t infinity64 = 0x7FF00000;   // and below this

template <int N>
inline Mask32<N> outsideMain(U32<N> highMagnitude) {
    return greaterSigned(highMagnitude + U32<N>(0u - (leastMain64 | 0x80000000)),
                         U32<N>(infinity64 - (leastMain64 | 0x80000000) - 1));
}

// x · 2/sqrt(pi) for a subnormal x, correct to the last place: worked at 2^200 times the size and brought back in two
// parts, the first of which is exact.
Real64 erfSubnormal(Real64 x) {
    constexpr Real64 slope = 0x1.20dd750429b6dp+0;
    constexpr Real64 slopeHi = 0x1.20dd75p+0;
    constexpr Real64 slopeLo = 0x1.0a6db446b8ea4p-30;
    if (magnitudeBits(x) < 0x0000010000000000) return x * slope;
    const auto [yh, yl] = maskSplit(F64x1(x * 0x1p200));
    const F64x1 a = F64x1(slopeHi) * yh;
    const F64x1 b = yh * F64x1(slopeLo) + yl * F64x1(slope);
    const auto [ah, al] = maskSplit(a);
    return (ah * F64x1(0x1p-200) + (b + al) * F64x1(0x1p-200)).raw;
}

[[gnu::noinline, gnu::cold]] Real64 erfElement64(Real64 x, OktStatus&) {
    if (isNaN(x)) return x;  // bit for bit
    if (isInfinite(x)) return isNegative(x) ? -1.0 : 1.0;
    if (biasedExponent(x) == 0) return erfSubnormal(x);
    return erf(F64x1(x)).raw;
}

void erf64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    redoBlock<4>(
        src, dst, len,
        [](const Real64* from, Real64* to) {
            const F64<4> x = F64<4>::load(from);
            if (any(outsideMain(packHighWords(asBits(x)) & U32<4>(0x7FFFFFFF)))) [[unlikely]]
                return false;
            erf(x).store(to);
            return true;
        },
        erfElement64, status);
}

}  // namespace

OKT_EXPORT(Erf, 32f, erf32)
OKT_EXPORT(Erf, 64f, erf64)

}  // namespace okt
