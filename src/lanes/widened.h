// Interleaved pairs of Real32 worked as columns of Real64.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// With the operand in memory the conversion takes no shuffle, and shuffles are
// what bounds loops over complex numbers. GCC would load the operand first.
inline F64<2> loadWidened(const Real32* from) {
#if defined(__clang__)
    return _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i_u*>(from))));
#else
    __m128d widened;
    asm volatile("cvtps2pd %1, %0" : "=x"(widened) : "m"(*reinterpret_cast<const Unaligned<std::uint64_t>*>(from)));
    return widened;
#endif
}

template <int N>
inline Pair<F64<N>> loadInterleavedWidened(const Real32* from) {
    if constexpr (N == 2) {
        const F64<2> a = loadWidened(from), b = loadWidened(from + 2);
        return {_mm_unpacklo_pd(a.raw, b.raw), _mm_unpackhi_pd(a.raw, b.raw)};
    } else {
        const auto low = loadInterleavedWidened<N / 2>(from);
        const auto high = loadInterleavedWidened<N / 2>(from + N);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}

inline void storeInterleavedNarrowed(Real32* to, F64<2> first, F64<2> second) {
    _mm_storeu_ps(to, _mm_unpacklo_ps(_mm_cvtpd_ps(first.raw), _mm_cvtpd_ps(second.raw)));
}
template <int N>
requires Paired<F64<N>>
inline void storeInterleavedNarrowed(Real32* to, F64<N> first, F64<N> second) {
    storeInterleavedNarrowed(to, first.lo, second.lo);
    storeInterleavedNarrowed(to + N, first.hi, second.hi);
}

}  // namespace okt
