// Sums and products of two single values whose operands the compiler must not swap; see ordered.h.
#pragma once

#include "oktvm_types.h"

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

}  // namespace okt
