#include "ulp.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace okt::accuracy {

long ulpExponent(const Real& exact, ElementType part) {
    const bool single = part == ElementType::Real32;
    const long smallest = single ? -149 : -1074;
    const long fractionBits = single ? 23 : 52;
    return exact.isZero() ? smallest : std::max(smallest, exact.exponent() - fractionBits);
}

double ulpError(double computed, const Real& exact, ElementType part, double floor) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    if (!exact.isFinite()) return std::isfinite(computed) ? infinite : 0;
    if (!std::isfinite(computed)) return computed == roundedToNearest(exact, part) ? 0 : infinite;
    long ulp = ulpExponent(exact, part);
    if (floor > 0) ulp = std::max(ulp, ulpExponent(Real(floor), part));
    return std::abs(scaled(computed - exact, -ulp).toDouble());
}

double roundedToNearest(const Real& exact, ElementType part) {
    return part == ElementType::Real32 ? mpfr_get_flt(exact.get(), MPFR_RNDN) : mpfr_get_d(exact.get(), MPFR_RNDN);
}

double modulusFloor(const Real& re, const Real& im) { return mpfr_get_d(hypot(re, im).get(), MPFR_RNDZ); }

}  // namespace okt::accuracy
