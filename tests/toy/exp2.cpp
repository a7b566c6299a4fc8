// 2 to the power x = 2^n 2^r, n = round(x), r = x - n without an error, and 2^r by the series of e^(r ln 2) in Real64:
// the terms left out are below 2^-57. Real32 is rounded once from Real64. Largest errors seen: LARGEST
#include "exports/Exp2.h"
#include "lanes/opaque.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

constexpr Real64 shift = 0x1.8p52;  // the sum's low bits hold n

// (ln 2)^k / k!
constexpr Real64 series[] = {1.0,
                             0x1.62e42fefa39efp-1,
                             0x1.ebfbdff82c58fp-3,
                             0x1.c6b08d704a0c0p-5,
                             0x1.3b2ab6fba4e77p-7,
                             0x1.5d87fe78a6731p-10,
                             0x1.430912f86c787p-13,
                             0x1.ffcbfc588b0c7p-17,
                             0x1.62c0223a5c824p-20,
                             0x1.b5253d395e7c4p-24,
                             0x1.e4cf5158b8ecap-28,
                             0x1.e8cac7351bb25p-32,
                             0x1.c3bd650fc2986p-36,
                             0x1.816193166d0f9p-40};

Real64 exp2Main(Real64 x) {
    const Real64 t = x + shift;
    const Real64 r = x - (t - shift);
    const auto n = static_cast<std::int32_t>(lowWord(t));
    Real64 p = series[13];
    for (int k = 12; k >= 0; --k) p = p * r + series[k];
    return (p * powerOfTwo<Real64>(n / 2)) * powerOfTwo<Real64>(n - n / 2);  // only the last product may round
}

template <class T>
T exp2Element(T x, OktStatus& status) {
    constexpr T overflow = Format<T>::bias + 1, normal = 1 - Format<T>::bias,
                zero = normal - 2 - Format<T>::fractionBits;
    if (isNaN(x)) return x + x;
    if (isInfinite(x)) return isNegative(x) ? T{0} : x;
    if (x >= overflow) {
        status = oktStatusOverflow;
        return opaque(largestFinite<T>()) * 2;
    }
    if (x < normal) status = oktStatusUnderflow;
    if (x < zero) return opaque(smallestNormal<T>()) * smallestNormal<T>();
    return static_cast<T>(exp2Main(x));
}

template <class T>
void exp2Array(const T* src, T* dst, std::int32_t len, OktStatus& status) {
    for (std::int32_t i = 0; i < len; ++i) storeElement(dst + i, exp2Element(loadElement(src + i), status));
}

}  // namespace

OKT_EXPORT(Exp2, 32f, exp2Array)
OKT_EXPORT(Exp2, 64f, exp2Array)

}  // namespace okt
