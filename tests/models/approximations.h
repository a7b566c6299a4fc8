// The start values of divisions and roots, which no routine defines: what the build has chosen, at one lane.
#pragma once

#include "lanes/seeds.h"

namespace okt::model {

inline Real32 approximateInverse(Real32 x) { return recipSeed(F32x1(x)).raw; }
inline Real32 approximateInverseRoot(Real32 x) { return rsqrtSeed(F32x1(x)).raw; }

}  // namespace okt::model
