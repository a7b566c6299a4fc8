// What every export computes under, and what its caller finds in MXCSR and the x87 control word afterwards.
#include "support/control_state.h"
#include "support/call.h"

#include <thread>

namespace okt::test {
namespace {

class ControlStateOf : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Control, ControlStateOf, testing::ValuesIn(builtExports()), exportName);

TEST_P(ControlStateOf, LeavesTheControlRegistersAsItFoundThem) {
    const Export& f = *GetParam();
    for (const std::int32_t len : {3, 40}) {
        const Sources sources = mixedSources(f, len, 300);
        for (const ControlState& state : allControlStates()) {
            ControlState after;
            {
                const ScopedControlState scope(state);
                call(f, sources, len);
                after = controlState();
            }
            ASSERT_EQ(after.x87, state.x87) << f.name;
            ASSERT_EQ(after.mxcsr & ~stickyFlags, state.mxcsr & ~stickyFlags) << f.name;
            ASSERT_EQ(after.mxcsr & state.mxcsr & stickyFlags, state.mxcsr & stickyFlags)
                << f.name << " cleared a flag";
            if (state.mxcsr & clearedMxcsrBits(f.frame)) {
                ASSERT_EQ(after.mxcsr, state.mxcsr) << f.name << " kept a flag";
            }
        }
    }
}

// Which functions the header says to raise flags of the x87 unit: all that work in extended precision.
TEST_P(ControlStateOf, RaisesFlagsOfTheX87UnitInExtendedPrecisionAloneAndClearsNone) {
    const Export& f = *GetParam();
    const bool extended = f.frame == Frame::x87_64 || f.frame == Frame::doubleGuard;
    const FloatingState own = floatingState();
    FloatingState flagged;
    flagged.x87Flags = stickyFlags;
    std::uint16_t raised = 0, kept = stickyFlags;
    for (const std::uint64_t seed : {310u, 311u, 312u, 313u}) {
        const Sources sources = mixedSources(f, 67, seed);
        setFloatingState({});
        call(f, sources, 67);
        raised |= floatingState().x87Flags;
        setFloatingState(flagged);
        call(f, sources, 67);
        kept &= floatingState().x87Flags;
    }
    setFloatingState(own);
    EXPECT_EQ(raised != 0, extended);
    EXPECT_EQ(kept, stickyFlags);
}

TEST_P(ControlStateOf, ComputesTheSameUnderEverySettingItsGuardCovers) {
    const Export& f = *GetParam();
    const std::int32_t len = 67;
    for (const auto& sourcesOf : {mixedSources, mixtureSources, unitSources}) {
        const Sources sources = sourcesOf(f, len, 301);
        const Outcome expected = call(f, sources, len);
        for (const ControlState& state : allControlStates()) {
            // What the guard does not cover stays at the default; without an x87 guard there is no x87 arithmetic
            // either.
            const std::uint32_t covered = clearedMxcsrBits(f.frame) | stickyFlags;
            const ScopedControlState scope({(state.mxcsr & covered) | defaultMxcsr, state.x87});
            const Outcome actual = call(f, sources, len);
            ASSERT_TRUE(sameOutcome(f, sources, expected, actual))
                << std::hex << "MXCSR " << state.mxcsr << ", x87 " << state.x87;
        }
    }
}

TEST_P(ControlStateOf, RunsOnEightThreadsOverSharedSources) {
    const Export& f = *GetParam();
    const std::int32_t len = 501;
    const Sources sources = mixedSources(f, len, 302);
    const Outcome expected = call(f, sources, len);
    std::vector<Outcome> outcomes(8);
    std::vector<std::thread> threads;
    for (Outcome& outcome : outcomes)
        threads.emplace_back([&] {
            for (int repeat = 0; repeat < 4; ++repeat) outcome = call(f, sources, len);
        });
    for (std::thread& thread : threads) thread.join();
    for (const Outcome& outcome : outcomes) EXPECT_TRUE(sameOutcome(f, sources, expected, outcome));
}

}  // namespace
}  // namespace okt::test
