// One element of the complex exponential by the scalar kernel: what the block kernels hand over.
#pragma once

#include "oktvm.h"

namespace okt {

// In a frame that sets the x87 unit to 64 bits. Subnormal parts of a result raise underflow.
Complex64 complexExpElement(Complex64 z);
Complex32 complexExpElement(Complex32 z);

}  // namespace okt
