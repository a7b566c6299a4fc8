// Natural and decimal logarithm.
//
// x = 2^e · m; a table gives for the leading bits of m a short c close to K/m (K is 1 for ln,
// 0.43359375, close to log10 e, for log10) and hi + lo = log(K/c), so that log x = e · log 2 + hi + lo
// + log(1 + (m c - K)/K). With m cut into mh + ml the products are mh c - K = A, exact, and ml c = B; r
// = A + B is small and goes through a polynomial that begins at r^2, or with log10 at what K misses of
// log10 e. The pieces are added from the smallest to the largest, where B counts as a large one next to
// x = 1. In decimal logarithms c holds the factor K, and no multiplication by log10 e is needed.
//
// Ln on Real64 and Log10 on Real32 step e up in the middle of the binade, so that e is 0 on both sides of
// 1; the two others do it at the powers of two, where the table's last entry cancels e · log 2 exactly.
//
// Largest errors, on Real32 of all elements, on Real64 of those seen:
//   Ln     Real32 0.5661 ulp at 0x1.f9ffd2p-1, Real64 0.5631 ulp at 0x1.ffe11ded25f67p-1
//   Log10  Real32 0.7493 ulp at 0x1.01d8bep+0, Real64 0.5737 ulp at 0x1.0010ebcb5ba7cp+0
//
// GCC: -fschedule-insns -fsched-pressure (?)
#include "explog/log_tables.h"
#include "exports/Ln.h"
#include "exports/Log10.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
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
// Ln, Real32

struct LnConstants32 {
    WordRange normal{0x00800000, 0x7F800000};
    Constant32 ln2Hi = 0x1.62ep-1F;
    Constant32 ln2Lo = 0x1.0bfbe8p-15F;
    Constant32 one = 1.0F;
    // ln(1 + r) = r + r^2 (a2 + a3 r + a4 r^2) on -0.0092 < r < 0.0094, relative error 2^-29.2; Taylor.
    Constant32 a2 = -0.5F;
    Constant32 a3 = 0x1.555556p-2F;
    Constant32 a4 = -0.25F;
    Pattern32 significand = 0x007FFFFF;
    Pattern32 unit = 0x3F800000;
    Pattern32 mantissaHigh = 0x7FFFC000;
    Pattern32 indexBits = 0x007F0000;  // the leading seven bits, rounded to six
    Pattern32 indexRound = 0x00010000;
    Pattern32 rowBits = 0x00FE0000;
    Pattern32 nearOneOffset = 0x407E0000;
    Pattern32 nearOneBound = 0x7FFC0000;
};
constexpr LnConstants32 lnConstants32;

template <int N>
inline U32<N> lnRow32(const LnConstants32& k, U32<N> b) {
    return (((b & k.indexBits) + k.indexRound) & k.rowBits) >> 13;
}

// b is the pattern of a normal number and e its exponent, less
// what it was scaled by; nearOne comes from the true pattern.
template <int N>
OKT_INLINE inline F32<N> lnMain32(const LnConstants32& k, U32<N> b, const RowOffset<N>& offset, F32<N> e,
                                  Mask32<N> nearOne) {
    const U32<N> m = (b & k.significand) | k.unit;
    const F32<N> mh = asReal(m & k.mantissaHigh);
    const F32<N> ml = asReal(m) - mh;
    const auto [hi, lo, c, zero] = gatherRowsAt<Real32>(tables::Ln32Table, offset);
    const F32<N> a = mh * c - k.one;
    const F32<N> b1 = ml * c;
    const F32<N> r = a + b1;
    const F32<N> t = (e * k.ln2Hi + hi) + a;
    const F32<N> q = e * k.ln2Lo + lo;
    const F32<N> poly = (r * r) * (r * (r * k.a4 + k.a3) + k.a2);
    return ((poly + q) + zeroIf(nearOne, b1)) + (t + zeroUnless(nearOne, b1));
}

template <int N>
inline F32<N> exponent32(U32<N> b) {
    return toReal32((b >> 23) - U32<N>(127));
}

// 0.9921875 < x < 1.015625
template <int N>
inline Mask32<N> lnNearOne(const LnConstants32& k, U32<N> b) {
    return greaterSigned(b + k.nearOneOffset, U32<N>(k.nearOneBound));
}

Real32 lnSingle32(std::uint32_t b, F32x1 e, Mask32<1> nearOne) {
    const RowOffset<1> offset(lnRow32(lnConstants32, U32<1>(b)));
    return lnMain32(lnConstants32, U32<1>(b), offset, e, nearOne).raw;
}

