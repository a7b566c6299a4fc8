// Interleaved pairs of Real32 worked as columns of Real64.
#pragma once

#include "lanes/lanes.h"

namespace okt {

template <int N>
inline Pair<F64<N>> loadInterleavedWidened(const Real32* from) {
    if constexpr (N == 2) {
        const F64<2> a = widenAt<2>(from), b = widenAt<2>(from + 2);
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
