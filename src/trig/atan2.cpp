// The angle of the point (x, y), from -pi to pi.
//
// A block goes through the main path of angle32.h or angle64.h, or as a whole through the element path of
// angle_element.cpp if one of its elements has to. The two differ in the last bit of 5 to 9 % of ordinary elements.
//
// Largest errors seen: main path 0.8195 ulp, 0.998 where the result is subnormal (Real32), 0.7461 (Real64); element
// path 0.5156 at y = 0x1.29cb140f45613p-3, x = 0x1.339fe2c7d4af3p+0.
//
// GCC: -fschedule-insns -fsched-pressure (?)
// GCC: -frename-registers (?)
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
