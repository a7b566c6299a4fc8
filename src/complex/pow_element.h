// General power, the written steps on one element.
#pragma once

#include "complex/exp_element.h"
#include "complex/ln_element.h"

namespace okt::complex {

// a^b = e^(b*ln a), the product of b and the logarithm in plain Real64.
inline Complex64 powElement(Complex64 a, Complex64 b) {
    Complex64 w = lnElement(a);
    return expElement(
        {mulOrdered(b.re, w.re) - mulOrdered(b.im, w.im), addOrdered(mulOrdered(b.re, w.im), mulOrdered(b.im, w.re))});
}

}  // namespace okt::complex
