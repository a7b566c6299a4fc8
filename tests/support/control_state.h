// MXCSR and the x87 control word: reading, setting for a scope, and the settings the tests walk through.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <vector>

namespace okt::test {

inline std::uint16_t x87ControlWord() {
    std::uint16_t word;
    asm volatile("fnstcw %0" : "=m"(word));
    return word;
}
inline void setX87ControlWord(std::uint16_t word) { asm volatile("fldcw %0" : : "m"(word) : "memory"); }

struct ControlState {
    std::uint32_t mxcsr = 0x1F80;
    std::uint16_t x87 = 0x037F;
    bool operator==(const ControlState&) const = default;
};

inline ControlState controlState() { return {_mm_getcsr(), x87ControlWord()}; }

inline constexpr std::uint32_t stickyFlags = 0x003F;
inline constexpr std::uint32_t denormalsAreZero = 0x0040;
inline constexpr std::uint32_t flushToZero = 0x8000;
inline constexpr std::uint32_t roundNearest = 0x0000, roundDown = 0x2000, roundUp = 0x4000, roundTowardsZero = 0x6000;
inline constexpr std::uint32_t defaultMxcsr = 0x1F80;

// Puts the thread into a state and back into the state it had.
class ScopedControlState {
public:
    explicit ScopedControlState(ControlState wanted) : saved_(controlState()) {
        setX87ControlWord(wanted.x87);
        _mm_setcsr(wanted.mxcsr);
    }
    ~ScopedControlState() {
        asm volatile("fnclex");
        setX87ControlWord(saved_.x87);
        _mm_setcsr(saved_.mxcsr);
    }
    ScopedControlState(const ScopedControlState&) = delete;
    ScopedControlState& operator=(const ScopedControlState&) = delete;

private:
    ControlState saved_;
};

// Every rounding mode, flush-to-zero, denormals-are-zero, x87 precision and rounding, sticky flags clear and all set.
inline std::vector<ControlState> allControlStates() {
    std::vector<ControlState> states;
    for (std::uint32_t rounding : {roundNearest, roundDown, roundUp, roundTowardsZero})
        for (std::uint32_t flush : {0u, flushToZero})
            for (std::uint32_t denormals : {0u, denormalsAreZero})
                for (std::uint32_t sticky : {0u, stickyFlags})
                    for (int x87 : {0x007F, 0x027F, 0x037F, 0x0E7F})
                        states.push_back(
                            {defaultMxcsr | rounding | flush | denormals | sticky, static_cast<std::uint16_t>(x87)});
    return states;
}

}  // namespace okt::test
