// Logarithms that are one call of a scalar kernel an element: the decimal one, log10|z| + i·arg(z)·log10 e, and of the
// natural one the elements that its block routines are not made for.
//
// Largest error seen of the decimal logarithm: 0.5092 ulp in the real part at (-0x1.eaf2f269d1972p-1,
// -0x1.5b993e5b377a8p-2).
#include "complex/by_kernel.h"
#include "complex/kernel_loop.h"
#include "complex/log_kernel.h"

namespace okt {

Complex32 lnByKernel(Complex32 z) {
    Complex32 result;
    storeNarrowed(&result, complexLogKernel(widened(z)));
    return result;
}
Complex64 lnByKernel(Complex64 z) { return complexLogKernel(z); }

namespace {

OktStatus log10c32(const Complex32* src, Complex32* dst, std::int32_t len) {
    return kernelLoop<complexLog10Kernel>(src, dst, len);
}
OktStatus log10c64(const Complex64* src, Complex64* dst, std::int32_t len) {
    return kernelLoop<complexLog10Kernel>(src, dst, len);
}

}  // namespace

OKT_EXPORT(Log10, 32fc, log10c32)
OKT_EXPORT(Log10, 64fc, log10c64)

}  // namespace okt
