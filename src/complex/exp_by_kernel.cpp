// Exponentials of single elements, those that the block routines are not made for.
#include "complex/by_kernel.h"
#include "complex/exp_kernel.h"
#include "complex/kernel_loop.h"

namespace okt {

Complex32 expByKernel(Complex32 z) { return narrowed(complexExpKernel(widened(z))); }
Complex64 expByKernel(Complex64 z) { return complexExpKernel(z); }

}  // namespace okt
