// Sums and products whose operands the compiler must not swap: when both operands are NaNs, the processor gives the
// first one, quieted, and that choice is visible in results. Also used where an operation must happen for its flags.
#pragma once

#include "lanes/lanes.h"
#include "lanes/ordered_scalar.h"

namespace okt {

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

template <class T>
inline Vec<T, 1> addOrdered(Vec<T, 1> first, Vec<T, 1> second) {
    return addOrdered(first.raw, second.raw);
}
template <class T>
inline Vec<T, 1> mulOrdered(Vec<T, 1> first, Vec<T, 1> second) {
    return mulOrdered(first.raw, second.raw);
}
inline F64<2> addOrdered(F64<2> first, F64<2> second) { return addOrdered(first.raw, second.raw); }
inline F32<4> addOrdered(F32<4> first, F32<4> second) { return addOrdered(first.raw, second.raw); }
inline F64<2> mulOrdered(F64<2> first, F64<2> second) { return mulOrdered(first.raw, second.raw); }
inline F32<4> mulOrdered(F32<4> first, F32<4> second) { return mulOrdered(first.raw, second.raw); }
template <class V>
requires Paired<V>
inline V addOrdered(V first, V second) { return {addOrdered(first.lo, second.lo), addOrdered(first.hi, second.hi)}; }
template <class V>
requires Paired<V>
inline V mulOrdered(V first, V second) { return {mulOrdered(first.lo, second.lo), mulOrdered(first.hi, second.hi)}; }

}  // namespace okt
