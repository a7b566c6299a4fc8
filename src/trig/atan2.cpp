// The angle of the point (x, y), from -pi to pi.
//
// A block goes through the main path of angle32.h or angle64.h, or as a whole through the element path of
// angle_element.cpp if one of its elements has to. The two differ in the last bit of 5 to 9 % of ordinary elements.
//
// Main path, in ulp: Real32 below 0.89 (the last sums 0.63, the rounded denominator 0.21, the polynomial 0.05), 1.0
// where the result is subnormal; Real64 below 0.87. Approximate reciprocals have no part in this: from any within its
// error of 1.5·2^-12 the quotient is good to 2^-51 (Real32) and 2^-62 (Real64). Largest errors seen: main path 0.8708
// at y = 0x1.3880e8p+1, x = 0x1.91e86cp+0, 0.998 where the result is subnormal (Real32), 0.7817 at y =
// 0x1.27361635ec843p-1, x = 0x1.547bbc509c24dp+0 (Real64); element path 0.5156 at y = 0x1.29cb140f45613p-3, x =
// 0x1.339fe2c7d4af3p+0.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
// GCC: -frename-registers (1.00)
#include "exports/Atan2.h"
#include "lanes/seeds.h"
#include "trig/angle_loop.h"

namespace okt::angle {
namespace {

template <class T>
void atan2(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus&) {
    const auto load = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        return Pair<Vec<T, N>>{Vec<T, N>::load(src1 + i), Vec<T, N>::load(src2 + i)};
    };
    angles(load, dst, len);
}

}  // namespace

OKT_EXPORT(Atan2, 32f, atan2)
OKT_EXPORT(Atan2, 64f, atan2)

}  // namespace okt::angle
