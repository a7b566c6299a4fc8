// Integral parts of small numbers.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// The number without its fraction, for numbers below 2^31, whatever the rounding mode.
inline F64<1> truncated(F64<1> a) { return static_cast<Real64>(static_cast<std::int32_t>(a.raw)); }
inline F64<2> truncated(F64<2> a) { return _mm_cvtepi32_pd(_mm_cvttpd_epi32(a.raw)); }
template <int N>
requires Paired<F64<N>>
inline F64<N> truncated(F64<N> a) { return {truncated(a.lo), truncated(a.hi)}; }

// The integer of a non-negative integral number below 2^31.
template <int N>
inline U64<N> integerOf(F64<N> a) {
    return asBits(a + F64<N>(0x1p52)) & U64<N>(std::uint64_t{0x7FFFFFFF});
}

}  // namespace okt
