// Arctangent by the addition theorem: with c the centre of the interval that |x| lies in,
//     arctan |x| = arctan c + arctan t,    t = (|x| - c)/(c·|x| + 1),
// and t = -1/|x| behind the last interval, where arctan c is pi/2. arctan t = t + t^3·P(t^2), a fitted polynomial, and
// arctan c is added in two parts. Every element, zeros, infinities and NaNs included, takes the same steps, which give
// the same bits in a block and alone.
//
// Largest errors seen: 0.9516 ulp at 0x1.8c7706p+0 (Real32), 0.8498 ulp at 0x1.6084938483835p-1 (Real64).
//
// GCC: -fschedule-insns -fsched-pressure (0.99)
// GCC: -frename-registers (1.00)
#include "exports/Atan.h"
#include "frame/loops.h"
#include "lanes/constant.h"
#include "trig/atan_intervals.h"

namespace okt {
namespace {

// ---------------------------------------------------------------------------------------------------------------------
// Real32

// A value that is 0 in the first interval; each limit passed turns the pattern of one interval's value into the next's.
struct Chosen32 {
    Pattern32 first, second, third;
    constexpr Chosen32(Real32 in1, Real32 in2, Real32 in3)
        : first(asBits(in1)), second(asBits(in1) ^ asBits(in2)), third(asBits(in2) ^ asBits(in3)) {}
};

struct Constants32 {
    Pattern32 atanLimit1 = 0x3EE00000;  // 0.4375
    Pattern32 atanLimit2 = 0x3F3851EC;  // 0.72
    Pattern32 atanLimit3 = 0x40128F5C;  // 2.29

    // The centre; behind the last limit, where x is in the denominator, its factor there.
    Chosen32 centre{0.53125F, 1.0F, 1.0F};
    // arctan 0.53125, arctan 1 and pi/2, in heads of few bits and the rest.
    Chosen32 head{0x1.fp-2F, 0.75F, 0x1.9p+0F};
    Chosen32 tail{0x1.03742ep-8F, 0x1.21fb54p-5F, 0x1.0fdaa2p-7F};

    Constant32 one = 1.0F;

    // (arctan t - t)/t^3 over t^2 on |t| <= 7/16, relative error of arctan 2^-28.0; fitted.
    Constant32 Q4 = -0x1.dc9c22p-5F;
    Constant32 Q3 = 0x1.adaf34p-4F;
    Constant32 Q2 = -0x1.236ba4p-3F;
    Constant32 Q1 = 0x1.998db8p-3F;
    Constant32 Q0 = -0x1.555542p-2F;
};
constexpr Constants32 constants32;

template <int N>
inline F32<N> arctangent(const Constants32& k, F32<N> x) {
    const F32<N> a = abs(x);
    const Mask32<N> above1 = greaterSigned(asBits(a), U32<N>(k.atanLimit1));
    const Mask32<N> above2 = greaterSigned(asBits(a), U32<N>(k.atanLimit2));
    const Mask32<N> above3 = greaterSigned(asBits(a), U32<N>(k.atanLimit3));
    const auto chosen = [&](const Chosen32& value) OKT_INLINE {
        return (zeroUnless(above1, asReal(U32<N>(value.first))) ^ zeroUnless(above2, asReal(U32<N>(value.second)))) ^
               zeroUnless(above3, asReal(U32<N>(value.third)));
    };
    const F32<N> c = chosen(k.centre);

    const F32<N> t = (zeroIf(above3, a) - c) / (c * a + zeroIf(above3, F32<N>(k.one)));
    const F32<N> z = t * t;
    const F32<N> p = (((k.Q4 * z + k.Q3) * z + k.Q2) * z + k.Q1) * z + k.Q0;
    return (((p * z * t + chosen(k.tail)) + t) + chosen(k.head)) | signOf(x);
}

void atan32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    const auto block = [&k](const Real32* from, Real32* to) {
        arctangent(k, F32<8>::load(from)).store(to);
        return true;
    };
    const auto element = [&k](Real32 x, OktStatus&) { return arctangent(k, F32x1(x)).raw; };
    redoBlock<8>(src, dst, len, block, element, status);
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

struct Constants64 {
    atan::Limits limits;
    Constant64 one = 1.0;

    // (arctan t - t)/t over w = t^4: D the terms with t^2 as a factor, E those with t^4; on |t| <= 7/16, relative error
    // of arctan 2^-56.6; fitted.
    Constant64 D5 = -0x1.0a0140b247b6ep-6;
    Constant64 D4 = -0x1.9785816ac714dp-5;
    Constant64 D3 = -0x1.10d58403897ap-4;
    Constant64 D2 = -0x1.745cdae90549p-4;
    Constant64 D1 = -0x1.2492491fdfc9cp-3;
    Constant64 D0 = -0x1.5555555555509p-2;
    Constant64 E4 = 0x1.2ad8f0c29b3cbp-5;
    Constant64 E3 = 0x1.ddd7216b6a1b8p-5;
    Constant64 E2 = 0x1.3b0f1459b9fd4p-4;
    Constant64 E1 = 0x1.c71c6fd40e52p-4;
    Constant64 E0 = 0x1.999999998e492p-3;
};
constexpr Constants64 constants64;

template <int N>
inline F64<N> arctangent(const Constants64& k, F64<N> x) {
    const F64<N> a = abs(x);
    const atan::Interval<N> interval = k.limits.intervalOf(a);
    const F64<N> c = interval.centre();

    const F64<N> t = (zeroIf(interval.last, a) - c) / (c * a + zeroIf(interval.last, F64<N>(k.one)));
    const F64<N> z = t * t;
    const F64<N> w = z * z;
    const F64<N> u = (((((k.D5 * w + k.D4) * w + k.D3) * w + k.D2) * w + k.D1) * w + k.D0) * z;
    const F64<N> v = ((((k.E4 * w + k.E3) * w + k.E2) * w + k.E1) * w + k.E0) * w;
    return ((((u + v) * t + interval.tail()) + t) + interval.head()) | signOf(x);
}

void atan64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    const auto tryLanes = [&k]<int N>(std::integral_constant<int, N>, const Real64* from, Real64* to) OKT_INLINE {
        arctangent(k, F64<N>::load(from)).store(to);
        return true;
    };
    const auto element = [&k](Real64 x, OktStatus&) { return arctangent(k, F64x1(x)).raw; };
    packedElementLoop<2, 8>(src, dst, len, tryLanes, element, status);
}

}  // namespace

OKT_EXPORT(Atan, 32f, atan32)
OKT_EXPORT(Atan, 64f, atan64)

}  // namespace okt
