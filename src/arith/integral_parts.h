// What the rounding functions and Modf share: classes of elements by magnitude, and the bits of a number's pattern that
// lie above its binary point. All of it is integer work but for one exact addition, so that no flag is raised.
#pragma once

#include "lanes/lanes.h"
#include "lanes/ordered.h"
#include "lanes/pattern.h"

namespace okt {

// From here on every number is an integer: 2 to the number of fraction bits.
template <class T>
inline constexpr T firstInteger = sizeof(T) == 8 ? T(0x1p52) : T(0x1p23);

template <int N>
inline Mask32<N> isBelow(U32<N> magnitude, Real32 limit) {
    return greaterSigned(U32<N>(asBits(limit)), magnitude);
}
template <int N>
inline Mask64<N> isBelow(U64<N> magnitude, Real64 limit) {  // for limits with nothing in their low word
    return greaterSignedHigh(U64<N>(asBits(limit)), magnitude);
}

// Greater than zero as a signed integer.
template <int N>
inline Mask32<N> isPositive(U32<N> a) {
    return greaterSigned(a, U32<N>(0));
}
template <int N>
inline Mask64<N> isPositive(U64<N> a) {
    return greaterSignedHigh(U64<N>(0), (U64<N>(0) - a) & ~a);
}

template <class V>
struct Parts {
    using T = typename V::Element;
    using U = Vec<Unsigned<T>, V::lanes>;
    using M = Mask<8 * sizeof(T), V::lanes>;

    U bits, sign, magnitude;
    M belowOne;  // |x| < 1
    M big;       // |x| >= firstInteger, infinity or NaN
    U low;       // the lowest bit of the pattern that stays, between the two; 0 elsewhere

    explicit Parts(V x) : bits(asBits(x)), sign(bits & U(Format<T>::sign)), magnitude(bits ^ sign) {
        constexpr T base = firstInteger<T>;
        belowOne = isBelow(magnitude, T{1});
        big = ~isBelow(magnitude, base);
        // For the exponent k and n fraction bits it stands at n - k. 2^(n - k) added to 2^n, which is exact, sets
        // it in the sum's pattern (for k = 0 the sum is the next power of two, whose pattern is larger by bit n).
        const U power = U(asBits(base) + Format<T>::one) - (magnitude & U(Format<T>::infinity));
        low = asBits(asReal(zeroUnless(~(belowOne | big), power)) + V(base)) - U(asBits(base));
    }

    // The part towards zero, 0 where |x| is not between 1 and firstInteger.
    U truncated() const { return bits & (U(0) - low); }
};

// Below 1 the result is a one or a zero of the element's sign.
template <class V>
auto oneWhere(typename Parts<V>::M m) {
    return zeroUnless(m, typename Parts<V>::U(asBits(typename V::Element{1})));
}

// The big elements' results, 0 elsewhere: on Real32 the pattern untouched, on Real64 times 1.0, which quiets a NaN.
template <int N>
inline U32<N> unchanged(const Parts<F32<N>>& x) {
    return zeroUnless(x.big, x.bits);
}
template <int N>
inline U64<N> unchanged(const Parts<F64<N>>& x) {
    return asBits(mulOrdered(asReal(zeroUnless(x.big, x.bits)), F64<N>(1.0)));
}

}  // namespace okt
