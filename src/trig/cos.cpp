// Cosine: the sine's polynomial about odd multiples of pi/2 on Real32, the table method on Real64.
//
// Largest errors seen:
//   Real32  0.8011 ulp at 0x1.98107cp+1; element path 0.5000 ulp
//   Real64  0.5123 ulp at -0x1.1faef02918cdp+0 for |x| < 10, 0.5144 ulp at 0x1.195688af4bbdap+16 below 90112; element
//           path 0.5263 ulp between 90112 and 2^17
//
// GCC: -fno-tree-ter (0.99)
#include "exports/Cos.h"
#include "lanes/pattern.h"
#include "trig/sine_loops.h"

namespace okt {
namespace {

[[gnu::noinline]] Real64 cosElement64(Real64 x, OktStatus& status) {
    if (!isFinite(x)) return sine::ofNonFinite(x, status);
    if (sine::isTiny(x)) return sine::cosineOfTiny(x);
    return sine::elementAngle(x).cosine().raw;
}

[[gnu::noinline]] Real32 cosElement32(Real32 x, OktStatus& status) {
    if (isInfinite(x)) return sine::ofInfinity32(status);
    const Real64 wide = x;
    if (!isFinite(wide)) return static_cast<Real32>(wide * wide);
    if (sine::isTiny(wide)) return static_cast<Real32>(sine::cosineOfTiny(wide));
    return static_cast<Real32>(sine::elementAngle(wide).cosine().raw);
}

struct Cosine {
    static constexpr const Real64* table = tables::cosTable;
    static Real64 element(Real64 x, OktStatus& status) { return cosElement64(x, status); }
    static Real32 element(Real32 x, OktStatus& status) { return cosElement32(x, status); }
    template <int N>
    static F64<N> ofAngle(const sine::ElementAngle<N>& angle) {
        return angle.cosine();
    }

    // cos x = (-1)^n·sin(x - (n - 1/2)·pi) with n = round((x + pi/2)/pi)
    template <int N>
    static U32<N> halfTurns(F32<N> x) {
        constexpr Real32 halfPi32 = 0x1.921fb6p+0F;
        return roundToSigned((x + halfPi32) * sine::oneOverPi32);
    }
    template <class V>
    static V centre(V n) {
        return n - 0.5;
    }
};

}  // namespace

OKT_EXPORT(Cos, 32f, sine::loop32<Cosine>)
OKT_EXPORT(Cos, 64f, sine::loop64<Cosine>)

}  // namespace okt
