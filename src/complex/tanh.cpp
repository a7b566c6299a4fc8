// Hyperbolic tangent of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5011 in the imaginary part at
// (-0x1.232e40cdd7c6fp+2, -0x1.10692d0bc1384p+0).
#include "exports/Tanh.h"
#include "complex/element_loop.h"
#include "complex/tanh_element.h"

namespace okt::complex {

OKT_EXPORT(Tanh, 32fc, elementLoop<tanhElement>)
OKT_EXPORT(Tanh, 64fc, elementLoop<tanhElement>)

}  // namespace okt::complex
