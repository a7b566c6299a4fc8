// The powers that need no arithmetic: those with a zero, an infinity or a NaN, and those that do not exist.
#pragma once

#include "frame/status_flag.h"
#include "lanes/lanes.h"

namespace okt {

// Layout of a type's patterns.
template <class T>
struct Pattern {
    using Word = Unsigned<T>;
    static constexpr int fractionBits = sizeof(T) == 8 ? 52 : 23;
    static constexpr int bias = sizeof(T) == 8 ? 1023 : 127;
    static constexpr Word sign = Word{1} << (8 * sizeof(T) - 1);
    static constexpr Word one = Word{bias} << fractionBits;
    static constexpr Word infinity = Word{2 * bias + 1} << fractionBits;
    static constexpr Word nan = sign | infinity | Word{1} << (fractionBits - 1);  // what an invalid operation gives
    static constexpr Word hidden = Word{1} << fractionBits;  // the significand's bit that is not stored
    static constexpr Word fraction = hidden - 1;
};

template <class T>
inline bool isNegative(T x) {
    return (asBits(x) & Pattern<T>::sign) != 0;
}
template <class T>
inline Unsigned<T> magnitudeBits(T x) {
    return asBits(x) & ~Pattern<T>::sign;
}
template <class T>
inline bool isFiniteNonzero(T x) {
    return magnitudeBits(x) - 1 < Pattern<T>::infinity - 1;
}

enum class ExponentClass { fractional, odd, even };  // infinite exponents and NaNs count as fractional

template <class T>
inline ExponentClass classify(T y) {
    using P = Pattern<T>;
    const auto magnitude = magnitudeBits(y);
    if (magnitude < P::one || magnitude >= P::infinity) return ExponentClass::fractional;
    const int order = static_cast<int>(magnitude >> P::fractionBits) - P::bias;
    if (order > P::fractionBits) return ExponentClass::even;  // from 2^24 or 2^53 on
    // The units bit goes to the place of the hidden bit, the fraction below it.
    const auto shifted = ((magnitude & P::fraction) | P::hidden) << order;
    if ((shifted & P::fraction) != 0) return ExponentClass::fractional;
    return (shifted & P::hidden) != 0 ? ExponentClass::odd : ExponentClass::even;
}

// x^y where x or y is zero, infinite or NaN, or x is negative and y no integer. Patterns are compared and
// given, so that no flag is raised but the invalid of the domain warning, and a NaN leaves as it came.
template <class T>
T specialPower(T x, T y, OktStatus& status) {
    using P = Pattern<T>;
    using Word = typename P::Word;
    const Word xMagnitude = magnitudeBits(x), yMagnitude = magnitudeBits(y);
    const bool xNegative = isNegative(x), yNegative = isNegative(y);
    const auto real = [](Word pattern) { return std::bit_cast<T>(pattern); };
    const auto outsideDomain = [&](Word pattern) {
        status = oktStatusDomain;
        raiseStatusFlag(oktStatusDomain);
        return real(pattern);
    };

    if (yMagnitude == 0) return real(P::one);  // a NaN's, too
    if (xNegative && xMagnitude == P::one && yMagnitude == P::infinity) return real(P::one);
    if (!xNegative && xMagnitude == P::one) return real(P::one);  // also to the power NaN
    if (xMagnitude > P::infinity) return x;
    if (yMagnitude > P::infinity) return y;
    if (yMagnitude == P::infinity) {
        if (xMagnitude == 0 && yNegative) return outsideDomain(P::infinity);
        return real((xMagnitude > P::one) != yNegative ? P::infinity : Word{0});
    }
    const Word sign = xNegative && classify(y) == ExponentClass::odd ? P::sign : Word{0};
    if (xMagnitude == P::infinity) return real(sign | (yNegative ? Word{0} : P::infinity));
    if (xMagnitude != 0) return outsideDomain(P::nan);  // negative base, fractional exponent
    return yNegative ? outsideDomain(sign | P::infinity) : real(sign);
}

}  // namespace okt
