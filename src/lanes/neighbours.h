// Two lanes that belong together, such as the parts of a complex number.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// Each lane and its neighbour: the larger of their upper halves, as signed numbers, in both. The lower halves are free.
inline U32<4> largerOfNeighbours(U32<4> a) {
    return _mm_max_epi16(a.raw, _mm_shuffle_epi32(a.raw, _MM_SHUFFLE(2, 3, 0, 1)));
}

// Real64 lanes with the even lanes as their upper words; the lower words are zero.
inline F64<2> evenAsHighWords(U32<4> a) { return asReal(asLongs(a) << 32); }

}  // namespace okt
