// Sine, cosine and tangent of complex elements: quarter turns of the hyperbolic functions, one element at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5013 (Tan next to a pole).
#include "complex/element_loop.h"
#include "complex/sinh_element.h"
#include "exports/Cos.h"
#include "exports/Sin.h"
#include "exports/Tan.h"

namespace okt {

OKT_EXPORT(Cos, 32fc, kernelLoop<complexCosKernel>)
OKT_EXPORT(Cos, 64fc, kernelLoop<complexCosKernel>)
OKT_EXPORT(Sin, 32fc, kernelLoop<complexSinKernel>)
OKT_EXPORT(Sin, 64fc, kernelLoop<complexSinKernel>)
OKT_EXPORT(Tan, 32fc, kernelLoop<complexTanKernel>)
OKT_EXPORT(Tan, 64fc, kernelLoop<complexTanKernel>)

}  // namespace okt
