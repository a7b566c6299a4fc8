// An element loop for routines whose elements go several ways, each of which can be worked in lanes.
//
// Blocks of elements are worked where they stand by the way that most of them go; elements
// that go another way are set aside with their places, and worked in lanes of their own at
// the end of each chunk. It is the element loop in results, flags and status.
#pragma once

#include "frame/loops.h"

namespace okt {

inline constexpr std::int32_t sortedChunk = 256;  // elements
inline constexpr int sortedBlock = 8;

// Elements that wait, with their places in the chunk.
template <class T>
class SetAside {
public:
    // Those of the block's elements whose bit is set.
    void take(const T* block, std::int32_t place, int bits) {
        std::size_t count = count_;
        for (int lane = 0; lane < sortedBlock; ++lane) {
            x_[count] = block[lane];
            place_[count] = place + lane;
            count += static_cast<std::size_t>(bits >> lane & 1);
        }
        count_ = count;
    }

    // Works them Lanes side by side, stores the results at their places, and is empty again.
    template <int Lanes, class Way>
    void work(const Way& way, T* dst) {
        if (count_ == 0) return;
        for (std::size_t i = 0; i < Lanes - 1; ++i) x_[count_ + i] = x_[count_ - 1];  // raises nothing new
        for (std::size_t i = 0; i < count_; i += Lanes) {
            T result[Lanes];
            way(Vec<T, Lanes>::load(x_ + i)).store(result);
            const std::size_t filled = count_ - i < Lanes ? count_ - i : Lanes;
            for (std::size_t lane = 0; lane < filled; ++lane) storeElement(dst + place_[i + lane], result[lane]);
        }
        count_ = 0;
    }

private:
    std::size_t count_ = 0;
    T x_[sortedChunk + 2 * sortedBlock];
    std::int32_t place_[sortedChunk + 2 * sortedBlock];
};

// `tryBlock(src, dst, place)` works a block of eight, or returns false, having done nothing; `finish(dst)`
// works what was set aside in the chunk that begins at dst. `place` counts from the beginning of the chunk.
template <class T, class TryBlock, class Finish, class Element>
inline void sortedElementLoop(const T* src, T* dst, std::int32_t len, const TryBlock& tryBlock, const Finish& finish,
                              const Element& element, OktStatus& status) {
    if (smearsForward(src, dst, len, sortedChunk)) [[unlikely]]
        return elementLoop(src, dst, len, element, status);
    while (len > 0) {
        const std::int32_t chunk = len < sortedChunk ? len : sortedChunk;
        std::int32_t i = 0;
        for (; i <= chunk - sortedBlock; i += sortedBlock) {
            if (tryBlock(src + i, dst + i, i)) [[likely]]
                continue;
            for (std::int32_t j = i; j < i + sortedBlock; ++j)
                storeElement(dst + j, element(loadElement(src + j), status));
        }
        for (; i < chunk; ++i) storeElement(dst + i, element(loadElement(src + i), status));
        finish(dst);
        src += chunk;
        dst += chunk;
        len -= chunk;
    }
}

}  // namespace okt
