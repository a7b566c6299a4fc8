// Two lanes that belong together, such as the parts of a complex number.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// Lanes in pairs, four in each vector: the firsts and the seconds.
inline Pair<U32<4>> deinterleave(U32<4> low, U32<4> high) {
    const __m128 a = _mm_castsi128_ps(low.raw), b = _mm_castsi128_ps(high.raw);
    return {U32<4>(_mm_castps_si128(_mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)))),
            U32<4>(_mm_castps_si128(_mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1))))};
}

// The larger of the upper halves, as signed numbers; the lower halves are free.
inline U32<4> largerUpperHalf(U32<4> a, U32<4> b) { return _mm_max_epi16(a.raw, b.raw); }

// For four complex numbers, the upper word of the larger part without its sign, with a free lower half.
inline U32<4> largerParts(const Complex64* z) {
    const auto* patterns = reinterpret_cast<const std::uint64_t*>(z);
    const auto [re, im] =
        deinterleave(packHighWords(U64<4>::load(patterns)), packHighWords(U64<4>::load(patterns + 4)));
    const U32<4> magnitude(0x7FFFFFFF);
    return largerUpperHalf(re & magnitude, im & magnitude);
}

}  // namespace okt
