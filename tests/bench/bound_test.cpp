// Finding the steady loop of a call, and the bound of a sequence of instructions. The processor is named, so that the
// figures do not depend on the machine.
#include "machine_model.h"
#include "process.h"
#include "trace.h"
#include "workload.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace okt::bench {
namespace {

const std::string processor = "skylake-avx512";

Bound boundOf(const std::vector<std::string>& instructions) {
    static MachineModel model(processor);
    return model.bound(instructions);
}

// The loop of a call over so many elements, without addresses where the system does not let processes be traced.
SteadyLoop loopOf(const char* name, std::size_t length) {
    const Export* function = findExport(name);
    if (!function) throw std::invalid_argument(name);
    const Workload workload(*function, length);
    std::vector<std::uint64_t> trace;
    try {
        trace = traceCall(*function, workload.arguments());
    } catch (const std::runtime_error&) {
        return {};
    }
    return steadyLoop(trace, length);
}

Bound boundOf(const SteadyLoop& loop) {
    const Listing listing = disassemble(loadedLibrary().path);
    std::vector<std::string> instructions;
    for (const std::uint64_t address : loop.addresses) instructions.push_back(listing.at(address));
    return boundOf(instructions);
}

TEST(SteadyLoop, IsTheRepeatedPartBetweenBeginAndEnd) {
    std::vector<std::uint64_t> trace{900, 904, 908};
    for (int iteration = 0; iteration < 64; ++iteration) trace.insert(trace.end(), {20, 24, 28, 24, 28, 40});
    trace.insert(trace.end(), {950, 954});
    const SteadyLoop loop = steadyLoop(trace, 256);
    EXPECT_TRUE(loop.periodic);
    EXPECT_EQ(loop.addresses, (std::vector<std::uint64_t>{20, 24, 28, 24, 28, 40}));
    EXPECT_EQ(loop.elements, 4);
}

TEST(SteadyLoop, CountsElementsWhateverTheSurroundingsCompute) {
    // 1000 elements in loops of 16, the last eight one by one at eight times the cost.
    std::vector<std::uint64_t> trace(40, 900);
    for (int iteration = 0; iteration < 62; ++iteration) trace.insert(trace.end(), {20, 24, 28, 32});
    for (int element = 0; element < 8; ++element) trace.insert(trace.end(), {60, 64});
    const SteadyLoop loop = steadyLoop(trace, 1000);
    EXPECT_TRUE(loop.periodic);
    EXPECT_EQ(loop.elements, 16);
}

TEST(SteadyLoop, TakesAWindowWhereThePathFollowsTheData) {
    std::vector<std::uint64_t> trace;
    unsigned state = 1;
    for (int element = 0; element < 1000; ++element) {
        state = state * 1664525 + 1013904223;
        trace.insert(trace.end(), {20, state >> 31 ? 24u : 28u, 32, 36});
    }
    const SteadyLoop loop = steadyLoop(trace, 1000, 400);
    EXPECT_FALSE(loop.periodic);
    EXPECT_EQ(loop.addresses.size(), 400u);
    EXPECT_EQ(loop.elements, 100);
}

TEST(Process, GetsItsArgumentsAsTheyStand) {
    const std::vector<std::string> odd{"two words", "-mcpu=(unknown)", "$HOME `x` \"y\" 'z' ; | > < * \\"};
    std::vector<std::string> command{"printf", "%s\\n"};
    command.insert(command.end(), odd.begin(), odd.end());
    EXPECT_EQ(linesOf(command), odd);
}

TEST(Process, ReadsItsInputAndPrintsMoreThanAPipeHolds) {
    std::string text;
    std::vector<std::string> lines;
    for (int i = 0; i < 50000; ++i) text += lines.emplace_back("line " + std::to_string(i)) + '\n';
    EXPECT_EQ(linesOf({"cat"}, text), lines);
    EXPECT_EQ(linesOf({"cat"}), std::vector<std::string>{});
}

TEST(Process, ThatFailsOrIsNotThereThrows) {
    EXPECT_THROW(linesOf({"false"}), std::runtime_error);
    EXPECT_THROW(linesOf({"/there/is/no such program"}), std::runtime_error);
}

TEST(Host, IsReadFromTheVersion) {
    EXPECT_EQ(hostIn({"LLVM version 14.0.6", "  Optimized build.", "  Host CPU: skylake-avx512", "  x86 - 32-bit"}),
              "skylake-avx512");
    EXPECT_EQ(hostIn({"LLVM version 14.0.6", "  Host CPU: (unknown)"}), "");
    EXPECT_EQ(hostIn({"LLVM version 14.0.6"}), "");
}

TEST(Host, HasAStandInWhereItIsUnknownAndTheDescriptionSaysSo) {
    MachineModel unknown("", "");
    EXPECT_EQ(unknown.processor(), standInProcessor);
    EXPECT_EQ(unknown.description(), "modelled as x86-64-v4, the host is unknown to llvm-mca");
    EXPECT_TRUE(unknown.standsIn());
    EXPECT_EQ(unknown.bound({"divpd %xmm0, %xmm1", "addpd %xmm2, %xmm3"}).cycles, 4);
    EXPECT_EQ(unknown.bound({"movaps (%rax), %xmm0", "movaps %xmm0, (%rdx)"}).cycles, 1);

    const MachineModel known("", processor), named(processor, "");
    EXPECT_EQ(known.description(), processor + " in llvm-mca");
    EXPECT_EQ(named.description(), processor + " in llvm-mca");
    EXPECT_FALSE(known.standsIn() || named.standsIn());
}

TEST(Host, HasAModel) {  // whatever processor this runs on
    MachineModel model;
    EXPECT_GT(model.bound({"addpd %xmm2, %xmm3"}).cycles, 0);
}

TEST(MachineModel, CountsPortGroupsTogether) {
    // Multiplications go to two ports, logic to these and a third: ten operations on three ports.
    std::vector<std::string> code;
    for (const char* target : {"1", "2", "3", "4"}) code.push_back(std::string("mulpd %xmm0, %xmm") + target);
    for (const char* target : {"5", "6", "7", "8", "9", "10"}) code.push_back(std::string("pand %xmm0, %xmm") + target);
    const Bound bound = boundOf(code);
    EXPECT_EQ(bound.instructions, 10u);
    EXPECT_EQ(bound.operations, 10);
    EXPECT_DOUBLE_EQ(bound.cycles, 10.0 / 3);
    EXPECT_EQ(bound.limit, "ports 0 1 5");
    EXPECT_GE(bound.simulated, bound.cycles);
}

TEST(MachineModel, KnowsShufflesDividerLoadsAndStores) {
    const Bound shuffles = boundOf({"unpcklpd %xmm0, %xmm1", "unpckhpd %xmm0, %xmm2", "addpd %xmm0, %xmm3"});
    EXPECT_EQ(shuffles.cycles, 2);
    EXPECT_EQ(shuffles.limit, "port 5");
    const Bound division = boundOf({"divpd %xmm0, %xmm1", "addpd %xmm2, %xmm3"});
    EXPECT_EQ(division.cycles, 4);
    EXPECT_EQ(division.limit, "divider");
    const Bound loads = boundOf({"movaps (%rax), %xmm0", "movaps 16(%rax), %xmm1", "movaps 32(%rax), %xmm2"});
    EXPECT_EQ(loads.cycles, 1.5);
    EXPECT_EQ(loads.limit, "loads");
    const Bound stores = boundOf({"movaps %xmm0, (%rax)", "movaps %xmm1, 16(%rax)"});
    EXPECT_EQ(stores.cycles, 2);
    EXPECT_EQ(stores.limit, "stores");
}

TEST(MachineModel, StoresWithAnIndexTakeTheUnitsOfLoads) {
    const std::vector<std::string> loads{"movaps (%rsi), %xmm0", "movaps 16(%rsi), %xmm1"};
    std::vector<std::string> plain = loads, indexed = loads;
    plain.emplace_back("movaps %xmm2, (%rdx)");
    indexed.emplace_back("movaps %xmm2, (%rdx,%rax,8)");
    EXPECT_EQ(boundOf(plain).cycles, 1);
    EXPECT_EQ(boundOf(indexed).cycles, 1.5);
    EXPECT_EQ(boundOf(indexed).limit, "loads and indexed stores");
}

TEST(MachineModel, CountsWhatTheFrontEndFuses) {
    const auto operations = [](const std::vector<std::string>& code) { return boundOf(code).operations; };
    EXPECT_EQ(operations({"addpd (%rax), %xmm0"}), 1);              // with its load
    EXPECT_EQ(operations({"movaps %xmm0, (%rax)"}), 1);             // both halves
    EXPECT_EQ(operations({"cmpq %rax, %rbx", "jb 0x10"}), 1);       // comparison and jump
    EXPECT_EQ(operations({"cmpltpd %xmm0, %xmm1", "jb 0x10"}), 2);  // not a comparison of integers
    EXPECT_EQ(operations({"movapd %xmm0, %xmm1", "pxor %xmm2, %xmm2"}), 2);
}

TEST(MachineModel, GivesMovesAndZeroingNoPort) {
    const std::vector<std::string> code(6, "movapd %xmm0, %xmm1");
    const Bound bound = boundOf(code);
    EXPECT_EQ(bound.cycles, 1.5);
    EXPECT_EQ(bound.limit, "front end");
}

TEST(JumpLines, AreThoseWhereAJumpEndsAtOrCrossesABoundary) {
    const auto share = [](std::uint64_t compare, std::uint64_t jump, std::uint64_t end) {
        const Listing listing{
            {0x100, "addpd %xmm0, %xmm1"}, {compare, "cmpq %rax, %rbx"}, {jump, "jb 0x100"}, {end, "retq"}};
        return shareOfJumpLines({0x100, compare, jump}, listing);
    };
    EXPECT_EQ(share(0x110, 0x113, 0x115), 0);
    EXPECT_EQ(share(0x11b, 0x11e, 0x120), 1);  // ends there
    EXPECT_EQ(share(0x11d, 0x120, 0x122), 1);  // the comparison is a part of the jump
    EXPECT_EQ(share(0x120, 0x123, 0x125), 0);
    EXPECT_EQ(share(0x13b, 0x13e, 0x140), 0.5);  // one line of two
}

TEST(MachineModel, CountsCallsAndExtendedPrecision) {
    const Bound bound = boundOf({"callq 0x1234", "fldl (%rax)", "fmul %st(1), %st", "fxch %st(1)", "retq"});
    EXPECT_EQ(bound.calls, 1u);
    EXPECT_EQ(bound.x87, 3u);
    EXPECT_LT(bound.simulated, 50);  // a call is not the hundred cycles that llvm-mca assumes for it
}

TEST(BoundOfLibrary, AddIsALoopOfAFewElements) {
    const SteadyLoop loop = loopOf("oktsAdd_64f_A53", 512);
    if (loop.addresses.empty()) GTEST_SKIP() << "processes may not be traced here";
    EXPECT_TRUE(loop.periodic);
    EXPECT_GE(loop.elements, 2);
    EXPECT_LE(loop.elements, 32);
    const Bound bound = boundOf(loop);
    // Two loads and a store for two elements: a cycle at least, and no more than three with all loop control.
    EXPECT_GE(bound.cycles / loop.elements, 0.5);
    EXPECT_LE(bound.cycles / loop.elements, 1.5);
    EXPECT_EQ(bound.calls, 0u);
    EXPECT_EQ(bound.x87, 0u);
}

TEST(BoundOfLibrary, ExpRunsOneLoopOnOrdinaryArguments) {
    const SteadyLoop loop = loopOf("oktsExp_64f_A53", 512);
    if (loop.addresses.empty()) GTEST_SKIP() << "processes may not be traced here";
    EXPECT_TRUE(loop.periodic);
    EXPECT_EQ(loop.elements, 8);  // the block of the contract
    const Bound bound = boundOf(loop);
    EXPECT_GE(bound.cycles / loop.elements, 3);
    EXPECT_LE(bound.cycles / loop.elements, 12);
}

}  // namespace
}  // namespace okt::bench
