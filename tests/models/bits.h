// Bit patterns of floating-point values and back.
#pragma once

#include "oktvm_types.h"

#include <bit>
#include <cstdint>

namespace okt::model {

constexpr std::uint32_t asBits(Real32 value) { return std::bit_cast<std::uint32_t>(value); }

constexpr std::uint64_t asBits(Real64 value) { return std::bit_cast<std::uint64_t>(value); }

constexpr Real32 fromBits(std::uint32_t pattern) { return std::bit_cast<Real32>(pattern); }

constexpr Real64 fromBits(std::uint64_t pattern) { return std::bit_cast<Real64>(pattern); }

}  // namespace okt::model
