// Bit access of the models.
#pragma once

#include <bit>
#include <cstdint>

namespace okt::model {

inline std::uint32_t asBits(float x) { return std::bit_cast<std::uint32_t>(x); }
inline std::uint64_t asBits(double x) { return std::bit_cast<std::uint64_t>(x); }
inline float fromBits(std::uint32_t pattern) { return std::bit_cast<float>(pattern); }
inline double fromBits(std::uint64_t pattern) { return std::bit_cast<double>(pattern); }

} // namespace okt::model
