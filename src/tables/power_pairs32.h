// 2^(j/128) for the Real32 exponentials.
#pragma once

#include "tables/exp32_table.h"

namespace okt {

// The table twice over: the low byte of a number, with a bit too many in it, leads to a pair.
struct PowerPairs32 {
    alignas(64) Real32 pairs[512];
    constexpr PowerPairs32() : pairs() {
        for (int i = 0; i < 512; ++i) pairs[i] = tables::Exp32Table[i % 256];
    }
};
inline constexpr PowerPairs32 powerPairs32;

}  // namespace okt
