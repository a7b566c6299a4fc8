// General power of complex elements with one exponent for all, one at a time: the steps of Pow, and its errors.
#include "exports/Powx.h"
#include "complex/element_loop.h"
#include "complex/pow_element.h"

namespace okt::complex {

OKT_EXPORT(Powx, 32fc, elementLoop<powElement>)
OKT_EXPORT(Powx, 64fc, elementLoop<powElement>)

}  // namespace okt::complex
