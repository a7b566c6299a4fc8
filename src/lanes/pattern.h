// Classes, signs and exponents of single elements, by their patterns: no flag is raised, and a signalling NaN is one
// class with the quiet ones.
#pragma once

#include "lanes/bits.h"

#include <concepts>

namespace okt {

template <class T>
concept Real = std::same_as<T, Real32> || std::same_as<T, Real64>;

// The layout of a type's patterns.
template <Real T>
struct Format {
    using Word = Unsigned<T>;
    static constexpr int fractionBits = sizeof(T) == 8 ? 52 : 23;
    static constexpr int bias = sizeof(T) == 8 ? 1023 : 127;
    static constexpr Word sign = Word{1} << (8 * sizeof(T) - 1);
    static constexpr Word hidden = Word{1} << fractionBits;  // the significand's bit that is not stored; 2^(1 - bias)
    static constexpr Word fraction = hidden - 1;
    static constexpr Word one = Word{bias} << fractionBits;
    static constexpr Word infinity = Word{2 * bias + 1} << fractionBits;  // also the exponent's field
    static constexpr Word quiet = Word{1} << (fractionBits - 1);          // set in a quiet NaN
    static constexpr Word nan = sign | infinity | quiet;                  // what an invalid operation gives
};

template <Real T>
constexpr T infinity() {
    return asReal(Format<T>::infinity);
}
template <Real T>
constexpr T largestFinite() {
    return asReal(Format<T>::infinity - 1);
}
template <Real T>
constexpr T smallestNormal() {
    return asReal(Format<T>::hidden);
}

// The pattern without its sign: in the order of magnitudes, from zero over the infinity to the NaNs.
template <Real T>
constexpr Unsigned<T> magnitudeBits(T x) {
    return asBits(x) & ~Format<T>::sign;
}
// The sign bit alone.
template <Real T>
constexpr Unsigned<T> signBit(T x) {
    return asBits(x) & Format<T>::sign;
}

// Of a zero and a NaN, too, it is the sign bit that says so.
template <Real T>
constexpr bool isNegative(T x) {
    return signBit(x) != 0;
}
template <Real T>
constexpr bool isZero(T x) {
    return magnitudeBits(x) == 0;
}
template <Real T>
constexpr bool isSubnormal(T x) {
    return magnitudeBits(x) - 1 < Format<T>::fraction;
}
template <Real T>
constexpr bool isFiniteNonzero(T x) {
    return magnitudeBits(x) - 1 < Format<T>::infinity - 1;
}
template <Real T>
constexpr bool isFinite(T x) {
    return magnitudeBits(x) < Format<T>::infinity;
}
template <Real T>
constexpr bool isInfinite(T x) {
    return magnitudeBits(x) == Format<T>::infinity;
}
template <Real T>
constexpr bool isNaN(T x) {
    return magnitudeBits(x) > Format<T>::infinity;
}

// x without its sign, with the sign of y, and with its own sign turned.
template <Real T>
constexpr T magnitude(T x) {
    return asReal(magnitudeBits(x));
}
template <Real T>
constexpr T withSign(T x, std::type_identity_t<T> y) {
    return asReal(magnitudeBits(x) | signBit(y));
}
template <Real T>
constexpr T negated(T x) {
    return asReal(asBits(x) ^ Format<T>::sign);
}

// The exponent's field: 0 of zeros and subnormals, all ones of infinities and NaNs.
template <Real T>
constexpr int biasedExponent(T x) {
    return static_cast<int>(magnitudeBits(x) >> Format<T>::fractionBits);
}
// 2^k, a normal number.
template <Real T>
constexpr T powerOfTwo(int k) {
    return asReal(static_cast<Unsigned<T>>(k + Format<T>::bias) << Format<T>::fractionBits);
}

}  // namespace okt
