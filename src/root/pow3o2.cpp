// x to the power 3/2: the square root of multiplicative_root.h, to more than the working precision, and its
// cube, in Real64 under the caller's MXCSR. The cube is multiplied by the root's power of two three times, so that
// every intermediate stays in range. Elements are worked side by side where all are positive, normal and finite.
//
// Largest errors seen: 0.5000 ulp (32f), 0.5062 at 0x3FF70C98E29A08AF (64f; subnormal results 0.75).
//
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (0.97)
#include "exports/Pow3o2.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/pattern.h"
#include "root/multiplicative_root.h"

namespace okt {
namespace {

constexpr Real64 cubeSplitConstant = 0x1.00000000002p+43;  // 2^43 + 1

// w^(3/2) · 2^(-3 bias).
template <class T, int N>
F64<N> threeHalves(F64<N> w, std::uint64_t bias) {
    const RootParts<N> parts = rootParts(w);
    const MultiplicativeRoot<F64<N>>& root = parts.root;
    const F64<N> s = asReal((parts.biasedHalfExponent - U64<N>(bias)) << 52);
    F64<N> cube;
    if constexpr (sizeof(T) == 4) {
        const F64<N> y = root.value();
        cube = y * y * y;
    } else {
        // The root as a short head, whose cube loses little, and the rest.
        const F64<N> p = F64<N>(cubeSplitConstant) * root.g;
        const F64<N> q = p - root.g;
        const F64<N> head = p - q;
        const F64<N> rest = root.g - head;
        const F64<N> lo = root.residual * root.h + rest;
        const F64<N> square = head * head;
        cube = square * head + ((square + head * lo) * lo * F64<N>(3.0) + lo * lo * lo);
    }
    return cube * s * s * s;
}

template <int N>
F32<N> toElement(F64<N> result, Real32) {
    return narrow(result);
}
template <int N>
F64<N> toElement(F64<N> result, Real64) {
    return result;
}
template <int N>
F64<N> toReal64(F32<N> x) {
    return widen(x);
}
template <int N>
F64<N> toReal64(F64<N> x) {
    return x;
}

template <class T>
T belowZero(T x, OktStatus& status) {
    const F64x1 nan = opaque(Real64{0}) / opaque(Real64{0});  // the processor's, raises invalid
    status = oktStatusDomain;
    raiseStatusFlag(status);
    return toElement(nan, x).raw;
}

template <class T>
T pow3o2Element(T x, OktStatus& status) {
    if (!isFinite(x)) return isInfinite(x) && isNegative(x) ? belowZero(x, status) : x + x;
    // By a comparison in Real64: with the caller's denormals-are-zero
    // set a subnormal, negative or not, comes out unchanged.
    const F64x1 wide = toReal64(Vec<T, 1>(x));
    if (wide.raw == 0.0) return x;
    if (isNegative(x)) return belowZero(x, status);
    const bool subnormal = biasedExponent(x) == 0;
    return toElement(threeHalves<T>(subnormal ? wide * F64x1(0x1p200) : wide, subnormal ? 100 : 0), x).raw;
}

// All lanes positive, normal and finite.
template <int N>
bool allInRange(F32<N> x) {
    return !any(greaterSigned(asBits(x) - U32<N>(0x80800000), U32<N>(0xFEFFFFFF)));
}
template <int N>
bool allInRange(F64<N> x) {
    return !any(greaterSigned(packHighWords(asBits(x)) - U32<N>(0x80100000), U32<N>(0xFFDFFFFF)));
}

template <class T>
void pow3o2(const T* src, T* dst, std::int32_t len, OktStatus& status) {
    packedElementLoop<4, 8>(
        src, dst, len,
        []<int N>(std::integral_constant<int, N>, const T* from, T* to) {
            const auto x = Vec<T, N>::load(from);
            if (!allInRange(x)) [[unlikely]]
                return false;
            toElement(threeHalves<T>(toReal64(x), 0), T{}).store(to);
            return true;
        },
        [](T x, OktStatus& s) { return pow3o2Element(x, s); }, status);
}

}  // namespace

OKT_EXPORT(Pow3o2, 32f, pow3o2)
OKT_EXPORT(Pow3o2, 64f, pow3o2)

}  // namespace okt
