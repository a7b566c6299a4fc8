// Constants of kernels that have more of them than there are registers.
//
// A Constant stands in memory spread over a register's width, so that an operation takes it as its memory operand: no
// register is held and no broadcast is done in the loop. A kernel keeps its constants in one struct and reads them
// through inMemory(), which hides the values from the compiler; otherwise it would make them anew where it needs them.
//
// A number is given as a value, with hexadecimal digits where it is not a short decimal number; only masks, bounds that
// are compared as integers, infinities and NaNs are given as bit patterns.
#pragma once

#include "lanes/lanes.h"

namespace okt {

template <class T>
struct alignas(registerBytes) Constant {
    T lane[registerLanes<T>];

    constexpr Constant(T value) {
        for (T& each : lane) each = value;
    }

    template <int N>
    operator Vec<T, N>() const {
        if constexpr (N == 1)
            return lane[0];
        else if constexpr (Register<Vec<T, N>>)
            return Vec<T, N>::loadAligned(lane);
        else
            return {Vec<T, N / 2>(*this), Vec<T, N / 2>(*this)};
    }
};

using Constant32 = Constant<Real32>;
using Constant64 = Constant<Real64>;
using Pattern32 = Constant<std::uint32_t>;
using Pattern64 = Constant<std::uint64_t>;

// A constant for even and one for odd lanes, such as the real and the imaginary parts of complex numbers.
template <class T>
struct alignas(16) AlternatingConstant {
    T even, odd;

    template <int N>
    operator Vec<T, N>() const {
        if constexpr (N == 2)
            return Vec<T, 2>::loadAligned(&even);
        else
            return {Vec<T, N / 2>(*this), Vec<T, N / 2>(*this)};
    }
};

// The 32-bit integers from `first` to before `end`, tested by one subtraction and one signed comparison.
struct WordRange {
    Pattern32 origin, last;
    constexpr WordRange(std::uint32_t first, std::uint32_t end)
        : origin(first + 0x80000000u), last(end - first + 0x7FFFFFFFu) {}

    template <int N>
    bool holdsAll(U32<N> w) const {
        return !any(greaterSigned(w - origin, U32<N>(last)));
    }
};

template <class Constants>
inline const Constants& inMemory(const Constants& constants) {
    return *opaque(&constants);
}

}  // namespace okt
