// Inverse hyperbolic tangent of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5419 in the real part at
// (0x1.eb868e3383457p-8, -0x1.a3383136d3f1fp-7), where the logarithm is of a quotient just above 1.03.
#include "exports/Atanh.h"
#include "complex/atanh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {

OKT_EXPORT(Atanh, 32fc, elementLoop<atanhElement>)
OKT_EXPORT(Atanh, 64fc, elementLoop<atanhElement>)

}  // namespace okt::complex
