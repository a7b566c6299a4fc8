// Hyperbolic tangent by a table of polynomials: the positive axis is cut into intervals by the bits of the argument's
// own pattern, and each has its row of coefficients. There is no exponential, no division and no range test.
//
// Real32: in Real64, degree 6 in |x|; four intervals a binade from 0.125 to 10, one row below and one above.
// Real64: degree 10 in d = |x| - centre around the value at the centre, which stands in the table as head and tail; the
// first-order term is added and multiplied in two parts. Eight intervals a binade from 0.125 to 20.
// Every element takes the same steps, in lanes and alone.
//
// Largest errors seen: Real32 0.5131 ulp; Real64 0.7549 ulp at 0x1.000822b5a272cp-4 (below 0.125, where the centre is
// zero and the result is a product), 0.5245 ulp elsewhere.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Tanh.h"
#include "hyper/tanh_tables.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

// The finished bits of an element: the polynomial's result, 1 with the sign of x for an infinity, x itself for a NaN.
std::uint64_t selected(bool infinite, bool nan, std::uint64_t result, std::uint64_t x) {
    const std::uint64_t* mask = tables::tanhSelect + (nan ? 8 : infinite ? 4 : 0);
    return (result & mask[0]) | (asBits(Real64{1}) & mask[1]) | (x & mask[2]);
}

// Puts right the infinities and NaNs among N results.
template <int N>
[[gnu::noinline, gnu::cold]] void selectSpecial(const Real32* x, Real32* dst) {
    for (int i = 0; i < N; ++i) {
        if (isFinite(x[i])) continue;
        const auto wide = asBits(static_cast<Real64>(x[i]));
        storeElement(dst + i, static_cast<Real32>(bits64(selected(true, isNaN(x[i]), 0, wide))));
    }
}
template <int N>
[[gnu::noinline, gnu::cold]] void selectSpecial(const Real64* x, Real64* dst) {
    for (int i = 0; i < N; ++i)
        storeBits(dst + i, selected(isInfinite(x[i]), isNaN(x[i]), loadBits(dst + i), asBits(x[i])));
}

// The byte offset of each lane's row.
template <int N>
using Rows = InMemory<std::uint32_t, N>;

template <int N>
[[gnu::always_inline]] inline F32<N> tanhSteps(F32<N> x) {
    const Rows<N> row(clampedDifference(asBits(abs(x)) >> 21, 0x3DE00000 >> 21, 26) << 6);
    const auto c = [&](int power) { return gatherElementsAt<1>(tables::tanhRows32 + power, row); };
    const F64<N> wide = widen(x);
    const F64<N> magnitude = abs(wide);
    const F64<N> a = zeroUnless(magnitude <= F64<N>(10.0), magnitude);  // large ones and NaNs: the row is 1 + 0·a
    F64<N> p = c(6);
    for (int power = 5; power >= 0; --power) p = inStep(p * a + c(power));
    return narrow(p | signOf(wide));
}

template <int N>
[[gnu::always_inline]] inline F64<N> tanhSteps(F64<N> x) {
    const F64<N> a = abs(x);
    const U64<N> head(0xFFFFFFFFF8000000);
    const Rows<N> row(clampedDifference(packHighWords(asBits(a)) >> 17, 0x3FBE0000 >> 17, 59) << 7);
    // The coefficients of the powers; before them the value at the centre and its tail.
    const auto c = [&](int power) { return gatherElementsAt<1>(tables::tanhRows64 + 1 + power, row); };
    const F64<N> d = a + gatherElementsAt<1>(tables::tanhRows64 + 12, row);
    F64<N> q = c(10);
    for (int power = 9; power >= 2; --power) q = inStep(q * d + c(power));
    const F64<N> p = q * d;

    // The slope with its rounding error, cut into h of 26 bits and the rest.
    const F64<N> slope = c(1);
    const F64<N> s = slope + p;
    const F64<N> u = p - s;
    const F64<N> v = s + u;
    const F64<N> h = s & head;
    const F64<N> l = ((u + slope) + (p - v)) + (s - h);

    // Times d, its main part exact.
    const F64<N> dh = d & head;
    const F64<N> dl = d - dh;
    const F64<N> m = h * dh;
    const F64<N> rest = (l * dl + dl * h) + dh * l;

    // To the value at the centre, with the sum's rounding error.
    const F64<N> value = c(0);
    const F64<N> sum = value + m;
    const F64<N> um = m - sum;
    const F64<N> vm = sum + um;
    const F64<N> e = (um + value) + (m - vm);
    return (((e + rest) + c(-1)) + sum) | signOf(x);
}

template <int N>
inline bool anySpecial(F32<N> x) {
    return any(greaterSigned(asBits(abs(x)), U32<N>(0x7F7FFFFF)));
}
template <int N>
inline bool anySpecial(F64<N> x) {
    return any(greaterSigned(packHighWords(asBits(abs(x))), U32<N>(0x7FEFFFFF)));
}

template <int N, class T>
[[gnu::always_inline]] inline void tanhLanes(const T* src, T* dst) {
    const Vec<T, N> x = Vec<T, N>::load(src);
    const bool special = anySpecial(x);
    tanhSteps(x).store(dst);
    if (special) [[unlikely]] {
        alignas(16) T kept[N];
        x.store(kept);
        selectSpecial<N>(kept, dst);
    }
}

template <class T>
void tanh(const T* src, T* dst, std::int32_t len, OktStatus&) {
    std::int32_t i = 0;
    for (; i <= len - 8; i += 8) tanhLanes<8>(src + i, dst + i);
    for (; i < len; ++i) tanhLanes<1>(src + i, dst + i);
}

}  // namespace

OKT_EXPORT(Tanh, 32f, tanh<Real32>)
OKT_EXPORT(Tanh, 64f, tanh<Real64>)

}  // namespace okt
