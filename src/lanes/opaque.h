// Arithmetic on lanes that another branch decides.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// The value itself. In registers of several lanes, arithmetic of which a lane's part is void still raises its flags; of
// a single lane a compiler may leave it out. Held to it, the elements of the tail raise what those of blocks do.
template <class T>
inline Vec<T, 1> withFlags(Vec<T, 1> v) {
    return opaque(v.raw);
}
template <class T, int N>
inline Vec<T, N> withFlags(Vec<T, N> v) {
    return v;
}

}  // namespace okt
