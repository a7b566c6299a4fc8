// Models of real Div and Inv. They run under the caller's MXCSR.
#pragma once

#include "oktvm_types.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"
#include "tests/models/status_flag.h"

namespace okt::model {

namespace division {

inline bool allOnes(Real32 x) { return (asBits(x) & 0x7F800000) == 0x7F800000; }
inline bool allOnes(Real64 x) { return (asBits(x) & 0x7FF0000000000000) == 0x7FF0000000000000; }
inline bool zeroBits(Real32 x) { return (asBits(x) & 0x7FFFFFFF) == 0; }
inline bool zeroBits(Real64 x) { return (asBits(x) & 0x7FFFFFFFFFFFFFFF) == 0; }

template <class T>
OktStatus inverse(const T* src, T* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) {
        const T x = src[i];
        dst[i] = ordered::div(T(1.0), x);
        if (zeroBits(x)) {
            status = oktStatusSingularity;
            warning::raiseFlag(oktStatusSingularity);
        }
    }
    return status;
}

}  // namespace division

// The zero test is on the bits: a subnormal divisor never warns.
[[gnu::noinline]] inline OktStatus Div_32f(const Real32* src1, const Real32* src2, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) {
        const Real32 a = src1[i];
        const Real32 b = src2[i];
        if (division::allOnes(a) || division::allOnes(b)) {
            dst[i] = ordered::div(a, b);
        } else if (division::zeroBits(b)) {
            dst[i] = ordered::div(a, b);
            status = oktStatusSingularity;
            warning::raiseFlag(oktStatusSingularity);
        } else {
            dst[i] = ordered::div(a, b);
        }
    }
    return status;
}

// The zero test is a compare: with denormals-are-zero a subnormal divisor counts as a zero and warns.
[[gnu::noinline]] inline OktStatus Div_64f(const Real64* src1, const Real64* src2, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) {
        const Real64 a = src1[i];
        const Real64 b = src2[i];
        dst[i] = ordered::div(a, b);
        if (division::allOnes(a) || division::allOnes(b)) continue;
        if (b == 0.0) {
            status = oktStatusSingularity;
            warning::raiseFlag(oktStatusSingularity);
        }
    }
    return status;
}

[[gnu::noinline]] inline OktStatus Inv_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return division::inverse(src, dst, len);
}
[[gnu::noinline]] inline OktStatus Inv_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return division::inverse(src, dst, len);
}

}  // namespace okt::model
