// The frame of every exported function: argument checks, guards on the floating-point control state, the status.
//
//   plainFrame         length, then pointers in argument order; no guard
//   mxcsrFrame         pointers from the last argument to the first, then length; rounding control, flush-to-zero and
//                      denormals-are-zero cleared
//   x87Frame<53>       length, then pointers; x87 at 53-bit precision, round to nearest; MXCSR is the caller's
//   x87Frame<64>       the same at 64-bit precision
//   doubleGuardFrame   length, then pointers; x87 at 64-bit precision, then rounding control and flush-to-zero cleared,
//                      while the caller's denormals-are-zero stays
//
// A family hands its frame the pointers in the order in which they are checked, the length, and a body that gets the
// status by reference. What a guard changed it puts back as the exact image it found, so that flags raised during a
// call disappear when MXCSR had to be changed and stay for the caller when it had not.
#pragma once

#include "oktvm.h"

#include "lanes/control_state.h"

#include "exports.h"

#include <cstdint>

// A further name of an exported function.
#define OKT_ALIAS(name) __attribute__((alias(#name)))

// Defines the exported names of a routine, all of them one body; families with several routines of one type name the
// first grade of the group.
#define OKT_EXPORT(family, type, routine) OKT_EXPORT_##family##_##type(routine)
#define OKT_EXPORT_GRADES(family, type, grade, routine) OKT_EXPORT_##family##_##type##_##grade(routine)

namespace okt {

namespace frame {

// The body runs in a function of its own: its arithmetic cannot be moved across the control-register writes around
// the call, which the compiler does not know to be connected with arithmetic.
template <class Body>
[[gnu::noinline]] OktStatus run(const Body& body) {
    OktStatus status = oktStatusOk;
    body(status);
    return status;
}

// Clears the bits of Mask that are set in MXCSR, for the length of a scope.
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

// The checks of all frames but the MXCSR frame: a bad length beats a null pointer.
template <class... Pointer>
inline OktStatus checkLengthFirst(std::int32_t len, const Pointer*... pointers) {
    if (len <= 0) return oktStatusBadLength;
    return ((pointers == nullptr) || ...) ? oktStatusNullPointer : oktStatusOk;
}

}  // namespace frame

template <class P1, class P2, class Body>
inline OktStatus plainFrame(std::int32_t len, const P1* first, const P2* second, const Body& body) {
    if (const OktStatus bad = frame::checkLengthFirst(len, first, second)) return bad;
    return frame::run(body);
}
template <class P1, class P2, class P3, class Body>
inline OktStatus plainFrame(std::int32_t len, const P1* first, const P2* second, const P3* third, const Body& body) {
    if (const OktStatus bad = frame::checkLengthFirst(len, first, second, third)) return bad;
    return frame::run(body);
}

template <class P1, class P2, class Body>
inline OktStatus mxcsrFrame(const P1* last, const P2* first, std::int32_t len, const Body& body) {
    if (last == nullptr || first == nullptr) return oktStatusNullPointer;
    if (len <= 0) return oktStatusBadLength;
    const frame::MxcsrGuard<frame::roundingFlushAndDenormals> mxcsr;
    return frame::run(body);
}
template <class P1, class P2, class P3, class Body>
inline OktStatus mxcsrFrame(const P1* last, const P2* middle, const P3* first, std::int32_t len, const Body& body) {
    if (last == nullptr || middle == nullptr || first == nullptr) return oktStatusNullPointer;
    if (len <= 0) return oktStatusBadLength;
    const frame::MxcsrGuard<frame::roundingFlushAndDenormals> mxcsr;
    return frame::run(body);
}

template <int Precision, class P1, class P2, class Body>
inline OktStatus x87Frame(std::int32_t len, const P1* first, const P2* second, const Body& body) {
    if (const OktStatus bad = frame::checkLengthFirst(len, first, second)) return bad;
    const frame::X87Guard<Precision == 53 ? frame::precision53 : frame::precision64> x87;
    return frame::run(body);
}
template <int Precision, class P1, class P2, class P3, class Body>
inline OktStatus x87Frame(std::int32_t len, const P1* first, const P2* second, const P3* third, const Body& body) {
    if (const OktStatus bad = frame::checkLengthFirst(len, first, second, third)) return bad;
    const frame::X87Guard<Precision == 53 ? frame::precision53 : frame::precision64> x87;
    return frame::run(body);
}

// At exit the x87 control word goes back first, then MXCSR.
template <class P1, class P2, class Body>
inline OktStatus doubleGuardFrame(std::int32_t len, const P1* first, const P2* second, const Body& body) {
    if (const OktStatus bad = frame::checkLengthFirst(len, first, second)) return bad;
    frame::X87Guard<frame::precision64> x87;
    const frame::MxcsrGuard<frame::roundingAndFlush> mxcsr;
    const OktStatus status = frame::run(body);
    x87.restore();
    return status;
}

}  // namespace okt
