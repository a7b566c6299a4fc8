// What the functions are measured with: arguments spread over each function's ordinary range, in aligned arrays.
#pragma once

#include "registry.h"

#include <cstddef>
#include <memory>

namespace okt::bench {

// How arguments are spread: evenly, or evenly in their logarithm, alone or with either sign.
enum class Spread { even, logarithmic, logarithmicBothSigns };

inline constexpr double usualScalar = 1.7;

struct Range {
    Spread spread = Spread::even;
    double low = -10, high = 10;
};

struct Ranges {
    Range src1, src2;
    double scalar = usualScalar;
};

// What the family's descriptor asks the benchmark to draw; both parts of a complex argument are drawn from src1 or
// src2.
Ranges rangesOf(std::string_view family, bool complexElements);

// Arrays for one function at one length. Destinations are written once, so that their memory is there.
class Workload {
public:
    Workload(const Export& function, std::size_t length);
    const Arguments& arguments() const { return arguments_; }
    std::size_t bytes() const { return bytes_; }

private:
    struct Free {
        void operator()(void* memory) const;
    };
    using Memory = std::unique_ptr<void, Free>;
    void* allocate(Memory& memory, std::size_t size);

    Memory src1_, src2_, dst1_, dst2_;
    alignas(16) unsigned char scalar_[16] = {};
    Arguments arguments_;
    std::size_t bytes_ = 0;
    int arrays_ = 0;
};

// Bytes of all arrays of one element.
std::size_t bytesPerElement(const Export& function);

}  // namespace okt::bench
