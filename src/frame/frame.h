// The frames of the exported functions: argument checks, guards on the floating-point control state, the status.
//
//   Plain         length, then pointers; no guard
//   Mxcsr         pointers, then length; rounding control, flush-to-zero and denormals-are-zero cleared
//   X87<53>       length, then pointers; x87 at 53-bit precision, round to nearest; MXCSR is the caller's
//   X87<64>       the same at 64-bit precision
//   DoubleGuard   length, then pointers; x87 at 64-bit precision, then rounding control and flush-to-zero cleared,
//                 while the caller's denormals-are-zero stays
//
// The catalogue says which frame a routine has, and OKT_EXPORT puts it around the routine: a family writes a body
// `(arrays..., len, status)` and knows nothing of its frame but the control state that it finds. What a guard changed
// it puts back as the exact image it found, so that flags raised during a call disappear when MXCSR had to be changed
// and stay for the caller when it had not.
#pragma once

#include "lanes/control_state.h"
#include "oktvm_types.h"

#include <cstdint>

// A further name of an exported function.
#define OKT_ALIAS(name) __attribute__((alias(#name)))

// Defines the exported names of a routine, all of them one body in the catalogue's frame; families with several
// routines of one type name the first grade of the group. exports/<Family>.h has the names.
#define OKT_EXPORT(family, type, routine) OKT_EXPORT_##family##_##type(routine)
#define OKT_EXPORT_GRADES(family, type, grade, routine) OKT_EXPORT_##family##_##type##_##grade(routine)

namespace okt::frame {

// Clears the bits of ClearedBits that are set in MXCSR, for the length of a scope.
template <unsigned ClearedBits>
class MxcsrGuard {
public:
    MxcsrGuard() : saved_(readMxcsr()), changed_((saved_ & ClearedBits) != 0) {
        if (changed_) [[unlikely]]
            writeMxcsr(saved_ & ~ClearedBits);
    }
    ~MxcsrGuard() {
        if (changed_) [[unlikely]]
            writeMxcsr(saved_);
    }
    MxcsrGuard(const MxcsrGuard&) = delete;
    MxcsrGuard& operator=(const MxcsrGuard&) = delete;

private:
    unsigned saved_;
    bool changed_;
};

// Sets precision and rounding control of the x87 unit for the length of a scope.
template <unsigned Target>
class X87Guard {
public:
    X87Guard() {
        storeX87Control(saved_);
        changed_ = (saved_ & 0x0F00u) != Target;
        if (changed_) loadX87Control(static_cast<std::uint16_t>((saved_ & 0xF0FFu) | Target));
    }
    ~X87Guard() { restore(); }

    // Puts the control word back before the end of the scope.
    void restore() {
        if (changed_) loadX87Control(saved_);
        changed_ = false;
    }
    X87Guard(const X87Guard&) = delete;
    X87Guard& operator=(const X87Guard&) = delete;

private:
    std::uint16_t saved_;
    bool changed_;
};

inline constexpr unsigned roundingFlushAndDenormals = 0xE040;  // rounding control, flush-to-zero, denormals-are-zero
inline constexpr unsigned roundingAndFlush = 0xE000;
inline constexpr unsigned precision53 = 0x0200;
inline constexpr unsigned precision64 = 0x0300;

struct Plain {
    static constexpr bool pointersFirst = false;
};

struct Mxcsr {
    static constexpr bool pointersFirst = true;
    MxcsrGuard<roundingFlushAndDenormals> mxcsr;
};

template <int Precision>
struct X87 {
    static constexpr bool pointersFirst = false;
    X87Guard<Precision == 53 ? precision53 : precision64> x87;
};

struct DoubleGuard {
    static constexpr bool pointersFirst = false;
    X87Guard<precision64> x87;
    MxcsrGuard<roundingAndFlush> mxcsr;
    ~DoubleGuard() { x87.restore(); }  // before MXCSR goes back
};

// The body runs in a function of its own: its arithmetic cannot be moved across the control-register writes around
// the call, which the compiler does not know to be connected with arithmetic.
template <class Body, class... Array>
[[gnu::noinline]] OktStatus run(const Body& body, std::int32_t len, Array... arrays) {
    OktStatus status = oktStatusOk;
    body(arrays..., len, status);
    clearUpperLanes();
    return status;
}

// Arrays are pointers; the scalar among them is none.
template <class T>
constexpr bool isNull(T* array) {
    return array == nullptr;
}
template <class T>
constexpr bool isNull(const T&) {
    return false;
}

// Checks the arguments in the frame's order and runs body(arrays..., len, status) between its guards.
template <class Frame, class Body, class... Array>
inline OktStatus call(const Body& body, std::int32_t len, Array... arrays) {
    if (!Frame::pointersFirst && len <= 0) return oktStatusBadLength;
    if ((isNull(arrays) || ...)) return oktStatusNullPointer;
    if (Frame::pointersFirst && len <= 0) return oktStatusBadLength;
    [[maybe_unused]] const Frame guards;
    return run(body, len, arrays...);
}

}  // namespace okt::frame
