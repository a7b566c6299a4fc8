// Sums and products whose operands the compiler must not swap: when both operands are NaNs, the processor gives the
// first one, quieted, and that choice is visible in results. Also used where an operation must happen for its flags.
#pragma once

#include "lanes/lanes.h"
#include "lanes/ordered_scalar.h"

namespace okt {

template <class T>
inline Vec<T, 1> addOrdered(Vec<T, 1> first, Vec<T, 1> second) {
    return addOrdered(first.raw, second.raw);
}
template <class T>
inline Vec<T, 1> mulOrdered(Vec<T, 1> first, Vec<T, 1> second) {
    return mulOrdered(first.raw, second.raw);
}
template <class V>
requires Register<V>
inline V addOrdered(V first, V second) {
    if constexpr (sizeof(typename V::Element) == 8)
        OKT_ORDERED("addpd", first.raw, second.raw);
    else
        OKT_ORDERED("addps", first.raw, second.raw);
    return first;
}
template <class V>
requires Register<V>
inline V mulOrdered(V first, V second) {
    if constexpr (sizeof(typename V::Element) == 8)
        OKT_ORDERED("mulpd", first.raw, second.raw);
    else
        OKT_ORDERED("mulps", first.raw, second.raw);
    return first;
}
template <class V>
requires Paired<V>
inline V addOrdered(V first, V second) { return {addOrdered(first.lo, second.lo), addOrdered(first.hi, second.hi)}; }
template <class V>
requires Paired<V>
inline V mulOrdered(V first, V second) { return {mulOrdered(first.lo, second.lo), mulOrdered(first.hi, second.hi)}; }

}  // namespace okt
