// One call of two builds of the library, and what they leave behind.
#pragma once

#include "library.h"
#include "random_call.h"

#include <string>
#include <string_view>
#include <vector>

namespace okt::compare {

// What differs: "result" (an element of a destination), "elsewhere" (a byte around the destinations), "status",
// "mxcsr-control", "x87-control", "x87-stack" (values left on it), the sticky flags "mxcsr-overflow", "x87-inexact" and
// so on, and "version" (the version record).
struct Difference {
    std::string_view kind;
    std::string text;  // both values, and for a result its element
};

// All kinds there are.
const std::vector<std::string_view>& kinds();

class Comparison {
public:
    Comparison(const Library& first, const Library& second) : sides_{Side(first), Side(second)} {}

    // Makes the call on both sides. Nothing is allocated as long as nothing differs.
    std::vector<Difference> run(const RandomCall& call);

private:
    struct Side {
        explicit Side(const Library& l) : library(&l) {}
        void run(const RandomCall& call);

        const Library* library;
        std::vector<std::byte> memory;
        std::byte* begin = nullptr;  // aligned, in memory
        OktStatus status = oktStatusOk;
        test::FloatingState state;
    };

    void compareMemory(const RandomCall& call, std::vector<Difference>& differences) const;
    void compareState(const RandomCall& call, std::vector<Difference>& differences) const;

    Side sides_[2];
};

// The version records of two builds.
std::vector<Difference> compareVersions(const Library& first, const Library& second);

// The call that this thread makes, for what is said when it does not return.
struct CurrentCall {
    const char* name = nullptr;
    std::uint64_t seed = 0;
    const char* library = nullptr;
};
const CurrentCall& currentCall();

}  // namespace okt::compare
