// Comparison with the model under every control state of the caller, for the functions whose arithmetic runs under it.
#pragma once

#include "support/control_state.h"
#include "support/thresholds.h"

namespace okt::test {

template <class T>
void expectModelUnderEveryControlState(UnaryRoutine<T> f, UnaryRoutine<T> model, const std::vector<T>& src) {
    const UnaryRoutine<T> volatile hiddenModel = model;  // called, not merged into the scope's surroundings
    const auto len = static_cast<std::int32_t>(src.size());
    std::vector<T> dst(src.size()), expected(src.size());
    for (const ControlState& state : allControlStates()) {
        OktStatus status, expectedStatus;
        std::uint32_t flags, expectedFlags;
        {
            const ScopedControlState scope(state);
            status = f(src.data(), dst.data(), len);
            flags = controlState().mxcsr;
        }
        {
            const ScopedControlState scope(state);
            expectedStatus = hiddenModel(src.data(), expected.data(), len);
            expectedFlags = controlState().mxcsr;
        }
        EXPECT_EQ(status, expectedStatus);
        EXPECT_EQ(flags, expectedFlags) << "control " << std::hex << state.mxcsr;
        for (std::size_t i = 0; i < src.size(); ++i)
            EXPECT_TRUE(sameBits(dst[i], asBits(expected[i])))
                << std::hex << asBits(src[i]) << " under control " << state.mxcsr;
    }
}

}  // namespace okt::test
