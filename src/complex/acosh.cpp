// Inverse hyperbolic cosine of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5011 in the real part at
// (0x1.a232e4efae069p-4, 0x1.28d7cdc0ef696p+0).
#include "exports/Acosh.h"
#include "complex/acosh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {

OKT_EXPORT(Acosh, 32fc, elementLoop<acoshElement>)
OKT_EXPORT(Acosh, 64fc, elementLoop<acoshElement>)

}  // namespace okt::complex