[[gnu::noinline, gnu::cold]] Real32 lnElement32(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    if (b - 0x00800000 < 0x7F000000) return lnSingle32(b, exponent32(U32<1>(b)), lnNearOne(lnConstants32, U32<1>(b)));
    if (isZero(x)) {
        status = oktStatusSingularity;
        return minusInf32;
    }
    if (b < 0x00800000) {
        const int top = 31 - std::countl_zero(b);
        const auto exponent = static_cast<std::uint32_t>(top + 1);
        const std::uint32_t scaled = ((b << (23 - top)) ^ 0x00800000) | exponent << 23;  // 2^23 x
        const F32x1 e = toReal32(U32<1>((scaled >> 23) - (127 + 23)));
        return lnSingle32(scaled, e, Mask32<1>{false});
    }
    if (isNaN(x) || b == Format<Real32>::infinity) return x;  // untouched: a signalling NaN stays one
    status = oktStatusDomain;
    return bits32(0x7FFC0000);
}

OKT_INLINE inline bool locate(const LnConstants32& k, F32<8> x, RowOffset<8>& offset) {
    if (!k.normal.holdsAll(asBits(x))) [[unlikely]]
        return false;
    offset.put(lnRow32(k, asBits(x)));
    return true;
}
OKT_INLINE inline F32<8> logarithmAt(const LnConstants32& k, F32<8> x, const RowOffset<8>& offset) {
    const U32<8> b = asBits(x);
    return lnMain32(k, b, offset, exponent32(b), lnNearOne(k, b));
}

void ln32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    logarithm<Real32, RowOffset<8>>(src, dst, len, lnConstants32, lnElement32, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Log10, Real32

struct Log10Constants32 {
    WordRange normal{0x00800000, 0x7F800000};
    Constant32 log2Hi = 0x1.4p-2F;  // log10 2
    Constant32 log2Lo = -0x1.77d95ep-7F;
    Constant32 origin = 0x1.bcp-2F;  // K
    // log10(1 + r/K) = r + r (d1 + d2 r + ...) on -0.0042 < r < 0.0017, relative error 2^-29.3; d1, which is
    // (log10 e)/K - 1, and d2 are Taylor's, the others fitted.
    Constant32 d1 = 0x1.a7a6ccp-10F;
    Constant32 d2 = -0x1.27af2ep+0F;
    Constant32 d3 = 0x1.c6a13ep+0F;
    Constant32 d4 = -0x1.8931dp+1F;
    Constant32 zero = 0.0F;
    Pattern32 significand = 0x007FFFFF;
    Pattern32 unit = 0x3F800000;
    Pattern32 mantissaHigh = 0xFFFF8000;
    Pattern32 exponentOffset = 0x3F3F8000;  // e steps up at m = 1.49609375
    Pattern32 indexBits = 0x007F8000;       // the leading eight bits, rounded to seven
    Pattern32 indexRound = 0x00008000;
    Pattern32 rowBits = 0x00FF0000;
};
constexpr Log10Constants32 log10Constants32;

template <int N>
inline U32<N> log10Row32(const Log10Constants32& k, U32<N> b) {
    return (((b & k.indexBits) + k.indexRound) & k.rowBits) >> 12;
}

template <int N>
OKT_INLINE inline Sums<F32<N>> log10Main32(const Log10Constants32& k, U32<N> b, const RowOffset<N>& offset) {
    const F32<N> e = toReal32(shiftRightSigned(b - k.exponentOffset, 23));
    const U32<N> m = (b & k.significand) | k.unit;
    const F32<N> mh = asReal(m & k.mantissaHigh);
    const F32<N> ml = asReal(m) - mh;
    const auto [c, again, hi, lo] = gatherRowsAt<Real32>(tables::Log10Table32, offset);
    const F32<N> a = mh * c - k.origin;
    const F32<N> b1 = ml * c;
    const F32<N> r = b1 + a;
    const F32<N> t = a + (e * k.log2Hi + hi);
    const F32<N> q = e * k.log2Lo + lo;
    const Mask32<N> nearOne = q == k.zero;
    const F32<N> poly = r * (r * (r * (r * k.d4 + k.d3) + k.d2) + k.d1);
    return {(poly + q) + zeroIf(nearOne, b1), t + zeroUnless(nearOne, b1)};
}

Sums<F32x1> log10Single32(Real32 x) {
    const U32<1> b(asBits(x));
    return log10Main32(log10Constants32, b, RowOffset<1>(log10Row32(log10Constants32, b)));
}

[[gnu::noinline, gnu::cold]] Real32 log10Element32(Real32 x, OktStatus& status) {
    const std::uint32_t b = asBits(x);
    if (b - 0x00800000 < 0x7F000000) return log10Single32(x).total().raw;
    if (isZero(x)) {
        status = oktStatusSingularity;
        return minusInf32;
    }
    if (isNaN(x)) {
        keepFlags(opaque(x) * opaque(Real32{1}));  // invalid for a signalling NaN, which stays one
        return x;
    }
    if (isNegative(x)) {
        status = oktStatusDomain;
        return asReal(Format<Real32>::nan);
    }
    if (isInfinite(x)) return x;
    const Real32 scaled = x * Real32{0x1p23f};
    const auto sums = log10Single32(scaled);
    return (sums.small.raw - 0x1.bb1dbcp+2F) + sums.large.raw;  // 23 log10 2
}

OKT_INLINE inline bool locate(const Log10Constants32& k, F32<8> x, RowOffset<8>& offset) {
    if (!k.normal.holdsAll(asBits(x))) [[unlikely]]
        return false;
    offset.put(log10Row32(k, asBits(x)));
    return true;
}
OKT_INLINE inline F32<8> logarithmAt(const Log10Constants32& k, F32<8> x, const RowOffset<8>& offset) {
    return log10Main32(k, asBits(x), offset).total();
}

void log10_32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    logarithm<Real32, RowOffset<8>>(src, dst, len, log10Constants32, log10Element32, status);
}

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
constexpr LogColumns64<513> lnColumns64(tables::Ln64Table), log10Columns64(tables::Log10Table64);

