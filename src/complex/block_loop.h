// What the block routines of complex functions share: the loop, and elements that the block's steps are not made for.
#pragma once

#include "complex/parts.h"
#include "lanes/lanes.h"

#include <cstdint>

namespace okt::complex {

// Less than a block, worked in a buffer whose free places hold the first element. A
// function of its own, so that the loop over whole blocks has the registers for itself.
template <int N, class Z, class Block>
[[gnu::noinline]] void paddedBlock(const Z* src, Z* dst, std::int32_t left, const Block& block) {
    Z rest[N];
    for (std::int32_t j = 0; j < N; ++j) rest[j] = loadElement(src + (j < left ? j : 0));
    block(rest, rest);
    for (std::int32_t j = 0; j < left; ++j) storeElement(dst + j, rest[j]);
}

// N elements at a time. `block(src, dst)` reads all of its elements before it writes.
template <int N, class Z, class Block>
inline void paddedBlocks(const Z* src, Z* dst, std::int32_t len, const Block& block) {
    std::int32_t i = 0;
    for (; i <= len - N; i += N) block(src + i, dst + i);
    if (i < len) paddedBlock<N>(src + i, dst + i, len - i, block);
}

// Stores a block's results, those of `single` for the flagged elements. dst may be src.
template <class Z, class V>
[[gnu::noinline, gnu::cold]] void storeWithSingles(const Z* src, Z* dst, const V& re, const V& im, int flagged,
                                                   Z (*single)(Z)) {
    Z result[V::lanes];
    storeInterleaved(partsOf(result), re, im);
    for (int i = 0; i < V::lanes; ++i)
        if (flagged >> i & 1) result[i] = single(loadElement(src + i));
    for (int i = 0; i < V::lanes; ++i) storeElement(dst + i, result[i]);
}

// The same, where flagged elements are the exception.
template <class Z, class V, int Bits>
inline void storeBlock(const Z* src, Z* dst, const V& re, const V& im, Mask<Bits, V::lanes> flagged, Z (*single)(Z)) {
    if (any(flagged)) [[unlikely]]
        storeWithSingles(src, dst, re, im, laneBits(flagged), single);
    else
        storeInterleaved(partsOf(dst), re, im);
}

}  // namespace okt::complex
