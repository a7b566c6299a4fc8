// How documents name the processor.
#include "processor.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace okt::bench {
namespace {

std::string describe(const std::string& text, const std::vector<long>& caches) {
    std::istringstream info(text);
    return describeProcessor(info, caches);
}

const char* const twoProcessors =
    "processor\t: 0\nvendor_id\t: SomeMaker\ncpu family\t: 6\nmodel\t\t: 85\nmodel name\t: Some(R) Brand @ 9GHz\n"
    "cpu MHz\t\t: 2499.998\npower management:\nflags\t\t: fpu sse2 sse4_2 avx avx2 fma avx512f\n\n"
    "processor\t: 1\ncpu family\t: 7\nmodel\t\t: 1\n";

TEST(Processor, IsNamedByWhatItDoes) {
    EXPECT_EQ(describe(twoProcessors, {32 << 10, 1 << 20, 33 << 20}),
              "family 6, model 85, 2.5 GHz, up to AVX-512, caches of 32 KiB, 1 MiB and 33 MiB");
    EXPECT_EQ(describe(twoProcessors, {48 << 10, 0, -1}),
              "family 6, model 85, 2.5 GHz, up to AVX-512, a cache of 48 KiB");
}

TEST(Processor, HasItsWidestInstructionsNamed) {
    EXPECT_EQ(describe("flags\t: sse2 avx avx2 fma\n", {}), "up to AVX2 with FMA");
    EXPECT_EQ(describe("flags\t: avx2 sse2\n", {}), "up to AVX2");
    EXPECT_EQ(describe("flags\t: avx\n", {}), "up to AVX");
    EXPECT_EQ(describe("flags\t: sse2 sse4_2\n", {}), "up to SSE4.2");
    EXPECT_EQ(describe("flags\t: sse2\n", {}), "up to SSE2");
}

TEST(Processor, OfWhichNothingIsKnown) {
    EXPECT_EQ(describe("", {}), "an unknown kind");
    EXPECT_EQ(describe("model name\t: Some(R) Brand\nvendor_id\t: SomeMaker\n", {-1, 0, 0}), "an unknown kind");
}

TEST(Processor, OfThisMachineHasNoBrand) {
    const std::string text = processorDescription();
    EXPECT_TRUE(text.starts_with("family ") || text.starts_with("up to ")) << text;
    EXPECT_EQ(text.find("(R)"), std::string::npos) << text;
}

}  // namespace
}  // namespace okt::bench
