// x to the power 2/3: the cube root to nearly twice the working precision, and its square, in Real64 under the caller's
// MXCSR.
//
// |x| = 2^(3k + rem) · m, m in [1, 2). A short seed t of m^(-1/3) gives v = 1 - m t³, exact as a pair; then
// m^(1/3) = m t² · (1 - v)^(-2/3), the series with its first term and its product with v in double-length arithmetic.
// Elements are worked side by side where all are normal.
//
// Largest errors seen: 0.5000 ulp (32f), 0.504 (64f).
//
// GCC: -fschedule-insns -fsched-pressure (0.92)
#include "exports/Pow2o3.h"
#include "frame/loops.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "root/pow2o3_tables.h"

namespace okt {
namespace {

constexpr Real64 splitSmall = 0x1.0000002p+27;    // 2^27 + 1
constexpr Real64 splitBig = 0x1.00000000002p+43;  // 2^43 + 1

// (1 - v)^(-2/3) = 1 + c1 v + c2 v² + ... on |v| <= 1/32, relative error 2^-64.6; Taylor. The coefficients of order 12
// down to 2, and c1 = 2/3 as a pair.
constexpr Real64 seriesTerms[] = {
    0x1.4746c5e79ae3dp-2, 0x1.50a0910b7abe7p-2, 0x1.5b259593d6946p-2, 0x1.671e0d7e740c4p-2,
    0x1.74edfa52160ccp-2, 0x1.8524d8aeb2d5ap-2, 0x1.9899e3843bc6cp-2, 0x1.b0a2f0e65d69p-2,
    0x1.cf8a021b64151p-2, 0x1.f9add3c0ca458p-2, 0x1.1c71c71c71c72p-1,
};
constexpr Real64 firstHead = 0x1.5555555555555p-1;
constexpr Real64 firstTail = 0x1.5555555555555p-55;

template <class V>
struct HeadAndRest {
    V head, rest;
};

template <class V>
HeadAndRest<V> splitBy(Real64 constant, V a) {
    const V p = V(constant) * a;
    const V q = p - a;
    const V head = p - q;
    return {head, a - head};
}

// The sum and what its rounding left.
template <class V>
HeadAndRest<V> twoSum(V a, V b) {
    const V s = a + b;
    const V d = a - s;
    return {s, (a - (s + d)) + (d + b)};
}

template <class V>
struct CubeRoot {
    V head, rest;  // of 2^rem · m
    V scale;       // 2^(k - bias)
};

template <int N>
CubeRoot<F64<N>> cubeRoot(F64<N> w, std::uint64_t bias) {
    using V = F64<N>;
    using U = U64<N>;
    const U bits = asBits(w);
    // e = 3 q + rem: 0x5556/2^16 is 1/3, near enough for 11 bits. 1023 is 3 · 341.
    const U e = bits >> 52;
    const U q = mulLowWords(e, U(0x5556)) >> 16;
    const U rem = e - q - (q + q);
    const V scale = asReal((q + U(1023 - 341 - bias)) << 52);
    const V m = asReal((bits & U(0x000FFFFFFFFFFFFF)) | U(0x3FF0000000000000));
    const V t = gatherElementsAt(tables::pow2o3Seed, (bits >> 44) & U(0xF8));

    const auto [mh, ml] = splitBy(splitBig, m);
    const V b = mh * t * t;
    const V c = ml * t * t;
    const V d0 = V(1.0) - t * b;
    const V d1 = (V(0.0) - c) * t;
    const auto [wh, wr] = splitBy(splitSmall, d0);
    const V vl = d1 + wr;
    const V v = wh + vl;

    V p = V(seriesTerms[0]);
    for (int i = 1; i < 11; ++i) p = inStep(V(seriesTerms[i]) + v * p);
    p = v * p;
    const auto [s, left] = twoSum(V(firstHead), p);
    const V slo = left + V(firstTail);
    const auto [sh, sr] = splitBy(splitSmall, s);
    const V sl = slo + sr;

    // (sh + sl) (wh + vl), times (b + c), plus b: with the c of the last step that is m^(1/3).
    const V ph = sh * wh;
    const V pl = (sh + sl) * vl + sl * wh;
    const auto [qh, qr] = splitBy(splitSmall, ph);
    const V ql = pl + qr;
    const V rh = qh * b;
    const V rl = (qh + ql) * c + ql * b;
    const auto [z, zlo] = twoSum(b, rh);
    const auto [zh, zr] = splitBy(splitSmall, z);
    const V rest = ((zr + c) + rl) + zlo;

    const auto [th, tl] = gatherPairsAt(tables::cubeRootTwo, rem << 4);
    return {zh * th, (zh + rest) * tl + rest * th, scale};
}

template <int N>
F64<N> twoThirds32(F64<N> w, std::uint64_t bias) {
    const auto root = cubeRoot(w, bias);
    const F64<N> y = root.head + root.rest;
    return (y * y) * (root.scale * root.scale);
}

template <int N>
F64<N> twoThirds64(F64<N> w, std::uint64_t bias) {
    const auto root = cubeRoot(w, bias);
    const auto [ah, ar] = splitBy(splitBig, root.head);
    const F64<N> al = root.rest + ar;
    return (ah * ah + (F64<N>(2.0) * ah * al + al * al)) * root.scale * root.scale;
}

constexpr Real64 subnormalUp = 0x1p300;
constexpr std::uint64_t subnormalBias = 100;

Real32 pow2o3Element(Real32 x, OktStatus&) {
    const F64x1 wide = widen(F32x1(x));
    if (!isFinite(x) || wide.raw == 0.0) return x * x;
    const F64x1 w = abs(wide);
    return narrow(biasedExponent(x) == 0 ? twoThirds32(w * F64x1(subnormalUp), subnormalBias) : twoThirds32(w, 0)).raw;
}

Real64 pow2o3Element(Real64 x, OktStatus&) {
    if (!isFinite(x) || x == 0.0) return x * x;
    const F64x1 w = abs(F64x1(x));
    return (biasedExponent(x) == 0 ? twoThirds64(w * F64x1(subnormalUp), subnormalBias) : twoThirds64(w, 0)).raw;
}

template <int N>
bool pow2o3Lanes(const Real32* src, Real32* dst) {
    const auto x = F32<N>::load(src);
    const U32<N> exponent = asBits(x) & U32<N>(0x7F800000);
    if (any((exponent == U32<N>(0)) | (exponent == U32<N>(0x7F800000)))) [[unlikely]]
        return false;
    narrow(twoThirds32(widen(abs(x)), 0)).store(dst);
    return true;
}

template <int N>
bool pow2o3Lanes(const Real64* src, Real64* dst) {
    const auto x = F64<N>::load(src);
    const U32<N> exponent = packHighWords(asBits(x)) & U32<N>(0x7FF00000);
    if (any((exponent == U32<N>(0)) | (exponent == U32<N>(0x7FF00000)))) [[unlikely]]
        return false;
    twoThirds64(abs(x), 0).store(dst);
    return true;
}

template <class T>
void pow2o3(const T* src, T* dst, std::int32_t len, OktStatus& status) {
    packedElementLoop<4, 8>(
        src, dst, len,
        []<int N>(std::integral_constant<int, N>, const T* from, T* to) { return pow2o3Lanes<N>(from, to); },
        [](T x, OktStatus& s) { return pow2o3Element(x, s); }, status);
}

}  // namespace

OKT_EXPORT(Pow2o3, 32f, pow2o3)
OKT_EXPORT(Pow2o3, 64f, pow2o3)

}  // namespace okt
