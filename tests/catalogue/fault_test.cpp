// A length far beyond the arrays: the call faults, and it does so within one block behind the end of one of them, not
// anywhere else. POSIX only, since the test returns from the signal handler by a jump.
#ifndef _WIN32

#include "support/call.h"
#include "support/control_state.h"
#include "support/guarded.h"

#include <algorithm>
#include <csetjmp>
#include <csignal>
#include <limits>

namespace okt::test {
namespace {

sigjmp_buf afterFault;
const std::byte* volatile faultAddress;

void onFault(int, siginfo_t* info, void*) {
    faultAddress = static_cast<const std::byte*>(info->si_addr);
    siglongjmp(afterFault, 1);
}

class ScopedFaultHandler {
public:
    ScopedFaultHandler() {
        struct sigaction action = {};
        action.sa_sigaction = onFault;
        action.sa_flags = SA_SIGINFO;
        sigaction(SIGSEGV, &action, &previous_);
    }
    ~ScopedFaultHandler() { sigaction(SIGSEGV, &previous_, nullptr); }
    ScopedFaultHandler(const ScopedFaultHandler&) = delete;
    ScopedFaultHandler& operator=(const ScopedFaultHandler&) = delete;

private:
    struct sigaction previous_ = {};
};

// False when the call returned.
[[gnu::noinline]] bool faults(const Export& f, const Arguments& a) {
    const ControlState before = controlState();
    faultAddress = nullptr;
    if (sigsetjmp(afterFault, 1) == 0) {
        f.call(a);
        return false;
    }
    asm volatile("fninit");  // the jump may have left values on the register stack
    setX87ControlWord(before.x87);
    _mm_setcsr(before.mxcsr);
    return true;
}

class FaultOf : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Catalogue, FaultOf, testing::ValuesIn(builtExports()), exportName);

TEST_P(FaultOf, AHugeLengthComesRightBehindAnArray) {
    const Export& f = *GetParam();
    const ScopedFaultHandler handler;
    for (const std::int32_t elements : {1, 2, 7, 64, 333}) {
        const Sources sources = mixedSources(f, elements, 5);
        const std::size_t out = destinationBytes(f, elements);
        GuardedMemory src1(sources.src1.size()), src2(std::max<std::size_t>(sources.src2.size(), 1)), dst1(out),
            dst2(out);
        std::byte* const first = src1.end() - sources.src1.size();
        std::byte* const second = src2.end() - sources.src2.size();
        std::ranges::copy(sources.src1, first);
        std::ranges::copy(sources.src2, second);
        const Arguments arguments{first,
                                  second,
                                  sources.scalar.data(),
                                  dst1.end() - out,
                                  dst2.end() - out,
                                  std::numeric_limits<std::int32_t>::max()};
        ASSERT_TRUE(faults(f, arguments)) << elements << " elements";
        const std::byte* const at = faultAddress;
        const auto rightBehind = [at](const GuardedMemory& memory) {
            constexpr std::ptrdiff_t largestBlock = 512;  // bytes
            return at >= memory.end() && at - memory.end() < largestBlock;
        };
        EXPECT_TRUE(rightBehind(src1) || rightBehind(src2) || rightBehind(dst1) || rightBehind(dst2))
            << f.name << ", " << elements << " elements: source " << at - src1.end() << " and " << at - src2.end()
            << ", destination " << at - dst1.end() << " and " << at - dst2.end() << " bytes behind the end";
    }
}

}  // namespace
}  // namespace okt::test

#endif
