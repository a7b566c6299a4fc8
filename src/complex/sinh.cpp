// Hyperbolic sine of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5006 in the imaginary part at
// (-0x1.b0543830a14a8p+1, -0x1.7a7a63cbdbd63p+577).
#include "exports/Sinh.h"
#include "complex/element_loop.h"
#include "complex/sinh_element.h"

namespace okt::complex {

OKT_EXPORT(Sinh, 32fc, elementLoop<sinhElement>)
OKT_EXPORT(Sinh, 64fc, elementLoop<sinhElement>)

}  // namespace okt::complex
