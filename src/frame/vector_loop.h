// The loop of the functions that are one instruction an element: eight elements a pass, the destination aligned.
#pragma once

#include "lanes/lanes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace okt {

inline constexpr std::size_t vectorLoopPass = 8;

// An ascending scalar loop reads what it has written before when the destination starts less than a pass above a
// source. In every other position, the same address included, whole passes give the scalar loop's results.
template <class T>
inline bool smearsForward(const T* src, const T* dst, std::size_t pass = vectorLoopPass) {
    const auto above = reinterpret_cast<std::uintptr_t>(dst) - reinterpret_cast<std::uintptr_t>(src);
    return above - 1 < pass * sizeof(T) - 1;  // wraps around for 0 and for a destination below
}

// The same for long passes, of which an array shorter than one is all there is.
template <class T>
inline bool smearsForward(const T* src, const T* dst, std::int32_t len, std::int32_t pass) {
    return smearsForward(src, dst, static_cast<std::size_t>(len < pass ? len : pass));
}

// dst[i] = operation(src[i]...) for count elements, ascending. `operation` is generic over the lanes. Loads of the
// sources are unaligned; stores are aligned once the elements before the first boundary of a register are done, unless
// the destination stands at an odd address, where no boundary can be reached. Where registers are wide, a pass is
// longer as long as the arrays let it: any pass gives the scalar loop's results.
template <class T, class Operation, class... Source>
inline void vectorLoop(const Operation& operation, T* dst, std::size_t count, const Source*... src) {
    constexpr std::size_t longPass = std::max(vectorLoopPass, std::size_t{2} * registerLanes<T>);
    std::size_t i = 0;
    const auto scalarUntil = [&](std::size_t end) {
        for (; i < end; ++i) operation(Vec<T, 1>::load(src + i)...).store(dst + i);
    };
    const auto inPassesOf = [&]<std::size_t pass>(std::integral_constant<std::size_t, pass>) OKT_INLINE {
        constexpr int width = std::min(registerLanes<T>, static_cast<int>(pass));
        const std::size_t misalignment = reinterpret_cast<std::uintptr_t>(dst + i) % (width * sizeof(T));
        const std::size_t peel =
            misalignment == 0 || misalignment % sizeof(T) != 0 ? 0 : width - misalignment / sizeof(T);
        if (count < i + peel + pass || (smearsForward(src, dst, pass) || ...)) return;
        scalarUntil(i + peel);
        const std::size_t end = count - (count - i) % pass;
        for (; i < end; i += pass) {
            Vec<T, width> results[pass / width];
            for (std::size_t k = 0; k < std::size(results); ++k)
                results[k] = operation(Vec<T, width>::load(src + i + k * width)...);
            for (std::size_t k = 0; k < std::size(results); ++k) results[k].store(dst + i + k * width);
        }
    };
    if constexpr (longPass != vectorLoopPass) inPassesOf(std::integral_constant<std::size_t, longPass>{});
    inPassesOf(std::integral_constant<std::size_t, vectorLoopPass>{});
    scalarUntil(count);
}

}  // namespace okt
