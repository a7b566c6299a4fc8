// The loop of Atan2 and Arg.
#pragma once

#include "frame/loops.h"
#include "trig/angle32.h"
#include "trig/angle64.h"
#include "trig/angle_element.h"

namespace okt::angle {
namespace {

constexpr std::int32_t blocksEndOf(Real64, std::int32_t len) { return len & ~15; }
constexpr std::int32_t blocksEndOf(Real32, std::int32_t len) { return len & ~11; }  // bit 2 stays, bit 3 goes

// `load(lanes<N>, i)` gives y and x of the elements from i on.
template <class T, class Load>
void angles(const Load& load, T* dst, std::int32_t len) {
    constexpr int block = sizeof(T) == 4 ? 4 : 2;
    const auto* const k = [] {
        if constexpr (block == 4)
            return &inMemory(constants32);
        else
            return &inMemory(constants64);
    }();
    const auto tryLanes = [=]<int N>(std::integral_constant<int, N>, std::int32_t i) OKT_INLINE {
        const auto [y, x] = load(lanes<N>, i);
        if (!inRange(*k, y, x)) [[unlikely]]
            return false;
        mainAngle(*k, y, x).store(dst + i);
        return true;
    };
    const auto element = [=](std::int32_t i) {
        const auto [y, x] = load(lanes<1>, i);
        storeElement(dst + i, ofElement(y.raw, x.raw));
    };
    redoBlockTryTail<block, 4 * block>(len, blocksEndOf(T{}, len), tryLanes, element);
}

}  // namespace
}  // namespace okt::angle
