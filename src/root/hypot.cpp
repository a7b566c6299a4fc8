// Hypotenuse: sqrt(x² + y²) by the root of multiplicative_root.h, without a root or a division, under the caller's
// MXCSR.
//
// Real32 works in Real64, where no square overflows or underflows; a sum that would be subnormal as a Real32 is
// scaled. Real64 scales two small sources up. There is no scaling at the large end, and none while the larger
// biased exponent is 500 to 511 although the sum of squares may be subnormal then: see the two bands in the
// function's documentation. Elements are worked side by side where none is an infinity, a NaN or needs scaling;
// on Real32 the processor's root takes the place of the steps where it must come to the same bits and flags.
//
// Largest errors seen: 0.5000 ulp (32f), 1.171 ulp at (0x1.0a166fc706213p0, 0x1.74e4387c7ed11p0) (64f, outside the two
// bands).
#include "exports/Hypot.h"
#include "frame/loops.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"
#include "root/multiplicative_root.h"

namespace okt {
namespace {

// An infinity in either source gives plus infinity, also beside a NaN; of two NaNs the first comes through, quiet.
template <class T>
[[gnu::noinline, gnu::cold]] T ofSpecial(T x, T y) {
    if (isFinite(x)) return y * y;
    if (isFinite(y) || isInfinite(x)) return x * x;
    return isInfinite(y) ? y * y : mulOrdered(x, y);
}

template <class V>
V sumOfSquares(V x, V y) {
    return x * x + y * y;
}

// sqrt(s) · 2^-k in one scale.
template <int N>
F64<N> scaledRoot(F64<N> s, std::uint64_t k) {
    const RootParts<N> parts = rootParts(s);
    return parts.root.value() * asReal((parts.biasedHalfExponent - U64<N>(k)) << 52);
}

// The sum as a Real32, whose exponent field decides on the scaling. The rounding's flags are part of the function's.
template <int N>
Mask32<N> isSmall(F64<N> s) {
    return (asBits(narrow(s)) & U32<N>(0x7F800000)) == U32<N>(0);
}

Real32 hypotElement(Real32 x, Real32 y, OktStatus&) {
    if (!isFinite(x) || !isFinite(y)) return ofSpecial(x, y);
    if (x == 0.0f && y == 0.0f) return 0.0f;
    const F64x1 s = sumOfSquares(widen(F32x1(x)), widen(F32x1(y)));
    const bool small = any(isSmall(s));
    return narrow(scaledRoot(small ? s * F64x1(0x1p200) : s, small ? 100 : 0)).raw;
}

template <int N>
[[gnu::noinline]] void storeBySteps(F64<N> s, Real32* dst) {
    narrow(scaledRoot(s, 0)).store(dst);
}

template <int N>
bool hypotLanes(const Real32* src1, const Real32* src2, Real32* dst) {
    const auto x = F32<N>::load(src1), y = F32<N>::load(src2);
    const U32<N> exponent(0x7F800000);
    if (any(((asBits(x) & exponent) == exponent) | ((asBits(y) & exponent) == exponent))) [[unlikely]]
        return false;
    const F64<N> s = sumOfSquares(widen(x), widen(y));
    if (any(isSmall(s))) [[unlikely]]
        return false;
    // The result is the rounding to Real32 of a Real64 that differs from the true root by
    // less than 4 ulp in every rounding mode, as the processor's root does by less than 1.
    // Where that root stands clear of all Real32 and all midpoints between them both round
    // alike; both raise inexact then, as the steps are exact only for the powers of four.
    const F64<N> root = sqrt(s);
    constexpr std::uint32_t clearance = 16;  // in ulp of Real64; a Real32 or a midpoint comes every 2^28 of them
    const U32<N> place = packLowWords(asBits(root) + U64<N>(clearance)) & U32<N>(0x0FFFFFFF);
    if (any(greaterSigned(U32<N>(2 * clearance + 1), place))) [[unlikely]]
        storeBySteps(s, dst);
    else
        narrow(root).store(dst);
    return true;
}

Real64 hypotElement(Real64 x, Real64 y, OktStatus&) {
    if (!isFinite(x) || !isFinite(y)) return ofSpecial(x, y);
    if (x == 0.0 && y == 0.0) return 0.0;
    F64x1 s = sumOfSquares(F64x1(x), F64x1(y));
    Real64 unscale = 1.0;
    if (biasedExponent(x) < 500 && biasedExponent(y) < 500) {
        keepFlags(s.raw);
        const F64x1 up(0x1p1000);
        s = sumOfSquares(F64x1(x) * up, F64x1(y) * up);
        unscale = 0x1p-1000;
    }
    return (scaledRoot(s, 0) * F64x1(unscale)).raw;
}

template <int N>
bool hypotLanes(const Real64* src1, const Real64* src2, Real64* dst) {
    const auto x = F64<N>::load(src1), y = F64<N>::load(src2);
    const U32<N> exponent(0x7FF00000);
    const U32<N> ofX = packHighWords(asBits(x)) & exponent, ofY = packHighWords(asBits(y)) & exponent;
    const U32<N> smallest(500u << 20);
    const auto special = (ofX == exponent) | (ofY == exponent);
    const auto small = greaterSigned(smallest, ofX) & greaterSigned(smallest, ofY);
    if (any(special | small)) [[unlikely]]
        return false;
    scaledRoot(sumOfSquares(x, y), 0).store(dst);
    return true;
}

template <class T>
void hypot(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus& status) {
    packedElementLoop<4, 8>(
        src1, src2, dst, len,
        []<int N>(std::integral_constant<int, N>, const T* x, const T* y, T* to) { return hypotLanes<N>(x, y, to); },
        [](T x, T y, OktStatus& s) { return hypotElement(x, y, s); }, status);
}

}  // namespace

OKT_EXPORT(Hypot, 32f, hypot)
OKT_EXPORT(Hypot, 64f, hypot)

}  // namespace okt
