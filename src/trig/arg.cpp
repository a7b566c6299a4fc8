// The angle of a complex number: the steps of Atan2 on its parts, and its errors.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
// GCC: -frename-registers (1.00)
#include "exports/Arg.h"
#include "lanes/seeds.h"
#include "trig/angle_loop.h"

namespace okt::angle {
namespace {

template <class Complex, class T>
void arg(const Complex* src, T* dst, std::int32_t len, OktStatus&) {
    const T* parts = reinterpret_cast<const T*>(src);
    const auto load = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto [x, y] = loadInterleaved<N>(parts + std::ptrdiff_t{2} * i);
        return Pair<Vec<T, N>>{y, x};
    };
    angles(load, dst, len);
}

}  // namespace

OKT_EXPORT(Arg, 32fc, arg)
OKT_EXPORT(Arg, 64fc, arg)

}  // namespace okt::angle
