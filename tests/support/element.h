// Single elements through an export, by pattern: for tests that read like a table.
#pragma once

#include "support/call.h"

#include <cmath>
#include <limits>

namespace okt::test {

template <class D>
struct ElementResult {
    D value;
    OktStatus status;
};

// The element alone (len = 1).
template <class D, class S>
ElementResult<D> alone(OktStatus (*f)(const S*, D*, std::int32_t), S x) {
    ElementResult<D> result;
    result.status = f(&x, &result.value, 1);
    return result;
}
template <class D, class S>
ElementResult<D> alone(OktStatus (*f)(const S*, const S*, D*, std::int32_t), S x, std::type_identity_t<S> y) {
    ElementResult<D> result;
    result.status = f(&x, &y, &result.value, 1);
    return result;
}

// The element at `position` of an array of `len` whose other elements are `filler`; the status is the call's.
template <class D, class S>
ElementResult<D> among(OktStatus (*f)(const S*, D*, std::int32_t), S x, std::type_identity_t<S> filler,
                       std::int32_t len, std::int32_t position) {
    std::vector<S> src(static_cast<std::size_t>(len), filler);
    std::vector<D> dst(static_cast<std::size_t>(len));
    std::memcpy(&src[static_cast<std::size_t>(position)], &x, sizeof x);
    ElementResult<D> result;
    result.status = f(src.data(), dst.data(), len);
    std::memcpy(&result.value, &dst[static_cast<std::size_t>(position)], sizeof(D));
    return result;
}

// Equality of patterns, printed in hexadecimal.
inline testing::AssertionResult sameBits(Real32 actual, std::uint32_t expected) {
    if (asBits(actual) == expected) return testing::AssertionSuccess();
    char text[64];
    std::snprintf(text, sizeof text, "0x%08X instead of 0x%08X", asBits(actual), expected);
    return testing::AssertionFailure() << text;
}
inline testing::AssertionResult sameBits(Real64 actual, std::uint64_t expected) {
    if (asBits(actual) == expected) return testing::AssertionSuccess();
    char text[64];
    std::snprintf(text, sizeof text, "0x%016llX instead of 0x%016llX", static_cast<unsigned long long>(asBits(actual)),
                  static_cast<unsigned long long>(expected));
    return testing::AssertionFailure() << text;
}

// Whether a result is right to so many units in the last place of the exact value, an ulp of a normal number.
template <class T>
bool withinUlps(T result, long double exact, long double ulps) {
    int exponent;
    std::frexp(exact, &exponent);
    const long double ulp = std::ldexp(1.0L, exponent - std::numeric_limits<T>::digits);
    return std::abs(static_cast<long double>(result) - exact) <= ulps * ulp;
}

}  // namespace okt::test
