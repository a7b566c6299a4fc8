// Sine and cosine of one source with one reduction.
//
// Real32: x = n·pi/2 + r with n from a rounding by addition, a polynomial for the sine and one for the cosine of
// |r| <= pi/4 in Real64; n's low bits say which of the two is the sine of x and with which signs.
// Real64: the table method at 128 steps a turn with shorter series; both rows share the reduction and the series. The
// element path works at 64 steps.
//
// Largest errors seen:
//   Real32  sine 0.5626 ulp at -0x1.6d45f6p+10, cosine 0.5619 ulp at -0x1.1e714ep+11
//   Real64  sine 0.5408 ulp at -0x1.4ebd3f71b0494p+16, cosine 0.5370 ulp at 0x1.8bbdd0f0f84bp+0
//
// GCC: -fno-tree-ter (0.99)
#include "exports/SinCos.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "lanes/pattern.h"
#include "trig/sine_kernel.h"

namespace okt {
namespace {

template <class T>
struct SineAndCosine {
    T sine, cosine;
};

[[gnu::noinline, gnu::cold]] SineAndCosine<Real64> sinCosLane64(Real64 x, OktStatus& status) {
    if (!isFinite(x)) {
        const Real64 result = sine::ofNonFinite(x, status);
        return {result, result};
    }
    if (sine::isTiny(x)) return {sine::sineOfTiny(x), sine::cosineOfTiny(x)};
    const sine::ElementAngle<1> angle = sine::elementAngle(x);
    return {angle.sine().raw, angle.cosine().raw};
}

[[gnu::noinline, gnu::cold]] SineAndCosine<Real32> sinCosLane32(Real32 x, OktStatus& status) {
    if (isInfinite(x)) {
        const Real32 result = sine::ofInfinity32(status);
        return {result, result};
    }
    const auto [s, c] = sinCosLane64(x, status);
    return {static_cast<Real32>(s), static_cast<Real32>(c)};
}

// The element path of a whole block of huge elements of one kind. False for any other, and where a result is the
// argument of one of the next elements: then nothing is stored.
template <class T>
[[gnu::noinline]] bool hugeBlock(const T* src, T* sines, T* cosines) {
    QuarterPiReductions<4> reductions;
    if (smearsForward(src, sines) || smearsForward(src, cosines)) return false;
    if (!reduceAlike(Vec<T, 4>::load(src), reductions)) return false;
    const auto angle = sine::elementAngle(reductions);
    if constexpr (sizeof(T) == 8) {
        angle.sine().store(sines);
        angle.cosine().store(cosines);
    } else {
        narrow(angle.sine()).store(sines);
        narrow(angle.cosine()).store(cosines);
    }
    return true;
}

struct Fit {
    Constant32 twoOverPi32 = 0x1.45f306p-1F;          // 2/pi
    Constant32 floatShifter = 0x1.8p+23F;             // the sum's low bits hold n
    Constant64 zeroAbove2To52 = 0x1p52 + 0x4B400000;  // the sum's pattern for n = 0
    Constant64 negHalfPi1 = -0x1.921fb5444p+0;        // -pi/2, the head: products with n are exact
    Constant64 halfPi2 = 0x1.68c234c4c6629p-39;       // pi/2, the rest
    // sin r = r (1 + a1 r^2 + ...) on |r| <= pi/4, relative error 2^-27.9; minimax.
    Constant64 a1 = -0x1.55554527af34p-3;
    Constant64 a2 = 0x1.11073afce563fp-7;
    Constant64 a3 = -0x1.9943e0fbea90ap-13;
    // cos r = 1 + b1 r^2 + ... on |r| <= pi/4, relative error 2^-33.0; b1 is -1/2, the others minimax.
    Constant64 b1 = -0.5;
    Constant64 b2 = 0x1.55554a115b568p-5;
    Constant64 b3 = -0x1.6c0c33a81bd97p-10;
    Constant64 b4 = 0x1.99eb9c49f772ep-16;
    Constant64 one = 1.0;
};
constexpr Fit fit;

template <int N>
struct QuarterTurn {
    F64<N> r;
    U32<N> n;  // its low bits
};

// `wide` is x once more. The integer n is had from the sum's pattern, which is quicker than taking the shifter off and
// widening the difference, and as exact.
template <int N>
inline QuarterTurn<N> reduceToQuarterTurn(const Fit& k, F32<N> x, F64<N> wide) {
    const F32<N> t = x * k.twoOverPi32 + k.floatShifter;
    const F64<N> n = above2To52(asBits(t)) - k.zeroAbove2To52;
    return {(wide + n * k.negHalfPi1) - n * k.halfPi2, asBits(t)};
}

template <int N>
inline SineAndCosine<F32<N>> fittedSineAndCosine(const Fit& k, F64<N> r, U32<N> n) {
    const F64<N> z = r * r;
    // The two chains step by step, side by side.
    const F64<N> s3 = z * k.a3, c4 = z * k.b4;
    const F64<N> s2 = s3 + k.a2, c3 = c4 + k.b3;
    const F64<N> s2z = s2 * z, c3z = c3 * z;
    const F64<N> s1 = s2z + k.a1, c2 = c3z + k.b2;
    const F64<N> s1z = s1 * z, c2z = c2 * z;
    const F64<N> s0 = s1z + k.one, c1 = c2z + k.b1;
    const F64<N> s0r = s0 * r, c1z = c1 * z;
    const U32<N> s = asBits(narrow(s0r)), c = asBits(narrow(c1z + k.one));

    // An odd n exchanges the two. The sine is negative where bit 1 of n is set, the cosine where bits 0 and 1 differ.
    const U32<N> even = (n & U32<N>(1)) - U32<N>(1);  // all ones where it is
    const U32<N> sineFlip = ((s ^ c) & even) ^ ((n << 30) & U32<N>(0x80000000));
    const U32<N> cosineFlip = sineFlip ^ (~even & U32<N>(0x80000000));
    return {asReal(c ^ sineFlip), asReal(s ^ cosineFlip)};
}

// Stores the results of a strip, or returns false where it is not well in range.
inline bool fittedSineAndCosineOfStrip(const Fit& k, const Real32* src, Real32* sines, Real32* cosines) {
    using sine::stripLength;
    alignas(16) Real64 r[stripLength];
    alignas(16) std::uint32_t n[stripLength];
    const bool reduced = sine::reduceStrip(src, [&](int i) OKT_INLINE {
        const QuarterTurn<8> angle = reduceToQuarterTurn(k, F32<8>::load(src + i), widenAt<8>(src + i));
        angle.r.store(r + i);
        angle.n.store(n + i);
    });
    if (!reduced) [[unlikely]]
        return false;
    keepInMemory(r, n);
    for (int i = 0; i < stripLength; i += 8) {
        const auto result = fittedSineAndCosine(k, F64<8>::load(r + i), U32<8>::load(n + i));
        result.sine.store(sines + i);
        result.cosine.store(cosines + i);
    }
    return true;
}

void sinCos32(const Real32* src, Real32* sines, Real32* cosines, std::int32_t len, OktStatus& status) {
    const Fit& k = inMemory(fit);
    const auto tryLanes = [=, &k]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        if constexpr (N == sine::stripLength) {
            return fittedSineAndCosineOfStrip(k, src + i, sines + i, cosines + i);
        } else {
            const auto x = F32<N>::load(src + i);
            if (!sine::inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock(src + i, sines + i, cosines + i);
            const QuarterTurn<N> angle = reduceToQuarterTurn(k, x, widen(x));
            const auto result = fittedSineAndCosine(k, angle.r, angle.n);
            result.sine.store(sines + i);
            result.cosine.store(cosines + i);
            return true;
        }
    };
    const auto element = [=, &status](std::int32_t i) {
        const auto result = sinCosLane32(bits32(loadBits(src + i)), status);
        storeElement(sines + i, result.sine);
        storeElement(cosines + i, result.cosine);
    };
    redoBlockTryTail<4, sine::stripLength, 16>(len, len & ~3, tryLanes, element);
}

void sinCos64(const Real64* src, Real64* sines, Real64* cosines, std::int32_t len, OktStatus& status) {
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        using Steps = sine::Steps128;
        const auto x = F64<N>::load(src + i);
        if (!sine::inMainRange(x)) [[unlikely]]
            return N == 4 && hugeBlock(src + i, sines + i, cosines + i);
        const auto& table = tables::sinCosTable128;
        if constexpr (N > 4) {
            const sine::ReducedInMemory<Steps, N, 2> a(x);
            a.storeSums(sines + i, table);
            a.storeSums(cosines + i, table, 1);
        } else {
            const sine::Reduced<N> a = sine::reduce<Steps>(x);
            const sine::Series<N> poly = sine::series<Steps>(a.r);
            const auto at = [&](int quarters) OKT_INLINE {
                return sine::summands(table, sine::rowOffset<Steps>(a.row, quarters), a.r, a.rl, poly).mainSum();
            };
            at(0).store(sines + i);
            at(1).store(cosines + i);
        }
        return true;
    };
    const auto element = [=, &status](std::int32_t i) {
        const auto result = sinCosLane64(bits64(loadBits(src + i)), status);
        storeElement(sines + i, result.sine);
        storeElement(cosines + i, result.cosine);
    };
    redoBlockTryTail<4, 8>(len, len & ~3, tryLanes, element);
}

}  // namespace

OKT_EXPORT(SinCos, 32f, sinCos32)
OKT_EXPORT(SinCos, 64f, sinCos64)

}  // namespace okt
