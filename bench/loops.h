// Loops over arrays for peers that compute one element at a time. F is a lambda without captures.
#pragma once

#include "peers.h"

#include <complex>
#include <cstdint>

namespace okt::bench {

// The scalar side of each element type: std::complex has the layout of Complex32 and Complex64.
template <class S, class D, class F>
void unaryLoop(const Arguments& a) {
    const auto* src = static_cast<const S*>(a.src1);
    auto* dst = static_cast<D*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src[i]);
}

template <class S, class D, class F>
void binaryLoop(const Arguments& a) {
    const auto *src1 = static_cast<const S*>(a.src1), *src2 = static_cast<const S*>(a.src2);
    auto* dst = static_cast<D*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src1[i], src2[i]);
}

template <class S, class D, class F>
void withScalarLoop(const Arguments& a) {
    const auto* src = static_cast<const S*>(a.src1);
    const S scalar = *static_cast<const S*>(a.scalar);
    auto* dst = static_cast<D*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src[i], scalar);
}

template <class S, class Pair, class F>
void twoResultsLoop(const Arguments& a) {
    using D = typename Pair::first_type;
    const auto* src = static_cast<const S*>(a.src1);
    auto *dst1 = static_cast<D*>(a.dst1), *dst2 = static_cast<D*>(a.dst2);
    for (std::int32_t i = 0; i < a.len; ++i) {
        const Pair results = F{}(src[i]);
        dst1[i] = results.first;
        dst2[i] = results.second;
    }
}

}  // namespace okt::bench
