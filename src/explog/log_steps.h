// What Ln and Log10 share: the loop, and the steps on Real64.
//
// x = 2^e · m; a table gives for the leading bits of m a short c close to K/m (K is 1 for ln,
// 0.43359375, close to log10 e, for log10) and hi + lo = log(K/c), so that log x = e · log 2 + hi + lo
// + log(1 + (m c - K)/K). With m cut into mh + ml the products are mh c - K = A, exact, and ml c = B; r
// = A + B is small and goes through a polynomial that begins at r^2, or with log10 at what K misses of
// log10 e. The pieces are added from the smallest to the largest, where B counts as a large one next to
// x = 1. In decimal logarithms c holds the factor K, and no multiplication by log10 e is needed.
#pragma once

#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt::logarithm {
namespace {

constexpr Real32 minusInf32 = negated(infinity<Real32>());
constexpr Real64 minusInf64 = negated(infinity<Real64>());

// The pieces of a result, log x = small + large; the element routine corrects the small one for a scaled argument.
template <class V>
struct Sums {
    V small, large;
    V total() const { return small + large; }
};

// The loop of all four. `locate` tests a block and finds the places of its elements in the table, `logarithmAt` does
// the rest; `element` is the whole of a single element.
template <class T, class Place, class Constants>
void logarithm(const T* src, T* dst, std::int32_t len, const Constants& constants, T (&element)(T, OktStatus&),
               OktStatus& status) {
    const Constants* const k = &inMemory(constants);
    const auto begin = [=](std::ptrdiff_t i, Nothing, Place& place) OKT_INLINE {
        const auto x = Vec<T, 8>::load(src + i);
        return locate(*k, x, place);
    };
    const auto finish = [=](std::ptrdiff_t i, Nothing, const Place& place) OKT_INLINE {
        const auto x = Vec<T, 8>::load(src + i);
        logarithmAt(*k, x, place).store(dst + i);
    };
    redoBlockAhead<8, Nothing, Place>(src, dst, len, begin, finish, element, status);
}

template <int N>
using RowOffset = InMemory<std::uint32_t, N>;

// ---------------------------------------------------------------------------------------------------------------------
// Real64: both logarithms take the same steps with their own constants and table.

// A table's columns: c by itself, and the pairs hi, lo.
template <int entries>
struct LogColumns64 {
    alignas(64) Real64 pairs[2 * entries], c[entries];
    constexpr explicit LogColumns64(const Real64* rows) : pairs(), c() {
        for (int i = 0; i < entries; ++i) {
            c[i] = rows[4 * i];
            pairs[2 * i] = rows[4 * i + 2];
            pairs[2 * i + 1] = rows[4 * i + 3];
        }
    }
};

struct CommonConstants64 {
    WordRange normal{0x00100000, 0x7FF00000};  // on the upper word
    Constant64 zero = 0.0;
    Pattern64 significand = 0x000FFFFFFFFFFFFF;
    Pattern64 unit = 0x3FF0000000000000;
    Pattern32 indexBits = 0x000FFC00;  // the leading ten bits, rounded to nine
    Pattern32 indexRound = 0x00000400;
    Pattern32 rowBits = 0x001FF800;
};

template <class Constants>
constexpr Constants constants64;

// The table's entry of a number, as eight times its place, and the number's exponent.
template <int N>
struct LogPlace64 {
    InMemory<std::uint32_t, N> row, exponent;
    LogPlace64() = default;
    template <class Constants>
    LogPlace64(const Constants& k, U32<N> high) {
        find(k, high);
    }
    template <class Constants>
    OKT_INLINE void find(const Constants& k, U32<N> high) {
        row.put((((high & k.indexBits) + k.indexRound) & k.rowBits) >> 8);
        exponent.put(shiftRightSigned(high - k.exponentOffset, 20));
    }
};

template <class Constants, int N>
OKT_INLINE inline Sums<F64<N>> logMain64(const Constants& k, F64<N> x, const LogPlace64<N>& place) {
    const F64<N> e = toReal64(place.exponent);
    const U64<N> m = (asBits(x) & k.significand) | k.unit;
    const F64<N> mh = asReal(m & k.mantissaHigh);
    const F64<N> ml = asReal(m) - mh;
    const F64<N> c = gatherElementsAt<1>(Constants::columns.c, place.row);
    const auto [hi, lo] = gatherPairsAt<2>(Constants::columns.pairs, place.row);
    const F64<N> a = mh * c - k.origin;
    const F64<N> b = ml * c;
    const F64<N> r = b + a;
    const F64<N> q = e * k.log2Lo + lo;
    F64<N> t = a + (e * k.log2Hi + hi);
    F64<N> rest = b;
    const Mask64<N> nearOne = q == k.zero;
    if (any(nearOne)) [[unlikely]] {
        t = t + zeroUnless(nearOne, b);
        rest = zeroIf(nearOne, b);
    }
    return {(k.polynomial(r) + q) + rest, t};
}

template <class Constants>
Sums<F64x1> logSingle64(Real64 x) {
    constexpr const Constants& k = constants64<Constants>;
    return logMain64(k, F64x1(x), LogPlace64<1>(k, highWord(x)));
}

template <class Constants>
[[gnu::noinline, gnu::cold]] Real64 logElement64(Real64 x, OktStatus& status) {
    if (isNaN(x)) {
        keepFlags(opaque(x) * opaque(Real64{1}));  // invalid for a signalling NaN, which stays one
        return x;
    }
    if (isZero(x)) {
        status = oktStatusSingularity;
        return minusInf64;
    }
    if (isNegative(x)) {
        status = oktStatusDomain;
        return asReal(Format<Real64>::nan);
    }
    if (isInfinite(x)) return x;
    if (!isSubnormal(x)) return logSingle64<Constants>(x).total().raw;
    const Real64 scaled = x * Real64{0x1p52};
    const auto sums = logSingle64<Constants>(scaled);
    return (sums.small.raw - Constants::scaledBy52) + sums.large.raw;
}

template <class Constants>
OKT_INLINE inline bool locate(const Constants& k, F64<8> x, LogPlace64<8>& place) {
    const U32<8> high = packHighWords(asBits(x));
    if (!k.normal.holdsAll(high)) [[unlikely]]
        return false;
    place.find(k, high);
    return true;
}
template <class Constants>
OKT_INLINE inline F64<8> logarithmAt(const Constants& k, F64<8> x, const LogPlace64<8>& place) {
    return logMain64(k, x, place).total();
}

template <class Constants>
void log64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    logarithm<Real64, LogPlace64<8>>(src, dst, len, constants64<Constants>, logElement64<Constants>, status);
}

}  // namespace
}  // namespace okt::logarithm