struct CommonConstants64 {
    WordRange normal{0x00100000, 0x7FF00000};  // on the upper word
    Constant64 zero = 0.0;
    Pattern64 significand = 0x000FFFFFFFFFFFFF;
    Pattern64 unit = 0x3FF0000000000000;
    Pattern32 indexBits = 0x000FFC00;  // the leading ten bits, rounded to nine
    Pattern32 indexRound = 0x00000400;
    Pattern32 rowBits = 0x001FF800;
};

struct LnConstants64 : CommonConstants64 {
    Constant64 log2Hi = 0x1.62e42fefa38p-1;  // ln 2
    Constant64 log2Lo = 0x1.ef35793c7673p-45;
    Constant64 origin = 1.0;
    // ln(1 + r) = r + r^2 (b2 + b3 r + ...) on |r| <= 2^-10, relative error 2^-56.5; minimax.
    Constant64 b2 = -0x1.ffffffffffca9p-2;
    Constant64 b3 = 0x1.555555555512ap-2;
    Constant64 b4 = -0x1.00000d588d052p-2;
    Constant64 b5 = 0x1.9999b39037e04p-3;
    Pattern64 mantissaHigh = 0x7FFFFFFF00000000;
    Pattern32 exponentOffset = 0x3FE7FC00;  // e steps up at m = 1.4990234375

    static constexpr const LogColumns64<513>& columns = lnColumns64;
    static constexpr Real64 scaledBy52 = 0x1.205966f2b4f12p+5;  // 52 ln 2
    template <int N>
    F64<N> polynomial(F64<N> r) const {
        return r * (r * (r * (r * (r * b5 + b4) + b3) + b2));
    }
};

struct Log10Constants64 : CommonConstants64 {
    Constant64 log2Hi = 0x1.34413509f78p-2;  // log10 2
    Constant64 log2Lo = 0x1.fef311f12b358p-46;
    Constant64 origin = 0x1.bcp-2;  // K
    // log10(1 + r/K) = r + r (f1 + f2 r + ...) on -0.00047 < r < 0.00043, relative error 2^-54.2; f1 is
    // (log10 e)/K - 1, the others minimax on |r| <= K/1024.
    Constant64 f1 = 0x1.a7a6cbf2e4108p-10;
    Constant64 f2 = -0x1.27af2dc77af28p+0;
    Constant64 f3 = 0x1.c6a02dc962e0fp+0;
    Constant64 f4 = -0x1.8930aac7d7c5p+1;
    Constant64 f5 = 0x1.6aba0f9751ec1p+2;
    Pattern64 mantissaHigh = 0x7FFFFFFF80000000;
    Pattern32 exponentOffset = 0x3FF00000;

    static constexpr const LogColumns64<513>& columns = log10Columns64;
    static constexpr Real64 scaledBy52 = 0x1.f4e9f6303263ep+3;  // 52 log10 2
    template <int N>
    F64<N> polynomial(F64<N> r) const {
        return r * (r * (r * (r * (r * f5 + f4) + f3) + f2) + f1);
    }
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

OKT_EXPORT(Ln, 32f, ln32)
OKT_EXPORT(Ln, 64f, log64<LnConstants64>)
OKT_EXPORT(Log10, 32f, log10_32)
OKT_EXPORT(Log10, 64f, log64<Log10Constants64>)

}  // namespace okt
