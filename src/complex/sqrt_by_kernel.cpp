// Square roots that are one call of the scalar kernel an element: Complex64,
// and the elements of Complex32 that its packed steps are not made for.
//
// Largest error seen: 0.5006 ulp.
#include "complex/by_kernel.h"
#include "complex/element_loop.h"
#include "complex/sqrt_element.h"
#include "exports/Sqrt.h"

namespace okt {

Complex32 sqrtByKernel(Complex32 z) { return narrowed(complexSqrtKernel(widened(z))); }

OKT_EXPORT(Sqrt, 64fc, kernelLoop<complexSqrtKernel>)

}  // namespace okt
