// Cube root and its reciprocal, without a division or a root.
//
// The exponent is divided by three by an integer multiplication; its remainder r and the significand m are left.
// Real32: p(m), a polynomial in Real64 on [1, 2), times 2^(r/3), rounded to Real32, times a power of two.
// Real64: [1, 2) is cut into 32 intervals with the middles c_i; u = (m - c_i)/c_i, and the root of 2^r c_i from a table
// (head and tail) is multiplied by the binomial series of (1 + u)^(1/3) or (1 + u)^(-1/3).
// Every element gets the same bits in a block and alone.
#pragma once

#include "frame/loops.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "root/cbrt_tables.h"

namespace okt::cubic {
namespace {

enum class Root { cbrt, invCbrt };

// ---------------------------------------------------------------------------------------------------------------------
// Real32.

// m^(1/3) and m^(-1/3) on [1, 2], relative errors 2^-25.2 and 2^-25.4; minimax. Highest term first.
constexpr Real64 cbrtPolynomial[] = {
    0x1.a10607d4457d4p-10, -0x1.3ed90f77a7b1ep-6, 0x1.abd8e9d19e871p-4, -0x1.4b881fc1aeeb2p-2,
    0x1.4a3f9820694dcp-1,  -0x1.c7734539d8f25p-1, 0x1.0e47e0eae9fa1p+0, 0x1.b42648692af71p-2,
};
constexpr Real64 invCbrtPolynomial[] = {
    0x1.0a2ab3c7b388fp-8,  -0x1.c3bf3ea4a9829p-5, 0x1.5365a036decd4p-2,  -0x1.28ba6ac8d2726p+0, 0x1.4da6802f9b5a3p+1,
    -0x1.f77bd2a84c7a9p+1, 0x1.02f6503f2b5c3p+2,  -0x1.72244182a44c4p+1, 0x1.06875c4b4938fp+1,
};

template <std::size_t terms, class V>
[[gnu::always_inline]] inline V horner(const Real64 (&coefficients)[terms], V x) {
    V sum = V(coefficients[0]) * x + V(coefficients[1]);
    for (std::size_t i = 2; i < terms; ++i) sum = inStep(sum * x + V(coefficients[i]));
    return sum;
}

constexpr std::uint32_t exponentMask = 0x7F800000;
constexpr std::uint32_t signMask = 0x80000000;

// The root of the normal number b, not scaled, and the power of two that scales it.
template <int N>
struct Unscaled {
    F32<N> t;
    U32<N> scale;
};

template <Root root, int N>
[[gnu::always_inline]] inline Unscaled<N> unscaledRoot(U32<N> b) {
    const F64<N> m = widen(asReal((b & U32<N>(0x007FFFFF)) | U32<N>(0x3F800000)));
    const F64<N> p = root == Root::cbrt ? horner(cbrtPolynomial, m) : horner(invCbrtPolynomial, m);

    // The exponent e (254 - e for the reciprocal) stands at bit 23. Times 2/3 in the upper half of the lane its digit
    // of thirds, e mod 3, appears in bits 20 and 21; half of that is e/3 at bit 23.
    U32<N> e = b & U32<N>(exponentMask);
    if constexpr (root == Root::invCbrt) e = U32<N>(0x7F000000) - e;
    const U32<N> twoThirds = mulHighHalves(e, 0xAAAB);
    const U32<N> scale = ((twoThirds >> 1) + U32<N>(0x2A600000)) & U32<N>(exponentMask);
    return {narrow(p * gatherElementsByDigitPairs<20>(tables::cbrtScalePairs, twoThirds)), scale};
}

template <int N>
Mask32<N> outOfRange(U32<N> magnitude) {  // neither normal nor finite
    return greaterSigned(magnitude - U32<N>(0x80800000), U32<N>(0xFEFFFFFF));
}

template <Root root, int N>
F32<N> rootSteps(U32<N> x) {
    const U32<N> sign = x & U32<N>(signMask);
    const auto [t, scale] = unscaledRoot<root>(x ^ sign);
    return t * asReal(scale | sign);
}

// Any lanes, special ones blended in: the scale of a normal lane is multiplied by one, that of a special lane by what
// brings it to its result.
template <Root root, int N>
[[gnu::noinline, gnu::cold]] F32<N> rootStepsOfAny(U32<N> x) {
    constexpr bool inverse = root == Root::invCbrt;
    const U32<N> sign = x & U32<N>(signMask);
    const U32<N> b = x ^ sign;
    const U32<N> infinity(exponentMask);
    const Mask32<N> big = greaterSigned(b, U32<N>(0x7F7FFFFF));
    const Mask32<N> small = greaterSigned(U32<N>(0x00800000), b);
    const Mask32<N> zero = b == U32<N>(0);

    const U32<N> raised = asBits(asReal(zeroUnless(small, b)) * F32<N>(0x1p126f));
    const U32<N> worked = select(big, U32<N>(0x3F800000), select(small, raised, b));

    const U32<N> lowered(asBits(inverse ? 0x1p42f : 0x1p-42f));
    U32<N> multiplier = select(small, lowered, U32<N>(0x3F800000));
    multiplier = select(big, b, multiplier);
    multiplier = select(zero, inverse ? infinity : U32<N>(0), multiplier);
    if constexpr (inverse) multiplier = select(b == infinity, U32<N>(0), multiplier);

    const auto [t, scale] = unscaledRoot<root>(worked);
    return t * (asReal(scale) * asReal(multiplier | sign));
}

template <Root root, int N>
[[gnu::always_inline]] inline void rootBlock(const Real32* src, Real32* dst, OktStatus& status) {
    const U32<N> x = asBits(F32<N>::load(src));
    const U32<N> magnitude = x & U32<N>(~signMask);
    if (any(outOfRange(magnitude))) [[unlikely]] {
        rootStepsOfAny<root>(x).store(dst);
        if (root == Root::invCbrt && any(magnitude == U32<N>(0))) status = oktStatusSingularity;
        return;
    }
    rootSteps<root>(x).store(dst);
}

template <Root root>
void root32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - 16; i += 16) rootBlock<root, 16>(src + i, dst + i, status);
    for (; i <= len - 4; i += 4) rootBlock<root, 4>(src + i, dst + i, status);
    for (; i < len; ++i) rootBlock<root, 1>(src + i, dst + i, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64.

// ((1 + u)^(1/3) - 1)/u and ((1 + u)^(-1/3) - 1)/u on |u| <= 1/65, relative errors of the roots 2^-59.8 and 2^-57.6;
// highest term first. The first is the Taylor series; so are the last two terms of the second, the others are fitted.
constexpr Real64 cbrtSeries[] = {
    -0x1.036de5c9cc8e7p-6, 0x1.3750ad588f115p-6, -0x1.8090d6221a247p-6, 0x1.ee7113506ac12p-6,
    -0x1.511e8d2b3183bp-5, 0x1.f9add3c0ca458p-5, -0x1.c71c71c71c71cp-4, 0x1.5555555555555p-2,
};
constexpr Real64 invCbrtSeries[] = {
    0x1.791d4f50a7b47p-4, -0x1.9b33ca7a65562p-4, 0x1.c67c9dd3d11bbp-4, -0x1.ff4c33f90ef5fp-4,
    0x1.26fabb85d0196p-3, -0x1.61f9add3c0ca3p-3, 0x1.c71c71c71c71cp-3, -0x1.5555555555555p-2,
};

template <Root root, int N>
F64<N> rootSteps(F64<N> x) {
    constexpr bool inverse = root == Root::invCbrt;
    const U64<N> bits = asBits(x);
    const U64<N> byteOffset = (bits >> 44) & U64<N>(0xF8);  // 8 i
    const F64<N> minusM = asReal((bits & U64<N>(0x000FFFFFFFFFFFFF)) | U64<N>(0xBFF0000000000000));
    const F64<N> minusC = asReal((bits & U64<N>(0x000F800000000000)) | U64<N>(0xBFF0400000000000));
    const F64<N> u = gatherElementsAt(tables::cbrtRecip, byteOffset) * (minusM - minusC);

    // e = 3 q + r; 0x1556/2^14 is 1/3, near enough for 11 bits.
    const U64<N> e = (bits >> 52) & U64<N>(0x7FF);
    const U64<N> q = mulLowWords(e, U64<N>(0x1556)) >> 14;
    const U64<N> r = e - q - (q + q);
    const U64<N> rowOffset = byteOffset + (r << 8);  // 8 (32 r + i)
    // The bias comes to 1023 - 341 for the root and 1023 + 341 for the reciprocal.
    const U64<N> exponent = inverse ? U64<N>(1364) - q : U64<N>(682) + q;
    const F64<N> scale = asReal((exponent << 52) | (bits & U64<N>(0x8000000000000000)));

    const F64<N> h = gatherElementsAt(inverse ? tables::invCbrtHead : tables::cbrtHead, rowOffset) * scale;
    const F64<N> t = gatherElementsAt(inverse ? tables::invCbrtTail : tables::cbrtTail, rowOffset) * scale;
    const F64<N> series = horner(inverse ? invCbrtSeries : cbrtSeries, u);
    return (series * (h * u) + t) + h;
}

// Neither zero, subnormal, infinity nor NaN.
template <int N>
bool allNormal(F64<N> x) {
    const U32<N> exponent = packHighWords(asBits(x)) & U32<N>(0x7FF00000);
    return !any((exponent == U32<N>(0)) | (exponent == U32<N>(0x7FF00000)));
}

template <Root root>
[[gnu::noinline]] Real64 specialElement(Real64 x, OktStatus& status) {
    constexpr bool inverse = root == Root::invCbrt;
    if (isZero(x)) {
        if constexpr (!inverse) return x + x;
        status = oktStatusSingularity;
        return withSign(infinity<Real64>(), x);
    }
    if (isSubnormal(x)) return rootSteps<root>(F64x1(x * 0x1p996)).raw * (inverse ? 0x1p332 : 0x1p-332);
    if (inverse && isInfinite(x)) return withSign(Real64{0}, x);
    return x + x;
}

template <Root root>
void root64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    redoBlockTryTail<4, 8>(
        len, len - 3,
        [=]<int N>(std::integral_constant<int, N>, std::int32_t i) {
            const auto x = F64<N>::load(src + i);
            if (!allNormal(x)) return false;
            rootSteps<root>(x).store(dst + i);
            return true;
        },
        [&](std::int32_t i) {
            const F64x1 x = F64x1::load(src + i);
            (allNormal(x) ? rootSteps<root>(x) : F64x1(specialElement<root>(x.raw, status))).store(dst + i);
        });
}

}  // namespace
}  // namespace okt::cubic
