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

#include "lanes/lookup.h"
#include "trig/reduction_table.h"

namespace okt {
namespace {

struct C {
    static constexpr Real64 fourOverPi = 0x1.45f306dc9c883p+0;  // 4/pi

    // pi/4 in four parts; a product of the first three with an even integer below 2^24 is exact.
    static constexpr Real64 quarterPiA1 = 0x1.921fb54p-1;
    static constexpr Real64 quarterPiA2 = 0x1.10b4612p-31;
    static constexpr Real64 quarterPiA3 = -0x1.676733cp-61;
    static constexpr Real64 quarterPiA4 = 0x1.1701b839a252p-89;

    // pi/4 in five parts; a product of the first four with an even integer below 2^31 is exact.
    static constexpr Real64 quarterPiB1 = 0x1.921fap-1;
    static constexpr Real64 quarterPiB2 = 0x1.54443p-21;
    static constexpr Real64 quarterPiB3 = -0x1.73dcap-44;
    static constexpr Real64 quarterPiB4 = -0x1.3b39ap-64;
    static constexpr Real64 quarterPiB5 = 0x1.45c06e0e68948p-87;

    // pi/4 in two parts, for the last product.
    static constexpr Real64 quarterPiHead = 0x1.921fb4p-1;
    static constexpr Real64 quarterPiTail = 0x1.4442d18469899p-25;

    static constexpr Real64 splitFactor = 0x1.8p+26;  // chops a sum to its leading bits
};

// The quarter turns of |x|, half its rounded eighths, negated with x, modulo 4.
template <int N>
inline U64<N> quadrantOf(U64<N> eighths, U64<N> sign) {
    const U64<N> half = (eighths + U64<N>(1)) >> 1;
    const U64<N> negated = U64<N>(0) - (sign >> 63);
    return ((half ^ negated) - negated) & U64<N>(3);
}

// A head with the errors of its subtractions gathered in a tail.
template <int N>
struct Rest {
    F64<N> head, tail;
};

// head - p, exact in all but rare cases; the rounding error is stored.
template <int N>
inline F64<N> minus(F64<N> head, F64<N> p, F64<N>& error) {
    const F64<N> next = head - p;
    error = (head - next) - p;
    return next;
}

template <int N>
inline Rest<N> subtractFourParts(F64<N> a, F64<N> n) {
    F64<N> l1, l2;
    const F64<N> t = a - n * C::quarterPiA1;
    const F64<N> u = minus<N>(t, n * C::quarterPiA2, l1);
    const F64<N> v = minus<N>(u, n * C::quarterPiA3, l2);
    return {v, (l1 + l2) - n * C::quarterPiA4};
}

template <int N>
inline Rest<N> subtractFiveParts(F64<N> a, F64<N> n) {
    F64<N> l1, l2, l4;
    const F64<N> t = a - n * C::quarterPiB1;
    const F64<N> u = minus<N>(t, n * C::quarterPiB2, l1);
    const F64<N> v = minus<N>(u, n * C::quarterPiB3, l2);
    const F64<N> l = l1 + l2;
    const F64<N> w = v + l;
    const F64<N> l3 = (v - w) + l;
    const F64<N> g = minus<N>(w, n * C::quarterPiB4, l4);
    return {g, (l3 + l4) - n * C::quarterPiB5};
}

enum class Parts { four, five };

// |x| < 2^30: the quotient fits an integer.
template <Parts parts, int N>
[[gnu::always_inline]] inline QuarterPiReductions<N> reduceBySubtraction(F64<N> x) {
    const U64<N> sign = asBits(signOf(x));
    const F64<N> a = abs(x);

    // floor(|x|·4/pi), out of the pattern, and the even integer next to it, which 2^52 takes to Real64.
    const U64<N> y = asBits(a * C::fourOverPi);
    const U64<N> significand = (y & U64<N>(0x000FFFFFFFFFFFFF)) | U64<N>(0x0010000000000000);
    const U64<N> n = shiftRight(significand, U64<N>(1075) - (y >> 52));
    const U64<N> even = n + (n & U64<N>(1));
    const F64<N> turns = asReal(even | asBits(F64<N>(0x1p52))) - 0x1p52;

    const Rest<N> rest = parts == Parts::four ? subtractFourParts<N>(a, turns) : subtractFiveParts<N>(a, turns);
    const F64<N> h = asReal(asBits(rest.head) ^ sign);
    const F64<N> l = asReal(asBits(rest.tail) ^ sign);
    const F64<N> head = h + l;
    return {head, l + (h - head), quadrantOf<N>(n, sign)};
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
    const auto T = [&](int k) OKT_INLINE { return gatherElementsAt(tables::fourOverPiChunks + k, offset); };
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

    return {asReal(asBits(head) ^ sign), asReal(asBits(tail) ^ sign), quadrantOf<N>(k, sign)};
}

template <int N>
inline QuarterPiReduction single(const QuarterPiReductions<N>& r) {
    return {r.head.raw, r.tail.raw, static_cast<std::uint32_t>(r.quadrant.raw)};
}

// Biased exponents from which the steps are others.
constexpr std::uint32_t lowest = 1040, fiveParts = 1046, table = 1053, infinite = 0x7FF;

}  // namespace

template <int N>
bool reduceAlike(F64<N> x, QuarterPiReductions<N>& reductions) {
    const U32<N> magnitude = packHighWords(asBits(x)) & U32<N>(0x7FFFFFFF);
    const auto allWithin = [&](std::uint32_t first, std::uint32_t end) {
        return !any(outside(magnitude, first << 20, (end << 20) - 1));
    };
    if (allWithin(table, infinite))
        reductions = reduceByTable(x);
    else if (allWithin(lowest, fiveParts))
        reductions = reduceBySubtraction<Parts::four>(x);
    else if (allWithin(fiveParts, table))
        reductions = reduceBySubtraction<Parts::five>(x);
    else
        return false;
    return true;
}
template bool reduceAlike(F64<2> x, QuarterPiReductions<2>& reductions);
template bool reduceAlike(F64<4> x, QuarterPiReductions<4>& reductions);

QuarterPiReduction reduceQuarterPi(Real64 x) {
    const std::uint32_t exponent = highWord(x) >> 20 & 0x7FF;
    if (exponent < fiveParts) return single(reduceBySubtraction<Parts::four>(F64<1>(x)));
    if (exponent < table) return single(reduceBySubtraction<Parts::five>(F64<1>(x)));
    return single(reduceByTable(F64<1>(x)));
}

}  // namespace okt
