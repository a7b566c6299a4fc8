// Single elements by the written steps, as packed routines hand them over.
//
// The steps are compiled in a file of their own: what GCC is told about the order of packed operations slows those of
// the x87 unit, and of an inline function that two files compile with different options the linker takes either.
#pragma once

#include "oktvm_types.h"

namespace okt::complex {

Complex32 singleExp(Complex32 z);
Complex64 singleExp(Complex64 z);
Complex32 singleLn(Complex32 z);
Complex64 singleLn(Complex64 z);
Complex32 singleSqrt(Complex32 z);

}  // namespace okt::complex
