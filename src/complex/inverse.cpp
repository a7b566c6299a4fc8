// Inverse trigonometric and inverse hyperbolic functions of complex elements, one at a time.
#include "complex/inverse_kernel.h"
#include "complex/kernel_loop.h"

namespace okt {

OKT_EXPORT(Acos, 32fc, kernelLoop<complexAcosKernel>)
OKT_EXPORT(Acos, 64fc, kernelLoop<complexAcosKernel>)
OKT_EXPORT(Acosh, 32fc, kernelLoop<complexAcoshKernel>)
OKT_EXPORT(Acosh, 64fc, kernelLoop<complexAcoshKernel>)
OKT_EXPORT(Asin, 32fc, kernelLoop<complexAsinKernel>)
OKT_EXPORT(Asin, 64fc, kernelLoop<complexAsinKernel>)
OKT_EXPORT(Asinh, 32fc, kernelLoop<complexAsinhKernel>)
OKT_EXPORT(Asinh, 64fc, kernelLoop<complexAsinhKernel>)
OKT_EXPORT(Atan, 32fc, kernelLoop<complexAtanKernel>)
OKT_EXPORT(Atan, 64fc, kernelLoop<complexAtanKernel>)
OKT_EXPORT(Atanh, 32fc, kernelLoop<complexAtanhKernel>)
OKT_EXPORT(Atanh, 64fc, kernelLoop<complexAtanhKernel>)

}  // namespace okt
