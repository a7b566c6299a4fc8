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
template <int N>
struct Sum {
    F64<N> head, tail;
    void add(F64<N> term) {
        const F64<N> next = head + term;
        tail = (term + (head - next)) + tail;
        head = next;
    }
};

// |x| >= 2^30: pieces of 4/pi.
template <int N>
[[gnu::always_inline]] inline QuarterPiReductions<N> reduceByTable(F64<N> x) {
    const U64<N> sign = asBits(signOf(x));
    const U64<N> magnitude = asBits(abs(x));

    // |x|·2^-200, against the pieces' 2^200, as a head of 26 bits and the rest.
    const U64<N> scaled = magnitude - U64<N>(std::uint64_t{200} << 52);
    const F64<N> xh = asReal(scaled & U64<N>(~std::uint64_t{0x7FFFFFF}));
    const F64<N> xl = asReal(scaled) - xh;

    // d/25 falls just short: at multiples of 25 it gives one less, so that r runs from 1 to 25.
    const U64<N> d = (magnitude >> 52) - U64<N>(1052);
    const U64<N> i = mulLowWords(d, U64<N>(83886)) >> 21;
    const U64<N> r = d - mulLowWords(i, U64<N>(25));
    const U64<N> offset = i << 3;
    const auto T = [&](int k) OKT_INLINE { return gatherAt(tables::fourOverPiChunks + k, offset); };
    const F64<N> T1 = T(1), T2 = T(2), T3 = T(3), T4 = T(4), T5 = T(5), T6 = T(6), T7 = T(7);

    // The leading products, less a multiple of a power of two far above 8: what is left has room for its fraction.
    const F64<N> a1 = T(0) * xl;
    const F64<N> b1 = xh * T1;
    const F64<N> s1 = a1 + b1;
    const F64<N> c1 = b1 + (a1 - s1);
    const F64<N> w = s1 + c1;
    const F64<N> f = s1 - (w & shiftLeft(U64<N>(~std::uint64_t{0}), U64<N>(38) - r));

    const F64<N> d1 = T1 * xl;
    const F64<N> s2 = f + d1;
    const F64<N> h1 = (d1 + (f - s2)) + c1;
    const F64<N> g1 = xh * T2;
    const F64<N> s3 = s2 + g1;
    const F64<N> u = (g1 + (s2 - s3)) + h1;
    const F64<N> m = T2 * xl;
    const F64<N> n1 = xh * T3;

    // The integer part, cut out of the raw pattern: the sum is trusted to be 4 or more.
    const U64<N> y = asBits(((s3 + u) + m) + n1);
    const U64<N> shift = (U64<N>(51) - (y >> 52)) & U64<N>(63);
    const U64<N> k = shiftRight(y, shift);
    const F64<N> integer = asReal(shiftLeft(k, shift));

    const F64<N> z = s3 - integer;
    const F64<N> z2 = z + u;
    const F64<N> c = (z - z2) + u;
    // -1 after an odd integer takes the fraction to [-1, 0). A branch would be mispredicted every other time.
    const U64<N> odd = U64<N>(0) - (k & U64<N>(1));
    const F64<N> oddCorrection = F64<N>(-1.0) & odd;

    Sum<N> sum{z2 + oddCorrection, c};
    sum.add(m);
    sum.add(n1);
    sum.add(T3 * xl);
    sum.add(xh * T4);
    sum.add(T4 * xl);
    sum.add(xh * T5);
    sum.add(T5 * xl + xh * T6);
    sum.add(T6 * xl + xh * T7);

    const F64<N> last = T7 * xl + xh * T(8);
    const F64<N> total = sum.head + last;
    const F64<N> leading = total * C::splitFactor;
    const F64<N> zc = (total + leading) - leading;
    const F64<N> wl = (last + (sum.head - zc)) + sum.tail;

    const F64<N> l = F64<N>(C::quarterPiHead) * wl + (zc + wl) * C::quarterPiTail;
    const F64<N> p = zc * C::quarterPiHead;
    const F64<N> head = p + l;
    const F64<N> tail = (p - head) + l;

    // Quarter turns, negated with x, modulo 4.
    const U64<N> half = (k + U64<N>(1)) >> 1;
    const U64<N> negated = U64<N>(0) - (sign >> 63);
    return {asReal(asBits(head) ^ sign), asReal(asBits(tail) ^ sign), ((half ^ negated) - negated) & U64<N>(3)};
}

}  // namespace

template <int N>
QuarterPiReductions<N> reduceHuge(F64<N> x) { return reduceByTable(x); }
template QuarterPiReductions<2> reduceHuge(F64<2> x);
template QuarterPiReductions<4> reduceHuge(F64<4> x);

QuarterPiReduction reduceQuarterPi(Real64 x) {
    const bool negative = (asBits(x) >> 63) != 0;
    const Real64 a = bits64(asBits(x) & 0x7FFFFFFFFFFFFFFF);
    const auto exponent = static_cast<std::uint32_t>(asBits(a) >> 52);
    if (exponent <= 1052) return reduceBySubtraction(a, exponent, negative);
    const auto [head, tail, quadrant] = reduceByTable(F64<1>(x));
    return {head.raw, tail.raw, static_cast<std::uint32_t>(quadrant.raw)};
}

}  // namespace okt
