// Tangent.
//
// Real32: x = n·pi/2 + r, |r| <= pi/4, and a quotient of two polynomials s/c in Real64, turned to -c/s for odd n.
// Real64: x = n·pi/32 + r + rl, and a polynomial of fifteen about each of the 32 angles B = n·pi/32 of a period. In the
// rows next to a pole the reciprocal -1/(distance of the pole) is split off and added back from a reduction of its own:
// with yh the distance cut to 35 bits and R = 1/yh, the head of R less the row's constant is exact, and the rest of
// the reciprocal is R·((1 - yh·Rh) - e).
//
// Largest errors seen:
//   Real32  0.9356 ulp at 0x1.f044b6p+1; element path 0.5000 ulp
//   Real64  1.0357 ulp; 1.0329 ulp at 0x1.75001f024518ep+13
//
// GCC: -fno-tree-ter (1.01)
// GCC: -fschedule-insns -fsched-pressure (0.99)
#include "exports/Tan.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "trig/reduce_quarter_pi.h"
#include "trig/sine_kernel.h"
#include "trig/tan_table.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct C {
    static constexpr Real64 thirtyTwoOverPi = 0x1.45f306dc9c883p+3;  // 32/pi
    static constexpr Real64 roundShifter = 0x1.8p+52;                // rounds to an integer
    static constexpr Real64 roundShifter16 = 0x1.8p+56;              // rounds to a multiple of 16

    // pi/32 in three parts for the row's reduction and for the pole's.
    static constexpr Real64 tanStep1 = 0x1.921fb5444p-4;
    static constexpr Real64 tanStep2 = 0x1.68c234c4cp-43;
    static constexpr Real64 tanStep3 = 0x1.98a2e03707345p-81;
    static constexpr Real64 poleStep1 = 0x1.921fb54444p-4;
    static constexpr Real64 poleStep2Neg = -0x1.2e7b967674p-44;
    static constexpr Real64 poleStep2Pos = 0x1.2e7b9676733afp-44;  // makes the distance's head; the last digits differ
    static constexpr Real64 poleStep3 = 0x1.8a2e03707344ap-85;
};

// In place of a rest of the argument that is +0: neither sum to which it would be added is ever -0.
struct NoRest {};
template <int N>
inline F64<N> operator+(F64<N> a, NoRest) {
    return a;
}

// The tangent of x + lo + quarters·pi/2, |x| below 12800 and not tiny.
template <int N, class Rest>
inline F64<N> tangent(F64<N> x, Rest lo, U64<N> quarters) {
    const F64<N> u = x * C::thirtyTwoOverPi;
    const F64<N> t = F64<N>(C::roundShifter) + u;
    const F64<N> n = t - C::roundShifter;
    const F64<N> w = F64<N>(C::roundShifter16) + u;
    const F64<N> m = w - C::roundShifter16;  // the multiple of 16 next to u: the nearest pole or zero

    // A row has twenty entries of eight bytes.
    const U64<N> row = (asBits(t) + (quarters << 4)) & U64<N>(31);
    const U64<N> offset = (row << 7) + (row << 5);
    const auto T = [&](int entry) OKT_INLINE { return gatherElementsAt(tables::tanRows + entry, offset); };

    const F64<N> a = x - n * C::tanStep1;
    const F64<N> second = n * C::tanStep2;
    const F64<N> r = a - second;
    const F64<N> rl = (((a - r) - second) - n * C::tanStep3) + lo;

    const F64<N> g = m * C::poleStep2Neg;
    const F64<N> b = x - m * C::poleStep1;
    const F64<N> y = m * C::poleStep2Pos + b;
    const F64<N> v = b - g;
    const F64<N> yh = y & U64<N>(~std::uint64_t{0x3FFFF});
    const F64<N> R = F64<N>(1.0) / yh;
    const F64<N> e = (((((b - v) - g) - m * C::poleStep3) + lo) + (v - yh)) * R;

    const F64<N> z = r * r;
    const F64<N> z2 = z * z;
    const F64<N> z3 = r * z2;
    const F64<N> A = ((T(5) * r + T(3)) * z + T(7) * z2) + ((T(11) * r + T(9)) + T(13) * z) * z3;
    const F64<N> C =
        (z2 * z2) * ((((T(1) * r + T(0)) + (T(4) * r + T(2)) * z) + T(6) * z2) + z3 * ((T(10) * r + T(8)) + T(12) * z));

    const F64<N> p1 = T(16) * r;
    const F64<N> p2 = r * T(17);
    const F64<N> s = p1 + p2;
    const F64<N> polynomial = (A + C) + (((p2 + (p1 - s)) + T(15)) + (T(16) + T(17)) * rl);

    const F64<N> Rh = R & asBits(T(19));
    const F64<N> d = yh * Rh;
    const F64<N> h = Rh - T(14);
    const F64<N> g2 = s - h;
    const F64<N> s2 = s - (h + g2);
    return g2 + ((polynomial + s2) - T(18) * R * ((F64<N>(1.0) - d) - e));
}

