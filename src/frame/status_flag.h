// The IEEE flag of a warning, made by a real arithmetic operation under the caller's MXCSR.
#pragma once

#include "oktvm_types.h"

namespace okt {

// Overflow, underflow, divide-by-zero or invalid for the four warning codes; any other code does nothing. A routine on
// Real32 calls the first, one on Real64 the second.
void raiseStatusFlag32(OktStatus code);
void raiseStatusFlag64(OktStatus code);

}  // namespace okt
