// Apart from the block kernels: extended arithmetic and lanes have names in common.
#include "complex/exp_element.h"

#include "complex/exp_kernel.h"

namespace okt {

namespace {

bool isSubnormal(Real32 x) { return (asBits(x) & 0x7FFFFFFF) - 1 < 0x007FFFFF; }

}  // namespace

Complex64 complexExpElement(Complex64 z) { return complexExpKernel(z); }

Complex32 complexExpElement(Complex32 z) {
    const Complex64 result = complexExpKernel({static_cast<Real64>(z.re), static_cast<Real64>(z.im)});
    const Complex32 narrowed{static_cast<Real32>(result.re), static_cast<Real32>(result.im)};
    if (isSubnormal(narrowed.re) || isSubnormal(narrowed.im)) {
        constexpr Real32 smallestNormal = bits32(0x00800000);
        keepFlags(opaque(smallestNormal) * smallestNormal);
    }
    return narrowed;
}

}  // namespace okt
