// The upper lanes of wide registers are clear behind every call: a caller's instructions of 128 bits would wait for
// them.
#include "support/call.h"

#include <cpuid.h>

#include <algorithm>

namespace okt::test {
namespace {

bool tellsStateInUse() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned osxsave = 1u << 27, xgetbvWithOne = 1u << 2;
    return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & osxsave) != 0 && __get_cpuid_count(13, 1, &a, &b, &c, &d) != 0 &&
           (a & xgetbvWithOne) != 0;
}

// The upper halves of the 256-bit and of the 512-bit registers 0 to 15, as far as they hold something.
unsigned upperLanesInUse() {
    unsigned low = 0, high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(1));
    return low & 0x44u;
}

class UpperLanes : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Clear, UpperLanes, testing::ValuesIn(builtExports()), exportName);

TEST_P(UpperLanes, HoldNothingBehindACall) {
    if (!tellsStateInUse()) GTEST_SKIP() << "the processor does not tell which registers are in use";
    const Export& f = *GetParam();
    int seen[2] = {};
    for (const std::int32_t len : {0, 1, 7, 8, 40, 300}) {
        for (const auto& sourcesOf : {ordinarySources, mixedSources}) {
            const Sources sources = sourcesOf(f, std::max(len, 1), 500);
            Bytes dst1(destinationBytes(f, 300)), dst2(destinationBytes(f, 300));
            const Arguments arguments{sources.src1.data(), sources.src2.data(), sources.scalar.data(),
                                      dst1.data(),         dst2.data(),         len};
            const unsigned before = upperLanesInUse();
            f.call(arguments);
            const unsigned after = upperLanesInUse();
            if (before == 0) {
                ASSERT_EQ(after, 0u) << f.name << ", length " << len;
            }
            ++seen[before == 0];
        }
    }
    EXPECT_GT(seen[true], 0) << "something else uses wide registers between all calls";
}

}  // namespace
}  // namespace okt::test
