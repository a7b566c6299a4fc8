// Reduction of an angle by quarter turns: |x| = n*pi/2 + r with |r| <= pi/4, r as head and tail, for every finite x.
#pragma once

#include "extended/four_over_pi.h"
#include "extended/pair.h"

namespace okt::extended {

// An argument brought to [-pi/4, pi/4] (by magnitude: the sign of x is not in it) and the quarter turns taken off.
struct Quarter {
    Pair r;
    std::uint32_t turns;
};

// pi/2 in pieces short enough for exact products with the quarter turns: below 2^17 of them, and below 2^30.
struct HalfPi {
    static constexpr Real64 a1 = 0x1.921fb54442dp+0, a2 = 0x1.8469898cc518p-48, a3 = -0x1.fc8f8cbb5bf6cp-97;
    static constexpr Real64 b1 = 0x1.921fb544p+0, b2 = 0x1.0b4611a6p-34, b3 = 0x1.3198a2ep-69, b4 = 0x1.b839a252p-104,
                            b5 = 0x1.27044533e63ap-142;
    static constexpr Real64 twoOverPi = 0x1.45f306dc9c883p-1;
};

// Subtraction of one exact piece, the part that falls off the head going to the tail.
OKT_INLINE inline Pair less(Pair r, Real80 piece) {
    Real80 head = r.head - piece;
    return {head, r.tail + ((r.head - head) - piece)};
}

// a < 2^17. The tail is left unnormalised: it is small beside the head, if not below its last place.
OKT_INLINE inline Quarter reduceSmall(Real80 a) {
    using C = HalfPi;
    Real80 m = roundBy(toInteger, a * C::twoOverPi);
    Real80 first = a - m * C::a1;
    Real80 piece = m * C::a2;
    Real80 head = first - piece;
    return {{head, ((first - head) - piece) - m * C::a3}, static_cast<std::uint32_t>(asInteger(m))};
}

// 2^17 <= a < 2^30.
inline Quarter reduceMedium(Real80 a) {
    using C = HalfPi;
    Real80 m = roundBy(toInteger, a * C::twoOverPi);
    Pair r = less(less({a - m * C::b1, 0.0}, m * C::b2), m * C::b3);
    r = fastTwoSum(r.head, (r.tail - m * C::b4) - m * C::b5);
    return {r, static_cast<std::uint32_t>(asInteger(m))};
}

// a >= 2^30, finite: the product of the significand with those digits of 4/pi that matter modulo 8, in integers.
// Digits of a weight that would give multiples of 8 are left out; 256 bits of the product are kept, 3 of them integer.
inline Quarter reduceLarge(Real80 a) {
    __extension__ using Wide = unsigned __int128;
    Real80Bits bits = asBits(a);
    // The first digit of 4/pi whose product with the lowest bit of the significand weighs 4; 128 zeros stand in front.
    unsigned first = static_cast<unsigned>((bits.signAndExponent & 0x7FFF) - (0x3FFF + 63) - 2 + 128);
    const std::uint64_t* word = tables::fourOverPiSlices + (first >> 6);
    unsigned shift = first & 63;
    auto digits = [&](int i) { return (word[i] << shift) | (word[i + 1] >> 1 >> (63 - shift)); };
    Wide m = bits.significand;
    Wide p3 = m * digits(3);
    Wide p2 = m * digits(2) + (p3 >> 64);
    Wide p1 = m * digits(1) + (p2 >> 64);
    std::uint64_t top = bits.significand * digits(0) + static_cast<std::uint64_t>(p1 >> 64);
    std::uint64_t middle = static_cast<std::uint64_t>(p1), low = static_cast<std::uint64_t>(p2);
    // Eighths of a turn have weight 2^61 of top; one more and without the lowest bit gives the nearest quarter.
    top += std::uint64_t{1} << 61;
    auto turns = static_cast<std::uint32_t>(top >> 62);
    auto whole = static_cast<std::int64_t>(top & 0x3FFFFFFFFFFFFFFFU) - (std::int64_t{1} << 61);
    // The fraction of an eighth: exact in three numbers, then head and tail.
    Real80 f1 = static_cast<Real80>(whole) * 0x1p-61;
    Real80 f2 = static_cast<Real80>(middle) * 0x1p-125;
    Real80 f3 = static_cast<Real80>(low) * 0x1p-189;
    Pair f = fastTwoSum(f1, f2);
    f = fastTwoSum(f.head, f.tail + f3);
    // Times pi/4.
    constexpr Real64 quarterPiHi = 0x1.921fb544p-1, quarterPiLo = 0x1.0b4611a626331p-35;
    Real80 head = leading31(f.head);
    return {
        fastTwoSum(head * quarterPiHi, (f.head - head) * quarterPiHi + (f.tail * quarterPiHi + f.head * quarterPiLo)),
        turns};
}

// |x| reduced, for a finite x; exponent is that of x.
OKT_INLINE inline Quarter reduceByQuarterTurns(Real80 a, int exponent) {
    if (exponent < 0x4010) {
        return reduceSmall(a);
    }
    return exponent < 0x401D ? reduceMedium(a) : reduceLarge(a);
}

}  // namespace okt::extended
