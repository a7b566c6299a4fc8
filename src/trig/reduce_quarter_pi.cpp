// Reduction of x to [-pi/4, pi/4] and a quadrant: x = head + tail + (q + 4m)·pi/2.
//
// Below 2^30 the even integer N next to |x|·4/pi is exact, and |x| - N·pi/4 is formed with pi/4 cut into pieces whose
// products with N are exact: four pieces below 2^23, five above. From 2^30 up the significand of |x|, cut in two, is
// multiplied by as many 25-bit pieces of 4/pi as can change the result modulo 8 (after Payne and Hanek); whole turns
// are dropped while the products are summed, and the fraction is multiplied by pi/4 at the end. The tails come from
// cancellation, so every operation stands in the order in which it must be done.
//
// Largest error seen of head + tail, relative: 2^-58.96 at 0x1.b951f1572eba5p+23 for 2^23 <= |x| < 2^30, below 2^-66
// elsewhere. At a few significands of biased exponent 1403 the integer part is read from a sum that rounding has moved
// across it: 0x57B003E068000000 gives the right residue with quadrant 1 instead of 2, so that sines and cosines of it
// are a quarter turn off.
#include "trig/reduce_quarter_pi.h"

#include "lanes/bits.h"
#include "trig/reduction_table.h"

namespace okt {
namespace {

struct C {
    static constexpr Real64 fourOverPi = bits64(0x3FF45F306DC9C883);  // 4/pi

    // pi/4 in four parts; a product of the first three with an even integer below 2^24 is exact.
    static constexpr Real64 quarterPiA1 = bits64(0x3FE921FB54000000);
    static constexpr Real64 quarterPiA2 = bits64(0x3E010B4612000000);
    static constexpr Real64 quarterPiA3 = bits64(0xBC2676733C000000);
    static constexpr Real64 quarterPiA4 = bits64(0x3A61701B839A2520);

    // pi/4 in five parts; a product of the first four with an even integer below 2^31 is exact.
    static constexpr Real64 quarterPiB1 = bits64(0x3FE921FA00000000);
    static constexpr Real64 quarterPiB2 = bits64(0x3EA5444300000000);
    static constexpr Real64 quarterPiB3 = bits64(0xBD373DCA00000000);
    static constexpr Real64 quarterPiB4 = bits64(0xBBF3B39A00000000);
    static constexpr Real64 quarterPiB5 = bits64(0x3A845C06E0E68948);

    // pi/4 in two parts, for the last product.
    static constexpr Real64 quarterPiHead = bits64(0x3FE921FB40000000);
    static constexpr Real64 quarterPiTail = bits64(0x3E64442D18469899);

