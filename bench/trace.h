// The machine code that a call executes: each instruction's address, and the loop that repeats in steady state.
#pragma once

#include "registry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace okt::bench {

// Where the library was loaded, and from which file.
struct LoadedLibrary {
    std::string path;
    std::uint64_t base = 0, begin = 0, end = 0;  // addresses in this process: of offset 0, and of all segments
};
LoadedLibrary loadedLibrary();

// Addresses inside the library's file of all instructions that one call executes there, in order. The call runs in a
// child process, a single step at a time. Throws std::runtime_error where the system forbids that.
std::vector<std::uint64_t> traceCall(const Export& function, const Arguments& arguments);

// What the processor repeats in the middle of a long call.
struct SteadyLoop {
    std::vector<std::uint64_t> addresses;  // one iteration as it was executed; all of the window without a period
    double elements = 0;                   // of the array, in these instructions
    bool periodic = false;                 // false: data decide about the path
};

// The smallest period of the middle half of the trace of a call over so many elements. Where branches follow the data
// there is none; then a window of at most `most` instructions is taken as it is.
SteadyLoop steadyLoop(const std::vector<std::uint64_t>& trace, std::size_t length, std::size_t most = 40000);

}  // namespace okt::bench
