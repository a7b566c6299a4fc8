// Sine and cosine of one source with one reduction.
//
// Real32: x = n·pi/2 + r with n from a rounding by addition, a polynomial for the sine and one for the cosine of
// |r| <= pi/4 in Real64; n's low bits say which of the two is the sine of x and with which signs.
// Real64: the table method at 128 steps a turn with shorter series; both rows share the reduction and the series. The
// lane path works at 64 steps.
//
// Largest errors seen:
//   Real32  sine 0.5626 ulp at -0x1.6d45f6p+10, cosine 0.5619 ulp at -0x1.1e714ep+11
//   Real64  sine 0.5408 ulp at -0x1.4ebd3f71b0494p+16, cosine 0.5370 ulp at 0x1.8bbdd0f0f84bp+0
#include "frame/frame.h"
#include "frame/loops.h"
#include "trig/sine_kernel.h"

namespace okt {
namespace {

template <class T>
struct SineAndCosine {
    T sine, cosine;
};

[[gnu::noinline, gnu::cold]] SineAndCosine<Real64> sinCosLane64(Real64 x, OktStatus& status) {
    if (!sine::isFinite(x)) {
        const Real64 result = sine::ofNonFinite(x, status);
        return {result, result};
    }
    if (sine::isTiny(x)) return {sine::sineOfTiny(x), sine::cosineOfTiny(x)};
    const sine::LaneAngle<1> angle = sine::laneAngle(x);
    return {angle.sine().raw, angle.cosine().raw};
}

[[gnu::noinline, gnu::cold]] SineAndCosine<Real32> sinCosLane32(Real32 x, OktStatus& status) {
    if (sine::isInfinite(x)) {
        const Real32 result = sine::ofInfinity32(status);
        return {result, result};
    }
    const auto [s, c] = sinCosLane64(x, status);
    return {static_cast<Real32>(s), static_cast<Real32>(c)};
}

// The lane path of a whole block of huge elements of one kind. False for any other, and where a result is the argument
// of one of the next elements: then nothing is stored.
template <class T>
[[gnu::noinline]] bool hugeBlock(const T* src, T* sines, T* cosines) {
    QuarterPiReductions<4> reductions;
    if (smearsForward(src, sines) || smearsForward(src, cosines)) return false;
    if (!reduceAlike(Vec<T, 4>::load(src), reductions)) return false;
    const auto angle = sine::laneAngle(reductions);
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
    static constexpr Real32 twoOverPi32 = bits32(0x3F22F983);        // 2/pi
    static constexpr Real32 floatShifter = bits32(0x4B400000);       // 1.5·2^23: the sum's low bits hold n
    static constexpr Real64 negHalfPi1 = bits64(0xBFF921FB54440000);  // -pi/2, the head: products with n are exact
    static constexpr Real64 halfPi2 = bits64(0x3D868C234C4C6629);     // pi/2, the rest
    static constexpr Real64 a1 = bits64(0xBFC55554527AF340);
    static constexpr Real64 a2 = bits64(0x3F811073AFCE563F);
    static constexpr Real64 a3 = bits64(0xBF29943E0FBEA90A);
    static constexpr Real64 b1 = bits64(0xBFE0000000000000);
    static constexpr Real64 b2 = bits64(0x3FA55554A115B568);
    static constexpr Real64 b3 = bits64(0xBF56C0C33A81BD97);
    static constexpr Real64 b4 = bits64(0x3EF99EB9C49F772E);
};

template <int N>
inline SineAndCosine<F32<N>> fittedSineAndCosine(F32<N> x) {
    const F32<N> t = x * Fit::twoOverPi32 + Fit::floatShifter;
    const F64<N> n = widen(t - Fit::floatShifter);
    const F64<N> r = (widen(x) + n * Fit::negHalfPi1) - n * Fit::halfPi2;
    const F64<N> z = r * r;
    const F32<N> s = narrow((((F64<N>(Fit::a3) * z + Fit::a2) * z + Fit::a1) * z + 1.0) * r);
    const F32<N> c = narrow((((F64<N>(Fit::b4) * z + Fit::b3) * z + Fit::b2) * z + Fit::b1) * z + 1.0);

    // An odd n exchanges the two. The sine is negative where bit 1 of n is set, the cosine where bits 0 and 1 differ.
    const U32<N> parity = asBits(t) << 31;
    const U32<N> exchange = (asBits(s) ^ asBits(c)) & shiftRightSigned(parity, 31);
    const U32<N> sineSign = (asBits(t) << 30) & U32<N>(0x80000000);
    return {asReal(asBits(s) ^ exchange ^ sineSign), asReal(asBits(c) ^ exchange ^ (sineSign ^ parity))};
}

OktStatus sinCos32(const Real32* src, Real32* sines, Real32* cosines, std::int32_t len) {
    return mxcsrFrame(cosines, sines, src, len, [=](OktStatus& status) {
        const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
            const auto x = F32<N>::load(src + i);
            if (!sine::inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock(src + i, sines + i, cosines + i);
            const auto result = fittedSineAndCosine(x);
            result.sine.store(sines + i);
            result.cosine.store(cosines + i);
            return true;
        };
        const auto lane = [=, &status](std::int32_t i) {
            const auto result = sinCosLane32(bits32(loadBits(src + i)), status);
            storeElement(sines + i, result.sine);
            storeElement(cosines + i, result.cosine);
        };
        laneBlocks<4, 16>(len, len & ~3, tryLanes, lane);
    });
}

OktStatus sinCos64(const Real64* src, Real64* sines, Real64* cosines, std::int32_t len) {
    return mxcsrFrame(cosines, sines, src, len, [=](OktStatus& status) {
        const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
            using Steps = sine::Steps128;
            const auto x = F64<N>::load(src + i);
            if (!sine::inMainRange(x)) [[unlikely]]
                return N == 4 && hugeBlock(src + i, sines + i, cosines + i);
            const sine::Reduced<N> a = sine::reduce<Steps>(x);
            const sine::Series<N> poly = sine::series<Steps>(a.r);
            const auto at = [&](int quarters) OKT_INLINE {
                return sine::summands(tables::sinCosTable128, sine::rowOffset<Steps>(a.row, quarters), a.r, a.rl, poly).mainSum();
            };
            at(0).store(sines + i);
            at(1).store(cosines + i);
            return true;
        };
        const auto lane = [=, &status](std::int32_t i) {
            const auto result = sinCosLane64(bits64(loadBits(src + i)), status);
            storeElement(sines + i, result.sine);
            storeElement(cosines + i, result.cosine);
        };
        laneBlocks<4, 4>(len, len & ~3, tryLanes, lane);
    });
}

}  // namespace

OKT_EXPORT(SinCos, 32f, sinCos32)
OKT_EXPORT(SinCos, 64f, sinCos64)

}  // namespace okt
