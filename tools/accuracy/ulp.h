// Errors in units in the last place of the result's type.
#pragma once

#include "real.h"
#include "registry.h"

namespace okt::accuracy {

// The ulp of a number is the distance of neighbouring values in its binade, 2^-149 or 2^-1074 below the normal range.
// As an exponent of two: the ulp is 2^ulpExponent.
long ulpExponent(const Real& exact, ElementType part);

// |computed - exact| in ulp of the exact value. With a floor, ulps are not taken smaller than the floor's: a floor of
// 1 makes the error of results below 1 an absolute one. A NaN or an infinity where the exact value rounds to a
// finite number has an infinite error.
double ulpError(double computed, const Real& exact, ElementType part, double floor = 0);

// The type's value nearest to the exact one, ties to even; an infinity beyond the largest finite value.
double roundedToNearest(const Real& exact, ElementType part);

// The floor that measures both parts of a complex result by the ulp of its modulus: for functions whose smaller part
// is not computed to its own last place.
double modulusFloor(const Real& re, const Real& im);

}  // namespace okt::accuracy
