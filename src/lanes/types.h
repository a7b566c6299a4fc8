// The types of lanes, and what a register of this build holds.
#pragma once

#include "lanes/bits.h"
#include "lanes/opaque.h"

// The registers that the compiler may use beside those of 128 bits, which every processor has.
#if defined(__AVX2__)
#define OKT_REGISTERS_256
#endif
#if defined(__AVX512F__) && defined(__AVX512DQ__) && defined(__AVX512BW__) && defined(__AVX512VL__)
#define OKT_REGISTERS_512
#endif

#include <cstddef>
#include <type_traits>

namespace okt {

template <class T, int N>
struct Vec;
template <int Bits, int N>
struct Mask;

template <int N>
using F64 = Vec<Real64, N>;
template <int N>
using F32 = Vec<Real32, N>;
template <int N>
using U64 = Vec<std::uint64_t, N>;
template <int N>
using U32 = Vec<std::uint32_t, N>;
template <int N>
using Mask64 = Mask<64, N>;
template <int N>
using Mask32 = Mask<32, N>;

using F64x1 = F64<1>;
using F64x2 = F64<2>;
using F64x4 = F64<4>;
using F32x1 = F32<1>;
using F32x4 = F32<4>;
using U64x2 = U64<2>;
using U32x4 = U32<4>;

// Bytes of the widest register of this build, and the lanes in it.
#if defined(OKT_REGISTERS_512)
inline constexpr int registerBytes = 64;
#elif defined(OKT_REGISTERS_256)
inline constexpr int registerBytes = 32;
#else
inline constexpr int registerBytes = 16;
#endif
template <class T>
inline constexpr int registerLanes = registerBytes / static_cast<int>(sizeof(T));

template <int N, int bound>
concept LanesAbove = N > bound;
// Lanes that fill a register of some width.
template <class V>
concept Register = V::lanes >
1 && V::lanes <= registerLanes<typename V::Element>&& V::lanes * sizeof(typename V::Element) >= 16;
// A type that is a pair of halves here.
template <class V>
concept Paired = requires(V v) {
    v.lo;
    v.hi;
};

template <class T>
using Unsigned = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;

// Two columns, lane by lane.
template <class V>
struct Pair {
    V first, second;
};

}  // namespace okt
