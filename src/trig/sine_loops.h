// The loops of Sin and Cos, which differ in a table and in where the half turns are counted from.
#pragma once

#include "frame/loops.h"
#include "lanes/constant.h"
#include "trig/sine_kernel.h"

namespace okt::sine {

// (-1)^n·sin r for r = x - d·pi, |r| at most about pi/2, by an odd polynomial of nine; d is n (the sine) or n - 1/2
// (the cosine).
struct Fit {
    Constant64 negPi1 = -0x1.921fb5444p+1;   // -pi, the head: products with d are exact
    Constant64 pi2 = 0x1.68c234c4c6629p-38;  // pi, the rest
    // sin r on |r| <= pi/2, relative error 2^-25.7; fitted.
    Constant64 p0 = 0x1.000000089705fp+0;
    Constant64 p1 = -0x1.55554ae8ba1bdp-3;
    Constant64 p2 = 0x1.110ee64cd0933p-7;
    Constant64 p3 = -0x1.9f75e2c166f94p-13;
    Constant64 p4 = 0x1.5e0a329a17541p-19;
};
inline constexpr Fit fit;

template <int N>
struct HalfTurn {
    F64<N> r;
    U32<N> sign;
};

// `wide` is x once more.
template <class Function, int N>
inline HalfTurn<N> reduceToHalfTurn(const Fit& k, F32<N> x, F64<N> wide) {
    const U32<N> n = Function::halfTurns(x);
    const F64<N> d = Function::centre(toReal64(n));
    return {(wide + d * k.negPi1) - d * k.pi2, n << 31};
}

// `z` is r·r.
template <int N>
inline F32<N> fittedSine(const Fit& k, F64<N> r, F64<N> z, U32<N> sign) {
    const F64<N> y = (((z * k.p4 + k.p3) * z + k.p2) * z + k.p1) * z + k.p0;
    return narrow(y * r) ^ asReal(sign);
}

// Stores the results of a strip, or returns false where it is not well in range.
template <class Function>
inline bool fittedSineOfStrip(const Fit& k, const Real32* src, Real32* dst) {
    alignas(16) Real64 r[stripLength], z[stripLength];
    alignas(16) std::uint32_t sign[stripLength];
    const bool reduced = reduceStrip(src, [&](int i) OKT_INLINE {
        const HalfTurn<8> angle = reduceToHalfTurn<Function>(k, F32<8>::load(src + i), widenAt<8>(src + i));
        angle.r.store(r + i);
        (angle.r * angle.r).store(z + i);
        angle.sign.store(sign + i);
    });
    if (!reduced) [[unlikely]]
        return false;
    keepInMemory(r, z, sign);
    for (int i = 0; i < stripLength; i += 16)
        fittedSine(k, F64<16>::load(r + i), F64<16>::load(z + i), U32<16>::load(sign + i)).store(dst + i);
    return true;
}

// The element path of a whole block of huge elements of one kind. False for any other, and where one element's result
// is the next one's argument: then nothing is stored.
template <class Function, class T>
[[gnu::noinline]] bool hugeBlock(const T* src, T* dst) {
    QuarterPiReductions<4> reductions;
    if (smearsForward(src, dst) || !reduceAlike(Vec<T, 4>::load(src), reductions)) return false;
    const F64<4> result = Function::ofAngle(elementAngle(reductions));
    if constexpr (sizeof(T) == 8)
        result.store(dst);
    else
        narrow(result).store(dst);
    return true;
}

// `Function` has the Real64 loop's table, `halfTurns` and `centre` for the Real32 loop, and the element paths.
template <class Function>
void loop64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto x = F64<N>::load(src + i);
        if (!inMainRange(x)) [[unlikely]]
            return N == 4 && hugeBlock<Function>(src + i, dst + i);
        if constexpr (N > 4) {
            ReducedInMemory<Steps64, N>(x).storeSums(dst + i, Function::table);
        } else {
            const Reduced<N> a = reduce<Steps64>(x);
            summands(Function::table, rowOffset<Steps64>(a.row), a.r, a.rl, series<Steps64>(a.r))
                .mainSum()
                .store(dst + i);
        }
        return true;
    };
    const auto element = [=, &status](std::int32_t i) {
        storeElement(dst + i, Function::element(bits64(loadBits(src + i)), status));
    };
    redoBlockTryTail<4, 8>(len, len & ~3, tryLanes, element);
}

template <class Function>
void loop32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Fit& k = inMemory(fit);
    const auto tryLanes = [=, &k]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        if constexpr (N == stripLength) {
            return fittedSineOfStrip<Function>(k, src + i, dst + i);
        } else {
            const auto x = F32<N>::load(src + i);
            if (!inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock<Function>(src + i, dst + i);
            const HalfTurn<N> angle = reduceToHalfTurn<Function>(k, x, widen(x));
            fittedSine(k, angle.r, angle.r * angle.r, angle.sign).store(dst + i);
            return true;
        }
    };
    const auto element = [=, &status](std::int32_t i) {
        storeElement(dst + i, Function::element(bits32(loadBits(src + i)), status));
    };
    // A last block of one to four elements is a tail, also when it is whole.
    redoBlockTryTail<4, stripLength>(len, len - 4, tryLanes, element);
}

inline constexpr Real32 oneOverPi32 = 0x1.45f306p-2F;  // 1/pi

}  // namespace okt::sine
