// Cosine and sine of an angle as the two lanes of a register: what the kernels of Exp and CIS in Real64 share.
//
// x = n·pi/32 + r + l. With B = n·pi/32, of which a table holds
// sin B as sinHead + sinTail and cos B as cosHead + cosTail,
//     sin x = sin B + cos B·sin r + sin B·(cos r - 1)
// comes as the sum of a main part, which takes in sinHead + (cosHead + cosTail)·r,
// and a low part, which takes what the main part's roundings left and everything
// smaller. The cosine is the sine a quarter turn on: the same steps on another row.
#pragma once

#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "tables/sin_cos_table.h"

#include <cstdint>

namespace okt::complex::angle {

// Row n of the table beside the row of a quarter turn on, column by column: a column is the cosine's element, then the
// sine's, and loads as a register.
struct alignas(64) Rows {
    Real64 element[64 * 8];
};
constexpr Rows makeRows(Real64 sineFactor) {
    Rows both{};
    for (int n = 0; n < 64; ++n)
        for (int column = 0; column < 4; ++column) {
            both.element[8 * n + 2 * column] = tables::sinCosTable[4 * ((n + 16) % 64) + column];
            both.element[8 * n + 2 * column + 1] = tables::sinCosTable[4 * n + column] * sineFactor;
        }
    return both;
}
inline constexpr Rows rows = makeRows(1.0);
inline constexpr Rows rowsOfMagnifiedSine = makeRows(0x1p100);  // gives 2^100 times the sine, main and low part alike

struct Constants {
    Constant64 inverse = 0x1.45f306dc9c883p+3;  // 32/pi
    Constant64 shifter = 0x1.8p+52;             // the sum's low bits hold n
    Constant64 step1 = 0x1.921fb544p-4;         // pi/32 in three parts; n times the first two is exact
    Constant64 step2 = 0x1.0b4611a6p-38;
    Constant64 step3 = 0x1.3198a2e037073p-73;
    // sin r = r (1 + s1 r^2 + ...), cos r = 1 + c1 r^2 + ... on |r| <= pi/64; Taylor. Relative errors 2^-65.1 and
    // 2^-65.2 with four terms, 2^-53.2 and 2^-50.0 with three.
    Constant64 s1 = -0x1.5555555555555p-3;   // -1/3!
    Constant64 s2 = 0x1.1111111111111p-7;    // 1/5!
    Constant64 s3 = -0x1.a01a01a01a01ap-13;  // -1/7!
    Constant64 s4 = 0x1.71de3a556c734p-19;   // 1/9!
    Constant64 c1 = -0.5;                    // -1/2!
    Constant64 c2 = 0x1.5555555555555p-5;    // 1/4!
    Constant64 c3 = -0x1.6c16c16c16c17p-10;  // -1/6!
    Constant64 c4 = 0x1.a01a01a01a01ap-16;   // 1/8!
    Pattern64 rowOfN = std::uint64_t{63};
};

// Cosine and sine of N / 2 angles, side by side as the parts of complex numbers are: the unrounded sum of two.
template <int N>
struct CosineAndSine {
    F64<N> main, low;
};

// The steps before the table, N angles at a time.
template <int N>
struct Reduced {
    F64<N> r, l;
    F64<N> sine, cosine;                // sin r - r and cos r - 1
    InMemory<std::uint64_t, N> offset;  // of the row, in bytes
};

// Of each series, 3 or 4 terms. |x| at most 2^17, where n and its products with the steps are exact.
template <int Terms, int N>
inline Reduced<N> reduce(const Constants& c, F64<N> x) {
    const F64<N> t = x * c.inverse + c.shifter;
    const F64<N> n = t - c.shifter;
    const F64<N> r1 = x - n * c.step1;
    const F64<N> p2 = n * c.step2;
    const F64<N> r = r1 - p2;
    const F64<N> l = ((r1 - r) - p2) - n * c.step3;
    const F64<N> z = r * r;
    F64<N> s, k;
    if constexpr (Terms == 4) {
        s = ((z * c.s4 + c.s3) * z + c.s2) * z + c.s1;
        k = ((z * c.c4 + c.c3) * z + c.c2) * z + c.c1;
    } else {
        s = (z * c.s3 + c.s2) * z + c.s1;
        k = (z * c.c3 + c.c2) * z + c.c1;
    }
    return {r, l, s * z * r, k * z, InMemory<std::uint64_t, N>((asBits(t) & c.rowOfN) << 6)};
}

template <int N>
inline CosineAndSine<2 * N> cosineAndSine(const Rows& table, const Reduced<N>& x) {
    using Parts = F64<2 * N>;
    const auto column = [&](int i) OKT_INLINE { return gatherInterleavedPairsAt(table.element + 2 * i, x.offset); };
    const Parts cosTail = column(0), sinHead = column(1), cosHead = column(3);
    const Parts r = eachTwice(x.r);
    const Parts both = cosTail + cosHead;
    const Parts first = cosHead * r;  // exact, as cosHead is a power of two or zero
    const Parts second = cosTail * r;
    const Parts a = sinHead + first;
    const Parts b = a + second;
    const Parts e1 = (sinHead - a) + first;
    const Parts e2 = (a - b) + second;
    const Parts rest = eachTwice(x.l) * (both - r * sinHead) + column(2);
    return {b, (((rest + e1) + e2) + eachTwice(x.sine) * both) + eachTwice(x.cosine) * sinHead};
}

}  // namespace okt::complex::angle
