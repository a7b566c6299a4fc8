// Sine: sin x = (-1)^n·sin(x - n·pi) by one polynomial on Real32, the table method on Real64.
//
// Largest errors seen:
//   Real32  0.8011 ulp at 0x1.5e5d46p+3; element path 0.5000 ulp
//   Real64  0.5095 ulp at -0x1.cad4ad98cfab4p+1 for |x| < 10, 0.5160 ulp at -0x1.4b9f4dfe30c2ap+16 below 90112; element
//           path 0.5300 ulp between 90112 and 2^17
//
// GCC: -fno-tree-ter (1.00)
#include "exports/Sin.h"
#include "lanes/pattern.h"
#include "trig/sine_loops.h"

namespace okt {
namespace {

[[gnu::noinline]] Real64 sinElement64(Real64 x, OktStatus& status) {
    if (!isFinite(x)) return sine::ofNonFinite(x, status);
    if (sine::isTiny(x)) return sine::sineOfTiny(x);
    return sine::elementAngle(x).sine().raw;
}

[[gnu::noinline]] Real32 sinElement32(Real32 x, OktStatus& status) {
    if (isInfinite(x)) return sine::ofInfinity32(status);
    const Real64 wide = x;
    if (!isFinite(wide)) return static_cast<Real32>(wide * wide);
    if (sine::isTiny(wide)) return x;  // a zero: no other Real32 is as small
    return static_cast<Real32>(sine::elementAngle(wide).sine().raw);
}

struct Sine {
    static constexpr const Real64* table = tables::sinCosTable;
    static Real64 element(Real64 x, OktStatus& status) { return sinElement64(x, status); }
    static Real32 element(Real32 x, OktStatus& status) { return sinElement32(x, status); }
    template <int N>
    static F64<N> ofAngle(const sine::ElementAngle<N>& angle) {
        return angle.sine();
    }
    template <int N>
    static U32<N> halfTurns(F32<N> x) {
        return roundToSigned(x * sine::oneOverPi32);
    }
    template <class V>
    static V centre(V n) {
        return n;
    }
};

}  // namespace

OKT_EXPORT(Sin, 32f, sine::loop32<Sine>)
OKT_EXPORT(Sin, 64f, sine::loop64<Sine>)

}  // namespace okt
