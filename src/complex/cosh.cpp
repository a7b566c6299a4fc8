// Hyperbolic cosine of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5007 in the imaginary part at
// (0x1.f76d14530a713p-1, 0x1.921e2070eca18p+1).
#include "exports/Cosh.h"
#include "complex/cosh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {

OKT_EXPORT(Cosh, 32fc, elementLoop<coshElement>)
OKT_EXPORT(Cosh, 64fc, elementLoop<coshElement>)

}  // namespace okt::complex
