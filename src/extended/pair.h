// What the extended-precision scalar kernels share: splitting, polynomials, the results of special arguments.
//
// The kernels assume an x87 control word of 64-bit precision and round to nearest, which the frame of the complex
// functions sets. Each is written so that the last addition is the only rounding of full size: a head that is exact
// or nearly so, plus a small low part.
#pragma once

#include "extended/extended_tables.h"
#include "extended/sign_exponent.h"

#include <cstddef>
#include <utility>

#define OKT_EXT inline __attribute__((always_inline))
#define OKT_EXT_RARE inline __attribute__((noinline, cold))

namespace okt {

namespace ext {

// Adding and taking away 1.5*2^k rounds to a multiple of 2^(k-63).
inline constexpr Real64 toMultiple31 = 6442450944.0;         // 1.5*2^32, multiples of 2^-31
inline constexpr Real64 toMultiple40 = 12582912.0;           // 1.5*2^23, multiples of 2^-40
inline constexpr Real64 toMultiple11 = 6755399441055744.0;   // 1.5*2^52, multiples of 2^-11
inline constexpr Real64 toInteger = 13835058055282163712.0;  // 1.5*2^63

inline constexpr Real64 twoTo75 = 3.777893186295716e22;
inline constexpr Real64 twoToMinus75 = 2.6469779601696886e-23;

// The tiny and the huge value of the format, for results that under- or overflow.
OKT_EXT Real80 tiny() { return real80(0x0001, 0x8000000000000000U); }
OKT_EXT Real80 huge() { return real80(0x7FFE, 0xFFFFFFFFFFFFFFFFU); }

// A NaN with the invalid flag, an infinity with the divide-by-zero flag.
inline Real80 invalid() { return opaque(Real80{infinity<Real64>()}) * 0.0; }
inline Real80 pole(Real80 sign) { return sign / opaque(Real80{0.0}); }

// x rounded to a multiple of the given magic constant's last place.
OKT_EXT Real80 roundBy(Real80 magic, Real80 x) { return (x + magic) - magic; }

// The leading 31 or 32 bits of x, whatever its magnitude.
OKT_EXT Real80 leading31(Real80 x) {
    Real80 big = x * toMultiple31;
    return (x + big) - big;
}

// An integer-valued x as an integer. It is exact in Real64, so the conversion does not depend on a rounding mode.
OKT_EXT std::int64_t asInteger(Real80 x) { return static_cast<std::int64_t>(static_cast<Real64>(x)); }

// c[First] + z*(c[First + Step] + ...), Horner's rule on every Step-th coefficient.
template <std::size_t First, std::size_t Step, std::size_t N>
OKT_EXT Real80 horner(Real80 z, const Real64 (&c)[N]) {
    if constexpr (First + Step >= N) {
        return c[First];
    } else {
        return horner<First + Step, Step>(z, c) * z + c[First];
    }
}

// The polynomial with the coefficients c.
template <std::size_t N>
OKT_EXT Real80 poly(Real80 z, const Real64 (&c)[N]) {
    return horner<0, 1>(z, c);
}

// The polynomial with the coefficients c as two chains of half the length, in even and in odd powers.
template <std::size_t N>
OKT_EXT Real80 polyInTwo(Real80 z, Real80 zz, const Real64 (&c)[N]) {
    return horner<1, 2>(zz, c) * z + horner<0, 2>(zz, c);
}

// The same with leading coefficients of two parts each: a pair costs one addition from memory more, an 80-bit
// constant several operations of the load unit.
template <std::size_t I = 0, std::size_t W, std::size_t N>
OKT_EXT Real80 poly(Real80 z, const Real64 (&wide)[W], const Real64 (&c)[N]) {
    if constexpr (I == W) {
        return poly(z, c);
    } else {
        return (poly<I + 2>(z, wide, c) * z + wide[I + 1]) + wide[I];
    }
}

template <std::size_t I = 0, std::size_t W, std::size_t N>
OKT_EXT Real80 polyInTwo(Real80 z, Real80 zz, const Real64 (&wide)[W], const Real64 (&c)[N]) {
    if constexpr (I == W) {
        return polyInTwo(z, zz, c);
    } else {
        return (polyInTwo<I + 2>(z, zz, wide, c) * z + wide[I + 1]) + wide[I];
    }
}

// A tiny argument of an odd function: x, with the inexact flag, and underflow where x is subnormal.
OKT_EXT Real80 tinyOdd(Real80 x) { return x == 0 ? x : (twoTo75 * x - x) * twoToMinus75; }

// --- unevaluated sums of two Real80 ---

struct Pair {
    Real80 head, tail;
};

// Sum of two values of which the first has the larger magnitude.
OKT_EXT Pair fastTwoSum(Real80 a, Real80 b) {
    Real80 s = a + b;
    return {s, (a - s) + b};
}

OKT_EXT Pair twoSum(Real80 a, Real80 b) {
    Real80 s = a + b;
    Real80 v = s - a;
    return {s, (a - (s - v)) + (b - v)};
}

// The leading 32 bits of x: the products of two such parts are exact.
OKT_EXT Real80 leading32(Real80 x) {
    Real80 p = x * 4294967297.0;
    return p - (p - x);
}

OKT_EXT Pair twoProduct(Real80 a, Real80 b) {
    Real80 ah = leading32(a), al = a - ah;
    Real80 bh = leading32(b), bl = b - bh;
    Real80 p = a * b;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
}

OKT_EXT Pair operator+(Pair a, Pair b) {
    Pair s = twoSum(a.head, b.head);
    return fastTwoSum(s.head, s.tail + (a.tail + b.tail));
}

OKT_EXT Pair operator-(Pair a) { return {-a.head, -a.tail}; }

OKT_EXT Pair operator*(Pair a, Pair b) {
    Pair p = twoProduct(a.head, b.head);
    return fastTwoSum(p.head, p.tail + (a.head * b.tail + a.tail * b.head));
}

OKT_EXT Pair operator/(Pair a, Pair b) {
    Real80 q = a.head / b.head;
    Pair p = twoProduct(q, b.head);
    Real80 rest = ((a.head - p.head) - p.tail) + (a.tail - q * b.tail);
    return fastTwoSum(q, rest / b.head);
}

// Square root of the pair a, a.head > 0, as a pair.
OKT_EXT Pair root(Pair a) {
    Real80 s = sqrt(a.head);
    Pair p = twoProduct(s, s);
    return fastTwoSum(s, (((a.head - p.head) - p.tail) + a.tail) / (s + s));
}

}  // namespace ext

}  // namespace okt
