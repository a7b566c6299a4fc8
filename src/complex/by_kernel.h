// Single elements by the scalar kernels: what the block routines of the logarithm and the square root hand over. The
// caller's frame has set the x87 unit to 64 bits. A part of the result that is subnormal in its type raises underflow.
#pragma once

#include "oktvm.h"

namespace okt {

Complex32 lnByKernel(Complex32 z);
Complex64 lnByKernel(Complex64 z);
Complex32 sqrtByKernel(Complex32 z);

}  // namespace okt
