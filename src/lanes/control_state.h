// The control and status registers of floating-point arithmetic.
//
// The compiler does not know that arithmetic depends on a control register, and moves it across a write. Where that
// matters, the arithmetic stands in a function of its own that is not inlined.
#pragma once

#if defined(__AVX__)
#include <immintrin.h>
#else
#include <emmintrin.h>
#endif

#include <cstdint>

namespace okt {

// MXCSR, of the registers of lanes: rounding and flushing, masks of exceptions, sticky flags.
inline unsigned readMxcsr() { return _mm_getcsr(); }
inline void writeMxcsr(unsigned image) { _mm_setcsr(image); }

// The x87 unit's control word, of precision and rounding, which comes from memory and goes there, and its status word
// with the sticky flags.
inline void storeX87Control(std::uint16_t& word) { asm volatile("fnstcw %0" : "=m"(word)); }
inline void loadX87Control(const std::uint16_t& word) { asm volatile("fldcw %0" : : "m"(word) : "memory"); }
inline std::uint16_t readX87Status() {
    std::uint16_t word;
    asm volatile("fnstsw %0" : "=a"(word));
    return word;
}

// A caller's instructions of 128 bits wait for the upper lanes of registers that hold something there. The compiler
// puts the same at the end of a function that uses such registers, but not of one that leaves that to others.
inline void clearUpperLanes() {
#if defined(__AVX__)
    _mm256_zeroupper();
#endif
}

}  // namespace okt
