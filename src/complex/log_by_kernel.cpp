// Logarithms that are one call of a scalar kernel an element: the decimal one, log10|z| + i·arg(z)·log10 e, and of the
// natural one the elements that its block routines are not made for.
//
// Largest error seen of the decimal logarithm: 0.5244 ulp in the real part at (0x1.03cca3ea386fdp+0,
// -0x1.47d4a81725c7cp-4), beside the branch for |z|^2 near 1, where the square's rounding to 64 bits tells.
#include "complex/by_kernel.h"
#include "complex/element_loop.h"
#include "complex/ln_element.h"
#include "exports/Log10.h"

namespace okt {

Complex32 lnByKernel(Complex32 z) { return narrowed(complexLogKernel(widened(z))); }
Complex64 lnByKernel(Complex64 z) { return complexLogKernel(z); }

OKT_EXPORT(Log10, 32fc, kernelLoop<complexLog10Kernel>)
OKT_EXPORT(Log10, 64fc, kernelLoop<complexLog10Kernel>)

}  // namespace okt
