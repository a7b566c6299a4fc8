// Double-double arithmetic: a number as the unevaluated sum of two Real64, and the exact sums and products that make
// such pairs. All of it is plain Real64 arithmetic and exact under round to nearest as long as nothing overflows and no
// rest falls below the subnormal range; under another rounding mode the same operations are done in the same order.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// hi + lo, where lo is a correction to hi.
template <int N>
struct DoubleDouble {
    F64<N> hi, lo;
};

// The factors of the Dekker split: 2^k + 1 leaves 53 - k significant bits in the high part.
inline constexpr Real64 splitter26 = 0x1.0000002p+27;      // 2^27 + 1 = 134217729
inline constexpr Real64 splitter21 = 0x1.00000001p+32;     // 2^32 + 1
inline constexpr Real64 splitter10 = 0x1.00000000002p+43;  // 2^43 + 1

// Keeps 26 significant bits of a Real64, cutting off the rest.
inline constexpr std::uint64_t splitMaskWide = 0xFFFFFFFFF8000000;

// a + b with its rounding error, whatever their sizes.
template <int N>
inline DoubleDouble<N> twoSum(F64<N> a, F64<N> b) {
    const F64<N> s = b + a;
    const F64<N> d = a - s;
    const F64<N> t = s + d;
    return {s, (d + b) + (a - t)};
}

// a + b with its rounding error, where a dominates.
template <int N>
inline DoubleDouble<N> fastTwoSum(F64<N> a, F64<N> b) {
    const F64<N> s = a + b;
    return {s, (a - s) + b};
}

// v as a short high part, rounded to nearest, and the rest: products of two 26-bit parts are exact.
template <int N>
inline DoubleDouble<N> dekkerSplit(F64<N> v, Real64 splitter = splitter26) {
    const F64<N> t = F64<N>(splitter) * v;
    const F64<N> d = t - v;
    const F64<N> h = t - d;
    return {h, v - h};
}

// v as a high part whose pattern is cut by the mask, and the rest.
template <int N>
inline DoubleDouble<N> maskSplit(F64<N> v, std::uint64_t mask = splitMaskWide) {
    const F64<N> h = v & U64<N>(mask);
    return {h, v - h};
}

// a · b with its rounding error, from the factors' splits.
template <int N>
inline DoubleDouble<N> exactProduct(F64<N> a, DoubleDouble<N> aParts, F64<N> b, DoubleDouble<N> bParts) {
    const F64<N> p = a * b;
    const F64<N> e =
        (((aParts.hi * bParts.hi - p) + aParts.hi * bParts.lo) + aParts.lo * bParts.hi) + aParts.lo * bParts.lo;
    return {p, e};
}
template <int N>
inline DoubleDouble<N> exactProduct(F64<N> a, F64<N> b) {
    return exactProduct(a, dekkerSplit(a), b, dekkerSplit(b));
}

}  // namespace okt
