// Model of the complex square root's block routine.
#pragma once

#include "complex_support.h"
#include "tests/models/approximations.h"

#include <cmath>

namespace okt::model {

namespace complex_sqrt {

using namespace complex;

inline bool passes(Real32 x) { return asSigned(magnitude(x) + 0x00800000U) > 0x01000000; }

// The estimate of 1/sqrt(v), with all its bits.
inline Real64 seed(Real64 v) {
    const std::uint64_t pattern = asBits(v);
    const std::uint64_t significand = (pattern & 0x001FFFFFFFFFFFFF) + (std::uint64_t{0x07E00000} << 32);
    const Real32 reduced = fromBits(static_cast<std::uint32_t>(significand >> 29));
    const Real32 estimate = approximateInverseRoot(reduced);
    const std::uint64_t halfExponent = (pattern >> 1) & 0x3FF0000000000000;
    return fromBits((std::uint64_t{asBits(estimate)} << 29) - (halfExponent - 0x57F0000000000000));
}

inline Complex32 packed(Complex32 z) {
    const Real64 X = static_cast<Real64>(z.re);
    const Real64 Y = static_cast<Real64>(z.im);
    const Real64 m = std::sqrt(X * X + Y * Y);
    const Real64 a = m + std::fabs(X);
    const Real64 h = 0.5 * std::fabs(Y);
    const Real64 v = fromBits(asBits(a) - (std::uint64_t{0x00100000} << 32));
    Real64 y = seed(v);
    const Real64 d = (v * y) * y - 1.0;
    y = y + (y * d) * (real64(0xBFE000050002FB02) + real64(0x3FD80011800E700D) * d);
    const Real32 p = static_cast<Real32>(v * y);
    const Real32 q = static_cast<Real32>(y * h);
    const Real32 re = X < 0.0 ? q : p;
    const Real32 im = X < 0.0 ? p : q;
    return {re, fromBits(asBits(im) | (asBits(z.im) & 0x80000000U))};
}

inline Complex32 element(Complex32 z) {
    return passes(z.re) && passes(z.im) ? packed(z) : throughElement<okt::complex::sqrtElement>(z);
}

}  // namespace complex_sqrt

inline OktStatus Sqrt_32fc(const Complex32* src, Complex32* dst, std::int32_t len) {
    return complex::each(complex_sqrt::element, src, dst, len);
}

}  // namespace okt::model
