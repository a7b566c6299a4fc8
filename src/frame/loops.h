// The loop shapes. A family passes its pieces; which path an element takes is decided here and nowhere else.
#pragma once

#include "frame/vector_loop.h"
#include "lanes/lanes.h"

#include <cstdint>

namespace okt {

// Redo block: Block elements a pass. `tryBlock(src, dst)` works a whole block in lanes and returns false, having stored
// nothing, when a lane is out of the main range; then every element of the block goes through `element(x, status)`, in
// order, good ones too. The elements behind the last whole block take the same routine.
template <int Block, class S, class D, class TryBlock, class Element>
inline void redoBlock(const S* src, D* dst, std::int32_t len, const TryBlock& tryBlock, const Element& element,
                      OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - Block; i += Block) {
        if (tryBlock(src + i, dst + i)) [[likely]]
            continue;
        for (std::int32_t j = i; j < i + Block; ++j) storeElement(dst + j, element(loadElement(src + j), status));
    }
    for (; i < len; ++i) storeElement(dst + i, element(loadElement(src + i), status));
}

// The same for two sources: `tryBlock(src1, src2, dst)`, `element(x, y, status)`.
template <int Block, class S, class D, class TryBlock, class Element>
inline void redoBlock(const S* src1, const S* src2, D* dst, std::int32_t len, const TryBlock& tryBlock,
                      const Element& element, OktStatus& status) {
    std::int32_t i = 0;
    const auto one = [&](std::int32_t j) {
        storeElement(dst + j, element(loadElement(src1 + j), loadElement(src2 + j), status));
    };
    for (; i <= len - Block; i += Block) {
        if (tryBlock(src1 + i, src2 + i, dst + i)) [[likely]]
            continue;
        for (std::int32_t j = i; j < i + Block; ++j) one(j);
    }
    for (; i < len; ++i) one(i);
}

// Elements side by side with the registers of this build where AtOnce go side by side with those of 128 bits.
template <int AtOnce>
inline constexpr int timesWider = AtOnce*(registerBytes / 16);

// Whether passes of timesWider<AtOnce> elements give what those of AtOnce give: not where the destination starts just
// above a source, so that a pass reads what the one before has written.
template <int AtOnce, class T, class... Source>
inline bool growPasses(const T* dst, const Source*... src) {
    return registerBytes != 16 && !(smearsForward(src, dst, std::size_t{timesWider<AtOnce>}) || ...);
}

// The number of lanes that a loop asks for, as an argument.
template <int N>
inline constexpr std::integral_constant<int, N> lanes{};

// Redo block whose tail tries the main path, too: a block that fails its range test goes through `element(i)` element
// by element, in order; the elements behind the blocks take the main path's steps one at a time, each with its own
// range test. `tryLanes(lanes<N>, i)` works the elements i to i + N - 1 and returns false, having stored nothing, when
// one of them is out of range. Blocks begin while `i < blocksEnd`. Several blocks that pass together are worked side by
// side, AtOnce elements in all or else one of the Fewer, which changes nothing but the time.
//
// Where registers are wider than 128 bits, as many times more elements go side by side if `longPasses` says that the
// arrays let them: growPasses<AtOnce>(dst, src...).
template <int Block, int AtOnce, int... Fewer, class TryLanes, class Element, class LongPasses = std::false_type>
inline void redoBlockTryTail(std::int32_t len, std::int32_t blocksEnd, const TryLanes& tryLanes, const Element& element,
                             [[maybe_unused]] LongPasses longPasses = {}) {
    static_assert(AtOnce % Block == 0 && ((Fewer % Block == 0) && ...));
    if constexpr (registerBytes != 16 && !std::is_same_v<LongPasses, std::false_type>) {
        if (longPasses) [[likely]]
            return redoBlockTryTail<Block, timesWider<AtOnce>, AtOnce, Fewer...>(len, blocksEnd, tryLanes, element);
    }
    std::int32_t i = 0;
    while (i < blocksEnd) {
        if constexpr (AtOnce != Block) {
            if (i < blocksEnd - (AtOnce - Block) && tryLanes(lanes<AtOnce>, i)) [[likely]] {
                i += AtOnce;
                continue;
            }
        }
        if constexpr (sizeof...(Fewer) != 0) {
            const auto advance = [&]<int N>(std::integral_constant<int, N>) OKT_INLINE {
                if (i >= blocksEnd - (N - Block) || !tryLanes(lanes<N>, i)) return false;
                i += N;
                return true;
            };
            if ((advance(lanes<Fewer>) || ...)) continue;
        }
        if (!tryLanes(lanes<Block>, i)) [[unlikely]]
            for (std::int32_t j = i; j < i + Block; ++j) element(j);
        i += Block;
    }
    for (; i < len; ++i)
        if (!tryLanes(lanes<1>, i)) element(i);
}

