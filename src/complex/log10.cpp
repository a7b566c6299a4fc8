// Decimal logarithm of complex elements, one at a time: log10|z| + i*arg(z)*log10 e.
//
// Largest error seen: 0.5244 ulp in the real part at (0x1.03cca3ea386fdp+0, -0x1.47d4a81725c7cp-4), beside the branch
// for |z|^2 near 1, where the square's rounding to 64 bits tells.
#include "exports/Log10.h"
#include "complex/element_loop.h"
#include "complex/log10_element.h"

namespace okt::complex {

OKT_EXPORT(Log10, 32fc, elementLoop<log10Element>)
OKT_EXPORT(Log10, 64fc, elementLoop<log10Element>)

}  // namespace okt::complex
