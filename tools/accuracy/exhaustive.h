// All values of a single-precision argument through a function, against the exact results.
//
// A long double formula is the quick reference: 40 bits beyond the result's type. The worst inputs it finds, and a
// sample of all others, are measured again against the exact reference; only those errors are reported.
#pragma once

#include "accuracy.h"

#include <cstdint>
#include <functional>
#include <string>

namespace okt::accuracy {

struct ExhaustiveOptions {
    std::uint32_t from = 0, to = 0xFFFFFFFF;  // bit patterns, both included
    std::uint32_t stride = 1;                 // one pattern in so many, not always the same one of them; a power of two
    Path path = Path::block;
    double floor = 0;  // as Yardstick has it
    unsigned threads = 1;
    std::function<void(double)> progress;  // called now and then with the share done, from one thread
};

struct ExhaustiveResult {
    std::uint64_t measured = 0, skipped = 0;  // skipped: no finite argument or no finite exact result
    int parts = 1;
    std::array<std::uint64_t, maxParts> correctlyRounded{};
    std::array<LargestError, maxParts> largest;
    // The largest difference, in ulp, between the quick and the exact reference over all points that saw both.
    double quickReferenceError = 0;
};

// Functions of one Real32 source with a quick reference.
bool canRunExhaustively(const Export& function);
ExhaustiveResult runExhaustively(const Export& function, const ExhaustiveOptions& options);
std::string describe(const Export& function, const ExhaustiveOptions& options, const ExhaustiveResult& result);

}  // namespace okt::accuracy
