// General power of complex elements, one at a time: e^(b*ln a), with the logarithm rounded to Real64 between.
//
// Largest errors seen, in ulp of the modulus, for parts up to 3: Complex32 0.5000, Complex64 17.3: a product up to 15
// in magnitude carries its rounding errors into the exponential.
#include "exports/Pow.h"
#include "complex/element_loop.h"
#include "complex/pow_element.h"

namespace okt::complex {

OKT_EXPORT(Pow, 32fc, elementLoop<powElement>)
OKT_EXPORT(Pow, 64fc, elementLoop<powElement>)

}  // namespace okt::complex
