// What the functions of one IEEE operation an element share: complex arrays are arrays of reals of twice the length.
#pragma once

#include "frame/vector_loop.h"

namespace okt {

inline const Real32* parts(const Complex32* z) { return reinterpret_cast<const Real32*>(z); }
inline const Real64* parts(const Complex64* z) { return reinterpret_cast<const Real64*>(z); }
inline Real32* parts(Complex32* z) { return reinterpret_cast<Real32*>(z); }
inline Real64* parts(Complex64* z) { return reinterpret_cast<Real64*>(z); }
template <class T>
inline T* parts(T* x) {
    return x;
}

// The array as bit patterns, for the functions that do no arithmetic.
inline const std::uint32_t* patterns(const Real32* x) { return reinterpret_cast<const std::uint32_t*>(x); }
inline const std::uint64_t* patterns(const Real64* x) { return reinterpret_cast<const std::uint64_t*>(x); }
inline std::uint32_t* patterns(Real32* x) { return reinterpret_cast<std::uint32_t*>(x); }
inline std::uint64_t* patterns(Real64* x) { return reinterpret_cast<std::uint64_t*>(x); }

// dst = operation(src1, src2) over real or complex arrays, part by part.
template <class T, class Operation>
inline void elementwise(const T* src1, const T* src2, T* dst, std::int32_t len, const Operation& operation) {
    const std::size_t reals = static_cast<std::size_t>(len) * (sizeof(T) / sizeof(*parts(dst)));
    vectorLoop(operation, parts(dst), reals, parts(src1), parts(src2));
}

}  // namespace okt
