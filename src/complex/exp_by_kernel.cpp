// Exponentials of single elements, those that the block routines are not made for.
#include "complex/by_kernel.h"
#include "complex/element_loop.h"
#include "complex/exp_element.h"

namespace okt {

Complex32 expByKernel(Complex32 z) { return narrowed(complexExpKernel(widened(z))); }
Complex64 expByKernel(Complex64 z) { return complexExpKernel(z); }

}  // namespace okt
