// Sums and products whose operands the compiler must not swap: when both operands are NaNs, the processor gives the
// first one, quieted, and that choice is visible in results. Also used where an operation must happen for its flags.
#pragma once

#include "oktvm.h"

#include <emmintrin.h>

namespace okt {

inline Real32 addOrdered(Real32 first, Real32 second) {
    asm("addss %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline Real64 addOrdered(Real64 first, Real64 second) {
    asm("addsd %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline Real32 mulOrdered(Real32 first, Real32 second) {
    asm("mulss %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline Real64 mulOrdered(Real64 first, Real64 second) {
    asm("mulsd %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline __m128 addOrdered(__m128 first, __m128 second) {
    asm("addps %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline __m128d addOrdered(__m128d first, __m128d second) {
    asm("addpd %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline __m128 mulOrdered(__m128 first, __m128 second) {
    asm("mulps %1, %0" : "+x"(first) : "x"(second));
    return first;
}
inline __m128d mulOrdered(__m128d first, __m128d second) {
    asm("mulpd %1, %0" : "+x"(first) : "x"(second));
    return first;
}

}  // namespace okt
