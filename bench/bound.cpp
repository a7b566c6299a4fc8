// How far each function is from what its machine code allows: the loop that a long call repeats is found by stepping
// through one, its bound comes from llvm-mca's model of the processor, and its time from many short rounds that take
// turns with a chain of additions, which tells the clock.
//
//   okt_bound [NAME...] [--markdown FILE] [--listing] ...
#include "machine_model.h"
#include "measure.h"
#include "trace.h"
#include "workload.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace okt::bench;

struct Options {
    std::vector<std::string> names;
    std::string processor, markdown;
    std::size_t length = 0, traced = 512;
    int rounds = 400, passes = 5;
    double above = 0;
    bool listing = false, worstFirst = false;
};

struct Row {
    const okt::Export* function = nullptr;
    SteadyLoop loop;
    Bound bound;               // of the whole loop
    double nanoseconds = 1e9;  // an element
    double addition = 1e9;     // nanoseconds of an addition, which are those of a cycle

    double perElement(double cycles) const { return cycles / loop.elements; }
    bool jumpLines = false;  // a jump at a 32-byte boundary slows a good part of the loop

    double measured() const { return nanoseconds / addition; }
    double ratio() const { return measured() / perElement(bound.cycles); }
    double toSimulation() const { return measured() / perElement(bound.simulated); }
    std::string marks() const {
        std::string marks;
        if (!loop.periodic) marks += " branches";
        if (bound.calls > 0) marks += " calls";
        if (bound.x87 > 0) marks += " x87";
        if (jumpLines) marks += " boundary";
        return marks.empty() ? marks : marks.substr(1);
    }
};

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// Additions that wait for each other: one a cycle.
double secondsOfAdditions(long count) {
    unsigned long sum = 0, step = 1;
    const auto start = Clock::now();
    for (long i = 0; i < count; i += 40) asm volatile(".rept 40\n\tadd %1, %0\n\t.endr" : "+r"(sum) : "r"(step));
    return secondsSince(start);
}

// Four chains of additions side by side: as many a cycle as the processor takes, up to four, unless it shares the core.
double secondsOfFourChains(long count) {
    unsigned long a = 0, b = 0, c = 0, d = 0, step = 1;
    const auto start = Clock::now();
    for (long i = 0; i < count; i += 160)
        asm volatile(".rept 40\n\tadd %4, %0\n\tadd %4, %1\n\tadd %4, %2\n\tadd %4, %3\n\t.endr"
                     : "+r"(a), "+r"(b), "+r"(c), "+r"(d)
                     : "r"(step));
    return secondsSince(start);
}

// How much of the core there was for the measurements: additions a cycle in the rounds of all functions.
class Core {
public:
    void note(double cycle, double fourChains) {  // nanoseconds of an addition in one chain and in four
        cycle_ = std::min(cycle_, cycle);
        rounds_.push_back(fourChains);
    }
    double best() const { return cycle_ / at(0.01); }  // short of the luckiest reading of the clock
    double median() const { return cycle_ / at(0.5); }

private:
    double at(double quantile) const {
        std::vector<double> sorted = rounds_;
        std::ranges::sort(sorted);
        return sorted[static_cast<std::size_t>(quantile * static_cast<double>(sorted.size() - 1))];
    }
    double cycle_ = 1e9;
    std::vector<double> rounds_;
};

// A length at which all arrays stay in the first cache together.
std::size_t cachedLength(const okt::Export& function) {
    constexpr std::size_t room = 24 << 10, most = 2048;
    std::size_t length = most;
    while (length * bytesPerElement(function) > room) length /= 2;
    return length;
}

// Improves the times of the row by a pass of rounds.
void time(Row& row, const Options& options, Core& core) {
    const std::size_t length = options.length > 0 ? options.length : cachedLength(*row.function);
    const Workload workload(*row.function, length);
    const auto secondsOfCalls = [&](long calls) {
        const auto start = Clock::now();
        for (long i = 0; i < calls; ++i) row.function->call(workload.arguments());
        return secondsSince(start);
    };
    // Short, so that some rounds fall between the disturbances of a machine that is shared.
    constexpr double turn = 4e-6;
    constexpr long additions = 4000;  // a multiple of what the loops hold
    secondsOfCalls(1);
    const long calls = std::clamp(static_cast<long>(turn / secondsOfCalls(1)), 1L, 1000000L);
    const double elements = static_cast<double>(calls) * static_cast<double>(length);
    for (int round = 0; round < options.rounds; ++round) {
        row.addition = std::min(row.addition, secondsOfAdditions(additions) * 1e9 / additions);
        row.nanoseconds = std::min(row.nanoseconds, secondsOfCalls(calls) * 1e9 / elements);
        core.note(row.addition, secondsOfFourChains(additions) * 1e9 / additions);
    }
}

Row examine(const okt::Export& function, const Options& options, const Listing& listing, MachineModel& model) {
    const Workload workload(function, options.traced);
    Row row;
    row.function = &function;
    row.loop = steadyLoop(traceCall(function, workload.arguments()), options.traced);
    std::vector<std::string> instructions;
    for (const std::uint64_t address : row.loop.addresses) instructions.push_back(listing.at(address));
    row.bound = model.bound(instructions);
    row.jumpLines =
        row.loop.periodic && hasJumpErratum(model.processor()) && shareOfJumpLines(row.loop.addresses, listing) >= 0.2;
    return row;
}

