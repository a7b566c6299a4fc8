// Single elements by the scalar kernels: what the block routines hand over. The caller's frame has
// set the x87 unit to 64 bits. A part of the result that is subnormal in its type raises underflow.
// Apart from the block routines, since extended arithmetic and lanes have names in common.
#pragma once

#include "oktvm_types.h"

namespace okt {

Complex32 expByKernel(Complex32 z);
Complex64 expByKernel(Complex64 z);
Complex32 lnByKernel(Complex32 z);
Complex64 lnByKernel(Complex64 z);
Complex32 sqrtByKernel(Complex32 z);

}  // namespace okt
