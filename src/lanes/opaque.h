// What the compiler is kept from knowing: where a value comes from, and that memory holds what was put there.
#pragma once

#include <type_traits>

namespace okt {

// Hides a value from the optimiser: arithmetic on it is done at run time, where it stands.
template <class T>
inline T opaque(T value) {
    if constexpr (sizeof(T) > 8)
        asm volatile("" : "+t"(value));
    else if constexpr (std::is_floating_point_v<T>)
        asm volatile("" : "+v"(value));
    else
        asm volatile("" : "+r"(value));
    return value;
}

// Keeps the operation that made the value, whose exception flags are wanted although nobody reads the result.
template <class T>
inline void keepFlags(T value) {
    static_cast<void>(opaque(value));
}

// Values that are in memory from here on indeed: what is read of them is read from there.
template <class A>
inline void keepInMemory(A& a) {
    asm volatile("" : "+m"(a));
}
template <class A, class B>
inline void keepInMemory(A& a, B& b) {
    asm("" : "+m"(a), "+m"(b));
}
template <class A, class B, class C>
inline void keepInMemory(A& a, B& b, C& c) {
    asm("" : "+m"(a), "+m"(b), "+m"(c));
}
template <class A, class B, class C, class D, class E>
inline void keepInMemory(A& a, B& b, C& c, D& d, E& e) {
    asm("" : "+m"(a), "+m"(b), "+m"(c), "+m"(d), "+m"(e));
}

// Whatever is read from memory behind this is read anew.
inline void forgetMemory() { asm volatile("" : : : "memory"); }

}  // namespace okt
