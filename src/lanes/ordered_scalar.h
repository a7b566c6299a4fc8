// Sums and products of two single values whose operands the compiler must not swap; see ordered.h.
#pragma once

#include "oktvm_types.h"

// "Instruction second, first": the first operand takes the result. Processors with AVX are asked in its encoding.
#if defined(__AVX__)
#define OKT_ORDERED(instruction, first, second) asm("v" instruction " %1, %0, %0" : "+v"(first) : "v"(second))
#else
#define OKT_ORDERED(instruction, first, second) asm(instruction " %1, %0" : "+x"(first) : "x"(second))
#endif

namespace okt {

inline Real32 addOrdered(Real32 first, Real32 second) {
    OKT_ORDERED("addss", first, second);
    return first;
}
inline Real64 addOrdered(Real64 first, Real64 second) {
    OKT_ORDERED("addsd", first, second);
    return first;
}
inline Real32 mulOrdered(Real32 first, Real32 second) {
    OKT_ORDERED("mulss", first, second);
    return first;
}
inline Real64 mulOrdered(Real64 first, Real64 second) {
    OKT_ORDERED("mulsd", first, second);
    return first;
}

}  // namespace okt
