// The loops of Sin and Cos, which differ in a table and in where the half turns are counted from.
#pragma once

#include "frame/frame.h"
#include "frame/loops.h"
#include "trig/sine_kernel.h"

namespace okt::sine {

// (-1)^n·sin r for r = x - d·pi, |r| at most about pi/2, by an odd polynomial of nine fitted to relative error; d is n
// (the sine) or n - 1/2 (the cosine).
struct Fit {
    static constexpr Real64 negPi1 = bits64(0xC00921FB54440000);  // -pi, the head: products with d are exact
    static constexpr Real64 pi2 = bits64(0x3D968C234C4C6629);     // pi, the rest
    static constexpr Real64 p0 = bits64(0x3FF000000089705F);
    static constexpr Real64 p1 = bits64(0xBFC55554AE8BA1BD);
    static constexpr Real64 p2 = bits64(0x3F8110EE64CD0933);
    static constexpr Real64 p3 = bits64(0xBF29F75E2C166F94);
    static constexpr Real64 p4 = bits64(0x3EC5E0A329A17541);
};

template <int N>
inline F32<N> fittedSine(F32<N> x, U32<N> n, F64<N> d) {
    const F64<N> r = (widen(x) + d * Fit::negPi1) - d * Fit::pi2;
    const F64<N> z = r * r;
    const F64<N> y = (((F64<N>(Fit::p4) * z + Fit::p3) * z + Fit::p2) * z + Fit::p1) * z + Fit::p0;
    return narrow(y * r) ^ asReal(n << 31);
}

// The lane path of a whole block of huge elements of one kind. False for any other, and where one element's result is
// the next one's argument: then nothing is stored.
template <class Function, class T>
[[gnu::noinline]] bool hugeBlock(const T* src, T* dst) {
    QuarterPiReductions<4> reductions;
    if (smearsForward(src, dst) || !reduceAlike(Vec<T, 4>::load(src), reductions)) return false;
    const F64<4> result = Function::ofAngle(laneAngle(reductions));
    if constexpr (sizeof(T) == 8)
        result.store(dst);
    else
        narrow(result).store(dst);
    return true;
}

// `Function` has the Real64 loop's table, `halfTurns` and `centre` for the Real32 loop, and the lane paths.
template <class Function>
OktStatus loop64(const Real64* src, Real64* dst, std::int32_t len) {
    return mxcsrFrame(dst, src, len, [=](OktStatus& status) {
        const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
            const auto x = F64<N>::load(src + i);
            if (!inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock<Function>(src + i, dst + i);
            const Reduced<N> a = reduce<Steps64>(x);
            summands(Function::table, rowOffset<Steps64>(a.row), a.r, a.rl, series<Steps64>(a.r)).mainSum().store(dst + i);
            return true;
        };
        const auto lane = [=, &status](std::int32_t i) {
            storeElement(dst + i, Function::lane(bits64(loadBits(src + i)), status));
        };
        laneBlocks<4, 4>(len, len & ~3, tryLanes, lane);
    });
}

template <class Function>
OktStatus loop32(const Real32* src, Real32* dst, std::int32_t len) {
    return mxcsrFrame(dst, src, len, [=](OktStatus& status) {
        const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
            const auto x = F32<N>::load(src + i);
            if (!inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock<Function>(src + i, dst + i);
            const U32<N> n = Function::halfTurns(x);
            fittedSine(x, n, Function::centre(widenSigned(n))).store(dst + i);
            return true;
        };
        const auto lane = [=, &status](std::int32_t i) {
            storeElement(dst + i, Function::lane(bits32(loadBits(src + i)), status));
        };
        // A last block of one to four elements is a tail, also when it is whole.
        laneBlocks<4, 16>(len, len - 4, tryLanes, lane);
    });
}

inline constexpr Real32 oneOverPi32 = bits32(0x3EA2F983);  // 1/pi

}  // namespace okt::sine