    static constexpr Real64 splitFactor = bits64(0x4198000000000000);  // 3·2^25, chops a sum to its leading bits
};

// (q, negated if x is negative) modulo 4.
std::uint32_t quadrantOf(std::uint32_t half, bool negative) { return (negative ? 0u - half : half) & 3; }

// A head with the errors of its subtractions gathered in a tail.
struct Rest {
    Real64 head, tail;
};

// head - p, exact in all but rare cases; the rounding error is stored.
Real64 minus(Real64 head, Real64 p, Real64& error) {
    const Real64 next = head - p;
    error = (head - next) - p;
    return next;
}

Rest subtractFourParts(Real64 a, Real64 n) {
    Real64 l1, l2;
    const Real64 t = a - n * C::quarterPiA1;
    const Real64 u = minus(t, n * C::quarterPiA2, l1);
    const Real64 v = minus(u, n * C::quarterPiA3, l2);
    return {v, (l1 + l2) - n * C::quarterPiA4};
}

Rest subtractFiveParts(Real64 a, Real64 n) {
    Real64 l1, l2, l4;
    const Real64 t = a - n * C::quarterPiB1;
    const Real64 u = minus(t, n * C::quarterPiB2, l1);
    const Real64 v = minus(u, n * C::quarterPiB3, l2);
    const Real64 l = l1 + l2;
    const Real64 w = v + l;
    const Real64 l3 = (v - w) + l;
    const Real64 g = minus(w, n * C::quarterPiB4, l4);
    return {g, (l3 + l4) - n * C::quarterPiB5};
}

// |x| < 2^30: the quotient fits an integer.
QuarterPiReduction reduceBySubtraction(Real64 a, std::uint32_t exponent, bool negative) {
    const Real64 y = a * C::fourOverPi;
    const std::uint32_t high = highWord(y);
    const std::uint32_t significand = ((high & 0x000FFFFF) | 0x00100000) << 11 | lowWord(y) >> 21;
    const std::uint32_t n = significand >> ((30 - (high >> 20)) & 31);  // floor(y)
    const auto even = static_cast<Real64>(static_cast<std::int32_t>(n + (n & 1)));
    const Rest rest = exponent <= 1045 ? subtractFourParts(a, even) : subtractFiveParts(a, even);
    const Real64 sign = negative ? -1.0 : 1.0;
    const Real64 h = rest.head * sign;
    const Real64 l = sign * rest.tail;
    const Real64 head = h + l;
    return {head, l + (h - head), quadrantOf((n + 1) >> 1, negative)};
}

// A running sum: what a term's addition rounds off goes into the tail.
struct Sum {
    Real64 head, tail;
    void add(Real64 term) {
        const Real64 next = head + term;
        tail = (term + (head - next)) + tail;
        head = next;
    }
};

// |x| >= 2^30: pieces of 4/pi.
QuarterPiReduction reduceByTable(Real64 a, std::uint32_t exponent, bool negative) {
    // |x|·2^-200, against the pieces' 2^200, as a head of 26 bits and the rest.
    const Real64 x = bits64((asBits(a) & 0x000FFFFFFFFFFFFF) | static_cast<std::uint64_t>((exponent - 200) & 0x7FF) << 52);
    const Real64 xh = bits64(asBits(x) & ~std::uint64_t{0x7FFFFFF});
    const Real64 xl = x - xh;

    // d/25 falls just short: at multiples of 25 it gives one less, so that r runs from 1 to 25.
    const std::uint32_t d = exponent - 1052;
    const std::uint32_t i = d * 83886 >> 21;
    const std::uint32_t r = d - 25 * i;
    const Real64* T = tables::fourOverPiChunks + i;

    // The leading products, less a multiple of a power of two far above 8: what is left has room for its fraction.
    const Real64 a1 = T[0] * xl;
    const Real64 b1 = xh * T[1];
    const Real64 s1 = a1 + b1;
    const Real64 c1 = b1 + (a1 - s1);
    const Real64 w = s1 + c1;
    const Real64 f = s1 - bits64(asBits(w) >> (38 - r) << (38 - r));

    const Real64 d1 = T[1] * xl;
    const Real64 s2 = f + d1;
    const Real64 h1 = (d1 + (f - s2)) + c1;
    const Real64 g1 = xh * T[2];
    const Real64 s3 = s2 + g1;
    const Real64 u = (g1 + (s2 - s3)) + h1;
    const Real64 m = T[2] * xl;
    const Real64 n1 = xh * T[3];

    // The integer part, cut out of the raw pattern: the sum is trusted to be 4 or more.
    const Real64 y = ((s3 + u) + m) + n1;
    const std::uint32_t shift = (51 - (highWord(y) >> 20)) & 63;
    const std::uint64_t k = asBits(y) >> shift;
    const Real64 integer = bits64(k << shift);

    const Real64 z = s3 - integer;
    const Real64 z2 = z + u;
    const Real64 c = (z - z2) + u;
    const Real64 oddCorrection = (k & 1) != 0 ? -1.0 : 0.0;  // takes the fraction after an odd integer to [-1, 0)
    const std::uint32_t quadrant = quadrantOf((static_cast<std::uint32_t>(k) + 1) >> 1, negative);

    Sum sum{z2 + oddCorrection, c};
    sum.add(m);
    sum.add(n1);
    sum.add(T[3] * xl);
    sum.add(xh * T[4]);
    sum.add(T[4] * xl);
    sum.add(xh * T[5]);
    sum.add(T[5] * xl + xh * T[6]);
    sum.add(T[6] * xl + xh * T[7]);

    const Real64 last = T[7] * xl + xh * T[8];
    const Real64 total = sum.head + last;
    const Real64 scaled = total * C::splitFactor;
    const Real64 zc = (total + scaled) - scaled;
    const Real64 wl = (last + (sum.head - zc)) + sum.tail;

    const Real64 l = C::quarterPiHead * wl + (zc + wl) * C::quarterPiTail;
    const Real64 p = zc * C::quarterPiHead;
    const Real64 head = p + l;
    const Real64 tail = (p - head) + l;
    const Real64 sign = negative ? -1.0 : 1.0;
    return {head * sign, sign * tail, quadrant};
}

}  // namespace

QuarterPiReduction reduceQuarterPi(Real64 x) {
    const bool negative = (asBits(x) >> 63) != 0;
    const Real64 a = bits64(asBits(x) & 0x7FFFFFFFFFFFFFFF);
    const auto exponent = static_cast<std::uint32_t>(asBits(a) >> 52);
    return exponent <= 1052 ? reduceBySubtraction(a, exponent, negative) : reduceByTable(a, exponent, negative);
}

}  // namespace okt
