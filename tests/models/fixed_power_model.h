// Models of Pow2o3 and Pow3o2. They run under the caller's MXCSR.
#pragma once

#include "oktvm_types.h"
#include "root/pow2o3_tables.h"
#include "tests/models/bits.h"
#include "tests/models/multiplicative_root.h"
#include "tests/models/ordered.h"
#include "tests/models/status_flag.h"

#include <cstdint>
#include <type_traits>

namespace okt::model {

namespace fixedpower {

struct Pair {
    Real64 hi;
    Real64 lo;
};

inline constexpr Real64 splitSmall = 134217729.0;    // 2^27 + 1
inline constexpr Real64 splitBig = 8796093022209.0;  // 2^43 + 1

inline Pair split(Real64 a, Real64 constant) {
    const Real64 p = constant * a;
    const Real64 q = p - a;
    const Real64 hi = p - q;
    const Real64 lo = a - hi;
    return {hi, lo};
}

inline Pair twoSum(Real64 head, Real64 p) {
    const Real64 s = head + p;
    const Real64 lo = (head - (s + (head - s))) + ((head - s) + p);
    return {s, lo};
}

inline bool allOnes(Real32 x) { return (asBits(x) & 0x7F800000) == 0x7F800000; }
inline bool allOnes(Real64 x) { return (asBits(x) & 0x7FF0000000000000) == 0x7FF0000000000000; }
inline bool fieldZero(Real32 x) { return (asBits(x) & 0x7F800000) == 0; }
inline bool fieldZero(Real64 x) { return (asBits(x) & 0x7FF0000000000000) == 0; }
inline bool isMinusInfinity(Real32 x) { return asBits(x) == 0xFF800000; }
inline bool isMinusInfinity(Real64 x) { return asBits(x) == 0xFFF0000000000000; }
inline bool isNegative(Real32 x) { return asBits(x) >> 31 != 0; }
inline bool isNegative(Real64 x) { return asBits(x) >> 63 != 0; }

// c2 to c12 of (1 - v)^(-2/3).
inline Real64 higherOrders(Real64 v) {
    static constexpr std::uint64_t c[11] = {
        0x3FE1C71C71C71C72, 0x3FDF9ADD3C0CA458, 0x3FDCF8A021B64151, 0x3FDB0A2F0E65D690,
        0x3FD9899E3843BC6C, 0x3FD8524D8AEB2D5A, 0x3FD74EDFA52160CC, 0x3FD671E0D7E740C4,
        0x3FD5B259593D6946, 0x3FD50A0910B7ABE7, 0x3FD4746C5E79AE3D,
    };
    Real64 sum = fromBits(c[10]);
    for (int i = 9; i >= 0; --i) sum = fromBits(c[i]) + v * sum;
    return v * sum;
}

template <class T>
T twoThirds(T element) {
    if (allOnes(element) || element == T(0.0)) return ordered::mul(element, element);

    const Real64 x = element;
    Real64 w = fromBits(asBits(x) & 0x7FFFFFFFFFFFFFFF);
    int bias = 0;
    if (fieldZero(element)) {
        w = w * fromBits(std::uint64_t{0x52B0000000000000});  // 2^300
        bias = 100;
    }

    const int e = static_cast<int>(asBits(w) >> 52);
    const int rem = e % 3;
    const int k = (e - rem - 1023) / 3;
    const Real64 S = multiplicative::powerOfTwo(k - bias);
    const std::uint64_t fraction = asBits(w) & 0x000FFFFFFFFFFFFF;
    const Real64 m = fromBits(fraction | 0x3FF0000000000000);
    const Real64 t = tables::pow2o3Seed[fraction >> 47];

    // b + c = m t^2, and v = 1 - m t^3.
    const auto [mh, ml] = split(m, splitBig);
    const Real64 b = mh * t * t;
    const Real64 c = ml * t * t;
    const Real64 d0 = 1.0 - t * b;
    const Real64 d1 = (0.0 - c) * t;
    const auto [wh, wr] = split(d0, splitSmall);
    const Real64 vl = d1 + wr;
    const Real64 v = wh + vl;

    // (1 - v)^(-2/3) = 1 + (sh + sl) v.
    const Real64 c1Head = fromBits(std::uint64_t{0x3FE5555555555555});
    const Real64 c1Tail = fromBits(std::uint64_t{0x3C85555555555555});
    const Real64 p = higherOrders(v);
    auto [s, slo] = twoSum(c1Head, p);
    slo = slo + c1Tail;
    const auto [sh, sr] = split(s, splitSmall);
    const Real64 sl = slo + sr;

    const Real64 ph = sh * wh;
    const Real64 pl = (sh + sl) * vl + sl * wh;
    const auto [qh, qr] = split(ph, splitSmall);
    const Real64 ql = pl + qr;
    const Real64 rh = qh * b;
    const Real64 rl = (qh + ql) * c + ql * b;

    // zh + L is the cube root of m.
    const auto [z, zlo] = twoSum(b, rh);
    const auto [zh, zr] = split(z, splitSmall);
    const Real64 L = ((zr + c) + rl) + zlo;

    const Real64 th = tables::cubeRootTwo[2 * rem];
    const Real64 tl = tables::cubeRootTwo[2 * rem + 1];
    const Real64 yh = zh * th;
    const Real64 yl = (zh + L) * tl + L * th;

    if constexpr (std::is_same_v<T, Real32>) {
        const Real64 y = yh + yl;
        return static_cast<Real32>((y * y) * (S * S));
    } else {
        const auto [ah, ar] = split(yh, splitBig);
        const Real64 al = yl + ar;
        return (ah * ah + (2.0 * ah * al + al * al)) * S * S;
    }
}

template <class T>
T threeHalves(T element, OktStatus& status) {
    const auto domain = [&status] {
        // The processor's own NaN, its sign bit set.
        const T result = static_cast<T>(ordered::div(0.0, 0.0));
        status = oktStatusDomain;
        warning::raiseFlag(oktStatusDomain);
        return result;
    };
    if (allOnes(element)) {
        if (isMinusInfinity(element)) return domain();
        return ordered::add(element, element);
    }
    if (element == T(0.0)) return element;
    if (isNegative(element)) return domain();

    const Real64 x = element;
    Real64 w = x;
    int bias = 0;
    if (fieldZero(element)) {
        w = x * fromBits(std::uint64_t{0x4C70000000000000});  // 2^200
        bias = 100;
    }
    const multiplicative::Root root = multiplicative::root(w);
    const Real64 s = multiplicative::powerOfTwo(root.half - bias);
    if constexpr (std::is_same_v<T, Real32>) {
        const Real64 y = root.e2 * root.h + root.g;
        return static_cast<Real32>(y * y * y * s * s * s);
    } else {
        const auto [gh, gr] = split(root.g, splitBig);
        const Real64 lo = root.e2 * root.h + gr;
        const Real64 r = gh * gh * gh + ((gh * gh + gh * lo) * lo * 3.0 + lo * lo * lo);
        return r * s * s * s;
    }
}

template <class T>
OktStatus runTwoThirds(const T* src, T* dst, std::int32_t len) {
    for (std::int32_t i = 0; i < len; ++i) dst[i] = twoThirds(src[i]);
    return oktStatusOk;
}

template <class T>
OktStatus runThreeHalves(const T* src, T* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = threeHalves(src[i], status);
    return status;
}

}  // namespace fixedpower

[[gnu::noinline]] inline OktStatus Pow2o3_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return fixedpower::runTwoThirds(src, dst, len);
}
[[gnu::noinline]] inline OktStatus Pow2o3_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return fixedpower::runTwoThirds(src, dst, len);
}
[[gnu::noinline]] inline OktStatus Pow3o2_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return fixedpower::runThreeHalves(src, dst, len);
}
[[gnu::noinline]] inline OktStatus Pow3o2_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return fixedpower::runThreeHalves(src, dst, len);
}

}  // namespace okt::model
