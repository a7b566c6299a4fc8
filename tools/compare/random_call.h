// A call of an export with all that it depends on, drawn from a seed: arrays and their places, the length, and the
// state of the floating-point units.
#pragma once

#include "registry.h"
#include "support/control_state.h"
#include "support/inputs.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace okt::compare {

// Where an array stands in the memory of a call.
struct Place {
    std::size_t begin = 0, bytes = 0;
    bool isNull = false;
    bool holds(std::size_t at) const { return at >= begin && at < begin + bytes; }
};

struct RandomCall {
    const Export* function = nullptr;
    std::size_t index = 0;  // of the export in okt::exports()
    std::uint64_t seed = 0;
    std::int32_t len = 0;  // rarely none, or negative
    Place src1, src2, dst1, dst2;
    std::array<std::byte, 16> scalar{};
    std::vector<std::byte> memory;  // before the call: the arrays and what is around them
    test::FloatingState state;

    std::size_t elements() const { return len > 0 ? static_cast<std::size_t>(len) : 0; }
    // The arguments when the memory stands at the given address.
    Arguments arguments(std::byte* at) const;
    // Length, places of the arrays to each other, and the elements.
    std::string description() const;
    // The element of the sources at this place, before the call.
    std::string inputs(std::size_t element) const;
};

// The memory of a call must stand at a multiple of this, for its arrays to be aligned as they were meant to be.
inline constexpr std::size_t memoryAlignment = 64;

// The same call for the same export and seed. The object's memory is used again.
void draw(std::size_t exportIndex, std::uint64_t seed, RandomCall& call);

}  // namespace okt::compare
