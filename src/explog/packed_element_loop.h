// The element loop of families whose ordinary elements can be worked side by side.
#pragma once

#include "frame/frame.h"
#include "frame/status_flag.h"
#include "lanes/lanes.h"

namespace okt {

// An element loop by its results: every element gets what `element(x, warning)` gives for it, whatever its neighbours are,
// and warns in element order, by the status and then, once the result is stored, by the IEEE flag. `tryBlock(src, dst)` is
// the short cut for Block ordinary elements: it does the very operations of the element routine on all of them, or nothing
// at all and returns false.
template <int Block, class T, class TryBlock, class Element>
inline void packedWarningLoop(const T* src, T* dst, std::int32_t len, const TryBlock& tryBlock, const Element& element,
                              OktStatus& status) {
    const auto one = [&](std::int32_t i) {
        OktStatus warning = oktStatusOk;
        storeElement(dst + i, element(loadElement(src + i), warning));
        if (warning != oktStatusOk) [[unlikely]] {
            status = warning;
            sizeof(T) == 4 ? raiseStatusFlag32(warning) : raiseStatusFlag64(warning);
        }
    };
    std::int32_t i = 0;
    for (; i <= len - Block; i += Block) {
        if (tryBlock(src + i, dst + i)) [[likely]]
            continue;
        for (std::int32_t j = i; j < i + Block; ++j) one(j);
    }
    for (; i < len; ++i) one(i);
}

}  // namespace okt
