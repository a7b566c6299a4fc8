// What the inverse hyperbolic functions share: logarithms by a table of reciprocals, of a head and a tail (Real64)
// or of one Real64 (Real32), the double-length argument a + sqrt(a^2 ± 1), and the element loop in lanes.
//
// ln(2^k m) = k ln 2 - ln c + ln(1 + f) with f = c m - 1; c, from a table by the first eight significand bits, is near
// 1/m and has 11 bits, so that c times a head of 26 bits is exact, and the difference from 1 too.
#pragma once

#include "frame/loops.h"
#include "frame/status_flag.h"
#include "hyper/reciprocal_log_table.h"
#include "lanes/lookup.h"

namespace okt::inverse_hyper {

template <class V>
using Bits = U64<V::lanes>;

template <class V>
struct HeadTail {
    V head, tail;  // the head has at most 26 significant bits
};

inline constexpr std::uint64_t upperWordMask = 0xFFFFFFFF00000000;  // leaves 21 significant bits

inline constexpr Real64 ln2 = 0x1.62e42fefa39efp-1;
inline constexpr Real64 ln2Head = 0x1.62e42fefa38p-1;  // short: products with exponents are exact
inline constexpr Real64 ln2Tail = 0x1.ef35793c7673p-45;

// Of the number 2^k m, m in [1, 2).
template <class V>
struct LogRow {
    V k;
    V reciprocal;    // 2^-k c
    V log, logTail;  // -ln c
};

template <class V>
inline LogRow<V> logRow(V number, Real64 addedToExponent = 0) {
    const auto b = asBits(number);
    const auto byteOffset = (b >> 39) & Bits<V>(0x1FE0);
    const auto [c, log] = gatherPairsAt(tables::reciprocalLogTable, byteOffset);
    const V logTail = gatherElementsAt(tables::reciprocalLogTable + 2, byteOffset);
    // The exponent field below that of 2^52 is the integer k + 1023.
    const V k = asReal((b >> 52) | Bits<V>(0x4330000000000000)) - V(0x1p52 + 1023 - addedToExponent);
    const V reciprocal = asReal(asBits(c) - (b & Bits<V>(0x7FF0000000000000)));
    return {k, reciprocal, log, logTail};
}

// ln(1 + f) = f - f^2/2 + c3 f^3 + ... on |f| < 0.0024, relative error 2^-55.0; fitted. As far as the fourth term
// 2^-37.1.
inline constexpr Real64 logC3 = 0x1.5555555555613p-2;
inline constexpr Real64 logC4 = -0x1.0000000000262p-2;
inline constexpr Real64 logC5 = 0x1.9999997b36c81p-3;
inline constexpr Real64 logC6 = -0x1.555555228b38fp-3;

// ln(1 + f) - f for |f| below 0.0024.
template <class V>
inline V logCurve(V f) {
    const V z = f * f;
    const V p = (V(logC5) + V(logC6) * f) * z + (V(logC3) + V(logC4) * f);
    return (p * f - V(0.5)) * z;
}

// ln(2^addedToExponent (head + tail)), where the tail is small beside the head.
template <class V>
inline V lnOf(HeadTail<V> number, Real64 addedToExponent = 0) {
    const auto [k, c, log, logTail] = logRow<V>(number.head, addedToExponent);
    const V f = c * number.head - V(1.0);
    const V fTail = c * number.tail;
    const V curve = logCurve<V>(f + fTail);
    const V s = (k * V(ln2Head) + log) + f;
    return s + ((k * V(ln2Tail) + logTail) + (fTail + curve));
}

// a + sqrt(a^2 + sign), sign = 1 or -1, with the root's rounding error in the tail.
template <int sign, class V>
inline HeadTail<V> plusRoot(V a) {
    const Bits<V> upper(upperWordMask);
    const V aHead = a & upper;
    const V aTail = a - aHead;
    const V s = sign > 0 ? aHead * aHead + V(1.0) : aHead * aHead - V(1.0);
    const V q = aTail * (a + aHead);  // a^2 = aHead^2 + q
    const V r = sqrt(s + q);
    const V rHead = r & upper;
    const V rTail = r - rHead;
    const V d = ((s - rHead * rHead) - rTail * (r + rHead)) + q;
    return {aHead + rHead, (aTail + rTail) + d / (r + r)};
}

// From 2^28 on the root's argument is a^2 to the last place: ln a + ln 2, by way of a smaller number.
inline F64<1> lnOfDouble(F64<1> a) {
    const F64<1> b = a * F64<1>(0x1p-64);
    const F64<1> head = b & U64<1>(upperWordMask);
    return lnOf<F64<1>>({head, b - head}, 65.0);
}

// ln to well over the accuracy of Real32.
template <class V>
inline V lnShort(V number) {
    const auto b = asBits(number);
    const auto [c, log] = gatherPairsAt(tables::reciprocalLogTable, (b >> 39) & Bits<V>(0x1FE0));
    const V k = asReal((b >> 52) | Bits<V>(0x4330000000000000)) - V(0x1p52 + 1023);
    const V f = asReal(asBits(c) - (b & Bits<V>(0x7FF0000000000000))) * number - V(1.0);
    const V p = (V(logC3) + V(logC4) * f) * f - V(0.5);
    return (k * V(ln2) + log) + (f + (f * f) * p);
}

// The result of an element outside the domain, computed for its flag.
template <class T>
inline T outsideDomain(OktStatus& status) {
    status = oktStatusDomain;
    raiseStatusFlag(status);
    return opaque(T{0}) / opaque(T{0});
}

// Elements that the two stages of a logarithm take at a time: each stage is a loop of its own over the chunk, so that
// the processor has many short chains at hand in place of few long ones.
inline constexpr std::int32_t chunk = 64;

// The element loop, worked chunk by chunk where `tryChunk(src, dst)` finds nothing particular in `chunk`
// elements, block by block where `tryBlock(src, dst)` does in four. Both give the very results of `element`.
template <class T, class TryChunk, class TryBlock, class Element>
inline void chunkedElementLoop(const T* src, T* dst, std::int32_t len, const TryChunk& tryChunk,
                               const TryBlock& tryBlock, const Element& element, OktStatus& status) {
    if (smearsForward(src, dst, len, chunk)) [[unlikely]] {
        elementLoop(src, dst, len, element, status);
        return;
    }
    std::int32_t i = 0;
    for (; i <= len - chunk; i += chunk)
        if (!tryChunk(src + i, dst + i)) [[unlikely]]
            redoBlock<4>(src + i, dst + i, chunk, tryBlock, element, status);
    if (i < len) redoBlock<4>(src + i, dst + i, len - i, tryBlock, element, status);
}

}  // namespace okt::inverse_hyper
