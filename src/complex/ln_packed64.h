// The packed logarithm on Complex64: as A24 on Complex32 with a finer table and sums of a head and a rest.
#pragma once

#include "complex/ln_direction.h"
#include "lanes/double_double.h"

#include <iterator>

namespace okt::complex::logarithm {
namespace {

struct Constants64 : DirectionConstants {
    Pattern64 headBits = splitMaskWide;
    Pattern64 exponent = 0x7FF0000000000000;
    Pattern64 hundredBinades = std::uint64_t{100} << 52;
    Pattern64 twiceBias = 0x7FE0000000000000;
    Pattern64 tinyQuotient = 0x3BF0000000000000;  // 2^-64
    Pattern64 cubeBits = 0xFFFFFFC000000000;
    // ln(1 + r) = r + r^2 (b2 + b3 r + ...) on |r| <= 2^-10, relative error 2^-56.5; minimax.
    Constant64 b2 = -0x1.ffffffffffca9p-2;
    Constant64 b3 = 0x1.555555555512ap-2;
    Constant64 b4 = -0x1.00000d588d052p-2;
    Constant64 b5 = 0x1.9999b39037e04p-3;
    static constexpr Real64 third = -85.0 / 256.0;
    Constant64 thirdShort = third;
    Coefficients<std::size(tables::Arctangent64)> arctangent{tables::Arctangent64, third};
};
constexpr Constants64 constants64;

// A part's magnitude, and its upper 26 bits and the rest.
template <int N>
struct Cut {
    F64<N> whole, head, rest;
    Cut(const Constants64& k, F64<N> part) : whole(abs(part)), head(whole & U64<N>(k.headBits)), rest(whole - head) {}
};

template <int N>
inline F64<N> lnFar64(const Constants64& k, const Cut<N>& a, const Cut<N>& b, Squares<N> s) {
    // What the squares and their sum have rounded off.
    const F64<N> restA = (a.head * a.head - s.a) + a.rest * (a.whole + a.head);
    const F64<N> restB = (b.head * b.head - s.b) + b.rest * (b.whole + b.head);
    const F64<N> v = s.sum - s.a;
    const F64<N> restSum = (s.a - (s.sum - v)) + (s.b - v);
    // A rest far below the last place is left out, as it could not be scaled without an underflow.
    const F64<N> anyRest = restSum + (restA + restB);
    const F64<N> rest =
        zeroIf(greaterSignedHigh(asBits(s.sum), asBits(abs(anyRest)) + U64<N>(k.hundredBinades)), anyRest);
    const F64<N> unscale = asReal(U64<N>(k.twiceBias) - (asBits(s.sum) & U64<N>(k.exponent)));
    const Terms<N> t =
        lnTerms<9>(k, tables::LnComplex64Table, s.sum, [&](F64<N> ml) OKT_INLINE { return ml + rest * unscale; });
    const F64<N> r = t.B + t.A;
    const F64<N> poly = r * r * (F64<N>(k.b2) + r * (F64<N>(k.b3) + r * (F64<N>(k.b4) + r * F64<N>(k.b5))));
    const DoubleDouble<N> head = fastTwoSum(t.S, t.A);
    return (((poly + t.Q) + t.B) + head.lo) + head.hi;
}

// The distance of a^2 + b^2 from 1 without error but the last rounding of its rest, and the logarithm's series with the
// square's half as a head and a rest, too.
template <int N>
inline F64<N> lnNear64(F64<N> a, F64<N> b, Mask64<N> far) {
    const DoubleDouble<N> ca = dekkerSplit(a), cb = dekkerSplit(b);
    const DoubleDouble<N> a2 = exactProduct(a, ca, a, ca), b2 = exactProduct(b, cb, b, cb);
    const DoubleDouble<N> sum = twoSum(a2.hi, b2.hi), rests = twoSum(a2.lo, b2.lo);
    const DoubleDouble<N> first = twoSum(sum.hi - F64<N>(1.0), sum.lo);
    const DoubleDouble<N> second = twoSum(first.hi, rests.hi);
    const DoubleDouble<N> w = fastTwoSum(second.hi, second.lo + (first.lo + rests.lo));
    const F64<N> h = zeroIf(far, w.hi), l = zeroIf(far, w.lo);

    const F64<N> top = dekkerSplit(h).hi;
    const F64<N> halfSquare = F64<N>(0.5) * (top * top);
    const F64<N> halfRest = F64<N>(0.5) * ((h - top) * (h + top));
    const DoubleDouble<N> head = fastTwoSum(h, -halfSquare);
    const F64<N> cubic = h * h * h * alternating<12>(h, 3);
    return head.hi + (head.lo + ((cubic - halfRest) + (l - h * l)));
}

template <int N>
[[gnu::noinline, gnu::cold]] F64<N> lnMixed64(const F64<N>& a, const F64<N>& b, Mask64<N> far,
                                              const F64<N>& farResult) {
    return select(far, farResult, lnNear64(a, b, far));
}

template <int N>
inline F64<N> angle64(const Constants64& k, F64<N> re, F64<N> im, const Cut<N>& a, const Cut<N>& b) {
    const F64<N> signRe = signOf(re);
    const Direction<N> direction = directionOf(k, a.whole, b.whole, packHighWords(asBits(signRe)));
    const auto [p, q] = direction.pq();

    // Numerator and denominator: the products are exact.
    const F64<N> n1 = p * b.head - q * a.head, n2 = p * b.rest - q * a.rest;
    const F64<N> n = n1 + n2, nRest = (n1 - n) + n2;
    const F64<N> d1 = p * a.head + q * b.head, d2 = p * a.rest + q * b.rest;
    const F64<N> d = d1 + d2, dHead = d & U64<N>(k.headBits);
    const F64<N> dRest = (d - dHead) + ((d1 - d) + d2);

    const F64<N> inverse = F64<N>(k.one) / d;
    const F64<N> th = (n * inverse) & U64<N>(k.headBits);
    const F64<N> tl = (((n - th * dHead) - th * dRest) + nRest) * inverse;

    // arctan t = t - t^3/3 + ... The head of the cube's term, of 15 bits of t and 7 bits of the third,
    // is exact. Nothing comes from a tiny quotient, whose powers would be below the normal numbers.
    const F64<N> top = zeroIf(greaterSignedHigh(U64<N>(k.tinyQuotient), asBits(abs(th))), th);
    const F64<N> t = top + tl, z = t * t;
    const F64<N> tShort = top & U64<N>(k.cubeBits);
    const F64<N> tShort2 = tShort * tShort;
    const F64<N> cube = tShort2 * tShort * F64<N>(k.thirdShort);
    const F64<N> tMissing = (top - tShort) + tl;
    const F64<N> cubeRest = F64<N>(k.thirdShort) * (tMissing * ((z + tShort2) + t * tShort));
    const F64<N> further = t * (z * k.arctangent.at(z));
    const DoubleDouble<N> arctan = fastTwoSum(th, cube);
    const F64<N> arctanRest = arctan.lo + (tl + (further + cubeRest));

    const auto [K, kRest] = direction.angle();
    const DoubleDouble<N> head = fastTwoSum(K, arctan.hi ^ signRe);
    return ((((arctanRest ^ signRe) + kRest) + head.lo) + head.hi) | signOf(im);
}

inline void lnc64(const Complex64* src, Complex64* dst, std::int32_t len, OktStatus&) {
    constexpr int N = 4;
    const Constants64& k = inMemory(constants64);
    paddedBlocks<N>(src, dst, len, [&k](const Complex64* from, Complex64* to) OKT_INLINE {
        auto [re, im] = loadInterleaved<N>(partsOf(from));
        // Upper words of 2^-450 and of the numbers just below 2^450.
        const auto outOfRange = [&](F64<N> part) OKT_INLINE {
            return outside(packHighWords(asBits(part)) & U32<N>(k.magnitude32), 0x23D00000, 0x5C0FFFFF);
        };
        const Mask32<N> flagged = outOfRange(re) | outOfRange(im);
        if (any(flagged)) [[unlikely]] {
            re = select(widen(flagged), F64<N>(2.0), re);
            im = select(widen(flagged), F64<N>(2.0), im);
        }
        const Cut<N> a(k, re), b(k, im);
        const Squares<N> s = squares(a.whole, b.whole);
        const Mask64<N> far = farFromOne(k, s.sum);
        F64<N> L = lnFar64(k, a, b, s);
        if (!all(far)) [[unlikely]]
            L = lnMixed64(a.whole, b.whole, far, L);
        storeBlock(from, to, F64<N>(k.half) * L, angle64(k, re, im, a, b), flagged, singleLn);
    });
}

}  // namespace
}  // namespace okt::complex::logarithm
