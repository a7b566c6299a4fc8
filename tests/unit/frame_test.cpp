// The frames themselves: what the body of each variant runs under, and that arithmetic stays inside its guard.
#include "frame/frame.h"
#include "frame/status_flag.h"
#include "lanes/real80.h"
#include "support/control_state.h"

#include <gtest/gtest.h>

namespace okt::test {
namespace {

// What a body saw: the registers, and arithmetic whose result tells the rounding, the flushing and the precision.
struct Seen {
    ControlState state;
    Real64 third, minusThird, subnormalProduct, subnormalSource;
    Real80 extendedThird;
};

Real64 one = 1.0, three = 3.0, minusOne = -1.0, small = 0x1p-600, tiny = 0x1p-1060, large = 0x1p100;

void look(Seen& seen) {
    // Plain arithmetic on plain variables, the kind a compiler would like to move.
    seen.third = one / three;
    seen.minusThird = minusOne / three;
    seen.subnormalProduct = small * 0x1p-450;
    seen.subnormalSource = tiny * large;
    seen.extendedThird = static_cast<Real80>(one) / three;
    seen.state = controlState();
}

template <class RunFrame>
void checkFrame(const RunFrame& runFrame, std::uint32_t clearedBits, int x87Target) {
    for (const ControlState& state : allControlStates()) {
        Seen inside{}, expected{};
        ControlState after;
        {
            const ScopedControlState scope(state);
            EXPECT_EQ(runFrame(inside), oktStatusOk);
            after = controlState();
        }
        ControlState body{state.mxcsr & ~clearedBits, state.x87};
        if (x87Target >= 0) body.x87 = static_cast<std::uint16_t>((state.x87 & 0xF0FF) | x87Target);
        {
            const ScopedControlState scope(body);
            look(expected);
        }
        EXPECT_EQ(inside.state.mxcsr & ~stickyFlags, body.mxcsr & ~stickyFlags);
        EXPECT_EQ(inside.state.x87, body.x87);
        EXPECT_EQ(asBits(inside.third), asBits(expected.third));
        EXPECT_EQ(asBits(inside.minusThird), asBits(expected.minusThird));
        EXPECT_EQ(asBits(inside.subnormalProduct), asBits(expected.subnormalProduct));
        EXPECT_EQ(asBits(inside.subnormalSource), asBits(expected.subnormalSource));
        EXPECT_EQ(inside.extendedThird, expected.extendedThird);
        EXPECT_EQ(after.x87, state.x87);
        // A changed MXCSR comes back as the exact image; an unchanged one keeps what the body raised.
        EXPECT_EQ(after.mxcsr, (state.mxcsr & clearedBits) ? state.mxcsr : inside.state.mxcsr);
    }
}

Real64 array[1];

template <class Frame>
OktStatus lookIn(Seen& seen) {
    return frame::call<Frame>([&](Real64*, std::int32_t, OktStatus&) { look(seen); }, 1, array);
}

TEST(Frame, PlainLeavesEverythingToTheCaller) { checkFrame(lookIn<frame::Plain>, 0, -1); }
TEST(Frame, MxcsrClearsRoundingFlushToZeroAndDenormalsAreZero) { checkFrame(lookIn<frame::Mxcsr>, 0xE040, -1); }
TEST(Frame, X87At53BitsLeavesMxcsrToTheCaller) { checkFrame(lookIn<frame::X87<53>>, 0, 0x0200); }
TEST(Frame, X87At64BitsLeavesMxcsrToTheCaller) { checkFrame(lookIn<frame::X87<64>>, 0, 0x0300); }
TEST(Frame, DoubleGuardKeepsTheCallersDenormalsAreZero) { checkFrame(lookIn<frame::DoubleGuard>, 0xE000, 0x0300); }

TEST(Frame, ReturnsTheStatusThatTheBodyStoredLast) {
    const auto body = [](Real64*, std::int32_t, OktStatus& status) {
        status = oktStatusDomain;
        status = oktStatusSingularity;
    };
    EXPECT_EQ(frame::call<frame::Plain>(body, 1, array), oktStatusSingularity);
}

TEST(StatusFlag, RaisesTheFlagOfItsCodeAndNothingForOtherCodes) {
    constexpr std::uint32_t invalid = 1, divideByZero = 4, overflow = 8, underflow = 16, inexact = 32;
    for (const auto& [code, flags] :
         {std::pair(oktStatusOverflow, overflow | inexact), std::pair(oktStatusUnderflow, underflow | inexact),
          std::pair(oktStatusSingularity, divideByZero), std::pair(oktStatusDomain, invalid),
          std::pair(oktStatusOk, 0u), std::pair(oktStatusBadLength, 0u)}) {
        const ScopedControlState scope({});
        raiseStatusFlag(code);
        EXPECT_EQ(controlState().mxcsr, defaultMxcsr | flags) << code;
    }
}

}  // namespace
}  // namespace okt::test