// Blocks up to `end`, worked in two halves of which the first runs a block ahead. `begin(i, held, stored)` tests the
// block at i, works its first half and returns false when a lane is out of the main range; `finish(i, held, stored)`
// works the second half and stores the results; `redo(i)` works a block that has failed. What passes from one half to
// the other stands in registers, `held`, or in memory, `stored`, where numbers of table entries wait for the unit that
// loads them. The processor has no room for a second block behind a long chain of operations: cut in two, the halves of
// two blocks run side by side. A block is read before the block in front of it is stored; the source may be the
// destination. The halves stand in the code several times, so that the compiler inlines them only if they are declared
// OKT_INLINE.
template <int Block, class Held, class Stored, class Begin, class Finish, class Redo>
OKT_INLINE inline void blocksAhead(std::ptrdiff_t end, const Begin& begin, const Finish& finish, const Redo& redo) {
    std::ptrdiff_t i = 0;
    Held held0, held1;
    Stored stored0, stored1;
    const auto step = [&](const Held& held, const Stored& stored, Held& nextHeld, Stored& nextStored) OKT_INLINE {
        const bool goesOn = i + Block != end && begin(i + Block, nextHeld, nextStored);
        if (goesOn) [[likely]]  // one piece with the half that begins, for the compiler to interleave
            finish(i, held, stored);
        else
            finish(i, held, stored);
        i += Block;
        return goesOn;
    };
    while (i != end) {
        if (begin(i, held0, stored0)) [[likely]] {
            while (step(held0, stored0, held1, stored1) && step(held1, stored1, held0, stored0)) {
            }
        } else {
            redo(i);
            i += Block;
        }
    }
}

// Redo block, a block ahead.
template <int Block, class Held, class Stored, class S, class D, class Begin, class Finish, class Element>
OKT_INLINE inline void redoBlockAhead(const S* src, D* dst, std::int32_t len, const Begin& begin, const Finish& finish,
                                      const Element& element, OktStatus& status) {
    const auto elements = [&](std::ptrdiff_t first, std::ptrdiff_t end) {
        for (std::ptrdiff_t i = first; i < end; ++i) storeElement(dst + i, element(loadElement(src + i), status));
    };
    const std::ptrdiff_t blocksEnd = len - len % Block;
    blocksAhead<Block, Held, Stored>(blocksEnd, begin, finish, [&](std::ptrdiff_t i) { elements(i, i + Block); });
    elements(blocksEnd, len);
}

// Nothing to hold in registers.
struct Nothing {};

// Blend block: no branch in the block. `step<N>(x)` gives the result of N lanes, special cases blended in, and the mask
// of the lanes that warn; every such lane stores `code`. The tail runs the same step on one lane.
template <int Block, class S, class D, class Step>
inline void blendBlock(const S* src, D* dst, std::int32_t len, OktStatus code, const Step& step, OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - Block; i += Block) {
        const auto [result, warned] = step(Vec<S, Block>::load(src + i));
        result.store(dst + i);
        if (any(warned)) [[unlikely]]
            status = code;
    }
    for (; i < len; ++i) {
        const auto [result, warned] = step(Vec<S, 1>::load(src + i));
        result.store(dst + i);
        if (any(warned)) [[unlikely]]
            status = code;
    }
}

// Element loop: `element(x, status)` computes one element completely. The kernel loop is this loop around a scalar
// kernel that widens the element and narrows the result.
template <class S, class D, class Element>
inline void elementLoop(const S* src, D* dst, std::int32_t len, const Element& element, OktStatus& status) {
    for (std::int32_t i = 0; i < len; ++i) storeElement(dst + i, element(loadElement(src + i), status));
}

template <class S, class D, class Element>
inline void elementLoop(const S* src1, const S* src2, D* dst, std::int32_t len, const Element& element,
                        OktStatus& status) {
    for (std::int32_t i = 0; i < len; ++i)
        storeElement(dst + i, element(loadElement(src1 + i), loadElement(src2 + i), status));
}

// Element loop, worked Block or AtOnce elements side by side where `tryLanes(lanes<N>, src, dst)`
// finds nothing particular in them (false: nothing stored). It is the element loop in results,
// flags and status: `tryLanes` gives what the element routine gives, and a destination that
// starts just above a source, where the order of reads and writes shows, is worked one by one.
template <int Block, int AtOnce, class T, class TryLanes, class Element>
inline void packedElementLoop(const T* src, T* dst, std::int32_t len, const TryLanes& tryLanes, const Element& element,
                              OktStatus& status) {
    static_assert(AtOnce <= vectorLoopPass);
    if (smearsForward(src, dst)) [[unlikely]]
        return elementLoop(src, dst, len, element, status);
    redoBlockTryTail<Block, AtOnce>(
        len, len - (Block - 1), [&](auto count, std::int32_t i) { return tryLanes(count, src + i, dst + i); },
        [&](std::int32_t i) { storeElement(dst + i, element(loadElement(src + i), status)); },
        growPasses<AtOnce>(dst, src));
}

template <int Block, int AtOnce, class T, class TryLanes, class Element>
inline void packedElementLoop(const T* src1, const T* src2, T* dst, std::int32_t len, const TryLanes& tryLanes,
                              const Element& element, OktStatus& status) {
    static_assert(AtOnce <= vectorLoopPass);
    if (smearsForward(src1, dst) || smearsForward(src2, dst)) [[unlikely]]
        return elementLoop(src1, src2, dst, len, element, status);
    redoBlockTryTail<Block, AtOnce>(
        len, len - (Block - 1),
        [&](auto count, std::int32_t i) { return tryLanes(count, src1 + i, src2 + i, dst + i); },
        [&](std::int32_t i) { storeElement(dst + i, element(loadElement(src1 + i), loadElement(src2 + i), status)); },
        growPasses<AtOnce>(dst, src1, src2));
}

// The same with blocks of one width, `tryBlock(src, dst)`, and the elements behind them one at a time.
template <int Block, class T, class TryBlock, class Element>
inline void packedElementLoop(const T* src, T* dst, std::int32_t len, const TryBlock& tryBlock, const Element& element,
                              OktStatus& status) {
    static_assert(Block <= vectorLoopPass);
    if (smearsForward(src, dst)) [[unlikely]]
        elementLoop(src, dst, len, element, status);
    else
        redoBlock<Block>(src, dst, len, tryBlock, element, status);
}

}  // namespace okt
