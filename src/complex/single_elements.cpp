#include "complex/single_elements.h"
#include "complex/element_loop.h"
#include "complex/exp_element.h"
#include "complex/ln_element.h"
#include "complex/sqrt_element.h"

namespace okt::complex {

Complex32 singleExp(Complex32 z) { return narrowed(expElement(widened(z))); }
Complex64 singleExp(Complex64 z) { return expElement(z); }
Complex32 singleLn(Complex32 z) { return narrowed(lnElement(widened(z))); }
Complex64 singleLn(Complex64 z) { return lnElement(z); }
Complex32 singleSqrt(Complex32 z) { return narrowed(sqrtElement(widened(z))); }

}  // namespace okt::complex
