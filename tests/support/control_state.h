// MXCSR and the x87 unit's words: reading, setting for a scope, and the settings the tests walk through.
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

// All that a call may leave behind in the floating-point units besides values in registers that are free.
struct FloatingState {
    ControlState control;
    std::uint16_t x87Flags = 0;  // the six exceptions and, above them, the fault of the register stack
    std::uint16_t x87InUse = 0;  // a bit a register of the stack that holds a value
    bool operator==(const FloatingState&) const = default;
};

namespace x87 {

struct Environment {
    std::uint32_t control, status, tags, pointers[4];
};
inline constexpr std::uint32_t exceptionsAndStackFault = 0x7F;

// Storing an environment masks all exceptions, which is undone.
inline Environment environment() {
    Environment e;
    asm volatile("fnstenv %0\n\tfldcw %0" : "=m"(e));
    return e;
}

}  // namespace x87

inline FloatingState floatingState() {
    const std::uint32_t mxcsr = _mm_getcsr();
    const x87::Environment e = x87::environment();
    FloatingState state{{mxcsr, static_cast<std::uint16_t>(e.control)},
                        static_cast<std::uint16_t>(e.status & x87::exceptionsAndStackFault)};
    for (unsigned r = 0; r < 8; ++r)
        if ((e.tags >> 2 * r & 3) != 3) state.x87InUse = static_cast<std::uint16_t>(state.x87InUse | 1 << r);
    return state;
}

// The register stack is empty afterwards.
inline void setFloatingState(const FloatingState& state) {
    x87::Environment e = x87::environment();
    e.control = (e.control & 0xFFFF0000) | state.control.x87;
    e.status = (e.status & 0xFFFF0000) | state.x87Flags;
    e.tags |= 0xFFFF;
    asm volatile("fldenv %0" : : "m"(e) : "memory");
    _mm_setcsr(state.control.mxcsr);
}

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
    for (int precision : {0x0000, 0x0200, 0x0300})
        for (int rounding : {0x0000, 0x0400, 0x0800, 0x0C00})
            states.push_back({defaultMxcsr, static_cast<std::uint16_t>(0x007F | precision | rounding)});
    return states;
}

// Runs check() under every rounding mode, with and without flush-to-zero and denormals-are-zero: settings of the caller
// that the frames without an MXCSR guard leave in force.
template <class Check>
void underEveryMxcsr(const Check& check) {
    for (const std::uint32_t rounding : {roundNearest, roundDown, roundUp, roundTowardsZero})
        for (const std::uint32_t flush : {0u, flushToZero})
            for (const std::uint32_t denormals : {0u, denormalsAreZero}) {
                const ScopedControlState scope({defaultMxcsr | rounding | flush | denormals, 0x037F});
                check();
            }
}

// The same for long checks: the rounding modes under default settings and under flush-to-zero with denormals-are-zero.
template <class Check>
void inEveryRoundingMode(const Check& check) {
    for (const std::uint32_t rounding : {roundNearest, roundDown, roundUp, roundTowardsZero})
        for (const std::uint32_t subnormals : {0u, flushToZero | denormalsAreZero}) {
            const ScopedControlState scope({defaultMxcsr | rounding | subnormals, 0x037F});
            check();
        }
}

// Sticky flags set by call(), run from clear ones under the given MXCSR control bits.
template <class Call>
std::uint32_t flagsRaised(const Call& call, std::uint32_t control = defaultMxcsr) {
    const ScopedControlState scope({control & ~stickyFlags, 0x037F});
    call();
    return controlState().mxcsr & stickyFlags;
}

}  // namespace okt::test
