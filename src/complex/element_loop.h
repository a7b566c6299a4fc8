// The loop of the functions whose elements go one at a time through the written steps on Complex64.
//
// A Complex32 element is widened, and the result narrowed by one conversion a part under the caller's MXCSR; a
// part that is subnormal as a Real32 raises the underflow flag, also where the Real64 was a normal number.
// There is no status: what happens shows in the results and in the flags.
#pragma once

#include "complex/element.h"
#include "complex/parts.h"

#include <cstdint>

namespace okt::complex {

inline Complex64 widened(Complex64 z) { return z; }
// Hidden from the compiler, which would take a part that comes back as it is through both
// conversions unchanged; under denormals-are-zero a subnormal one is a zero behind the first.
inline Complex64 widened(Complex32 z) { return {opaque(Real64{z.re}), opaque(Real64{z.im})}; }

// The parts go one by one: a store of each and a load of both at once would wait for the stores to reach the cache.
template <class Z>
inline Complex64 loadWidened(const Z* from) {
    return widened(Z{loadElement(partsOf(from)), loadElement(partsOf(from) + 1)});
}

// A part that is subnormal as a Real32 raises the underflow flag.
inline Complex32 narrowed(Complex64 z) {
    const Complex32 result{static_cast<Real32>(z.re), static_cast<Real32>(z.im)};
    if (isSubnormal(result.re) || isSubnormal(result.im)) [[unlikely]] {
        keepFlags(opaque(smallestNormal<Real32>()) * smallestNormal<Real32>());
    }
    return result;
}

template <class Z>
inline void storeParts(Z* to, Z z) {
    storeElement(partsOf(to), z.re);
    storeElement(partsOf(to) + 1, z.im);
}
inline void storeNarrowed(Complex64* to, Complex64 z) { storeParts(to, z); }
inline void storeNarrowed(Complex32* to, Complex64 z) { storeParts(to, narrowed(z)); }

// Z is Complex32 or Complex64. Element takes one Complex64 for every source, or for the scalar, and gives one.
template <auto Element, class Z>
void elementLoop(const Z* src, Z* dst, std::int32_t len, OktStatus&) {
    for (std::int32_t i = 0; i < len; ++i) storeNarrowed(dst + i, Element(loadWidened(src + i)));
}

template <auto Element, class Z>
void elementLoop(const Z* src1, const Z* src2, Z* dst, std::int32_t len, OktStatus&) {
    for (std::int32_t i = 0; i < len; ++i)
        storeNarrowed(dst + i, Element(loadWidened(src1 + i), loadWidened(src2 + i)));
}

template <auto Element, class Z>
void elementLoop(const Z* src, Z scalar, Z* dst, std::int32_t len, OktStatus&) {
    const Complex64 exponent = widened(scalar);
    for (std::int32_t i = 0; i < len; ++i) storeNarrowed(dst + i, Element(loadWidened(src + i), exponent));
}

}  // namespace okt::complex
