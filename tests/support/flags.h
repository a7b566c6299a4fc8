// The exception flags that a call raises.
#pragma once

#include "support/control_state.h"

namespace okt::test {

inline constexpr std::uint32_t flagInvalid = 0x01, flagDenormal = 0x02, flagDivideByZero = 0x04, flagOverflow = 0x08,
                               flagUnderflow = 0x10, flagInexact = 0x20;

// Sticky flags set by call(), run from clear ones under the given MXCSR control bits.
template <class Call>
std::uint32_t flagsRaised(const Call& call, std::uint32_t control = defaultMxcsr) {
    const ScopedControlState scope({control & ~stickyFlags, 0x037F});
    call();
    return controlState().mxcsr & stickyFlags;
}

// The named functions' flags over one element alone.
template <class D, class S>
std::uint32_t flagsAlone(OktStatus (*f)(const S*, D*, std::int32_t), S x, std::uint32_t control = defaultMxcsr) {
    D result;
    return flagsRaised([&] { f(&x, &result, 1); }, control);
}

}  // namespace okt::test
