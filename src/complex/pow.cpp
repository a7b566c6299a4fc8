// General power of complex elements, one at a time: e^(b*ln a), with the logarithm rounded to Real64 between.
#include "complex/kernel_loop.h"
#include "complex/root_kernel.h"

namespace okt {

OKT_EXPORT(Pow, 32fc, kernelLoop<complexPowKernel>)
OKT_EXPORT(Pow, 64fc, kernelLoop<complexPowKernel>)
OKT_EXPORT(Powx, 32fc, kernelLoop<complexPowKernel>)
OKT_EXPORT(Powx, 64fc, kernelLoop<complexPowKernel>)

}  // namespace okt
