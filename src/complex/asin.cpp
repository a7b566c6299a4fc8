// Arcsine of complex elements: a quarter turn of the inverse hyperbolic sine, one element at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5007 in the imaginary part at
// (-0x1.f5cb3e5d9bc32p-38, 0x1.7de07f6e0000ap+1).
#include "exports/Asin.h"
#include "complex/asinh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {
namespace {

// asin z = -i*asinh(i*z).
Complex64 asinElement(Complex64 z) { return turnedBack(asinhElement(turned(z))); }

}  // namespace

OKT_EXPORT(Asin, 32fc, elementLoop<asinElement>)
OKT_EXPORT(Asin, 64fc, elementLoop<asinElement>)

}  // namespace okt::complex
