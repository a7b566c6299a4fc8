// Bit patterns of single elements, and element access that asks for no alignment.
#pragma once

#include "oktvm_types.h"

#include <bit>
#include <cstdint>
#include <type_traits>

// Of a function, or behind the parameters of a lambda: its body belongs into the loop that calls it.
#define OKT_INLINE __attribute__((always_inline))

namespace okt {

constexpr Real32 bits32(std::uint32_t pattern) { return std::bit_cast<Real32>(pattern); }
constexpr Real64 bits64(std::uint64_t pattern) { return std::bit_cast<Real64>(pattern); }

constexpr std::uint32_t asBits(Real32 x) { return std::bit_cast<std::uint32_t>(x); }
constexpr std::uint64_t asBits(Real64 x) { return std::bit_cast<std::uint64_t>(x); }

// The same back, of the type that the width says.
constexpr Real32 asReal(std::uint32_t pattern) { return bits32(pattern); }
constexpr Real64 asReal(std::uint64_t pattern) { return bits64(pattern); }

// The unsigned integer of a type's size.
template <class T>
using Unsigned = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;

// The upper and lower 32 bits of a Real64's pattern.
constexpr std::uint32_t highWord(Real64 x) { return static_cast<std::uint32_t>(asBits(x) >> 32); }
constexpr std::uint32_t lowWord(Real64 x) { return static_cast<std::uint32_t>(asBits(x)); }

constexpr Real64 fromWords(std::uint32_t high, std::uint32_t low) {
    return bits64(static_cast<std::uint64_t>(high) << 32 | low);
}

// Arrays may stand at any address, so elements are read and written through a type that promises no alignment.
template <class T>
struct __attribute__((packed, may_alias)) Unaligned {
    T value;
};

template <class T>
inline T loadElement(const T* from) {
    return reinterpret_cast<const Unaligned<T>*>(from)->value;
}

template <class T>
inline void storeElement(T* to, T value) {
    reinterpret_cast<Unaligned<T>*>(to)->value = value;
}

// The same for the bit pattern: an integer move, which leaves a signalling NaN as it is and raises nothing.
inline std::uint32_t loadBits(const Real32* from) { return loadElement(reinterpret_cast<const std::uint32_t*>(from)); }
inline std::uint64_t loadBits(const Real64* from) { return loadElement(reinterpret_cast<const std::uint64_t*>(from)); }
inline void storeBits(Real32* to, std::uint32_t pattern) {
    storeElement(reinterpret_cast<std::uint32_t*>(to), pattern);
}
inline void storeBits(Real64* to, std::uint64_t pattern) {
    storeElement(reinterpret_cast<std::uint64_t*>(to), pattern);
}

}  // namespace okt
