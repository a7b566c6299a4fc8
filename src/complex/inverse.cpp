// Inverse trigonometric and inverse hyperbolic functions of complex elements, one at a time.
//
// Largest errors seen, in ulp of each part: Complex32 0.5000, Complex64 0.5010 for Acos, Acosh, Asin and Asinh, 0.5418
// for Atanh at (0.0075000855608894, -0.01279356387172431), where the logarithm is of a quotient just above 1.03, and
// for Atan.
#include "complex/acos_element.h"
#include "complex/element_loop.h"
#include "exports/Acos.h"
#include "exports/Acosh.h"
#include "exports/Asin.h"
#include "exports/Asinh.h"
#include "exports/Atan.h"
#include "exports/Atanh.h"

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
