// The powers that need no arithmetic: those with a zero, an infinity or a NaN, and those that do not exist.
#pragma once

#include "frame/status_flag.h"
#include "lanes/pattern.h"

namespace okt::power {
namespace {

enum class ExponentClass { fractional, odd, even };  // infinite exponents and NaNs count as fractional

template <class T>
inline ExponentClass classify(T y) {
    using F = Format<T>;
    const auto magnitude = magnitudeBits(y);
    if (magnitude < F::one || magnitude >= F::infinity) return ExponentClass::fractional;
    const int order = static_cast<int>(magnitude >> F::fractionBits) - F::bias;
    if (order > F::fractionBits) return ExponentClass::even;  // from 2^24 or 2^53 on
    // The units bit goes to the place of the hidden bit, the fraction below it.
    const auto shifted = ((magnitude & F::fraction) | F::hidden) << order;
    if ((shifted & F::fraction) != 0) return ExponentClass::fractional;
    return (shifted & F::hidden) != 0 ? ExponentClass::odd : ExponentClass::even;
}

// x^y where x or y is zero, infinite or NaN, or x is negative and y no integer. Patterns are compared and
// given, so that no flag is raised but the invalid of the domain warning, and a NaN leaves as it came.
template <class T>
T specialPower(T x, T y, OktStatus& status) {
    using F = Format<T>;
    using Word = typename F::Word;
    const Word xMagnitude = magnitudeBits(x), yMagnitude = magnitudeBits(y);
    const bool xNegative = isNegative(x), yNegative = isNegative(y);
    const auto outsideDomain = [&](Word pattern) {
        status = oktStatusDomain;
        raiseStatusFlag(oktStatusDomain);
        return asReal(pattern);
    };

    if (yMagnitude == 0) return asReal(F::one);  // a NaN's, too
    if (xNegative && xMagnitude == F::one && yMagnitude == F::infinity) return asReal(F::one);
    if (!xNegative && xMagnitude == F::one) return asReal(F::one);  // also to the power NaN
    if (xMagnitude > F::infinity) return x;
    if (yMagnitude > F::infinity) return y;
    if (yMagnitude == F::infinity) {
        if (xMagnitude == 0 && yNegative) return outsideDomain(F::infinity);
        return asReal((xMagnitude > F::one) != yNegative ? F::infinity : Word{0});
    }
    const Word sign = xNegative && classify(y) == ExponentClass::odd ? F::sign : Word{0};
    if (xMagnitude == F::infinity) return asReal(sign | (yNegative ? Word{0} : F::infinity));
    if (xMagnitude != 0) return outsideDomain(F::nan);  // negative base, fractional exponent
    return yNegative ? outsideDomain(sign | F::infinity) : asReal(sign);
}

}  // namespace
}  // namespace okt::power
