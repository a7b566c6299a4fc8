// The element loop of families whose ordinary elements can be worked side by side and whose warnings raise IEEE flags.
#pragma once

#include "frame/loops.h"
#include "frame/status_flag.h"

namespace okt {

// An element loop by its results: every element gets what `element(x, warning)` gives for
// it, whatever its neighbours are, and warns in element order, by the status and by the IEEE
// flag. `tryBlock(src, dst)` is the short cut for Block ordinary elements: it does the very
// operations of the element routine on all of them, or nothing at all and returns false.
template <int Block, class T, class TryBlock, class Element>
inline void packedWarningLoop(const T* src, T* dst, std::int32_t len, const TryBlock& tryBlock, const Element& element,
                              OktStatus& status) {
    const auto warningElement = [&element](T x, OktStatus& elementStatus) {
        OktStatus warning = oktStatusOk;
        const T result = element(x, warning);
        if (warning != oktStatusOk) [[unlikely]] {
            elementStatus = warning;
            raiseStatusFlag(warning);
        }
        return result;
    };
    packedElementLoop<Block>(src, dst, len, tryBlock, warningElement, status);
}

}  // namespace okt
