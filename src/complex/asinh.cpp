// Inverse hyperbolic sine of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5008 in the real part at
// (0x1.69cd572f3bc4ep-43, 0x1.ffffffff2687ep-1).
#include "exports/Asinh.h"
#include "complex/asinh_element.h"
#include "complex/element_loop.h"

namespace okt::complex {

OKT_EXPORT(Asinh, 32fc, elementLoop<asinhElement>)
OKT_EXPORT(Asinh, 64fc, elementLoop<asinhElement>)

}  // namespace okt::complex
