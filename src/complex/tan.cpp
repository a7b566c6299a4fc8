// Tangent of complex elements: a quarter turn of the hyperbolic tangent, one element at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5014 in the real part at
// (0x1.921fb5493e2e1p+0, -0x1.1ce696fc0f844p-28), next to a pole.
#include "exports/Tan.h"
#include "complex/element_loop.h"
#include "complex/tanh_element.h"

namespace okt::complex {
namespace {

// tan z = -i*tanh(i*z).
Complex64 tanElement(Complex64 z) { return turnedBack(tanhElement(turned(z))); }

}  // namespace

OKT_EXPORT(Tan, 32fc, elementLoop<tanElement>)
OKT_EXPORT(Tan, 64fc, elementLoop<tanElement>)

}  // namespace okt::complex
