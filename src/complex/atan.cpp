// Arctangent of complex elements: a quarter turn of the inverse hyperbolic tangent, one element at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5419 in the imaginary part at
// (-0x1.a3383136d3f1fp-7, -0x1.eb868e3383457p-8); see atanh.cpp.
#include "exports/Atan.h"
#include "complex/atanh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {
namespace {

// atan z = -i*atanh(i*z).
Complex64 atanElement(Complex64 z) { return turnedBack(atanhElement(turned(z))); }

}  // namespace

OKT_EXPORT(Atan, 32fc, elementLoop<atanElement>)
OKT_EXPORT(Atan, 64fc, elementLoop<atanElement>)

}  // namespace okt::complex
