// What the block routines of complex functions share: the loop, and elements that the block's steps are not made for.
#pragma once

#include "complex/by_kernel.h"
#include "lanes/lanes.h"

#include <cstdint>

namespace okt {

// N elements at a time. What an array's end leaves over is worked in a buffer, whose free places hold the first of it.
// `block(src, dst)` reads all of its elements before it writes.
template <int N, class Z, class Block>
inline void paddedBlocks(const Z* src, Z* dst, std::int32_t len, const Block& block) {
    Z rest[N];
    for (std::int32_t i = 0; i < len; i += N) {
        const std::int32_t left = len - i;
        if (left >= N) [[likely]] {
            block(src + i, dst + i);
            continue;
        }
        for (std::int32_t j = 0; j < N; ++j) rest[j] = loadElement(src + i + (j < left ? j : 0));
        block(rest, rest);
        for (std::int32_t j = 0; j < left; ++j) storeElement(dst + i + j, rest[j]);
    }
}

// Stores a block's results, those of `byKernel` for the flagged elements. dst may be src.
template <class Z, class V>
[[gnu::noinline, gnu::cold]] void storeWithKernel(const Z* src, Z* dst, const V& re, const V& im, int flagged,
                                                 Z (*byKernel)(Z)) {
    Z result[V::lanes];
    storeInterleaved(&result[0].re, re, im);
    for (int i = 0; i < V::lanes; ++i)
        if (flagged >> i & 1) result[i] = byKernel(loadElement(src + i));
    for (int i = 0; i < V::lanes; ++i) storeElement(dst + i, result[i]);
}

// The same, where flagged elements are the exception.
template <class Z, class V, int Bits>
inline void storeBlock(const Z* src, Z* dst, const V& re, const V& im, Mask<Bits, V::lanes> flagged,
                       Z (*byKernel)(Z)) {
    if (any(flagged)) [[unlikely]]
        storeWithKernel(src, dst, re, im, laneBits(flagged), byKernel);
    else
        storeInterleaved(&dst->re, re, im);
}

}  // namespace okt
