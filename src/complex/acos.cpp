// Arccosine of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5008 in the imaginary part at
// (0x1.0fc4ce9bc16ffp-3, -0x1.d9e9b3029e306p-14).
#include "exports/Acos.h"
#include "complex/acos_element.h"
#include "complex/element_loop.h"

namespace okt::complex {

OKT_EXPORT(Acos, 32fc, elementLoop<acosElement>)
OKT_EXPORT(Acos, 64fc, elementLoop<acosElement>)

}  // namespace okt::complex
