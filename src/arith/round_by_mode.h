// Rint and NearbyInt: rounding to integers by the mode in force, by adding and taking away a large number.
//
// Flags: inexact is set on every call; a signalling NaN sets invalid on Real64.
#pragma once

#include "arith/integral_parts.h"
#include "frame/vector_loop.h"

namespace okt {
namespace {

// By the rounding mode in force: x + shift has no bits behind the binary point.
template <class V>
V roundByMode(V x) {
    using T = typename V::Element;
    using U = typename Parts<V>::U;
    const U bits = asBits(x);
    const U sign = bits & U(Format<T>::sign);
    const U magnitude = bits ^ sign;
    const auto big = ~isBelow(magnitude, firstInteger<T>);
    const auto tiny = isBelow(magnitude, smallestNormal<T>());
    U worked = zeroUnless(~big, magnitude);
    // A subnormal is worked as a normal number, so that denormals-are-zero does not act and no denormal flag is raised.
    if (any(tiny)) [[unlikely]]
        worked = select(tiny & isPositive(magnitude), U(Format<T>::hidden), worked);
    const V shift = asReal(sign | U(asBits(firstInteger<T>)));
    const V t = (asReal(worked | sign) + shift) - shift;
    const U pass = [&] {
        if constexpr (sizeof(T) == 8)
            return asBits(mulOrdered(asReal(zeroUnless(big, bits)), V(1.0)));
        else
            return zeroUnless(big, bits);
    }();
    // The sign of a zero is the element's in every mode. A big lane's t is a zero.
    return asReal((asBits(t) & U(~Format<T>::sign)) | sign | pass);
}

template <class T>
inline void roundArrayByMode(const T* src, T* dst, std::int32_t len, OktStatus&) {
    // Every call sets inexact, whatever its elements are; that of the elements' own additions is then no news.
    keepFlags(opaque(Real64{1.25}) + 0x1p52);
    vectorLoop([](auto x) { return roundByMode(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace
}  // namespace okt
