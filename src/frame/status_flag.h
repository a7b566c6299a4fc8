// The IEEE flag of a warning, made by a real arithmetic operation under the caller's MXCSR.
#pragma once

#include "oktvm_types.h"

namespace okt {

// Overflow, underflow, divide-by-zero or invalid for the four warning codes; any other code does nothing.
void raiseStatusFlag(OktStatus code);

}  // namespace okt