void print(const Row& row) {
    fmt::print("{:<26} {:>5.0f} {:>7} {:>7.2f} {:>8.3f}  {:<24} {:>9.3f} {:>9.3f} {:>7.2f} {:>7.2f}  {}\n",
               row.function->name, row.loop.elements, row.bound.instructions, row.perElement(row.bound.operations),
               row.perElement(row.bound.cycles), row.bound.limit, row.perElement(row.bound.simulated), row.measured(),
               row.ratio(), row.toSimulation(), row.marks());
}

std::string section(const std::vector<Row>& rows, const MachineModel& model, const Core& core) {
    std::string text = fmt::format(
        R"(## Distance from the bound of the machine code

What each function repeats on arrays in the first cache, found by stepping through a call, and the fewest cycles in
which the processor ({}) can execute it: operations over the width of the front end,
or over the ports that can take them, or cycles of the divider, whichever is most. *Simulated* adds latencies and the
size of the buffers as llvm-mca models them, but no waiting for what was stored just before. *Instructions* and
*Elements* are those of one repetition, all other figures are for one element; the two *distances* are measured cycles
over the bound and over the simulation. A function's time is the best of many short rounds; four chains of additions ran
at {:.2f} a cycle in the best of the rounds and at {:.2f} in the middle one. Where the two differ, other work shared the
core, and the measured figures may be too high. Remarks:

- branches: the path depends on the data. The figures are those of some hundred elements as they were executed, without
  the cost of mispredicted branches.
- calls: a routine for single elements, or another one that is not inlined, is called.
- x87: extended precision. The model knows nothing of its latencies, so that the bound is far too low.
- boundary: a jump ends at or crosses a 32-byte boundary of a short loop. The processor may lose time there, which
  the bound does not count, and another placement of the code changes it.

| Function | Elements | Instructions | Operations | Bound | Limited by | Simulated | Measured | From bound | From simulation | Remarks |
| --- | ---: | ---: | ---: | ---: | --- | ---: | ---: | ---: | ---: | --- |
)",
        model.standsIn() ? model.description() : "as llvm-mca models it", core.best(), core.median());
    for (const Row& row : rows) {
        text += fmt::format("| {} | {:.0f} | {} | {:.2f} | {:.2f} | {} | {:.2f} | {:.2f} | {:.2f} | {:.2f} | {} |\n",
                            labelOf(*row.function), row.loop.elements, row.bound.instructions,
                            row.perElement(row.bound.operations), row.perElement(row.bound.cycles), row.bound.limit,
                            row.perElement(row.bound.simulated), row.measured(), row.ratio(), row.toSimulation(),
                            row.marks());
    }
    return text;
}

int run(const Options& options) {
    std::vector<const okt::Export*> functions;
    for (const std::string& name : options.names) {
        functions.push_back(okt::findExport(name));
        if (!functions.back()) {
            fmt::print(stderr, "okt_bound: there is no function {}\n", name);
            return 2;
        }
    }
    if (functions.empty()) functions = routines();

    const Listing listing = disassemble(loadedLibrary().path);
    MachineModel model(options.processor);
    std::vector<Row> rows;
    for (const okt::Export* function : functions) {
        fmt::print(stderr, "{:>3} of {}: {}\n", rows.size() + 1, functions.size(), function->name);
        rows.push_back(examine(*function, options, listing, model));
    }
    Core core;
    // What disturbs the machine for a while meets a function in one pass only.
    for (int pass = 0; pass < options.passes; ++pass)
        for (Row& row : rows) time(row, options, core);

    if (!options.markdown.empty()) {
        std::ofstream file(options.markdown);
        file << section(rows, model, core);
        file.close();
        if (!file) throw std::runtime_error("cannot write " + options.markdown);
    }
    if (options.worstFirst) std::ranges::sort(rows, std::greater(), &Row::ratio);
    fmt::print("{}\n{:<26} {:>5} {:>7} {:>7} {:>8}  {:<24} {:>9} {:>9} {:>7} {:>7}\n", model.description(), "function",
               "elem", "instr", "ops/el", "bound/el", "limited by", "simulated", "measured", "/bound", "/sim");
    for (const Row& row : rows) {
        if (row.ratio() < options.above) continue;
        print(row);
        if (options.listing)
            for (const std::uint64_t address : row.loop.addresses)
                fmt::print("    {:6x}  {}\n", address, listing.at(address));
    }
    fmt::print("four chains of additions: {:.2f} a cycle at best, {:.2f} in the middle of the rounds\n", core.best(),
               core.median());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("How far functions are from the bound of their machine code", "okt_bound");
    app.add_option("names", options.names, "The exported functions; all routines without any");
    app.add_option(
        "--mcpu", options.processor,
        "llvm-mca's name of the processor; by default the host, or a stand-in where llvm-mca does not know it");
    app.add_option("--length", options.length, "Elements of the timed call; by default what fits the first cache")
        ->check(CLI::Range(1, 1 << 24));
    app.add_option("--traced", options.traced, "Elements of the call that is stepped through")
        ->check(CLI::Range(16, 1 << 20))
        ->capture_default_str();
    app.add_option("--rounds", options.rounds, "Rounds of timing in a pass, the best counts")
        ->check(CLI::Range(1, 1000000))
        ->capture_default_str();
    app.add_option("--passes", options.passes, "Passes of timing over all functions")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--above", options.above, "Print functions from this ratio of measured time to bound on");
    app.add_flag("--worst-first", options.worstFirst, "Print all at the end, in the order of that ratio");
    app.add_flag("--listing", options.listing, "Print the instructions of the loop");
    app.add_option("--markdown", options.markdown, "Write the section of docs/performance.md to this file");
    CLI11_PARSE(app, argc, argv);
    try {
        return run(options);
    } catch (const std::exception& error) {
        fmt::print(stderr, "okt_bound: {}\n", error.what());
        return 1;
    }
}
