// The angle of the point (x, y), element path: for elements whose exponents the main path must not meet, and their
// neighbours in a block.
#pragma once

#include "oktvm_types.h"

namespace okt::angle {

Real64 ofElement(Real64 y, Real64 x);
Real32 ofElement(Real32 y, Real32 x);

}  // namespace okt::angle