// Finite, of any size.
inline Real64 tangentOfFinite(Real64 x) {
    if (x == 0.0) return x;
    if (sine::isTiny(x)) return sine::sineOfTiny(x);  // rounds like x
    QuarterPiReduction reduction{x, 0.0, 0};
    if ((highWord(x) >> 16 & 0x7FFF) >= 0x40C9) reduction = reduceQuarterPi(x);
    return tangent<1>(reduction.head, F64<1>(reduction.tail), std::uint64_t{reduction.quadrant}).raw;
}

[[gnu::noinline]] Real64 tanElement64(Real64 x, OktStatus& status) {
    return isFinite(x) ? tangentOfFinite(x) : sine::ofNonFinite(x, status);
}

[[gnu::noinline]] Real32 tanElement32(Real32 x, OktStatus& status) {
    if (isInfinite(x)) return sine::ofInfinity32(status);
    return static_cast<Real32>(tanElement64(x, status));
}

// The element path of a whole block of huge elements of one kind. False for any other, and where one element's result
// is the next one's argument: then nothing is stored.
template <class T>
[[gnu::noinline]] bool hugeBlock(const T* src, T* dst) {
    QuarterPiReductions<2> reductions;
    if (smearsForward(src, dst) || !reduceAlike(Vec<T, 2>::load(src), reductions)) return false;
    const F64<2> result = tangent<2>(reductions.head, reductions.tail, reductions.quadrant);
    if constexpr (sizeof(T) == 8)
        result.store(dst);
    else
        narrow(result).store(dst);
    return true;
}

// |x| in [2^-252, 12800) in every lane. Below, where 1/yh might be infinite, the element path knows the result.
template <int N>
inline bool inMainRange(F64<N> x) {
    constexpr std::uint32_t lowest = 771u << 20;
    constexpr std::uint32_t bias = 0x80000000u - lowest;  // magnitudes below wrap around to the top
    const U32<N> magnitude = packHighWords(asBits(x)) & U32<N>(0x7FFFFFFF);
    return !any(greaterSigned(magnitude + U32<N>(bias), U32<N>(0x40C90000u - 1 + bias)));
}

void tan64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto x = F64<N>::load(src + i);
        if (!inMainRange(x)) [[unlikely]]
            return N == 2 && hugeBlock(src + i, dst + i);
        tangent<N>(x, NoRest(), U64<N>(0)).store(dst + i);
        return true;
    };
    const auto element = [=, &status](std::int32_t i) {
        storeElement(dst + i, tanElement64(bits64(loadBits(src + i)), status));
    };
    redoBlockTryTail<2, 4>(len, len & ~1, tryLanes, element);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Fit {
    static constexpr Real32 twoOverPi32 = 0x1.45f306p-1F;     // 2/pi
    static constexpr Real64 halfPi1 = 0x1.921fb5444p+0;       // pi/2, the head: products with n are exact
    static constexpr Real64 halfPi2 = 0x1.68c234c4c6629p-39;  // pi/2, the rest
    // tan r = (r + n1 r^3)/(1 + d1 r^2 + d2 r^4) on |r| <= pi/4, relative error 2^-25.0; fitted.
    static constexpr Real64 n1 = -0x1.8867706ed6612p-4;
    static constexpr Real64 d1 = -0x1.b76f5e7f08c11p-2;
    static constexpr Real64 d2 = 0x1.3e66ea6aa37f2p-7;
};

template <int N>
inline F32<N> fittedTangent(F32<N> x) {
    const U32<N> k = roundToSigned(x * Fit::twoOverPi32);
    const F64<N> n = toReal64(k);
    const F64<N> r = (widen(x) - n * Fit::halfPi1) - n * Fit::halfPi2;
    const F64<N> z = r * r;
    const F64<N> s = (r * Fit::n1) * z + r;
    const F64<N> c = (z * Fit::d2 + Fit::d1) * z + 1.0;
    const U32<N> parity = k << 31;
    const F64<N> exchange = zeroUnless(widen(negativeLanes(parity)), s ^ c);
    return narrow((s ^ exchange) / (c ^ exchange)) ^ asReal(parity);
}

void tan32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto x = F32<N>::load(src + i);
        if (!sine::inMainRange(x)) [[unlikely]]
            return N == 2 && hugeBlock(src + i, dst + i);
        fittedTangent(x).store(dst + i);
        return true;
    };
    const auto element = [=, &status](std::int32_t i) {
        storeElement(dst + i, tanElement32(bits32(loadBits(src + i)), status));
    };
    redoBlockTryTail<2, 16>(len, len & ~1, tryLanes, element);
}

}  // namespace

OKT_EXPORT(Tan, 32f, tan32)
OKT_EXPORT(Tan, 64f, tan64)

}  // namespace okt
